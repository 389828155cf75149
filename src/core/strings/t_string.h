// The growable byte string of the core library. It holds text, and also binary
// data, which is why it reads and writes fixed-size records and base64.
//
// Positions count from 1. Any byte may be held; nothing is terminated or
// padded, and trailing blanks count. A string counts as created once its
// storage exists, even when that storage holds no byte.
//
// Growth: an operation that needs room for n bytes in all calls GROW_STRING(n),
// which makes the capacity the greater of n and twice the present capacity. A
// string created without a capacity holds 8 bytes, and appending 9 to it makes
// the capacity 16. Only RESIZE to a smaller length, and the operations that
// recreate the string (FROM_CHARS and the copies), make it smaller. The
// capacity is part of the behaviour, not a detail of the storage.
//
// Storage above the length is not cleared: bytes left there by earlier
// content, or by an insert, stay until they are overwritten. Fresh storage is
// blanks. AT_STRING1, AT_STRING2, SET_STRING, TO_INT and TO_REAL work on the
// whole storage and do not look at the length. A position outside the storage
// is never followed: AT_STRING1 gives a blank there, AT_STRING2 leaves it out
// and SET_STRING ignores it.
//
// An operation that would take the length beyond the 32-bit range, or whose
// storage cannot be allocated, leaves the string as it was.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "core/file/t_file.h"
#include "core/lists/t_int_list.h"

namespace tmrdar::MOD_STRING {

class T_STRING {
 public:
  T_STRING() = default;
  // ASSIGN_STRING_CHARS into a new string.
  explicit T_STRING(std::string_view chars);
  ~T_STRING() { FINAL_STRING(); }
  // Copies are deep and exact: see ASSIGN_STRING_STRING.
  T_STRING(const T_STRING& other);
  T_STRING& operator=(const T_STRING& other);
  T_STRING(T_STRING&& other) noexcept;
  T_STRING& operator=(T_STRING&& other) noexcept;
  // ASSIGN_STRING_CHARS.
  T_STRING& operator=(std::string_view chars);

  // Storage and state.

  // Allocates `capacity` bytes (a negative value counts as 0), destroying what
  // the string held; length 0. The status is 0, or 1 when the storage could
  // not be allocated, in which case the string is left not created.
  void CREATE_STRING(int32_t capacity = 8, int32_t* status = nullptr);
  // Frees the storage; length 0.
  void DESTROY_STRING();
  bool CREATED_STRING() const { return buffer_ != nullptr; }
  int32_t CAPACITY_STRING() const { return capacity_; }
  int32_t LENGTH_STRING() const { return length_; }
  // Length 0; the storage is kept.
  void CLEAR_STRING() { length_ = 0; }
  // Makes the capacity the greater of n and twice the present capacity, when
  // that is more than the present capacity. All stored bytes are kept. A
  // string that is not created gets storage of n bytes.
  void GROW_STRING(int32_t n);
  // n = 0 (or below) destroys the string. A longer length grows the storage
  // (always by GROW_STRING(n), even when the capacity would do) and takes
  // whatever bytes stand there. A length not longer than the present one
  // moves the first n bytes into storage of exactly n bytes.
  void RESIZE(int32_t n);

  // The used bytes.
  std::string_view VIEW() const { return {buffer_.get(), static_cast<std::size_t>(length_)}; }

  // Access by position, over the whole storage.

  char AT_STRING1(int32_t position) const;
  // The bytes first..last, as far as they lie in the storage.
  std::string AT_STRING2(int32_t first, int32_t last) const;
  // Stores the byte; the length does not change.
  void SET_STRING(int32_t position, char c);

  // Editing.

  // Removes `count` bytes from `position` on; a count that runs past the end
  // removes the rest. A position outside 1..length or a count below 1 does
  // nothing.
  void REMOVE_STRING(int32_t position, int32_t count = 1);
  // Writes the characters `count` times from `position` on, after shifting the
  // bytes from there up by count times their number, and then adds `count`
  // (not count times their number) to the length. Inserting one character is
  // thus an ordinary insert; with longer text the end of the old tail falls
  // out of the length, and stays in the storage above it. The position runs
  // from 1 to length + 1; outside that, with a count below 1 or with no
  // characters, nothing happens. A string that is not created is created.
  void INSERT_STRING(std::string_view chars, int32_t position, int32_t count = 1);
  // Creates the string when needed (capacity 8) and grows it when needed.
  void APPEND_CHARS(std::string_view chars);
  void APPEND_STRING(const T_STRING& other);
  // The decimal digits of the value, with a minus sign if negative.
  void APPEND_INT(int32_t value);
  // Sets every used byte to c.
  void FILL(char c);
  // Only the letters A to Z change.
  void TO_LOWER();
  // Keeps each byte value once, at its first position.
  void REMOVE_DUPLICATES();

  // Searching.

  // True when every used byte is a blank or a tab; an empty string is blank.
  bool IS_BLANK() const;
  // First position from `start` on holding c, or -1. A start below 1 counts
  // as 1.
  int32_t INDEX_OF(char c, int32_t start = 1) const;
  // Every position from `start` on holding c, in order; a list that is not
  // created when there is none.
  MOD_INT_LIST::T_INT_LIST INDICES_OF(char c, int32_t start = 1) const;
  bool HAS(char c) const { return INDEX_OF(c) > 0; }

  // Conversions.

