#include "shape_functions/shape_function_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tmrdar::shape_functions {
namespace {

using Rules = std::array<std::array<double, max_integration_order>, max_integration_order + 1>;

// The roots of the Legendre polynomial P_n by Newton's method from the
// Chebyshev estimates, taken as far as the iteration moves them; the rule is
// symmetric, so the upper half mirrors the lower.
Rules make_rules() {
  Rules rules{};
  for (int n = 1; n <= max_integration_order; ++n) {
    for (int i = 1; i <= (n + 1) / 2; ++i) {
      double x = std::cos(std::numbers::pi * (i - 0.25) / (n + 0.5));
      for (int iteration = 0; iteration < 100; ++iteration) {
        double p0 = 1.0;
        double p1 = x;
        for (int k = 2; k <= n; ++k) {
          const double p2 = ((2.0 * k - 1.0) * x * p1 - (k - 1.0) * p0) / k;
          p0 = p1;
          p1 = p2;
        }
        // P_n(x) is p1 (p0 for n = 1 is P_0); its derivative from the recurrence.
        const double derivative = n * (x * p1 - p0) / (x * x - 1.0);
        const double step = p1 / derivative;
        x -= step;
        if (std::fabs(step) <= 1.0e-16) break;
      }
      if (2 * i - 1 == n) x = 0.0;
      rules[n][i - 1] = -x;
      rules[n][n - i] = x;
    }
  }
  return rules;
}

const Rules& all_rules() {
  static const Rules rules = make_rules();
  return rules;
}

}  // namespace

std::span<const double> gauss_legendre_points(int32_t n) {
  if (n < 1 || n > max_integration_order) return {};
  return std::span<const double>(all_rules()[n].data(), static_cast<std::size_t>(n));
}

void initialise_fc_data4(int32_t order, int32_t num_elements, std::span<const float> lengths,
                         std::span<double> locations) {
  const std::span<const double> points = gauss_legendre_points(order);
  if (points.empty() || num_elements < 1) return;
  const std::size_t columns = std::min({static_cast<std::size_t>(num_elements), lengths.size(),
                                        locations.size() / max_integration_order});
  for (std::size_t e = 0; e < columns; ++e) {
    const std::span<double> column = locations.subspan(e * max_integration_order, max_integration_order);
    std::fill(column.begin(), column.end(), 0.0);
    const double length = lengths[e];
    for (std::size_t i = 0; i < points.size(); ++i) column[i] = length * (1.0 + points[i]) / 2.0;
  }
}

}  // namespace tmrdar::shape_functions
