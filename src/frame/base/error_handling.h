// Composition of the library's diagnostic messages.
//
// A message reads "Error: " or "Warning: ", the category, ": " and the text,
// with trailing blanks of category and text trimmed. Only the last message is
// kept; the exports never show it to the host.
#pragma once

#include <string_view>

namespace tmrdar::ERROR_HANDLING {

inline constexpr std::size_t MESSAGE_WIDTH = 1200;

// Categories of the library's messages.
inline constexpr std::string_view DATABASE_POSTPROCESSING = "Database Postprocessing";
inline constexpr std::string_view INPUT_DATA_PROCESSING = "Input Data Processing";

// Blanks the message and, when compose is true, writes an error message.
void ERROR3(bool compose, std::string_view category, std::string_view text);
// The same with the level word "Warning: ".
void WARN1(bool compose, std::string_view category, std::string_view text);

// The kept message, blank padded to its full width of 1200 characters.
std::string_view ERROR_MESSAGE();
// The kept message without trailing blanks (empty when none was composed).
std::string_view LAST_MESSAGE();

}  // namespace tmrdar::ERROR_HANDLING

namespace tmrdar {

// Argument guards of the numeric routines.
bool SQRT_ARG_OK(float value);
bool DOUBLE_SQRT_ARG_OK(double value);
bool LOG_ARG_OK(float value);

}  // namespace tmrdar
