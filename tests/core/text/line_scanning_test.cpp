#include "core/text/line_scanning.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "frame/base/error_handling.h"

namespace tmrdar {
namespace {

constexpr int32_t D = -99;  // the default
using INTS = std::array<int32_t, 3>;
using FLAGS = std::array<bool, 3>;

void CLEAR_MESSAGE() { ERROR_HANDLING::ERROR3(false, "", ""); }
std::string_view MESSAGE() { return ERROR_HANDLING::LAST_MESSAGE(); }

struct SCAN {
  INTS numbers{};
  std::array<TEXT_ENTRY, 3> texts;
  FLAGS is_text{};
};

SCAN SCAN_LINE(std::string_view line, std::string_view key = " ", int32_t n = 3) {
  SCAN scan;
  scan.is_text.fill(true);  // all three must be reset
  FIND_NUMBERS_AND_TEXT_IN_LINE(key, line, scan.numbers, n, D, scan.texts, scan.is_text);
  return scan;
}

TEST(FindNumbersAndText, EmptyFieldsAndWordsKeepPositions) {
  for (const std::string_view line : {"3, ,7", "3,,7", "3 ,\t, 7   "}) {
    EXPECT_EQ(SCAN_LINE(line).numbers, (INTS{3, D, 7})) << line;
  }
  EXPECT_EQ(SCAN_LINE(",5").numbers, (INTS{D, 5, D}));
  const SCAN scan = SCAN_LINE("12 abc -4");
  EXPECT_EQ(scan.numbers, (INTS{12, D, -4}));
  EXPECT_EQ(scan.is_text, (FLAGS{false, true, false}));
  EXPECT_EQ(scan.texts[1].TRIMMED(), "abc");
}

TEST(FindNumbersAndText, OnlyTheKeysFirstCharacterMarksTheStart) {
  EXPECT_EQ(SCAN_LINE("X N=5 6", "N").numbers, (INTS{5, 6, D}));
  EXPECT_EQ(SCAN_LINE("X N=5 6", "NODE").numbers, (INTS{5, 6, D}));
  const SCAN missing = SCAN_LINE("X N=5 6", "M");
  EXPECT_EQ(missing.numbers, (INTS{D, D, D}));
  EXPECT_EQ(missing.is_text, (FLAGS{false, false, false}));
}

TEST(FindNumbersAndText, BracedLabelIsOneEntry) {
  CLEAR_MESSAGE();
  const SCAN scan = SCAN_LINE("1 {riser top, end}, 5");
  EXPECT_EQ(scan.numbers, (INTS{1, D, 5}));
  EXPECT_EQ(scan.texts[1].TRIMMED(), "riser top, end");
  // Leading blanks in braces go, a tab stays; a braced number is a number.
  const SCAN inner = SCAN_LINE("{  12} {} {\tx}");
  EXPECT_EQ(inner.numbers, (INTS{12, D, D}));
  EXPECT_EQ(inner.is_text, (FLAGS{false, false, true}));
  EXPECT_EQ(inner.texts[2].TRIMMED(), "\tx");
  EXPECT_EQ(MESSAGE(), "");
}

TEST(FindNumbersAndText, UnbalancedBracesAreReported) {
  CLEAR_MESSAGE();
  const SCAN open = SCAN_LINE("4 {riser top   ");
  EXPECT_EQ(MESSAGE(), "Error: Input Data Processing: Missing closing brace '}' for node label.");
  EXPECT_EQ(open.texts[1].TRIMMED(), "riser top");

  CLEAR_MESSAGE();
  const SCAN stray = SCAN_LINE("ab}c 7");
  EXPECT_EQ(MESSAGE(), "Error: Input Data Processing: Missing opening brace '{' for node label.");
  EXPECT_EQ(stray.texts[0].TRIMMED(), "abc");
  EXPECT_EQ(stray.numbers[1], 7);

  CLEAR_MESSAGE();
  SCAN_LINE("1 2 {3", " ", 2);  // entries beyond n are never looked at
  EXPECT_EQ(MESSAGE(), "");
}

TEST(FindNumbersAndText, IntegerReadDecidesNumericLookingEntries) {
  CLEAR_MESSAGE();
  const SCAN scan = SCAN_LINE("1E5 +7 1.5");
  EXPECT_EQ(scan.numbers, (INTS{D, 7, D}));
  EXPECT_EQ(scan.is_text, (FLAGS{false, false, false}));
  EXPECT_EQ(MESSAGE(), "");
  EXPECT_EQ(SCAN_LINE("-2147483648").numbers[0], INT32_MIN);
  EXPECT_EQ(SCAN_LINE("2147483648 0000000000009 99999999999999999999999").numbers, (INTS{D, 9, D}));
  EXPECT_EQ(MESSAGE(), "Error: Input Data Processing: Number is too large for the program.");
}

TEST(FindNumbersAndText, CountsAndWidthsAreBounded) {
  std::array<int32_t, 2> numbers{5, 5};
  std::array<TEXT_ENTRY, 2> texts;
  std::array<bool, 2> is_text{};
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", "1 2", numbers, -3, D, texts, is_text);
  EXPECT_EQ(numbers, (std::array<int32_t, 2>{5, 5}));
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", "1 2 3", numbers, 50, D, texts, is_text);
  EXPECT_EQ(numbers, (std::array<int32_t, 2>{1, 2}));
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", std::string(1500, 'w'), numbers, 2, D, texts, is_text);
  EXPECT_EQ(texts[0].TRIMMED(), std::string(TEXT_ENTRY_WIDTH, 'w'));
}

TEST(FindReals, WholeKeyAndFreeFormValues) {
  std::array<float, 3> reals{};
  FIND_REALS_IN_LINE("FOO", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 3>{1.0F, 2.0F, -1.0F}));
  FIND_REALS_IN_LINE("FOOD", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 3>{-1.0F, -1.0F, -1.0F}));

