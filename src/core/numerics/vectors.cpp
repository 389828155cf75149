#include "core/numerics/vectors.h"

#include <cmath>

namespace tmrdar {
namespace {

// The shortest length that normalise divides by is above this, in the
// routine's own precision.
template <typename Real>
constexpr Real smallest_length = 0;
template <>
constexpr float smallest_length<float> = 1e-20F;
template <>
constexpr double smallest_length<double> = 1e-20;

template <typename Real>
std::array<Real, 3> product(std::span<const Real, 3> a, std::span<const Real, 3> b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - b[2] * a[0], b[1] * a[0] - a[1] * b[0]};
}

template <typename Real>
Real length(const std::array<Real, 3>& v) {
  return std::sqrt((v[0] * v[0] + v[1] * v[1]) + v[2] * v[2]);
}

template <typename Real>
void cross_product_of(std::span<const Real, 3> a, std::span<const Real, 3> b, std::span<Real, 3> c) {
  const std::array<Real, 3> p = product(a, b);
  for (std::size_t k = 0; k < 3; ++k) c[k] = p[k];
}

template <typename Real>
void normalise_of(std::span<Real, 3> vector, Real& norm) {
  const std::array<Real, 3> v{vector[0], vector[1], vector[2]};
  const Real size = length(v);
  if (size <= smallest_length<Real>) {
    for (Real& component : vector) component = 0;
    norm = 0;
    return;
  }
  for (Real& component : vector) component /= size;
  norm = size;
}

}  // namespace

void cross(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c, int32_t& flag,
           float tolerance) {
  const std::array<float, 3> p = product(a, b);
  const float size = length(p);
  if (size < tolerance) {
    flag = 1;
    for (std::size_t k = 0; k < 3; ++k) c[k] = p[k];
    return;
  }
  flag = 0;
  for (std::size_t k = 0; k < 3; ++k) c[k] = p[k] / size;
}

void cross_product(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c) {
  cross_product_of(a, b, c);
}

void normalise(std::span<float, 3> vector, float& length) { normalise_of(vector, length); }

namespace math {

void cross_product4(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c) {
  cross_product_of(a, b, c);
}
void cross_product8(std::span<const double, 3> a, std::span<const double, 3> b, std::span<double, 3> c) {
  cross_product_of(a, b, c);
}
void normalise4(std::span<float, 3> vector, float& length) { normalise_of(vector, length); }
void normalise8(std::span<double, 3> vector, double& length) { normalise_of(vector, length); }

}  // namespace math
}  // namespace tmrdar
