#include "core/text/numeric_helpers.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <vector>

namespace tmrdar {
namespace {

TEST(CheckLeapYear, CenturiesNeedFourHundred) {
  EXPECT_TRUE(CHECK_LEAP_YEAR(2000));
  EXPECT_FALSE(CHECK_LEAP_YEAR(1900));
  EXPECT_TRUE(CHECK_LEAP_YEAR(2024));
}

// Rotates {1, 2, 3, 4, 5} and checks the shift written back.
std::vector<double> SHIFTED(int32_t shift, int32_t shift_after, int32_t n = 5) {
  std::vector<double> v{1, 2, 3, 4, 5};
  int32_t status = -1;
  CSHIFT_VECTOR(n, shift, v, status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(shift, shift_after);
  return v;
}

TEST(CshiftVector, CircularShiftWithReducedShift) {
  EXPECT_EQ(SHIFTED(2, 2), (std::vector<double>{3, 4, 5, 1, 2}));
  EXPECT_EQ(SHIFTED(-7, -2), (std::vector<double>{4, 5, 1, 2, 3}));
  EXPECT_EQ(SHIFTED(-5, -5), (std::vector<double>{1, 2, 3, 4, 5}));
  EXPECT_EQ(SHIFTED(INT_MIN, -3), (std::vector<double>{3, 4, 5, 1, 2}));
  EXPECT_EQ(SHIFTED(2, 2, 3), (std::vector<double>{3, 1, 2, 4, 5}));
  EXPECT_EQ(SHIFTED(3, 3, 0), (std::vector<double>{1, 2, 3, 4, 5}));

  std::vector<double> v{1, 2};
  int32_t shift = 1;
  int32_t status = 0;
  CSHIFT_VECTOR(3, shift, v, status);  // more than the vector holds
  EXPECT_EQ(status, 1);
  EXPECT_EQ(v, (std::vector<double>{1, 2}));
}

TEST(GetAlpha, KnownValues) {
  EXPECT_NEAR(GET_ALPHA(0.0F), 0.470476F, 2e-6F);
  EXPECT_NEAR(GET_ALPHA(10.0F), 0.113361F, 2e-6F);
}

}  // namespace
}  // namespace tmrdar
