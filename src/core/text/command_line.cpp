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
constexpr std::size_t path_field_width = 256;
constexpr std::size_t switch_width = 50;

std::string_view argument(std::span<const std::string> arguments, std::size_t index) {
  return index < arguments.size() ? std::string_view(arguments[index]) : std::string_view{};
}

std::string_view cut(std::string_view s, std::size_t width) { return s.substr(0, std::min(s.size(), width)); }

}  // namespace

void get_commands(std::span<const std::string> arguments, std::span<char> directory,
                  std::span<char> name, std::span<char> second, bool& switch_g) {
  const std::string_view job = argument(arguments, 1);
  if (chars::is_blank(job)) {
    std::fputs("This program should be run from the Analysis Control Module.\n", stdout);
    std::fflush(stdout);
    std::exit(0);
  }

  const std::string full = platform::full_path(chars::trim(job)).value_or(std::string{});
  const platform::PathParts parts = platform::split_path(cut(full, path_field_width));
  // There are no drives: the directory stands alone.
  chars::assign_padded(directory, chars::trim(parts.directory));
  chars::assign_padded(name, parts.name);

  std::string with_separator(chars::trim(argument(arguments, 2)));
  with_separator.push_back(platform::path_separator);
  chars::assign_padded(second, with_separator);

  const std::string_view switch_text = chars::trim(cut(argument(arguments, 3), switch_width));
  switch_g = switch_text == "/g" || switch_text == "/G";
}

void get_commands(std::span<char> directory, std::span<char> name, std::span<char> second,
                  bool& switch_g) {
  const std::vector<std::string> arguments = platform::command_arguments();
  get_commands(arguments, directory, name, second, switch_g);
}

}  // namespace tmrdar
