#include "header/database_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tmrdar::header {

template <typename T>
void DATABASE_FILE::UNIT_READ(std::span<T> items, int64_t address, int32_t& status) {
  if (status != 0) return;
  constexpr int64_t length = IO_UNITS::DATABASE_RECORD_LENGTH;
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
  std::array<std::byte, IO_UNITS::DATABASE_RECORD_LENGTH> buffer{};
  const std::span<std::byte> part(buffer.data(), static_cast<std::size_t>(bytes));
  if (!unit_->READ(record, offset, part)) {
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

template <typename T, typename FILE_READ>
void DATABASE_FILE::READ_AT(std::span<T> items, int64_t address, int32_t& status, FILE_READ file_read) {
  if (file_ != nullptr) {
    file_read(*file_);
  } else if (unit_ != nullptr) {
    UNIT_READ(items, address, status);
  } else if (status == 0) {
    status = 1;
  }
}

void DATABASE_FILE::READ_INT_AT(std::span<int32_t> items, int64_t address, int32_t& status) {
  READ_AT(items, address, status, [&](MOD_FILE::T_FILE& f) { f.READ_INT_AT(items, address, &status); });
}
void DATABASE_FILE::READ_REAL_AT(std::span<float> items, int64_t address, int32_t& status) {
  READ_AT(items, address, status, [&](MOD_FILE::T_FILE& f) { f.READ_REAL_AT(items, address, &status); });
}
void DATABASE_FILE::READ_REAL8_AT(std::span<double> items, int64_t address, int32_t& status) {
  READ_AT(items, address, status, [&](MOD_FILE::T_FILE& f) { f.READ_REAL8_AT(items, address, &status); });
}
void DATABASE_FILE::READ_CHAR_AT(std::span<char> text, int64_t address, int32_t& status) {
  READ_AT(text, address, status, [&](MOD_FILE::T_FILE& f) { f.READ_CHAR_AT(text, address, &status); });
}
void DATABASE_FILE::READ_INT(std::span<int32_t> items, int32_t& status) {
  READ_AT(items, unit_position_, status, [&](MOD_FILE::T_FILE& f) { f.READ_INT(items, &status); });
}
void DATABASE_FILE::READ_REAL(std::span<float> items, int32_t& status) {
  READ_AT(items, unit_position_, status, [&](MOD_FILE::T_FILE& f) { f.READ_REAL(items, &status); });
}
void DATABASE_FILE::READ_CHAR(std::span<char> text, int32_t& status) {
  READ_AT(text, unit_position_, status, [&](MOD_FILE::T_FILE& f) { f.READ_CHAR(text, &status); });
}

}  // namespace tmrdar::header
