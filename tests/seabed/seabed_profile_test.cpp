// The sea floor of a model: each geometry's height, normal, arc length and
// edge distance, the codes, angles and node table that the header sets, and
// loading from files and data blocks.
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

TEST(SeabedProfile, FlatAndPlaneSlopeWithAnglesWidenedFrom32Bits) {
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(GEOMETRY_FLAT);
  double h = -1.0;
  NORMAL_VECTOR n{7.0, 8.0, 9.0};
  int32_t hint = 42;
  p.NORMAL(1.0, 2.0, n);
  EXPECT_EQ(n, (NORMAL_VECTOR{7.0, 8.0, 9.0}));
  p.HEIGHT(-1e6, 37.5, h, &n, &hint);
  EXPECT_EQ(std::make_tuple(h, n, hint), std::make_tuple(0.0, NORMAL_VECTOR{1.0, 0.0, 0.0}, 1));
  EXPECT_EQ(p.HORIZONTAL_DISTANCE_TO_EDGE(0.0, 0.0, 0.0), -1.0);

  p.SET_GEOMETRY_AND_INTERPOLATION(GEOMETRY_SLOPE);
  p.SET_SLOPE(45.0F);
  EXPECT_NEAR(p.SLOPE_RAD(), PI / 4.0, 1e-16);
  EXPECT_NEAR(p.SLOPE(), 1.0, 2e-16);
  p.HEIGHT(-250.0, 55.0, h, &n);
  EXPECT_NEAR(h, -250.0, 1e-13);
  EXPECT_NORMAL(n, {std::sqrt(0.5), -std::sqrt(0.5), 0.0}, 1e-15);
  p.SET_DIRECTION(90.0F);  // the floor now rises towards +y
  p.SET_SLOPE(10.0F);
  p.HEIGHT(500.0, 20.0, h, &n);
  EXPECT_NEAR(h, 20.0 * std::tan(10.0 * PI / 180.0), 1e-12);
  EXPECT_NORMAL(n, {std::cos(10.0 * PI / 180.0), 0.0, -std::sin(10.0 * PI / 180.0)}, 1e-15);

  // The radians come from the 32-bit degrees, not from 30.1 itself.
  p.SET_DIRECTION(30.1F);
  EXPECT_EQ(p.DIRECTION_DEG(), 30.1F);
  EXPECT_NEAR(p.DIRECTION_RAD(), static_cast<double>(30.1F) * PI / 180.0, 1e-15);
  EXPECT_GT(std::fabs(p.DIRECTION_RAD() - 30.1 * PI / 180.0), 1e-9);
}

TEST(SeabedProfile, CombinedCodesSetAndGiveBackBothFields) {
  T_SEABED_PROFILE p;
  p.SET_INTERPOLATION(3);
  p.SET_GEOMETRY_AND_INTERPOLATION(2);
  EXPECT_EQ(std::make_pair(p.GEOMETRY(), p.INTERPOLATION()), std::make_pair(2, 3));  // below 4 leaves it
  const std::pair<int32_t, int32_t> fields[] = {{4, 0}, {4, 2}, {4, 3}, {5, 0}, {5, 1}};
  for (int32_t code = 4; code <= 8; ++code) {
    p.SET_GEOMETRY_AND_INTERPOLATION(code);
    EXPECT_EQ(std::make_pair(p.GEOMETRY(), p.INTERPOLATION()), fields[code - 4]);
    EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), code);
  }
  p.SET_GEOMETRY_AND_INTERPOLATION(9);  // nothing
  EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), 8);
  p.SET_GEOMETRY_AND_INTERPOLATION(-2);
  EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), -2);
  p.SET_GEOMETRY(4);
  p.SET_INTERPOLATION(1);
  EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), -1);
}

