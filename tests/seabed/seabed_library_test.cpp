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

struct LOADED {
  int32_t STATUS = -1, INTERPOLATION = -1, COUNT = -1, TRIANGLES = -1, CELLS = -1;
  std::vector<float> NODES;
  std::vector<double> M;
  std::vector<int32_t> TABLE;
  TRIANGLE_GRID GRID;
  LOAD_REPORT REPORT;
};

LOADED LOAD(const std::string& path, bool surface) {
  LOADED r;
  r.STATUS = surface ? load_seabed_3d(path, r.INTERPOLATION, r.COUNT, r.TRIANGLES, r.CELLS, r.NODES, r.TABLE, r.GRID,
                                      r.M, &r.REPORT)
                     : load_seabed_2d(path, r.INTERPOLATION, r.COUNT, r.NODES, r.M, &r.REPORT);
  return r;
}

TEST(SeabedFile, AProfileAndTheDocumentedExamplesLoad) {
  testing::SCRATCH_DIR dir;
  const auto path = dir.WRITE("p.seabed", "TMRDAR SEABED 1\r\n# comment\r\n\r\nProfile CUBIC  # any case\r\n"
                                          "0 0\r\n+1.0 1e0\r\n2\t0\r\n");
  EXPECT_EQ(open_seabed_file(path), STATUS_OK);
  const auto r = LOAD(path, false);
  ASSERT_EQ(r.STATUS, STATUS_OK) << r.REPORT.TEXT;
  EXPECT_EQ(std::make_pair(r.INTERPOLATION, r.COUNT), std::make_pair(PROFILE_CUBIC, 3));
  EXPECT_EQ(r.NODES, (std::vector<float>{0, 1, 0, 0, 1, 2}));  // heights, then distances
  EXPECT_EQ(r.M, (std::vector<double>{0, -3, 0}));              // 2(1 + 1) M2 = 6(-1 - 1)
  const std::string docs = TMRDAR_DOCS_DIR;
  const auto profile = LOAD(docs + "/examples/channel-profile.seabed", false);
  EXPECT_EQ(std::make_pair(profile.STATUS, profile.COUNT), std::make_pair(STATUS_OK, 7)) << profile.REPORT.TEXT;
  const auto surface = LOAD(docs + "/examples/mound-surface.seabed", true);
  EXPECT_EQ(std::make_tuple(surface.STATUS, surface.TRIANGLES, surface.INTERPOLATION),
            std::make_tuple(STATUS_OK, 8, SURFACE_CUBIC)) << surface.REPORT.TEXT;
}

