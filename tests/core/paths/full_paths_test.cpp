#include "core/paths/full_paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/paths/wide_strings.h"
#include "core/platform/platform.h"
#include "support/scratch_dir.h"

namespace tmrdar {
namespace {

// The text of a wide buffer up to its zero.
std::u16string TEXT(const std::vector<char16_t>& buffer) {
  return std::u16string(UP_TO_ZERO(std::u16string_view(buffer.data(), buffer.size())));
}

// Puts the current directory back when a test ends.
class KEEP_CURRENT_DIRECTORY {
 public:
  KEEP_CURRENT_DIRECTORY() : saved_(platform::CURRENT_DIRECTORY().value()) {}
  ~KEEP_CURRENT_DIRECTORY() { EXPECT_TRUE(platform::CHANGE_DIRECTORY(saved_)); }
  KEEP_CURRENT_DIRECTORY(const KEEP_CURRENT_DIRECTORY&) = delete;
  KEEP_CURRENT_DIRECTORY& operator=(const KEEP_CURRENT_DIRECTORY&) = delete;

 private:
  std::string saved_;
};

TEST(FullLongPath, FoldsAndNeedsRoomForTheZero) {
  std::vector<char16_t> full(16, 0xAAAA);
  int32_t length = -1;
  bool failed = true;
  const std::u16string path = u"/a/./b/../c";  // folds to /a/c, 4 units
  GETFULLLONGUNICODEPATHWW(path, full, 5, length, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(length, 4);
  EXPECT_EQ(TEXT(full), u"/a/c");
  EXPECT_EQ(full[4], 0);

  GETFULLLONGUNICODEPATHWW(path, full, 4, length, failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(full[0], 0);  // cleared

  // A capacity beyond the buffer is bounded by it.
  std::vector<char16_t> small(4);
  GETFULLLONGUNICODEPATHWW(path, small, 100, length, failed);
  EXPECT_TRUE(failed);

  GETFULLLONGUNICODEPATHWW(u"", full, 16, length, failed);
  EXPECT_TRUE(failed);

  // Relative paths join the current directory; the file need not exist.
  std::vector<char16_t> large(PATH_BUFFER_UNITS);
  TMRFULLPATHAW("x/../no-such-file.dbm", large, length, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(TEXT(large), UTF8_TO_UTF16(platform::CURRENT_DIRECTORY().value() + "/no-such-file.dbm"));
}

TEST(FullLongPath, ByteInputsLoseUnitsFrom0x8000AndWideInputsDoNot) {
  std::vector<char16_t> full(64);
  int32_t length = 0;
  bool failed = true;
  GETFULLLONGUNICODEPATHAW("/r/a\xE8\x80\x80" "b/c", full, 64, length, failed);  // U+8000
  EXPECT_FALSE(failed);
  EXPECT_EQ(TEXT(full), u"/r/a");
  GETFULLLONGUNICODEPATHWW(u"/r/a\u8000b/c", full, 64, length, failed);
  EXPECT_EQ(TEXT(full), u"/r/a\u8000b/c");
  GETFULLLONGUNICODEPATHAW("/r/\xE4\xB8\xAD", full, 64, length, failed);  // U+4E2D stays
  EXPECT_EQ(TEXT(full), u"/r/\u4E2D");
}

TEST(FullLongPath, Utf8OutputNeedsItsBytes) {
  // "/é" is 2 wide units and 3 bytes: 4 bytes with the zero.
  std::vector<char> full(8, 'x');
  bool failed = true;
  TMRFULLPATHAA("/\xC3\xA9", full, 4, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::string(full.data()), "/\xC3\xA9");
  TMRFULLPATHAA("/\xC3\xA9", full, 3, failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(std::string(full.begin(), full.end()), std::string(8, '\0'));
}

TEST(ChangeDirectory, ByteAndWideForms) {
  KEEP_CURRENT_DIRECTORY keep;
  testing::SCRATCH_DIR scratch;
  std::filesystem::create_directory(scratch.PATH() / "sub");
  const std::filesystem::path target = std::filesystem::canonical(scratch.PATH() / "sub");

  bool failed = true;
  TMRCHANGEDIRA(scratch.PATH().string() + "/sub/../sub    ", failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::filesystem::canonical(platform::CURRENT_DIRECTORY().value()), target);

  TMRCHANGEDIRW(u"..", failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::filesystem::canonical(platform::CURRENT_DIRECTORY().value()), target.parent_path());

  TMRCHANGEDIRA("    ", failed);
  EXPECT_TRUE(failed);
  TMRCHANGEDIRW(u"missing", failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(std::filesystem::canonical(platform::CURRENT_DIRECTORY().value()), target.parent_path());
}

TEST(CurrentDirectory, WideWithRoomForTheZero) {
  const std::u16string expected = UTF8_TO_UTF16(platform::CURRENT_DIRECTORY().value());
  std::vector<char16_t> directory(expected.size() + 1, 0xAAAA);
  int32_t length = 0;
  bool failed = true;
  TMRGETCURRENTDIRW(directory, length, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(TEXT(directory), expected);
  EXPECT_EQ(static_cast<std::size_t>(length), expected.size());

  directory.pop_back();
  TMRGETCURRENTDIRW(directory, length, failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(length, 0);
}

}  // namespace
}  // namespace tmrdar
