#include "core/text/free_form_read.h"

#include <gtest/gtest.h>

#include <limits>

namespace tmrdar {
namespace {

using enum FREE_FORM_READ;

TEST(FreeFormRead, RealsTellOverflowFromUnderflow) {
  float v = 0.0F;
  const std::pair<std::string_view, float> cases[] = {
      {".5", 0.5F}, {"1q-1", 0.1F}, {"2-1", 0.2F}, {"3/4", 3.0F}, {"1e-50", 0.0F},
      {"3.4028235e38", std::numeric_limits<float>::max()}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(READ_FREE_FORM_REAL(text, v), VALUE) << text;
    EXPECT_EQ(v, expected) << text;
  }
  v = 3.0F;
  for (const std::string_view big : {"3.4028236e38", "-1e99999999999999", "0.0001e43"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(big, v), OUT_OF_RANGE) << big;
  }
  for (const std::string_view bad : {".", "e5", "1e+", "1.2.3", "{7}"}) {
    EXPECT_EQ(READ_FREE_FORM_REAL(bad, v), MALFORMED) << bad;
  }
  EXPECT_EQ(v, 3.0F);
}

}  // namespace
}  // namespace tmrdar