TEST(SeabedFile, BadFilesAreRefusedAtTheirLine) {
  struct BAD_FILE {
    bool SURFACE;
    std::string TEXT;
    int32_t STATUS;
    int32_t LINE;
  };
  const std::string head = "TMRDAR SEABED 1\n";
  const std::string surface = head + "surface cubic\n";
  const std::string nodes = surface + "nodes\n1 0 0 0\n2 1 0 0\n3 0 1 0\n4 2 2 0\n";  // lines 1-7
  const BAD_FILE cases[] = {
      {false, "", STATUS_NOT_SEABED, 1},
      {false, "TMRDAR SEABED 2\nprofile linear\n0 0\n1 1\n", STATUS_NOT_SEABED, 1},
      {false, head, STATUS_BAD_DATA, 2},                           // nothing described
      {false, head + "profile linear\n", STATUS_BAD_DATA, 3},      // empty profile
      {false, head + "profile cubic\n0 -10\n", STATUS_BAD_DATA, 4},  // one node
      {false, head + "profile spline\n", STATUS_SYNTAX, 2},
      {false, head + "profile linear\n0 1\n1 2 3\n", STATUS_SYNTAX, 4},
      {false, head + "profile linear\n0 1\n1 2m\n", STATUS_SYNTAX, 4},
      {false, head + "profile linear\n0 1\n1 1e39\n", STATUS_SYNTAX, 4},  // beyond 32 bits
      {false, head + "profile linear\n0 1\n5 2\n4 2\n", STATUS_BAD_DATA, 5},
      {true, nodes + "triangles\n1 2 2\n", STATUS_BAD_DATA, 9},  // repeated node
      {true, nodes + "triangles\n1 2 5\n", STATUS_BAD_DATA, 9},  // out of range
      {true, nodes + "triangles\n1 2 99999999999\n", STATUS_BAD_DATA, 9},
      {true, nodes + "triangles\n2 3 1\n1 2\n", STATUS_SYNTAX, 10},
      {true, nodes, STATUS_BAD_DATA, 8},                   // no triangles line
      {true, nodes + "triangles\n", STATUS_BAD_DATA, 9},  // no triangles
      {true, surface + "nodes\n1 0 0 0\n3 1 0 0\n", STATUS_BAD_DATA, 5},  // out of sequence
      {true, surface + "1 0 0 0\n", STATUS_SYNTAX, 3},                    // no nodes line
      {true, surface + "nodes\n1 0 0 0\n2 1 1 0\n3 2 2 0\ntriangles\n1 2 3\n", STATUS_BAD_DATA, 8},  // collinear
  };
  for (const auto& c : cases) {
    testing::SCRATCH_DIR dir;
    const auto path = dir.WRITE("bad.seabed", c.TEXT);
    const auto r = LOAD(path, c.SURFACE);
    EXPECT_EQ(std::make_tuple(r.STATUS, r.REPORT.LINE, r.COUNT), std::make_tuple(c.STATUS, c.LINE, -1))
        << c.TEXT << r.REPORT.TEXT;  // outputs are written only on success
    EXPECT_EQ(open_seabed_file(path), c.STATUS) << c.TEXT;
  }
  testing::SCRATCH_DIR dir;
  const auto profile = dir.WRITE("p.seabed", "TMRDAR SEABED 1\nprofile linear\n0 0\n1 1\n");
  const auto surface_file = dir.WRITE("s.seabed", "TMRDAR SEABED 1\nsurface linear\nnodes\n1 0 0 0\n2 1 0 0\n"
                                             "3 0 1 0\ntriangles\n1 2 3\n");
  EXPECT_EQ(LOAD(profile, true).STATUS, STATUS_WRONG_FORM);
  EXPECT_EQ(LOAD(surface_file, false).STATUS, STATUS_WRONG_FORM);
  EXPECT_EQ(LOAD(dir.FILE("missing"), false).STATUS, STATUS_CANNOT_READ);
  EXPECT_EQ(open_seabed_file(dir.PATH().string()), STATUS_CANNOT_READ);  // a directory
}

// A two-column node table (heights, then distances) from (distance, height) pairs.
std::vector<float> TABLE(const std::vector<std::pair<float, float>>& points) {
  const std::size_t n = points.size();
  std::vector<float> table(2 * n);
  for (std::size_t i = 0; i < n; ++i) table[i] = points[i].second, table[n + i] = points[i].first;
  return table;
}

int32_t COUNT(const std::vector<float>& table) { return static_cast<int32_t>(table.size() / 2); }

std::pair<double, double> AT(const std::vector<float>& t, double s, bool cubic, int32_t hint = 1) {
  std::vector<double> m;
  fit_spline_2d(t, COUNT(t), m);
  std::pair<double, double> v{-1.0, -1.0};
  cubic ? interpolate_2d_cubic(s, COUNT(t), t, m, hint, v.first, v.second)
        : interpolate_2d_linear(s, COUNT(t), t, hint, v.first, v.second);
  return v;
}

