#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/file/record_file.h"
#include "core/strings/data_block.h"
#include "core/strings/string.h"
#include "support/scratch_dir.h"

namespace tmrdar::strings {
namespace {

TEST(TString, EditingSearchAccessAndCompare) {
  String s;
  s.create_string();
  s.append_chars("123456789");
  EXPECT_EQ(s.capacity_string(), 16);
  s.append_chars(std::string(20, 'x'));
  EXPECT_EQ(s.capacity_string(), 32);
  s.resize(2);
  EXPECT_EQ(s.view(), "12");
  s.resize(0);
  EXPECT_FALSE(s.created_string());
  s.from_chars("ab", 4);
  EXPECT_EQ(s.view(), "ab  ");

  String t("abcdef");
  t.insert_string("XY", 2);
  t.insert_string("Q", 10);  // beyond the end: ignored
  t.remove_string(5, 99);
  EXPECT_EQ(t.view(), "aXYb");
  t.append_string(t);  // grows while reading itself
  EXPECT_EQ(t.view(), "aXYbaXYb");
  String d("abracadabra");
  d.remove_duplicates();
  d.to_lower();
  d.append_int(-42);
  EXPECT_EQ(d.view(), "abrcd-42");

  const String dots("a.b.c");
  EXPECT_EQ(dots.index_of('.', 3), 4);
  EXPECT_EQ(dots.index_of('x'), -1);
  std::vector<int32_t> where;
  dots.indices_of('.').to_list_data_array(where);
  EXPECT_EQ(where, (std::vector<int32_t>{2, 4}));
  EXPECT_TRUE(String(" \t ").is_blank());
  EXPECT_FALSE(String(" \n").is_blank());
  EXPECT_EQ(dots.at_string2(-3, 100), "a.b.c");

  EXPECT_FALSE(string_eq_chars(String("ab"), "ab "));
  EXPECT_TRUE(string_cic_string(String("AbC"), String("aBc")));
  String source;
  source.create_string(50);
  source.append_chars("xyz");
  String copy(source);
  EXPECT_EQ(copy.capacity_string(), 3);
  EXPECT_EQ((copy + String("cd") + "e").view(), "xyzcde");
  char field[5];
  assign_chars_string(field, String("abc"));
  EXPECT_EQ(std::string(field, 5), "abc  ");

  data_blocks::DataBlock block;
  block.set_type(3);
  block.set_key(-17);
  block = "seabed";
  const data_blocks::DataBlock block_copy(block);
  EXPECT_EQ(block_copy.get_type(), 3);
  EXPECT_EQ(block_copy.get_key(), -17);
  EXPECT_EQ(block_copy.view(), "seabed");
}

TEST(TStringConversions, Base64AndFreeFormNumbers) {
  for (const auto& [bytes, text] : {std::pair<std::string_view, std::string_view>{"M", "TQ=="}, {"Ma", "TWE="},
                                    {"Man", "TWFu"}}) {
    String s(bytes);
    s.to_base64();
    EXPECT_EQ(s.view(), text);
    s.from_base64();
    EXPECT_EQ(s.view(), bytes);
  }
  String skipped("T\r\nW-F!u\t");  // characters outside the alphabet are skipped
  skipped.from_base64();
  EXPECT_EQ(skipped.view(), "Man");

  struct test_case {
    const char* text;
    bool int_ok;
    int32_t int_value;
    bool real_ok;
    float real_value;
  };
  for (const test_case& c : {test_case{" 42 ", true, 42, true, 42.0F}, test_case{"2*", true, 0, true, 0.0F},
                        test_case{"1.5", false, 0, true, 1.5F}, test_case{"1e39", false, 0, false, 0.0F}}) {
    bool ok = !c.int_ok;
    EXPECT_EQ(String(c.text).to_int(ok), c.int_value) << c.text;
    EXPECT_EQ(ok, c.int_ok) << c.text;
    ok = !c.real_ok;
    EXPECT_EQ(String(c.text).to_real(ok), c.real_value) << c.text;
    EXPECT_EQ(ok, c.real_ok) << c.text;
  }
}

TEST(TStringIo, RecordsFilesAndConsole) {
  const String s(std::string(64, 'a') + "b");
  EXPECT_EQ(s.num_records(), 3);
  char record[32];
  s.get_record(3, record);
  EXPECT_EQ(std::string(record, 32), "b" + std::string(31, ' '));

  const testing::ScratchDir dir;
  const std::string path = dir.file("data.bin");
  record_files::RecordFile unit;
  int32_t open_status = 9;
  int32_t io_status = 9;
  String(std::string_view("a\0b\r\n", 5)).to_file(unit, path, &open_status, &io_status);
  EXPECT_EQ(open_status + io_status, 0);
  String back("old");
  back.from_file(path, unit, &open_status, &io_status);
  EXPECT_EQ(open_status + io_status, 0);
  EXPECT_FALSE(unit.is_open());
  EXPECT_EQ(back.view(), std::string_view("a\0b\r\n", 5));

  io_status = 5;
  back.from_file(dir.file("missing"), unit, &open_status, &io_status);
  EXPECT_NE(open_status, 0);
  EXPECT_EQ(io_status, 5);
  EXPECT_EQ(back.view(), std::string_view("a\0b\r\n", 5));
  back.to_file(unit, dir.file("no/such/dir"), &open_status);
  EXPECT_NE(open_status, 0);

  ::testing::internal::CaptureStdout();
  String("hello").to_console();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "hello\n");
}

}  // namespace
}  // namespace tmrdar::strings
