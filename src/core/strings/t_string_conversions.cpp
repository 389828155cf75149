// Numbers read from a string, and the base64 form of its bytes.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "core/strings/t_string.h"

namespace tmrdar::MOD_STRING {
namespace {

constexpr int64_t MAX_BYTES = std::numeric_limits<int32_t>::max();

// Free-form number reading ---------------------------------------------------

constexpr bool IS_SPACE(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
constexpr bool ENDS_FIELD(char c) { return IS_SPACE(c) || c == ',' || c == '/'; }
constexpr bool IS_DIGIT(char c) { return c >= '0' && c <= '9'; }
constexpr char LOWER(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EQUALS_IGNORING_CASE(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return LOWER(x) == LOWER(y); });
}

enum class FIELD_KIND { VALUE, NULL_VALUE, NOTHING, INVALID };

struct FIELD {
  FIELD_KIND kind;
  std::string_view text;
};

// The first field of a free-form record. Blanks before it are skipped; it ends
// at a blank, a comma, a slash or the end. A comma or slash in its place makes
// it a null value. A repeat count r*value stands for r copies of the value,
// and r* alone for r null values.
FIELD FIRST_FIELD(std::string_view record) {
  std::size_t i = 0;
  while (i < record.size() && IS_SPACE(record[i])) ++i;
  if (i == record.size()) return {FIELD_KIND::NOTHING, {}};
  if (record[i] == ',' || record[i] == '/') return {FIELD_KIND::NULL_VALUE, {}};
  std::size_t j = i;
  while (j < record.size() && !ENDS_FIELD(record[j])) ++j;
  std::string_view text = record.substr(i, j - i);
  const std::size_t star = text.find('*');
  if (star == std::string_view::npos) return {FIELD_KIND::VALUE, text};
  const std::string_view repeat = text.substr(0, star);
  if (repeat.empty() || !std::all_of(repeat.begin(), repeat.end(), IS_DIGIT) ||
      repeat.find_first_not_of('0') == std::string_view::npos) {
    return {FIELD_KIND::INVALID, {}};
  }
  text = text.substr(star + 1);
  return {text.empty() ? FIELD_KIND::NULL_VALUE : FIELD_KIND::VALUE, text};
}

// An optional sign and at least one digit, within the 32-bit range.
bool READ_INTEGER(std::string_view text, int32_t& value) {
  std::string_view digits = text;
  if (!digits.empty() && (digits[0] == '+' || digits[0] == '-')) digits.remove_prefix(1);
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IS_DIGIT)) return false;
  if (text[0] == '+') text = digits;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc{} && result.ptr == end;
}

// A real: an optional sign, digits with an optional decimal point (at least
// one digit), and an optional exponent written with E, D or Q, or with its
// sign alone ("1.5+3"). Also Inf, Infinity and NaN, in any case.
bool READ_REAL(std::string_view text, float& value) {
  bool negative = false;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
    negative = text[0] == '-';
    text.remove_prefix(1);
  }
  if (EQUALS_IGNORING_CASE(text, "inf") || EQUALS_IGNORING_CASE(text, "infinity")) {
    value = negative ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
    return true;
  }
  if (text.size() >= 3 && EQUALS_IGNORING_CASE(text.substr(0, 3), "nan") &&
      (text.size() == 3 || (text[3] == '(' && text.back() == ')'))) {
    value = std::numeric_limits<float>::quiet_NaN();
    return true;
  }

  std::size_t i = 0;
  std::size_t digit_count = 0;
  while (i < text.size() && IS_DIGIT(text[i])) ++i, ++digit_count;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (i < text.size() && IS_DIGIT(text[i])) ++i, ++digit_count;
  }
  if (digit_count == 0) return false;
  std::string normal = negative ? "-" : "";
  normal.append(text.substr(0, i));
  if (i < text.size()) {
    const char letter = LOWER(text[i]);
    if (letter == 'e' || letter == 'd' || letter == 'q') ++i;
    std::string_view exponent = text.substr(i);
    std::string_view exponent_digits = exponent;
    if (!exponent_digits.empty() && (exponent_digits[0] == '+' || exponent_digits[0] == '-')) {
      exponent_digits.remove_prefix(1);
    } else if (letter != 'e' && letter != 'd' && letter != 'q') {
      return false;  // neither an exponent letter nor a sign
    }
    if (exponent_digits.empty() ||
        !std::all_of(exponent_digits.begin(), exponent_digits.end(), IS_DIGIT)) {
      return false;
    }
    normal.push_back('e');
    normal.append(exponent);
  }
  const char* const end = normal.data() + normal.size();
  const auto result = std::from_chars(normal.data(), end, value, std::chars_format::general);
  if (result.ptr != end) return false;
  if (result.ec == std::errc::result_out_of_range) {
    // Too small for a real reads as zero; too large is a failure.
    double wide = 0.0;
    const auto wide_result = std::from_chars(normal.data(), end, wide, std::chars_format::general);
    const bool tiny = wide_result.ec == std::errc{} ? std::fabs(wide) < 1.0
                                                    : normal.find("e-") != std::string::npos;
    if (!tiny) return false;
    value = negative ? -0.0F : 0.0F;
    return true;
  }
  return result.ec == std::errc{};
}

// Base64 ---------------------------------------------------------------------

constexpr std::string_view ALPHABET =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The six bits a character stands for, or -1 outside the alphabet.
constexpr int SEXTET(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

}  // namespace

int32_t T_STRING::TO_INT(bool& ok) const {
  const FIELD field = FIRST_FIELD(STORAGE());
  int32_t value = 0;
  ok = field.kind == FIELD_KIND::NULL_VALUE ||
       (field.kind == FIELD_KIND::VALUE && READ_INTEGER(field.text, value));
  return ok ? value : 0;
}

float T_STRING::TO_REAL(bool& ok) const {
  const FIELD field = FIRST_FIELD(STORAGE());
  float value = 0.0F;
  ok = field.kind == FIELD_KIND::NULL_VALUE ||
       (field.kind == FIELD_KIND::VALUE && READ_REAL(field.text, value));
  return ok ? value : 0.0F;
}

void T_STRING::TO_BASE64() {
  if (length_ == 0) return;
  const int64_t encoded_length = (int64_t{length_} + 2) / 3 * 4;
  if (encoded_length > MAX_BYTES) return;
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
      encoded.push_back(padding ? '=' : ALPHABET[(group >> (18 - 6 * k)) & 0x3F]);
    }
  }
  CLEAR_STRING();
  APPEND_CHARS(encoded);
}

void T_STRING::FROM_BASE64() {
  // Decoded in place: each byte written needs more than one character read,
  // so writing never overtakes reading.
  uint32_t bits = 0;
  int bit_count = 0;
  int32_t written = 0;
  for (int32_t i = 0; i < length_; ++i) {
    const int sextet = SEXTET(buffer_[i]);
    if (sextet < 0) continue;
    bits = ((bits << 6) | static_cast<uint32_t>(sextet)) & 0x3FFF;
    bit_count += 6;
    if (bit_count >= 8) {
      bit_count -= 8;
      buffer_[written++] = static_cast<char>((bits >> bit_count) & 0xFF);
    }
  }
  length_ = written;
}

}  // namespace tmrdar::MOD_STRING
