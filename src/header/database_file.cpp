#include "header/database_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tmrdar::header {

template <typename T>
void DatabaseFile::unit_read(std::span<T> items, int64_t address, int32_t& status) {
  if (status != 0) return;
  constexpr int64_t length = io_units::database_record_length;
  const int64_t bytes = static_cast<int64_t>(items.size_bytes());
  if (address < 1) {
    status = 1;
    return;
  }
  // A unit numbers its records in 32 bits.
  const int64_t record = static_cast<int32_t>(static_cast<uint32_t>((address - 1) / length + 1));
  const int64_t offset = (address - 1) % length;
  // A transfer lies within one record, so a record's buffer on the stack
  // holds it, and a failed read leaves the items as they were.
  if (bytes > length - offset) {
    status = 1;
    return;
  }
  std::array<std::byte, io_units::database_record_length> buffer{};
  const std::span<std::byte> part(buffer.data(), static_cast<std::size_t>(bytes));
  if (!unit_->read(record, offset, part)) {
    status = 1;
    return;
  }
  std::memcpy(items.data(), part.data(), part.size());
  if constexpr (std::endian::native == std::endian::big && sizeof(T) > 1) {
    for (T& item : items) {
      auto* raw = reinterpret_cast<unsigned char*>(&item);
      std::reverse(raw, raw + sizeof(T));
    }
  }
  unit_position_ = address + bytes;
}

template <typename T, typename FileRead>
void DatabaseFile::read_at(std::span<T> items, int64_t address, int32_t& status, FileRead file_read) {
  if (file_ != nullptr) {
    file_read(*file_);
  } else if (unit_ != nullptr) {
    unit_read(items, address, status);
  } else if (status == 0) {
    status = 1;
  }
}

void DatabaseFile::read_int_at(std::span<int32_t> items, int64_t address, int32_t& status) {
  read_at(items, address, status, [&](record_files::RecordFile& f) { f.read_int_at(items, address, &status); });
}
void DatabaseFile::read_real_at(std::span<float> items, int64_t address, int32_t& status) {
  read_at(items, address, status, [&](record_files::RecordFile& f) { f.read_real_at(items, address, &status); });
}
void DatabaseFile::read_real8_at(std::span<double> items, int64_t address, int32_t& status) {
  read_at(items, address, status, [&](record_files::RecordFile& f) { f.read_real8_at(items, address, &status); });
}
void DatabaseFile::read_char_at(std::span<char> text, int64_t address, int32_t& status) {
  read_at(text, address, status, [&](record_files::RecordFile& f) { f.read_char_at(text, address, &status); });
}
void DatabaseFile::read_int(std::span<int32_t> items, int32_t& status) {
  read_at(items, unit_position_, status, [&](record_files::RecordFile& f) { f.read_int(items, &status); });
}
void DatabaseFile::read_real(std::span<float> items, int32_t& status) {
  read_at(items, unit_position_, status, [&](record_files::RecordFile& f) { f.read_real(items, &status); });
}
void DatabaseFile::read_char(std::span<char> text, int32_t& status) {
  read_at(text, unit_position_, status, [&](record_files::RecordFile& f) { f.read_char(text, &status); });
}

}  // namespace tmrdar::header
