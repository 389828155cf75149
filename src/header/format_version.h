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
enum class FileAccess {
  record_file,  // the version's own record file objects, by byte address
  frame_units,  // the frame's direct-access units 25 and 26, by record
};

// Where a format finds the blocks of its header.
enum class BlockLocation {
  directory,     // the file's own block directory
  fixed_layout,  // addresses computed from the counts
  by_title,      // a walk over the blocks in order, by block title
};

// How the record of block 14 (target spectrum size and seabed angle) is read.
enum class Block14Words {
  ints_real_int,  // 5 integers, the seabed angle, an integer
  ints_real,      // 5 integers and the seabed angle; no word 7
  ints,           // 8 integers: no seabed angle
};

// Where the binary data items (of which a seabed file is kept) stand.
enum class BinaryItems {
  none,               // the format has none
  directory_block,    // block 52 of the directory
  address_table_end,  // the last block of the computed address table
};

// The target spectrum's records: 4 pairs a record, one record more than the
// pairs fill, and one further record in the oldest format.
enum class SpectrumRecords { pairs, pairs_and_one };

// How the lookups of element results number the force parameters.
enum class ForceNumbering {
  section_by_parameter,  // section index = parameter + 4, and the request's own
                         // numbers
  table_to_section_16,   // the table of force parameters up to the pressures (30)
  table,                 // the whole table, with the sections of flags 17 to 19
};

// Record (from 0) of each run control block 2 to 15 in a format without a
// directory; no_record for a block the format does not have. The title (15)
// takes three records, and Element Data follows it.
inline constexpr int8_t no_record = -1;
using RunControlRecords = std::array<int8_t, 16>;  // indexed by block number; 0 and 1 unused

struct FormatVersion {
  std::string_view name;     // "V861"
  int32_t database_version;  // the code in word 1 of the first record
  FileAccess access;
  BlockLocation blocks;
  // The open failure messages carry the file's full path behind their colon.
  bool open_message_has_path;
  // The open builds the table of integration point locations.
  bool builds_integration_points;
  // Where the run control blocks stand (formats without a directory).
  RunControlRecords run_control;
  Block14Words block_14;
  // Block titles are numbered this much below the block numbers above.
  int32_t title_number_shift;
  // The last block that the format's header has (by title, or in its
  // computed table).
  int32_t last_block;
  // Head records of one guide surface (the first read), ahead of the names.
  int32_t guide_surface_head_records;
  SpectrumRecords spectrum;
  // A failed read of the target spectrum behind its first record reports
  // the message with "target spectrum" in lower case.
  bool lower_case_spectrum_message;
  // Blocks 48 to 51: shape function and plastic hardening counts with output
  // flags 18 and 19, the plastic hardening models and the damper elements;
  // block 12, the damper count with output flag 17, goes with them.
  bool material_blocks;
  BinaryItems items;
  // The shared start record and a file's own offset are summed in 64 bits;
  // otherwise in 32 bits (wrapping), then widened.
  bool start_sum_64;

  // The result lookups.
  // Words of a node's entry in the node contact section of a motion frame.
  int32_t node_contact_words;
  // A lookup in a file that does not exist is reported in words of its own;
  // otherwise it shows as a failed read, or returns nothing.
  bool missing_file_messages;
  // Nodal components and their resultants are numbered from dofs_per_node:
  // up to it a stored component, one above it the resultant of components 4
  // to 6, two above it that of 1 to 3; otherwise 1 to 6, 7 and 8.
  bool components_by_dofs;
  ForceNumbering force_parameters;
  // Clash codes 33 to 35 spell 1 to 3 again; otherwise the force word of a
  // clash pair adds the code itself, and only code 1 reads the motion file.
  bool clash_codes_33_to_35;
  // The guide surface and zero gap guide reactions give the magnitude for
  // any code other than 1 to 3, not only for 4.
  bool any_other_code_is_magnitude;
  // The pressures test their output flag at the read.
  bool pressure_flag_test;
};

