#include "core/text/free_form_read.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace tmrdar {
namespace {

using enum FREE_FORM_READ;

TEST(FreeFormRead, RealsTellOverflowFromUnderflow) {
  float v = 0.0F;
  const std::pair<std::string_view, float> cases[] = {
      {".5", 0.5F}, {"1q-1", 0.1F}, {"2-1", 0.2F}, {"3/4", 3.0F}, {"1e-50", 0.0F}, {"1.5D2", 150.0F},
      {"-.5e+1", -5.0F}, {" 7 ", 7.0F}, {"3.4028235e38", std::numeric_limits<float>::max()}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(READ_FREE_FORM_REAL(text, v), VALUE) << text;
    EXPECT_EQ(v, expected) << text;
  }
  v = 3.0F;
  for (const std::string_view big : {"3.4028236e38", "-1e99999999999999", "0.0001e43"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(big, v), OUT_OF_RANGE) << big;
  }
  for (const std::string_view bad : {".", "e5", "1e+", "1.5e", "1.5x", "1.2.3", "{7}"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(bad, v), MALFORMED) << bad;
  }
  EXPECT_EQ(v, 3.0F);
}

TEST(FreeFormRead, IntegersEndAtTheirFieldAndFillThe32BitRange) {
  const std::pair<std::string_view, int32_t> values[] = {
      {"  42  ", 42}, {"-17,5", -17}, {"+8/", 8}, {"-2147483648", -2147483647 - 1}};
  for (const auto& [text, expected] : values) {
    int32_t n = 99;
    EXPECT_EQ(READ_FREE_FORM_INTEGER(text, n), VALUE) << text;
    EXPECT_EQ(n, expected) << text;
  }
  int32_t n = 99;
  EXPECT_EQ(READ_FREE_FORM_INTEGER(",7", n), NULL_VALUE);
  for (const std::string_view bad : {"abc", "12.5", "   "}) EXPECT_EQ(READ_FREE_FORM_INTEGER(bad, n), MALFORMED) << bad;
  EXPECT_EQ(READ_FREE_FORM_INTEGER("2147483648", n), OUT_OF_RANGE);
  EXPECT_EQ(n, 99);
}

TEST(FreeFormRead, RepeatCountsGiveTheValueOrNulls) {
  const std::pair<std::string_view, int32_t> values[] = {
      {"3*12", 12}, {" 1*-7 8", -7}, {"007*4,", 4}, {"99999999999999999999*5", 5}, {"2*+0/", 0}};
  for (const auto& [text, expected] : values) {
    int32_t n = 99;
    EXPECT_EQ(READ_FREE_FORM_INTEGER(text, n), VALUE) << text;
    EXPECT_EQ(n, expected) << text;
  }
  int32_t n = 99;
  for (const std::string_view nulls : {"2*", "2*,5", " 10* 5", "1*/"}) {
    EXPECT_EQ(READ_FREE_FORM_INTEGER(nulls, n), NULL_VALUE) << nulls;
  }
  for (const std::string_view bad : {"0*5", "00*", "*5", "*", "x*5", "+2*5", "-1*5", "2*3*4", "1.5*2", "2*x"}) {
    EXPECT_EQ(READ_FREE_FORM_INTEGER(bad, n), MALFORMED) << bad;
  }
  EXPECT_EQ(READ_FREE_FORM_INTEGER("3*2147483648", n), OUT_OF_RANGE);
  EXPECT_EQ(n, 99);

  float v = 0.0F;
  EXPECT_EQ(READ_FREE_FORM_REAL("2*1.5d1", v), VALUE);
  EXPECT_EQ(v, 15.0F);
  EXPECT_EQ(READ_FREE_FORM_REAL("4*1e39", v), OUT_OF_RANGE);
  EXPECT_EQ(READ_FREE_FORM_REAL("3*", v), NULL_VALUE);
  EXPECT_EQ(READ_FREE_FORM_REAL("0*1.5", v), MALFORMED);
  EXPECT_EQ(READ_FREE_FORM_REAL("*1.5", v), MALFORMED);
  EXPECT_EQ(v, 15.0F);
}

TEST(FreeFormRead, CarriageReturnAndLineFeedAreBlanks) {
  int32_t n = 0;
  EXPECT_EQ(READ_FREE_FORM_INTEGER("\r\n 42\r\n", n), VALUE);
  EXPECT_EQ(n, 42);
  EXPECT_EQ(READ_FREE_FORM_INTEGER("\n7\r9", n), VALUE);  // the field ends at the return
  EXPECT_EQ(n, 7);
  EXPECT_EQ(READ_FREE_FORM_INTEGER("\t\r\n,5", n), NULL_VALUE);
  EXPECT_EQ(READ_FREE_FORM_INTEGER("\r\n\t ", n), MALFORMED);
  EXPECT_EQ(n, 7);

  float v = 0.0F;
  EXPECT_EQ(READ_FREE_FORM_REAL("-2.5e1\r\n", v), VALUE);
  EXPECT_EQ(v, -25.0F);
  EXPECT_EQ(READ_FREE_FORM_REAL("\n2*0.5\n", v), VALUE);
  EXPECT_EQ(v, 0.5F);
}

TEST(FreeFormRead, InfinityAndNotANumber) {
  float v = 0.0F;
  EXPECT_EQ(READ_FREE_FORM_REAL("-Infinity", v), VALUE);
  EXPECT_EQ(v, -std::numeric_limits<float>::infinity());
  for (const std::string_view nan : {"NaN", "+nan()", "nan(0x7fc)"}) {
    v = 0.0F;
    EXPECT_EQ(READ_FREE_FORM_REAL(nan, v), VALUE) << nan;
    EXPECT_TRUE(std::isnan(v)) << nan;
  }
  v = 1.0F;
  for (const std::string_view bad : {"nan(", "nan(1", "nan)", "nanx", "infin", "in"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(bad, v), MALFORMED) << bad;
  }
  EXPECT_EQ(v, 1.0F);
}

}  // namespace
}  // namespace tmrdar
