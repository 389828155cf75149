// Small conversions of character fields.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tmrdar {

// Copies the string, less its trailing blanks and then every trailing
// occurrence of the character, into the blank-padded output, cut at its
// width. A string of nothing but that character gives a blank output.
void remove_trailing_char(std::string_view string, char c, std::span<char> out);

// Blanks the output and copies each of the first n bytes that is positive as
// a signed byte to its place; zero bytes and bytes from 128 up leave a
// blank. n is bounded by both arrays.
void schartochar(int32_t n, std::span<const signed char> bytes, std::span<char> out);

}  // namespace tmrdar