TEST(Profile2dLinear, SegmentsValuesAndShortTables) {
  const auto step = TABLE({{0, 0}, {10, 0}, {10, 5}, {20, 5}});  // a vertical step at 10
  for (const auto& [s, segment] : {std::pair{-1.0, 1}, {0.0, 2}, {9.99, 2}, {10.0, 4}, {20.0, 5}, {1e30, 5}}) {
    for (const int32_t hint : {-300, 1, 3, 300}) {
      int32_t h = hint;
      EXPECT_EQ(find_segment(step, 4, s, h), segment) << s << " from " << hint;
      EXPECT_EQ(h, segment) << s;
    }
  }
  int32_t empty_hint = 7;
  EXPECT_EQ(find_segment({}, 0, 3.0, empty_hint), 1);

  const auto t = TABLE({{0, -10}, {10, -20}, {30, -20}});
  // A shared node takes the segment ahead; beyond the ends the floor is level.
  for (const auto& [s, h, m] : {std::tuple{5.0, -15.0, -1.0}, {10.0, -20.0, 0.0}, {-100.0, -10.0, 0.0},
                                {1e9, -20.0, 0.0}}) {
    EXPECT_EQ(AT(t, s, false), std::make_pair(h, m)) << s;
  }
  EXPECT_EQ(AT(TABLE({{3, -40}}), -9, false), std::make_pair(-40.0, 0.0));
  const auto short_table = TABLE({{0, 4}, {1, 6}});
  int32_t hint = 99;
  double h = -1.0;
  double m = -1.0;
  interpolate_2d_linear(0.5, 3, short_table, hint, h, m);  // claims more rows than it has
  EXPECT_EQ(std::make_pair(h, m), std::make_pair(0.0, 0.0));
}

TEST(Profile2dCubic, NaturalSplinesEitherSideOfAStepAndShortTables) {
  // M = (0, -3, 0) on each side; at 0.5: 0.5 + (0.125 - 0.5)(-3) / 6 =
  // 0.6875, and the slope 1 + (3 * 0.25 - 1)(-3) / 6 = 1.125.
  const auto t = TABLE({{0, 0}, {1, 1}, {2, 0}, {2, 5}, {3, 6}, {4, 5}});
  std::vector<double> m;
  fit_spline_2d(t, COUNT(t), m);
  EXPECT_EQ(m, (std::vector<double>{0, -3, 0, 0, -3, 0}));
  for (const auto& [s, h, slope] : {std::tuple{0.5, 0.6875, 1.125}, {1.5, 0.6875, -1.125}, {1.0, 1.0, 0.0},
                                    {2.0, 5.0, 1.5}, {2.5, 5.6875, 1.125}}) {
    EXPECT_EQ(AT(t, s, true), std::make_pair(h, slope)) << s;
  }
  // Uneven nodes: through each node, with one slope either side of it.
  const auto u = TABLE({{-200, -120}, {-120, -121.5}, {-60, -128}, {0, -131}, {60, -128.5}, {250, -119}});
  for (int32_t i = 1; i < COUNT(u) - 1; ++i) {
    const double d = u[static_cast<std::size_t>(COUNT(u) + i)];
    EXPECT_NEAR(AT(u, d, true).first, u[static_cast<std::size_t>(i)], 1e-12) << i;
    EXPECT_NEAR(AT(u, d - 1e-7, true).second, AT(u, d + 1e-7, true).second, 1e-8) << i;
  }
  EXPECT_EQ(AT(TABLE({{3, -40}}), 9, true), std::make_pair(-40.0, 0.0));
  const auto two = TABLE({{0, 4}, {1, 6}});
  int32_t hint = 1;
  double h = -1.0;
  double slope = -1.0;
  interpolate_2d_cubic(0.5, 2, two, std::vector<double>{1.0}, hint, h, slope);  // short M: straight
  EXPECT_DOUBLE_EQ(h, 5.0);
  interpolate_2d_cubic(0.5, -2, two, {}, hint, h, slope);
  EXPECT_EQ(h, 0.0);
  const auto odd = TABLE({{5, 1}, {5, 1}, {2, 7}, {9, 0}, {-1, 3}});  // coincident, out of order
  for (double s = -3.0; s < 11.0; s += 0.5) EXPECT_TRUE(std::isfinite(AT(odd, s, true).first)) << s;
}

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
    return {NODE_COUNT, TRIANGLE_COUNT, GRID.NX * GRID.NY, NODES, TRIANGLES, with_grid ? &GRID : nullptr, GRADIENTS};
  }
};

