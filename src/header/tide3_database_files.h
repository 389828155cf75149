// The reader of one database format: its header variables and tables, its
// files and scratch buffers. There is one instance per format version, each
// described by its FORMAT_VERSION, and no instance shares state with another.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "core/chars/blank_padded.h"
#include "core/file/t_file.h"
#include "header/common_database.h"
#include "header/database_file.h"
#include "header/format_version.h"
#include "header/header_tables.h"
#include "seabed/seabed_profile.h"

namespace tmrdar::header {

inline constexpr std::size_t NUM_MODEL_DIMENSIONS = 14;
inline constexpr std::size_t HEADER_TITLE_WIDTH = 80;
inline constexpr int32_t NUM_OUTPUT_FLAGS = 19;
inline constexpr int32_t DEFAULT_HDR_14_5 = 4;

// The counters and flags of a header. Opening a database resets every one of
// them to its default here before the header is read anew.
struct HEADER_VARIABLES {
  // The first record.
  int32_t MOTION_DB_VERSION = 0;
  int32_t FORCE_DB_VERSION = 0;
  int32_t ANALYSIS_DETAIL_2 = 0;
  std::array<int32_t, 5> FILE_WORDS{};
  // The directory size record.
  int32_t NUM_BLOCK_ADDRESSES = 0;
  int32_t LAST_DIRECTORY_RECORD = 0;
  // Result tail counts.
  int32_t TAIL_PAIR_COUNT_A = 0;
  int32_t TAIL_PAIR_COUNT_B = 0;
  int32_t NUM_BINARY_ITEMS = 0;
  int32_t HDR_2_8 = 0;
  // Step layout.
  int32_t RESULT_START_RECORD = 0;
  int64_t MOTION_STEP_RECORDS = 0;
  int64_t FORCE_STEP_RECORDS = 0;
  int32_t HDR_3_4 = 0;
  int64_t MOTION_START_OFFSET = 0;
  int64_t FORCE_START_OFFSET = 0;
  // The copies of the two step sizes that the frame arithmetic works with,
  // taken just before the tables are made.
  int64_t MOTION_FRAME_RECORDS = 0;
  int64_t FORCE_FRAME_RECORDS = 0;
  // The format's rules of the frame arithmetic, set at open: whether the
  // start record and a file's offset are summed in 64 bits, or in 32 bits
  // that wrap, and the words of a node's entry in the node contact section.
  bool START_SUM_64 = true;
  int32_t NODE_CONTACT_WORDS = 8;
  int32_t HDR_3_7 = 0;
  int32_t NUM_PANELS = 0;
  // Time span and pipe-in-pipe size.
  float START_TIME = 0.0F;
  float END_TIME = 0.0F;
  float HDR_4_2 = 0.0F;
  float HDR_4_3 = 0.0F;
  float HDR_4_4 = 0.0F;
  float HDR_4_5 = 0.0F;
  float HDR_4_6 = 0.0F;
  int32_t PIP_NODES_PER_PAIR = 0;
  int32_t NUM_NONLINEAR_E_TABLES = 0;
  // Analysis value, fluid and guide counts.
  float ANALYSIS_DETAIL_3 = 0.0F;
  float EXTERNAL_FLUID_DEFAULT_A = 0.0F;
  float EXTERNAL_FLUID_DEFAULT_B = 0.0F;
  int32_t NUM_GUIDE_SURFACES = 0;
  int32_t NUM_ZERO_GAP_GUIDES = 0;
  int32_t NUM_PIP_CONNECTIONS = 0;
  int32_t NUM_PIPE_IN_PIPE = 0;
  int32_t NUM_CLASH_PAIRS = 0;
  // Structure dimensions.
  int32_t NUM_ELEMENTS = 0;
  int32_t NUM_NODES = 0;
  int32_t NODES_PER_ELEMENT = 0;
  int32_t COORDS_PER_NODE = 0;
  int32_t DOFS_PER_NODE = 0;
  int32_t NUM_BOUNDARY_CONDITIONS = 0;
  int32_t NUM_ELEMENT_SETS = 0;
  int32_t NUM_NODE_SETS = 0;
  // Time steps.
  int32_t NUM_TIME_STEPS = 0;
  // Analysis code and seabed kind.
  int32_t ANALYSIS_DETAIL_1 = 0;
  int32_t HDR_8_2 = 0;
  int32_t NUM_SEABED_POINTS = 0;
  int32_t NUM_WAVE_HARMONICS = 0;
  float HDR_8_6 = 0.0F;
  int32_t NUM_VESSELS = 0;
  int32_t HDR_8_8 = 0;
  int32_t SEABED_GEOMETRY = 0;
  // What the result frames hold; OUTPUT_FLAGS[i - 1] is flag i.
  std::array<int32_t, NUM_OUTPUT_FLAGS> OUTPUT_FLAGS{};
  // Attachment counts.
  int32_t NUM_AUX_NODES = 0;
  int32_t NUM_AUX_ELEMENTS = 0;
  int32_t NUM_POINT_MASSES = 0;
  int32_t NUM_POINT_LOADS = 0;
  int32_t NUM_CURRENT_POINTS = 0;
  int32_t NUM_FLOATING_BODIES = 0;
  int32_t NUM_INSTALLATION_CRITERIA = 0;
  int32_t NUM_LABELS = 0;
  // Damper count.
  int32_t NUM_DAMPER_ELEMENTS = 0;
  // Environment counts.
  int32_t HDR_13_1 = 0;
  int32_t NUM_DSP_WAVE_HARMONICS = 0;
  int32_t HDR_13_3 = 0;
  int32_t HDR_13_4 = 0;
  int32_t HDR_13_6 = 0;
  int32_t AUX_ELEMENT_RESULT_SETS = 0;
  // Target spectrum size.
  int32_t NUM_TARGET_SPECTRUM_INTERVALS = 0;
  int32_t HDR_14_3 = 0;
  int32_t HDR_14_4 = 0;
  int32_t HDR_14_5 = DEFAULT_HDR_14_5;
  int32_t HDR_14_7 = 0;
  // The analysis title.
  chars::BLANK_PADDED<HEADER_TITLE_WIDTH> ANALYSIS_TITLE;
  // Plastic hardening and shape function counts.
  int32_t SHAPE_FUNCTION_FLAG = 0;
  int32_t NUM_PLASTIC_HARDENING_MODELS = 0;
  int32_t SHAPE_FUNCTION_ORDER = 0;
};

class TIDE3_DATABASE_FILES : public HEADER_VARIABLES {
 public:
  explicit TIDE3_DATABASE_FILES(const FORMAT_VERSION& version) : VERSION(version) {}
  TIDE3_DATABASE_FILES(const TIDE3_DATABASE_FILES&) = delete;
  TIDE3_DATABASE_FILES& operator=(const TIDE3_DATABASE_FILES&) = delete;

