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

namespace tmrdar::IO_UNITS {

inline constexpr int32_t MOTION_UNIT = 25;
inline constexpr int32_t FORCE_UNIT = 26;
inline constexpr int64_t DATABASE_RECORD_LENGTH = 32;

class DIRECT_ACCESS_UNIT {
 public:
  DIRECT_ACCESS_UNIT() = default;
  ~DIRECT_ACCESS_UNIT() { CLOSE(); }
  DIRECT_ACCESS_UNIT(const DIRECT_ACCESS_UNIT&) = delete;
  DIRECT_ACCESS_UNIT& operator=(const DIRECT_ACCESS_UNIT&) = delete;

  // Connects the unit to an existing regular file for reading; a unit that is
  // connected already is disconnected first. False when the file cannot be
  // opened.
  bool OPEN(const std::string& path, int64_t record_length);
  // Disconnects; false only when closing the connection failed.
  bool CLOSE();
  bool IS_OPEN() const { return file_ != nullptr; }
  // Size of the connected file in bytes; 0 when not connected.
  int64_t SIZE() const { return file_ != nullptr ? file_->SIZE() : 0; }
  // The mapped layer of the connected file; nullptr when not connected.
  MOD_FILE::MAPPED_FILE* SOURCE() const { return file_.get(); }

  // Reads bytes of record `record` (from 1), from byte `offset` of it on. The
  // bytes must lie inside the record, and the record wholly inside the file.
  bool READ(int64_t record, int64_t offset, std::span<std::byte> bytes) const;

 private:
  std::unique_ptr<MOD_FILE::MAPPED_FILE> file_;
  int64_t record_length_ = 0;
};

// The unit of the given number (25 or 26).
DIRECT_ACCESS_UNIT& UNIT(int32_t number);
// Closes and destroys both units; the last thing the library does when it is
// unloaded. A later UNIT makes them anew.
void RELEASE_UNITS();

}  // namespace tmrdar::IO_UNITS
