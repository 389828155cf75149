// The Gauss-Legendre abscissae checked against their closed forms and against
// the Legendre polynomial evaluated by its explicit sum, and the integration
// point locations built from them.
#include <gtest/gtest.h>

#include <cmath>
#include <span>
#include <vector>

#include "shape_functions/shape_function_data.h"

namespace tmrdar::V861_SHAPE_FUNCTION_DATA {
namespace {

// P_n(x) = 2^-n sum_k (-1)^k C(n, k) C(2n - 2k, n) x^(n - 2k), the explicit
// form, which shares nothing with a three-term recurrence.
double LEGENDRE(int n, double x) {
  const auto binomial = [](int a, int b) {
    double c = 1.0;
    for (int i = 1; i <= b; ++i) c = c * (a - b + i) / i;
    return c;
  };
  double sum = 0.0;
  for (int k = 0; 2 * k <= n; ++k) {
    sum += (k % 2 == 0 ? 1.0 : -1.0) * binomial(n, k) * binomial(2 * n - 2 * k, n) * std::pow(x, n - 2 * k);
  }
  return sum / std::pow(2.0, n);
}

TEST(GaussLegendrePoints, AreTheAscendingSymmetricRootsOfEachOrderAndTheClosedFormsUpToFive) {
  const double r6_5 = std::sqrt(6.0 / 5.0);
  const double r10_7 = std::sqrt(10.0 / 7.0);
  // The non-negative points of orders 1 to 5.
  const std::vector<std::vector<double>> closed{
      {0.0},
      {1.0 / std::sqrt(3.0)},
      {0.0, std::sqrt(3.0 / 5.0)},
      {std::sqrt(3.0 / 7.0 - 2.0 / 7.0 * r6_5), std::sqrt(3.0 / 7.0 + 2.0 / 7.0 * r6_5)},
      {0.0, std::sqrt(5.0 - 2.0 * r10_7) / 3.0, std::sqrt(5.0 + 2.0 * r10_7) / 3.0}};
  for (int n = 1; n <= MAX_INTEGRATION_ORDER; ++n) {
    const std::span<const double> points = GAUSS_LEGENDRE_POINTS(n);
    ASSERT_EQ(points.size(), static_cast<std::size_t>(n));
    for (std::size_t i = 0; i < points.size(); ++i) {
      // n distinct roots inside (-1, 1), ascending, are all the roots there are.
      EXPECT_TRUE(points[i] > -1.0 && points[i] < 1.0 && (i == 0 || points[i - 1] < points[i])) << n << ", " << i;
      EXPECT_NEAR(LEGENDRE(n, points[i]), 0.0, 1e-13) << "n = " << n << ", point " << i + 1;
      EXPECT_EQ(points[i], -points[points.size() - 1 - i]) << "n = " << n << ", point " << i + 1;
    }
    if (n <= 5) {
      const std::vector<double>& upper = closed[static_cast<std::size_t>(n - 1)];
      for (std::size_t i = 0; i < upper.size(); ++i) {
        EXPECT_NEAR(points[(points.size() - upper.size()) + i], upper[i], 1e-15) << "n = " << n << ", point " << i;
      }
    }
  }
  // The largest root of the highest order, to the digits tables give it.
  EXPECT_NEAR(GAUSS_LEGENDRE_POINTS(10)[9], 0.9739065285171717, 1e-15);
  for (const int32_t n : {0, -1, MAX_INTEGRATION_ORDER + 1, 1000}) EXPECT_TRUE(GAUSS_LEGENDRE_POINTS(n).empty()) << n;
}

constexpr double UNTOUCHED = -7.5;

TEST(IntegrationPointLocations, EachColumnHoldsItsElementsPointsThenZeros) {
  const std::vector<float> lengths{2.0F, 10.0F, 0.1F};
  std::vector<double> locations(3 * MAX_INTEGRATION_ORDER, UNTOUCHED);
  INITIALISE_FC_DATA4(3, 3, lengths, locations);
  const double x = std::sqrt(3.0 / 5.0);
  const std::vector<double> unit{(1.0 - x) / 2.0, 0.5, (1.0 + x) / 2.0};
  for (std::size_t e = 0; e < 3; ++e) {
    // The length is the 32-bit value widened: 0.1F is not 0.1.
    const double length = static_cast<double>(lengths[e]);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(locations[e * 10 + i], length * unit[i], 1e-15 * length) << "element " << e + 1 << ", point " << i + 1;
    }
    for (std::size_t i = 3; i < 10; ++i) EXPECT_EQ(locations[e * 10 + i], 0.0) << "element " << e + 1;
  }
  EXPECT_NE(locations[21], 0.1 * 0.5) << "the middle of element 3 comes from the 32-bit length";
  EXPECT_EQ(locations[21], static_cast<double>(0.1F) * 0.5);

  // The highest order fills every row, from just past the start to just short of the end.
  std::vector<double> full(MAX_INTEGRATION_ORDER, UNTOUCHED);
  INITIALISE_FC_DATA4(10, 1, std::vector<float>{4.0F}, full);
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_NEAR(full[i], 2.0 * (1.0 + GAUSS_LEGENDRE_POINTS(10)[i]), 1e-14);
    EXPECT_GT(full[i], 0.0);
    EXPECT_LT(full[i], 4.0);
  }
}

TEST(IntegrationPointLocations, AnOrderOutsideTheRulesOrColumnsBeyondTheInputsStayUntouched) {
  const std::vector<float> lengths{3.0F, 5.0F};
  for (const int32_t order : {0, -2, 11}) {
    std::vector<double> locations(2 * MAX_INTEGRATION_ORDER, UNTOUCHED);
    INITIALISE_FC_DATA4(order, 2, lengths, locations);
    for (const double value : locations) EXPECT_EQ(value, UNTOUCHED) << "order " << order;
  }

  // Three elements asked for, two lengths given: the third column is left alone.
  std::vector<double> locations(3 * MAX_INTEGRATION_ORDER, UNTOUCHED);
  INITIALISE_FC_DATA4(2, 3, lengths, locations);
  EXPECT_NEAR(locations[10], 5.0 * (1.0 - 1.0 / std::sqrt(3.0)) / 2.0, 1e-15);
  for (std::size_t i = 20; i < 30; ++i) EXPECT_EQ(locations[i], UNTOUCHED);

  // An array of one and a half columns gets only its whole column.
  std::vector<double> short_array(15, UNTOUCHED);
  INITIALISE_FC_DATA4(2, 2, lengths, short_array);
  EXPECT_EQ(short_array[9], 0.0);
  for (std::size_t i = 10; i < 15; ++i) EXPECT_EQ(short_array[i], UNTOUCHED);
}

}  // namespace
}  // namespace tmrdar::V861_SHAPE_FUNCTION_DATA
