// Scanning of input lines: numbers and words split out of a line, a
// hexadecimal reader and small string tests.
//
// A line is a blank-padded field. Its separators are the blank, the tab and
// the comma; a comma with nothing before it stands for an empty field. The
// scanners report what they find wrong as messages of the category
// "Input Data Processing" and carry on, unless a routine says otherwise.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "core/chars/blank_padded.h"

namespace tmrdar {

inline constexpr std::size_t text_entry_width = 1200;
using TextEntry = chars::BlankPadded<text_entry_width>;

// Splits the line into up to n entries, each an integer or a text.
//
// When the key's first character is not blank, the entries start behind
// that character followed by "="; a line without it gives the defaults.
// A "{" opens a braced entry in which blanks, tabs and commas are ordinary
// characters, and a "}" closes it; the braces themselves are dropped, so a
// node label such as {riser top} is one text entry. An entry made only of
// signs, points, E, e and digits is read as an integer; any other entry is a
// text, copied to `texts` with its flag in `is_text` set. Empty entries and
// failed reads leave the default. n is bounded by the arrays given.
void find_numbers_and_text_in_line(std::string_view key, std::string_view line,
                                   std::span<int32_t> numbers, int32_t n, int32_t default_value,
                                   std::span<TextEntry> texts, std::span<bool> is_text);

// Splits the line into up to n reals. The whole key followed by "=" marks
// where the values start, unless the key is blank. Braces have no meaning
// here. A value too large for a real is reported, and ends the scan, only
// when its entry starts with one of the digits 1 to 8; other failed reads
// leave the default. n is bounded by the array given.
void find_reals_in_line(std::string_view key, std::string_view line, std::span<float> reals,
                        int32_t n, float default_value);

// The number of blanks before the last character that is not blank.
int32_t count_spaces(std::string_view string);

// True when the strings are equal apart from the case of A to Z and trailing
// blanks.
bool string_compare(std::string_view a, std::string_view b);

// The value of a hexadecimal number. Leading and trailing blanks are dropped.
// A character that is no hexadecimal digit adds nothing but keeps its place,
// and is reported by a warning. The arithmetic is 32-bit and wraps, so only
// the last eight places count.
int32_t hex_to_int(std::string_view string);

}  // namespace tmrdar
