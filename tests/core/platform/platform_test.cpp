#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "core/platform/platform.h"

namespace tmrdar::platform {
namespace {

// What the console routines write to `target`, read back from `source`.
std::string CONSOLE_OUTPUT(int target, int source, bool terminal) {
  std::fflush(stdout);
  const int saved = ::dup(STDOUT_FILENO);
  ::dup2(target, STDOUT_FILENO);
  EXPECT_EQ(STANDARD_OUTPUT_IS_TERMINAL(), terminal);
  CLEAR_CONSOLE();
  SET_CONSOLE_CURSOR(2, 7);
  SET_CONSOLE_CURSOR(-1, 7);  // outside the console: nothing
  std::fflush(stdout);
  ::dup2(saved, STDOUT_FILENO);
  ::close(saved);
  ::fcntl(source, F_SETFL, O_NONBLOCK);
  std::string text;
  char buffer[256];
  for (ssize_t n; (n = ::read(source, buffer, sizeof buffer)) > 0;) text.append(buffer, static_cast<std::size_t>(n));
  return text;
}

TEST(ConsoleAndArguments, ControlSequencesOnlyToATerminal) {
  EXPECT_EQ(COMMAND_ARGUMENTS(), ::testing::internal::GetArgvs());
  int pipe_ends[2];
  ASSERT_EQ(::pipe(pipe_ends), 0);
  EXPECT_EQ(CONSOLE_OUTPUT(pipe_ends[1], pipe_ends[0], false), "");
  ::close(pipe_ends[0]);
  ::close(pipe_ends[1]);
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0) GTEST_SKIP() << "no pseudo terminal";
  const int terminal = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
  ASSERT_GE(terminal, 0);
  EXPECT_EQ(CONSOLE_OUTPUT(terminal, master, true), "\x1b[2J\x1b[H\x1b[3;8H");
  ::close(terminal);
  ::close(master);
}

TEST(SplitPath, AtTheLastSeparatorAndTheLastPointOfTheLastComponent) {
  struct CASE {
    std::string_view full, directory, name, extension;
  };
  for (const CASE& c : {CASE{"/run/jobs/riser.v2.DBM", "/run/jobs/", "riser.v2", ".DBM"},
                        CASE{"/run.d/jobs/riser", "/run.d/jobs/", "riser", ""}, CASE{"riser.dbf", "", "riser", ".dbf"},
                        CASE{"/run/.Job", "/run/", ".Job", ".Job"}, CASE{"/run.d/", "/run.d/", "", ""},
                        CASE{"/a/  .x", "/a/", "  ", ".x"}}) {
    const PATH_PARTS parts = SPLIT_PATH(c.full);
    EXPECT_EQ(parts.DIRECTORY, c.directory) << c.full;
    EXPECT_EQ(parts.NAME, c.name) << c.full;
    EXPECT_EQ(parts.EXTENSION, c.extension) << c.full;
  }
}

}  // namespace
}  // namespace tmrdar::platform
