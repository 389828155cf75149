#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "core/platform/platform.h"

namespace tmrdar::platform {
namespace {

TEST(CommandArguments, AreThoseOfThisProcess) {
  EXPECT_EQ(COMMAND_ARGUMENTS(), ::testing::internal::GetArgvs());
}

// Points standard output at another descriptor for the life of the object.
class STDOUT_REDIRECT {
 public:
  explicit STDOUT_REDIRECT(int target) : saved_(::dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    ::dup2(target, STDOUT_FILENO);
  }
  ~STDOUT_REDIRECT() {
    std::fflush(stdout);
    ::dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
  }
  STDOUT_REDIRECT(const STDOUT_REDIRECT&) = delete;
  STDOUT_REDIRECT& operator=(const STDOUT_REDIRECT&) = delete;

 private:
  int saved_;
};

std::string READ_AVAILABLE(int descriptor) {
  std::string text;
  char buffer[256];
  for (;;) {
    const ssize_t n = ::read(descriptor, buffer, sizeof buffer);
    if (n <= 0) break;
    text.append(buffer, static_cast<std::size_t>(n));
  }
  return text;
}

TEST(Console, WritesNothingWhenOutputIsNoTerminal) {
  int pipe_ends[2];
  ASSERT_EQ(::pipe(pipe_ends), 0);
  ::fcntl(pipe_ends[0], F_SETFL, O_NONBLOCK);
  {
    STDOUT_REDIRECT redirect(pipe_ends[1]);
    EXPECT_FALSE(STANDARD_OUTPUT_IS_TERMINAL());
    CLEAR_CONSOLE();
    SET_CONSOLE_CURSOR(1, 1);
  }
  EXPECT_EQ(READ_AVAILABLE(pipe_ends[0]), "");
  ::close(pipe_ends[0]);
  ::close(pipe_ends[1]);
}

TEST(Console, WritesControlSequencesToATerminal) {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0) {
    GTEST_SKIP() << "no pseudo terminal to write to";
  }
  const int terminal = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
  ASSERT_GE(terminal, 0);
  {
    STDOUT_REDIRECT redirect(terminal);
    EXPECT_TRUE(STANDARD_OUTPUT_IS_TERMINAL());
    CLEAR_CONSOLE();
    SET_CONSOLE_CURSOR(2, 7);
    SET_CONSOLE_CURSOR(-1, 7);     // outside the console: nothing
    SET_CONSOLE_CURSOR(0, 32768);  // the same
  }
  ::fcntl(master, F_SETFL, O_NONBLOCK);
  EXPECT_EQ(READ_AVAILABLE(master), "\x1b[2J\x1b[H\x1b[3;8H");
  ::close(terminal);
  ::close(master);
}

}  // namespace
}  // namespace tmrdar::platform
