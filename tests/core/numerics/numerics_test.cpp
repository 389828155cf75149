// The vector and matrix routines against hand-worked values, chosen so that
// another order of a sum, another precision or another threshold shows.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "core/numerics/matrix_products.h"
#include "core/numerics/vectors.h"

namespace tmrdar {
namespace {

using V4 = std::array<float, 3>;
using V8 = std::array<double, 3>;

TEST(Numerics, CrossProductsInBothPrecisions) {
  for (const auto& [a, b, c] : {std::array<V4, 3>{V4{1, 2, 3}, {4, 5, 6}, {-3, 6, -3}},
                                std::array<V4, 3>{V4{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}}) {
    V4 c4{};
    V4 c2{};
    V8 c8{};
    CROSS_PRODUCT(a, b, c4);
    MATH::CROSS_PRODUCT4(a, b, c2);
    MATH::CROSS_PRODUCT8(V8{a[0], a[1], a[2]}, V8{b[0], b[1], b[2]}, c8);
    EXPECT_EQ(c4, c);
    EXPECT_EQ(c2, c);
    EXPECT_EQ(c8, (V8{c[0], c[1], c[2]}));
  }
  V8 c8{};
  MATH::CROSS_PRODUCT8(V8{16777217.0, 0, 0}, V8{0, 1, 0}, c8);  // no 32-bit form
  EXPECT_EQ(c8[2], 16777217.0);
}

TEST(Numerics, CrossTestsItsLengthStrictlyAgainstTheTolerance) {
  // (0, 0, 1) x (4, -3, 0) = (3, 4, 0), of length 5. (-3, -3, -3) x (-3, -2,
  // 1024) = (-3078, 3081, -3): ((c1^2 + c2^2) + c3^2) in single precision
  // gives a length of 4355.071777, any other order or 64 bits 4355.072266.
  const float l = 4355.071777F;
  struct CASE {
    V4 a, b;
    float tolerance;
    int32_t flag;
    V4 c;
  };
  for (const CASE& k : {CASE{{0, 0, 1}, {4, -3, 0}, 5.0F, 0, {0.6F, 0.8F, 0}},
                        CASE{{0, 0, 1}, {4, -3, 0}, std::nextafter(5.0F, 6.0F), 1, {3, 4, 0}},
                        CASE{{1, 2, 3}, {2, 4, 6}, 1e-6F, 1, {0, 0, 0}},
                        CASE{{-3, -3, -3}, {-3, -2, 1024}, 0.0F, 0, {-3078 / l, 3081 / l, -3 / l}}}) {
    V4 c{};
    int32_t flag = 7;
    CROSS(k.a, k.b, c, flag, k.tolerance);
    EXPECT_EQ(flag, k.flag) << k.tolerance;
    EXPECT_EQ(c, k.c) << k.tolerance;
  }
  V4 c{};
  int32_t flag = 7;
  CROSS(V4{1, 2, 3}, V4{2, 4, 6}, c, flag, 0.0F);  // parallel: 0 / 0
  EXPECT_TRUE(flag == 0 && std::isnan(c[0]) && std::isnan(c[1]) && std::isnan(c[2]));
}

TEST(Numerics, NormaliseAtMostTheThresholdGivesZero) {
  // (4096, 0.75, 3.25): (x^2 + y^2) + z^2 rounds to 2^24 + 4 in single
  // precision, x^2 + (y^2 + z^2) to 2^24 + 6. Squares of 0x1.79ca24p-67 are
  // subnormal and its length comes to 0x1.79c9cep-67, below 1e-20; the next
  // float's to 0x1.79ca7cp-67, above.
  const float l = 4096.0009765625F;
  for (const auto& [v, length, unit] :
       {std::tuple<V4, float, V4>{{3, 4, 0}, 5.0F, {0.6F, 0.8F, 0}},
        {{0, 0, 0}, 0.0F, {0, 0, 0}},
        {{4096, 0.75F, 3.25F}, l, {4096 / l, 0.75F / l, 3.25F / l}},
        {{0x1.79ca24p-67F, 0, 0}, 0.0F, {0, 0, 0}},
        {{0x1.79ca26p-67F, 0, 0}, 0x1.79ca7cp-67F, {0x1.79ca26p-67F / 0x1.79ca7cp-67F, 0, 0}}}) {
    for (auto* routine : {&NORMALISE, &MATH::NORMALISE4}) {
      V4 u = v;
      float size = -1;
      routine(u, size);
      EXPECT_EQ(size, length);
      EXPECT_EQ(u, unit);
    }
  }
  // In 64 bits 1e-20 squared is exact, a length of 1e-20 is at most the
  // threshold, and 2^24 + 0.5625 + 10.5625 keeps every bit.
  for (const auto& [v, length, unit] : {std::tuple<V8, double, V8>{{1e-20, 0, 0}, 0.0, {0, 0, 0}},
                                        {{0, std::nextafter(1e-20, 1.0), 0}, std::nextafter(1e-20, 1.0), {0, 1, 0}},
                                        {{0, 0, -2}, 2.0, {0, 0, -1}}}) {
    V8 u = v;
    double size = -1;
    MATH::NORMALISE8(u, size);
    EXPECT_EQ(size, length);
    EXPECT_EQ(u, unit);
  }
  V8 u{4096, 0.75, 3.25};
  double size = 0;
  MATH::NORMALISE8(u, size);
  EXPECT_EQ(size, std::sqrt(16777227.125));
}

TEST(Numerics, MatrixProducts) {
  // A = | 1 2 3 |, B = |  7  8 |, first index fastest; A B = |  58  64 |,
  //     | 4 5 6 |      |  9 10 |                              | 139 154 |
  //                    | 11 12 |
  // and A^T B' = (43 59 75; 48 66 84) for B' the first two rows of B.
  const std::vector<float> a{1, 4, 2, 5, 3, 6};
  const std::vector<float> b{7, 9, 11, 8, 10, 12};
  std::vector<float> r(6, -1);
  EXPECT_TRUE(GMPRD(a, b, r, 2, 3, 2));
  EXPECT_EQ(r, (std::vector<float>{58, 139, 64, 154, -1, -1}));
  std::vector<double> d(6, -1);
  EXPECT_TRUE(DGTPRD(std::vector<double>{1, 4, 2, 5, 3, 6}, std::vector<double>{7, 9, 8, 10}, d, 2, 3, 2));
  EXPECT_EQ(d, (std::vector<double>{43, 59, 75, 48, 66, 84}));

  // (1, 1e8, -1e8) against ones summed from the first term: 0 in single
  // precision (from the last term it would be 1), 1 in 64 bits.
  std::vector<float> one(1, -1);
  std::vector<double> one8(1, -1);
  EXPECT_TRUE(GTPRD(std::vector<float>{1, 1e8F, -1e8F}, std::vector<float>{1, 1, 1}, one, 3, 1, 1));
  EXPECT_TRUE(DGMPRD(std::vector<double>{1, 1e8, -1e8}, std::vector<double>{1, 1, 1}, one8, 1, 3, 1));
  EXPECT_EQ(one[0], 0.0F);
  EXPECT_EQ(one8[0], 1.0);

  // Counts of nothing, and arrays smaller than the counts say.
  struct CASE {
    bool transposed;
    int32_t n, m, l;
    bool formed;
    std::vector<float> r;
  };
  for (const CASE& k : {CASE{false, 0, 3, 2, true, {-1, -1, -1, -1}}, CASE{false, 2, 3, -4, true, {-1, -1, -1, -1}},
                        CASE{false, 2, -7, 1, true, {0, 0, -1, -1}}, CASE{false, 3, 2, 2, false, {-1, -1, -1, -1}},
                        CASE{true, -3, 1, 2, true, {0, 0, -1, -1}}, CASE{true, 2, 0, 2, true, {-1, -1, -1, -1}},
                        CASE{true, 4, 2, 1, false, {-1, -1, -1, -1}}}) {
    std::vector<float> out(4, -1);
    EXPECT_EQ((k.transposed ? GTPRD : GMPRD)(a, b, out, k.n, k.m, k.l), k.formed) << k.n << k.m << k.l;
    EXPECT_EQ(out, k.r) << k.transposed << k.n << k.m << k.l;
  }
}

}  // namespace
}  // namespace tmrdar