TEST(SeabedProfile, NodeProfileFromTheHeader) {
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(3);
  p.SET_DIRECTION(90.0F);  // distance along +y
  int32_t status = -1;
  p.ALLOCATE_NODES(3, &status);
  ASSERT_EQ(status, 0);
  // Out of order, as a header may hold them: (distance, height).
  const float points[3][2] = {{2.0F, 0.0F}, {0.0F, 0.0F}, {1.0F, 1.0F}};
  for (int32_t i = 1; i <= 3; ++i) {
    p.SET_NODE(i, 2, points[i - 1][0]);
    p.SET_NODE(i, 1, points[i - 1][1]);
  }
  p.SET_NODE(4, 1, 5.0F);  // rows and columns outside the table are ignored
  p.SET_NODE(1, 3, 5.0F);
  EXPECT_EQ(p.NODE(4, 1), 0.0F);
  p.SORT();
  for (int32_t i = 1; i <= 3; ++i) EXPECT_EQ(p.NODE(i, 2), static_cast<float>(i - 1));
  EXPECT_EQ(p.NODE(2, 1), 1.0F);
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
  p.ALLOCATE_NODES(-3, &status);
  EXPECT_EQ(std::make_pair(status, p.NUM_NODES()), std::make_pair(0, 0));

  // Vertical slopes are neighbours at one distance, of different heights.
  const auto steps = [&](std::initializer_list<std::pair<float, float>> nodes) {
    p.ALLOCATE_NODES(static_cast<int32_t>(nodes.size()));
    int32_t i = 0;
    for (const auto& [d, height] : nodes) {
      p.SET_NODE(++i, 2, d);
      p.SET_NODE(i, 1, height);
    }
    return p.ANY_VERTICAL_SLOPES();
  };
  EXPECT_TRUE(steps({{0, 0}, {1, 0}, {1, 5}, {2, 5}}));
  EXPECT_FALSE(steps({{0, 0}, {1, 3}, {1, 3}, {2, 5}}));
  EXPECT_FALSE(steps({{0, 0}, {1, 0}, {2, 5}, {1, 7}}));
}

TEST(SeabedProfile, ProfileFileAnswersHeightNormalArcAndEdge) {
  testing::SCRATCH_DIR dir;
  T_SEABED_PROFILE p = LOADED(dir, 4, SLOPE_PROFILE);
  EXPECT_EQ(p.GEOMETRY_AND_INTERPOLATION(), 5);  // the file says cubic
  double h = 0.0;
  NORMAL_VECTOR n{};
  int32_t hint = -50;  // any value will do, and the new one comes back
  p.HEIGHT(7.0, -3.0, h, &n, &hint);
  EXPECT_NEAR(h, 0.5, 1e-14);
  EXPECT_EQ(hint, 3);
  const NORMAL_VECTOR tilted = {1.0 / std::sqrt(1.25), -0.5 / std::sqrt(1.25), 0.0};
  EXPECT_NORMAL(n, tilted);
  p.NORMAL(7.0, 0.0, n);
  EXPECT_NORMAL(n, tilted);
  // Up the slope the floor is longer by sqrt(1 + 0.5^2); across it, not.
  EXPECT_NEAR(p.ARC_LENGTH(0.0, 0.0, 10.0, 0.0), 10.0 * std::sqrt(1.25), 1e-12);
  EXPECT_NEAR(p.ARC_LENGTH(2.0, 10.0, 2.0, 0.0), 10.0, 1e-12);
  EXPECT_NEAR(p.ARC_LENGTH(0.0, 0.0, 6.0, 8.0), std::sqrt(36.0 * 1.25 + 64.0), 1e-12);
  EXPECT_EQ(p.ARC_LENGTH(3.0, 3.0, 3.0, 3.0), 0.0);
  // The edges are the nodes at 0, 4 and 10; -1 across the profile, before
  // the first, after the last, and with nothing ahead.
  const std::tuple<double, double, double, double> edges[] = {
      {1.0, 0.0, 0.0, 3.0}, {1.0, 0.0, PI, 1.0},       {1.0, 5.0, PI / 3.0, 6.0}, {10.0, 0.0, PI, 6.0},
      {1.0, 0.0, PI / 2.0, -1.0}, {-5.0, 0.0, 0.0, -1.0}, {20.0, 0.0, PI, -1.0},     {10.0, 0.0, 0.0, -1.0}};
  for (const auto& [x, y, direction, distance] : edges) {
    EXPECT_NEAR(p.HORIZONTAL_DISTANCE_TO_EDGE(x, y, direction), distance, 1e-9) << x << ", " << y << ", " << direction;
  }
}

