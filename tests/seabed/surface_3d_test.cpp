// Surfaces in the seabed library: the triangle search, the plane and the C1
// surface, and arrays that do not agree with their counts.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

#include "seabed/library/seabed.h"

namespace tmrdar::seabed {
namespace {

// A triangulated rectangle of nx by ny cells of size `cell`, with its inner
// nodes moved by whole eighths so that the triangles are uneven; every
// coordinate is exact in 32 bits.
struct MESH {
  int32_t NODE_COUNT = 0;
  int32_t TRIANGLE_COUNT = 0;
  std::vector<float> NODES;
  std::vector<int32_t> TRIANGLES;
  TRIANGLE_GRID GRID;
  std::vector<double> GRADIENTS;

  SURFACE_VIEW VIEW(bool with_grid = true) const {
    SURFACE_VIEW v;
    v.NODE_COUNT = NODE_COUNT;
    v.TRIANGLE_COUNT = TRIANGLE_COUNT;
    v.CELL_COUNT = GRID.NX * GRID.NY;
    v.NODES = NODES;
    v.TRIANGLES = TRIANGLES;
    v.GRID = with_grid ? &GRID : nullptr;
    v.GRADIENTS = GRADIENTS;
    return v;
  }
};

MESH MAKE_MESH(int32_t nx, int32_t ny, float cell, const std::function<double(double, double)>& f) {
  MESH mesh;
  std::mt19937 random(11);
  std::uniform_int_distribution<int> eighths(-2, 2);
  std::vector<float> x;
  std::vector<float> y;
  for (int32_t j = 0; j <= ny; ++j) {
    for (int32_t i = 0; i <= nx; ++i) {
      const bool inner = i > 0 && i < nx && j > 0 && j < ny;
      x.push_back(static_cast<float>(i) * cell + (inner ? static_cast<float>(eighths(random)) * 0.125F : 0.0F));
      y.push_back(static_cast<float>(j) * cell + (inner ? static_cast<float>(eighths(random)) * 0.125F : 0.0F));
    }
  }
  const auto n = x.size();
  mesh.NODE_COUNT = static_cast<int32_t>(n);
  mesh.NODES.resize(3 * n);
  for (std::size_t k = 0; k < n; ++k) {
    mesh.NODES[k] = static_cast<float>(f(x[k], y[k]));
    mesh.NODES[n + k] = x[k];
    mesh.NODES[2 * n + k] = y[k];
  }
  const auto node = [&](int32_t i, int32_t j) { return j * (nx + 1) + i + 1; };
  for (int32_t j = 0; j < ny; ++j) {
    for (int32_t i = 0; i < nx; ++i) {
      // Alternate the diagonal, and the orientation, from cell to cell.
      if ((i + j) % 2 == 0) {
        mesh.TRIANGLES.insert(mesh.TRIANGLES.end(), {node(i, j), node(i + 1, j), node(i + 1, j + 1)});
        mesh.TRIANGLES.insert(mesh.TRIANGLES.end(), {node(i, j), node(i, j + 1), node(i + 1, j + 1)});
      } else {
        mesh.TRIANGLES.insert(mesh.TRIANGLES.end(), {node(i + 1, j), node(i, j), node(i, j + 1)});
        mesh.TRIANGLES.insert(mesh.TRIANGLES.end(), {node(i + 1, j), node(i + 1, j + 1), node(i, j + 1)});
      }
    }
  }
  mesh.TRIANGLE_COUNT = static_cast<int32_t>(mesh.TRIANGLES.size() / 3);
  build_triangle_grid(mesh.NODES, mesh.NODE_COUNT, mesh.TRIANGLES, mesh.TRIANGLE_COUNT, mesh.GRID);
  estimate_gradients(mesh.NODES, mesh.NODE_COUNT, mesh.TRIANGLES, mesh.TRIANGLE_COUNT, mesh.GRADIENTS);
  return mesh;
}

struct POINT_VALUE {
  double H = 0.0;
  NORMAL_VECTOR N{};
  int32_t FLAG = -1;
};

POINT_VALUE AT(const SURFACE_VIEW& s, double x, double y, bool cubic, int32_t hint = 1) {
  POINT_VALUE v;
  if (cubic) {
    interpolate_3d_cubic(x, y, s, hint, v.H, v.N, v.FLAG);
  } else {
    interpolate_3d_linear(x, y, s, hint, v.H, v.N, v.FLAG);
  }
  return v;
}

double PLANE(double x, double y) { return 0.5 * x - 0.25 * y - 30.0; }

TEST(Surface3d, BothFormsReproduceAPlane) {
  const MESH mesh = MAKE_MESH(6, 5, 4.0F, PLANE);
  const NORMAL_VECTOR expected = NORMAL_OF_GRADIENT(0.5, -0.25);
  std::mt19937 random(3);
  std::uniform_real_distribution<double> x(0.0, 24.0);
  std::uniform_real_distribution<double> y(0.0, 20.0);
  for (int k = 0; k < 500; ++k) {
    const double px = x(random);
    const double py = y(random);
    for (const bool cubic : {false, true}) {
      const auto v = AT(mesh.VIEW(), px, py, cubic);
      ASSERT_EQ(v.FLAG, 0);
      EXPECT_NEAR(v.H, PLANE(px, py), 1e-12) << px << ", " << py << (cubic ? " cubic" : " linear");
      for (int c = 0; c < 3; ++c) EXPECT_NEAR(v.N[c], expected[c], 1e-12);
    }
  }
  EXPECT_NEAR(expected[0] * expected[0] + expected[1] * expected[1] + expected[2] * expected[2], 1.0, 1e-15);
  EXPECT_LT(expected[1], 0.0);  // the floor rises towards +x, so the normal leans back
}

double WAVY(double x, double y) { return 5.0 * std::sin(x / 3.0) * std::cos(y / 4.0) - 40.0; }

// The gradient recovered from a normal.
std::array<double, 2> GRADIENT(const NORMAL_VECTOR& n) { return {-n[1] / n[0], -n[2] / n[0]}; }

TEST(Surface3d, CubicIsSmoothAcrossEveryEdge) {
  const MESH mesh = MAKE_MESH(5, 4, 4.0F, WAVY);
  const auto s = mesh.VIEW();
  const auto at = [&](int32_t node, int c) {
    return double{mesh.NODES[static_cast<std::size_t>(c * mesh.NODE_COUNT + node - 1)]};
  };
  double largest_linear_kink = 0.0;
  for (int32_t t = 0; t < mesh.TRIANGLE_COUNT; ++t) {
    const int32_t* c = &mesh.TRIANGLES[static_cast<std::size_t>(3 * t)];
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
        const auto one = AT(s, mx + nx, my + ny, true);
        const auto other = AT(s, mx - nx, my - ny, true);
        if (one.FLAG != 0 || other.FLAG != 0) continue;  // a boundary edge
        EXPECT_NEAR(one.H, other.H, 1e-6);
        const auto g1 = GRADIENT(one.N), g2 = GRADIENT(other.N);
        EXPECT_NEAR(std::hypot(g1[0] - g2[0], g1[1] - g2[1]), 0.0, 1e-5) << "triangle " << t + 1 << " edge " << e;
        const auto l1 = GRADIENT(AT(s, mx + nx, my + ny, false).N), l2 = GRADIENT(AT(s, mx - nx, my - ny, false).N);
        largest_linear_kink = std::max(largest_linear_kink, std::hypot(l1[0] - l2[0], l1[1] - l2[1]));
      }
    }
  }
  // The planes kink at their edges; the comparison above would see that.
  EXPECT_GT(largest_linear_kink, 0.05);
}

