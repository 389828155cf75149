#include "core/paths/wide_strings.h"

#include <algorithm>

#include "core/platform/platform.h"

namespace tmrdar {
namespace {

// Lengths are 32-bit counts.
constexpr std::size_t path_length_limit = 0x7FFFFFFF;

}  // namespace

std::string_view up_to_zero(std::string_view text) { return text.substr(0, text.find('\0')); }

std::u16string_view up_to_zero(std::u16string_view text) { return text.substr(0, text.find(u'\0')); }

void multibytetowide(std::string_view utf8, std::span<char16_t> wide, int32_t& length, bool& failed) {
  failed = false;
  length = 0;
  const std::u16string converted = platform::utf8_to_utf16(up_to_zero(utf8));
  std::fill_n(wide.begin(), std::min(wide.size(), path_buffer_units), u'\0');
  if (converted.size() + 1 > wide.size() || converted.size() >= path_length_limit) {
    failed = true;
    return;
  }
  std::copy(converted.begin(), converted.end(), wide.begin());
  wide[converted.size()] = u'\0';
  length = static_cast<int32_t>(converted.size() + 1);
  // Units from 0x8000 up are negative as 16-bit integers, and are dropped.
  for (std::size_t i = 0; i < converted.size(); ++i) {
    if (wide[i] >= 0x8000) wide[i] = u'\0';
  }
}

void widetomultibyte(int32_t n, std::u16string_view wide, std::span<char> bytes) {
  const std::size_t capacity = n <= 0 ? 0 : std::min(static_cast<std::size_t>(n), bytes.size());
  std::fill_n(bytes.begin(), capacity, '\0');
  const std::string converted = platform::utf16_to_utf8(up_to_zero(wide));
  if (converted.size() + 1 > capacity) return;
  std::copy(converted.begin(), converted.end(), bytes.begin());
}

}  // namespace tmrdar
