#include "core/paths/char_fields.h"

#include <algorithm>

#include "core/chars/blank_padded.h"

namespace tmrdar {

void remove_trailing_char(std::string_view string, char c, std::span<char> out) {
  std::size_t length = chars::len_trim(string);
  while (length > 0 && string[length - 1] == c) --length;
  chars::assign_padded(out, string.substr(0, length));
}

void schartochar(int32_t n, std::span<const signed char> bytes, std::span<char> out) {
  std::fill(out.begin(), out.end(), ' ');
  const std::size_t count =
      n <= 0 ? 0 : std::min({static_cast<std::size_t>(n), bytes.size(), out.size()});
  for (std::size_t i = 0; i < count; ++i) {
    if (bytes[i] > 0) out[i] = static_cast<char>(bytes[i]);
  }
}

}  // namespace tmrdar
