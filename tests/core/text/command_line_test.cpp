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

  const COMMANDS relative = READ({"prog", "sub/archive.tar.gz"});
  EXPECT_EQ(relative.directory.TRIMMED(), platform::CURRENT_DIRECTORY().value() + "/sub/");
  EXPECT_EQ(relative.name.TRIMMED(), "archive.tar");
  EXPECT_EQ(relative.second.TRIMMED(), "/");
  EXPECT_FALSE(relative.switch_g);

  EXPECT_EQ(READ({"p", "/x/.hidden"}).name.TRIMMED(), ".hidden");
  EXPECT_EQ(READ({"p", "/x.y/dir/"}).name.TRIMMED(), "");
}

TEST(GetCommands, SwitchAndWidths) {
  EXPECT_FALSE(READ({"p", "/j", "d", "/gx"}).switch_g);
  // Argument 3 is read into 50 characters.
  EXPECT_TRUE(READ({"p", "/j", "d", "/g" + std::string(48, ' ') + "tail"}).switch_g);
  // The full path is held in 256 characters.
  const COMMANDS c = READ({"p", "/" + std::string(300, 'n') + ".dat"});
  EXPECT_EQ(c.directory.TRIMMED(), "/");
  EXPECT_EQ(c.name.TRIMMED(), std::string(255, 'n'));
  // Narrow outputs are cut.
  std::array<char, 4> directory{};
  std::array<char, 2> name{};
  std::array<char, 3> second{};
  bool switch_g = false;
  GET_COMMANDS(std::vector<std::string>{"p", "/abc/defg/job.x", "xyz"}, directory, name, second, switch_g);
  EXPECT_EQ(std::string_view(directory.data(), 4), "/abc");
  EXPECT_EQ(std::string_view(name.data(), 2), "jo");
}

TEST(GetCommandsDeathTest, NoJobEndsTheProgram) {
  COMMANDS c;
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"prog"}, std::vector<std::string>{"prog", "   ", "x"}}) {
    // Standard output goes to the error stream, which the check reads.
    EXPECT_EXIT(
        {
          ::dup2(STDERR_FILENO, STDOUT_FILENO);
          GET_COMMANDS(arguments, c.directory.SPAN(), c.name.SPAN(), c.second.SPAN(), c.switch_g);
        },
        ::testing::ExitedWithCode(0), "This program should be run from the Analysis Control Module\\.");
  }
}

}  // namespace
}  // namespace tmrdar
