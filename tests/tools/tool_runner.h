// Runs the built tool as a person would, and reads what it printed.
#pragma once

#include <string>
#include <vector>

namespace tmrdar::testing {

struct ToolRun {
  int status = -1;  // the exit status; -1 when the tool did not exit by itself
  std::string out;
  std::string err;
};

// Runs the tool with these arguments, its output going to files in a
// scratch directory.
ToolRun run_tool(const std::vector<std::string>& arguments);

// The lines of a text, without their line breaks.
std::vector<std::string> lines_of(const std::string& text);
// The fields of a line of comma-separated values that quotes no field, or
// the words of a line of aligned text.
std::vector<std::string> fields_of(const std::string& line, char separator);

}  // namespace tmrdar::testing