MESH MAKE_MESH(int32_t nx, int32_t ny, float cell, const std::function<double(double, double)>& f) {
  MESH mesh;
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
  mesh.NODE_COUNT = static_cast<int32_t>(n);
  mesh.NODES.resize(3 * n);
  for (std::size_t k = 0; k < n; ++k) {
    mesh.NODES[k] = static_cast<float>(f(x[k], y[k])), mesh.NODES[n + k] = x[k], mesh.NODES[2 * n + k] = y[k];
  }
  const auto node = [&](int32_t i, int32_t j) { return j * (nx + 1) + i + 1; };
  for (int32_t j = 0; j < ny; ++j) {
    for (int32_t i = 0; i < nx; ++i) {
      // Alternate the diagonal, and the orientation, from cell to cell.
      const int32_t a = node(i, j), b = node(i + 1, j), c = node(i + 1, j + 1), d = node(i, j + 1);
      for (const int32_t v : (i + j) % 2 == 0 ? std::array{a, b, c, a, d, c} : std::array{b, a, d, b, c, d}) {
        mesh.TRIANGLES.push_back(v);
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
  (cubic ? interpolate_3d_cubic : interpolate_3d_linear)(x, y, s, hint, v.H, v.N, v.FLAG);
  return v;
}

double PLANE(double x, double y) { return 0.5 * x - 0.25 * y - 30.0; }
double WAVY(double x, double y) { return 5.0 * std::sin(x / 3.0) * std::cos(y / 4.0) - 40.0; }

// The gradient recovered from a normal.
std::array<double, 2> GRADIENT(const NORMAL_VECTOR& n) { return {-n[1] / n[0], -n[2] / n[0]}; }

TEST(Surface3dLinear, PlanesTheGridSearchAndDamagedArrays) {
  const MESH plane = MAKE_MESH(6, 5, 4.0F, PLANE);
  const MESH wavy = MAKE_MESH(30, 20, 2.0F, WAVY);
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
      const auto v = AT(plane.VIEW(), qx, qy, cubic);
      EXPECT_NEAR(v.H, PLANE(qx, qy), 1e-12) << qx << ", " << qy;
      for (int c = 0; c < 3; ++c) EXPECT_NEAR(v.N[c], NORMAL_OF_GRADIENT(0.5, -0.25)[c], 1e-12);
    }
    const auto by_grid = AT(wavy.VIEW(true), px, py, false);
    const auto by_scan = AT(wavy.VIEW(false), px, py, false);
    ASSERT_EQ(by_grid.FLAG, by_scan.FLAG) << px << ", " << py;
    EXPECT_NEAR(by_grid.H, by_scan.H, 1e-9) << px << ", " << py;
  }
  EXPECT_LT(NORMAL_OF_GRADIENT(0.5, -0.25)[1], 0.0);  // rising towards +x, the normal leans back

  const MESH mesh = MAKE_MESH(3, 3, 1.0F, PLANE);
  const auto outside = AT(mesh.VIEW(), -5.0, 1.0, true, 4);
  EXPECT_EQ(std::make_tuple(outside.FLAG, outside.H, outside.N), std::make_tuple(1, 0.0, NORMAL_VECTOR{1.0, 0.0, 0.0}));
  EXPECT_EQ(AT(mesh.VIEW(), std::nan(""), 1.0, false).FLAG, 1);
  // Hints of any value; counts beyond the arrays; a cell count that is not
  // the grid's (the search then scans); node numbers out of range; a grid
  // whose lists are damaged. ASan checks that nothing reads outside.
  for (const int32_t any_hint : {-100, 0, 19, 1 << 30}) {
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

TEST(Surface3dSmooth, SmoothAcrossEveryEdgeWhereThePlanesKink) {
  const MESH mesh = MAKE_MESH(5, 4, 4.0F, WAVY);
  const auto s = mesh.VIEW();
  const auto at = [&](int32_t node, int c) {
    return double{mesh.NODES[static_cast<std::size_t>(c * mesh.NODE_COUNT + node - 1)]};
  };
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
      }
    }
  }
}

}  // namespace
}  // namespace tmrdar::seabed
