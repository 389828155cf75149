#include "core/paths/wide_strings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tmrdar {
namespace {

TEST(Utf, RoundTripsEveryPlane) {
  const std::string utf8 = "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80";  // a, e acute, U+4E2D, U+1F600
  const std::u16string wide = UTF8_TO_UTF16(utf8);
  EXPECT_EQ(wide, (std::u16string{u'a', 0xE9, 0x4E2D, 0xD83D, 0xDE00}));
  EXPECT_EQ(UTF16_TO_UTF8(wide), utf8);
}

TEST(Utf, IllFormedInputBecomesReplacements) {
  // An overlong form, a truncated three-byte form and an encoded surrogate.
  EXPECT_EQ(UTF8_TO_UTF16("\xC0\xAF"), (std::u16string{0xFFFD, 0xFFFD}));
  EXPECT_EQ(UTF8_TO_UTF16("\xE4\xB8" "b"), (std::u16string{0xFFFD, u'b'}));
  EXPECT_EQ(UTF8_TO_UTF16("\xED\xA0\x80"), (std::u16string{0xFFFD, 0xFFFD, 0xFFFD}));
  EXPECT_EQ(UTF16_TO_UTF8(std::u16string{0xDC00, u'z'}), "\xEF\xBF\xBDz");
}

TEST(MultiByteToWide, UnitsFrom0x8000AreZeroed) {
  std::vector<char16_t> wide(PATH_BUFFER_UNITS + 10, 0xAAAA);
  int32_t length = -1;
  bool failed = true;
  // U+7FFF stays, U+8000 and both halves of U+1F600 go.
  MULTIBYTETOWIDE("a\xE7\xBF\xBF\xE8\x80\x80" "b\xF0\x9F\x98\x80", wide, length, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(length, 7);  // the zero included
  EXPECT_EQ(std::u16string(wide.begin(), wide.begin() + 7),
            (std::u16string{u'a', 0x7FFF, 0, u'b', 0, 0, 0}));
  EXPECT_EQ(wide[PATH_BUFFER_UNITS - 1], 0);  // cleared
  EXPECT_EQ(wide[PATH_BUFFER_UNITS], 0xAAAA);  // beyond the path buffer: untouched
}

TEST(MultiByteToWide, StopsAtTheZeroAndNeedsRoomForIt) {
  std::vector<char16_t> wide(4, 0xAAAA);
  int32_t length = -1;
  bool failed = true;
  MULTIBYTETOWIDE(std::string_view("abc\0def", 7), wide, length, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(length, 4);
  MULTIBYTETOWIDE("abcd", wide, length, failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(wide, (std::vector<char16_t>(4, 0)));
}

TEST(WideToMultiByte, WritesOnlyWhenTheZeroFits) {
  const std::u16string wide{u'a', 0xE9, 0};  // 3 bytes and a zero
  std::vector<char> bytes(6, 'x');
  WIDETOMULTIBYTE(4, wide, bytes);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), std::string("a\xC3\xA9\0xx", 6));
  WIDETOMULTIBYTE(3, wide, bytes);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), std::string("\0\0\0\0xx", 6));
}

}  // namespace
}  // namespace tmrdar
