// The builder's own description of the six layouts in which it writes a job,
// told section by section: where the run control blocks stand, how the model
// blocks follow them and what each takes, what ends the header, and how the
// result frames differ. The reader keeps a description of its own; the two
// are kept apart on purpose, so that a mistake in one shows up against the
// other.
//
// Blocks are named throughout by their entry in a V861 block directory
// (2 to 52; 15 is the title), whatever the format calls them.
//
//   V861  a block directory; every block 2 to 52, each where the directory
//         says.
//   V841  record 1 unused, blocks 2 to 11 in records 2 to 11, no block 12,
//         block 13 in record 12, block 14 in record 13, the title in records
//         14 to 16, Element Data from record 17; the model blocks up to Body
//         Profiles (45), then 3 records an element, a packed block and the
//         binary items of block 52.
//   V831  as V841, but block 14 of eight integers and no binary items (the
//         block that would hold them is empty), and 7 node contact words a
//         node in the motion frame.
//   V821  as V831, with 10 records a guide surface instead of 11.
//   V815  no block 2 and no block 12: blocks 3 to 11, 13 and 14 in records 1
//         to 11, the title in records 12 to 14, Element Data from record 15;
//         the header ends with Point Buoys (43). The target spectrum counts
//         its records by words.
//   V811  as V815 without block 13: blocks 3 to 11 and 14 in records 1 to 10,
//         the title in records 11 to 13, Element Data from record 14; one
//         record more for a target spectrum.
//
// No older format has flags 17 to 19, dampers, plastic hardening models or
// the shape function switch (blocks 12 and 48 to 51).
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "header/common_database.h"
#include "header/format_version.h"
#include "header/tide3_database_files.h"

namespace tmrdar::builder {

// What block 14 holds in words 6 to 8.
enum class BLOCK_14_FORM {
  ANGLE_AND_WORD_7,  // word 6 the seabed angle (a real), word 7 HDR_14_7
  ANGLE,             // word 6 the seabed angle; no word 7
  INTEGERS,          // eight integers: word 6 an unused 0, word 7 HDR_14_7, word 8 0
};

// How many records a target spectrum of n intervals (n + 1 pairs) takes,
// when it is present (n > 0); none otherwise.
enum class SPECTRUM_RECORDS_RULE {
  PAIRS,          // truncate(double(n + 1) * 0.25) + 1
  WORDS,          // truncate(double(n + 1) * 2.0 * 0.125) + 1
  WORDS_AND_ONE,  // truncate(double(n + 1) * 2.0 * 0.125) + 2
};

// What stands between the model blocks and the results.
enum class HEADER_END {
  DIRECTORY_BLOCKS,  // blocks 46 to 52 as the block directory places them
  NOTHING,           // the header ends with the last model block
  ELEMENT_PACKED_ITEMS,  // block 46 of 3 records an element, block 47 of
                         // truncate(single(count) * 0.125) + 1 records for the
                         // packed block's count, and block 52
};

struct FORMAT_LAYOUT {
  std::string_view NAME;
  int32_t DATABASE_VERSION = 0;
  // The file holds a block directory that places every block.
  bool BLOCK_DIRECTORY = false;
  // Without a directory: the 0-based record of run control blocks 2 to 14
  // (RUN_CONTROL_RECORDS[k - 2]), -1 for a block the format lacks; the first
  // of the title's three records; the record of Element Data (block 16),
  // from which the model blocks stand back to back.
  std::array<int32_t, 13> RUN_CONTROL_RECORDS{};
  int32_t TITLE_RECORD = -1;
  int32_t ELEMENT_DATA_RECORD = -1;
  // The last model block in the run from Element Data (43 or 45).
  int32_t LAST_MODEL_BLOCK = 0;
  HEADER_END END = HEADER_END::NOTHING;
  BLOCK_14_FORM BLOCK_14 = BLOCK_14_FORM::INTEGERS;
  // Head records of a guide surface (behind all heads, 8 name records each).
  int32_t GUIDE_SURFACE_HEAD_RECORDS = 3;
  SPECTRUM_RECORDS_RULE SPECTRUM = SPECTRUM_RECORDS_RULE::PAIRS;
  // Block 52 holds the binary items, counted in block 2.
  bool BINARY_ITEMS = false;
  // Words of a node's entry in the node contact section of a motion frame.
  int32_t NODE_CONTACT_WORDS = 8;
  // A force frame holds the sections of flags 18 and 19, a spare record and
  // the section of flag 17 behind the pressures, and one record a damper
  // behind the step record. Without them the step record ends the frame.
  bool LATE_FORCE_SECTIONS = false;
};

inline constexpr FORMAT_LAYOUT V861_LAYOUT{.NAME = "V861",
                                           .DATABASE_VERSION = 13,
                                           .BLOCK_DIRECTORY = true,
                                           .LAST_MODEL_BLOCK = 45,
                                           .END = HEADER_END::DIRECTORY_BLOCKS,
                                           .BLOCK_14 = BLOCK_14_FORM::ANGLE_AND_WORD_7,
                                           .GUIDE_SURFACE_HEAD_RECORDS = 3,
                                           .SPECTRUM = SPECTRUM_RECORDS_RULE::PAIRS,
                                           .BINARY_ITEMS = true,
                                           .NODE_CONTACT_WORDS = 8,
                                           .LATE_FORCE_SECTIONS = true};
// Each older layout as the one after it, with what it changes.
inline constexpr FORMAT_LAYOUT V841_LAYOUT = [] {
  FORMAT_LAYOUT l = V861_LAYOUT;
  l.NAME = "V841";
  l.DATABASE_VERSION = 11;
  l.BLOCK_DIRECTORY = false;
  l.RUN_CONTROL_RECORDS = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, 12, 13};
  l.TITLE_RECORD = 14;
  l.ELEMENT_DATA_RECORD = 17;
  l.END = HEADER_END::ELEMENT_PACKED_ITEMS;
  l.BLOCK_14 = BLOCK_14_FORM::ANGLE;
  l.LATE_FORCE_SECTIONS = false;
  return l;
}();
inline constexpr FORMAT_LAYOUT V831_LAYOUT = [] {
  FORMAT_LAYOUT l = V841_LAYOUT;
  l.NAME = "V831";
  l.DATABASE_VERSION = 10;
  l.BLOCK_14 = BLOCK_14_FORM::INTEGERS;
  l.BINARY_ITEMS = false;
  l.NODE_CONTACT_WORDS = 7;
  return l;
}();
inline constexpr FORMAT_LAYOUT V821_LAYOUT = [] {
  FORMAT_LAYOUT l = V831_LAYOUT;
  l.NAME = "V821";
  l.DATABASE_VERSION = 7;
  l.GUIDE_SURFACE_HEAD_RECORDS = 2;
  return l;
}();
inline constexpr FORMAT_LAYOUT V815_LAYOUT = [] {
  FORMAT_LAYOUT l = V821_LAYOUT;
  l.NAME = "V815";
  l.DATABASE_VERSION = 4;
  l.RUN_CONTROL_RECORDS = {-1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, 10, 11};
  l.TITLE_RECORD = 12;
  l.ELEMENT_DATA_RECORD = 15;
  l.LAST_MODEL_BLOCK = 43;
  l.END = HEADER_END::NOTHING;
  l.SPECTRUM = SPECTRUM_RECORDS_RULE::WORDS;
  return l;
}();
inline constexpr FORMAT_LAYOUT V811_LAYOUT = [] {
  FORMAT_LAYOUT l = V815_LAYOUT;
  l.NAME = "V811";
  l.DATABASE_VERSION = 3;
  l.RUN_CONTROL_RECORDS = {-1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, -1, 10};
  l.TITLE_RECORD = 11;
  l.ELEMENT_DATA_RECORD = 14;
  l.SPECTRUM = SPECTRUM_RECORDS_RULE::WORDS_AND_ONE;
  return l;
}();

