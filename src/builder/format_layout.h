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
#include "header/format_reader.h"

namespace tmrdar::builder {

// What block 14 holds in words 6 to 8.
enum class Block14Form {
  angle_and_word_7,  // word 6 the seabed angle (a real), word 7 hdr_14_7
  angle,             // word 6 the seabed angle; no word 7
  integers,          // eight integers: word 6 an unused 0, word 7 hdr_14_7, word 8 0
};

// How many records a target spectrum of n intervals (n + 1 pairs) takes,
// when it is present (n > 0); none otherwise.
enum class SpectrumRecordsRule {
  pairs,          // truncate(double(n + 1) * 0.25) + 1
  words,          // truncate(double(n + 1) * 2.0 * 0.125) + 1
  words_and_one,  // truncate(double(n + 1) * 2.0 * 0.125) + 2
};

// What stands between the model blocks and the results.
enum class HeaderEnd {
  directory_blocks,  // blocks 46 to 52 as the block directory places them
  nothing,           // the header ends with the last model block
  element_packed_items,  // block 46 of 3 records an element, block 47 of
                         // truncate(single(count) * 0.125) + 1 records for the
                         // packed block's count, and block 52
};

struct FormatLayout {
  std::string_view name;
  int32_t database_version = 0;
  // The file holds a block directory that places every block.
  bool block_directory = false;
  // Without a directory: the 0-based record of run control blocks 2 to 14
  // (run_control_records[k - 2]), -1 for a block the format lacks; the first
  // of the title's three records; the record of Element Data (block 16),
  // from which the model blocks stand back to back.
  std::array<int32_t, 13> run_control_records{};
  int32_t title_record = -1;
  int32_t element_data_record = -1;
  // The last model block in the run from Element Data (43 or 45).
  int32_t last_model_block = 0;
  HeaderEnd end = HeaderEnd::nothing;
  Block14Form block_14 = Block14Form::integers;
  // Head records of a guide surface (behind all heads, 8 name records each).
  int32_t guide_surface_head_records = 3;
  SpectrumRecordsRule spectrum = SpectrumRecordsRule::pairs;
  // Block 52 holds the binary items, counted in block 2.
  bool binary_items = false;
  // Words of a node's entry in the node contact section of a motion frame.
  int32_t node_contact_words = 8;
  // A force frame holds the sections of flags 18 and 19, a spare record and
  // the section of flag 17 behind the pressures, and one record a damper
  // behind the step record. Without them the step record ends the frame.
  bool late_force_sections = false;
};

inline constexpr FormatLayout v861_layout{.name = "V861",
                                           .database_version = 13,
                                           .block_directory = true,
                                           .last_model_block = 45,
                                           .end = HeaderEnd::directory_blocks,
                                           .block_14 = Block14Form::angle_and_word_7,
                                           .guide_surface_head_records = 3,
                                           .spectrum = SpectrumRecordsRule::pairs,
                                           .binary_items = true,
                                           .node_contact_words = 8,
                                           .late_force_sections = true};
// Each older layout as the one after it, with what it changes.
inline constexpr FormatLayout v841_layout = [] {
  FormatLayout l = v861_layout;
  l.name = "V841";
  l.database_version = 11;
  l.block_directory = false;
  l.run_control_records = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, 12, 13};
  l.title_record = 14;
  l.element_data_record = 17;
  l.end = HeaderEnd::element_packed_items;
  l.block_14 = Block14Form::angle;
  l.late_force_sections = false;
  return l;
}();
inline constexpr FormatLayout v831_layout = [] {
  FormatLayout l = v841_layout;
  l.name = "V831";
  l.database_version = 10;
  l.block_14 = Block14Form::integers;
  l.binary_items = false;
  l.node_contact_words = 7;
  return l;
}();
inline constexpr FormatLayout v821_layout = [] {
  FormatLayout l = v831_layout;
  l.name = "V821";
  l.database_version = 7;
  l.guide_surface_head_records = 2;
  return l;
}();
inline constexpr FormatLayout v815_layout = [] {
  FormatLayout l = v821_layout;
  l.name = "V815";
  l.database_version = 4;
  l.run_control_records = {-1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, 10, 11};
  l.title_record = 12;
  l.element_data_record = 15;
  l.last_model_block = 43;
  l.end = HeaderEnd::nothing;
  l.spectrum = SpectrumRecordsRule::words;
  return l;
}();
inline constexpr FormatLayout v811_layout = [] {
  FormatLayout l = v815_layout;
  l.name = "V811";
  l.database_version = 3;
  l.run_control_records = {-1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, -1, 10};
  l.title_record = 11;
  l.element_data_record = 14;
  l.spectrum = SpectrumRecordsRule::words_and_one;
  return l;
}();

// The builder's layout of a format, found by the format's name and code.
// Throws std::invalid_argument for a format that the builder does not know.
const FormatLayout& layout_of(const header::FormatVersion& format);

// The format has block k (V861 numbering) at all: a block that stands in the
// file, if with no records at its counts. Blocks 2 to 52 only.
bool has_block(const FormatLayout& layout, int32_t k);

// The format keeps the rows of model block k: it has the block and a place
// for the count that sizes it (Wave Harmonics for the DSP are counted in
// block 13, the binary items in block 2).
bool holds_rows(const FormatLayout& layout, int32_t k);

// The run control values as the format holds them: every value for which it
// has no word becomes 0 (hdr_14_5 keeps its meaning and its default).
void hold_run(const FormatLayout& layout, header::HeaderVariables& run);

// Records of a target spectrum of n intervals, by the format's rule.
int64_t spectrum_records(const FormatLayout& layout, int32_t n);

// Records that model block k (16 and behind) takes in the format.
int64_t model_block_records(const FormatLayout& layout, int32_t k, const common_database::BlockCounts& counts);

// Where each block of a header stands: its first record (0-based, -1 for a
// block that has no place) and the records reserved for it.
struct BlockPlace {
  int64_t first = -1;
  int64_t records = 0;
};
struct HeaderPlan {
  std::array<BlockPlace, common_database::num_header_blocks + 1> blocks{};  // by V861 entry
  int64_t end = 0;  // the 0-based record behind the header

  const BlockPlace& place(int32_t k) const;  // a placeless block for k outside 2 to 52
};

// The plan of a header without a block directory, block after block from
// the format's fixed records. Throws std::logic_error for V861, whose plan
// the directory gives.
HeaderPlan plan_without_directory(const FormatLayout& layout, const common_database::BlockCounts& counts);

}  // namespace tmrdar::builder
