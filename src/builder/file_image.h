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

inline constexpr std::size_t record_bytes = 32;

// One record's 32 bytes, set word by word (words from 1) or byte by byte.
class Record {
 public:
  Record() = default;
  // A record of integers, or of reals, in words 1, 2, ...
  static Record ints(std::initializer_list<int32_t> words);
  static Record reals(std::initializer_list<float> words);
  // A record holding text from its first byte on.
  static Record text(std::string_view text);

  Record& integer(int word, int32_t value);
  Record& real(int word, float value);
  Record& real8(int first_word, double value);  // words first_word and first_word + 1
  Record& chars(std::size_t first_byte, std::string_view text);

  const std::array<std::byte, record_bytes>& bytes() const { return bytes_; }

 private:
  std::array<std::byte, record_bytes> bytes_{};
};

class FileImage {
 public:
  // Records in the image; a last record cut short counts.
  int64_t records() const { return static_cast<int64_t>((bytes_.size() + record_bytes - 1) / record_bytes); }
  const std::vector<std::byte>& bytes() const { return bytes_; }

  // Places a record at 0-based record r, growing the image as needed.
  void put(int64_t r, const Record& record);
  // Sets one word (from 1) of 0-based record r, growing the image as needed.
  void put_int(int64_t r, int word, int32_t value);
  void put_real(int64_t r, int word, float value);
  // Sets consecutive words from word 1 of 0-based record r on, as many as
  // `words` holds, growing the image as needed.
  void put_reals(int64_t r, std::span<const float> words);
  // Grows the image with zero bytes to at least this many records.
  void extend_to(int64_t records);
  // Cuts the image to this many bytes.
  void truncate(std::size_t bytes);
  // Writes the image through the record file object; false on failure.
  bool write(const std::string& path) const;

 private:
  template <typename T>
  void put_word(int64_t r, int word, T value);

  std::vector<std::byte> bytes_;
};

}  // namespace tmrdar::builder
