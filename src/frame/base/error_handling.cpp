#include "frame/base/error_handling.h"

#include <cmath>

#include "core/chars/blank_padded.h"

namespace tmrdar::error_handling {
namespace {

chars::BlankPadded<message_width>& message() {
  static chars::BlankPadded<message_width> message;
  return message;
}

void compose(bool wanted, std::string_view level, std::string_view category,
             std::string_view text) {
  message().blank();
  if (!wanted) return;
  std::string line;
  line.reserve(message_width);
  line.append(level).append(chars::trim(category)).append(": ").append(chars::trim(text));
  message().assign(line);
}

}  // namespace

void error3(bool wanted, std::string_view category, std::string_view text) {
  compose(wanted, "Error: ", category, text);
}

void warn1(bool wanted, std::string_view category, std::string_view text) {
  compose(wanted, "Warning: ", category, text);
}

std::string_view error_message() { return message().view(); }
std::string_view last_message() { return message().trimmed(); }

}  // namespace tmrdar::error_handling

namespace tmrdar {

// A NaN fails every ordered comparison, so each guard is one comparison.
bool sqrt_arg_ok(float value) { return value >= 0.0F; }
bool double_sqrt_arg_ok(double value) { return value >= 0.0; }
bool log_arg_ok(float value) { return value > 0.0F; }

}  // namespace tmrdar
