// The Gauss-Legendre abscissae checked against the Legendre polynomial
// evaluated by its explicit sum, and the integration point locations.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <tuple>
#include <vector>

#include "shape_functions/shape_function_data.h"

namespace tmrdar::shape_functions {
namespace {

// P_n(x) = 2^-n sum_k (-1)^k C(n, k) C(2n - 2k, n) x^(n - 2k), the explicit
// form, which shares nothing with a three-term recurrence.
double legendre(int n, double x) {
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

TEST(GaussLegendrePoints, AreTheAscendingSymmetricRootsOfEachOrder) {
  for (int n = 1; n <= max_integration_order; ++n) {
    const std::span<const double> points = gauss_legendre_points(n);
    ASSERT_EQ(points.size(), static_cast<std::size_t>(n));
    for (std::size_t i = 0; i < points.size(); ++i) {
      // n distinct roots inside (-1, 1), ascending, are all the roots there are.
      EXPECT_TRUE(points[i] > -1.0 && points[i] < 1.0 && (i == 0 || points[i - 1] < points[i])) << n << ", " << i;
      EXPECT_NEAR(legendre(n, points[i]), 0.0, 1e-13) << "n = " << n << ", point " << i + 1;
      EXPECT_EQ(points[i], -points[points.size() - 1 - i]) << "n = " << n << ", point " << i + 1;
    }
  }
  for (const int32_t n : {0, -1, max_integration_order + 1, 1000}) EXPECT_TRUE(gauss_legendre_points(n).empty()) << n;
}

constexpr double untouched = -7.5;

TEST(IntegrationPointLocations, EachWholeColumnHoldsItsElementsPointsThenZeros) {
  // Order, elements asked for, lengths and array size. An order outside the
  // rules, elements without a length and a part column are left untouched.
  for (const auto& [order, count, lengths, size] :
       {std::tuple<int32_t, int32_t, std::vector<float>, std::size_t>{3, 3, {2.0F, 10.0F, 0.1F}, 30},
        {10, 1, {4.0F}, 10}, {0, 2, {3.0F, 5.0F}, 20}, {11, 2, {3.0F, 5.0F}, 20}, {2, 3, {3.0F, 5.0F}, 30},
        {2, 2, {3.0F, 5.0F}, 15}}) {
    std::vector<double> locations(size, untouched);
    initialise_fc_data4(order, count, lengths, locations);
    std::vector<double> expected(size, untouched);
    const std::span<const double> points = gauss_legendre_points(order);
    const std::size_t columns = std::min({static_cast<std::size_t>(count), lengths.size(), size / 10});
    for (std::size_t k = 0; !points.empty() && k < 10 * columns; ++k) {
      expected[k] = k % 10 < points.size() ? lengths[k / 10] * (1.0 + points[k % 10]) / 2.0 : 0.0;
    }
    for (std::size_t k = 0; k < size; ++k) EXPECT_NEAR(locations[k], expected[k], 1e-14) << order << ", " << k;
    EXPECT_EQ(order == 3 ? locations[11] : 5.0, 5.0);  // the middle of element 2 of order 3
  }
}

}  // namespace
}  // namespace tmrdar::shape_functions
