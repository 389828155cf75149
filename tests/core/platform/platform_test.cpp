#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "core/platform/platform.h"

namespace tmrdar::platform {
namespace {

// What the console routines write to `target`, read back from `source`.
std::string console_output(int target, int source, bool terminal) {
  std::fflush(stdout);
  const int saved = ::dup(STDOUT_FILENO);
  ::dup2(target, STDOUT_FILENO);
  EXPECT_EQ(standard_output_is_terminal(), terminal);
  clear_console();
  set_console_cursor(2, 7);
  set_console_cursor(-1, 7);  // outside the console: nothing
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
  EXPECT_EQ(command_arguments(), ::testing::internal::GetArgvs());
  int pipe_ends[2];
  ASSERT_EQ(::pipe(pipe_ends), 0);
  EXPECT_EQ(console_output(pipe_ends[1], pipe_ends[0], false), "");
  ::close(pipe_ends[0]);
  ::close(pipe_ends[1]);
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0) GTEST_SKIP() << "no pseudo terminal";
  const int terminal = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
  ASSERT_GE(terminal, 0);
  EXPECT_EQ(console_output(terminal, master, true), "\x1b[2J\x1b[H\x1b[3;8H");
  ::close(terminal);
  ::close(master);
}

TEST(SplitPath, AtTheLastSeparatorAndTheLastPointOfTheLastComponent) {
  struct test_case {
    std::string_view full, directory, name, extension;
  };
  for (const test_case& c : {test_case{"/run/jobs/riser.v2.DBM", "/run/jobs/", "riser.v2", ".DBM"},
                        test_case{"/run.d/jobs/riser", "/run.d/jobs/", "riser", ""}, test_case{"riser.dbf", "", "riser", ".dbf"},
                        test_case{"/run/.Job", "/run/", ".Job", ".Job"}, test_case{"/run.d/", "/run.d/", "", ""},
                        test_case{"/a/  .x", "/a/", "  ", ".x"}}) {
    const PathParts parts = split_path(c.full);
    EXPECT_EQ(parts.directory, c.directory) << c.full;
    EXPECT_EQ(parts.name, c.name) << c.full;
    EXPECT_EQ(parts.extension, c.extension) << c.full;
  }
}

}  // namespace
}  // namespace tmrdar::platform