  const FORMAT_VERSION& VERSION;

  // Opens the files <directory><name>.dbm and .dbf that exist and reads the
  // header. `failed` tells whether anything went wrong; the message says what.
  void OPEN_TIDE3_DATABASE_FILES(std::string_view name, std::string_view directory, bool& failed);
  void CLOSE_TIDE3_DATABASE_FILES();
  // Writes the 14 model dimensions when `dims` has room for them, and keeps
  // them with the analysis values and title for the host. `failed` is true,
  // and nothing is written, when it has no room. `required` is always 14.
  void UPDATE_DIMENSIONS(std::span<int32_t> dims, int32_t& required, bool& failed);
  // Reads the header from the motion file if it exists, else from the force
  // file. The flag is 0, or -1 on failure with what was read so far kept.
  void READ_TIDE3_DATABASE_HEADER(int32_t& flag);
  // Makes every table that the counts size, filled with zeros and blanks.
  // A failure reports it, sets the flag to -1 and keeps the tables made so far.
  void ALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS(int32_t& flag);
  // Releases every table that is allocated, and the seabed profile's data.
  void DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS();

  // One word of a result frame: `file` 1 is the motion file, 2 the force
  // file, any other keeps the file of the last call. `word` counts from 1 at
  // the start of the file. On failure, reported, `error` is true and `value`
  // keeps what it held.
  void READIN(int32_t file, int64_t word, float& value, bool& error);
  // `values.size()` consecutive words from `word` on, from one record or two.
  // The first record of the last read of each file and the one behind it
  // are kept, so that a read of the same words again reads nothing. On
  // failure, reported, nothing is copied: a failed first record leaves the
  // kept records as they were, a failed second keeps the new first.
  // Requests of more words than two records hold from `word` on copy those.
  void READIN_ARRAY(int32_t file, int64_t word, std::span<float> values, bool& error);
  // Forgets the kept records of both files.
  void CLEAR_RECORD_CACHE();
  // The words `first`, `first + stride`, ... of a result file (1 motion, 2
  // force), one into each value, with one test that the record of the last
  // word lies whole inside the file: a gather out of the file's mapping,
  // which gives what READIN would give word by word. False, with nothing
  // read, when the file is not mapped, the words do not rise from word 1 on,
  // or the last record is not in the file; the caller then reads word by word.
  bool GATHER_WORDS(int32_t file, int64_t first, int64_t stride, std::span<float> values);
  // When set, READIN appends each call's file (1 or 2) and word here.
  std::vector<std::pair<int32_t, int64_t>>* READ_LOG = nullptr;
  // Rows of the user's numbers, from 1; 0 for a number no row holds, the
  // first row for a number that several hold. POST_ELEM_CODING takes a
  // negative number for an auxiliary element and answers its negated row;
  // a positive number that its own row holds is that row.
  int32_t POST_NODE_CODING(int32_t number) const;
  int32_t POST_ELEM_CODING(int32_t number) const;
  int32_t POST_AUX_NODE_CODING(int32_t number) const;
  int32_t POST_AUX_ELEM_CODING(int32_t number) const;

  // The first label whose name equals `label`, both trimmed and with the
  // letters A to Z of either case alike: its kind, and the node (kind 1) or
  // the element it names; all three 0 and `not_found` true when none does.
  void CHECK_LABEL(std::string_view label, int32_t& node, int32_t& element, int32_t& kind, bool& not_found) const;

