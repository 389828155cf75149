#include "builder/file_image.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <stdexcept>

#include "core/file/t_file.h"

namespace tmrdar::builder {
namespace {

template <typename T>
void STORE_LITTLE_ENDIAN(std::byte* target, T value) {
  std::array<std::byte, sizeof(T)> raw{};
  std::memcpy(raw.data(), &value, sizeof(T));
  if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
  std::memcpy(target, raw.data(), sizeof(T));
}

void CHECK_WORD(int word, int words_used) {
  if (word < 1 || word + words_used - 1 > 8) throw std::out_of_range("a record has words 1 to 8");
}

}  // namespace

RECORD RECORD::INTS(std::initializer_list<int32_t> words) {
  RECORD record;
  int word = 1;
  for (const int32_t value : words) record.INT(word++, value);
  return record;
}

RECORD RECORD::REALS(std::initializer_list<float> words) {
  RECORD record;
  int word = 1;
  for (const float value : words) record.REAL(word++, value);
  return record;
}

RECORD RECORD::TEXT(std::string_view text) { return RECORD().CHARS(0, text); }

RECORD& RECORD::INT(int word, int32_t value) {
  CHECK_WORD(word, 1);
  STORE_LITTLE_ENDIAN(bytes_.data() + 4 * (word - 1), value);
  return *this;
}

RECORD& RECORD::REAL(int word, float value) {
  CHECK_WORD(word, 1);
  STORE_LITTLE_ENDIAN(bytes_.data() + 4 * (word - 1), value);
  return *this;
}

RECORD& RECORD::REAL8(int first_word, double value) {
  CHECK_WORD(first_word, 2);
  STORE_LITTLE_ENDIAN(bytes_.data() + 4 * (first_word - 1), value);
  return *this;
}

RECORD& RECORD::CHARS(std::size_t first_byte, std::string_view text) {
  if (first_byte + text.size() > RECORD_BYTES) throw std::out_of_range("text runs past the record");
  std::memcpy(bytes_.data() + first_byte, text.data(), text.size());
  return *this;
}

void FILE_IMAGE::EXTEND_TO(int64_t records) {
  const auto bytes = static_cast<std::size_t>(records) * RECORD_BYTES;
  if (bytes_.size() < bytes) bytes_.resize(bytes);
}

void FILE_IMAGE::PUT(int64_t r, const RECORD& record) {
  if (r < 0) throw std::out_of_range("records count from 0");
  EXTEND_TO(r + 1);
  std::memcpy(bytes_.data() + static_cast<std::size_t>(r) * RECORD_BYTES, record.BYTES().data(), RECORD_BYTES);
}

template <typename T>
void FILE_IMAGE::PUT_WORD(int64_t r, int word, T value) {
  if (r < 0) throw std::out_of_range("records count from 0");
  CHECK_WORD(word, 1);
  EXTEND_TO(r + 1);
  STORE_LITTLE_ENDIAN(bytes_.data() + static_cast<std::size_t>(r) * RECORD_BYTES + 4 * (word - 1), value);
}

void FILE_IMAGE::PUT_INT(int64_t r, int word, int32_t value) { PUT_WORD(r, word, value); }
void FILE_IMAGE::PUT_REAL(int64_t r, int word, float value) { PUT_WORD(r, word, value); }

void FILE_IMAGE::PUT_REALS(int64_t r, std::span<const float> words) {
  if (r < 0) throw std::out_of_range("records count from 0");
  const auto first = static_cast<std::size_t>(r) * RECORD_BYTES;
  const std::size_t end = first + 4 * words.size();
  if (bytes_.size() < end) bytes_.resize(end);
  std::byte* target = bytes_.data() + first;
  if constexpr (std::endian::native == std::endian::little) {
    if (!words.empty()) std::memcpy(target, words.data(), 4 * words.size());
  } else {
    for (const float word : words) {
      STORE_LITTLE_ENDIAN(target, word);
      target += 4;
    }
  }
}

void FILE_IMAGE::TRUNCATE(std::size_t bytes) {
  if (bytes < bytes_.size()) bytes_.resize(bytes);
}

bool FILE_IMAGE::WRITE(const std::string& path) const {
  MOD_FILE::T_FILE file;
  if (!file.OPEN(path, MOD_FILE::MODE_WRITE)) return false;
  int32_t status = 0;
  file.WRITE_BYTE_ARRAY(bytes_, &status);
  file.CLOSE();
  return status == 0;
}

}  // namespace tmrdar::builder
