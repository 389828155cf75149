#include "core/text/command_line.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "core/chars/blank_padded.h"
#include "core/platform/platform.h"

namespace tmrdar {
namespace {

// A full path and each of its parts is held in a field of this width, so a
// longer path is cut there.
constexpr std::size_t PATH_FIELD_WIDTH = 256;
constexpr std::size_t SWITCH_WIDTH = 50;

std::string_view ARGUMENT(std::span<const std::string> arguments, std::size_t index) {
  return index < arguments.size() ? std::string_view(arguments[index]) : std::string_view{};
}

std::string_view CUT(std::string_view s, std::size_t width) { return s.substr(0, std::min(s.size(), width)); }

}  // namespace

void GET_COMMANDS(std::span<const std::string> arguments, std::span<char> directory,
                  std::span<char> name, std::span<char> second, bool& switch_g) {
  const std::string_view job = ARGUMENT(arguments, 1);
  if (chars::IS_BLANK(job)) {
    std::fputs("This program should be run from the Analysis Control Module.\n", stdout);
    std::fflush(stdout);
    std::exit(0);
  }

  const std::string full = platform::FULL_PATH(chars::TRIM(job)).value_or(std::string{});
  const platform::PATH_PARTS parts = platform::SPLIT_PATH(CUT(full, PATH_FIELD_WIDTH));
  // There are no drives: the directory stands alone.
  chars::ASSIGN_PADDED(directory, chars::TRIM(parts.DIRECTORY));
  chars::ASSIGN_PADDED(name, parts.NAME);

  std::string with_separator(chars::TRIM(ARGUMENT(arguments, 2)));
  with_separator.push_back(platform::PATH_SEPARATOR);
  chars::ASSIGN_PADDED(second, with_separator);

  const std::string_view switch_text = chars::TRIM(CUT(ARGUMENT(arguments, 3), SWITCH_WIDTH));
  switch_g = switch_text == "/g" || switch_text == "/G";
}

void GET_COMMANDS(std::span<char> directory, std::span<char> name, std::span<char> second,
                  bool& switch_g) {
  const std::vector<std::string> arguments = platform::COMMAND_ARGUMENTS();
  GET_COMMANDS(arguments, directory, name, second, switch_g);
}

}  // namespace tmrdar
