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

constexpr int32_t D = -99;  // the default
using INTS = std::array<int32_t, 3>;
using FLAGS = std::array<bool, 3>;

const std::string TOO_LARGE = "Error: Input Data Processing: Number is too large for the program.";

TEST(LineScanning, FieldsLabelsAndTheirFaults) {
  struct CASE {
    std::string_view key, line;
    INTS numbers;
    FLAGS is_text;
    std::string text;  // of the first entry that is text
    std::string message;
  };
  for (const CASE& c :
       {CASE{" ", "3 ,\t, 7   ", {3, D, 7}, {false, false, false}, "", ""},
        CASE{" ", "12 abc -4", {12, D, -4}, {false, true, false}, "abc", ""},
        CASE{"NODE", "X N=5 6", {5, 6, D}, {false, false, false}, "", ""},
        CASE{"M", "X N=5 6", {D, D, D}, {false, false, false}, "", ""},
        CASE{" ", "1 {riser top, end}, 5", {1, D, 5}, {false, true, false}, "riser top, end", ""},
        CASE{" ", "{  12} {} {\tx}", {12, D, D}, {false, false, true}, "\tx", ""},
        CASE{" ", "1E5 +7 1.5", {D, 7, D}, {false, false, false}, "", ""},
        CASE{" ", "4 {riser top   ", {4, D, D}, {false, true, false}, "riser top",
             "Error: Input Data Processing: Missing closing brace '}' for node label."},
        CASE{" ", "ab}c 7", {D, 7, D}, {true, false, false}, "abc",
             "Error: Input Data Processing: Missing opening brace '{' for node label."},
        CASE{" ", "2147483648 0000000000009 99999999999999999999999", {D, 9, D}, {false, false, false}, "",
             TOO_LARGE}}) {
    ERROR_HANDLING::ERROR3(false, "", "");
    INTS numbers{};
    std::array<TEXT_ENTRY, 3> texts;
    FLAGS is_text{true, true, true};
    FIND_NUMBERS_AND_TEXT_IN_LINE(c.key, c.line, numbers, 3, D, texts, is_text);
    EXPECT_EQ(numbers, c.numbers) << c.line;
    EXPECT_EQ(is_text, c.is_text) << c.line;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(is_text[i] ? texts[i].TRIMMED() : c.text, c.text) << c.line;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), c.message) << c.line;
  }

  std::array<float, 6> reals{};
  FIND_REALS_IN_LINE(" ", "1.5, ,-2e3 4d1\t1.0+2 {7}", reals, 6, 9.0F);
  EXPECT_EQ(reals, (std::array<float, 6>{1.5F, 9.0F, -2000.0F, 40.0F, 100.0F, 9.0F}));
  FIND_REALS_IN_LINE("FOOD", "FOO=1 2", reals, 3, -1.0F);
  EXPECT_EQ(reals[0], -1.0F);
  ERROR_HANDLING::ERROR3(false, "", "");
  std::array<float, 2> pair{};
  FIND_REALS_IN_LINE(" ", "9e39 5", pair, 2, -1.0F);
  EXPECT_EQ(pair, (std::array<float, 2>{-1.0F, 5.0F}));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
  FIND_REALS_IN_LINE(" ", "1e39 5", pair, 2, -1.0F);  // stops only behind a leading 1 to 8
  EXPECT_EQ(pair, (std::array<float, 2>{-1.0F, -1.0F}));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), TOO_LARGE);

  EXPECT_EQ(COUNT_SPACES("  a\tb"), 2);
  EXPECT_TRUE(STRING_COMPARE("Riser  ", "rISER"));
  ERROR_HANDLING::ERROR3(false, "", "");
  EXPECT_EQ(HEX_TO_INT("  aBcD  "), 0xABCD);
  EXPECT_EQ(HEX_TO_INT("FFFFFFFF"), -1);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
  EXPECT_EQ(HEX_TO_INT("G1"), 1);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Warning: Input Data Processing: Ignoring invalid hexadecimal character G.");
}

using enum FREE_FORM_READ;

