// The command line of a program started by the analysis control program:
// argument 1 is the job's file, argument 2 a directory and argument 3 an
// optional switch "/g".
#pragma once

#include <span>
#include <string>

namespace tmrdar {

// Reads the command line of this process. `directory` gets the directory of
// the job's file (its full path, with a trailing separator), `name` the file's
// name without its extension, `second` argument 2 trimmed with a separator
// appended, and `switch_g` whether argument 3 is "/g" or "/G". The strings
// are blank padded, and cut at their width. Without an argument 1 the program
// writes "This program should be run from the Analysis Control Module." to
// standard output and ends.
void get_commands(std::span<char> directory, std::span<char> name, std::span<char> second,
                  bool& switch_g);

// The same for a given command line, the program itself first.
void get_commands(std::span<const std::string> arguments, std::span<char> directory,
                  std::span<char> name, std::span<char> second, bool& switch_g);

}  // namespace tmrdar
