#include "core/numerics/matrix_products.h"

#include <algorithm>
#include <cstddef>

namespace tmrdar {
namespace {

// A count of 0 or less is an empty extent.
std::size_t extent(int32_t count) { return static_cast<std::size_t>(std::max(count, 0)); }

// Whether an array holds the rows x columns that a matrix of these extents
// takes; the product of two 32-bit extents cannot overflow a 64-bit size.
template <typename Real>
bool holds(std::span<Real> array, std::size_t rows, std::size_t columns) {
  return array.size() >= rows * columns;
}

template <typename Real>
bool matrix_product(std::span<const Real> a, std::span<const Real> b, std::span<Real> r, int32_t n, int32_t m,
                    int32_t l) {
  if (n <= 0 || l <= 0) return true;
  const std::size_t rows = extent(n);
  const std::size_t inner = extent(m);
  const std::size_t columns = extent(l);
  if (!holds(a, rows, inner) || !holds(b, inner, columns) || !holds(r, rows, columns)) return false;
  std::fill_n(r.begin(), rows * columns, Real{0});
  for (std::size_t k = 0; k < columns; ++k) {
    for (std::size_t i = 0; i < rows; ++i) {
      Real& sum = r[i + rows * k];
      for (std::size_t j = 0; j < inner; ++j) sum += a[i + rows * j] * b[j + inner * k];
    }
  }
  return true;
}

template <typename Real>
bool transposed_product(std::span<const Real> a, std::span<const Real> b, std::span<Real> r, int32_t n, int32_t m,
                        int32_t l) {
  const std::size_t inner = extent(n);
  const std::size_t rows = extent(m);
  const std::size_t columns = extent(l);
  if (!holds(a, inner, rows) || !holds(b, inner, columns) || !holds(r, rows, columns)) return false;
  for (std::size_t k = 0; k < columns; ++k) {
    for (std::size_t j = 0; j < rows; ++j) {
      Real sum = 0;
      for (std::size_t i = 0; i < inner; ++i) sum += a[i + inner * j] * b[i + inner * k];
      r[j + rows * k] = sum;
    }
  }
  return true;
}

}  // namespace

bool gmprd(std::span<const float> a, std::span<const float> b, std::span<float> r, int32_t n, int32_t m, int32_t l) {
  return matrix_product(a, b, r, n, m, l);
}
bool dgmprd(std::span<const double> a, std::span<const double> b, std::span<double> r, int32_t n, int32_t m,
            int32_t l) {
  return matrix_product(a, b, r, n, m, l);
}
bool gtprd(std::span<const float> a, std::span<const float> b, std::span<float> r, int32_t n, int32_t m, int32_t l) {
  return transposed_product(a, b, r, n, m, l);
}
bool dgtprd(std::span<const double> a, std::span<const double> b, std::span<double> r, int32_t n, int32_t m,
            int32_t l) {
  return transposed_product(a, b, r, n, m, l);
}

}  // namespace tmrdar
