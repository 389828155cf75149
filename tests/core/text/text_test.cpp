#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "core/chars/blank_padded.h"
#include "core/platform/platform.h"
#include "core/text/command_line.h"
#include "core/text/free_form_read.h"
#include "core/text/line_scanning.h"
#include "core/text/numeric_helpers.h"
#include "frame/base/error_handling.h"

namespace tmrdar {
namespace {

constexpr int32_t d = -99;  // the default
using Ints = std::array<int32_t, 3>;
using Flags = std::array<bool, 3>;

const std::string too_large = "Error: Input Data Processing: Number is too large for the program.";

TEST(LineScanning, FieldsLabelsAndTheirFaults) {
  struct test_case {
    std::string_view key, line;
    Ints numbers;
    Flags is_text;
    std::string text;  // of the first entry that is text
    std::string message;
  };
  for (const test_case& c :
       {test_case{" ", "3 ,\t, 7   ", {3, d, 7}, {false, false, false}, "", ""},
        test_case{" ", "12 abc -4", {12, d, -4}, {false, true, false}, "abc", ""},
        test_case{"NODE", "X N=5 6", {5, 6, d}, {false, false, false}, "", ""},
        test_case{"M", "X N=5 6", {d, d, d}, {false, false, false}, "", ""},
        test_case{" ", "1 {riser top, end}, 5", {1, d, 5}, {false, true, false}, "riser top, end", ""},
        test_case{" ", "{  12} {} {\tx}", {12, d, d}, {false, false, true}, "\tx", ""},
        test_case{" ", "1E5 +7 1.5", {d, 7, d}, {false, false, false}, "", ""},
        test_case{" ", "4 {riser top   ", {4, d, d}, {false, true, false}, "riser top",
             "Error: Input Data Processing: Missing closing brace '}' for node label."},
        test_case{" ", "ab}c 7", {d, 7, d}, {true, false, false}, "abc",
             "Error: Input Data Processing: Missing opening brace '{' for node label."},
        test_case{" ", "2147483648 0000000000009 99999999999999999999999", {d, 9, d}, {false, false, false}, "",
             too_large}}) {
    error_handling::error3(false, "", "");
    Ints numbers{};
    std::array<TextEntry, 3> texts;
    Flags is_text{true, true, true};
    find_numbers_and_text_in_line(c.key, c.line, numbers, 3, d, texts, is_text);
    EXPECT_EQ(numbers, c.numbers) << c.line;
    EXPECT_EQ(is_text, c.is_text) << c.line;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(is_text[i] ? texts[i].trimmed() : c.text, c.text) << c.line;
    EXPECT_EQ(error_handling::last_message(), c.message) << c.line;
  }

  std::array<float, 6> reals{};
  find_reals_in_line(" ", "1.5, ,-2e3 4d1\t1.0+2 {7}", reals, 6, 9.0F);
  EXPECT_EQ(reals, (std::array<float, 6>{1.5F, 9.0F, -2000.0F, 40.0F, 100.0F, 9.0F}));
  find_reals_in_line("FOOD", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals[0], -1.0F);
  error_handling::error3(false, "", "");
  std::array<float, 2> pair{};
  find_reals_in_line(" ", "9e39 5", pair, 2, -1.0F);
  EXPECT_EQ(pair, (std::array<float, 2>{-1.0F, 5.0F}));
  EXPECT_EQ(error_handling::last_message(), "");
  find_reals_in_line(" ", "1e39 5", pair, 2, -1.0F);  // stops only behind a leading 1 to 8
  EXPECT_EQ(pair, (std::array<float, 2>{-1.0F, -1.0F}));
  EXPECT_EQ(error_handling::last_message(), too_large);

  EXPECT_EQ(count_spaces("  a\tb"), 2);
  EXPECT_TRUE(string_compare("Riser  ", "rISER"));
  error_handling::error3(false, "", "");
  EXPECT_EQ(hex_to_int("  aBcD  "), 0xABCD);
  EXPECT_EQ(hex_to_int("FFFFFFFF"), -1);
  EXPECT_EQ(error_handling::last_message(), "");
  EXPECT_EQ(hex_to_int("G1"), 1);
  EXPECT_EQ(error_handling::last_message(),
            "Warning: Input Data Processing: Ignoring invalid hexadecimal character G.");
}

using enum FreeFormRead;

TEST(FreeFormRead, EveryWayAReadEnds) {
  struct IntCase {
    std::string_view text;
    FreeFormRead result;
    int32_t value;  // 99: left as it was
  };
  for (const IntCase& c :
       {IntCase{"  42  ", value, 42}, {"-17,5", value, -17}, {"-2147483648", value, INT32_MIN}, {"3*12", value, 12},
        {"\n7\r9", value, 7}, {",7", null_value, 99}, {"2*,5", null_value, 99}, {"12.5", malformed, 99},
        {"   ", malformed, 99}, {"0*5", malformed, 99}, {"2*3*4", malformed, 99},
        {"2147483648", out_of_range, 99}, {"3*2147483648", out_of_range, 99}}) {
    int32_t n = 99;
    EXPECT_EQ(read_free_form_integer(c.text, n), c.result) << c.text;
    EXPECT_EQ(n, c.value) << c.text;
  }
  struct RealCase {
    std::string_view text;
    FreeFormRead result;
    float value;  // 3: left as it was
  };
  const float inf = std::numeric_limits<float>::infinity();
  for (const RealCase& c :
       {RealCase{".5", value, 0.5F}, {"2-1", value, 0.2F}, {"1.5D2", value, 150.0F}, {"1e-50", value, 0.0F},
        {"2*1.5d1", value, 15.0F}, {"-Infinity", value, -inf}, {"3*", null_value, 3.0F},
        {"3.4028236e38", out_of_range, 3.0F}, {"4*1e39", out_of_range, 3.0F}, {"1e+", malformed, 3.0F},
        {"1.2.3", malformed, 3.0F}, {"*1.5", malformed, 3.0F}, {"nan(1", malformed, 3.0F}}) {
    float v = 3.0F;
    EXPECT_EQ(read_free_form_real(c.text, v), c.result) << c.text;
    EXPECT_EQ(v, c.value) << c.text;
  }
  float v = 0.0F;
  EXPECT_EQ(read_free_form_real("nan(0x7fc)", v), value);
  EXPECT_TRUE(std::isnan(v));
}

TEST(NumericHelpers, LeapYearsShiftsAndAlpha) {
  EXPECT_TRUE(check_leap_year(2000));
  EXPECT_FALSE(check_leap_year(1900));
  EXPECT_TRUE(check_leap_year(2024));
  struct test_case {
    int32_t n, shift, shift_after, status;
    std::vector<double> v;
  };
  for (const test_case& c : {test_case{5, 2, 2, 0, {3, 4, 5, 1, 2}}, test_case{5, -7, -2, 0, {4, 5, 1, 2, 3}},
                        test_case{5, INT_MIN, -3, 0, {3, 4, 5, 1, 2}}, test_case{3, 2, 2, 0, {3, 1, 2, 4, 5}},
                        test_case{6, 1, 1, 1, {1, 2, 3, 4, 5}}}) {
    std::vector<double> v{1, 2, 3, 4, 5};
    int32_t shift = c.shift;
    int32_t status = -1;
    cshift_vector(c.n, shift, v, status);
    EXPECT_EQ(status, c.status) << c.shift;
    EXPECT_EQ(shift, c.shift_after) << c.shift;
    EXPECT_EQ(v, c.v) << c.shift;
  }
  EXPECT_NEAR(get_alpha(0.0F), 0.470476F, 2e-6F);
  EXPECT_NEAR(get_alpha(10.0F), 0.113361F, 2e-6F);
}

TEST(GetCommands, SplitsTheJobPathAndReadsTheSwitch) {
  struct test_case {
    std::vector<std::string> arguments;
    std::string directory, name, second;
    bool switch_g;
  };
  const std::string here = platform::current_directory().value();
  for (const test_case& c : {test_case{{"prog", "/runs/a/../b/./job.dat", " out  ", "/G"}, "/runs/b/", "job", " out/", true},
                        test_case{{"prog", "sub/archive.tar.gz"}, here + "/sub/", "archive.tar", "/", false},
                        test_case{{"p", "/j", "d", "/gx"}, "/", "j", "d/", false},
                        test_case{{"p", "/" + std::string(300, 'n') + ".dat"}, "/", std::string(255, 'n'), "/", false}}) {
    chars::BlankPadded<300> directory, name, second;
    bool switch_g = !c.switch_g;
    get_commands(c.arguments, directory.span(), name.span(), second.span(), switch_g);
    EXPECT_EQ(directory.trimmed(), c.directory) << c.arguments[1];
    EXPECT_EQ(name.trimmed(), c.name) << c.arguments[1];
    EXPECT_EQ(second.trimmed(), c.second) << c.arguments[1];
    EXPECT_EQ(switch_g, c.switch_g) << c.arguments[1];
  }
}

TEST(GetCommandsDeathTest, NoJobEndsTheProgram) {
  chars::BlankPadded<300> directory, name, second;
  bool switch_g = false;
  EXPECT_EXIT(
      {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        get_commands(std::vector<std::string>{"prog", "   ", "x"}, directory.span(), name.span(), second.span(),
                     switch_g);
      },
      ::testing::ExitedWithCode(0), "This program should be run from the Analysis Control Module\\.");
}

}  // namespace
}  // namespace tmrdar
