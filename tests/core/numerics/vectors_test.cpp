#include "core/numerics/vectors.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace tmrdar {
namespace {

using V4 = std::array<float, 3>;
using V8 = std::array<double, 3>;

TEST(CrossProduct, ComponentsAndSignsInBothPrecisions) {
  struct CASE {
    V4 a, b, c;
  };
  for (const CASE& k : {CASE{{1, 2, 3}, {4, 5, 6}, {-3, 6, -3}}, CASE{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                        CASE{{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}, CASE{{0, 0, 1}, {4, -3, 0}, {3, 4, 0}},
                        CASE{{1, 2, 3}, {2, 4, 6}, {0, 0, 0}}}) {
    V4 c{9, 9, 9};
    CROSS_PRODUCT(k.a, k.b, c);
    EXPECT_EQ(c, k.c);
    c = {9, 9, 9};
    MATH::CROSS_PRODUCT4(k.a, k.b, c);
    EXPECT_EQ(c, k.c);
    V8 d{9, 9, 9};
    MATH::CROSS_PRODUCT8(V8{k.a[0], k.a[1], k.a[2]}, V8{k.b[0], k.b[1], k.b[2]}, d);
    EXPECT_EQ(d, (V8{k.c[0], k.c[1], k.c[2]}));
  }
  // 16777217 has no 32-bit form: the 64-bit product keeps it.
  V8 d{};
  MATH::CROSS_PRODUCT8(V8{16777217.0, 0, 0}, V8{0, 1, 0}, d);
  EXPECT_EQ(d[2], 16777217.0);
}

TEST(CrossProduct, TheOutputMayBeAnInput) {
  V4 a{1, 2, 3};
  CROSS_PRODUCT(a, V4{4, 5, 6}, a);
  EXPECT_EQ(a, (V4{-3, 6, -3}));
  V4 b{4, 5, 6};
  int32_t flag = 7;
  CROSS(V4{1, 2, 3}, b, b, flag, 100.0F);
  EXPECT_EQ(b, (V4{-3, 6, -3}));
  EXPECT_EQ(flag, 1);
}

TEST(Cross, TheLengthTestIsStrictAgainstTheTolerance) {
  struct CASE {
    V4 a, b;
    float tolerance;
    int32_t flag;
    V4 c;
  };
  const float above_5 = std::nextafter(5.0F, 6.0F);
  // c = (3, 4, 0), of length 5.
  for (const CASE& k :
       {CASE{{0, 0, 1}, {4, -3, 0}, 0.0F, 0, {0.6F, 0.8F, 0}}, CASE{{0, 0, 1}, {4, -3, 0}, 5.0F, 0, {0.6F, 0.8F, 0}},
        CASE{{0, 0, 1}, {4, -3, 0}, above_5, 1, {3, 4, 0}}, CASE{{1, 2, 3}, {2, 4, 6}, 1e-6F, 1, {0, 0, 0}}}) {
    V4 c{9, 9, 9};
    int32_t flag = 7;
    CROSS(k.a, k.b, c, flag, k.tolerance);
    EXPECT_EQ(flag, k.flag) << k.tolerance;
    EXPECT_EQ(c, k.c) << k.tolerance;
  }
}

TEST(Cross, ParallelVectorsWithNoToleranceDivideZeroByZero) {
  V4 c{9, 9, 9};
  int32_t flag = 7;
  CROSS(V4{1, 2, 3}, V4{-2, -4, -6}, c, flag, 0.0F);
  EXPECT_EQ(flag, 0);
  for (const float x : c) EXPECT_TRUE(std::isnan(x));
}

TEST(Cross, TheLengthSumsTheFirstTwoSquaresFirst) {
  // c = (-3078, 3081, -3). ((c1^2 + c2^2) + c3^2) in single precision comes
  // to a length of 4355.071777; any other order, or 64 bits, to 4355.072266.
  V4 c{};
  int32_t flag = 7;
  CROSS(V4{-3, -3, -3}, V4{-3, -2, 1024}, c, flag, 0.0F);
  const float length = 4355.071777F;
  EXPECT_EQ(c, (V4{-3078.0F / length, 3081.0F / length, -3.0F / length}));
  EXPECT_NE(c[0], -3078.0F / 4355.072266F);
}

TEST(Normalise, LengthAndUnitVectorInEveryForm) {
  struct CASE {
    V4 v;
    float length;
    V4 unit;
  };
  // (4096, 0.75, 3.25): (x^2 + y^2) + z^2 rounds to 2^24 + 4 in single
  // precision, a length of 4096.0009765625; x^2 + (y^2 + z^2) gives 4096.00146484375.
  for (const CASE& k :
       {CASE{{3, 4, 0}, 5.0F, {0.6F, 0.8F, 0}}, CASE{{0, 0, -2}, 2.0F, {0, 0, -1}}, CASE{{0, 0, 0}, 0.0F, {0, 0, 0}},
        CASE{{4096, 0.75F, 3.25F},
             4096.0009765625F,
             {4096 / 4096.0009765625F, 0.75F / 4096.0009765625F, 3.25F / 4096.0009765625F}}}) {
    for (auto* routine : {&NORMALISE, &MATH::NORMALISE4}) {
      V4 v = k.v;
      float length = -1;
      routine(v, length);
      EXPECT_EQ(length, k.length);
      EXPECT_EQ(v, k.unit);
    }
  }
}

TEST(Normalise, SinglePrecisionThreshold) {
  // Squares of these are subnormal: the length of (0x1.79ca24p-67, 0, 0)
  // comes to 0x1.79c9cep-67, at most 1e-20 (0x1.79ca1p-67); the next float
  // up has a length of 0x1.79ca7cp-67, above it.
  V4 v{0x1.79ca24p-67F, 0, 0};
  float length = -1;
  NORMALISE(v, length);
  EXPECT_EQ(v, (V4{0, 0, 0}));
  EXPECT_EQ(length, 0.0F);

  v = {0x1.79ca26p-67F, 0, 0};
  MATH::NORMALISE4(v, length);
  EXPECT_EQ(length, 0x1.79ca7cp-67F);
  EXPECT_GT(v[0], 0.9999F);
  EXPECT_LT(v[0], 1.0F);
}

TEST(Normalise8, SixtyFourBitLengthAndThreshold) {
  // A length of exactly 1e-20 is at most the threshold.
  V8 v{1e-20, 0, 0};
  double length = -1;
  MATH::NORMALISE8(v, length);
  EXPECT_EQ(v, (V8{0, 0, 0}));
  EXPECT_EQ(length, 0.0);

  const double above = std::nextafter(1e-20, 1.0);
  v = {0, above, 0};
  MATH::NORMALISE8(v, length);
  EXPECT_EQ(length, above);
  EXPECT_EQ(v, (V8{0, 1, 0}));

  // 2^24 + 0.5625 + 10.5625 is exact in 64 bits.
  v = {4096, 0.75, 3.25};
  MATH::NORMALISE8(v, length);
  EXPECT_EQ(length, std::sqrt(16777227.125));
  EXPECT_NE(length, 4096.0009765625);
}

}  // namespace
}  // namespace tmrdar
