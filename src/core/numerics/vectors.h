// Products and lengths of vectors of three components, and the 3 x 3
// matrices that the axes routines fill. The free routines work in 32-bit
// reals; math holds the same routines under the names of that module, with
// their 64-bit twins. Every sum is formed in the order written, in the
// routine's own precision.
//
// An output vector may be one of the inputs: each routine forms its result
// before it writes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tmrdar {

// A 3 x 3 matrix stored with the first index fastest: element (i, j), i and
// j from 1, stands at M3(i, j). An axes matrix holds one axis a row, so
// element (i, j) is component j of axis i.
template <typename Real>
using Matrix3 = std::array<Real, 9>;
constexpr std::size_t m3(int i, int j) { return static_cast<std::size_t>((i - 1) + 3 * (j - 1)); }

// c = a x b with c1 = a2 b3 - a3 b2, c2 = a3 b1 - b3 a1, c3 = b2 a1 - a2 b1,
// and its length sqrt((c1^2 + c2^2) + c3^2). A length below `tolerance`
// gives c as it stands and a flag of 1; otherwise the flag is 0 and c is
// divided by its length. With a tolerance of 0 parallel vectors thus divide
// 0 by 0.
void cross(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c, int32_t& flag,
           float tolerance);
// c = a x b as cross forms it, with no length test.
void cross_product(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c);
// Divides the vector by its length sqrt((x^2 + y^2) + z^2) and gives the
// length. A length of 1e-20 or less sets the vector and the length to 0.
void normalise(std::span<float, 3> vector, float& length);

namespace math {
// cross_product, and the same in 64-bit reals.
void cross_product4(std::span<const float, 3> a, std::span<const float, 3> b, std::span<float, 3> c);
void cross_product8(std::span<const double, 3> a, std::span<const double, 3> b, std::span<double, 3> c);
// normalise, and the same in 64-bit reals with the 64-bit threshold 1e-20.
void normalise4(std::span<float, 3> vector, float& length);
void normalise8(std::span<double, 3> vector, double& length);
}  // namespace math

}  // namespace tmrdar
