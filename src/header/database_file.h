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

#include "core/file/record_file.h"
#include "frame/base/io_units.h"

namespace tmrdar::header {

class DatabaseFile {
 public:
  DatabaseFile() = default;
  explicit DatabaseFile(record_files::RecordFile& file) : file_(&file) {}
  explicit DatabaseFile(io_units::DirectAccessUnit& unit) : unit_(&unit) {}

  bool is_set() const { return file_ != nullptr || unit_ != nullptr; }
  // Size of the file in bytes; 0 when none is set or open.
  int64_t size() const { return file_ != nullptr ? file_->size() : unit_ != nullptr ? unit_->size() : 0; }

  // The file's bytes when it is mapped (as many as its size last seen);
  // empty otherwise.
  std::span<const std::byte> mapped_bytes() const {
    const record_files::MappedFile* source =
        file_ != nullptr ? file_->source() : unit_ != nullptr ? unit_->source() : nullptr;
    if (source == nullptr || source->data() == nullptr) return {};
    return {source->data(), static_cast<std::size_t>(source->size())};
  }
  // The record file's bytes at an address, when it is mapped and holds them
  // all, with its position moved behind them (`RecordFile::mapped_at`); nullptr
  // otherwise, and always through a unit.
  const std::byte* mapped_at(int64_t address, int64_t count) {
    return file_ != nullptr ? file_->mapped_at(address, count) : nullptr;
  }
  const std::byte* mapped_view(int64_t address, int64_t count) const {
    return file_ != nullptr ? file_->mapped_view(address, count) : nullptr;
  }
  // Whether reads go through a frame unit, whose records are numbered in 32 bits.
  bool is_unit() const { return unit_ != nullptr; }

  void read_int_at(std::span<int32_t> items, int64_t address, int32_t& status);
  void read_real_at(std::span<float> items, int64_t address, int32_t& status);
  void read_real8_at(std::span<double> items, int64_t address, int32_t& status);
  void read_char_at(std::span<char> text, int64_t address, int32_t& status);
  void read_int(std::span<int32_t> items, int32_t& status);
  void read_real(std::span<float> items, int32_t& status);
  void read_char(std::span<char> text, int32_t& status);

 private:
  template <typename T, typename FileRead>
  void read_at(std::span<T> items, int64_t address, int32_t& status, FileRead file_read);
  template <typename T>
  void unit_read(std::span<T> items, int64_t address, int32_t& status);

  record_files::RecordFile* file_ = nullptr;
  io_units::DirectAccessUnit* unit_ = nullptr;
  int64_t unit_position_ = 1;
};

}  // namespace tmrdar::header
