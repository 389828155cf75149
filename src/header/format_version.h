// The six database formats, each described by how it differs from the
// newest one. The reader is written once and consults these descriptions.
//
// Blocks are named throughout by their number in the newest format's
// directory (2 to 15 the run control blocks and the title, 16 Element Data
// and so on); a description says where a format keeps each of them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tmrdar::header {

// How a format's files are read.
enum class FILE_ACCESS {
  RECORD_FILE,  // the version's own record file objects, by byte address
  FRAME_UNITS,  // the frame's direct-access units 25 and 26, by record
};

// Where a format finds the blocks of its header.
enum class BLOCK_LOCATION {
  DIRECTORY,     // the file's own block directory
  FIXED_LAYOUT,  // addresses computed from the counts
  BY_TITLE,      // a walk over the blocks in order, by block title
};

// How the record of block 14 (target spectrum size and seabed angle) is read.
enum class BLOCK_14_WORDS {
  INTS_REAL_INT,  // 5 integers, the seabed angle, an integer
  INTS_REAL,      // 5 integers and the seabed angle; no word 7
  INTS,           // 8 integers: no seabed angle
};

// Where the binary data items (of which a seabed file is kept) stand.
enum class BINARY_ITEMS {
  NONE,               // the format has none
  DIRECTORY_BLOCK,    // block 52 of the directory
  ADDRESS_TABLE_END,  // the last block of the computed address table
};

// The target spectrum's records: 4 pairs a record, one record more than the
// pairs fill, and one further record in the oldest format.
enum class SPECTRUM_RECORDS { PAIRS, PAIRS_AND_ONE };

// How the lookups of element results number the force parameters.
enum class FORCE_NUMBERING {
  SECTION_BY_PARAMETER,  // section index = parameter + 4, and the request's own
                         // numbers
  TABLE_TO_SECTION_16,   // the table of force parameters up to the pressures (30)
  TABLE,                 // the whole table, with the sections of flags 17 to 19
};

// Record (from 0) of each run control block 2 to 15 in a format without a
// directory; NO_RECORD for a block the format does not have. The title (15)
// takes three records, and Element Data follows it.
inline constexpr int8_t NO_RECORD = -1;
using RUN_CONTROL_RECORDS = std::array<int8_t, 16>;  // indexed by block number; 0 and 1 unused

struct FORMAT_VERSION {
  std::string_view NAME;     // "V861"
  int32_t DATABASE_VERSION;  // the code in word 1 of the first record
  FILE_ACCESS ACCESS;
  BLOCK_LOCATION BLOCKS;
  // The open failure messages carry the file's full path behind their colon.
  bool OPEN_MESSAGE_HAS_PATH;
  // The open builds the table of integration point locations.
  bool BUILDS_INTEGRATION_POINTS;
  // Where the run control blocks stand (formats without a directory).
  RUN_CONTROL_RECORDS RUN_CONTROL;
  BLOCK_14_WORDS BLOCK_14;
  // Block titles are numbered this much below the block numbers above.
  int32_t TITLE_NUMBER_SHIFT;
  // The last block that the format's header has (by title, or in its
  // computed table).
  int32_t LAST_BLOCK;
  // Head records of one guide surface (the first read), ahead of the names.
  int32_t GUIDE_SURFACE_HEAD_RECORDS;
  SPECTRUM_RECORDS SPECTRUM;
  // A failed read of the target spectrum behind its first record reports
  // the message with "target spectrum" in lower case.
  bool LOWER_CASE_SPECTRUM_MESSAGE;
  // Blocks 48 to 51: shape function and plastic hardening counts with output
  // flags 18 and 19, the plastic hardening models and the damper elements;
  // block 12, the damper count with output flag 17, goes with them.
  bool MATERIAL_BLOCKS;
  BINARY_ITEMS ITEMS;
  // The shared start record and a file's own offset are summed in 64 bits;
  // otherwise in 32 bits (wrapping), then widened.
  bool START_SUM_64;

  // The result lookups.
  // Words of a node's entry in the node contact section of a motion frame.
  int32_t NODE_CONTACT_WORDS;
  // A lookup in a file that does not exist is reported in words of its own;
  // otherwise it shows as a failed read, or returns nothing.
  bool MISSING_FILE_MESSAGES;
  // Nodal components and their resultants are numbered from DOFS_PER_NODE:
  // up to it a stored component, one above it the resultant of components 4
  // to 6, two above it that of 1 to 3; otherwise 1 to 6, 7 and 8.
  bool COMPONENTS_BY_DOFS;
  FORCE_NUMBERING FORCE_PARAMETERS;
  // Clash codes 33 to 35 spell 1 to 3 again; otherwise the force word of a
  // clash pair adds the code itself, and only code 1 reads the motion file.
  bool CLASH_CODES_33_TO_35;
  // The guide surface and zero gap guide reactions give the magnitude for
  // any code other than 1 to 3, not only for 4.
  bool ANY_OTHER_CODE_IS_MAGNITUDE;
  // The pressures test their output flag at the read.
  bool PRESSURE_FLAG_TEST;
};

