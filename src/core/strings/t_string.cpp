#include "core/strings/t_string.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <utility>

namespace tmrdar::MOD_STRING {
namespace {

constexpr int64_t MAX_BYTES = std::numeric_limits<int32_t>::max();

// Storage of n bytes, all blanks; null when it cannot be had.
std::unique_ptr<char[]> ALLOCATE(int32_t n) {
  std::unique_ptr<char[]> storage(new (std::nothrow) char[static_cast<std::size_t>(n)]);
  if (storage != nullptr) std::fill_n(storage.get(), n, ' ');
  return storage;
}

constexpr char LOWER(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

T_STRING::T_STRING(std::string_view chars) { ASSIGN_STRING_CHARS(*this, chars); }

T_STRING::T_STRING(const T_STRING& other) { ASSIGN_STRING_STRING(*this, other); }

T_STRING& T_STRING::operator=(const T_STRING& other) {
  ASSIGN_STRING_STRING(*this, other);
  return *this;
}

T_STRING::T_STRING(T_STRING&& other) noexcept
    : buffer_(std::move(other.buffer_)),
      length_(std::exchange(other.length_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

T_STRING& T_STRING::operator=(T_STRING&& other) noexcept {
  if (this != &other) {
    buffer_ = std::move(other.buffer_);
    length_ = std::exchange(other.length_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
  }
  return *this;
}

T_STRING& T_STRING::operator=(std::string_view chars) {
  ASSIGN_STRING_CHARS(*this, chars);
  return *this;
}

void T_STRING::CREATE_STRING(int32_t capacity, int32_t* status) {
  if (CREATED_STRING()) DESTROY_STRING();
  const int32_t size = std::max(capacity, int32_t{0});
  buffer_ = ALLOCATE(size);
  capacity_ = CREATED_STRING() ? size : 0;
  length_ = 0;
  if (status != nullptr) *status = CREATED_STRING() ? 0 : 1;
}

void T_STRING::DESTROY_STRING() {
  buffer_.reset();
  capacity_ = 0;
  CLEAR_STRING();
}

void T_STRING::GROW_STRING(int32_t n) {
  const int64_t wanted = std::max<int64_t>(n, int64_t{2} * capacity_);
  const auto new_capacity = static_cast<int32_t>(std::min(wanted, MAX_BYTES));
  if (new_capacity <= capacity_) return;
  auto fresh = ALLOCATE(new_capacity);
  if (fresh == nullptr) return;
  std::copy_n(buffer_.get(), capacity_, fresh.get());
  buffer_ = std::move(fresh);
  capacity_ = new_capacity;
}

bool T_STRING::MAKE_ROOM(int64_t needed) {
  if (needed > MAX_BYTES) return false;
  if (!CREATED_STRING()) CREATE_STRING();
  if (needed > capacity_) GROW_STRING(static_cast<int32_t>(needed));
  return CREATED_STRING() && needed <= capacity_;
}

void T_STRING::RESIZE(int32_t n) {
  if (n <= 0) {
    DESTROY_STRING();
    return;
  }
  if (!CREATED_STRING()) CREATE_STRING();
  if (n > length_) {
    GROW_STRING(n);
    if (n <= capacity_) length_ = n;
    return;
  }
  auto fresh = ALLOCATE(n);
  if (fresh == nullptr) return;
  std::copy_n(buffer_.get(), n, fresh.get());
  buffer_ = std::move(fresh);
  capacity_ = n;
  length_ = n;
}

char T_STRING::AT_STRING1(int32_t position) const {
  return IN_STORAGE(position) ? buffer_[position - 1] : ' ';
}

std::string T_STRING::AT_STRING2(int32_t first, int32_t last) const {
  const int32_t from = std::max(first, int32_t{1});
  const int32_t to = std::min(last, capacity_);
  if (from > to) return {};
  return std::string(STORAGE().substr(static_cast<std::size_t>(from - 1),
                                      static_cast<std::size_t>(to - from + 1)));
}

void T_STRING::SET_STRING(int32_t position, char c) {
  if (IN_STORAGE(position)) buffer_[position - 1] = c;
}

void T_STRING::REMOVE_STRING(int32_t position, int32_t count) {
  if (position < 1 || position > length_ || count < 1) return;
  const int32_t removed = std::min(count, length_ - position + 1);
  char* const at = buffer_.get() + (position - 1);
  std::memmove(at, at + removed, static_cast<std::size_t>(length_ - (position - 1) - removed));
  length_ -= removed;
}

void T_STRING::INSERT_STRING(std::string_view chars, int32_t position, int32_t count) {
  if (position < 1 || position > int64_t{length_} + 1 || count < 1 || chars.empty()) return;
  const int64_t width = static_cast<int64_t>(chars.size()) * count;
  if (static_cast<int64_t>(chars.size()) > MAX_BYTES || width > MAX_BYTES) return;
  // The characters may be part of this string, which the growth moves.
  const std::string piece(chars);
  if (!MAKE_ROOM(length_ + width)) return;
  char* const at = buffer_.get() + (position - 1);
  std::memmove(at + width, at, static_cast<std::size_t>(length_ - (position - 1)));
  for (int32_t k = 0; k < count; ++k) std::memcpy(at + k * piece.size(), piece.data(), piece.size());
  length_ += count;
}

void T_STRING::APPEND_CHARS(std::string_view chars) {
  const int64_t needed = length_ + static_cast<int64_t>(chars.size());
  // The characters may be part of this string, which the growth moves.
  const std::less<const char*> before;
  const bool inside = CREATED_STRING() && !chars.empty() && !before(chars.data(), buffer_.get()) &&
                      before(chars.data(), buffer_.get() + capacity_);
  if (inside && needed > capacity_) {
    const std::string piece(chars);
    APPEND_CHARS(piece);
    return;
  }
  if (!MAKE_ROOM(needed)) return;
  std::copy(chars.begin(), chars.end(), buffer_.get() + length_);
  length_ = static_cast<int32_t>(needed);
}

void T_STRING::APPEND_STRING(const T_STRING& other) { APPEND_CHARS(other.VIEW()); }

void T_STRING::APPEND_INT(int32_t value) {
  char field[25];
  const auto result = std::to_chars(field, field + sizeof field, value);
  APPEND_CHARS(std::string_view(field, static_cast<std::size_t>(result.ptr - field)));
}

void T_STRING::FILL(char c) { std::fill_n(buffer_.get(), length_, c); }

void T_STRING::TO_LOWER() {
  for (int32_t i = 0; i < length_; ++i) buffer_[i] = LOWER(buffer_[i]);
}

void T_STRING::REMOVE_DUPLICATES() {
  for (int32_t i = length_; i >= 2; --i) {
    for (int32_t j = i - 1; j >= 1; --j) {
      if (buffer_[j - 1] == buffer_[i - 1]) {
        REMOVE_STRING(i);
        break;
      }
    }
  }
}

bool T_STRING::IS_BLANK() const {
  const std::string_view used = VIEW();
  return std::all_of(used.begin(), used.end(), [](char c) { return c == ' ' || c == '\t'; });
}

int32_t T_STRING::INDEX_OF(char c, int32_t start) const {
  for (int32_t i = std::max(start, int32_t{1}) - 1; i < length_; ++i) {
    if (buffer_[i] == c) return i + 1;
  }
  return -1;
}

MOD_INT_LIST::T_INT_LIST T_STRING::INDICES_OF(char c, int32_t start) const {
  MOD_INT_LIST::T_INT_LIST positions;
  for (int32_t i = INDEX_OF(c, start); i > 0; i = i < length_ ? INDEX_OF(c, i + 1) : -1) {
    positions.APPEND_DATA(i);
  }
  return positions;
}

void T_STRING::TO_CHARS(std::span<char> out) const {
  std::fill(out.begin(), out.end(), ' ');
  const std::size_t n = std::min(out.size(), VIEW().size());
  std::copy_n(VIEW().begin(), n, out.begin());
}

void T_STRING::FROM_CHARS(std::string_view chars, int32_t count) {
  // The characters may be part of this string, which is destroyed first.
  const std::string piece(chars.substr(0, static_cast<std::size_t>(std::max(count, int32_t{0}))));
  DESTROY_STRING();
  if (count <= 0) return;
  CREATE_STRING(count);
  if (!CREATED_STRING()) return;
  std::copy(piece.begin(), piece.end(), buffer_.get());
  length_ = count;
}

bool STRING_EQ_STRING(const T_STRING& left, const T_STRING& right) {
  return left.VIEW() == right.VIEW();
}
bool STRING_EQ_CHARS(const T_STRING& left, std::string_view right) {
  return STRING_EQ_STRING(left, T_STRING(right));
}
bool CHARS_EQ_STRING(std::string_view left, const T_STRING& right) {
  return STRING_EQ_STRING(T_STRING(left), right);
}
bool STRING_NEQ_STRING(const T_STRING& left, const T_STRING& right) {
  return !STRING_EQ_STRING(left, right);
}
bool STRING_NEQ_CHARS(const T_STRING& left, std::string_view right) {
  return !STRING_EQ_CHARS(left, right);
}
bool CHARS_NEQ_STRING(std::string_view left, const T_STRING& right) {
  return !CHARS_EQ_STRING(left, right);
}

bool STRING_CIC_STRING(const T_STRING& left, const T_STRING& right) {
  T_STRING a(left);
  T_STRING b(right);
  a.TO_LOWER();
  b.TO_LOWER();
  return STRING_EQ_STRING(a, b);
}
bool STRING_CIC_CHARS(const T_STRING& left, std::string_view right) {
  return STRING_CIC_STRING(left, T_STRING(right));
}

void ASSIGN_STRING_STRING(T_STRING& target, const T_STRING& source) {
  if (&target == &source) return;
  target.FROM_CHARS(source.VIEW(), source.LENGTH_STRING());
}

void ASSIGN_STRING_CHARS(T_STRING& target, std::string_view chars) {
  if (static_cast<int64_t>(chars.size()) > MAX_BYTES) return;
  target.FROM_CHARS(chars, static_cast<int32_t>(chars.size()));
}

void ASSIGN_CHARS_STRING(std::span<char> target, const T_STRING& source) {
  source.TO_CHARS(target);
}

T_STRING STRING_PLUS_STRING(const T_STRING& left, const T_STRING& right) {
  T_STRING result(left);
  result.APPEND_STRING(right);
  return result;
}

T_STRING STRING_PLUS_CHARS(const T_STRING& left, std::string_view right) {
  T_STRING result(left);
  result.APPEND_CHARS(right);
  return result;
}

}  // namespace tmrdar::MOD_STRING
