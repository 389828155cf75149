#include "builder/file_image.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <stdexcept>

#include "core/file/record_file.h"

namespace tmrdar::builder {
namespace {

template <typename T>
void store_little_endian(std::byte* target, T value) {
  std::array<std::byte, sizeof(T)> raw{};
  std::memcpy(raw.data(), &value, sizeof(T));
  if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
  std::memcpy(target, raw.data(), sizeof(T));
}

void check_word(int word, int words_used) {
  if (word < 1 || word + words_used - 1 > 8) throw std::out_of_range("a record has words 1 to 8");
}

}  // namespace

Record Record::ints(std::initializer_list<int32_t> words) {
  Record record;
  int word = 1;
  for (const int32_t value : words) record.integer(word++, value);
  return record;
}

Record Record::reals(std::initializer_list<float> words) {
  Record record;
  int word = 1;
  for (const float value : words) record.real(word++, value);
  return record;
}

Record Record::text(std::string_view text) { return Record().chars(0, text); }

Record& Record::integer(int word, int32_t value) {
  check_word(word, 1);
  store_little_endian(bytes_.data() + 4 * (word - 1), value);
  return *this;
}

Record& Record::real(int word, float value) {
  check_word(word, 1);
  store_little_endian(bytes_.data() + 4 * (word - 1), value);
  return *this;
}

Record& Record::real8(int first_word, double value) {
  check_word(first_word, 2);
  store_little_endian(bytes_.data() + 4 * (first_word - 1), value);
  return *this;
}

Record& Record::chars(std::size_t first_byte, std::string_view text) {
  if (first_byte + text.size() > record_bytes) throw std::out_of_range("text runs past the record");
  std::memcpy(bytes_.data() + first_byte, text.data(), text.size());
  return *this;
}

void FileImage::extend_to(int64_t records) {
  const auto bytes = static_cast<std::size_t>(records) * record_bytes;
  if (bytes_.size() < bytes) bytes_.resize(bytes);
}

void FileImage::put(int64_t r, const Record& record) {
  if (r < 0) throw std::out_of_range("records count from 0");
  extend_to(r + 1);
  std::memcpy(bytes_.data() + static_cast<std::size_t>(r) * record_bytes, record.bytes().data(), record_bytes);
}

template <typename T>
void FileImage::put_word(int64_t r, int word, T value) {
  if (r < 0) throw std::out_of_range("records count from 0");
  check_word(word, 1);
  extend_to(r + 1);
  store_little_endian(bytes_.data() + static_cast<std::size_t>(r) * record_bytes + 4 * (word - 1), value);
}

void FileImage::put_int(int64_t r, int word, int32_t value) { put_word(r, word, value); }
void FileImage::put_real(int64_t r, int word, float value) { put_word(r, word, value); }

void FileImage::put_reals(int64_t r, std::span<const float> words) {
  if (r < 0) throw std::out_of_range("records count from 0");
  const auto first = static_cast<std::size_t>(r) * record_bytes;
  const std::size_t end = first + 4 * words.size();
  if (bytes_.size() < end) bytes_.resize(end);
  std::byte* target = bytes_.data() + first;
  if constexpr (std::endian::native == std::endian::little) {
    if (!words.empty()) std::memcpy(target, words.data(), 4 * words.size());
  } else {
    for (const float word : words) {
      store_little_endian(target, word);
      target += 4;
    }
  }
}

void FileImage::truncate(std::size_t bytes) {
  if (bytes < bytes_.size()) bytes_.resize(bytes);
}

bool FileImage::write(const std::string& path) const {
  record_files::RecordFile file;
  if (!file.open(path, record_files::mode_write)) return false;
  int32_t status = 0;
  file.write_byte_array(bytes_, &status);
  file.close();
  return status == 0;
}

}  // namespace tmrdar::builder
