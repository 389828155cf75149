#include "frame/base/error_handling.h"

#include <cmath>

#include "core/chars/blank_padded.h"

namespace tmrdar::ERROR_HANDLING {
namespace {

chars::BLANK_PADDED<MESSAGE_WIDTH>& MESSAGE() {
  static chars::BLANK_PADDED<MESSAGE_WIDTH> message;
  return message;
}

void COMPOSE(bool compose, std::string_view level, std::string_view category,
             std::string_view text) {
  MESSAGE().BLANK();
  if (!compose) return;
  std::string line;
  line.reserve(MESSAGE_WIDTH);
  line.append(level).append(chars::TRIM(category)).append(": ").append(chars::TRIM(text));
  MESSAGE().ASSIGN(line);
}

}  // namespace

void ERROR3(bool compose, std::string_view category, std::string_view text) {
  COMPOSE(compose, "Error: ", category, text);
}

void WARN1(bool compose, std::string_view category, std::string_view text) {
  COMPOSE(compose, "Warning: ", category, text);
}

std::string_view ERROR_MESSAGE() { return MESSAGE().VIEW(); }
std::string_view LAST_MESSAGE() { return MESSAGE().TRIMMED(); }

}  // namespace tmrdar::ERROR_HANDLING

namespace tmrdar {

// A NaN fails every ordered comparison, so each guard is one comparison.
bool SQRT_ARG_OK(float value) { return value >= 0.0F; }
bool DOUBLE_SQRT_ARG_OK(double value) { return value >= 0.0; }
bool LOG_ARG_OK(float value) { return value > 0.0F; }

}  // namespace tmrdar