TEST(Surface3d, GridSearchAgreesWithAFullScan) {
  const MESH mesh = MAKE_MESH(30, 20, 2.0F, PLANE);
  std::mt19937 random(5);
  std::uniform_real_distribution<double> x(-3.0, 63.0);
  std::uniform_real_distribution<double> y(-3.0, 43.0);
  int inside = 0;
  for (int k = 0; k < 3000; ++k) {
    const double px = x(random);
    const double py = y(random);
    std::array<int32_t, 3> by_grid{};
    std::array<int32_t, 3> by_scan{};
    const int32_t t1 = find_triangle(px, py, mesh.VIEW(true), by_grid);
    const int32_t t2 = find_triangle(px, py, mesh.VIEW(false), by_scan);
    ASSERT_EQ(t1 != 0, t2 != 0) << px << ", " << py;
    if (t1 == 0) {
      EXPECT_EQ(by_grid, (std::array<int32_t, 3>{0, 0, 0}));
      continue;
    }
    ++inside;
    // Shared edges may go either way; the answer must hold the point: on the
    // same side of each edge as the opposite corner.
    const auto at = [&](int32_t node, int32_t c) {
      return double{mesh.NODES[static_cast<std::size_t>(c * mesh.NODE_COUNT + node - 1)]};
    };
    for (int m = 0; m < 3; ++m) {
      const int32_t a = by_grid[m], b = by_grid[(m + 1) % 3], o = by_grid[(m + 2) % 3];
      const auto side = [&](double qx, double qy) {
        return (at(b, 1) - at(a, 1)) * (qy - at(a, 2)) - (at(b, 2) - at(a, 2)) * (qx - at(a, 1));
      };
      EXPECT_GE(side(px, py) * side(at(o, 1), at(o, 2)), -1e-9) << px << ", " << py;
    }
  }
  EXPECT_GT(inside, 2000);
}

