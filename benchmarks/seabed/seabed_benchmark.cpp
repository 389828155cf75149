// Costs of the seabed: height along a path of nearby points, which the hints
// keep at constant time a call whatever the size of the profile or surface,
// and find_triangle, which the grid keeps from scanning all triangles.
//
//   bench_seabed --benchmark_filter=Path     heights along paths
//   bench_seabed --benchmark_filter=Find     triangle search, grid and scan
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "seabed/library/seabed.h"
#include "seabed/seabed_profile.h"

namespace {

using tmrdar::seabed_profile::NormalVector;
using tmrdar::seabed_profile::SeabedProfile;
namespace seabed = tmrdar::seabed;

double floor(double x, double y) { return -100.0 + 3.0 * std::sin(x / 40.0) + 2.0 * std::cos(y / 55.0); }

// A node profile (geometry 3) of n nodes one metre apart along x.
SeabedProfile node_profile(int32_t n, int32_t interpolation) {
  SeabedProfile p;
  p.set_geometry_and_interpolation(3);
  p.set_interpolation(interpolation);
  p.allocate_nodes(n);
  for (int32_t i = 1; i <= n; ++i) {
    p.set_node(i, 2, static_cast<float>(i - 1));
    p.set_node(i, 1, static_cast<float>(floor(i - 1, 0.0)));
  }
  return p;
}

// A square surface of side cells, two triangles a cell, one metre a cell.
struct Surface {
  int32_t side = 0;
  int32_t node_count = 0;
  int32_t triangle_count = 0;
  std::vector<float> nodes;
  std::vector<int32_t> triangles;
  seabed::TriangleGrid grid;

  explicit Surface(int32_t side) : side(side) {
    const auto n = static_cast<std::size_t>(side + 1) * static_cast<std::size_t>(side + 1);
    node_count = static_cast<int32_t>(n);
    nodes.resize(3 * n);
    for (int32_t j = 0; j <= side; ++j) {
      for (int32_t i = 0; i <= side; ++i) {
        const auto k = static_cast<std::size_t>(j * (side + 1) + i);
        nodes[k] = static_cast<float>(floor(i, j));
        nodes[n + k] = static_cast<float>(i);
        nodes[2 * n + k] = static_cast<float>(j);
      }
    }
    const auto node = [&](int32_t i, int32_t j) { return j * (side + 1) + i + 1; };
    for (int32_t j = 0; j < side; ++j) {
      for (int32_t i = 0; i < side; ++i) {
        triangles.insert(triangles.end(), {node(i, j), node(i + 1, j), node(i + 1, j + 1)});
        triangles.insert(triangles.end(), {node(i, j), node(i + 1, j + 1), node(i, j + 1)});
      }
    }
    triangle_count = static_cast<int32_t>(triangles.size() / 3);
    seabed::build_triangle_grid(nodes, node_count, triangles, triangle_count, grid);
  }

  seabed::SurfaceView view(bool with_grid) const {
    return {node_count, triangle_count, grid.nx * grid.ny, nodes, triangles, with_grid ? &grid : nullptr, {}};
  }

