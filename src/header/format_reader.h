// The reader of one database format: its header variables and tables, its
// files and scratch buffers. There is one instance per format version, each
// described by its FormatVersion, and no instance shares state with another.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "core/chars/blank_padded.h"
#include "core/file/record_file.h"
#include "header/common_database.h"
#include "header/database_file.h"
#include "header/format_version.h"
#include "header/header_tables.h"
#include "seabed/seabed_profile.h"

namespace tmrdar::header {

inline constexpr std::size_t num_model_dimensions = 14;
inline constexpr std::size_t header_title_width = 80;
inline constexpr int32_t num_output_flags = 19;
inline constexpr int32_t default_hdr_14_5 = 4;

// The counters and flags of a header. Opening a database resets every one of
// them to its default here before the header is read anew.
struct HeaderVariables {
  // The first record.
  int32_t motion_db_version = 0;
  int32_t force_db_version = 0;
  int32_t analysis_detail_2 = 0;
  std::array<int32_t, 5> file_words{};
  // The directory size record.
  int32_t num_block_addresses = 0;
  int32_t last_directory_record = 0;
  // Result tail counts.
  int32_t tail_pair_count_a = 0;
  int32_t tail_pair_count_b = 0;
  int32_t num_binary_items = 0;
  int32_t hdr_2_8 = 0;
  // Step layout.
  int32_t result_start_record = 0;
  int64_t motion_step_records = 0;
  int64_t force_step_records = 0;
  int32_t hdr_3_4 = 0;
  int64_t motion_start_offset = 0;
  int64_t force_start_offset = 0;
  // The copies of the two step sizes that the frame arithmetic works with,
  // taken just before the tables are made.
  int64_t motion_frame_records = 0;
  int64_t force_frame_records = 0;
  // The format's rules of the frame arithmetic, set at open: whether the
  // start record and a file's offset are summed in 64 bits, or in 32 bits
  // that wrap, and the words of a node's entry in the node contact section.
  bool start_sum_64 = true;
  int32_t node_contact_words = 8;
  int32_t hdr_3_7 = 0;
  int32_t num_panels = 0;
  // Time span and pipe-in-pipe size.
  float start_time = 0.0F;
  float end_time = 0.0F;
  float hdr_4_2 = 0.0F;
  float hdr_4_3 = 0.0F;
  float hdr_4_4 = 0.0F;
  float hdr_4_5 = 0.0F;
  float hdr_4_6 = 0.0F;
  int32_t pip_nodes_per_pair = 0;
  int32_t num_nonlinear_e_tables = 0;
  // Analysis value, fluid and guide counts.
  float analysis_detail_3 = 0.0F;
  float external_fluid_default_a = 0.0F;
  float external_fluid_default_b = 0.0F;
  int32_t num_guide_surfaces = 0;
  int32_t num_zero_gap_guides = 0;
  int32_t num_pip_connections = 0;
  int32_t num_pipe_in_pipe = 0;
  int32_t num_clash_pairs = 0;
  // Structure dimensions.
  int32_t num_elements = 0;
  int32_t num_nodes = 0;
  int32_t nodes_per_element = 0;
  int32_t coords_per_node = 0;
  int32_t dofs_per_node = 0;
  int32_t num_boundary_conditions = 0;
  int32_t num_element_sets = 0;
  int32_t num_node_sets = 0;
  // Time steps.
  int32_t num_time_steps = 0;
  // Analysis code and seabed kind.
  int32_t analysis_detail_1 = 0;
  int32_t hdr_8_2 = 0;
  int32_t num_seabed_points = 0;
  int32_t num_wave_harmonics = 0;
  float hdr_8_6 = 0.0F;
  int32_t num_vessels = 0;
  int32_t hdr_8_8 = 0;
  int32_t seabed_geometry = 0;
  // What the result frames hold; output_flags[i - 1] is flag i.
  std::array<int32_t, num_output_flags> output_flags{};
  // Attachment counts.
  int32_t num_aux_nodes = 0;
  int32_t num_aux_elements = 0;
  int32_t num_point_masses = 0;
  int32_t num_point_loads = 0;
  int32_t num_current_points = 0;
  int32_t num_floating_bodies = 0;
  int32_t num_installation_criteria = 0;
  int32_t num_labels = 0;
  // Damper count.
  int32_t num_damper_elements = 0;
  // Environment counts.
  int32_t hdr_13_1 = 0;
  int32_t num_dsp_wave_harmonics = 0;
  int32_t hdr_13_3 = 0;
  int32_t hdr_13_4 = 0;
  int32_t hdr_13_6 = 0;
  int32_t aux_element_result_sets = 0;
  // Target spectrum size.
  int32_t num_target_spectrum_intervals = 0;
  int32_t hdr_14_3 = 0;
  int32_t hdr_14_4 = 0;
  int32_t hdr_14_5 = default_hdr_14_5;
  int32_t hdr_14_7 = 0;
  // The analysis title.
  chars::BlankPadded<header_title_width> analysis_title;
  // Plastic hardening and shape function counts.
  int32_t shape_function_flag = 0;
  int32_t num_plastic_hardening_models = 0;
  int32_t shape_function_order = 0;
};

class FormatReader : public HeaderVariables {
 public:
  explicit FormatReader(const FormatVersion& version) : version(version) {}
  FormatReader(const FormatReader&) = delete;
  FormatReader& operator=(const FormatReader&) = delete;

