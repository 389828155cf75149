#include "core/strings/string.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <utility>

namespace tmrdar::strings {
namespace {

constexpr int64_t max_bytes = std::numeric_limits<int32_t>::max();

// Storage of n bytes, all blanks; null when it cannot be had.
std::unique_ptr<char[]> allocate(int32_t n) {
  std::unique_ptr<char[]> storage(new (std::nothrow) char[static_cast<std::size_t>(n)]);
  if (storage != nullptr) std::fill_n(storage.get(), n, ' ');
  return storage;
}

constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

String::String(std::string_view chars) { assign_string_chars(*this, chars); }

String::String(const String& other) { assign_string_string(*this, other); }

String& String::operator=(const String& other) {
  assign_string_string(*this, other);
  return *this;
}

String::String(String&& other) noexcept
    : buffer_(std::move(other.buffer_)),
      length_(std::exchange(other.length_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

String& String::operator=(String&& other) noexcept {
  if (this != &other) {
    buffer_ = std::move(other.buffer_);
    length_ = std::exchange(other.length_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
  }
  return *this;
}

String& String::operator=(std::string_view chars) {
  assign_string_chars(*this, chars);
  return *this;
}

void String::create_string(int32_t capacity, int32_t* status) {
  if (created_string()) destroy_string();
  const int32_t size = std::max(capacity, int32_t{0});
  buffer_ = allocate(size);
  capacity_ = created_string() ? size : 0;
  length_ = 0;
  if (status != nullptr) *status = created_string() ? 0 : 1;
}

void String::destroy_string() {
  buffer_.reset();
  capacity_ = 0;
  clear_string();
}

void String::grow_string(int32_t n) {
  const int64_t wanted = std::max<int64_t>(n, int64_t{2} * capacity_);
  const auto new_capacity = static_cast<int32_t>(std::min(wanted, max_bytes));
  if (new_capacity <= capacity_) return;
  auto fresh = allocate(new_capacity);
  if (fresh == nullptr) return;
  std::copy_n(buffer_.get(), capacity_, fresh.get());
  buffer_ = std::move(fresh);
  capacity_ = new_capacity;
}

bool String::make_room(int64_t needed) {
  if (needed > max_bytes) return false;
  if (!created_string()) create_string();
  if (needed > capacity_) grow_string(static_cast<int32_t>(needed));
  return created_string() && needed <= capacity_;
}

void String::resize(int32_t n) {
  if (n <= 0) {
    destroy_string();
    return;
  }
  if (!created_string()) create_string();
  if (n > length_) {
    grow_string(n);
    if (n <= capacity_) length_ = n;
    return;
  }
  auto fresh = allocate(n);
  if (fresh == nullptr) return;
  std::copy_n(buffer_.get(), n, fresh.get());
  buffer_ = std::move(fresh);
  capacity_ = n;
  length_ = n;
}

char String::at_string1(int32_t position) const {
  return in_storage(position) ? buffer_[position - 1] : ' ';
}

std::string String::at_string2(int32_t first, int32_t last) const {
  const int32_t from = std::max(first, int32_t{1});
  const int32_t to = std::min(last, capacity_);
  if (from > to) return {};
  return std::string(storage().substr(static_cast<std::size_t>(from - 1),
                                      static_cast<std::size_t>(to - from + 1)));
}

void String::set_string(int32_t position, char c) {
  if (in_storage(position)) buffer_[position - 1] = c;
}

void String::remove_string(int32_t position, int32_t count) {
  if (position < 1 || position > length_ || count < 1) return;
  const int32_t removed = std::min(count, length_ - position + 1);
  char* const at = buffer_.get() + (position - 1);
  std::memmove(at, at + removed, static_cast<std::size_t>(length_ - (position - 1) - removed));
  length_ -= removed;
}

void String::insert_string(std::string_view chars, int32_t position, int32_t count) {
  if (position < 1 || position > int64_t{length_} + 1 || count < 1 || chars.empty()) return;
  const int64_t width = static_cast<int64_t>(chars.size()) * count;
  if (static_cast<int64_t>(chars.size()) > max_bytes || width > max_bytes) return;
  // The characters may be part of this string, which the growth moves.
  const std::string piece(chars);
  if (!make_room(length_ + width)) return;
  char* const at = buffer_.get() + (position - 1);
  std::memmove(at + width, at, static_cast<std::size_t>(length_ - (position - 1)));
  for (int32_t k = 0; k < count; ++k) std::memcpy(at + k * piece.size(), piece.data(), piece.size());
  length_ += count;
}

void String::append_chars(std::string_view chars) {
  const int64_t needed = length_ + static_cast<int64_t>(chars.size());
  // The characters may be part of this string, which the growth moves.
  const std::less<const char*> before;
  const bool inside = created_string() && !chars.empty() && !before(chars.data(), buffer_.get()) &&
                      before(chars.data(), buffer_.get() + capacity_);
  if (inside && needed > capacity_) {
    const std::string piece(chars);
    append_chars(piece);
    return;
  }
  if (!make_room(needed)) return;
  std::copy(chars.begin(), chars.end(), buffer_.get() + length_);
  length_ = static_cast<int32_t>(needed);
}

void String::append_string(const String& other) { append_chars(other.view()); }

void String::append_int(int32_t value) {
  char field[25];
  const auto result = std::to_chars(field, field + sizeof field, value);
  append_chars(std::string_view(field, static_cast<std::size_t>(result.ptr - field)));
}

void String::fill(char c) { std::fill_n(buffer_.get(), length_, c); }

void String::to_lower() {
  for (int32_t i = 0; i < length_; ++i) buffer_[i] = lower(buffer_[i]);
}

void String::remove_duplicates() {
  for (int32_t i = length_; i >= 2; --i) {
    for (int32_t j = i - 1; j >= 1; --j) {
      if (buffer_[j - 1] == buffer_[i - 1]) {
        remove_string(i);
        break;
      }
    }
  }
}

bool String::is_blank() const {
  const std::string_view used = view();
  return std::all_of(used.begin(), used.end(), [](char c) { return c == ' ' || c == '\t'; });
}

int32_t String::index_of(char c, int32_t start) const {
  for (int32_t i = std::max(start, int32_t{1}) - 1; i < length_; ++i) {
    if (buffer_[i] == c) return i + 1;
  }
  return -1;
}

int_lists::IntList String::indices_of(char c, int32_t start) const {
  int_lists::IntList positions;
  for (int32_t i = index_of(c, start); i > 0; i = i < length_ ? index_of(c, i + 1) : -1) {
    positions.append_data(i);
  }
  return positions;
}

void String::to_chars(std::span<char> out) const {
  std::fill(out.begin(), out.end(), ' ');
  const std::size_t n = std::min(out.size(), view().size());
  std::copy_n(view().begin(), n, out.begin());
}

void String::from_chars(std::string_view chars, int32_t count) {
  // The characters may be part of this string, which is destroyed first.
  const std::string piece(chars.substr(0, static_cast<std::size_t>(std::max(count, int32_t{0}))));
  destroy_string();
  if (count <= 0) return;
  create_string(count);
  if (!created_string()) return;
  std::copy(piece.begin(), piece.end(), buffer_.get());
  length_ = count;
}

bool string_eq_string(const String& left, const String& right) {
  return left.view() == right.view();
}
bool string_eq_chars(const String& left, std::string_view right) {
  return string_eq_string(left, String(right));
}
bool chars_eq_string(std::string_view left, const String& right) {
  return string_eq_string(String(left), right);
}
bool string_neq_string(const String& left, const String& right) {
  return !string_eq_string(left, right);
}
bool string_neq_chars(const String& left, std::string_view right) {
  return !string_eq_chars(left, right);
}
bool chars_neq_string(std::string_view left, const String& right) {
  return !chars_eq_string(left, right);
}

bool string_cic_string(const String& left, const String& right) {
  String a(left);
  String b(right);
  a.to_lower();
  b.to_lower();
  return string_eq_string(a, b);
}
bool string_cic_chars(const String& left, std::string_view right) {
  return string_cic_string(left, String(right));
}

void assign_string_string(String& target, const String& source) {
  if (&target == &source) return;
  target.from_chars(source.view(), source.length_string());
}

void assign_string_chars(String& target, std::string_view chars) {
  if (static_cast<int64_t>(chars.size()) > max_bytes) return;
  target.from_chars(chars, static_cast<int32_t>(chars.size()));
}

void assign_chars_string(std::span<char> target, const String& source) {
  source.to_chars(target);
}

String string_plus_string(const String& left, const String& right) {
  String result(left);
  result.append_string(right);
  return result;
}

String string_plus_chars(const String& left, std::string_view right) {
  String result(left);
  result.append_chars(right);
  return result;
}

}  // namespace tmrdar::strings
