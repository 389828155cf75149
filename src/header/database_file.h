// One database file as a format's reader sees it: the version's record file
// object, or one of the frame's direct-access units. Both follow the record
// file's status rule: a transfer does nothing while the status is non-zero,
// and a failed transfer leaves a non-zero status. A read at an address moves
// the position, and a plain read continues behind the last one.
//
// Through a unit, a transfer must stay inside one record that the file holds
// whole; anything else fails. Through the record file object, what lies past
// the end of the file stays stale and is no failure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/file/t_file.h"
#include "frame/base/io_units.h"

namespace tmrdar::header {

class DATABASE_FILE {
 public:
  DATABASE_FILE() = default;
  explicit DATABASE_FILE(MOD_FILE::T_FILE& file) : file_(&file) {}
  explicit DATABASE_FILE(IO_UNITS::DIRECT_ACCESS_UNIT& unit) : unit_(&unit) {}

  bool IS_SET() const { return file_ != nullptr || unit_ != nullptr; }
  // Size of the file in bytes; 0 when none is set or open.
  int64_t SIZE() const { return file_ != nullptr ? file_->SIZE() : unit_ != nullptr ? unit_->SIZE() : 0; }

  // The file's bytes when it is mapped (as many as its size last seen);
  // empty otherwise.
  std::span<const std::byte> MAPPED_BYTES() const {
    const MOD_FILE::MAPPED_FILE* source =
        file_ != nullptr ? file_->SOURCE() : unit_ != nullptr ? unit_->SOURCE() : nullptr;
    if (source == nullptr || source->DATA() == nullptr) return {};
    return {source->DATA(), static_cast<std::size_t>(source->SIZE())};
  }
  // The record file's bytes at an address, when it is mapped and holds them
  // all, with its position moved behind them (`T_FILE::MAPPED_AT`); nullptr
  // otherwise, and always through a unit.
  const std::byte* MAPPED_AT(int64_t address, int64_t count) {
    return file_ != nullptr ? file_->MAPPED_AT(address, count) : nullptr;
  }
  // Whether reads go through a frame unit, whose records are numbered in 32 bits.
  bool IS_UNIT() const { return unit_ != nullptr; }

  void READ_INT_AT(std::span<int32_t> items, int64_t address, int32_t& status);
  void READ_REAL_AT(std::span<float> items, int64_t address, int32_t& status);
  void READ_REAL8_AT(std::span<double> items, int64_t address, int32_t& status);
  void READ_CHAR_AT(std::span<char> text, int64_t address, int32_t& status);
  void READ_INT(std::span<int32_t> items, int32_t& status);
  void READ_REAL(std::span<float> items, int32_t& status);
  void READ_CHAR(std::span<char> text, int32_t& status);

 private:
  template <typename T, typename FILE_READ>
  void READ_AT(std::span<T> items, int64_t address, int32_t& status, FILE_READ file_read);
  template <typename T>
  void UNIT_READ(std::span<T> items, int64_t address, int32_t& status);

  MOD_FILE::T_FILE* file_ = nullptr;
  IO_UNITS::DIRECT_ACCESS_UNIT* unit_ = nullptr;
  int64_t unit_position_ = 1;
};

}  // namespace tmrdar::header