  const FormatVersion& version;

  // Opens the files <directory><name>.dbm and .dbf that exist and reads the
  // header. `failed` tells whether anything went wrong; the message says what.
  void open_database_files(std::string_view name, std::string_view directory, bool& failed);
  void close_database_files();
  // Writes the 14 model dimensions when `dims` has room for them, and keeps
  // them with the analysis values and title for the host. `failed` is true,
  // and nothing is written, when it has no room. `required` is always 14.
  void update_dimensions(std::span<int32_t> dims, int32_t& required, bool& failed);
  // Reads the header from the motion file if it exists, else from the force
  // file. The flag is 0, or -1 on failure with what was read so far kept.
  void read_database_header(int32_t& flag);
  // Makes every table that the counts size, filled with zeros and blanks.
  // A failure reports it, sets the flag to -1 and keeps the tables made so far.
  void allocate_database_header_arrays(int32_t& flag);
  // Releases every table that is allocated, and the seabed profile's data.
  void deallocate_database_header_arrays();

  // One word of a result frame: `file` 1 is the motion file, 2 the force
  // file, any other keeps the file of the last call. `word` counts from 1 at
  // the start of the file. On failure, reported, `error` is true and `value`
  // keeps what it held.
  void readin(int32_t file, int64_t word, float& value, bool& error);
  // `values.size()` consecutive words from `word` on, from one record or two.
  // The first record of the last read of each file and the one behind it
  // are kept, so that a read of the same words again reads nothing. On
  // failure, reported, nothing is copied: a failed first record leaves the
  // kept records as they were, a failed second keeps the new first.
  // Requests of more words than two records hold from `word` on copy those.
  void readin_array(int32_t file, int64_t word, std::span<float> values, bool& error);
  // Forgets the kept records of both files.
  void clear_record_cache();
  // The words `first`, `first + stride`, ... of a result file (1 motion, 2
  // force), one into each value, with one test that the record of the last
  // word lies whole inside the file: a gather out of the file's mapping,
  // which gives what readin would give word by word. False, with nothing
  // read, when the file is not mapped, the words do not rise from word 1 on,
  // or the last record is not in the file; the caller then reads word by word.
  bool gather_words(int32_t file, int64_t first, int64_t stride, std::span<float> values);
  // The file (1 or 2) and word of the first two readin calls, and how many
  // calls there were in all.
  struct ReadLog {
    std::array<std::pair<int32_t, int64_t>, 2> reads{};
    int64_t count = 0;
  };
  // When set, readin logs each call here.
  ReadLog* read_log = nullptr;
  // Rows of the user's numbers, from 1; 0 for a number no row holds, the
  // first row for a number that several hold. post_elem_coding takes a
  // negative number for an auxiliary element and answers its negated row;
  // a positive number that its own row holds is that row.
  int32_t post_node_coding(int32_t number) const;
  int32_t post_elem_coding(int32_t number) const;
  int32_t post_aux_node_coding(int32_t number) const;
  int32_t post_aux_elem_coding(int32_t number) const;