TEST(Surface3d, LongThinTrianglesKeepTheGridSmall) {
  // A fan of 2000 slivers round one centre node: every triangle's box is large.
  const int32_t rim = 2000;
  const auto n = static_cast<std::size_t>(rim + 1);
  std::vector<float> nodes(3 * n, -10.0F);
  nodes[n] = 0.0F;
  nodes[2 * n] = 0.0F;
  std::vector<int32_t> triangles;
  for (int32_t k = 0; k < rim; ++k) {
    const double a = 2.0 * std::numbers::pi * k / rim;
    nodes[n + 1 + static_cast<std::size_t>(k)] = static_cast<float>(1000.0 * std::cos(a));
    nodes[2 * n + 1 + static_cast<std::size_t>(k)] = static_cast<float>(1000.0 * std::sin(a));
    triangles.insert(triangles.end(), {1, k + 2, (k + 1) % rim + 2});
  }
  TRIANGLE_GRID grid;
  build_triangle_grid(nodes, rim + 1, triangles, rim, grid);
  EXPECT_LE(grid.MEMBERS.size(), static_cast<std::size_t>(16 * rim + grid.NX * grid.NY));
  SURFACE_VIEW s{rim + 1, rim, grid.NX * grid.NY, nodes, triangles, &grid, {}};
  std::array<int32_t, 3> corners{};
  EXPECT_GT(find_triangle(300.0, 200.0, s, corners), 0);
  EXPECT_EQ(find_triangle(800.0, 800.0, s, corners), 0);  // outside the circle
}

TEST(Surface3d, OutsideAndInconsistentArraysAnswerSafely) {
  const MESH mesh = MAKE_MESH(3, 3, 1.0F, PLANE);
  int32_t hint = 4;
  auto v = AT(mesh.VIEW(), -5.0, 1.0, true, hint);
  EXPECT_EQ(v.FLAG, 1);
  EXPECT_EQ(v.H, 0.0);
  EXPECT_EQ(v.N, (NORMAL_VECTOR{1.0, 0.0, 0.0}));
  EXPECT_EQ(AT(mesh.VIEW(), std::nan(""), 1.0, false).FLAG, 1);
  // Hints of any value; counts beyond the arrays; a cell count that is not
  // the grid's (the search then scans); node numbers out of range; a grid
  // whose lists are damaged. ASan checks that nothing reads outside.
  for (const int32_t any_hint : {-100, 0, 18, 19, 1 << 30}) {
    SURFACE_VIEW s = mesh.VIEW();
    EXPECT_EQ(AT(s, 1.5, 1.5, false, any_hint).FLAG, 0);
    s.TRIANGLE_COUNT = 1000;
    s.CELL_COUNT = 3;
    EXPECT_EQ(AT(s, 1.5, 1.5, true, any_hint).FLAG, 0);
    s.NODE_COUNT = 1000;
    EXPECT_EQ(AT(s, 1.5, 1.5, true, any_hint).FLAG, 1);
  }
  std::vector<int32_t> wrong = mesh.TRIANGLES;
  for (auto& node : wrong) node = node == 1 ? 999 : node;
  SURFACE_VIEW s = mesh.VIEW();
  s.TRIANGLES = wrong;
  std::array<int32_t, 3> corners{};
  EXPECT_EQ(find_triangle(0.1, 0.05, s, corners), 0);  // only triangles with node 1 hold it
  EXPECT_GT(find_triangle(2.5, 2.5, s, corners), 0);
  TRIANGLE_GRID bad_grid = mesh.GRID;
  for (auto& m : bad_grid.MEMBERS) m = -m;
  bad_grid.FIRST.back() = 1 << 30;  // the last list claims to run past its end
  s = mesh.VIEW();
  s.GRID = &bad_grid;
  EXPECT_EQ(find_triangle(2.9, 2.9, s, corners), 0);
}

}  // namespace
}  // namespace tmrdar::seabed
