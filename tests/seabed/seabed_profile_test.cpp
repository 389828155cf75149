// The sea floor of a model: each geometry's height, normal, arc length and
// edge distance, the codes and nodes the header sets, and its loading.
#include "seabed/seabed_profile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>
#include <tuple>

#include "support/scratch_dir.h"
#include "support/temporary_directory.h"

namespace tmrdar::MOD_SEABED_PROFILE {
namespace {

constexpr double PI = std::numbers::pi;

void EXPECT_NORMAL(const NORMAL_VECTOR& n, const NORMAL_VECTOR& expected, double tolerance = 1e-12) {
  for (int c = 0; c < 3; ++c) EXPECT_NEAR(n[c], expected[c], tolerance) << "component " << c;
}

// h = 0.5 d - 3 with nodes at 0, 4 and 10: a straight line, given as a cubic.
constexpr const char* SLOPE_PROFILE = "TMRDAR SEABED 1\nprofile cubic\n0 -3\n4 -1\n10 2\n";
constexpr const char* LEVEL_PROFILE = "TMRDAR SEABED 1\nprofile linear\n-100 -50\n100 -50\n";
// The plane h = 0.5 x - 0.25 y - 30 over the square 0..10, in two triangles.
constexpr const char* PLANE_SURFACE =
    "TMRDAR SEABED 1\nsurface cubic\nnodes\n1 0 0 -30\n2 10 0 -25\n3 0 10 -32.5\n4 10 10 -27.5\n"
    "triangles\n1 2 4\n1 4 3\n";

T_SEABED_PROFILE LOADED(const testing::SCRATCH_DIR& dir, int32_t code, const char* text) {
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(code);
  int32_t status = -1;
  std::string why;
  p.LOAD_FROM_FILE(nullptr, dir.WRITE("floor.seabed", text), &why, status);
  EXPECT_EQ(status, 0) << why;
  return p;
}

TEST(SeabedProfile, FlatSlopeAndCodes) {
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(GEOMETRY_FLAT);
  double h = -1.0;
  NORMAL_VECTOR n{7.0, 8.0, 9.0};
  int32_t hint = 42;
  p.HEIGHT(-1e6, 37.5, h, &n, &hint);
  EXPECT_EQ(std::make_tuple(h, n, hint), std::make_tuple(0.0, NORMAL_VECTOR{1.0, 0.0, 0.0}, 1));
  EXPECT_EQ(p.HORIZONTAL_DISTANCE_TO_EDGE(0.0, 0.0, 0.0), -1.0);
  p.SET_GEOMETRY_AND_INTERPOLATION(GEOMETRY_SLOPE);
  p.SET_DIRECTION(90.0F);  // the floor rises towards +y
  p.SET_SLOPE(10.0F);
  p.HEIGHT(500.0, 20.0, h, &n);
  EXPECT_NEAR(h, 20.0 * std::tan(10.0 * PI / 180.0), 1e-12);
  EXPECT_NORMAL(n, {std::cos(10.0 * PI / 180.0), 0.0, -std::sin(10.0 * PI / 180.0)}, 1e-15);

  // Combined codes 4 to 8 set both fields; below 4 only the geometry, above 8 nothing.
  p.SET_INTERPOLATION(3);
  const std::tuple<int32_t, int32_t, int32_t, int32_t> codes[] = {
      {2, 2, 3, 2}, {4, 4, 0, 4}, {5, 4, 2, 5}, {6, 4, 3, 6}, {7, 5, 0, 7}, {8, 5, 1, 8}, {9, 5, 1, 8}};
  for (const auto& [code, geometry, interpolation, combined] : codes) {
    p.SET_GEOMETRY_AND_INTERPOLATION(code);
    EXPECT_EQ(std::make_tuple(p.GEOMETRY(), p.INTERPOLATION(), p.GEOMETRY_AND_INTERPOLATION()),
              std::make_tuple(geometry, interpolation, combined)) << code;
  }
  p.SET_GEOMETRY(4);
  p.SET_INTERPOLATION(1);
  EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), -1);
}

