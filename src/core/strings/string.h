// The growable byte string of the core library. It holds text, and also binary
// data, which is why it reads and writes fixed-size records and base64.
//
// Positions count from 1. Any byte may be held; nothing is terminated or
// padded, and trailing blanks count. A string counts as created once its
// storage exists, even when that storage holds no byte.
//
// Growth: an operation that needs room for n bytes in all calls grow_string(n),
// which makes the capacity the greater of n and twice the present capacity. A
// string created without a capacity holds 8 bytes, and appending 9 to it makes
// the capacity 16. Only resize to a smaller length, and the operations that
// recreate the string (from_chars and the copies), make it smaller. The
// capacity is part of the behaviour, not a detail of the storage.
//
// Storage above the length is not cleared: bytes left there by earlier
// content, or by an insert, stay until they are overwritten. Fresh storage is
// blanks. at_string1, at_string2, set_string, to_int and to_real work on the
// whole storage and do not look at the length. A position outside the storage
// is never followed: at_string1 gives a blank there, at_string2 leaves it out
// and set_string ignores it.
//
// An operation that would take the length beyond the 32-bit range, or whose
// storage cannot be allocated, leaves the string as it was.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "core/file/record_file.h"
#include "core/lists/int_list.h"

namespace tmrdar::strings {

class String {
 public:
  String() = default;
  // assign_string_chars into a new string.
  explicit String(std::string_view chars);
  ~String() { final_string(); }
  // Copies are deep and exact: see assign_string_string.
  String(const String& other);
  String& operator=(const String& other);
  String(String&& other) noexcept;
  String& operator=(String&& other) noexcept;
  // assign_string_chars.
  String& operator=(std::string_view chars);

  // Storage and state.

  // Allocates `capacity` bytes (a negative value counts as 0), destroying what
  // the string held; length 0. The status is 0, or 1 when the storage could
  // not be allocated, in which case the string is left not created.
  void create_string(int32_t capacity = 8, int32_t* status = nullptr);
  // Frees the storage; length 0.
  void destroy_string();
  bool created_string() const { return buffer_ != nullptr; }
  int32_t capacity_string() const { return capacity_; }
  int32_t length_string() const { return length_; }
  // Length 0; the storage is kept.
  void clear_string() { length_ = 0; }
  // Makes the capacity the greater of n and twice the present capacity, when
  // that is more than the present capacity. All stored bytes are kept. A
  // string that is not created gets storage of n bytes.
  void grow_string(int32_t n);
  // n = 0 (or below) destroys the string. A longer length grows the storage
  // (always by grow_string(n), even when the capacity would do) and takes
  // whatever bytes stand there. A length not longer than the present one
  // moves the first n bytes into storage of exactly n bytes.
  void resize(int32_t n);

  // The used bytes.
  std::string_view view() const { return {buffer_.get(), static_cast<std::size_t>(length_)}; }

  // Access by position, over the whole storage.

  char at_string1(int32_t position) const;
  // The bytes first..last, as far as they lie in the storage.
  std::string at_string2(int32_t first, int32_t last) const;
  // Stores the byte; the length does not change.
  void set_string(int32_t position, char c);

  // Editing.

  // Removes `count` bytes from `position` on; a count that runs past the end
  // removes the rest. A position outside 1..length or a count below 1 does
  // nothing.
  void remove_string(int32_t position, int32_t count = 1);
  // Writes the characters `count` times from `position` on, after shifting the
  // bytes from there up by count times their number, and then adds `count`
  // (not count times their number) to the length. Inserting one character is
  // thus an ordinary insert; with longer text the end of the old tail falls
  // out of the length, and stays in the storage above it. The position runs
  // from 1 to length + 1; outside that, with a count below 1 or with no
  // characters, nothing happens. A string that is not created is created.
  void insert_string(std::string_view chars, int32_t position, int32_t count = 1);
  // Creates the string when needed (capacity 8) and grows it when needed.
  void append_chars(std::string_view chars);
  void append_string(const String& other);
  // The decimal digits of the value, with a minus sign if negative.
  void append_int(int32_t value);
  // Sets every used byte to c.
  void fill(char c);
  // Only the letters A to Z change.
  void to_lower();
  // Keeps each byte value once, at its first position.
  void remove_duplicates();

  // Searching.

  // True when every used byte is a blank or a tab; an empty string is blank.
  bool is_blank() const;
  // First position from `start` on holding c, or -1. A start below 1 counts
  // as 1.
  int32_t index_of(char c, int32_t start = 1) const;
  // Every position from `start` on holding c, in order; a list that is not
  // created when there is none.
  int_lists::IntList indices_of(char c, int32_t start = 1) const;
  bool has(char c) const { return index_of(c) > 0; }

  // Conversions.