TEST(SeabedProfile, SurfaceFileAnswersHeightNormalArcAndEdge) {
  testing::SCRATCH_DIR dir;
  for (const int32_t code : {7, 8}) {
    T_SEABED_PROFILE p = LOADED(dir, code, PLANE_SURFACE);
    EXPECT_EQ(p.NUM_TRIANGLES(), 2);
    p.SET_INTERPOLATION(code - 7);  // the file said cubic: try both
    const double k = 1.0 / std::sqrt(1.3125);
    double h = 0.0;
    NORMAL_VECTOR n{};
    int32_t flag = -1;
    int32_t hint = 99;
    p.HEIGHT(7.5, 2.5, h, &n, &hint, &flag);
    EXPECT_NEAR(h, -26.875, 1e-12);
    EXPECT_NORMAL(n, {k, -0.5 * k, 0.25 * k});
    EXPECT_EQ(std::make_pair(flag, hint), std::make_pair(0, 1));
    p.HEIGHT(2.5, 7.5, h, &n, &hint, &flag);
    EXPECT_EQ(hint, 2);
    p.HEIGHT(-1.0, 5.0, h, &n, &hint, &flag);
    EXPECT_EQ(flag, 1);
    // Along x the floor rises by 0.5 a metre, along y it falls by 0.25.
    EXPECT_NEAR(p.ARC_LENGTH(1.0, 1.0, 9.0, 1.0), 8.0 * std::sqrt(1.25), 1e-12);
    EXPECT_NEAR(p.ARC_LENGTH(1.0, 9.0, 1.0, 1.0), 8.0 * std::sqrt(1.0625), 1e-12);
    // From (2, 1) the lower triangle's edge x = 10 lies 8 ahead; its other
    // edges are behind (the diagonal) or parallel (y = 0). Up and to the
    // left from (6, 1) the diagonal is ahead.
    EXPECT_NEAR(p.HORIZONTAL_DISTANCE_TO_EDGE(2.0, 1.0, 0.0), 8.0, 1e-12);
    EXPECT_NEAR(p.HORIZONTAL_DISTANCE_TO_EDGE(6.0, 1.0, 0.75 * PI), 5.0 / std::sqrt(2.0), 1e-12);
    EXPECT_EQ(p.HORIZONTAL_DISTANCE_TO_EDGE(-5.0, -5.0, 0.0), -1.0);
    EXPECT_EQ(p.HORIZONTAL_DISTANCE_TO_EDGE(10.0, 1.0, 0.0), -1.0);  // the trial point is outside
  }
}

// A NORMAL of its own reaches ARC_LENGTH through the type's table.
class CONSTANT_NORMAL : public T_SEABED_PROFILE {
 public:
  void NORMAL(double, double, NORMAL_VECTOR& normal) override { normal = NORMAL_VECTOR{0.6, 0.0, -0.8}; }
};