TEST(SeabedProfile, NodeProfileFromTheHeader) {
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(3);
  p.SET_DIRECTION(90.0F);  // distance along +y
  int32_t status = -1;
  const auto set_nodes = [&](const std::vector<float>& nodes) {  // (distance, height) pairs
    p.ALLOCATE_NODES(static_cast<int32_t>(nodes.size() / 2), &status);
    for (int32_t i = 1; 2 * i <= static_cast<int32_t>(nodes.size()); ++i) {
      p.SET_NODE(i, 2, nodes[2 * i - 2]), p.SET_NODE(i, 1, nodes[2 * i - 1]);
    }
    return p.ANY_VERTICAL_SLOPES();
  };
  ASSERT_FALSE(set_nodes({2, 0, 0, 0, 1, 1}) || status != 0);  // out of order
  p.SET_NODE(4, 1, 5.0F);  // outside the table: ignored
  EXPECT_EQ(p.NODE(4, 1), 0.0F);
  p.SORT();
  EXPECT_EQ(std::make_tuple(p.NODE(1, 2), p.NODE(2, 2), p.NODE(3, 2), p.NODE(2, 1)), std::tuple(0.F, 1.F, 2.F, 1.F));
  double h = 0.0;
  NORMAL_VECTOR n{};
  p.HEIGHT(123.0, 0.5, h, &n);
  EXPECT_NEAR(h, 0.5, 1e-13);
  EXPECT_NORMAL(n, {std::sqrt(0.5), 0.0, -std::sqrt(0.5)});
  p.SET_INTERPOLATION(2);  // the natural spline, fitted when first needed
  p.HEIGHT(0.0, 0.5, h);
  EXPECT_DOUBLE_EQ(h, 0.6875);
  p.SET_NODE(2, 1, 2.0F);  // a changed node refits it: M = (0, -6, 0)
  p.HEIGHT(0.0, 0.5, h);
  EXPECT_DOUBLE_EQ(h, 1.375);
  p.SET_INTERPOLATION(1);  // no profile code: level at 0
  p.HEIGHT(0.0, 1.0, h, &n);
  EXPECT_EQ(h, 0.0);
  // Vertical slopes are neighbours at one distance, of different heights.
  EXPECT_TRUE(set_nodes({0, 0, 1, 0, 1, 5, 2, 5}));
  EXPECT_FALSE(set_nodes({0, 0, 1, 3, 1, 3, 2, 5}));
  EXPECT_FALSE(set_nodes({0, 0, 1, 0, 2, 5, 1, 7}));
}

TEST(SeabedProfile, ProfileAndSurfaceFilesAnswerHeightNormalArcAndEdge) {
  testing::SCRATCH_DIR dir;
  T_SEABED_PROFILE p = LOADED(dir, 4, SLOPE_PROFILE);
  EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), 5);  // the file says cubic
  double h = 0.0;
  NORMAL_VECTOR n{};
  int32_t hint = -50;  // any value will do, and the new one comes back
  p.HEIGHT(7.0, -3.0, h, &n, &hint);
  EXPECT_NEAR(h, 0.5, 1e-14);
  EXPECT_EQ(hint, 3);
  EXPECT_NORMAL(n, {1.0 / std::sqrt(1.25), -0.5 / std::sqrt(1.25), 0.0});
  EXPECT_NEAR(p.ARC_LENGTH(0.0, 0.0, 6.0, 8.0), std::sqrt(36.0 * 1.25 + 64.0), 1e-12);
  // The edges are the nodes at 0, 4 and 10; -1 across the profile, before
  // the first, after the last, and with nothing ahead.
  const std::tuple<double, double, double, double> edges[] = {
      {1.0, 0.0, 0.0, 3.0}, {1.0, 5.0, PI / 3.0, 6.0}, {10.0, 0.0, PI, 6.0}, {1.0, 0.0, PI / 2.0, -1.0},
      {-5.0, 0.0, 0.0, -1.0}, {20.0, 0.0, PI, -1.0}, {10.0, 0.0, 0.0, -1.0}};
  for (const auto& [x, y, direction, distance] : edges) {
    EXPECT_NEAR(p.HORIZONTAL_DISTANCE_TO_EDGE(x, y, direction), distance, 1e-9) << x << ", " << y << ", " << direction;
  }
  for (const int32_t code : {7, 8}) {
    T_SEABED_PROFILE s = LOADED(dir, code, PLANE_SURFACE);
    s.SET_INTERPOLATION(code - 7);  // the file said cubic: try both
    const double k = 1.0 / std::sqrt(1.3125);
    int32_t flag = -1;
    hint = 99;
    s.HEIGHT(7.5, 2.5, h, &n, &hint, &flag);
    EXPECT_NEAR(h, -26.875, 1e-12);
    EXPECT_NORMAL(n, {k, -0.5 * k, 0.25 * k});
    EXPECT_EQ(std::make_pair(flag, hint), std::make_pair(0, 1));
    s.HEIGHT(-1.0, 5.0, h, &n, &hint, &flag);
    EXPECT_EQ(flag, 1);
    // From (6, 1) up and to the left the diagonal is ahead; from outside, nothing.
    EXPECT_NEAR(s.HORIZONTAL_DISTANCE_TO_EDGE(2.0, 1.0, 0.0), 8.0, 1e-12);
    EXPECT_NEAR(s.HORIZONTAL_DISTANCE_TO_EDGE(6.0, 1.0, 0.75 * PI), 5.0 / std::sqrt(2.0), 1e-12);
    EXPECT_EQ(s.HORIZONTAL_DISTANCE_TO_EDGE(10.0, 1.0, 0.0), -1.0);
  }
}

// A NORMAL of its own reaches ARC_LENGTH through the type's table.
class CONSTANT_NORMAL : public T_SEABED_PROFILE {
 public:
  void NORMAL(double, double, NORMAL_VECTOR& normal) override { normal = NORMAL_VECTOR{0.6, 0.0, -0.8}; }
};

