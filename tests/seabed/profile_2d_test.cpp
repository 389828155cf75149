// Profiles in the seabed library: segment search with hints, the linear and
// the natural cubic interpolant, and tables that do not hold what they claim.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "seabed/library/seabed.h"

namespace tmrdar::seabed {
namespace {

// A two-column node table from (distance, height) pairs.
std::vector<float> TABLE(const std::vector<std::pair<float, float>>& points) {
  const std::size_t n = points.size();
  std::vector<float> table(2 * n);
  for (std::size_t i = 0; i < n; ++i) {
    table[i] = points[i].second;
    table[n + i] = points[i].first;
  }
  return table;
}

int32_t COUNT(const std::vector<float>& table) { return static_cast<int32_t>(table.size() / 2); }

struct VALUE {
  double H = 0.0;
  double M = 0.0;
};

VALUE LINEAR(const std::vector<float>& t, double s) {
  int32_t hint = 1;
  VALUE v;
  interpolate_2d_linear(s, COUNT(t), t, hint, v.H, v.M);
  return v;
}

VALUE CUBIC(const std::vector<float>& t, double s) {
  std::vector<double> m;
  fit_spline_2d(t, COUNT(t), m);
  int32_t hint = 1;
  VALUE v;
  interpolate_2d_cubic(s, COUNT(t), t, m, hint, v.H, v.M);
  return v;
}

TEST(FindSegment, CountsFromBeforeTheFirstNodeToPastTheLast) {
  const auto t = TABLE({{0, 0}, {10, 0}, {10, 5}, {20, 5}});  // a vertical step at 10
  int32_t hint = 1;
  EXPECT_EQ(find_segment(t, 4, -1.0, hint), 1);
  EXPECT_EQ(find_segment(t, 4, 0.0, hint), 2);
  EXPECT_EQ(find_segment(t, 4, 9.99, hint), 2);
  EXPECT_EQ(find_segment(t, 4, 10.0, hint), 4);  // the step itself is no segment
  EXPECT_EQ(find_segment(t, 4, 20.0, hint), 5);
  EXPECT_EQ(find_segment(t, 4, 1e30, hint), 5);
  EXPECT_EQ(hint, 5);
  int32_t empty_hint = 7;
  EXPECT_EQ(find_segment({}, 0, 3.0, empty_hint), 1);
}

TEST(FindSegment, AnyHintGivesTheSameSegmentAsASearch) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> step(0.0F, 2.0F);
  std::vector<std::pair<float, float>> points;
  float d = 0.0F;
  for (int i = 0; i < 200; ++i) points.emplace_back(d += step(random), 0.0F);
  const auto t = TABLE(points);
  std::uniform_real_distribution<double> where(-5.0, d + 5.0);
  std::uniform_int_distribution<int32_t> any_hint(-300, 300);
  for (int k = 0; k < 2000; ++k) {
    const double s = where(random);
    int32_t expected = 1;
    for (const auto& p : points) expected += p.first <= s ? 1 : 0;
    int32_t hint = any_hint(random);
    ASSERT_EQ(find_segment(t, COUNT(t), s, hint), expected) << s;
  }
}

TEST(Interpolate2dLinear, RunsStraightBetweenNodesAndLevelBeyond) {
  const auto t = TABLE({{0, -10}, {10, -20}, {30, -20}});
  // A shared node takes the segment ahead.
  const std::tuple<double, double, double> cases[] = {
      {5, -15, -1}, {10, -20, 0}, {30, -20, 0}, {-100, -10, 0}, {1e9, -20, 0}};
  for (const auto& [s, h, m] : cases) {
    EXPECT_DOUBLE_EQ(LINEAR(t, s).H, h) << s;
    EXPECT_DOUBLE_EQ(LINEAR(t, s).M, m) << s;
  }
}

TEST(Interpolate2dCubic, NaturalSplinesEitherSideOfAVerticalStep) {
  // M = (0, -3, 0) on each side; at 0.5: 0.5 + (0.125 - 0.5)(-3) / 6 =
  // 0.6875, and the slope 1 + (3 * 0.25 - 1)(-3) / 6 = 1.125.
  const auto t = TABLE({{0, 0}, {1, 1}, {2, 0}, {2, 5}, {3, 6}, {4, 5}});
  std::vector<double> m;
  fit_spline_2d(t, COUNT(t), m);
  EXPECT_EQ(m, (std::vector<double>{0, -3, 0, 0, -3, 0}));
  const std::tuple<double, double, double> cases[] = {{0.5, 0.6875, 1.125}, {1.5, 0.6875, -1.125}, {1.0, 1.0, 0.0},
                                                      {2.0, 5.0, 1.5},      {2.5, 5.6875, 1.125}};
  for (const auto& [s, h, slope] : cases) {
    EXPECT_DOUBLE_EQ(CUBIC(t, s).H, h) << s;
    EXPECT_DOUBLE_EQ(CUBIC(t, s).M, slope) << s;
  }
  EXPECT_NEAR(CUBIC(t, 1.999999).H, 0.0, 1e-5);
}

TEST(Interpolate2dCubic, PassesThroughUnevenNodesWithAContinuousSlope) {
  const auto t = TABLE({{-200, -120}, {-120, -121.5}, {-60, -128}, {0, -131}, {60, -128.5}, {120, -122}, {250, -119}});
  for (int32_t i = 1; i <= COUNT(t); ++i) {
    const double d = t[static_cast<std::size_t>(COUNT(t) + i - 1)];
    EXPECT_NEAR(CUBIC(t, d).H, t[static_cast<std::size_t>(i - 1)], 1e-12) << "node " << i;
    if (i > 1 && i < COUNT(t)) {
      EXPECT_NEAR(CUBIC(t, d - 1e-7).M, CUBIC(t, d + 1e-7).M, 1e-8) << "node " << i;
      // The straight interpolant breaks there: the test can tell.
      EXPECT_GT(std::fabs(LINEAR(t, d - 1e-7).M - LINEAR(t, d + 1e-7).M), 1e-3);
    }
  }
}

TEST(Interpolate2d, TablesThatDoNotHoldTheirCountAnswerSafely) {
  const auto t = TABLE({{0, 4}, {1, 6}});
  int32_t hint = 99;
  double h = -1.0;
  double m = -1.0;
  interpolate_2d_linear(0.5, 3, t, hint, h, m);  // claims more rows than it has
  EXPECT_EQ(h, 0.0);
  EXPECT_EQ(m, 0.0);
  interpolate_2d_cubic(0.5, -2, t, {}, hint, h, m);
  EXPECT_EQ(h, 0.0);
  // One node: its height everywhere, level.
  const auto one = TABLE({{3, -40}});
  EXPECT_DOUBLE_EQ(LINEAR(one, -9).H, -40.0);
  EXPECT_DOUBLE_EQ(CUBIC(one, 3).H, -40.0);
  EXPECT_DOUBLE_EQ(CUBIC(one, 9).M, 0.0);
  // Missing or short second derivatives: the cubic runs straight.
  hint = 1;
  interpolate_2d_cubic(0.5, 2, t, std::vector<double>{1.0}, hint, h, m);
  EXPECT_DOUBLE_EQ(h, 5.0);
  // Coincident nodes and nodes out of order give finite values.
  const auto odd = TABLE({{5, 1}, {5, 1}, {2, 7}, {9, 0}, {-1, 3}});
  for (double s = -3.0; s < 11.0; s += 0.5) {
    EXPECT_TRUE(std::isfinite(LINEAR(odd, s).H) && std::isfinite(CUBIC(odd, s).H)) << s;
  }
}

}  // namespace
}  // namespace tmrdar::seabed
