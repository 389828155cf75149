#include "shape_functions/shape_function_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tmrdar::V861_SHAPE_FUNCTION_DATA {
namespace {

using RULES = std::array<std::array<double, MAX_INTEGRATION_ORDER>, MAX_INTEGRATION_ORDER + 1>;

// The roots of the Legendre polynomial P_n by Newton's method from the
// Chebyshev estimates, taken as far as the iteration moves them; the rule is
// symmetric, so the upper half mirrors the lower.
RULES MAKE_RULES() {
  RULES rules{};
  for (int n = 1; n <= MAX_INTEGRATION_ORDER; ++n) {
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

const RULES& ALL_RULES() {
  static const RULES rules = MAKE_RULES();
  return rules;
}

}  // namespace

std::span<const double> GAUSS_LEGENDRE_POINTS(int32_t n) {
  if (n < 1 || n > MAX_INTEGRATION_ORDER) return {};
  return std::span<const double>(ALL_RULES()[n].data(), static_cast<std::size_t>(n));
}

void INITIALISE_FC_DATA4(int32_t order, int32_t num_elements, std::span<const float> lengths,
                         std::span<double> locations) {
  const std::span<const double> points = GAUSS_LEGENDRE_POINTS(order);
  if (points.empty() || num_elements < 1) return;
  const std::size_t columns = std::min({static_cast<std::size_t>(num_elements), lengths.size(),
                                        locations.size() / MAX_INTEGRATION_ORDER});
  for (std::size_t e = 0; e < columns; ++e) {
    const std::span<double> column = locations.subspan(e * MAX_INTEGRATION_ORDER, MAX_INTEGRATION_ORDER);
    std::fill(column.begin(), column.end(), 0.0);
    const double length = lengths[e];
    for (std::size_t i = 0; i < points.size(); ++i) column[i] = length * (1.0 + points[i]) / 2.0;
  }
}

}  // namespace tmrdar::V861_SHAPE_FUNCTION_DATA
