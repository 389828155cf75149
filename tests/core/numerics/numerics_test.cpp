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

TEST(Numerics, VectorsAndMatrixProducts) {
  V4 c4{};
  V4 c2{};
  V8 c8{};
  cross_product(V4{1, 2, 3}, V4{4, 5, 6}, c4);
  math::cross_product4(V4{1, 2, 3}, V4{4, 5, 6}, c2);
  math::cross_product8(V8{1, 2, 3}, V8{4, 5, 6}, c8);
  EXPECT_EQ(c4, (V4{-3, 6, -3}));
  EXPECT_EQ(c2, (V4{-3, 6, -3}));
  EXPECT_EQ(c8, (V8{-3, 6, -3}));

  struct test_case {
    V4 a, b;
    float tolerance;
    int32_t flag;
    V4 c;
  };
  for (const test_case& k : {test_case{{0, 0, 1}, {4, -3, 0}, 5.0F, 0, {0.6F, 0.8F, 0}},
                        test_case{{0, 0, 1}, {4, -3, 0}, std::nextafter(5.0F, 6.0F), 1, {3, 4, 0}}}) {
    V4 c{};
    int32_t flag = 7;
    cross(k.a, k.b, c, flag, k.tolerance);
    EXPECT_EQ(flag, k.flag) << k.tolerance;
    EXPECT_EQ(c, k.c) << k.tolerance;
  }
  for (auto* routine : {&normalise, &math::normalise4}) {
    V4 u{3, 4, 0};
    float size = -1;
    routine(u, size);
    EXPECT_EQ(size, 5.0F);
    EXPECT_EQ(u, (V4{0.6F, 0.8F, 0}));
    u = {0, 0, 0};
    routine(u, size);
    EXPECT_EQ(size, 0.0F);
  }
  V8 u{0, 0, -2};
  double size = -1;
  math::normalise8(u, size);
  EXPECT_EQ(size, 2.0);
  EXPECT_EQ(u, (V8{0, 0, -1}));

  // A = (1 2 3; 4 5 6), B = (7 8; 9 10; 11 12), first index fastest: A B =
  // (58 64; 139 154), and A^T B' = (43 59 75; 48 66 84) for B' the first two
  // rows of B. A count larger than an array leaves the result alone.
  const std::vector<float> a{1, 4, 2, 5, 3, 6};
  const std::vector<float> b{7, 9, 11, 8, 10, 12};
  std::vector<float> r(6, -1);
  EXPECT_TRUE(gmprd(a, b, r, 2, 3, 2));
  EXPECT_EQ(r, (std::vector<float>{58, 139, 64, 154, -1, -1}));
  std::vector<double> d(6, -1);
  EXPECT_TRUE(dgtprd(std::vector<double>{1, 4, 2, 5, 3, 6}, std::vector<double>{7, 9, 8, 10}, d, 2, 3, 2));
  EXPECT_EQ(d, (std::vector<double>{43, 59, 75, 48, 66, 84}));
  std::vector<float> one(1, -1);
  std::vector<double> one8(1, -1);
  EXPECT_TRUE(gtprd(std::vector<float>{1, 2, 3}, std::vector<float>{1, 1, 1}, one, 3, 1, 1));
  EXPECT_TRUE(dgmprd(std::vector<double>{1, 2, 3}, std::vector<double>{1, 1, 1}, one8, 1, 3, 1));
  EXPECT_EQ(one[0], 6.0F);
  EXPECT_EQ(one8[0], 6.0);
  std::vector<float> out(4, -1);
  EXPECT_FALSE(gmprd(a, b, out, 3, 2, 2));
  EXPECT_FALSE(gtprd(a, b, out, 4, 2, 1));
  EXPECT_EQ(out, (std::vector<float>(4, -1)));
}

}  // namespace
}  // namespace tmrdar
