// The database builder: writes the motion and force files of a job from a
// description, laid out as the analysis program lays them out, in any of the
// six formats.
//
// The header is placed block by block at the records that the format's
// layout gives for the description's counts (in V861 the layout rule of the
// block directory), and every block's contents are checked to fit the
// records that the layout reserves for it.
//
//   builder::JOB job;                        // a V861 job with both files
//   job.FORCE.PRESENT = false;               // ... of which only the .dbm exists
//   job.MOTION.FIRST.ANALYSIS_DETAIL_2 = 7;
//   job.RUN.NUM_TIME_STEPS = 100;            // run control values, blocks 2 to 15
//   job.RUN.ANALYSIS_TITLE.ASSIGN("Catenary riser");
//   job.MODEL.NODES = {{.FILE_NUMBER = 1}, {.FILE_NUMBER = 2, .X = 10.0F}};  // blocks 16 to 52
//   job.BLOCKS[7] = {builder::RECORD::INTS({12})};  // a block's raw records instead
//   job.WRITE(dir + "/riser");
//
//   builder::JOB old(header::V815);          // the same kind of job in V815's layout
//
// Formats. The description is the same for every format; format_layout.h
// tells how the six layouts differ. A format writes what it has a place for
// and leaves the rest out: a run control value it has no word for (block 2
// before V821, block 12 and block 48 before V861, block 13 in V811, the
// seabed angle before V841, HDR_14_7 in V841); the rows of a model block it
// lacks or cannot count (dampers and plastic hardening models before V861,
// binary items other than in V861 and V841, Wave Harmonics for the DSP in
// V811, Vessel and Body Profiles and all behind them in V815 and V811); and
// the frame sections it does not have. COUNTED_RUN and WRITTEN_RUN give the
// values as the format holds them, and the frames are laid out by those, so
// one description can be written in all six layouts. Blocks are numbered as
// the entries of a V861 directory in every format; BLOCK_RECORD says where
// each stands.
//
// Counts. Every header count that sizes a model block (NUM_ELEMENTS,
// NUM_NODES, NUM_LABELS, PIP_NODES_PER_PAIR, NUM_BINARY_ITEMS, ...) is written
// as RUN holds it when it is not 0, and as the size of the model's list when
// RUN leaves it at 0: a test that describes the rows needs no counts, and a
// test that sets a count gets that count in the header whatever the rows
// (a count below the rows makes a block that does not fit, and throws).
// The derived counts are the list sizes, and: PIP_NODES_PER_PAIR, the rows
// of the longest connection; NUM_TARGET_SPECTRUM_INTERVALS, the pairs less
// one; NUM_BOUNDARY_CONDITIONS, the list of block 31 (not the nodes' word 6).
// NUM_PIP_CONNECTIONS and the other frame counts are RUN's alone. The layout
// counts COUNTS.PLASTIC_HARDENING_RECORDS and COUNTS.BINARY_DATA_RECORDS
// follow the same rule, from the models' and the items' records. Block 48 is
// written as a run control record: RUN's SHAPE_FUNCTION_FLAG, the counted
// NUM_PLASTIC_HARDENING_MODELS, OUTPUT_FLAGS[17], OUTPUT_FLAGS[18] and
// SHAPE_FUNCTION_ORDER.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "builder/file_image.h"
#include "builder/format_layout.h"
#include "builder/frames.h"
#include "builder/model.h"
#include "header/common_database.h"
#include "header/format_version.h"
#include "header/tide3_database_files.h"

namespace tmrdar::builder {

// The first record of a database file.
struct FIRST_RECORD {
  int32_t DATABASE_VERSION = 13;
  int32_t WORD_2 = 0;
  int32_t ANALYSIS_DETAIL_2 = 0;
  std::array<int32_t, 5> FILE_WORDS{};
};

struct DATABASE_FILE_DESCRIPTION {
  bool PRESENT = true;
  FIRST_RECORD FIRST;
};

struct JOB {
  // A job written in the format's layout, its files' first records with the
  // format's version code.
  explicit JOB(const header::FORMAT_VERSION& format = header::V861);

  // The format written. A test may still set the codes of the first records
  // apart from it.
  const header::FORMAT_VERSION* FORMAT = &header::V861;
  DATABASE_FILE_DESCRIPTION MOTION;
  DATABASE_FILE_DESCRIPTION FORCE;