TEST(FreeFormRead, EveryWayAReadEnds) {
  struct INT_CASE {
    std::string_view text;
    FREE_FORM_READ result;
    int32_t value;  // 99: left as it was
  };
  for (const INT_CASE& c :
       {INT_CASE{"  42  ", VALUE, 42}, {"-17,5", VALUE, -17}, {"-2147483648", VALUE, INT32_MIN}, {"3*12", VALUE, 12},
        {"\n7\r9", VALUE, 7}, {",7", NULL_VALUE, 99}, {"2*,5", NULL_VALUE, 99}, {"12.5", MALFORMED, 99},
        {"   ", MALFORMED, 99}, {"0*5", MALFORMED, 99}, {"2*3*4", MALFORMED, 99},
        {"2147483648", OUT_OF_RANGE, 99}, {"3*2147483648", OUT_OF_RANGE, 99}}) {
    int32_t n = 99;
    EXPECT_EQ(READ_FREE_FORM_INTEGER(c.text, n), c.result) << c.text;
    EXPECT_EQ(n, c.value) << c.text;
  }
  struct REAL_CASE {
    std::string_view text;
    FREE_FORM_READ result;
    float value;  // 3: left as it was
  };
  const float inf = std::numeric_limits<float>::infinity();
  for (const REAL_CASE& c :
       {REAL_CASE{".5", VALUE, 0.5F}, {"2-1", VALUE, 0.2F}, {"1.5D2", VALUE, 150.0F}, {"1e-50", VALUE, 0.0F},
        {"2*1.5d1", VALUE, 15.0F}, {"-Infinity", VALUE, -inf}, {"3*", NULL_VALUE, 3.0F},
        {"3.4028236e38", OUT_OF_RANGE, 3.0F}, {"4*1e39", OUT_OF_RANGE, 3.0F}, {"1e+", MALFORMED, 3.0F},
        {"1.2.3", MALFORMED, 3.0F}, {"*1.5", MALFORMED, 3.0F}, {"nan(1", MALFORMED, 3.0F}}) {
    float v = 3.0F;
    EXPECT_EQ(READ_FREE_FORM_REAL(c.text, v), c.result) << c.text;
    EXPECT_EQ(v, c.value) << c.text;
  }
  float v = 0.0F;
  EXPECT_EQ(READ_FREE_FORM_REAL("nan(0x7fc)", v), VALUE);
  EXPECT_TRUE(std::isnan(v));
}

TEST(NumericHelpers, LeapYearsShiftsAndAlpha) {
  EXPECT_TRUE(CHECK_LEAP_YEAR(2000));
  EXPECT_FALSE(CHECK_LEAP_YEAR(1900));
  EXPECT_TRUE(CHECK_LEAP_YEAR(2024));
  struct CASE {
    int32_t n, shift, shift_after, status;
    std::vector<double> v;
  };
  for (const CASE& c : {CASE{5, 2, 2, 0, {3, 4, 5, 1, 2}}, CASE{5, -7, -2, 0, {4, 5, 1, 2, 3}},
                        CASE{5, INT_MIN, -3, 0, {3, 4, 5, 1, 2}}, CASE{3, 2, 2, 0, {3, 1, 2, 4, 5}},
                        CASE{6, 1, 1, 1, {1, 2, 3, 4, 5}}}) {
    std::vector<double> v{1, 2, 3, 4, 5};
    int32_t shift = c.shift;
    int32_t status = -1;
    CSHIFT_VECTOR(c.n, shift, v, status);
    EXPECT_EQ(status, c.status) << c.shift;
    EXPECT_EQ(shift, c.shift_after) << c.shift;
    EXPECT_EQ(v, c.v) << c.shift;
  }
  EXPECT_NEAR(GET_ALPHA(0.0F), 0.470476F, 2e-6F);
  EXPECT_NEAR(GET_ALPHA(10.0F), 0.113361F, 2e-6F);
}

TEST(GetCommands, SplitsTheJobPathAndReadsTheSwitch) {
  struct CASE {
    std::vector<std::string> arguments;
    std::string directory, name, second;
    bool switch_g;
  };
  const std::string here = platform::CURRENT_DIRECTORY().value();
  for (const CASE& c : {CASE{{"prog", "/runs/a/../b/./job.dat", " out  ", "/G"}, "/runs/b/", "job", " out/", true},
                        CASE{{"prog", "sub/archive.tar.gz"}, here + "/sub/", "archive.tar", "/", false},
                        CASE{{"p", "/j", "d", "/gx"}, "/", "j", "d/", false},
                        CASE{{"p", "/" + std::string(300, 'n') + ".dat"}, "/", std::string(255, 'n'), "/", false}}) {
    chars::BLANK_PADDED<300> directory, name, second;
    bool switch_g = !c.switch_g;
    GET_COMMANDS(c.arguments, directory.SPAN(), name.SPAN(), second.SPAN(), switch_g);
    EXPECT_EQ(directory.TRIMMED(), c.directory) << c.arguments[1];
    EXPECT_EQ(name.TRIMMED(), c.name) << c.arguments[1];
    EXPECT_EQ(second.TRIMMED(), c.second) << c.arguments[1];
    EXPECT_EQ(switch_g, c.switch_g) << c.arguments[1];
  }
}

TEST(GetCommandsDeathTest, NoJobEndsTheProgram) {
  chars::BLANK_PADDED<300> directory, name, second;
  bool switch_g = false;
  EXPECT_EXIT(
      {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        GET_COMMANDS(std::vector<std::string>{"prog", "   ", "x"}, directory.SPAN(), name.SPAN(), second.SPAN(),
                     switch_g);
      },
      ::testing::ExitedWithCode(0), "This program should be run from the Analysis Control Module\\.");
}

}  // namespace
}  // namespace tmrdar
