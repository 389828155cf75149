// Numbers read from a string, and the base64 form of its bytes.
#include <algorithm>
#include <limits>
#include <string>

#include "core/strings/string.h"
#include "core/text/free_form_read.h"

namespace tmrdar::strings {
namespace {

constexpr int64_t max_bytes = std::numeric_limits<int32_t>::max();

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The six bits a character stands for, or -1 outside the alphabet.
constexpr int sextet(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

}  // namespace

int32_t String::to_int(bool& ok) const {
  int32_t value = 0;
  const FreeFormRead read = read_free_form_integer(storage(), value);
  ok = read == FreeFormRead::value || read == FreeFormRead::null_value;
  return ok ? value : 0;
}

float String::to_real(bool& ok) const {
  float value = 0.0F;
  const FreeFormRead read = read_free_form_real(storage(), value);
  ok = read == FreeFormRead::value || read == FreeFormRead::null_value;
  return ok ? value : 0.0F;
}

void String::to_base64() {
  if (length_ == 0) return;
  const int64_t encoded_length = (int64_t{length_} + 2) / 3 * 4;
  if (encoded_length > max_bytes) return;
  std::string encoded;
  encoded.reserve(static_cast<std::size_t>(encoded_length));
  const auto* const bytes = reinterpret_cast<const unsigned char*>(buffer_.get());
  for (int32_t i = 0; i < length_; i += 3) {
    const int32_t present = std::min(3, length_ - i);
    uint32_t group = uint32_t{bytes[i]} << 16;
    if (present > 1) group |= uint32_t{bytes[i + 1]} << 8;
    if (present > 2) group |= uint32_t{bytes[i + 2]};
    for (int k = 0; k < 4; ++k) {
      const bool padding = k > present;
      encoded.push_back(padding ? '=' : alphabet[(group >> (18 - 6 * k)) & 0x3F]);
    }
  }
  clear_string();
  append_chars(encoded);
}

void String::from_base64() {
  // Decoded in place: each byte written needs more than one character read,
  // so writing never overtakes reading.
  uint32_t bits = 0;
  int bit_count = 0;
  int32_t written = 0;
  for (int32_t i = 0; i < length_; ++i) {
    const int six_bits = sextet(buffer_[i]);
    if (six_bits < 0) continue;
    bits = ((bits << 6) | static_cast<uint32_t>(six_bits)) & 0x3FFF;
    bit_count += 6;
    if (bit_count >= 8) {
      bit_count -= 8;
      buffer_[written++] = static_cast<char>((bits >> bit_count) & 0xFF);
    }
  }
  length_ = written;
}

}  // namespace tmrdar::strings
