#include "core/file/record_file.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/file/mapped_file.h"
#include "support/scratch_dir.h"

namespace tmrdar::record_files {
namespace {

using testing::ScratchDir;

std::string words(std::initializer_list<int32_t> words) {
  std::string bytes;
  for (const int32_t w : words) bytes.append(reinterpret_cast<const char*>(&w), 4);
  return bytes;
}

TEST(RecordFile, ReadsWritesAddressesAndFailures) {
  EXPECT_EQ(recn4(2), 33);
  EXPECT_EQ(recn8(100'000'000), 3'199'999'969LL);
  ScratchDir dir;
  const std::string path = dir.write("f", words({7, 8, 9}));
  RecordFile file;
  ASSERT_TRUE(file.open(path, mode_read));
  EXPECT_FALSE(file.open(path, mode_write));  // a second open fails
  int32_t a = 0;
  int32_t b = 0;
  int32_t status = 0;
  file.read_1_int_at(a, 5, &status);
  file.read_1_int(b, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(a * 10 + b, 89);
  // Row 2 of a 2 x 4 table stored by columns; the file holds three words.
  std::array<int32_t, 8> table{0, -1, 0, -1, 0, -1, 0, -1};
  file.read_int_at(Strided<int32_t>{table.data() + 1, 4, 2}, 1, &status);
  EXPECT_EQ(table, (std::array<int32_t, 8>{0, 7, 0, 8, 0, 9, 0, -1}));
  // A failed move fails the chain, and the reads behind it do nothing.
  std::array<int32_t, 2> pair{-1, -1};
  status = 0;
  file.read_int_at(pair, -31, &status);
  EXPECT_EQ(status, 1);
  file.read_int_at(pair, 1, &status);
  EXPECT_EQ(pair, (std::array<int32_t, 2>{-1, -1}));
  file.close();
  status = 0;
  file.read_1_int_at(a, 1, &status);
  EXPECT_NE(status, 0);
  file.remove();
  EXPECT_FALSE(std::filesystem::exists(path));

  const std::string written = dir.write("w", std::string(100, 'x'));
  ASSERT_TRUE(file.open(written, mode_write));
  status = 0;
  file.write_1_int(5, &status);
  file.write_char("ab", &status);
  file.endl(&status);
  file.write_1_real_at(1.5F, 2, &status);
  EXPECT_EQ(status, 0);
  file.close();
  std::ifstream in(written, std::ios::binary);
  const float real = 1.5F;
  EXPECT_EQ(std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>()),
            '\5' + std::string(reinterpret_cast<const char*>(&real), 4) + "b\r");
}

TEST(RecordFile, AddressesBeyondFourGigabytesWork) {
  ScratchDir dir;
  const std::string path = dir.file("sparse");
  const int64_t address = recn8(150'000'000);
  { std::ofstream out(path, std::ios::binary); }
  std::error_code error;
  std::filesystem::resize_file(path, static_cast<std::uintmax_t>(address + 31), error);
  if (error) GTEST_SKIP() << "no sparse files here: " << error.message();
  {
    std::fstream out(path, std::ios::binary | std::ios::in | std::ios::out);
    out.seekp(address - 1);
    const int32_t value = 1234567;
    out.write(reinterpret_cast<const char*>(&value), 4);
  }
  RecordFile file;
  ASSERT_TRUE(file.open(path, mode_read));
  int32_t item = 0;
  int32_t status = 0;
  file.read_1_int_at(item, address, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(item, 1234567);
}

// A file of 300,000 words, word w holding w, so that reads cross the chunks
// of the reads by descriptor (256 KiB) at every kind of place.
std::string counting_words(const ScratchDir& dir, int32_t count) {
  std::vector<int32_t> words(static_cast<std::size_t>(count));
  for (int32_t w = 1; w <= count; ++w) words[static_cast<std::size_t>(w - 1)] = w;
  return dir.write("counting", std::string_view(reinterpret_cast<const char*>(words.data()), words.size() * 4));
}

TEST(RecordFileReads, CopiesMatchTheFileAcrossChunksAndStopAtItsEnd) {
  constexpr int32_t count = 300'000;
  ScratchDir dir;
  RecordFile file;
  ASSERT_TRUE(file.open(counting_words(dir, count), mode_read));
  struct Row {
    int32_t first_word;  // of the read, from 1
    int32_t words;
    int32_t held;  // words the file holds of them
  };
  const Row rows[] = {
      {1, 8, 8},
      {65'530, 12, 12},          // across the end of the first chunk
      {65'537, 1, 1},            // the first word of the second chunk
      {200'000, 3, 3},           // forwards past a chunk, then
      {10, 5, 5},                // backwards into the first one
      {100'000, 70'000, 70'000}, // longer than half a chunk: read directly
      {count - 2, 8, 3},         // cut by the end: the rest stays stale
      {count + 1, 4, 0},         // wholly past the end
  };
  for (const Row& row : rows) {
    std::vector<int32_t> items(static_cast<std::size_t>(row.words), -9);
    int32_t status = 0;
    file.read_int_at(items, recn8(1) + 4 * int64_t{row.first_word - 1}, &status);
    EXPECT_EQ(status, 0) << row.first_word;
    for (int32_t i = 0; i < row.words; ++i) {
      const int32_t expected = i < row.held ? row.first_word + i : -9;
      ASSERT_EQ(items[static_cast<std::size_t>(i)], expected) << "read from word " << row.first_word << ", item " << i;
    }
  }
  // A plain read continues behind the last word the file held.
  int32_t next = -9;
  int32_t status = 0;
  file.read_1_int_at(next, 4 * int64_t{count - 1} + 1, &status);
  file.read_1_int(next, &status);
  EXPECT_EQ(next, count);  // nothing left: the word keeps what the first read gave
  EXPECT_EQ(status, 0);
}

TEST(RecordFileReads, AFileCutOrGrownIsSeenAtItsNewSizeAfterARefresh) {
  ScratchDir dir;
  const std::string path = dir.write("f", words({1, 2, 3, 4, 5, 6, 7, 8}));
  RecordFile file;
  ASSERT_TRUE(file.open(path, mode_read));
  std::error_code error;
  std::filesystem::resize_file(path, 12, error);
  ASSERT_FALSE(error);
  refresh_open_files();
  EXPECT_EQ(file.size(), 12);
  std::array<int32_t, 4> items{};
  items.fill(-1);
  int32_t status = 0;
  file.read_int_at(items, 5, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(items, (std::array<int32_t, 4>{2, 3, -1, -1}));

  {
    std::ofstream out(path, std::ios::binary | std::ios::app);
    out << words({40, 50});
  }
  refresh_open_files();
  EXPECT_EQ(file.size(), 20);
  file.read_int_at(items, 5, &status);
  EXPECT_EQ(items, (std::array<int32_t, 4>{2, 3, 40, 50}));
  EXPECT_EQ(status, 0);
}

TEST(RecordFileReads, AFileThatIsNoRegularFileIsReadByDescriptor) {
  // A character device cannot be mapped, holds no size, and ends where its
  // reads end.
  RecordFile file;
  if (!file.open("/dev/zero", mode_read)) GTEST_SKIP() << "no /dev/zero here";
  EXPECT_EQ(file.size(), 0);
  EXPECT_EQ(file.source()->data(), nullptr);
  std::array<int32_t, 8> items{};
  items.fill(-1);
  int32_t status = 0;
  file.read_int_at(items, recn8(1'000), &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(items, (std::array<int32_t, 8>{}));
}

TEST(RecordFileReads, TheEnvironmentChoosesBetweenMappingAndDescriptor) {
  ScratchDir dir;
  RecordFile file;
  ASSERT_TRUE(file.open(dir.write("f", words({1, 2, 3})), mode_read));
  const char* choice = std::getenv("TMRDAR_NO_MMAP");
  const bool unmapped = choice != nullptr && std::string_view(choice) == "1";
  EXPECT_EQ(file.source()->data() == nullptr, unmapped);

  // Bytes straight out of the mapping only when it holds them all; the
  // position then stands behind them, as after a read.
  EXPECT_EQ(file.mapped_at(9, 8), nullptr) << "past the end";
  EXPECT_EQ(file.mapped_at(0, 4), nullptr) << "before the start";
  const std::byte* bytes = file.mapped_at(5, 4);
  ASSERT_EQ(bytes == nullptr, unmapped);
  if (unmapped) return;
  int32_t word = 0;
  std::memcpy(&word, bytes, 4);
  EXPECT_EQ(word, 2);
  int32_t next = 0;
  int32_t status = 0;
  file.read_1_int(next, &status);
  EXPECT_EQ(next, 3);
}

}  // namespace
}  // namespace tmrdar::record_files
