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

TEST(FreeFormNumbers, IntegersFromTheFirstField) {
  struct CASE {
    const char* text;
    bool ok;
    int32_t value;
  };
  const CASE cases[] = {
      {"  42  ", true, 42},   {"-17,5", true, -17},  {"+8/", true, 8},
      {"3*12 4", true, 12},   {"2*", true, 0},       {",7", true, 0},
      {"abc", false, 0},      {"   ", false, 0},     {"12.5", false, 0},
      {"2147483648", false, 0}, {"-2147483648", true, -2147483647 - 1}, {"0*5", false, 0},
  };
  for (const CASE& c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(T_STRING(c.text).TO_INT(ok), c.value) << c.text;
    EXPECT_EQ(ok, c.ok) << c.text;
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

TEST(FreeFormNumbers, RealsInEveryWrittenForm) {
  struct CASE {
    const char* text;
    bool ok;
    float value;
  };
  const CASE cases[] = {
      {"0.1", true, 0.1F},   {"1.5D2", true, 150.0F}, {"2.5-1", true, 0.25F},
      {"-.5e+1", true, -5.0F}, {" 7 ", true, 7.0F},    {"3.q1", true, 30.0F},
      {"1e-60", true, 0.0F},  {"1e39", false, 0.0F},   {"1.5x", false, 0.0F},
      {"e5", false, 0.0F},    {".", false, 0.0F},      {"1.5e", false, 0.0F},
  };
  for (const CASE& c : cases) {
    bool ok = !c.ok;
    EXPECT_EQ(T_STRING(c.text).TO_REAL(ok), c.value) << c.text;
    EXPECT_EQ(ok, c.ok) << c.text;
  }
  bool ok = false;
  EXPECT_EQ(T_STRING("-Infinity").TO_REAL(ok), -INFINITY);
  EXPECT_TRUE(std::isnan(T_STRING("nan").TO_REAL(ok)) && ok);
}

}  // namespace
}  // namespace tmrdar::MOD_STRING
