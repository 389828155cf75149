// Small numeric helpers of the input processing.
#pragma once

#include <cstdint>
#include <span>

namespace tmrdar {

// A year divisible by 100 is a leap year when divisible by 400; any other
// year when divisible by 4.
bool check_leap_year(int32_t year);

// Rotates the first n values of the vector circularly by the shift: value
// i + shift moves to place i, so a positive shift moves values towards the
// front. A shift whose magnitude exceeds n is first reduced to its remainder
// by n, keeping its sign, and that remainder is written back. Status 1 when
// the scratch copy cannot be had, or when n is below 0 or beyond the vector;
// the vector is then untouched.
void cshift_vector(int32_t n, int32_t& shift, std::span<double> vector, int32_t& status);

// alpha = exp(-2.77419 - ln t) with t = 0.0336 x + 0.23 - 0.185 / (x + 1.9),
// all in 32-bit reals.
float get_alpha(float x);

}  // namespace tmrdar
