// The commands of the tool. Each runs on its parsed arguments, prints its
// answer to standard output and returns the exit status; a failure of the
// job throws tmrdar::error and a mistake in the command line UsageError.
#pragma once

#include <span>
#include <string_view>

#include "tools/cli/arguments.h"

namespace tmrdar::cli {

struct Command {
  std::string_view name;
  std::string_view help;  // the text of `tmrdar name --help`
  std::span<const Option> options;
  int (*run)(const Arguments& arguments);
};

// The commands, in the order of the tool's help.
std::span<const Command> commands();

// The tool's own help.
extern const std::string_view usage;

int info(const Arguments& arguments);
int nodes(const Arguments& arguments);
int elements(const Arguments& arguments);
int curve(const Arguments& arguments);
int value(const Arguments& arguments);
int history(const Arguments& arguments);
int stats(const Arguments& arguments);
int snapshot(const Arguments& arguments);
int range(const Arguments& arguments);

}  // namespace tmrdar::cli
