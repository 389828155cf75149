// Products of matrices stored with the first index fastest, in 32-bit reals
// (gmprd, gtprd) and in 64-bit reals (dgmprd, dgtprd). Each element is a sum
// of products from 0, in the routine's own precision, taken in order of the
// summed index.
//
// The counts say how much of each array is used; an array smaller than its
// counts need makes the routine return false with nothing written. R must not
// overlap A or B.
#pragma once

#include <cstdint>
#include <span>

namespace tmrdar {

// R = A B for A of n rows and m columns and B of m rows and l columns. R, of
// n rows and l columns, is cleared first; element (i, k) is then the sum of
// A(i, j) B(j, k) over j from 1 to m. With n or l of 0 or less nothing is
// written, and with m of 0 or less R is left cleared.
bool gmprd(std::span<const float> a, std::span<const float> b, std::span<float> r, int32_t n, int32_t m, int32_t l);
bool dgmprd(std::span<const double> a, std::span<const double> b, std::span<double> r, int32_t n, int32_t m, int32_t l);

// R = A^T B for A of n rows and m columns and B of n rows and l columns. R
// has m rows and l columns; element (j, k) is the sum of A(i, j) B(i, k) over
// i from 1 to n, from 0, so with n of 0 or less R is all 0.
bool gtprd(std::span<const float> a, std::span<const float> b, std::span<float> r, int32_t n, int32_t m, int32_t l);
bool dgtprd(std::span<const double> a, std::span<const double> b, std::span<double> r, int32_t n, int32_t m, int32_t l);

}  // namespace tmrdar
