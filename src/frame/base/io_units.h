// The frame's two file units: 25 for the motion database and 26 for the force
// database. A unit is a read-only direct-access connection with fixed-length
// records; a record that the file does not hold whole cannot be read. A unit
// reads through the mapped layer of the record files, so its file ends where
// the size last seen ends (at open, or at the start of the latest export).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "core/file/mapped_file.h"

namespace tmrdar::io_units {

inline constexpr int32_t motion_unit = 25;
inline constexpr int32_t force_unit = 26;
inline constexpr int64_t database_record_length = 32;

class DirectAccessUnit {
 public:
  DirectAccessUnit() = default;
  ~DirectAccessUnit() { close(); }
  DirectAccessUnit(const DirectAccessUnit&) = delete;
  DirectAccessUnit& operator=(const DirectAccessUnit&) = delete;

  // Connects the unit to an existing regular file for reading; a unit that is
  // connected already is disconnected first. False when the file cannot be
  // opened.
  bool open(const std::string& path, int64_t record_length);
  // Disconnects; false only when closing the connection failed.
  bool close();
  bool is_open() const { return file_ != nullptr; }
  // Size of the connected file in bytes; 0 when not connected.
  int64_t size() const { return file_ != nullptr ? file_->size() : 0; }
  // The mapped layer of the connected file; nullptr when not connected.
  record_files::MappedFile* source() const { return file_.get(); }

  // Reads bytes of record `record` (from 1), from byte `offset` of it on. The
  // bytes must lie inside the record, and the record wholly inside the file.
  bool read(int64_t record, int64_t offset, std::span<std::byte> bytes) const;

 private:
  std::unique_ptr<record_files::MappedFile> file_;
  int64_t record_length_ = 0;
};

// The unit of the given number (25 or 26).
DirectAccessUnit& unit(int32_t number);
// Closes and destroys both units; the last thing the library does when it is
// unloaded. A later unit makes them anew.
void release_units();

}  // namespace tmrdar::io_units