  // The time of output step `step`, from the motion file if it is open, else
  // from the force file; with neither, no error and `time` untouched.
  void READ_TIMES(int32_t step, float& time, bool& error);

  // The dimensions in the order in which the host receives them.
  std::array<int32_t, NUM_MODEL_DIMENSIONS> MODEL_DIMENSIONS() const;

  // Files.
  MOD_FILE::T_FILE MOTION_FILE;
  MOD_FILE::T_FILE FORCE_FILE;
  bool MOTION_FILE_OPEN = false;
  bool FORCE_FILE_OPEN = false;
  DATABASE_FILE HEADER_FILE;

  // Scratch buffers of the header read: mixed records are read in runs of
  // integers and of reals, each to the next free place of its buffer.
  std::array<int32_t, 8> HEADER_INTS{};
  std::array<float, 8> HEADER_REALS{};
  // The block directory of the last header read; it outlives the files.
  std::unique_ptr<MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES> BLOCK_ADDRESSES;

  HEADER_TABLES TABLES;
  // The sea floor: its kind from the run control, its data from the seabed blocks.
  MOD_SEABED_PROFILE::T_SEABED_PROFILE SEABED_PROFILE;

  // Byte position of the start of header block k (numbered as the entries of
  // the directory format), where the format keeps it: by the directory, by
  // the fixed records of the run control blocks, by the computed address
  // table or by a walk over the block titles. An invalid (non-positive)
  // position for a block that the format or the file does not have.
  int64_t BLOCK_POSITION(int32_t k) const;
  // The counts that lay out the blocks, as far as the header holds them;
  // the blocks whose size it does not hold count as empty.
  MOD_COMMON_DATABASE::BLOCK_COUNTS HEADER_BLOCK_COUNTS() const;
  // Records of 32 bytes that the header file holds, a partial last one counted.
  int64_t FILE_RECORDS() const;

 private:
  void LOAD_BLOCK_DIRECTORY(int32_t& flag);
  // The computed address table of a format that lays its blocks out by the
  // counts, made once the counts are read.
  void SET_COMPUTED_BLOCK_ADDRESSES(int32_t& flag);
  // Blocks 2 to 15, and the test that the frames hold at least one step.
  void READ_RUN_CONTROL_BLOCKS(int32_t& flag);
  // The model blocks. Each reads the blocks named, each only when its count
  // asks for it, and on a failure reports it, sets the flag to -1 and
  // returns false with the rows read so far kept.
  void READ_MODEL_BLOCKS(int32_t& flag);
  bool READ_STRUCTURE_BLOCKS(int32_t& flag);        // 16 to 21, and the node translation
  bool READ_SEA_BLOCKS(int32_t& flag);              // 22 to 25
  bool READ_SET_BLOCKS(int32_t& flag);              // 26 to 31
  bool READ_CURRENT_PROFILE(int32_t& flag);         // 32
  bool READ_CONTACT_BLOCKS(int32_t& flag);          // 33 to 40
  bool READ_TARGET_SPECTRUM(int32_t& flag);         // 41
  bool READ_MATERIAL_AND_ITEM_BLOCKS(int32_t& flag);  // 48 to 52, or the format's binary items
  bool READ_BINARY_ITEMS(int64_t block, int32_t& flag);
  // The time of every step, from the result frames, and with them the start
  // and end time of the run.
  void READ_TIME_LIST(int32_t& flag);
  // The indexes from numbers to rows over the tables as they stand.
  bool BUILD_INDEXES();
  bool BUILD_LABEL_INDEX();
  // The integration point locations, when the header asks for them.
  void BUILD_INTEGRATION_POINTS(bool& failed);
  // The file that READIN or READIN_ARRAY last selected: 1 motion, 2 force.
  int32_t selected_result_file_ = 1;
  DATABASE_FILE RESULT_FILE(bool motion);
  // The kept records of READIN_ARRAY: for each file, slot 0 the first record
  // of its last read and slot 1 the record behind it; record 0 is none.
  std::array<std::array<int64_t, 2>, 2> cached_record_{};
  std::array<std::array<std::array<float, 8>, 2>, 2> record_cache_{};
  void REPORT_OPEN_FAILURE(std::string_view message, const std::string& path) const;
};

// The reader of each format version.
TIDE3_DATABASE_FILES& V861_TIDE3_DATABASE_FILES();
TIDE3_DATABASE_FILES& V841_TIDE3_DATABASE_FILES();
TIDE3_DATABASE_FILES& V831_TIDE3_DATABASE_FILES();
TIDE3_DATABASE_FILES& V821_TIDE3_DATABASE_FILES();
TIDE3_DATABASE_FILES& V815_TIDE3_DATABASE_FILES();
TIDE3_DATABASE_FILES& V811_TIDE3_DATABASE_FILES();

// Destroys every format's reader; the last thing the library does when it is
// unloaded. A later call of a reader makes them anew.
void RELEASE_READERS();

// The reader of a database version code; null for a code of no format.
TIDE3_DATABASE_FILES* TIDE3_DATABASE_MODULE(int32_t database_version);

}  // namespace tmrdar::header
