// Composition of the library's diagnostic messages.
//
// A message reads "Error: " or "Warning: ", the category, ": " and the text,
// with trailing blanks of category and text trimmed. Only the last message is
// kept; the exports never show it to the host.
#pragma once

#include <string_view>

namespace tmrdar::error_handling {

inline constexpr std::size_t message_width = 1200;

// Categories of the library's messages.
inline constexpr std::string_view database_postprocessing = "Database Postprocessing";
inline constexpr std::string_view input_data_processing = "Input Data Processing";

// Blanks the message and, when compose is true, writes an error message.
void error3(bool compose, std::string_view category, std::string_view text);
// The same with the level word "Warning: ".
void warn1(bool compose, std::string_view category, std::string_view text);

// The kept message, blank padded to its full width of 1200 characters.
std::string_view error_message();
// The kept message without trailing blanks (empty when none was composed).
std::string_view last_message();

}  // namespace tmrdar::error_handling

namespace tmrdar {

// Argument guards of the numeric routines.
bool sqrt_arg_ok(float value);
bool double_sqrt_arg_ok(double value);
bool log_arg_ok(float value);

}  // namespace tmrdar
