#include "core/text/free_form_read.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace tmrdar {
namespace {

constexpr bool IS_DIGIT(char c) { return c >= '0' && c <= '9'; }

constexpr char LOWER(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool EQUALS_NO_CASE(std::string_view a, std::string_view lower_b) {
  return a.size() == lower_b.size() &&
         std::equal(a.begin(), a.end(), lower_b.begin(), [](char x, char y) { return LOWER(x) == y; });
}

// Cuts the field out of the text: leading blanks and tabs skipped, then up to
// the first separator. `ended_by_separator` tells whether a comma or a slash
// stands right behind the field.
std::string_view FIELD_OF(std::string_view text, bool& ended_by_separator) {
  std::size_t begin = 0;
  while (begin < text.size() && (text[begin] == ' ' || text[begin] == '\t')) ++begin;
  std::size_t end = begin;
  while (end < text.size() && text[end] != ' ' && text[end] != '\t' && text[end] != ',' &&
         text[end] != '/') {
    ++end;
  }
  ended_by_separator = end < text.size() && (text[end] == ',' || text[end] == '/');
  return text.substr(begin, end - begin);
}

}  // namespace

FREE_FORM_READ READ_FREE_FORM_INTEGER(std::string_view text, int32_t& value) {
  bool ended_by_separator = false;
  const std::string_view field = FIELD_OF(text, ended_by_separator);
  if (field.empty()) return ended_by_separator ? FREE_FORM_READ::NULL_VALUE : FREE_FORM_READ::MALFORMED;

  std::size_t i = 0;
  const bool negative = field[0] == '-';
  if (field[0] == '+' || field[0] == '-') ++i;
  if (i == field.size()) return FREE_FORM_READ::MALFORMED;
  for (std::size_t j = i; j < field.size(); ++j) {
    if (!IS_DIGIT(field[j])) return FREE_FORM_READ::MALFORMED;
  }
  // The magnitude is gathered in 64 bits and checked at every digit, so no
  // number of digits can overflow it.
  const int64_t limit = negative ? int64_t{std::numeric_limits<int32_t>::max()} + 1
                                 : int64_t{std::numeric_limits<int32_t>::max()};
  int64_t magnitude = 0;
  for (; i < field.size(); ++i) {
    magnitude = magnitude * 10 + (field[i] - '0');
    if (magnitude > limit) return FREE_FORM_READ::OUT_OF_RANGE;
  }
  value = static_cast<int32_t>(negative ? -magnitude : magnitude);
  return FREE_FORM_READ::VALUE;
}

FREE_FORM_READ READ_FREE_FORM_REAL(std::string_view text, float& value) {
  bool ended_by_separator = false;
  std::string_view field = FIELD_OF(text, ended_by_separator);
  if (field.empty()) return ended_by_separator ? FREE_FORM_READ::NULL_VALUE : FREE_FORM_READ::MALFORMED;

  const bool negative = field[0] == '-';
  if (field[0] == '+' || field[0] == '-') field.remove_prefix(1);

  if (EQUALS_NO_CASE(field, "inf") || EQUALS_NO_CASE(field, "infinity")) {
    value = negative ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
    return FREE_FORM_READ::VALUE;
  }
  if (EQUALS_NO_CASE(field, "nan")) {
    value = std::numeric_limits<float>::quiet_NaN();
    return FREE_FORM_READ::VALUE;
  }

  // The number is rewritten in the plain form that the standard conversion
  // takes: [-]digits[.digits][e[-]digits].
  std::string plain;
  plain.reserve(field.size() + 2);
  if (negative) plain.push_back('-');

  std::size_t i = 0;
  std::size_t integer_digits = 0;       // after leading zeros
  std::size_t zeros_after_point = 0;    // zeros before the first significant digit of the fraction
  bool significant = false;
  bool any_digit = false;
  for (; i < field.size() && IS_DIGIT(field[i]); ++i) {
    any_digit = true;
    if (field[i] != '0') significant = true;
    if (significant) ++integer_digits;
    plain.push_back(field[i]);
  }
  if (i < field.size() && field[i] == '.') {
    if (!any_digit) plain.push_back('0');
    plain.push_back('.');
    ++i;
    bool fraction_significant = significant;
    for (; i < field.size() && IS_DIGIT(field[i]); ++i) {
      any_digit = true;
      if (field[i] != '0') fraction_significant = true;
      if (!fraction_significant) ++zeros_after_point;
      plain.push_back(field[i]);
    }
    significant = fraction_significant;
  }
  if (!any_digit) return FREE_FORM_READ::MALFORMED;

  int64_t exponent = 0;
  if (i < field.size()) {
    const char c = LOWER(field[i]);
    if (c == 'e' || c == 'd' || c == 'q') ++i;
    else if (c != '+' && c != '-') return FREE_FORM_READ::MALFORMED;
    bool exponent_negative = false;
    if (i < field.size() && (field[i] == '+' || field[i] == '-')) {
      exponent_negative = field[i] == '-';
      ++i;
    }
    if (i == field.size()) return FREE_FORM_READ::MALFORMED;
    plain.push_back('e');
    if (exponent_negative) plain.push_back('-');
    for (; i < field.size(); ++i) {
      if (!IS_DIGIT(field[i])) return FREE_FORM_READ::MALFORMED;
      plain.push_back(field[i]);
      exponent = std::min<int64_t>(exponent * 10 + (field[i] - '0'), 1'000'000'000);
    }
    if (exponent_negative) exponent = -exponent;
  }

  float result = 0.0F;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), result);
  if (error == std::errc::result_out_of_range) {
    if (!significant) {
      result = negative ? -0.0F : 0.0F;
    } else {
      // Out of range is either far above the largest value or far below the
      // smallest; the decimal exponent of the first significant digit tells
      // which.
      const int64_t exponent_of_first_digit =
          integer_digits > 0 ? exponent + static_cast<int64_t>(std::min<std::size_t>(integer_digits, 1'000'000'000)) - 1
                             : exponent - static_cast<int64_t>(std::min<std::size_t>(zeros_after_point, 1'000'000'000)) - 1;
      if (exponent_of_first_digit >= 0) return FREE_FORM_READ::OUT_OF_RANGE;
      result = negative ? -0.0F : 0.0F;
    }
  } else if (error != std::errc{} || end != plain.data() + plain.size()) {
    return FREE_FORM_READ::MALFORMED;
  }
  value = result;
  return FREE_FORM_READ::VALUE;
}

}  // namespace tmrdar
