#include "core/text/numeric_helpers.h"

#include <cmath>
#include <cstdlib>
#include <new>
#include <vector>

namespace tmrdar {

bool check_leap_year(int32_t year) {
  if (year % 100 == 0) return year % 400 == 0;
  return year % 4 == 0;
}

void cshift_vector(int32_t n, int32_t& shift, std::span<double> vector, int32_t& status) {
  status = 0;
  if (n < 0 || static_cast<std::size_t>(n) > vector.size()) {
    status = 1;
    return;
  }
  if (n == 0) return;  // nothing to rotate, and no remainder by 0
  // The magnitude in 64 bits: that of the most negative shift has no 32-bit form.
  if (std::llabs(int64_t{shift}) > n) shift %= n;
  if (shift == 0 || std::llabs(int64_t{shift}) == n) return;

  std::vector<double> copy;
  try {
    copy.assign(vector.begin(), vector.begin() + n);
  } catch (const std::bad_alloc&) {
    status = 1;
    return;
  }
  // Place i takes the value from place i + shift, taken modulo n.
  const int64_t size = n;
  for (int64_t i = 0; i < size; ++i) {
    const int64_t from = ((i + shift) % size + size) % size;
    vector[static_cast<std::size_t>(i)] = copy[static_cast<std::size_t>(from)];
  }
}

float get_alpha(float x) {
  const float t = 0.0336F * x + 0.23F - 0.185F / (x + 1.9F);
  return std::exp(-2.77419F - std::log(t));
}

}  // namespace tmrdar