TEST(SeabedProfile, ArcLengthWorksFromTheNormalThatNormalLastWrote) {
  // Gradient (0, 4/3): along y the slope is 4/3 and the length 5/3 a metre.
  EXPECT_NEAR(CONSTANT_NORMAL().ARC_LENGTH(0.0, 0.0, 0.0, 3.0), 5.0, 1e-12);
  testing::SCRATCH_DIR dir;
  T_SEABED_PROFILE flat;
  flat.SET_GEOMETRY(GEOMETRY_FLAT);
  T_SEABED_PROFILE level = LOADED(dir, 4, LEVEL_PROFILE);
  T_SEABED_PROFILE sloped = LOADED(dir, 4, SLOPE_PROFILE);
  level.ARC_LENGTH(0.0, 0.0, 1.0, 0.0);
  EXPECT_NEAR(flat.ARC_LENGTH(0.0, 0.0, 10.0, 0.0), 10.0, 1e-12);
  // A flat floor writes no normal and integrates the slope the last one left.
  sloped.ARC_LENGTH(0.0, 0.0, 1.0, 0.0);
  EXPECT_NEAR(flat.ARC_LENGTH(0.0, 0.0, 10.0, 0.0), 10.0 * std::sqrt(1.25), 1e-12);
  level.ARC_LENGTH(0.0, 0.0, 1.0, 0.0);
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
  // Other geometries load nothing and clear the status.
  p.SET_GEOMETRY(GEOMETRY_FLAT);
  p.LOAD_FROM_FILE(nullptr, dir.FILE("missing"), nullptr, status);
  EXPECT_EQ(status, 0);

  T_SEABED_PROFILE s = LOADED(dir, 8, PLANE_SURFACE);
  s.SET_DATA_BLOCK("bytes", 3, 12);
  s.DESTROY();
  EXPECT_EQ(std::make_pair(s.NUM_NODES(), s.DATA_BLOCK().LENGTH_STRING()), std::make_pair(0, 0));
  EXPECT_EQ(s.GEOMETRY_AND_INTERPOLATION(), 8);  // codes stay
  int32_t flag = 0;
  s.HEIGHT(5.0, 5.0, h, nullptr, nullptr, &flag);
  EXPECT_EQ(flag, 1);
  EXPECT_EQ(s.HORIZONTAL_DISTANCE_TO_EDGE(5.0, 5.0, 0.0), -1.0);
}

TEST(FreeProcedures, IntersectionOfParallelLinesIsFarAway) {
  PLAN_POINT x{};
  INTERSECTION({0, 0}, {1, 1}, {0, 1}, {1, 2}, x);
  EXPECT_EQ(x, (PLAN_POINT{1e10, 1e10}));
  EXPECT_NEAR(DISTANCE_TO_LINE({1, 1}, PI, {4, -5}, {4, 5}), -3.0, 1e-12);  // behind
}

TEST(SeabedDataBlock, LoadsThroughAScratchFileThatIsAlwaysRemoved) {
  testing::SCRATCH_DIR scratch;
  T_SEABED_PROFILE p;
  p.SET_GEOMETRY_AND_INTERPOLATION(7);
  p.SET_DATA_BLOCK(PLANE_SURFACE, 2, 4);
  int32_t status = -1;
  p.LOAD_FROM_DATA_BLOCK(nullptr, nullptr, status);
  EXPECT_EQ(status, STATUS_WRONG_BLOCK_TYPE);
  MOD_DATA_BLOCK::T_DATA_BLOCK block;
  block.APPEND_CHARS(PLANE_SURFACE);
  block.SET_TYPE(SEABED_BLOCK_TYPE);
  block.SET_KEY(4);
  p.SET_DATA_BLOCK(block);
  EXPECT_EQ(p.DATA_BLOCK().GET_KEY(), 4);
  {
    testing::TEMPORARY_DIRECTORY_SET nowhere(scratch.FILE("does-not-exist"));
    p.LOAD_FROM_DATA_BLOCK(nullptr, nullptr, status);
    EXPECT_EQ(status, STATUS_OPEN_FAILED);
  }
  testing::TEMPORARY_DIRECTORY_SET redirect(scratch.PATH().string());
  p.LOAD_FROM_DATA_BLOCK(nullptr, nullptr, status);
  EXPECT_EQ(status, 0);
  double h = 0.0;
  p.HEIGHT(10.0, 10.0, h);
  EXPECT_NEAR(h, -27.5, 1e-12);
  EXPECT_TRUE(std::filesystem::is_empty(scratch.PATH()));
  // Bytes that are no seabed file, or none: the loader's status, no file left.
  for (const char* bytes : {"not a seabed", ""}) {
    p.SET_DATA_BLOCK(bytes, SEABED_BLOCK_TYPE, 4);
    int32_t line = -1;
    p.LOAD_FROM_DATA_BLOCK(&line, nullptr, status);
    EXPECT_EQ(std::make_pair(status, line), std::make_pair(seabed::STATUS_NOT_SEABED, 1));
    EXPECT_EQ(p.NUM_TRIANGLES(), 2);
    EXPECT_TRUE(std::filesystem::is_empty(scratch.PATH()));
  }
}

}  // namespace
}  // namespace tmrdar::MOD_SEABED_PROFILE
