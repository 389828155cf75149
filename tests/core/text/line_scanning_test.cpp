#include "core/text/line_scanning.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "frame/base/error_handling.h"

namespace tmrdar {
namespace {

constexpr int32_t DEFAULT = -99;

void CLEAR_MESSAGE() { ERROR_HANDLING::ERROR3(false, "", ""); }

// The result of one scan of up to three entries.
struct SCAN {
  std::array<int32_t, 3> numbers{};
  std::array<TEXT_ENTRY, 3> texts;
  std::array<bool, 3> is_text{};
};

SCAN SCAN_LINE(std::string_view line, std::string_view key = " ", int32_t n = 3) {
  SCAN scan;
  scan.is_text.fill(true);  // all three must be reset
  FIND_NUMBERS_AND_TEXT_IN_LINE(key, line, scan.numbers, n, DEFAULT, scan.texts, scan.is_text);
  return scan;
}

TEST(FindNumbersAndText, EmptyFieldsKeepTheirPlaces) {
  for (const std::string_view line : {"3, ,7", "3,,7", "3 ,\t, 7   "}) {
    const SCAN scan = SCAN_LINE(line);
    EXPECT_EQ(scan.numbers, (std::array<int32_t, 3>{3, DEFAULT, 7})) << line;
    EXPECT_EQ(scan.is_text, (std::array<bool, 3>{false, false, false})) << line;
  }
  EXPECT_EQ(SCAN_LINE(",5").numbers, (std::array<int32_t, 3>{DEFAULT, 5, DEFAULT}));
}

TEST(FindNumbersAndText, NumbersAndWordsKeepPositions) {
  const SCAN scan = SCAN_LINE("12 abc -4");
  EXPECT_EQ(scan.numbers, (std::array<int32_t, 3>{12, DEFAULT, -4}));
  EXPECT_EQ(scan.is_text, (std::array<bool, 3>{false, true, false}));
  EXPECT_EQ(scan.texts[1].TRIMMED(), "abc");
  EXPECT_TRUE(chars::IS_BLANK(scan.texts[0].VIEW()));
}

TEST(FindNumbersAndText, OnlyTheKeysFirstCharacterMarksTheStart) {
  EXPECT_EQ(SCAN_LINE("X N=5 6", "N").numbers, (std::array<int32_t, 3>{5, 6, DEFAULT}));
  EXPECT_EQ(SCAN_LINE("X N=5 6", "NODE").numbers, (std::array<int32_t, 3>{5, 6, DEFAULT}));
  const SCAN missing = SCAN_LINE("X N=5 6", "M");
  EXPECT_EQ(missing.numbers, (std::array<int32_t, 3>{DEFAULT, DEFAULT, DEFAULT}));
  EXPECT_EQ(missing.is_text, (std::array<bool, 3>{false, false, false}));
  EXPECT_EQ(SCAN_LINE("5 6", "").numbers, (std::array<int32_t, 3>{5, 6, DEFAULT}));
}

TEST(FindNumbersAndText, BracedLabelIsOneEntry) {
  CLEAR_MESSAGE();
  const SCAN scan = SCAN_LINE("1 {riser top, end}, 5");
  EXPECT_EQ(scan.numbers, (std::array<int32_t, 3>{1, DEFAULT, 5}));
  EXPECT_EQ(scan.texts[1].TRIMMED(), "riser top, end");
  EXPECT_TRUE(scan.is_text[1]);

  // Leading blanks in the braces go; a braced number is a number.
  const SCAN inner = SCAN_LINE("{  12} {} {\tx}");
  EXPECT_EQ(inner.numbers, (std::array<int32_t, 3>{12, DEFAULT, DEFAULT}));
  EXPECT_EQ(inner.is_text, (std::array<bool, 3>{false, false, true}));
  EXPECT_EQ(inner.texts[2].TRIMMED(), "\tx");
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
}

TEST(FindNumbersAndText, UnbalancedBracesAreReported) {
  CLEAR_MESSAGE();
  const SCAN open = SCAN_LINE("4 {riser top   ");
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Input Data Processing: Missing closing brace '}' for node label.");
  EXPECT_EQ(open.numbers[0], 4);
  EXPECT_EQ(open.texts[1].TRIMMED(), "riser top");

  CLEAR_MESSAGE();
  const SCAN stray = SCAN_LINE("ab}c 7");
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Input Data Processing: Missing opening brace '{' for node label.");
  EXPECT_EQ(stray.texts[0].TRIMMED(), "abc");
  EXPECT_EQ(stray.numbers[1], 7);

  // Entries beyond n are never looked at.
  CLEAR_MESSAGE();
  EXPECT_EQ(SCAN_LINE("1 2 {3", " ", 2).numbers[1], 2);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
}

TEST(FindNumbersAndText, IntegerReadDecidesNumericLookingEntries) {
  CLEAR_MESSAGE();
  const SCAN scan = SCAN_LINE("1E5 +7 1.5");
  EXPECT_EQ(scan.numbers, (std::array<int32_t, 3>{DEFAULT, 7, DEFAULT}));
  EXPECT_EQ(scan.is_text, (std::array<bool, 3>{false, false, false}));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");

  EXPECT_EQ(SCAN_LINE("2147483647 -2147483648").numbers[1], INT32_MIN);
  const SCAN big = SCAN_LINE("2147483648 00000000000000000000009");
  EXPECT_EQ(big.numbers[0], DEFAULT);
  EXPECT_EQ(big.numbers[1], 9);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Input Data Processing: Number is too large for the program.");
}

TEST(FindNumbersAndText, CountsAreBoundedByTheArrays) {
  std::array<int32_t, 2> numbers{};
  std::array<TEXT_ENTRY, 2> texts;
  std::array<bool, 2> is_text{};
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", "1 2 3 4", numbers, 50, DEFAULT, texts, is_text);
  EXPECT_EQ(numbers, (std::array<int32_t, 2>{1, 2}));
  numbers = {5, 5};
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", "1 2", numbers, -3, DEFAULT, texts, is_text);
  EXPECT_EQ(numbers, (std::array<int32_t, 2>{5, 5}));
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", "", numbers, 2, DEFAULT, texts, is_text);
  EXPECT_EQ(numbers, (std::array<int32_t, 2>{DEFAULT, DEFAULT}));
  // A word longer than the text entry is cut at its width.
  FIND_NUMBERS_AND_TEXT_IN_LINE(" ", std::string(1500, 'w'), numbers, 2, DEFAULT, texts, is_text);
  EXPECT_EQ(texts[0].TRIMMED(), std::string(TEXT_ENTRY_WIDTH, 'w'));
}

TEST(FindReals, WholeKeyMarksTheStart) {
  std::array<float, 3> reals{};
  FIND_REALS_IN_LINE("FOO", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 3>{1.0F, 2.0F, -1.0F}));
  FIND_REALS_IN_LINE("BAR", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 3>{-1.0F, -1.0F, -1.0F}));
  FIND_REALS_IN_LINE("FOOD", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals[0], -1.0F);
}