// The builder's layout of a format, found by the format's name and code.
// Throws std::invalid_argument for a format that the builder does not know.
const FORMAT_LAYOUT& LAYOUT_OF(const header::FORMAT_VERSION& format);

// The format has block k (V861 numbering) at all: a block that stands in the
// file, if with no records at its counts. Blocks 2 to 52 only.
bool HAS_BLOCK(const FORMAT_LAYOUT& layout, int32_t k);

// The format keeps the rows of model block k: it has the block and a place
// for the count that sizes it (Wave Harmonics for the DSP are counted in
// block 13, the binary items in block 2).
bool HOLDS_ROWS(const FORMAT_LAYOUT& layout, int32_t k);

// The run control values as the format holds them: every value for which it
// has no word becomes 0 (HDR_14_5 keeps its meaning and its default).
void HOLD_RUN(const FORMAT_LAYOUT& layout, header::HEADER_VARIABLES& run);

// Records of a target spectrum of n intervals, by the format's rule.
int64_t SPECTRUM_RECORDS(const FORMAT_LAYOUT& layout, int32_t n);

// Records that model block k (16 and behind) takes in the format.
int64_t MODEL_BLOCK_RECORDS(const FORMAT_LAYOUT& layout, int32_t k, const MOD_COMMON_DATABASE::BLOCK_COUNTS& counts);

// Where each block of a header stands: its first record (0-based, -1 for a
// block that has no place) and the records reserved for it.
struct BLOCK_PLACE {
  int64_t FIRST = -1;
  int64_t RECORDS = 0;
};
struct HEADER_PLAN {
  std::array<BLOCK_PLACE, MOD_COMMON_DATABASE::NUM_HEADER_BLOCKS + 1> BLOCKS{};  // by V861 entry
  int64_t END = 0;  // the 0-based record behind the header

  const BLOCK_PLACE& PLACE(int32_t k) const;  // a placeless block for k outside 2 to 52
};

// The plan of a header without a block directory, block after block from
// the format's fixed records. Throws std::logic_error for V861, whose plan
// the directory gives.
HEADER_PLAN PLAN_WITHOUT_DIRECTORY(const FORMAT_LAYOUT& layout, const MOD_COMMON_DATABASE::BLOCK_COUNTS& counts);

}  // namespace tmrdar::builder
