#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "core/file/t_file.h"
#include "core/strings/t_string.h"
#include "support/scratch_dir.h"

namespace tmrdar::MOD_STRING {
namespace {

using MOD_FILE::T_FILE;

std::string CONTENT(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(StringRecords, LastRecordIsShortAndBlankPadded) {
  const T_STRING s(std::string(64, 'a') + "b");
  EXPECT_EQ(s.NUM_RECORDS(), 3);
  EXPECT_EQ(s.NUM_RECORDS(65), 1);

  char record[32];
  s.GET_RECORD(3, record);
  EXPECT_EQ(std::string(record, 32), "b" + std::string(31, ' '));
  s.GET_RECORD(2, record);
  EXPECT_EQ(std::string(record, 32), std::string(32, 'a'));
  s.GET_RECORD(4, record);
  EXPECT_EQ(std::string(record, 32), std::string(32, ' '));
  char small[4];
  T_STRING("0123456789").GET_RECORD(2, small, 5);
  EXPECT_EQ(std::string(small, 4), "5678");
}

TEST(StringFiles, WriteUsedBytesAndReadBackWithExactCapacity) {
  const testing::SCRATCH_DIR dir;
  const std::string path = dir.FILE("data.bin");
  T_STRING s;
  s.CREATE_STRING(100);
  s.APPEND_CHARS(std::string_view("a\0b\r\n ", 6));
  T_FILE unit;
  int32_t open_status = 9;
  int32_t write_status = 9;
  s.TO_FILE(unit, path, &open_status, &write_status);
  EXPECT_EQ(open_status, 0);
  EXPECT_EQ(write_status, 0);
  EXPECT_FALSE(unit.IS_OPEN());
  EXPECT_EQ(CONTENT(path), std::string_view("a\0b\r\n ", 6));

  T_STRING back("old");
  int32_t read_status = 9;
  back.FROM_FILE(path, unit, &open_status, &read_status);
  EXPECT_EQ(open_status, 0);
  EXPECT_EQ(read_status, 0);
  EXPECT_FALSE(unit.IS_OPEN());
  EXPECT_EQ(back.CAPACITY_STRING(), 6);
  EXPECT_TRUE(back == s);

  T_STRING empty_file;
  empty_file.FROM_FILE(dir.WRITE("empty", ""), unit, &open_status, &read_status);
  EXPECT_EQ(read_status, 0);
  EXPECT_TRUE(empty_file.CREATED_STRING());
  EXPECT_EQ(empty_file.CAPACITY_STRING(), 0);
}

TEST(StringFiles, FailuresAndUnitsWithoutPath) {
  const testing::SCRATCH_DIR dir;
  T_FILE unit;
  T_STRING s("keep");
  int32_t open_status = 0;
  int32_t io_status = 5;
  s.FROM_FILE(dir.FILE("missing"), unit, &open_status, &io_status);
  EXPECT_NE(open_status, 0);
  EXPECT_EQ(io_status, 5);
  EXPECT_EQ(s.VIEW(), "keep");
  s.TO_FILE(unit, dir.FILE("no/such/dir"), &open_status);
  EXPECT_NE(open_status, 0);

  s.TO_FILE(unit, &open_status, &io_status);  // not open: nothing is written
  EXPECT_EQ(open_status, 0);
  EXPECT_EQ(io_status, 5);
  const std::string path = dir.FILE("stream.bin");
  ASSERT_TRUE(unit.OPEN(path, MOD_FILE::MODE_WRITE));
  T_STRING("ab").TO_FILE(unit, &open_status, &io_status);
  EXPECT_EQ(io_status, 0);
  EXPECT_TRUE(unit.IS_OPEN());
  T_STRING("cd").TO_FILE(unit);
  unit.CLOSE();
  EXPECT_EQ(CONTENT(path), "abcd");
}

TEST(StringConsole, WritesTheUsedBytes) {
  ::testing::internal::CaptureStdout();
  T_STRING s;
  s.CREATE_STRING(20);
  s.APPEND_CHARS("hello");
  s.TO_CONSOLE();
  s.TO_CONSOLE(false);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "hello\nhello");
}

}  // namespace
}  // namespace tmrdar::MOD_STRING
