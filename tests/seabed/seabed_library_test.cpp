// The seabed library: loading seabed files, the profile and surface interpolants,
// and tables and arrays that do not hold what they claim.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "seabed/library/seabed.h"
#include "support/scratch_dir.h"

namespace tmrdar::seabed {
namespace {

struct Loaded {
  int32_t status = -1, interpolation = -1, count = -1, triangles = -1, cells = -1;
  std::vector<float> nodes;
  std::vector<double> m;
  std::vector<int32_t> table;
  TriangleGrid grid;
  LoadReport report;
};

Loaded load(const std::string& path, bool surface) {
  Loaded r;
  r.status = surface ? load_seabed_3d(path, r.interpolation, r.count, r.triangles, r.cells, r.nodes, r.table, r.grid,
                                      r.m, &r.report)
                     : load_seabed_2d(path, r.interpolation, r.count, r.nodes, r.m, &r.report);
  return r;
}

TEST(SeabedFile, AProfileAndTheDocumentedExamplesLoad) {
  testing::ScratchDir dir;
  const auto path = dir.write("p.seabed", "TMRDAR SEABED 1\r\n# comment\r\n\r\nProfile CUBIC  # any case\r\n"
                                          "0 0\r\n+1.0 1e0\r\n2\t0\r\n");
  EXPECT_EQ(open_seabed_file(path), status_ok);
  const auto r = load(path, false);
  ASSERT_EQ(r.status, status_ok) << r.report.text;
  EXPECT_EQ(std::make_pair(r.interpolation, r.count), std::make_pair(profile_cubic, 3));
  EXPECT_EQ(r.nodes, (std::vector<float>{0, 1, 0, 0, 1, 2}));  // heights, then distances
  EXPECT_EQ(r.m, (std::vector<double>{0, -3, 0}));              // 2(1 + 1) M2 = 6(-1 - 1)
  const std::string docs = TMRDAR_DOCS_DIR;
  const auto profile = load(docs + "/examples/channel-profile.seabed", false);
  EXPECT_EQ(std::make_pair(profile.status, profile.count), std::make_pair(status_ok, 7)) << profile.report.text;
  const auto surface = load(docs + "/examples/mound-surface.seabed", true);
  EXPECT_EQ(std::make_tuple(surface.status, surface.triangles, surface.interpolation),
            std::make_tuple(status_ok, 8, surface_cubic)) << surface.report.text;
}

TEST(SeabedFile, BadFilesAreRefusedAtTheirLine) {
  struct BadFile {
    bool surface;
    std::string text;
    int32_t status;
    int32_t line;
  };
  const std::string head = "TMRDAR SEABED 1\n";
  const std::string surface = head + "surface cubic\n";
  const std::string nodes = surface + "nodes\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 2 2 0\n";  // lines 1-7
  const BadFile cases[] = {
      {false, "", status_not_seabed, 1},
      {false, "TMRDAR SEABED 2\nprofile linear\n0 0\n1 1\n", status_not_seabed, 1},
      {false, head, status_bad_data, 2},                           // nothing described
      {false, head + "profile linear\n", status_bad_data, 3},      // empty profile
      {false, head + "profile cubic\n0 -10\n", status_bad_data, 4},  // one node
      {false, head + "profile spline\n", status_syntax, 2},
      {false, head + "profile linear\n0 1\n1 2 3\n", status_syntax, 4},
      {false, head + "profile linear\n0 1\n1 2m\n", status_syntax, 4},
      {false, head + "profile linear\n0 1\n1 1e39\n", status_syntax, 4},  // beyond 32 bits
      {false, head + "profile linear\n0 1\n5 2\n4 2\n", status_bad_data, 5},
      {true, nodes + "triangles\n1 2 2\n", status_bad_data, 9},  // repeated node
      {true, nodes + "triangles\n1 2 5\n", status_bad_data, 9},  // out of range
      {true, nodes + "triangles\n1 2 99999999999\n", status_bad_data, 9},
      {true, nodes + "triangles\n2 3 1\n1 2\n", status_syntax, 10},
      {true, nodes, status_bad_data, 8},                   // no triangles line
      {true, nodes + "triangles\n", status_bad_data, 9},  // no triangles
      {true, surface + "nodes\n1 0 0 0\n3 1 0 0\n", status_bad_data, 5},  // out of sequence
      {true, surface + "1 0 0 0\n", status_syntax, 3},                    // no nodes line
      {true, surface + "nodes\n1 0 0 0\n2 1 1 0\n3 2 2 0\ntriangles\n1 2 3\n", status_bad_data, 8},  // collinear
  };
  for (const auto& c : cases) {
    testing::ScratchDir dir;
    const auto path = dir.write("bad.seabed", c.text);
    const auto r = load(path, c.surface);
    EXPECT_EQ(std::make_tuple(r.status, r.report.line, r.count), std::make_tuple(c.status, c.line, -1))
        << c.text << r.report.text;  // outputs are written only on success
    EXPECT_EQ(open_seabed_file(path), c.status) << c.text;
  }
  testing::ScratchDir dir;
  const auto profile = dir.write("p.seabed", "TMRDAR SEABED 1\nprofile linear\n0 0\n1 1\n");
  const auto surface_file = dir.write("s.seabed", "TMRDAR SEABED 1\nsurface linear\nnodes\n1 0 0 0\n2 1 0 0\n"
                                             "3 0 1 0\ntriangles\n1 2 3\n");
  EXPECT_EQ(load(profile, true).status, status_wrong_form);
  EXPECT_EQ(load(surface_file, false).status, status_wrong_form);
  EXPECT_EQ(load(dir.file("missing"), false).status, status_cannot_read);
  EXPECT_EQ(open_seabed_file(dir.path().string()), status_cannot_read);  // a directory
}

// A two-column node table (heights, then distances) from (distance, height) pairs.
std::vector<float> table(const std::vector<std::pair<float, float>>& points) {
  const std::size_t n = points.size();
  std::vector<float> table(2 * n);
  for (std::size_t i = 0; i < n; ++i) table[i] = points[i].second, table[n + i] = points[i].first;
  return table;
}

int32_t count(const std::vector<float>& table) { return static_cast<int32_t>(table.size() / 2); }

std::pair<double, double> surface_at(const std::vector<float>& t, double s, bool cubic, int32_t hint = 1) {
  std::vector<double> m;
  fit_spline_2d(t, count(t), m);
  std::pair<double, double> v{-1.0, -1.0};
  cubic ? interpolate_2d_cubic(s, count(t), t, m, hint, v.first, v.second)
        : interpolate_2d_linear(s, count(t), t, hint, v.first, v.second);
  return v;
}

TEST(Profile2dLinear, SegmentsValuesAndShortTables) {
  const auto step = table({{0, 0}, {10, 0}, {10, 5}, {20, 5}});  // a vertical step at 10
  for (const auto& [s, segment] : {std::pair{-1.0, 1}, {0.0, 2}, {9.99, 2}, {10.0, 4}, {20.0, 5}, {1e30, 5}}) {
    for (const int32_t hint : {-300, 1, 3, 300}) {
      int32_t h = hint;
      EXPECT_EQ(find_segment(step, 4, s, h), segment) << s << " from " << hint;
      EXPECT_EQ(h, segment) << s;
    }
  }
  int32_t empty_hint = 7;
  EXPECT_EQ(find_segment({}, 0, 3.0, empty_hint), 1);

  const auto t = table({{0, -10}, {10, -20}, {30, -20}});
  // A shared node takes the segment ahead; beyond the ends the floor is level.
  for (const auto& [s, h, m] : {std::tuple{5.0, -15.0, -1.0}, {10.0, -20.0, 0.0}, {-100.0, -10.0, 0.0},
                                {1e9, -20.0, 0.0}}) {
    EXPECT_EQ(surface_at(t, s, false), std::make_pair(h, m)) << s;
  }
  EXPECT_EQ(surface_at(table({{3, -40}}), -9, false), std::make_pair(-40.0, 0.0));
  const auto short_table = table({{0, 4}, {1, 6}});
  int32_t hint = 99;
  double h = -1.0;
  double m = -1.0;
  interpolate_2d_linear(0.5, 3, short_table, hint, h, m);  // claims more rows than it has
  EXPECT_EQ(std::make_pair(h, m), std::make_pair(0.0, 0.0));
}

TEST(Profile2dCubic, NaturalSplinesEitherSideOfAStepAndShortTables) {
  // M = (0, -3, 0) on each side; at 0.5: 0.5 + (0.125 - 0.5)(-3) / 6 =
  // 0.6875, and the slope 1 + (3 * 0.25 - 1)(-3) / 6 = 1.125.
  const auto t = table({{0, 0}, {1, 1}, {2, 0}, {2, 5}, {3, 6}, {4, 5}});
  std::vector<double> m;
  fit_spline_2d(t, count(t), m);
  EXPECT_EQ(m, (std::vector<double>{0, -3, 0, 0, -3, 0}));
  for (const auto& [s, h, slope] : {std::tuple{0.5, 0.6875, 1.125}, {1.5, 0.6875, -1.125}, {1.0, 1.0, 0.0},
                                    {2.0, 5.0, 1.5}, {2.5, 5.6875, 1.125}}) {
    EXPECT_EQ(surface_at(t, s, true), std::make_pair(h, slope)) << s;
  }
  // Uneven nodes: through each node, with one slope either side of it.
  const auto u = table({{-200, -120}, {-120, -121.5}, {-60, -128}, {0, -131}, {60, -128.5}, {250, -119}});
  for (int32_t i = 1; i < count(u) - 1; ++i) {
    const double d = u[static_cast<std::size_t>(count(u) + i)];
    EXPECT_NEAR(surface_at(u, d, true).first, u[static_cast<std::size_t>(i)], 1e-12) << i;
    EXPECT_NEAR(surface_at(u, d - 1e-7, true).second, surface_at(u, d + 1e-7, true).second, 1e-8) << i;
  }
  EXPECT_EQ(surface_at(table({{3, -40}}), 9, true), std::make_pair(-40.0, 0.0));
  const auto two = table({{0, 4}, {1, 6}});
  int32_t hint = 1;
  double h = -1.0;
  double slope = -1.0;
  interpolate_2d_cubic(0.5, 2, two, std::vector<double>{1.0}, hint, h, slope);  // short M: straight
  EXPECT_DOUBLE_EQ(h, 5.0);
  interpolate_2d_cubic(0.5, -2, two, {}, hint, h, slope);
  EXPECT_EQ(h, 0.0);
  const auto odd = table({{5, 1}, {5, 1}, {2, 7}, {9, 0}, {-1, 3}});  // coincident, out of order
  for (double s = -3.0; s < 11.0; s += 0.5) EXPECT_TRUE(std::isfinite(surface_at(odd, s, true).first)) << s;
}

// A triangulated rectangle of nx by ny cells of size `cell`, with its inner
// nodes moved by whole eighths so that the triangles are uneven; every
// coordinate is exact in 32 bits.
struct Mesh {
  int32_t node_count = 0;
  int32_t triangle_count = 0;
  std::vector<float> nodes;
  std::vector<int32_t> triangles;
  TriangleGrid grid;
  std::vector<double> gradients;

