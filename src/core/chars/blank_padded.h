// Fixed-length, blank-padded character fields and their trimming rules.
//
// The database formats store names and titles in fields of a fixed width,
// padded on the right with blanks; trailing blanks carry no meaning.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tmrdar::chars {

// Length of a field without its trailing blanks.
constexpr std::size_t LEN_TRIM(std::string_view s) {
  std::size_t n = s.size();
  while (n > 0 && s[n - 1] == ' ') --n;
  return n;
}

// The field without its trailing blanks.
constexpr std::string_view TRIM(std::string_view s) { return s.substr(0, LEN_TRIM(s)); }

// True when the field holds nothing but blanks (or nothing at all).
constexpr bool IS_BLANK(std::string_view s) { return LEN_TRIM(s) == 0; }

// Copies a value into a fixed field: cut at the field's width, blank padded.
inline void ASSIGN_PADDED(std::span<char> field, std::string_view value) {
  const std::size_t n = std::min(field.size(), value.size());
  std::copy_n(value.data(), n, field.data());
  std::fill(field.begin() + static_cast<std::ptrdiff_t>(n), field.end(), ' ');
}

// A character field of N characters, blank when created.
template <std::size_t N>
class BLANK_PADDED {
 public:
  static constexpr std::size_t WIDTH = N;

  BLANK_PADDED() { BLANK(); }
  explicit BLANK_PADDED(std::string_view value) { ASSIGN(value); }

  void BLANK() { chars_.fill(' '); }
  void ASSIGN(std::string_view value) { ASSIGN_PADDED(chars_, value); }

  std::string_view VIEW() const { return {chars_.data(), N}; }
  std::string_view TRIMMED() const { return TRIM(VIEW()); }
  std::span<char, N> SPAN() { return chars_; }
  char* DATA() { return chars_.data(); }

  friend bool operator==(const BLANK_PADDED&, const BLANK_PADDED&) = default;

 private:
  std::array<char, N> chars_{};
};

}  // namespace tmrdar::chars
