#include "core/paths/system_services.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

#include "core/chars/blank_padded.h"
#include "core/paths/char_fields.h"
#include "support/scratch_dir.h"
#include "support/temporary_directory.h"

namespace tmrdar {
namespace {

using testing::TEMPORARY_DIRECTORY_SET;

TEST(TemporaryFile, IsMadeInTheTemporaryDirectory) {
  testing::SCRATCH_DIR scratch;
  TEMPORARY_DIRECTORY_SET tmpdir(scratch.PATH().string());
  chars::BLANK_PADDED<TEMPORARY_NAME_WIDTH> first;
  chars::BLANK_PADDED<TEMPORARY_NAME_WIDTH> second;
  bool failed = true;
  GET_TEMPORARY_FILE(first.SPAN(), failed);
  ASSERT_FALSE(failed);
  GET_TEMPORARY_FILE(second.SPAN(), failed);
  ASSERT_FALSE(failed);
  const std::filesystem::path name(first.TRIMMED());
  EXPECT_EQ(name.parent_path(), scratch.PATH());
  EXPECT_EQ(name.filename().string().substr(0, 3), "td3");
  EXPECT_TRUE(std::filesystem::is_regular_file(name));
  EXPECT_NE(first, second);
}

TEST(TemporaryFile, FailsWithoutLeavingAFile) {
  testing::SCRATCH_DIR scratch;
  // A directory whose files' names exceed 260 characters.
  std::filesystem::path deep = scratch.PATH();
  for (int i = 0; i < 3; ++i) deep /= std::string(90, 'd');
  std::filesystem::create_directories(deep);
  chars::BLANK_PADDED<TEMPORARY_NAME_WIDTH> name("old");
  bool failed = false;
  {
    TEMPORARY_DIRECTORY_SET tmpdir(deep.string());
    GET_TEMPORARY_FILE(name.SPAN(), failed);
  }
  EXPECT_TRUE(failed);
  EXPECT_TRUE(chars::IS_BLANK(name.VIEW()));
  EXPECT_TRUE(std::filesystem::is_empty(deep));

  TEMPORARY_DIRECTORY_SET tmpdir(scratch.FILE("missing"));
  GET_TEMPORARY_FILE(name.SPAN(), failed);
  EXPECT_TRUE(failed);
}

TEST(RemoveTrailingChar, StripsBlanksThenTheCharacter) {
  chars::BLANK_PADDED<8> out("xxxxxxxx");
  REMOVE_TRAILING_CHAR("abc//  ", '/', out.SPAN());
  EXPECT_EQ(out.VIEW(), "abc     ");
  REMOVE_TRAILING_CHAR("////", '/', out.SPAN());
  EXPECT_TRUE(chars::IS_BLANK(out.VIEW()));
  std::array<char, 3> narrow{};
  REMOVE_TRAILING_CHAR("abcdef.", '.', narrow);
  EXPECT_EQ(std::string_view(narrow.data(), 3), "abc");
}

TEST(SCharToChar, OnlyPositiveBytesAreCopied) {
  const std::array<signed char, 5> bytes{65, 0, -1, 66, 67};
  std::array<char, 5> out{};
  SCHARTOCHAR(4, bytes, out);
  EXPECT_EQ(std::string_view(out.data(), 5), "A  B ");
  SCHARTOCHAR(99, std::span(bytes).first(2), out);  // bounded by the bytes given
  EXPECT_EQ(std::string_view(out.data(), 5), "A    ");}

}  // namespace
}  // namespace tmrdar