  // Entries of the block directory (V861 alone).
  int32_t NUM_BLOCK_ADDRESSES = MOD_COMMON_DATABASE::NUM_HEADER_BLOCKS;
  // The run control values that blocks 2 to 15 carry; their counts also size
  // the blocks behind them. A job has one time step, 2 nodes an element,
  // 3 coordinates and 6 degrees of freedom a node unless a test says otherwise.
  header::HEADER_VARIABLES RUN;
  // The model of blocks 16 to 52 (block 48 aside), written row by row.
  builder::MODEL MODEL;
  // Block 8 word 3: the seabed kind code.
  int32_t SEABED_CODE = 1;
  // Block 14 word 5 (the code that sets HDR_14_5) and word 6 (the seabed
  // angle, written in V861 and V841 alone; the other formats hold 0 there).
  int32_t HDR_14_5_CODE = 0;
  float SEABED_ANGLE = 0.0F;
  // The counts of the blocks whose size the header does not hold; the header's
  // own counts in here are replaced by those of RUN.
  MOD_COMMON_DATABASE::BLOCK_COUNTS COUNTS;
  // Raw contents of header blocks, by V861 directory entry (2 to 52), in any
  // format. A raw block stands in place of what the job would write there,
  // where the format keeps that block; a raw block for a block the format
  // does not have makes IMAGE throw std::invalid_argument.
  std::map<int32_t, std::vector<RECORD>> BLOCKS;

  // Result frames, one a step in each file, behind the header, laid out
  // section by section (see frames.h). Unless RUN.RESULT_START_RECORD is
  // set, the files are written with their frames, and the step layout of
  // block 3 (start record, step sizes, no offsets) is that of the frames
  // written; with it set, block 3 holds RUN's values and no frames are
  // written.
  //
  // What a frame word holds, the first that has something to say:
  //   RESULTS      values set word by word,
  //                  job.RESULTS.SET(SECTION_KIND::DISPLACEMENT, 7, 3, 2, 1.25F);
  //   FRAME_VALUE  a function of the word, called for every word of every
  //                frame, that gives a value or nothing,
  //   the step time, component 1 of each step record: STEP_TIMES[n - 1] for
  //                step n, or n * TIME_STEP where the list has none,
  //   DEFAULT_VALUE(file, step, offset, frame words): a value of its own.
  // A value set for a word that the frames do not hold makes IMAGE throw.
  FRAME_VALUES RESULTS;
  FRAME_FUNCTION FRAME_VALUE;
  std::vector<float> STEP_TIMES;
  float TIME_STEP = 0.1F;

  // The sections of one frame of the file for the counted run.
  FRAME_LAYOUT FRAME_SECTIONS(FILE_KIND kind) const;
  // The records of one frame of each file.
  int64_t MOTION_FRAME_RECORDS() const;
  int64_t FORCE_FRAME_RECORDS() const;
  // The time written for step n.
  float STEP_TIME(int32_t step) const;
  // The value that the builder writes at the word. Throws std::out_of_range
  // for a word that the frames do not hold.
  float VALUE(const FRAME_WORD& word) const;
  // The 1-based number of the word in its file, as a reader counts words;
  // any step is placed, as the frames would continue either way. Throws
  // std::out_of_range for a word outside its section or no frames written.
  int64_t WORD_NUMBER(const FRAME_WORD& word) const;
  // The word whose default value this is (the file by its sign), or nothing
  // for a value that no word of the frames takes by default.
  std::optional<FRAME_WORD> WORD_OF_DEFAULT(float value) const;
  // Writes the frames of the file from 0-based record `first_record` on.
  void PUT_FRAMES(FILE_IMAGE& image, FILE_KIND kind, int64_t first_record) const;

  // RUN with the counts that the model sets where RUN leaves them at 0, as
  // the format holds them: a value it has no word for is 0 (HDR_14_5 is
  // RUN's in every format).
  header::HEADER_VARIABLES COUNTED_RUN() const;
  // The run control values as written, what a reader of the file finds: the
  // counted run, with the step layout of the frames when the builder lays
  // them out.
  header::HEADER_VARIABLES WRITTEN_RUN() const;

  // The counts by which the header is laid out: the counted run, and COUNTS
  // with the plastic hardening and binary item records of the model where
  // COUNTS leaves them at 0 (0 in a format without those blocks).
  MOD_COMMON_DATABASE::BLOCK_COUNTS LAYOUT_COUNTS() const;

  // The 0-based record at which header block k (numbered as the entries of
  // a V861 directory, 2 to 52; 15 is the title) starts in the format, or -1
  // for a block that the format does not have (or, in V861, that the
  // directory has no entry for). In V861 it is DIRECTORY().ENTRY(k) - 1.
  int64_t BLOCK_RECORD(int32_t k) const;

  // The directory of a V861 header in 1-based record numbers, as written,
  // and in `header_end` the 1-based record behind the header. Throws
  // std::logic_error for a format without a directory.
  MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES DIRECTORY(int64_t* header_end = nullptr) const;
  // The 1-based number of the last directory record of a V861 header, as
  // written. Throws std::logic_error for a format without a directory.
  int32_t LAST_DIRECTORY_RECORD() const;

  // The image of one file. Throws std::invalid_argument for a description
  // that cannot be laid out (a block larger than its place, a name longer
  // than its field).
  FILE_IMAGE IMAGE(FILE_KIND kind) const;
  // Writes <stem>.dbm and <stem>.dbf, each when present. Throws
  // std::runtime_error when a file cannot be written.
  void WRITE(const std::string& stem) const;
};

}  // namespace tmrdar::builder