  // Fills the field with blanks, then copies the used bytes into it as far
  // as they fit.
  void to_chars(std::span<char> out) const;
  // Destroys the string, then creates it with a capacity of exactly `count`
  // bytes and copies `count` bytes of the characters, blanks standing in for
  // characters that are not there. A count of 0 (or below) leaves the string
  // destroyed.
  void from_chars(std::string_view chars, int32_t count);
  // One integer or real read free-form from the whole storage: blanks before
  // it are skipped, and it ends at a blank, comma or slash. `ok` is false when
  // there is no value or it is not a number of that kind; the result is then
  // 0. A null value (a leading comma or slash, or a repeat count with no
  // value) reads as 0 with `ok` true. A real too large for 32 bits fails; one
  // too small reads as zero.
  int32_t to_int(bool& ok) const;
  float to_real(bool& ok) const;
  // Replaces the content by its base64 form (standard alphabet, "=" padding,
  // no line breaks). An empty string stays as it is.
  void to_base64();
  // Replaces the content by the bytes that its base64 characters stand for.
  // Every byte outside the alphabet, padding and line ends included, is
  // skipped; bits left over at the end are dropped.
  void from_base64();

  // Fixed-size records.

  // The number of records of the used bytes, the last one perhaps short; 0
  // for a record length below 1.
  int32_t num_records(int32_t record_length = 32) const;
  // Record n, from 1, blank padded into the field; all blanks for a record
  // that does not exist.
  void get_record(int32_t n, std::span<char> out, int32_t record_length = 32) const;

  // Files and console.

  // Writes the used bytes to the file object when it is open, which it stays.
  // When it is not open nothing is written and the open status is 0. Status
  // values: 0 for success, 1 for failure.
  void to_file(record_files::RecordFile& unit, int32_t* open_status = nullptr,
               int32_t* write_status = nullptr) const;
  // Opens the file object on the path for writing (closing it first if it was
  // open), writes the used bytes and closes it.
  void to_file(record_files::RecordFile& unit, std::string_view path, int32_t* open_status = nullptr,
               int32_t* write_status = nullptr) const;
  // Opens the file object on the path for reading (closing it first if it was
  // open) and replaces the string by the file's bytes, with a capacity of
  // exactly the file's size; then closes it. When the open fails only the
  // open status is set. A file too large for a string, storage that cannot be
  // had, or a failed read gives read status 1 and leaves the string as it was.
  // A file shorter than its size at the time of the read is no failure: the
  // bytes it did not hold are blanks.
  void from_file(std::string_view path, record_files::RecordFile& unit, int32_t* open_status = nullptr,
                 int32_t* read_status = nullptr);
  // Writes the used bytes to standard output, and a line end after them when
  // `advance` is true.
  void to_console(bool advance = true) const;

 private:
  void final_string() { destroy_string(); }
  bool in_storage(int32_t position) const { return position >= 1 && position <= capacity_; }
  // Creates the string when needed and grows it to hold `needed` bytes; false
  // when that is not possible.
  bool make_room(int64_t needed);
  // The whole storage.
  std::string_view storage() const {
    return {buffer_.get(), static_cast<std::size_t>(capacity_)};
  }

  std::unique_ptr<char[]> buffer_;
  int32_t length_ = 0;
  int32_t capacity_ = 0;
};

// Comparison: equal lengths and equal bytes; trailing blanks count.
bool string_eq_string(const String& left, const String& right);
bool string_eq_chars(const String& left, std::string_view right);
bool chars_eq_string(std::string_view left, const String& right);
bool string_neq_string(const String& left, const String& right);
bool string_neq_chars(const String& left, std::string_view right);
bool chars_neq_string(std::string_view left, const String& right);
// Equality after both sides are lower-cased (letters A to Z only).
bool string_cic_string(const String& left, const String& right);
bool string_cic_chars(const String& left, std::string_view right);

// A deep copy of the used bytes, in storage of exactly their number; a source
// with no used byte leaves the target destroyed.
void assign_string_string(String& target, const String& source);
void assign_string_chars(String& target, std::string_view chars);
// Into a fixed field: blank padded, cut at the field's width.
void assign_chars_string(std::span<char> target, const String& source);

// A new string: a copy of the left side with the right side appended.
String string_plus_string(const String& left, const String& right);
String string_plus_chars(const String& left, std::string_view right);

inline bool operator==(const String& left, const String& right) {
  return string_eq_string(left, right);
}
inline bool operator==(const String& left, std::string_view right) {
  return string_eq_chars(left, right);
}
inline String operator+(const String& left, const String& right) {
  return string_plus_string(left, right);
}
inline String operator+(const String& left, std::string_view right) {
  return string_plus_chars(left, right);
}

}  // namespace tmrdar::strings