  // The same surface as a seabed file, for loading into a profile.
  std::string write_file(bool cubic) const {
    const auto path = (std::filesystem::temp_directory_path() / "tmrdar-bench-surface.seabed").string();
    std::FILE* out = std::fopen(path.c_str(), "w");
    if (out == nullptr) return path;
    std::fprintf(out, "TMRDAR SEABED 1\nsurface %s\nnodes\n", cubic ? "cubic" : "linear");
    const auto n = static_cast<std::size_t>(node_count);
    for (std::size_t k = 0; k < n; ++k) {
      std::fprintf(out, "%zu %.9g %.9g %.9g\n", k + 1, nodes[n + k], nodes[2 * n + k], nodes[k]);
    }
    std::fprintf(out, "triangles\n");
    for (std::size_t t = 0; t < triangles.size(); t += 3) {
      std::fprintf(out, "%d %d %d\n", triangles[t], triangles[t + 1], triangles[t + 2]);
    }
    std::fclose(out);
    return path;
  }
};

// ---- Profiles --------------------------------------------------------------

// A walk along the profile in steps of 0.3 m, turning back at the ends.
void height_along_path(benchmark::State& state, int32_t interpolation) {
  const auto n = static_cast<int32_t>(state.range(0));
  SeabedProfile p = node_profile(n, interpolation);
  double x = 0.0;
  double step = 0.3;
  double h = 0.0;
  int32_t hint = 1;
  for (auto _ : state) {
    p.height(x, 0.0, h, nullptr, &hint);
    benchmark::DoNotOptimize(h);
    x += step;
    if (x < 0.0 || x > n - 1) step = -step;
  }
  state.SetLabel(std::to_string(n) + " nodes");
}

void BM_ProfileHeightPathLinear(benchmark::State& state) { height_along_path(state, 0); }
void BM_ProfileHeightPathCubic(benchmark::State& state) { height_along_path(state, 2); }
BENCHMARK(BM_ProfileHeightPathLinear)->Arg(100)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(BM_ProfileHeightPathCubic)->Arg(100)->Arg(10'000)->Arg(1'000'000);

// For contrast: points scattered over the profile, where the hint does not
// help and each call searches.
void BM_ProfileHeightScattered(benchmark::State& state) {
  const auto n = static_cast<int32_t>(state.range(0));
  SeabedProfile p = node_profile(n, 0);
  std::mt19937 random(1);
  std::uniform_real_distribution<double> where(0.0, n - 1.0);
  std::vector<double> xs(4096);
  for (auto& x : xs) x = where(random);
  std::size_t k = 0;
  double h = 0.0;
  int32_t hint = 1;
  for (auto _ : state) {
    p.height(xs[k++ & 4095], 0.0, h, nullptr, &hint);
    benchmark::DoNotOptimize(h);
  }
}
BENCHMARK(BM_ProfileHeightScattered)->Arg(100)->Arg(10'000)->Arg(1'000'000);

// ---- Surfaces --------------------------------------------------------------

// Random points over the surface (and a margin outside it), by the grid.
void BM_FindTriangleGrid(benchmark::State& state) {
  const Surface surface(static_cast<int32_t>(state.range(0)));
  const auto view = surface.view(true);
  std::mt19937 random(2);
  std::uniform_real_distribution<double> where(-1.0, surface.side + 1.0);
  std::vector<std::array<double, 2>> points(4096);
  for (auto& p : points) p = {where(random), where(random)};
  std::size_t k = 0;
  std::array<int32_t, 3> corners{};
  for (auto _ : state) {
    const auto& p = points[k++ & 4095];
    benchmark::DoNotOptimize(seabed::find_triangle(p[0], p[1], view, corners));
  }
  state.SetLabel(std::to_string(surface.triangle_count) + " triangles, " + std::to_string(view.cell_count) +
                 " cells, " + std::to_string(surface.grid.members.size()) + " entries");
}
// 22, 70, 224 and 317 cells a side: about 1 000, 10 000, 100 000 and 200 000 triangles.
BENCHMARK(BM_FindTriangleGrid)->Arg(22)->Arg(70)->Arg(224)->Arg(317);

// For contrast: the same search through every triangle.
void BM_FindTriangleScan(benchmark::State& state) {
  const Surface surface(static_cast<int32_t>(state.range(0)));
  const auto view = surface.view(false);
  std::mt19937 random(2);
  std::uniform_real_distribution<double> where(0.0, surface.side);
  std::array<int32_t, 3> corners{};
  for (auto _ : state) {
    benchmark::DoNotOptimize(seabed::find_triangle(where(random), where(random), view, corners));
  }
  state.SetLabel(std::to_string(surface.triangle_count) + " triangles");
}
BENCHMARK(BM_FindTriangleScan)->Arg(22)->Arg(224);

// height on a loaded surface along a diagonal walk in steps of 0.2 m.
void surface_height_along_path(benchmark::State& state, bool cubic) {
  const Surface surface(static_cast<int32_t>(state.range(0)));
  SeabedProfile p;
  p.set_geometry_and_interpolation(cubic ? 8 : 7);
  const std::string path = surface.write_file(cubic);
  int32_t status = -1;
  p.load_from_file(nullptr, path, nullptr, status);
  std::filesystem::remove(path);
  if (status != 0) {
    state.SkipWithError("the surface did not load");
    return;
  }
  const double side = surface.side;
  double t = 0.5;
  double step = 0.2;
  double h = 0.0;
  NormalVector n{};
  int32_t hint = 1;
  for (auto _ : state) {
    p.height(t, 0.37 * t + 0.2, h, &n, &hint);
    benchmark::DoNotOptimize(h);
    t += step;
    if (t < 0.5 || 0.37 * t + 0.2 > side - 0.5) step = -step;
  }
  state.SetLabel(std::to_string(surface.triangle_count) + " triangles");
}

void BM_SurfaceHeightPathLinear(benchmark::State& state) { surface_height_along_path(state, false); }
void BM_SurfaceHeightPathCubic(benchmark::State& state) { surface_height_along_path(state, true); }
BENCHMARK(BM_SurfaceHeightPathLinear)->Arg(22)->Arg(224);
BENCHMARK(BM_SurfaceHeightPathCubic)->Arg(22)->Arg(224);

// Building the grid at load, for 100 000 triangles.
void BM_BuildTriangleGrid(benchmark::State& state) {
  const Surface surface(static_cast<int32_t>(state.range(0)));
  seabed::TriangleGrid grid;
  for (auto _ : state) {
    seabed::build_triangle_grid(surface.nodes, surface.node_count, surface.triangles, surface.triangle_count, grid);
    benchmark::DoNotOptimize(grid.members.data());
  }
}
BENCHMARK(BM_BuildTriangleGrid)->Arg(224)->Unit(benchmark::kMillisecond);

}  // namespace
