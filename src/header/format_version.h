// The six database formats, each described by how it differs from the
// newest one. The reader is written once and consults these descriptions.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tmrdar::header {

// How a format's files are read.
enum class FILE_ACCESS {
  RECORD_FILE,   // the version's own record file objects, by byte address
  FRAME_UNITS,   // the frame's direct-access units 25 and 26, by record
};

// Where a format finds the blocks of its header.
enum class BLOCK_LOCATION {
  DIRECTORY,     // the file's own block directory
  FIXED_LAYOUT,  // addresses computed from the counts
  BY_TITLE,      // a walk over the blocks in order, by block title
};

struct FORMAT_VERSION {
  std::string_view NAME;     // "V861"
  int32_t DATABASE_VERSION;  // the code in word 1 of the first record
  FILE_ACCESS ACCESS;
  BLOCK_LOCATION BLOCKS;
  // The open failure messages carry the file's full path behind their colon.
  bool OPEN_MESSAGE_HAS_PATH;
  // The open builds the table of integration point locations.
  bool BUILDS_INTEGRATION_POINTS;
};

inline constexpr FORMAT_VERSION V861{"V861", 13, FILE_ACCESS::RECORD_FILE, BLOCK_LOCATION::DIRECTORY, false, true};
inline constexpr FORMAT_VERSION V841{"V841", 11, FILE_ACCESS::RECORD_FILE, BLOCK_LOCATION::FIXED_LAYOUT, false, false};
inline constexpr FORMAT_VERSION V831{"V831", 10, FILE_ACCESS::RECORD_FILE, BLOCK_LOCATION::FIXED_LAYOUT, false, false};
inline constexpr FORMAT_VERSION V821{"V821", 7, FILE_ACCESS::RECORD_FILE, BLOCK_LOCATION::BY_TITLE, true, false};
inline constexpr FORMAT_VERSION V815{"V815", 4, FILE_ACCESS::FRAME_UNITS, BLOCK_LOCATION::BY_TITLE, true, false};
inline constexpr FORMAT_VERSION V811{"V811", 3, FILE_ACCESS::FRAME_UNITS, BLOCK_LOCATION::BY_TITLE, true, false};

// The formats in the order in which version selection tries them.
inline constexpr std::array<const FORMAT_VERSION*, 6> FORMAT_VERSIONS{&V861, &V841, &V831, &V821, &V815, &V811};

}  // namespace tmrdar::header
