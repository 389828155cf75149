#include "core/numerics/matrix_products.h"

#include <algorithm>
#include <cstddef>

namespace tmrdar {
namespace {

// A count of 0 or less is an empty extent.
std::size_t EXTENT(int32_t count) { return static_cast<std::size_t>(std::max(count, 0)); }

// Whether an array holds the rows x columns that a matrix of these extents
// takes; the product of two 32-bit extents cannot overflow a 64-bit size.
template <typename REAL>
bool HOLDS(std::span<REAL> array, std::size_t rows, std::size_t columns) {
  return array.size() >= rows * columns;
}

template <typename REAL>
bool MATRIX_PRODUCT(std::span<const REAL> a, std::span<const REAL> b, std::span<REAL> r, int32_t n, int32_t m,
                    int32_t l) {
  if (n <= 0 || l <= 0) return true;
  const std::size_t rows = EXTENT(n);
  const std::size_t inner = EXTENT(m);
  const std::size_t columns = EXTENT(l);
  if (!HOLDS(a, rows, inner) || !HOLDS(b, inner, columns) || !HOLDS(r, rows, columns)) return false;
  std::fill_n(r.begin(), rows * columns, REAL{0});
  for (std::size_t k = 0; k < columns; ++k) {
    for (std::size_t i = 0; i < rows; ++i) {
      REAL& sum = r[i + rows * k];
      for (std::size_t j = 0; j < inner; ++j) sum += a[i + rows * j] * b[j + inner * k];
    }
  }
  return true;
}

template <typename REAL>
bool TRANSPOSED_PRODUCT(std::span<const REAL> a, std::span<const REAL> b, std::span<REAL> r, int32_t n, int32_t m,
                        int32_t l) {
  const std::size_t inner = EXTENT(n);
  const std::size_t rows = EXTENT(m);
  const std::size_t columns = EXTENT(l);
  if (!HOLDS(a, inner, rows) || !HOLDS(b, inner, columns) || !HOLDS(r, rows, columns)) return false;
  for (std::size_t k = 0; k < columns; ++k) {
    for (std::size_t j = 0; j < rows; ++j) {
      REAL sum = 0;
      for (std::size_t i = 0; i < inner; ++i) sum += a[i + inner * j] * b[i + inner * k];
      r[j + rows * k] = sum;
    }
  }
  return true;
}

}  // namespace

bool GMPRD(std::span<const float> a, std::span<const float> b, std::span<float> r, int32_t n, int32_t m, int32_t l) {
  return MATRIX_PRODUCT(a, b, r, n, m, l);
}
bool DGMPRD(std::span<const double> a, std::span<const double> b, std::span<double> r, int32_t n, int32_t m,
            int32_t l) {
  return MATRIX_PRODUCT(a, b, r, n, m, l);
}
bool GTPRD(std::span<const float> a, std::span<const float> b, std::span<float> r, int32_t n, int32_t m, int32_t l) {
  return TRANSPOSED_PRODUCT(a, b, r, n, m, l);
}
bool DGTPRD(std::span<const double> a, std::span<const double> b, std::span<double> r, int32_t n, int32_t m,
            int32_t l) {
  return TRANSPOSED_PRODUCT(a, b, r, n, m, l);
}

}  // namespace tmrdar
