#include "core/text/command_line.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

#include "core/chars/blank_padded.h"
#include "core/platform/platform.h"

namespace tmrdar {
namespace {

struct COMMANDS {
  chars::BLANK_PADDED<300> directory;
  chars::BLANK_PADDED<300> name;
  chars::BLANK_PADDED<300> second;
  bool switch_g = true;
};

COMMANDS READ(const std::vector<std::string>& arguments) {
  COMMANDS c;
  GET_COMMANDS(arguments, c.directory.SPAN(), c.name.SPAN(), c.second.SPAN(), c.switch_g);
  return c;
}

TEST(GetCommands, SplitsTheFoldedFullPath) {
  const COMMANDS c = READ({"prog", "/runs/a/../b/./job.dat", " out  ", "/G"});
  EXPECT_EQ(c.directory.TRIMMED(), "/runs/b/");
  EXPECT_EQ(c.name.TRIMMED(), "job");
  EXPECT_EQ(c.second.TRIMMED(), " out/");
  EXPECT_TRUE(c.switch_g);
}

TEST(GetCommands, RelativePathsStandInTheCurrentDirectory) {
  const COMMANDS c = READ({"prog", "sub/archive.tar.gz"});
  EXPECT_EQ(c.directory.TRIMMED(), platform::CURRENT_DIRECTORY().value() + "/sub/");
  EXPECT_EQ(c.name.TRIMMED(), "archive.tar");
  EXPECT_EQ(c.second.TRIMMED(), "/");
  EXPECT_FALSE(c.switch_g);
}

TEST(GetCommands, NamesWithoutAPlainStem) {
  EXPECT_EQ(READ({"p", "/x/.hidden"}).name.TRIMMED(), ".hidden");
  EXPECT_EQ(READ({"p", "/x/job"}).name.TRIMMED(), "job");
  EXPECT_EQ(READ({"p", "/x.y/dir/"}).name.TRIMMED(), "");
}

TEST(GetCommands, SwitchAndWidths) {
  EXPECT_TRUE(READ({"p", "/j", "d", "/g"}).switch_g);
  EXPECT_FALSE(READ({"p", "/j", "d", "/gx"}).switch_g);
  // Argument 3 is read into 50 characters.
  EXPECT_TRUE(READ({"p", "/j", "d", "/g" + std::string(48, ' ') + "tail"}).switch_g);
  // The full path is held in 256 characters.
  const COMMANDS c = READ({"p", "/" + std::string(300, 'n') + ".dat"});
  EXPECT_EQ(c.directory.TRIMMED(), "/");
  EXPECT_EQ(c.name.TRIMMED(), std::string(255, 'n'));
  // Outputs narrower than their text are cut.
  std::array<char, 4> directory{};
  std::array<char, 2> name{};
  std::array<char, 3> second{};
  bool switch_g = false;
  GET_COMMANDS(std::vector<std::string>{"p", "/abc/defg/job.x", "xyz"}, directory, name, second, switch_g);
  EXPECT_EQ(std::string_view(directory.data(), 4), "/abc");
  EXPECT_EQ(std::string_view(name.data(), 2), "jo");
  EXPECT_EQ(std::string_view(second.data(), 3), "xyz");
}

TEST(GetCommandsDeathTest, NoJobEndsTheProgram) {
  const std::vector<std::string> only_program{"prog"};
  const std::vector<std::string> blank_job{"prog", "   ", "x"};
  COMMANDS c;
  // Standard output is sent to the error stream, which the check reads.
  EXPECT_EXIT(
      {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        GET_COMMANDS(only_program, c.directory.SPAN(), c.name.SPAN(), c.second.SPAN(), c.switch_g);
      },
      ::testing::ExitedWithCode(0), "This program should be run from the Analysis Control Module\\.");
  EXPECT_EXIT(
      {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        GET_COMMANDS(blank_job, c.directory.SPAN(), c.name.SPAN(), c.second.SPAN(), c.switch_g);
      },
      ::testing::ExitedWithCode(0), "Analysis Control Module");
}

}  // namespace
}  // namespace tmrdar