TEST(SeabedProfile, HelperProcedures) {
  PLAN_POINT x{};
  INTERSECTION({0, 0}, {1, 1}, {0, 1}, {1, 2}, x);  // parallel: far away
  EXPECT_EQ(x, (PLAN_POINT{1e10, 1e10}));
  EXPECT_NEAR(DISTANCE_TO_LINE({1, 1}, PI, {4, -5}, {4, 5}), -3.0, 1e-12);  // behind
  // Gradient (0, 4/3): along y the length is 5/3 a metre. A flat floor writes
  // no normal and integrates the slope the last one left.
  EXPECT_NEAR(CONSTANT_NORMAL().ARC_LENGTH(0.0, 0.0, 0.0, 3.0), 5.0, 1e-12);
  testing::SCRATCH_DIR dir;
  T_SEABED_PROFILE flat;
  flat.SET_GEOMETRY(GEOMETRY_FLAT);
  T_SEABED_PROFILE level = LOADED(dir, 4, LEVEL_PROFILE);
  T_SEABED_PROFILE sloped = LOADED(dir, 4, SLOPE_PROFILE);
  for (const auto& [last, length] : {std::pair{&level, 10.0}, {&sloped, 10.0 * std::sqrt(1.25)}}) {
    last->ARC_LENGTH(0.0, 0.0, 1.0, 0.0);
    EXPECT_NEAR(flat.ARC_LENGTH(0.0, 0.0, 10.0, 0.0), length, 1e-12);
  }
}

TEST(SeabedProfile, FailedLoadsKeepWhatWasLoadedAndDestroyReleases) {
  testing::SCRATCH_DIR dir;
  T_SEABED_PROFILE p = LOADED(dir, 4, SLOPE_PROFILE);
  int32_t status = -1;
  int32_t line = -1;
  std::string why;
  p.LOAD_FROM_FILE(&line, dir.WRITE("bad.seabed", "TMRDAR SEABED 1\nprofile linear\n0 0\n2 1\n1 1\n"), &why,
                   status);
  EXPECT_EQ(std::make_pair(status, line), std::make_pair(seabed::STATUS_BAD_DATA, 5));
  EXPECT_FALSE(why.empty());
  p.LOAD_FROM_FILE(&line, dir.WRITE("s.seabed", PLANE_SURFACE), &why, status);
  EXPECT_EQ(status, seabed::STATUS_WRONG_FORM);
  double h = 0.0;
  p.HEIGHT(4.0, 0.0, h);
  EXPECT_NEAR(h, -1.0, 1e-14);
  EXPECT_TRUE(IS_TIDEMAR_SEABED_FILE(dir.WRITE("ok.seabed", LEVEL_PROFILE)));
  EXPECT_FALSE(IS_TIDEMAR_SEABED_FILE(dir.WRITE("no.seabed", "a,b,c\n1,2,3\n")));
  p.SET_GEOMETRY(GEOMETRY_FLAT);  // other geometries load nothing and clear the status
  p.LOAD_FROM_FILE(nullptr, dir.FILE("missing"), nullptr, status);
  EXPECT_EQ(status, 0);

  T_SEABED_PROFILE s = LOADED(dir, 8, PLANE_SURFACE);
  s.SET_DATA_BLOCK("bytes", 3, 12);
  s.DESTROY();
  EXPECT_EQ(std::make_tuple(s.NUM_NODES(), s.DATA_BLOCK().LENGTH_STRING(), s.GEOMETRY_AND_INTERPOLATION()),
            std::make_tuple(0, 0, 8));  // codes stay
  int32_t flag = 0;
  s.HEIGHT(5.0, 5.0, h, nullptr, nullptr, &flag);
  EXPECT_EQ(flag, 1);
}

TEST(SeabedDataBlock, LoadsThroughAScratchFileThatIsAlwaysRemoved) {
  testing::SCRATCH_DIR scratch;
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(7);
  // Bytes, block type, whether the temporary directory exists, and the status.
  for (const auto& [bytes, type, directory, expected] :
       {std::tuple<const char*, int32_t, bool, int32_t>{PLANE_SURFACE, 2, true, STATUS_WRONG_BLOCK_TYPE},
        {PLANE_SURFACE, SEABED_BLOCK_TYPE, false, STATUS_OPEN_FAILED}, {PLANE_SURFACE, SEABED_BLOCK_TYPE, true, 0},
        {"not a seabed", SEABED_BLOCK_TYPE, true, seabed::STATUS_NOT_SEABED}}) {
    testing::TEMPORARY_DIRECTORY_SET tmpdir(directory ? scratch.PATH().string() : scratch.FILE("none"));
    p.SET_DATA_BLOCK(bytes, type, 4);
    int32_t status = -1;
    p.LOAD_FROM_DATA_BLOCK(nullptr, nullptr, status);
    EXPECT_EQ(status, expected) << bytes;
    EXPECT_TRUE(std::filesystem::is_empty(scratch.PATH()));
  }
  double h = 0.0;
  p.HEIGHT(10.0, 10.0, h);  // the failed load kept the surface
  EXPECT_NEAR(h, -27.5, 1e-12);
  EXPECT_EQ(std::make_pair(p.NUM_TRIANGLES(), p.DATA_BLOCK().GET_KEY()), std::make_pair(2, 4));
}

}  // namespace
}  // namespace tmrdar::MOD_SEABED_PROFILE