namespace format_layouts {
// Blocks 2 to 11 in records 2 to 11, no block 12, 13 and 14 in 12 and 13,
// the title in 14 to 16, Element Data at 17.
inline constexpr RunControlRecords fixed{-1, -1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, -1, 12, 13, 14};
// No block 2 and no block 12: blocks 3 to 11, 13 and 14 in records 1 to 11,
// the title in 12 to 14, Element Data at 15.
inline constexpr RunControlRecords v815{-1, -1, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, 10, 11, 12};
// As V815 without block 13: blocks 3 to 11 and 14 in records 1 to 10, the
// title in 11 to 13, Element Data at 14.
inline constexpr RunControlRecords v811{-1, -1, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9, -1, -1, 10, 11};
inline constexpr RunControlRecords none{-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
}  // namespace format_layouts

inline constexpr FormatVersion v861{.name = "V861",
                                     .database_version = 13,
                                     .access = FileAccess::record_file,
                                     .blocks = BlockLocation::directory,
                                     .open_message_has_path = false,
                                     .builds_integration_points = true,
                                     .run_control = format_layouts::none,
                                     .block_14 = Block14Words::ints_real_int,
                                     .title_number_shift = 0,
                                     .last_block = 52,
                                     .guide_surface_head_records = 3,
                                     .spectrum = SpectrumRecords::pairs,
                                     .lower_case_spectrum_message = false,
                                     .material_blocks = true,
                                     .items = BinaryItems::directory_block,
                                     .start_sum_64 = true,
                                     .node_contact_words = 8,
                                     .missing_file_messages = true,
                                     .components_by_dofs = false,
                                     .force_parameters = ForceNumbering::table,
                                     .clash_codes_33_to_35 = true,
                                     .any_other_code_is_magnitude = false,
                                     .pressure_flag_test = true};

// Each older format as the one after it, with its differences.
inline constexpr FormatVersion v841 = [] {
  FormatVersion v = v861;
  v.name = "V841";
  v.database_version = 11;
  v.blocks = BlockLocation::fixed_layout;
  v.builds_integration_points = false;
  v.run_control = format_layouts::fixed;
  v.block_14 = Block14Words::ints_real;
  v.last_block = 48;  // the computed table of 48 addresses
  v.material_blocks = false;
  v.items = BinaryItems::address_table_end;
  v.missing_file_messages = false;
  v.force_parameters = ForceNumbering::table_to_section_16;
  v.pressure_flag_test = false;
  return v;
}();
inline constexpr FormatVersion v831 = [] {
  FormatVersion v = v841;
  v.name = "V831";
  v.database_version = 10;
  v.block_14 = Block14Words::ints;
  v.items = BinaryItems::none;
  v.start_sum_64 = false;
  v.node_contact_words = 7;
  v.components_by_dofs = true;
  v.force_parameters = ForceNumbering::section_by_parameter;
  v.clash_codes_33_to_35 = false;
  v.any_other_code_is_magnitude = true;
  return v;
}();
inline constexpr FormatVersion v821 = [] {
  FormatVersion v = v831;
  v.name = "V821";
  v.database_version = 7;
  v.blocks = BlockLocation::by_title;
  v.open_message_has_path = true;
  v.last_block = 46;  // Binary Data, by title
  v.guide_surface_head_records = 2;
  return v;
}();
inline constexpr FormatVersion v815 = [] {
  FormatVersion v = v821;
  v.name = "V815";
  v.database_version = 4;
  v.access = FileAccess::frame_units;
  v.run_control = format_layouts::v815;
  v.title_number_shift = 2;
  v.last_block = 43;  // Point Buoys
  return v;
}();
inline constexpr FormatVersion v811 = [] {
  FormatVersion v = v815;
  v.name = "V811";
  v.database_version = 3;
  v.run_control = format_layouts::v811;
  v.title_number_shift = 3;
  v.spectrum = SpectrumRecords::pairs_and_one;
  v.lower_case_spectrum_message = true;
  return v;
}();

// The formats in the order in which version selection tries them.
inline constexpr std::array<const FormatVersion *, 6> format_versions{&v861, &v841, &v831, &v821, &v815, &v811};

}  // namespace tmrdar::header