  std::array<float, 6> more{};
  FIND_REALS_IN_LINE(" ", "1.5, ,-2e3 4d1\t1.0+2 {7}", more, 6, 9.0F);
  EXPECT_EQ(more, (std::array<float, 6>{1.5F, 9.0F, -2000.0F, 40.0F, 100.0F, 9.0F}));
}

TEST(FindReals, TooLargeStopsOnlyAfterALeadingDigitOneToEight) {
  std::array<float, 2> reals{};
  CLEAR_MESSAGE();
  for (const std::string_view line : {"9e39 5", "-1e39 5"}) {
    FIND_REALS_IN_LINE(" ", line, reals, 2, -1.0F);
    EXPECT_EQ(reals, (std::array<float, 2>{-1.0F, 5.0F})) << line;
  }
  EXPECT_EQ(MESSAGE(), "");
  FIND_REALS_IN_LINE(" ", "1e39 5", reals, 2, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 2>{-1.0F, -1.0F}));
  EXPECT_EQ(MESSAGE(), "Error: Input Data Processing: Number is too large for the program.");
}

TEST(SmallStringHelpers, CountSpacesAndStringCompare) {
  EXPECT_EQ(COUNT_SPACES("a b c  "), 2);
  EXPECT_EQ(COUNT_SPACES("  a\tb"), 2);
  EXPECT_TRUE(STRING_COMPARE("Riser  ", "rISER"));
  EXPECT_FALSE(STRING_COMPARE(" riser", "riser"));
  EXPECT_FALSE(STRING_COMPARE("[", "{"));  // only A to Z fold
}

TEST(HexToInt, PlacesWrapAndInvalidCharacters) {
  CLEAR_MESSAGE();
  EXPECT_EQ(HEX_TO_INT("1f"), 31);
  EXPECT_EQ(HEX_TO_INT("  aBcD  "), 0xABCD);
  EXPECT_EQ(HEX_TO_INT("FFFFFFFF"), -1);
  EXPECT_EQ(HEX_TO_INT("123456789"), 0x23456789);  // the ninth place weighs 0
  EXPECT_EQ(MESSAGE(), "");
  EXPECT_EQ(HEX_TO_INT("1x0"), 0x100);
  EXPECT_EQ(HEX_TO_INT("G1"), 1);
  EXPECT_EQ(MESSAGE(), "Warning: Input Data Processing: Ignoring invalid hexadecimal character G.");
}

}  // namespace
}  // namespace tmrdar
