#include "core/numerics/vectors.h"

#include <cmath>

namespace tmrdar {
namespace {

// The shortest length that NORMALISE divides by is above this, in the
// routine's own precision.
template <typename REAL>
constexpr REAL SMALLEST_LENGTH = 0;
template <>
constexpr float SMALLEST_LENGTH<float> = 1e-20F;
template <>
constexpr double SMALLEST_LENGTH<double> = 1e-20;

template <typename REAL>
std::array<REAL, 3> PRODUCT(std::span<const REAL, 3> a, std::span<const REAL, 3> b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - b[2] * a[0], b[1] * a[0] - a[1] * b[0]};
}

template <typename REAL>
REAL LENGTH(const std::array<REAL, 3>& v) {
  return std::sqrt((v[0] * v[0] + v[1] * v[1]) + v[2] * v[2]);
}

template <typename REAL>
void CROSS_PRODUCT_OF(std::span<const REAL, 3> a, std::span<const REAL, 3> b, std::span<REAL, 3> c) {
  const std::array<REAL, 3> product = PRODUCT(a, b);
  for (std::size_t k = 0; k < 3; ++k) c[k] = product[k];
}

template <typename REAL>
void NORMALISE_OF(std::span<REAL, 3> vector, REAL& length) {
  const std::array<REAL, 3> v{vector[0], vector[1], vector[2]};
  const REAL size = LENGTH(v);
  if (size <= SMALLEST_LENGTH<REAL>) {
    for (REAL& component : vector) component = 0;
    length = 0;
    return;
  }
  for (REAL& component : vector) component /= size;
  length = size;
}

}  // namespace

void CROSS(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c, int32_t& flag,
           float tolerance) {
  const std::array<float, 3> product = PRODUCT(a, b);
  const float length = LENGTH(product);
  if (length < tolerance) {
    flag = 1;
    for (std::size_t k = 0; k < 3; ++k) c[k] = product[k];
    return;
  }
  flag = 0;
  for (std::size_t k = 0; k < 3; ++k) c[k] = product[k] / length;
}

void CROSS_PRODUCT(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c) {
  CROSS_PRODUCT_OF(a, b, c);
}

void NORMALISE(std::span<float, 3> vector, float& length) { NORMALISE_OF(vector, length); }

namespace MATH {

void CROSS_PRODUCT4(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c) {
  CROSS_PRODUCT_OF(a, b, c);
}
void CROSS_PRODUCT8(std::span<const double, 3> a, std::span<const double, 3> b, std::span<double, 3> c) {
  CROSS_PRODUCT_OF(a, b, c);
}
void NORMALISE4(std::span<float, 3> vector, float& length) { NORMALISE_OF(vector, length); }
void NORMALISE8(std::span<double, 3> vector, double& length) { NORMALISE_OF(vector, length); }

}  // namespace MATH
}  // namespace tmrdar
