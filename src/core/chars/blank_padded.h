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
constexpr std::size_t len_trim(std::string_view s) {
  std::size_t n = s.size();
  while (n > 0 && s[n - 1] == ' ') --n;
  return n;
}

// The field without its trailing blanks.
constexpr std::string_view trim(std::string_view s) { return s.substr(0, len_trim(s)); }

// True when the field holds nothing but blanks (or nothing at all).
constexpr bool is_blank(std::string_view s) { return len_trim(s) == 0; }

// Copies a value into a fixed field: cut at the field's width, blank padded.
inline void assign_padded(std::span<char> field, std::string_view value) {
  const std::size_t n = std::min(field.size(), value.size());
  std::copy_n(value.data(), n, field.data());
  std::fill(field.begin() + static_cast<std::ptrdiff_t>(n), field.end(), ' ');
}

// A character field of N characters, blank when created.
template <std::size_t n>
class BlankPadded {
 public:
  static constexpr std::size_t width = n;

  BlankPadded() { blank(); }
  explicit BlankPadded(std::string_view value) { assign(value); }

  void blank() { chars_.fill(' '); }
  void assign(std::string_view value) { assign_padded(chars_, value); }

  std::string_view view() const { return {chars_.data(), n}; }
  std::string_view trimmed() const { return trim(view()); }
  std::span<char, n> span() { return chars_; }
  char* data() { return chars_.data(); }

  friend bool operator==(const BlankPadded&, const BlankPadded&) = default;

 private:
  std::array<char, n> chars_{};
};

}  // namespace tmrdar::chars
