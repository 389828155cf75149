#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/strings/t_string.h"

namespace tmrdar::MOD_STRING {
namespace {

std::string ENCODED(std::string_view bytes) {
  T_STRING s(bytes);
  s.TO_BASE64();
  return std::string(s.VIEW());
}

std::string DECODED(std::string_view text) {
  T_STRING s(text);
  s.FROM_BASE64();
  return std::string(s.VIEW());
}

TEST(Base64, PaddingOfTheLastGroupAndRoundTrip) {
  EXPECT_EQ(ENCODED("M"), "TQ==");
  EXPECT_EQ(ENCODED("Ma"), "TWE=");
  EXPECT_EQ(ENCODED("Man"), "TWFu");
  T_STRING empty;
  empty.TO_BASE64();
  EXPECT_FALSE(empty.CREATED_STRING());

  std::string bytes;
  for (int b = 0; b < 256; ++b) bytes.push_back(static_cast<char>(b));
  const std::string text = ENCODED(bytes);
  EXPECT_EQ(text.size(), 344U);  // no line breaks
  EXPECT_EQ(text.substr(0, 4), "AAEC");
  EXPECT_EQ(DECODED(text), bytes);
}

TEST(Base64, DecodingSkipsEverythingOutsideTheAlphabet) {
  EXPECT_EQ(DECODED("TW Fu"), "Man");
  EXPECT_EQ(DECODED("T\r\nW-F!u\t"), "Man");
  EXPECT_EQ(DECODED("TWE="), "Ma");
  // Padding is skipped too, so it does not end a group: the bits run on.
  EXPECT_EQ(DECODED("TQ==TQ=="), std::string("M\x04\xD0", 3));
  EXPECT_EQ(DECODED("TWFuT"), "Man");  // six bits left over are dropped
  EXPECT_EQ(DECODED("#$%"), "");
}

// The numbers are read free-form from the whole storage, by the rules the
// free-form reading's own tests hold: a value or a null is fine, and a null,
// like anything that is not fine, gives 0.
TEST(FreeFormNumbers, ValuesAndNullsAreFineAndAnythingElseGivesZero) {
  struct CASE {
    const char* text;
    bool int_ok;
    int32_t int_value;
    bool real_ok;
    float real_value;
  };
  const CASE cases[] = {{" 42 ", true, 42, true, 42.0F},
                        {"2*", true, 0, true, 0.0F},
                        {"1.5", false, 0, true, 1.5F},
                        {"1e39", false, 0, false, 0.0F}};
  for (const CASE& c : cases) {
    bool ok = !c.int_ok;
    EXPECT_EQ(T_STRING(c.text).TO_INT(ok), c.int_value) << c.text;
    EXPECT_EQ(ok, c.int_ok) << c.text;
    ok = !c.real_ok;
    EXPECT_EQ(T_STRING(c.text).TO_REAL(ok), c.real_value) << c.text;
    EXPECT_EQ(ok, c.real_ok) << c.text;
  }
  bool ok = true;
  T_STRING().TO_INT(ok);
  EXPECT_FALSE(ok);
}

TEST(FreeFormNumbers, TheWholeStorageIsRead) {
  T_STRING s("12345");
  s.CLEAR_STRING();
  s.APPEND_CHARS("9");
  bool ok = false;
  EXPECT_EQ(s.TO_INT(ok), 92345);
  EXPECT_TRUE(ok);
}

}  // namespace
}  // namespace tmrdar::MOD_STRING