  // Fills the field with blanks, then copies the used bytes into it as far
  // as they fit.
  void TO_CHARS(std::span<char> out) const;
  // Destroys the string, then creates it with a capacity of exactly `count`
  // bytes and copies `count` bytes of the characters, blanks standing in for
  // characters that are not there. A count of 0 (or below) leaves the string
  // destroyed.
  void FROM_CHARS(std::string_view chars, int32_t count);
  // One integer or real read free-form from the whole storage: blanks before
  // it are skipped, and it ends at a blank, comma or slash. `ok` is false when
  // there is no value or it is not a number of that kind; the result is then
  // 0. A null value (a leading comma or slash, or a repeat count with no
  // value) reads as 0 with `ok` true. A real too large for 32 bits fails; one
  // too small reads as zero.
  int32_t TO_INT(bool& ok) const;
  float TO_REAL(bool& ok) const;
  // Replaces the content by its base64 form (standard alphabet, "=" padding,
  // no line breaks). An empty string stays as it is.
  void TO_BASE64();
  // Replaces the content by the bytes that its base64 characters stand for.
  // Every byte outside the alphabet, padding and line ends included, is
  // skipped; bits left over at the end are dropped.
  void FROM_BASE64();

  // Fixed-size records.

  // The number of records of the used bytes, the last one perhaps short; 0
  // for a record length below 1.
  int32_t NUM_RECORDS(int32_t record_length = 32) const;
  // Record n, from 1, blank padded into the field; all blanks for a record
  // that does not exist.
  void GET_RECORD(int32_t n, std::span<char> out, int32_t record_length = 32) const;

  // Files and console.

  // Writes the used bytes to the file object when it is open, which it stays.
  // When it is not open nothing is written and the open status is 0. Status
  // values: 0 for success, 1 for failure.
  void TO_FILE(MOD_FILE::T_FILE& unit, int32_t* open_status = nullptr,
               int32_t* write_status = nullptr) const;
  // Opens the file object on the path for writing (closing it first if it was
  // open), writes the used bytes and closes it.
  void TO_FILE(MOD_FILE::T_FILE& unit, std::string_view path, int32_t* open_status = nullptr,
               int32_t* write_status = nullptr) const;
  // Opens the file object on the path for reading (closing it first if it was
  // open) and replaces the string by the file's bytes, with a capacity of
  // exactly the file's size; then closes it. When the open fails only the
  // open status is set. A file too large for a string, storage that cannot be
  // had, or a failed read gives read status 1 and leaves the string as it was.
  // A file shorter than its size at the time of the read is no failure: the
  // bytes it did not hold are blanks.
  void FROM_FILE(std::string_view path, MOD_FILE::T_FILE& unit, int32_t* open_status = nullptr,
                 int32_t* read_status = nullptr);
  // Writes the used bytes to standard output, and a line end after them when
  // `advance` is true.
  void TO_CONSOLE(bool advance = true) const;

 private:
  void FINAL_STRING() { DESTROY_STRING(); }
  bool IN_STORAGE(int32_t position) const { return position >= 1 && position <= capacity_; }
  // Creates the string when needed and grows it to hold `needed` bytes; false
  // when that is not possible.
  bool MAKE_ROOM(int64_t needed);
  // The whole storage.
  std::string_view STORAGE() const {
    return {buffer_.get(), static_cast<std::size_t>(capacity_)};
  }

  std::unique_ptr<char[]> buffer_;
  int32_t length_ = 0;
  int32_t capacity_ = 0;
};

// Comparison: equal lengths and equal bytes; trailing blanks count.
bool STRING_EQ_STRING(const T_STRING& left, const T_STRING& right);
bool STRING_EQ_CHARS(const T_STRING& left, std::string_view right);
bool CHARS_EQ_STRING(std::string_view left, const T_STRING& right);
bool STRING_NEQ_STRING(const T_STRING& left, const T_STRING& right);
bool STRING_NEQ_CHARS(const T_STRING& left, std::string_view right);
bool CHARS_NEQ_STRING(std::string_view left, const T_STRING& right);
// Equality after both sides are lower-cased (letters A to Z only).
bool STRING_CIC_STRING(const T_STRING& left, const T_STRING& right);
bool STRING_CIC_CHARS(const T_STRING& left, std::string_view right);

// A deep copy of the used bytes, in storage of exactly their number; a source
// with no used byte leaves the target destroyed.
void ASSIGN_STRING_STRING(T_STRING& target, const T_STRING& source);
void ASSIGN_STRING_CHARS(T_STRING& target, std::string_view chars);
// Into a fixed field: blank padded, cut at the field's width.
void ASSIGN_CHARS_STRING(std::span<char> target, const T_STRING& source);

// A new string: a copy of the left side with the right side appended.
T_STRING STRING_PLUS_STRING(const T_STRING& left, const T_STRING& right);
T_STRING STRING_PLUS_CHARS(const T_STRING& left, std::string_view right);

inline bool operator==(const T_STRING& left, const T_STRING& right) {
  return STRING_EQ_STRING(left, right);
}
inline bool operator==(const T_STRING& left, std::string_view right) {
  return STRING_EQ_CHARS(left, right);
}
inline T_STRING operator+(const T_STRING& left, const T_STRING& right) {
  return STRING_PLUS_STRING(left, right);
}
inline T_STRING operator+(const T_STRING& left, std::string_view right) {
  return STRING_PLUS_CHARS(left, right);
}

}  // namespace tmrdar::MOD_STRING
