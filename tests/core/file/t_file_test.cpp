#include "core/file/t_file.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/scratch_dir.h"

namespace tmrdar::MOD_FILE {
namespace {

using testing::SCRATCH_DIR;

std::string WORDS(std::initializer_list<int32_t> words) {
  std::string bytes;
  for (const int32_t w : words) bytes.append(reinterpret_cast<const char*>(&w), 4);
  return bytes;
}

TEST(RecordFile, ReadsWritesAddressesAndFailures) {
  EXPECT_EQ(RECN4(2), 33);
  EXPECT_EQ(RECN8(100'000'000), 3'199'999'969LL);
  SCRATCH_DIR dir;
  const std::string path = dir.WRITE("f", WORDS({7, 8, 9}));
  T_FILE file;
  ASSERT_TRUE(file.OPEN(path, MODE_READ));
  EXPECT_FALSE(file.OPEN(path, MODE_WRITE));  // a second open fails
  int32_t a = 0;
  int32_t b = 0;
  int32_t status = 0;
  file.READ_1_INT_AT(a, 5, &status);
  file.READ_1_INT(b, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(a * 10 + b, 89);
  // Row 2 of a 2 x 4 table stored by columns; the file holds three words.
  std::array<int32_t, 8> table{0, -1, 0, -1, 0, -1, 0, -1};
  file.READ_INT_AT(STRIDED<int32_t>{table.data() + 1, 4, 2}, 1, &status);
  EXPECT_EQ(table, (std::array<int32_t, 8>{0, 7, 0, 8, 0, 9, 0, -1}));
  // A failed move fails the chain, and the reads behind it do nothing.
  std::array<int32_t, 2> pair{-1, -1};
  status = 0;
  file.READ_INT_AT(pair, -31, &status);
  EXPECT_EQ(status, 1);
  file.READ_INT_AT(pair, 1, &status);
  EXPECT_EQ(pair, (std::array<int32_t, 2>{-1, -1}));
  file.CLOSE();
  status = 0;
  file.READ_1_INT_AT(a, 1, &status);
  EXPECT_NE(status, 0);
  file.REMOVE();
  EXPECT_FALSE(std::filesystem::exists(path));

  const std::string written = dir.WRITE("w", std::string(100, 'x'));
  ASSERT_TRUE(file.OPEN(written, MODE_WRITE));
  status = 0;
  file.WRITE_1_INT(5, &status);
  file.WRITE_CHAR("ab", &status);
  file.ENDL(&status);
  file.WRITE_1_REAL_AT(1.5F, 2, &status);
  EXPECT_EQ(status, 0);
  file.CLOSE();
  std::ifstream in(written, std::ios::binary);
  const float real = 1.5F;
  EXPECT_EQ(std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>()),
            '\5' + std::string(reinterpret_cast<const char*>(&real), 4) + "b\r");
}

TEST(RecordFile, AddressesBeyondFourGigabytesWork) {
  SCRATCH_DIR dir;
  const std::string path = dir.FILE("sparse");
  const int64_t address = RECN8(150'000'000);
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
  T_FILE file;
  ASSERT_TRUE(file.OPEN(path, MODE_READ));
  int32_t item = 0;
  int32_t status = 0;
  file.READ_1_INT_AT(item, address, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(item, 1234567);
}

}  // namespace
}  // namespace tmrdar::MOD_FILE