TEST(FindReals, FreeFormValuesAndEmptyFields) {
  std::array<float, 6> reals{};
  FIND_REALS_IN_LINE(" ", "1.5, ,-2e3 4d1\t1.0+2 {7}", reals, 6, 9.0F);
  EXPECT_EQ(reals, (std::array<float, 6>{1.5F, 9.0F, -2000.0F, 40.0F, 100.0F, 9.0F}));
}

TEST(FindReals, TooLargeStopsOnlyAfterALeadingDigitOneToEight) {
  std::array<float, 2> reals{};
  CLEAR_MESSAGE();
  FIND_REALS_IN_LINE(" ", "9e39 5", reals, 2, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 2>{-1.0F, 5.0F}));
  FIND_REALS_IN_LINE(" ", "-1e39 5", reals, 2, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 2>{-1.0F, 5.0F}));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");

  FIND_REALS_IN_LINE(" ", "1e39 5", reals, 2, -1.0F);
  EXPECT_EQ(reals, (std::array<float, 2>{-1.0F, -1.0F}));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Input Data Processing: Number is too large for the program.");
}

TEST(CountSpaces, CountsBlanksBeforeTheLastNonBlank) {
  EXPECT_EQ(COUNT_SPACES("a b c  "), 2);
  EXPECT_EQ(COUNT_SPACES("  a\tb"), 2);
  EXPECT_EQ(COUNT_SPACES("    "), 0);
}

TEST(StringCompare, IgnoresCaseAndTrailingBlanksOnly) {
  EXPECT_TRUE(STRING_COMPARE("Riser  ", "rISER"));
  EXPECT_TRUE(STRING_COMPARE("", "   "));
  EXPECT_FALSE(STRING_COMPARE(" riser", "riser"));
  EXPECT_FALSE(STRING_COMPARE("riser", "risers"));
  EXPECT_FALSE(STRING_COMPARE("[", "{"));  // only A to Z fold
}

TEST(HexToInt, DigitsPlacesAndWrap) {
  CLEAR_MESSAGE();
  EXPECT_EQ(HEX_TO_INT("1f"), 31);
  EXPECT_EQ(HEX_TO_INT("  aBcD  "), 0xABCD);
  EXPECT_EQ(HEX_TO_INT("FFFFFFFF"), -1);
  EXPECT_EQ(HEX_TO_INT("123456789"), 0x23456789);  // the ninth place weighs 0
  EXPECT_EQ(HEX_TO_INT(""), 0);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
}

TEST(HexToInt, InvalidCharacterWarnsAndKeepsItsPlace) {
  CLEAR_MESSAGE();
  EXPECT_EQ(HEX_TO_INT("G1"), 1);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Warning: Input Data Processing: Ignoring invalid hexadecimal character G.");
  EXPECT_EQ(HEX_TO_INT("1x0"), 0x100);
}

}  // namespace
}  // namespace tmrdar
