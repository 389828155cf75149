#include "core/text/free_form_read.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace tmrdar {
namespace {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

constexpr char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool equals_no_case(std::string_view a, std::string_view lower_b) {
  return a.size() == lower_b.size() &&
         std::equal(a.begin(), a.end(), lower_b.begin(), [](char x, char y) { return lower(x) == y; });
}

constexpr bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Cuts the value out of the text. Leading blanks are skipped, and the field
// runs up to the first blank, comma or slash. An empty field before a comma or
// a slash is a null value, and nothing at all is malformed. A field r*value
// stands for r copies of the value and r* for r null values; r is a positive
// decimal count, of any length since it is never converted. The value, when
// there is one, is left in `value_text`.
FreeFormRead value_of(std::string_view text, std::string_view& value_text) {
  std::size_t begin = 0;
  while (begin < text.size() && is_blank(text[begin])) ++begin;
  std::size_t end = begin;
  while (end < text.size() && !is_blank(text[end]) && text[end] != ',' && text[end] != '/') ++end;
  std::string_view field = text.substr(begin, end - begin);
  if (field.empty()) {
    return end < text.size() ? FreeFormRead::null_value : FreeFormRead::malformed;
  }
  const std::size_t star = field.find('*');
  if (star != std::string_view::npos) {
    const std::string_view count = field.substr(0, star);
    if (count.empty() || !std::all_of(count.begin(), count.end(), is_digit) ||
        count.find_first_not_of('0') == std::string_view::npos) {
      return FreeFormRead::malformed;
    }
    field.remove_prefix(star + 1);
    if (field.empty()) return FreeFormRead::null_value;
  }
  value_text = field;
  return FreeFormRead::value;
}

}  // namespace

FreeFormRead read_free_form_integer(std::string_view text, int32_t& value) {
  std::string_view field;
  const FreeFormRead kind = value_of(text, field);
  if (kind != FreeFormRead::value) return kind;

  std::size_t i = 0;
  const bool negative = field[0] == '-';
  if (field[0] == '+' || field[0] == '-') ++i;
  if (i == field.size()) return FreeFormRead::malformed;
  for (std::size_t j = i; j < field.size(); ++j) {
    if (!is_digit(field[j])) return FreeFormRead::malformed;
  }
  // The magnitude is gathered in 64 bits and checked at every digit, so no
  // number of digits can overflow it.
  const int64_t limit = negative ? int64_t{std::numeric_limits<int32_t>::max()} + 1
                                 : int64_t{std::numeric_limits<int32_t>::max()};
  int64_t magnitude = 0;
  for (; i < field.size(); ++i) {
    magnitude = magnitude * 10 + (field[i] - '0');
    if (magnitude > limit) return FreeFormRead::out_of_range;
  }
  value = static_cast<int32_t>(negative ? -magnitude : magnitude);
  return FreeFormRead::value;
}

FreeFormRead read_free_form_real(std::string_view text, float& value) {
  std::string_view field;
  const FreeFormRead kind = value_of(text, field);
  if (kind != FreeFormRead::value) return kind;

  const bool negative = field[0] == '-';
  if (field[0] == '+' || field[0] == '-') field.remove_prefix(1);

  if (equals_no_case(field, "inf") || equals_no_case(field, "infinity")) {
    value = negative ? -std::numeric_limits<float>::infinity() : std::numeric_limits<float>::infinity();
    return FreeFormRead::value;
  }
  // A NaN may carry characters of its own in parentheses, which are ignored.
  if (field.size() >= 3 && equals_no_case(field.substr(0, 3), "nan") &&
      (field.size() == 3 || (field[3] == '(' && field.back() == ')'))) {
    value = std::numeric_limits<float>::quiet_NaN();
    return FreeFormRead::value;
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
  for (; i < field.size() && is_digit(field[i]); ++i) {
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
    for (; i < field.size() && is_digit(field[i]); ++i) {
      any_digit = true;
      if (field[i] != '0') fraction_significant = true;
      if (!fraction_significant) ++zeros_after_point;
      plain.push_back(field[i]);
    }
    significant = fraction_significant;
  }
  if (!any_digit) return FreeFormRead::malformed;

  int64_t exponent = 0;
  if (i < field.size()) {
    const char c = lower(field[i]);
    if (c == 'e' || c == 'd' || c == 'q') ++i;
    else if (c != '+' && c != '-') return FreeFormRead::malformed;
    bool exponent_negative = false;
    if (i < field.size() && (field[i] == '+' || field[i] == '-')) {
      exponent_negative = field[i] == '-';
      ++i;
    }
    if (i == field.size()) return FreeFormRead::malformed;
    plain.push_back('e');
    if (exponent_negative) plain.push_back('-');
    for (; i < field.size(); ++i) {
      if (!is_digit(field[i])) return FreeFormRead::malformed;
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
      if (exponent_of_first_digit >= 0) return FreeFormRead::out_of_range;
      result = negative ? -0.0F : 0.0F;
    }
  } else if (error != std::errc{} || end != plain.data() + plain.size()) {
    return FreeFormRead::malformed;
  }
  value = result;
  return FreeFormRead::value;
}

}  // namespace tmrdar
