// A database file under construction: a byte image addressed by records of
// eight 4-byte words, counted from 0, as the layout counts them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tmrdar::builder {

inline constexpr std::size_t RECORD_BYTES = 32;

// One record's 32 bytes, set word by word (words from 1) or byte by byte.
class RECORD {
 public:
  RECORD() = default;
  // A record of integers, or of reals, in words 1, 2, ...
  static RECORD INTS(std::initializer_list<int32_t> words);
  static RECORD REALS(std::initializer_list<float> words);
  // A record holding text from its first byte on.
  static RECORD TEXT(std::string_view text);

  RECORD& INT(int word, int32_t value);
  RECORD& REAL(int word, float value);
  RECORD& REAL8(int first_word, double value);  // words first_word and first_word + 1
  RECORD& CHARS(std::size_t first_byte, std::string_view text);

  const std::array<std::byte, RECORD_BYTES>& BYTES() const { return bytes_; }

 private:
  std::array<std::byte, RECORD_BYTES> bytes_{};
};

class FILE_IMAGE {
 public:
  // Records in the image; a last record cut short counts.
  int64_t RECORDS() const { return static_cast<int64_t>((bytes_.size() + RECORD_BYTES - 1) / RECORD_BYTES); }
  const std::vector<std::byte>& BYTES() const { return bytes_; }

  // Places a record at 0-based record r, growing the image as needed.
  void PUT(int64_t r, const RECORD& record);
  // Sets one word (from 1) of 0-based record r, growing the image as needed.
  void PUT_INT(int64_t r, int word, int32_t value);
  void PUT_REAL(int64_t r, int word, float value);
  // Sets consecutive words from word 1 of 0-based record r on, as many as
  // `words` holds, growing the image as needed.
  void PUT_REALS(int64_t r, std::span<const float> words);
  // Grows the image with zero bytes to at least this many records.
  void EXTEND_TO(int64_t records);
  // Cuts the image to this many bytes.
  void TRUNCATE(std::size_t bytes);
  // Writes the image through the record file object; false on failure.
  bool WRITE(const std::string& path) const;

 private:
  template <typename T>
  void PUT_WORD(int64_t r, int word, T value);

  std::vector<std::byte> bytes_;
};

}  // namespace tmrdar::builder
