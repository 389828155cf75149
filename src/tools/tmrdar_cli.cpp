// tmrdar: a look into a job's databases from the command line.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "tmrdar/tmrdar.hpp"
#include "tools/cli/commands.h"
#include "tools/cli/job_access.h"

namespace {

using tmrdar::cli::Command;

const Command* find(std::string_view name) {
  const auto commands = tmrdar::cli::commands();
  const auto found = std::ranges::find(commands, name, &Command::name);
  return found != commands.end() ? &*found : nullptr;
}

bool is_help(std::string_view word) { return word == "--help" || word == "-h" || word == "help"; }

// Standard output must have taken the whole answer.
int finished(int status) {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    std::fprintf(stderr, "tmrdar: the output could not be written\n");
    return 1;
  }
  return status;
}

int run(const Command& command, const std::vector<std::string_view>& words) {
  const std::string name(command.name);
  try {
    const tmrdar::cli::Arguments arguments(words, command.options);
    if (arguments.has(tmrdar::cli::help_option.name)) {
      std::fwrite(command.help.data(), 1, command.help.size(), stdout);
      return finished(0);
    }
    return finished(command.run(arguments));
  } catch (const tmrdar::cli::UsageError& mistake) {
    std::fprintf(stderr, "tmrdar %s: %s (see tmrdar %s --help)\n", name.c_str(), mistake.what(), name.c_str());
    return 2;
  } catch (const tmrdar::error& failure) {
    // The library composes a message of its own where a file could not be
    // read; it tells what the mask cannot.
    const std::string message = tmrdar::cli::library_message();
    if (message.empty()) {
      std::fprintf(stderr, "tmrdar: %s\n", failure.what());
    } else {
      std::fprintf(stderr, "tmrdar: %s (%s)\n", failure.what(), message.c_str());
    }
    return 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tmrdar: %s\n", failure.what());
    return 1;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + std::min(argc, 1), argv + argc);
  const std::string_view usage = tmrdar::cli::usage;
  if (words.empty()) {
    std::fwrite(usage.data(), 1, usage.size(), stderr);
    return 2;
  }
  const bool help = is_help(words[0]);
  if (help && words.size() == 1) {
    std::fwrite(usage.data(), 1, usage.size(), stdout);
    return finished(0);
  }
  const std::string_view name = help ? words[1] : words[0];
  const Command* command = find(name);
  if (command == nullptr) {
    std::fprintf(stderr, "tmrdar: unknown command '%s' (see tmrdar --help)\n", std::string(name).c_str());
    return 2;
  }
  if (help) return run(*command, {"--help"});
  return run(*command, std::vector<std::string_view>(words.begin() + 1, words.end()));
}