  SurfaceView view(bool with_grid = true) const {
    return {node_count, triangle_count, grid.nx * grid.ny, nodes, triangles, with_grid ? &grid : nullptr, gradients};
  }
};

Mesh make_mesh(int32_t nx, int32_t ny, float cell, const std::function<double(double, double)>& f) {
  Mesh mesh;
  std::mt19937 random(11);
  std::uniform_int_distribution<int> eighths(-2, 2);
  std::vector<float> x, y;
  for (int32_t j = 0; j <= ny; ++j) {
    for (int32_t i = 0; i <= nx; ++i) {
      const bool inner = i > 0 && i < nx && j > 0 && j < ny;
      x.push_back(static_cast<float>(i) * cell + (inner ? static_cast<float>(eighths(random)) * 0.125F : 0.0F));
      y.push_back(static_cast<float>(j) * cell + (inner ? static_cast<float>(eighths(random)) * 0.125F : 0.0F));
    }
  }
  const auto n = x.size();
  mesh.node_count = static_cast<int32_t>(n);
  mesh.nodes.resize(3 * n);
  for (std::size_t k = 0; k < n; ++k) {
    mesh.nodes[k] = static_cast<float>(f(x[k], y[k])), mesh.nodes[n + k] = x[k], mesh.nodes[2 * n + k] = y[k];
  }
  const auto node = [&](int32_t i, int32_t j) { return j * (nx + 1) + i + 1; };
  for (int32_t j = 0; j < ny; ++j) {
    for (int32_t i = 0; i < nx; ++i) {
      // Alternate the diagonal, and the orientation, from cell to cell.
      const int32_t a = node(i, j), b = node(i + 1, j), c = node(i + 1, j + 1), d = node(i, j + 1);
      for (const int32_t v : (i + j) % 2 == 0 ? std::array{a, b, c, a, d, c} : std::array{b, a, d, b, c, d}) {
        mesh.triangles.push_back(v);
      }
    }
  }
  mesh.triangle_count = static_cast<int32_t>(mesh.triangles.size() / 3);
  build_triangle_grid(mesh.nodes, mesh.node_count, mesh.triangles, mesh.triangle_count, mesh.grid);
  estimate_gradients(mesh.nodes, mesh.node_count, mesh.triangles, mesh.triangle_count, mesh.gradients);
  return mesh;
}

struct PointValue {
  double h = 0.0;
  NormalVector n{};
  int32_t flag = -1;
};

PointValue surface_at(const SurfaceView& s, double x, double y, bool cubic, int32_t hint = 1) {
  PointValue v;
  (cubic ? interpolate_3d_cubic : interpolate_3d_linear)(x, y, s, hint, v.h, v.n, v.flag);
  return v;
}

double plane_floor(double x, double y) { return 0.5 * x - 0.25 * y - 30.0; }
double wavy_floor(double x, double y) { return 5.0 * std::sin(x / 3.0) * std::cos(y / 4.0) - 40.0; }

// The gradient recovered from a normal.
std::array<double, 2> gradient(const NormalVector& n) { return {-n[1] / n[0], -n[2] / n[0]}; }

TEST(Surface3dLinear, PlanesTheGridSearchAndDamagedArrays) {
  const Mesh plane = make_mesh(6, 5, 4.0F, plane_floor);
  const Mesh wavy = make_mesh(30, 20, 2.0F, wavy_floor);
  std::mt19937 random(3);
  std::uniform_real_distribution<double> x(-3.0, 63.0);
  std::uniform_real_distribution<double> y(-3.0, 43.0);
  for (int k = 0; k < 2000; ++k) {
    const double px = x(random);
    const double py = y(random);
    // Both forms reproduce a plane; grid and scan agree on an uneven floor.
    const double qx = (px + 3.0) * 24.0 / 66.0;
    const double qy = (py + 3.0) * 20.0 / 46.0;
    for (const bool cubic : {false, true}) {
      const auto v = surface_at(plane.view(), qx, qy, cubic);
      EXPECT_NEAR(v.h, plane_floor(qx, qy), 1e-12) << qx << ", " << qy;
      for (int c = 0; c < 3; ++c) EXPECT_NEAR(v.n[c], normal_of_gradient(0.5, -0.25)[c], 1e-12);
    }
    const auto by_grid = surface_at(wavy.view(true), px, py, false);
    const auto by_scan = surface_at(wavy.view(false), px, py, false);
    ASSERT_EQ(by_grid.flag, by_scan.flag) << px << ", " << py;
    EXPECT_NEAR(by_grid.h, by_scan.h, 1e-9) << px << ", " << py;
  }
  EXPECT_LT(normal_of_gradient(0.5, -0.25)[1], 0.0);  // rising towards +x, the normal leans back

  const Mesh mesh = make_mesh(3, 3, 1.0F, plane_floor);
  const auto outside = surface_at(mesh.view(), -5.0, 1.0, true, 4);
  EXPECT_EQ(std::make_tuple(outside.flag, outside.h, outside.n), std::make_tuple(1, 0.0, NormalVector{1.0, 0.0, 0.0}));
  EXPECT_EQ(surface_at(mesh.view(), std::nan(""), 1.0, false).flag, 1);
  // Hints of any value; counts beyond the arrays; a cell count that is not
  // the grid's (the search then scans); node numbers out of range; a grid
  // whose lists are damaged. ASan checks that nothing reads outside.
  for (const int32_t any_hint : {-100, 0, 19, 1 << 30}) {
    SurfaceView s = mesh.view();
    EXPECT_EQ(surface_at(s, 1.5, 1.5, false, any_hint).flag, 0);
    s.triangle_count = 1000;
    s.cell_count = 3;
    EXPECT_EQ(surface_at(s, 1.5, 1.5, true, any_hint).flag, 0);
    s.node_count = 1000;
    EXPECT_EQ(surface_at(s, 1.5, 1.5, true, any_hint).flag, 1);
  }
  std::vector<int32_t> wrong = mesh.triangles;
  for (auto& node : wrong) node = node == 1 ? 999 : node;
  SurfaceView s = mesh.view();
  s.triangles = wrong;
  std::array<int32_t, 3> corners{};
  EXPECT_EQ(find_triangle(0.1, 0.05, s, corners), 0);  // only triangles with node 1 hold it
  EXPECT_GT(find_triangle(2.5, 2.5, s, corners), 0);
  TriangleGrid bad_grid = mesh.grid;
  for (auto& m : bad_grid.members) m = -m;
  bad_grid.first.back() = 1 << 30;  // the last list claims to run past its end
  s = mesh.view();
  s.grid = &bad_grid;
  EXPECT_EQ(find_triangle(2.9, 2.9, s, corners), 0);
}

TEST(Surface3dSmooth, SmoothAcrossEveryEdgeWhereThePlanesKink) {
  const Mesh mesh = make_mesh(5, 4, 4.0F, wavy_floor);
  const auto s = mesh.view();
  const auto at = [&](int32_t node, int c) {
    return double{mesh.nodes[static_cast<std::size_t>(c * mesh.node_count + node - 1)]};
  };
  for (int32_t t = 0; t < mesh.triangle_count; ++t) {
    const int32_t* c = &mesh.triangles[static_cast<std::size_t>(3 * t)];
    const double cx = (at(c[0], 1) + at(c[1], 1) + at(c[2], 1)) / 3.0;
    const double cy = (at(c[0], 2) + at(c[1], 2) + at(c[2], 2)) / 3.0;
    for (int e = 0; e < 3; ++e) {
      const double ax = at(c[e], 1), ay = at(c[e], 2);
      // Across the triangle's edge, and across the inner line from a corner
      // to the centroid, at a point part of the way along each.
      const double lines[2][2] = {{at(c[(e + 1) % 3], 1), at(c[(e + 1) % 3], 2)}, {cx, cy}};
      for (const auto& [bx, by] : lines) {
        const double mx = ax + 0.37 * (bx - ax), my = ay + 0.37 * (by - ay);
        const double len = std::hypot(bx - ax, by - ay);
        const double nx = -(by - ay) / len * 1e-7, ny = (bx - ax) / len * 1e-7;
        const auto one = surface_at(s, mx + nx, my + ny, true);
        const auto other = surface_at(s, mx - nx, my - ny, true);
        if (one.flag != 0 || other.flag != 0) continue;  // a boundary edge
        EXPECT_NEAR(one.h, other.h, 1e-6);
        const auto g1 = gradient(one.n), g2 = gradient(other.n);
        EXPECT_NEAR(std::hypot(g1[0] - g2[0], g1[1] - g2[1]), 0.0, 1e-5) << "triangle " << t + 1 << " edge " << e;
      }
    }
  }
}

}  // namespace
}  // namespace tmrdar::seabed
