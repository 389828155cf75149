// Locations of the integration points along the elements of a model.
#pragma once

#include <cstdint>
#include <span>

namespace tmrdar::shape_functions {

inline constexpr int32_t max_integration_order = 10;

// The abscissae of the n-point Gauss-Legendre rule on [-1, 1], ascending,
// for n from 1 to max_integration_order; empty for any other n.
std::span<const double> gauss_legendre_points(int32_t n);

// Fills `locations`, max_integration_order values for each of `num_elements`
// elements one column after the other, with the distances from the start of
// each element to its integration points: column e holds L_e (1 + xi_i) / 2
// for the `order` points xi_i in ascending order, then zeros. An order outside
// 1 to max_integration_order leaves every column as it is. Elements beyond the
// lengths given or beyond the columns the array holds are left alone.
void initialise_fc_data4(int32_t order, int32_t num_elements, std::span<const float> lengths,
                         std::span<double> locations);

}  // namespace tmrdar::shape_functions
