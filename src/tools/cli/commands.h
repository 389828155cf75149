// The commands of the tool. Each runs on its parsed arguments, prints its
// answer to standard output and returns the exit status; a failure of the
// job throws tmrdar::FAILURE and a mistake in the command line USAGE_ERROR.
#pragma once

#include <span>
#include <string_view>

#include "tools/cli/arguments.h"

namespace tmrdar::cli {

struct COMMAND {
  std::string_view NAME;
  std::string_view HELP;  // the text of `tmrdar NAME --help`
  std::span<const OPTION> OPTIONS;
  int (*RUN)(const ARGUMENTS& arguments);
};

// The commands, in the order of the tool's help.
std::span<const COMMAND> COMMANDS();

// The tool's own help.
extern const std::string_view USAGE;

int INFO(const ARGUMENTS& arguments);
int NODES(const ARGUMENTS& arguments);
int ELEMENTS(const ARGUMENTS& arguments);
int CURVE(const ARGUMENTS& arguments);
int VALUE(const ARGUMENTS& arguments);
int HISTORY(const ARGUMENTS& arguments);
int STATS(const ARGUMENTS& arguments);
int SNAPSHOT(const ARGUMENTS& arguments);
int RANGE(const ARGUMENTS& arguments);

}  // namespace tmrdar::cli
