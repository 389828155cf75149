#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "core/chars/blank_padded.h"
#include "core/paths/char_fields.h"
#include "core/paths/full_paths.h"
#include "core/paths/system_services.h"
#include "core/paths/wide_strings.h"
#include "core/platform/platform.h"
#include "support/scratch_dir.h"
#include "support/temporary_directory.h"

namespace tmrdar {
namespace {

TEST(WideStrings, ConversionsAndTheirFailures) {
  const std::string utf8 = "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80";
  EXPECT_EQ(utf8_to_utf16(utf8), (std::u16string{u'a', 0xE9, 0x4E2D, 0xD83D, 0xDE00}));
  EXPECT_EQ(utf16_to_utf8(utf8_to_utf16(utf8)), utf8);
  EXPECT_EQ(utf8_to_utf16("\xC0\xAF"), (std::u16string{0xFFFD, 0xFFFD}));
  EXPECT_EQ(utf16_to_utf8(std::u16string{0xDC00, u'z'}), "\xEF\xBF\xBDz");

  std::vector<char16_t> wide(path_buffer_units + 1, 0xAAAA);
  int32_t length = -1;
  bool failed = true;
  multibytetowide("a\xE7\xBF\xBF\xE8\x80\x80" "b", wide, length, failed);  // U+8000 goes
  EXPECT_FALSE(failed);
  EXPECT_EQ(length, 5);
  EXPECT_EQ(std::u16string(wide.begin(), wide.begin() + 5), (std::u16string{u'a', 0x7FFF, 0, u'b', 0}));
  EXPECT_EQ(wide[path_buffer_units], 0xAAAA);
  std::vector<char16_t> small(4, 0xAAAA);
  multibytetowide("abcd", small, length, failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(small, (std::vector<char16_t>(4, 0)));

  std::vector<char> bytes(6, 'x');
  widetomultibyte(4, std::u16string{u'a', 0xE9, 0}, bytes);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), std::string("a\xC3\xA9\0xx", 6));
  widetomultibyte(3, std::u16string{u'a', 0xE9, 0}, bytes);
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), std::string("\0\0\0\0xx", 6));
}

std::u16string text(const std::vector<char16_t>& buffer) {
  return std::u16string(up_to_zero(std::u16string_view(buffer.data(), buffer.size())));
}

TEST(FullPaths, FoldJoinConvertAndChangeDirectory) {
  const std::string here = platform::current_directory().value();
  struct test_case {
    std::u16string path;
    int32_t capacity;
    bool failed;
    std::u16string full;
  };
  for (const test_case& c : {test_case{u"/a/./b/../c", 5, false, u"/a/c"}, test_case{u"/a/./b/../c", 4, true, u""},
                        test_case{u"", 16, true, u""}, test_case{u"/r/a\u8000b", 16, false, u"/r/a\u8000b"},
                        test_case{u"x/../f.dbm", 300, false, utf8_to_utf16(here + "/f.dbm")}}) {
    std::vector<char16_t> full(300, 0xAAAA);
    int32_t length = -1;
    bool failed = !c.failed;
    getfulllongunicodepathww(c.path, full, c.capacity, length, failed);
    EXPECT_EQ(failed, c.failed) << c.capacity;
    EXPECT_EQ(text(full), c.full) << c.capacity;
    EXPECT_EQ(static_cast<std::size_t>(length), c.full.size()) << c.capacity;
  }
  std::vector<char16_t> full(64);
  int32_t length = 0;
  bool failed = true;
  getfulllongunicodepathaw("/r/a\xE8\x80\x80" "b/c", full, 64, length, failed);  // bytes lose units from 0x8000
  EXPECT_EQ(text(full), u"/r/a");
  std::vector<char> utf8(8, 'x');
  tmrfullpathaa("/\xC3\xA9", utf8, 4, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::string(utf8.data()), "/\xC3\xA9");
  tmrfullpathaa("/\xC3\xA9", utf8, 3, failed);
  EXPECT_TRUE(failed);

  std::vector<char16_t> directory(here.size() + 1);
  tmrgetcurrentdirw(directory, length, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(text(directory), utf8_to_utf16(here));
  directory.pop_back();
  tmrgetcurrentdirw(directory, length, failed);
  EXPECT_TRUE(failed);

  testing::ScratchDir scratch;
  std::filesystem::create_directory(scratch.path() / "sub");
  tmrchangedira(scratch.path().string() + "/sub/../sub    ", failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::filesystem::canonical(platform::current_directory().value()),
            std::filesystem::canonical(scratch.path() / "sub"));
  tmrchangedirw(u"missing", failed);
  EXPECT_TRUE(failed);
  tmrchangedirw(utf8_to_utf16(here), failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(platform::current_directory().value(), here);
}

using testing::TemporaryDirectorySet;

TEST(SystemServices, TemporaryFilesAndCharFields) {
  testing::ScratchDir scratch;
  chars::BlankPadded<temporary_name_width> name;
  bool failed = true;
  {
    TemporaryDirectorySet tmpdir(scratch.path().string());
    get_temporary_file(name.span(), failed);
  }
  ASSERT_FALSE(failed);
  const std::filesystem::path made(name.trimmed());
  EXPECT_EQ(made.parent_path(), scratch.path());
  EXPECT_EQ(made.filename().string().substr(0, 3), "td3");
  EXPECT_TRUE(std::filesystem::is_regular_file(made));

  std::filesystem::path deep = scratch.path();  // its files' names exceed 260 characters
  for (int i = 0; i < 3; ++i) deep /= std::string(90, 'd');
  std::filesystem::create_directories(deep);
  for (const std::string& directory : {deep.string(), scratch.file("missing")}) {
    TemporaryDirectorySet tmpdir(directory);
    failed = false;
    get_temporary_file(name.span(), failed);
    EXPECT_TRUE(failed) << directory;
    EXPECT_TRUE(chars::is_blank(name.view())) << directory;
  }
  EXPECT_TRUE(std::filesystem::is_empty(deep));

  chars::BlankPadded<8> out("xxxxxxxx");
  remove_trailing_char("abc//  ", '/', out.span());
  EXPECT_EQ(out.view(), "abc     ");
  const std::array<signed char, 5> bytes{65, 0, -1, 66, 67};
  std::array<char, 5> chars{};
  schartochar(4, bytes, chars);
  EXPECT_EQ(std::string_view(chars.data(), 5), "A  B ");
}

}  // namespace
}  // namespace tmrdar
