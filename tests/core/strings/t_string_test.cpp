#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/file/t_file.h"
#include "core/strings/data_block.h"
#include "core/strings/t_string.h"
#include "support/scratch_dir.h"

namespace tmrdar::MOD_STRING {
namespace {

TEST(TString, EditingSearchAccessAndCompare) {
  T_STRING s;
  s.CREATE_STRING();
  s.APPEND_CHARS("123456789");
  EXPECT_EQ(s.CAPACITY_STRING(), 16);
  s.APPEND_CHARS(std::string(20, 'x'));
  EXPECT_EQ(s.CAPACITY_STRING(), 32);
  s.RESIZE(2);
  EXPECT_EQ(s.VIEW(), "12");
  s.RESIZE(0);
  EXPECT_FALSE(s.CREATED_STRING());
  s.FROM_CHARS("ab", 4);
  EXPECT_EQ(s.VIEW(), "ab  ");

  T_STRING t("abcdef");
  t.INSERT_STRING("XY", 2);
  t.INSERT_STRING("Q", 10);  // beyond the end: ignored
  t.REMOVE_STRING(5, 99);
  EXPECT_EQ(t.VIEW(), "aXYb");
  t.APPEND_STRING(t);  // grows while reading itself
  EXPECT_EQ(t.VIEW(), "aXYbaXYb");
  T_STRING d("abracadabra");
  d.REMOVE_DUPLICATES();
  d.TO_LOWER();
  d.APPEND_INT(-42);
  EXPECT_EQ(d.VIEW(), "abrcd-42");

  const T_STRING dots("a.b.c");
  EXPECT_EQ(dots.INDEX_OF('.', 3), 4);
  EXPECT_EQ(dots.INDEX_OF('x'), -1);
  std::vector<int32_t> where;
  dots.INDICES_OF('.').TO_LIST_DATA_ARRAY(where);
  EXPECT_EQ(where, (std::vector<int32_t>{2, 4}));
  EXPECT_TRUE(T_STRING(" \t ").IS_BLANK());
  EXPECT_FALSE(T_STRING(" \n").IS_BLANK());
  EXPECT_EQ(dots.AT_STRING2(-3, 100), "a.b.c");

  EXPECT_FALSE(STRING_EQ_CHARS(T_STRING("ab"), "ab "));
  EXPECT_TRUE(STRING_CIC_STRING(T_STRING("AbC"), T_STRING("aBc")));
  T_STRING source;
  source.CREATE_STRING(50);
  source.APPEND_CHARS("xyz");
  T_STRING copy(source);
  EXPECT_EQ(copy.CAPACITY_STRING(), 3);
  EXPECT_EQ((copy + T_STRING("cd") + "e").VIEW(), "xyzcde");
  char field[5];
  ASSIGN_CHARS_STRING(field, T_STRING("abc"));
  EXPECT_EQ(std::string(field, 5), "abc  ");

  MOD_DATA_BLOCK::T_DATA_BLOCK block;
  block.SET_TYPE(3);
  block.SET_KEY(-17);
  block = "seabed";
  const MOD_DATA_BLOCK::T_DATA_BLOCK block_copy(block);
  EXPECT_EQ(block_copy.GET_TYPE(), 3);
  EXPECT_EQ(block_copy.GET_KEY(), -17);
  EXPECT_EQ(block_copy.VIEW(), "seabed");
}

TEST(TStringConversions, Base64AndFreeFormNumbers) {
  for (const auto& [bytes, text] : {std::pair<std::string_view, std::string_view>{"M", "TQ=="}, {"Ma", "TWE="},
                                    {"Man", "TWFu"}}) {
    T_STRING s(bytes);
    s.TO_BASE64();
    EXPECT_EQ(s.VIEW(), text);
    s.FROM_BASE64();
    EXPECT_EQ(s.VIEW(), bytes);
  }
  T_STRING skipped("T\r\nW-F!u\t");  // characters outside the alphabet are skipped
  skipped.FROM_BASE64();
  EXPECT_EQ(skipped.VIEW(), "Man");

  struct CASE {
    const char* text;
    bool int_ok;
    int32_t int_value;
    bool real_ok;
    float real_value;
  };
  for (const CASE& c : {CASE{" 42 ", true, 42, true, 42.0F}, CASE{"2*", true, 0, true, 0.0F},
                        CASE{"1.5", false, 0, true, 1.5F}, CASE{"1e39", false, 0, false, 0.0F}}) {
    bool ok = !c.int_ok;
    EXPECT_EQ(T_STRING(c.text).TO_INT(ok), c.int_value) << c.text;
    EXPECT_EQ(ok, c.int_ok) << c.text;
    ok = !c.real_ok;
    EXPECT_EQ(T_STRING(c.text).TO_REAL(ok), c.real_value) << c.text;
    EXPECT_EQ(ok, c.real_ok) << c.text;
  }
}

TEST(TStringIo, RecordsFilesAndConsole) {
  const T_STRING s(std::string(64, 'a') + "b");
  EXPECT_EQ(s.NUM_RECORDS(), 3);
  char record[32];
  s.GET_RECORD(3, record);
  EXPECT_EQ(std::string(record, 32), "b" + std::string(31, ' '));

  const testing::SCRATCH_DIR dir;
  const std::string path = dir.FILE("data.bin");
  MOD_FILE::T_FILE unit;
  int32_t open_status = 9;
  int32_t io_status = 9;
  T_STRING(std::string_view("a\0b\r\n", 5)).TO_FILE(unit, path, &open_status, &io_status);
  EXPECT_EQ(open_status + io_status, 0);
  T_STRING back("old");
  back.FROM_FILE(path, unit, &open_status, &io_status);
  EXPECT_EQ(open_status + io_status, 0);
  EXPECT_FALSE(unit.IS_OPEN());
  EXPECT_EQ(back.VIEW(), std::string_view("a\0b\r\n", 5));

  io_status = 5;
  back.FROM_FILE(dir.FILE("missing"), unit, &open_status, &io_status);
  EXPECT_NE(open_status, 0);
  EXPECT_EQ(io_status, 5);
  EXPECT_EQ(back.VIEW(), std::string_view("a\0b\r\n", 5));
  back.TO_FILE(unit, dir.FILE("no/such/dir"), &open_status);
  EXPECT_NE(open_status, 0);

  ::testing::internal::CaptureStdout();
  T_STRING("hello").TO_CONSOLE();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "hello\n");
}

}  // namespace
}  // namespace tmrdar::MOD_STRING