namespace format_layouts {
// Blocks 2 to 11 in records 2 to 11, no block 12, 13 and 14 in 12 and 13,
// the title in 14 to 16, Element Data at 17.
inline constexpr RUN_CONTROL_RECORDS FIXED{-1, -1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, 12, 13, 14};
// No block 2 and no block 12: blocks 3 to 11, 13 and 14 in records 1 to 11,
// the title in 12 to 14, Element Data at 15.
inline constexpr RUN_CONTROL_RECORDS V815{-1, -1, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, 10, 11, 12};
// As V815 without block 13: blocks 3 to 11 and 14 in records 1 to 10, the
// title in 11 to 13, Element Data at 14.
inline constexpr RUN_CONTROL_RECORDS V811{-1, -1, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, -1, 10, 11};
inline constexpr RUN_CONTROL_RECORDS NONE{-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
}  // namespace format_layouts

inline constexpr FORMAT_VERSION V861{.NAME = "V861",
                                     .DATABASE_VERSION = 13,
                                     .ACCESS = FILE_ACCESS::RECORD_FILE,
                                     .BLOCKS = BLOCK_LOCATION::DIRECTORY,
                                     .OPEN_MESSAGE_HAS_PATH = false,
                                     .BUILDS_INTEGRATION_POINTS = true,
                                     .RUN_CONTROL = format_layouts::NONE,
                                     .BLOCK_14 = BLOCK_14_WORDS::INTS_REAL_INT,
                                     .TITLE_NUMBER_SHIFT = 0,
                                     .LAST_BLOCK = 52,
                                     .GUIDE_SURFACE_HEAD_RECORDS = 3,
                                     .SPECTRUM = SPECTRUM_RECORDS::PAIRS,
                                     .LOWER_CASE_SPECTRUM_MESSAGE = false,
                                     .MATERIAL_BLOCKS = true,
                                     .ITEMS = BINARY_ITEMS::DIRECTORY_BLOCK,
                                     .START_SUM_64 = true,
                                     .NODE_CONTACT_WORDS = 8,
                                     .MISSING_FILE_MESSAGES = true,
                                     .COMPONENTS_BY_DOFS = false,
                                     .FORCE_PARAMETERS = FORCE_NUMBERING::TABLE,
                                     .CLASH_CODES_33_TO_35 = true,
                                     .ANY_OTHER_CODE_IS_MAGNITUDE = false,
                                     .PRESSURE_FLAG_TEST = true};

// Each older format as the one after it, with its differences.
inline constexpr FORMAT_VERSION V841 = [] {
  FORMAT_VERSION v = V861;
  v.NAME = "V841";
  v.DATABASE_VERSION = 11;
  v.BLOCKS = BLOCK_LOCATION::FIXED_LAYOUT;
  v.BUILDS_INTEGRATION_POINTS = false;
  v.RUN_CONTROL = format_layouts::FIXED;
  v.BLOCK_14 = BLOCK_14_WORDS::INTS_REAL;
  v.LAST_BLOCK = 48;  // the computed table of 48 addresses
  v.MATERIAL_BLOCKS = false;
  v.ITEMS = BINARY_ITEMS::ADDRESS_TABLE_END;
  v.MISSING_FILE_MESSAGES = false;
  v.FORCE_PARAMETERS = FORCE_NUMBERING::TABLE_TO_SECTION_16;
  v.PRESSURE_FLAG_TEST = false;
  return v;
}();
inline constexpr FORMAT_VERSION V831 = [] {
  FORMAT_VERSION v = V841;
  v.NAME = "V831";
  v.DATABASE_VERSION = 10;
  v.BLOCK_14 = BLOCK_14_WORDS::INTS;
  v.ITEMS = BINARY_ITEMS::NONE;
  v.START_SUM_64 = false;
  v.NODE_CONTACT_WORDS = 7;
  v.COMPONENTS_BY_DOFS = true;
  v.FORCE_PARAMETERS = FORCE_NUMBERING::SECTION_BY_PARAMETER;
  v.CLASH_CODES_33_TO_35 = false;
  v.ANY_OTHER_CODE_IS_MAGNITUDE = true;
  return v;
}();
inline constexpr FORMAT_VERSION V821 = [] {
  FORMAT_VERSION v = V831;
  v.NAME = "V821";
  v.DATABASE_VERSION = 7;
  v.BLOCKS = BLOCK_LOCATION::BY_TITLE;
  v.OPEN_MESSAGE_HAS_PATH = true;
  v.LAST_BLOCK = 46;  // Binary Data, by title
  v.GUIDE_SURFACE_HEAD_RECORDS = 2;
  return v;
}();
inline constexpr FORMAT_VERSION V815 = [] {
  FORMAT_VERSION v = V821;
  v.NAME = "V815";
  v.DATABASE_VERSION = 4;
  v.ACCESS = FILE_ACCESS::FRAME_UNITS;
  v.RUN_CONTROL = format_layouts::V815;
  v.TITLE_NUMBER_SHIFT = 2;
  v.LAST_BLOCK = 43;  // Point Buoys
  return v;
}();
inline constexpr FORMAT_VERSION V811 = [] {
  FORMAT_VERSION v = V815;
  v.NAME = "V811";
  v.DATABASE_VERSION = 3;
  v.RUN_CONTROL = format_layouts::V811;
  v.TITLE_NUMBER_SHIFT = 3;
  v.SPECTRUM = SPECTRUM_RECORDS::PAIRS_AND_ONE;
  v.LOWER_CASE_SPECTRUM_MESSAGE = true;
  return v;
}();

// The formats in the order in which version selection tries them.
inline constexpr std::array<const FORMAT_VERSION *, 6> FORMAT_VERSIONS{&V861, &V841, &V831, &V821, &V815, &V811};

}  // namespace tmrdar::header