  // The first label whose name equals `label`, both trimmed and with the
  // letters A to Z of either case alike: its kind, and the node (kind 1) or
  // the element it names; all three 0 and `not_found` true when none does.
  void check_label(std::string_view label, int32_t& node, int32_t& element, int32_t& kind, bool& not_found) const;

  // The time of output step `step`, from the motion file if it is open, else
  // from the force file; with neither, no error and `time` untouched.
  void read_times(int32_t step, float& time, bool& error);

  // The dimensions in the order in which the host receives them.
  std::array<int32_t, num_model_dimensions> model_dimensions() const;

  // Files.
  record_files::RecordFile motion_file;
  record_files::RecordFile force_file;
  bool motion_file_open = false;
  bool force_file_open = false;
  DatabaseFile header_file;

  // Scratch buffers of the header read: mixed records are read in runs of
  // integers and of reals, each to the next free place of its buffer.
  std::array<int32_t, 8> header_ints{};
  std::array<float, 8> header_reals{};
  // The block directory of the last header read; it outlives the files.
  std::unique_ptr<common_database::BlockAddresses> block_addresses;

  HeaderTables tables;
  // The sea floor: its kind from the run control, its data from the seabed blocks.
  seabed_profile::SeabedProfile seabed_profile;

  // Byte position of the start of header block k (numbered as the entries of
  // the directory format), where the format keeps it: by the directory, by
  // the fixed records of the run control blocks, by the computed address
  // table or by a walk over the block titles. An invalid (non-positive)
  // position for a block that the format or the file does not have.
  int64_t block_position(int32_t k) const;
  // The counts that lay out the blocks, as far as the header holds them;
  // the blocks whose size it does not hold count as empty.
  common_database::BlockCounts header_block_counts() const;
  // Records of 32 bytes that the header file holds, a partial last one counted.
  int64_t file_records() const;

 private:
  void load_block_directory(int32_t& flag);
  // The computed address table of a format that lays its blocks out by the
  // counts, made once the counts are read.
  void set_computed_block_addresses(int32_t& flag);
  // Blocks 2 to 15, and the test that the frames hold at least one step.
  void read_run_control_blocks(int32_t& flag);
  // The model blocks. Each reads the blocks named, each only when its count
  // asks for it, and on a failure reports it, sets the flag to -1 and
  // returns false with the rows read so far kept.
  void read_model_blocks(int32_t& flag);
  bool read_structure_blocks(int32_t& flag);        // 16 to 21, and the node translation
  bool read_sea_blocks(int32_t& flag);              // 22 to 25
  bool read_set_blocks(int32_t& flag);              // 26 to 31
  bool read_current_profile(int32_t& flag);         // 32
  bool read_contact_blocks(int32_t& flag);          // 33 to 40
  bool read_target_spectrum(int32_t& flag);         // 41
  bool read_material_and_item_blocks(int32_t& flag);  // 48 to 52, or the format's binary items
  bool read_binary_items(int64_t block, int32_t& flag);
  // The time of every step, from the result frames, and with them the start
  // and end time of the run.
  void read_time_list(int32_t& flag);
  // The indexes from numbers to rows over the tables as they stand.
  bool build_indexes();
  bool build_label_index();
  // The integration point locations, when the header asks for them.
  void build_integration_points(bool& failed);
  // The file that readin or readin_array last selected: 1 motion, 2 force.
  int32_t selected_result_file_ = 1;
  DatabaseFile result_file(bool motion);
  // The kept records of readin_array: for each file, slot 0 the first record
  // of its last read and slot 1 the record behind it; record 0 is none.
  std::array<std::array<int64_t, 2>, 2> cached_record_{};
  std::array<std::array<std::array<float, 8>, 2>, 2> record_cache_{};
  void report_open_failure(std::string_view message, const std::string& path) const;
};

// The reader of each format version.
FormatReader& v861_database_files();
FormatReader& v841_database_files();
FormatReader& v831_database_files();
FormatReader& v821_database_files();
FormatReader& v815_database_files();
FormatReader& v811_database_files();

// Destroys every format's reader; the last thing the library does when it is
// unloaded. A later call of a reader makes them anew.
void release_readers();

// The reader of a database version code; null for a code of no format.
FormatReader* reader_for_version(int32_t database_version);

}  // namespace tmrdar::header
