#include "core/numerics/matrix_products.h"

#include <gtest/gtest.h>

#include <vector>

namespace tmrdar {
namespace {

// A, 2 x 3, and B, 3 x 2, first index fastest:
//   A = | 1 2 3 |   B = |  7  8 |   A B = |  58  64 |
//       | 4 5 6 |       |  9 10 |         | 139 154 |
//                       | 11 12 |
const std::vector<float> A{1, 4, 2, 5, 3, 6};
const std::vector<float> B{7, 9, 11, 8, 10, 12};

TEST(Gmprd, ProductStoredWithTheFirstIndexFastest) {
  std::vector<float> r(4, -1);
  EXPECT_TRUE(GMPRD(A, B, r, 2, 3, 2));
  EXPECT_EQ(r, (std::vector<float>{58, 139, 64, 154}));

  std::vector<double> d(4, -1);
  EXPECT_TRUE(DGMPRD(std::vector<double>(A.begin(), A.end()), std::vector<double>(B.begin(), B.end()), d, 2, 3, 2));
  EXPECT_EQ(d, (std::vector<double>{58, 139, 64, 154}));
}

TEST(Gmprd, EachPrecisionSumsInItsOwn) {
  // 2^24 + 1 has no 32-bit form, whatever the order of the sum.
  const std::vector<float> row{16777216, 1};
  const std::vector<float> column{1, 1};
  std::vector<float> r(1, -1);
  EXPECT_TRUE(GMPRD(row, column, r, 1, 2, 1));
  EXPECT_EQ(r[0], 16777216.0F);
  std::vector<double> d(1, -1);
  EXPECT_TRUE(DGMPRD(std::vector<double>{16777216, 1}, std::vector<double>{1, 1}, d, 1, 2, 1));
  EXPECT_EQ(d[0], 16777217.0);
}

TEST(Gmprd, CountsOfNothingAndArraysTooSmall) {
  struct CASE {
    int32_t n, m, l;
    bool formed;
    std::vector<float> r;
  };
  for (const CASE& k : {CASE{0, 3, 2, true, {-1, -1, -1, -1}},    // no rows: nothing written
                        CASE{2, 3, -4, true, {-1, -1, -1, -1}},   // no columns: nothing written
                        CASE{2, 0, 2, true, {0, 0, 0, 0}},        // no inner index: cleared
                        CASE{2, -7, 1, true, {0, 0, -1, -1}},     // cleared as far as R goes
                        CASE{2, 4, 2, false, {-1, -1, -1, -1}},   // A and B hold only 3 of the inner index
                        CASE{3, 2, 2, false, {-1, -1, -1, -1}}})  // R holds only 4
  {
    std::vector<float> r(4, -1);
    EXPECT_EQ(GMPRD(A, B, r, k.n, k.m, k.l), k.formed) << k.n << " " << k.m << " " << k.l;
    EXPECT_EQ(r, k.r) << k.n << " " << k.m << " " << k.l;
  }
}

TEST(Gtprd, TransposedProduct) {
  // A^T A for A above: | 17 22 27 |
  //                    | 22 29 36 |
  //                    | 27 36 45 |
  std::vector<float> r(9, -1);
  EXPECT_TRUE(GTPRD(A, A, r, 2, 3, 3));
  EXPECT_EQ(r, (std::vector<float>{17, 22, 27, 22, 29, 36, 27, 36, 45}));

  // A^T with B of 2 rows: the first two rows of B above as a 2 x 2.
  std::vector<double> d(6, -1);
  EXPECT_TRUE(DGTPRD(std::vector<double>(A.begin(), A.end()), std::vector<double>{7, 9, 8, 10}, d, 2, 3, 2));
  EXPECT_EQ(d, (std::vector<double>{43, 59, 75, 48, 66, 84}));
}

TEST(Gtprd, TheSumRunsFromTheFirstRowInEachPrecision) {
  // The column (1, 1e8, -1e8) against ones: in single precision
  // (1 + 1e8) - 1e8 is 0, while from the last row it would be 1; in 64 bits it is 1.
  const std::vector<float> a{1, 1e8F, -1e8F};
  const std::vector<float> ones{1, 1, 1};
  std::vector<float> r(1, -1);
  EXPECT_TRUE(GTPRD(a, ones, r, 3, 1, 1));
  EXPECT_EQ(r[0], 0.0F);
  std::vector<double> d(1, -1);
  EXPECT_TRUE(DGTPRD(std::vector<double>{1, 1e8, -1e8}, std::vector<double>{1, 1, 1}, d, 3, 1, 1));
  EXPECT_EQ(d[0], 1.0);
}

TEST(Gtprd, CountsOfNothingAndArraysTooSmall) {
  struct CASE {
    int32_t n, m, l;
    bool formed;
    std::vector<float> r;
  };
  for (const CASE& k : {CASE{0, 2, 2, true, {0, 0, 0, 0}},        // no rows to sum: zeros
                        CASE{-3, 1, 2, true, {0, 0, -1, -1}},     // zeros as far as R goes
                        CASE{2, 0, 2, true, {-1, -1, -1, -1}},    // R has no rows
                        CASE{2, 3, -1, true, {-1, -1, -1, -1}},   // R has no columns
                        CASE{4, 2, 1, false, {-1, -1, -1, -1}},   // A holds 6, not 4 rows of 2
                        CASE{2, 3, 2, false, {-1, -1, -1, -1}}})  // R holds only 4 of 6
  {
    std::vector<float> r(4, -1);
    EXPECT_EQ(GTPRD(A, B, r, k.n, k.m, k.l), k.formed) << k.n << " " << k.m << " " << k.l;
    EXPECT_EQ(r, k.r) << k.n << " " << k.m << " " << k.l;
  }
}

}  // namespace
}  // namespace tmrdar
