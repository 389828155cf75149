// Wide strings: arrays of 16-bit units (UTF-16) ended by a zero unit, and
// their conversion to and from UTF-8 byte strings ended by a zero byte.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/platform/platform.h"

namespace tmrdar {

// The wide characters a path buffer holds.
inline constexpr std::size_t path_buffer_units = 32767;

// The text up to its first zero, or all of it when it has none.
std::string_view up_to_zero(std::string_view text);
std::u16string_view up_to_zero(std::u16string_view text);

// Lossless conversions (core/platform).
using platform::utf16_to_utf8;
using platform::utf8_to_utf16;

// Converts the UTF-8 string, up to its zero, to a wide string with its zero.
// The length is the count of units written, the zero included. The first
// 32767 units of the output are cleared before. Every unit from 0x8000 up
// is then replaced by 0, so that characters from U+8000 on, and all that
// need two units, end the string there. Fails, with a length of 0, when the
// output cannot hold the result.
void multibytetowide(std::string_view utf8, std::span<char16_t> wide, int32_t& length, bool& failed);

// Clears n bytes of the output and writes the wide string, up to its zero, as
// UTF-8 with a zero byte. When that does not fit in n bytes nothing is
// written. n is bounded by the output's size.
void widetomultibyte(int32_t n, std::u16string_view wide, std::span<char> bytes);

}  // namespace tmrdar
