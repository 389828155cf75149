#include "core/text/free_form_read.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tmrdar {
namespace {

TEST(FreeFormInteger, SignsDigitsAndRange) {
  int32_t v = 0;
  EXPECT_EQ(READ_FREE_FORM_INTEGER("  -0042 ", v), FREE_FORM_READ::VALUE);
  EXPECT_EQ(v, -42);
  EXPECT_EQ(READ_FREE_FORM_INTEGER("-2147483649", v), FREE_FORM_READ::OUT_OF_RANGE);
  EXPECT_EQ(READ_FREE_FORM_INTEGER(std::string(400, '9'), v), FREE_FORM_READ::OUT_OF_RANGE);
  EXPECT_EQ(v, -42);  // untouched by failures
  for (const std::string_view bad : {"", "   ", "+", "-", "1.0", "1e5", "--1", "1-"}) {
    EXPECT_EQ(READ_FREE_FORM_INTEGER(bad, v), FREE_FORM_READ::MALFORMED) << bad;
  }
  // Only the first field counts; a slash or comma ends it.
  EXPECT_EQ(READ_FREE_FORM_INTEGER("8 x", v), FREE_FORM_READ::VALUE);
  EXPECT_EQ(v, 8);
  EXPECT_EQ(READ_FREE_FORM_INTEGER("/5", v), FREE_FORM_READ::NULL_VALUE);
  EXPECT_EQ(v, 8);
}

TEST(FreeFormReal, ExponentForms) {
  float v = 0.0F;
  const std::pair<std::string_view, float> cases[] = {
      {"1.5", 1.5F},   {".5", 0.5F},   {"5.", 5.0F},     {"-2E3", -2000.0F}, {"4d1", 40.0F},
      {"1q-1", 0.1F},  {"1.0+2", 100.0F}, {"2-1", 0.2F}, {"+7", 7.0F},       {"3/4", 3.0F},
      {"1e-50", 0.0F}, {"3.4028235e38", std::numeric_limits<float>::max()}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(READ_FREE_FORM_REAL(text, v), FREE_FORM_READ::VALUE) << text;
    EXPECT_EQ(v, expected) << text;
  }
  EXPECT_EQ(READ_FREE_FORM_REAL("-Infinity", v), FREE_FORM_READ::VALUE);
  EXPECT_EQ(v, -std::numeric_limits<float>::infinity());
  EXPECT_EQ(READ_FREE_FORM_REAL("NaN", v), FREE_FORM_READ::VALUE);
  EXPECT_TRUE(std::isnan(v));
}

TEST(FreeFormReal, FailuresLeaveTheValue) {
  float v = 3.0F;
  for (const std::string_view bad : {".", "e5", "1e", "1e+", "1.5x", "--1", "{7}", "1.2.3"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(bad, v), FREE_FORM_READ::MALFORMED) << bad;
  }
  for (const std::string_view big : {"3.4028236e38", "1e39", "-1e99999999999999", "0.0001e43"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(big, v), FREE_FORM_READ::OUT_OF_RANGE) << big;
  }
  EXPECT_EQ(v, 3.0F);
  EXPECT_EQ(READ_FREE_FORM_REAL("0.00000e99999", v), FREE_FORM_READ::VALUE);
  EXPECT_EQ(v, 0.0F);
}

}  // namespace
}  // namespace tmrdar
