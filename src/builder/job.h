// The database builder: writes the motion and force files of a job from a
// description, laid out as the analysis program lays them out, in any of the
// six formats.
//
// The header is placed block by block at the records that the format's
// layout gives for the description's counts (in V861 the layout rule of the
// block directory), and every block's contents are checked to fit the
// records that the layout reserves for it.
//
//   builder::job job;                        // a V861 job with both files
//   job.force.present = false;               // ... of which only the .dbm exists
//   job.motion.first.analysis_detail_2 = 7;
//   job.run.num_time_steps = 100;            // run control values, blocks 2 to 15
//   job.run.analysis_title.assign("Catenary riser");
//   job.model.nodes = {{.file_number = 1}, {.file_number = 2, .X = 10.0F}};  // blocks 16 to 52
//   job.blocks[7] = {builder::record::ints({12})};  // a block's raw records instead
//   job.write(dir + "/riser");
//
//   builder::job old(header::V815);          // the same kind of job in V815's layout
//
// Formats. The description is the same for every format; format_layout.h
// tells how the six layouts differ. A format writes what it has a place for
// and leaves the rest out: a run control value it has no word for (block 2
// before V821, block 12 and block 48 before V861, block 13 in V811, the
// seabed angle before V841, hdr_14_7 in V841); the rows of a model block it
// lacks or cannot count (dampers and plastic hardening models before V861,
// binary items other than in V861 and V841, Wave Harmonics for the DSP in
// V811, Vessel and Body Profiles and all behind them in V815 and V811); and
// the frame sections it does not have. counted_run and written_run give the
// values as the format holds them, and the frames are laid out by those, so
// one description can be written in all six layouts. Blocks are numbered as
// the entries of a V861 directory in every format; block_record says where
// each stands.
//
// Counts. Every header count that sizes a model block (num_elements,
// num_nodes, num_labels, pip_nodes_per_pair, num_binary_items, ...) is written
// as run holds it when it is not 0, and as the size of the model's list when
// run leaves it at 0: a test that describes the rows needs no counts, and a
// test that sets a count gets that count in the header whatever the rows
// (a count below the rows makes a block that does not fit, and throws).
// The derived counts are the list sizes, and: pip_nodes_per_pair, the rows
// of the longest connection; num_target_spectrum_intervals, the pairs less
// one; num_boundary_conditions, the list of block 31 (not the nodes' word 6).
// num_pip_connections and the other frame counts are run's alone. The layout
// counts counts.plastic_hardening_records and counts.binary_data_records
// follow the same rule, from the models' and the items' records. Block 48 is
// written as a run control record: run's shape_function_flag, the counted
// num_plastic_hardening_models, output_flags[17], output_flags[18] and
// shape_function_order.
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
#include "header/format_reader.h"

namespace tmrdar::builder {

// The first record of a database file.
struct FirstRecord {
  int32_t database_version = 13;
  int32_t word_2 = 0;
  int32_t analysis_detail_2 = 0;
  std::array<int32_t, 5> file_words{};
};

struct DatabaseFileDescription {
  bool present = true;
  FirstRecord first;
};

struct Job {
  // A job written in the format's layout, its files' first records with the
  // format's version code.
  explicit Job(const header::FormatVersion& format = header::v861);

  // The format written. A test may still set the codes of the first records
  // apart from it.
  const header::FormatVersion* format = &header::v861;
  DatabaseFileDescription motion;
  DatabaseFileDescription force;

  // Entries of the block directory (V861 alone).
  int32_t num_block_addresses = common_database::num_header_blocks;
  // The run control values that blocks 2 to 15 carry; their counts also size
  // the blocks behind them. A job has one time step, 2 nodes an element,
  // 3 coordinates and 6 degrees of freedom a node unless a test says otherwise.
  header::HeaderVariables run;
  // The model of blocks 16 to 52 (block 48 aside), written row by row.
  builder::Model model;
  // Block 8 word 3: the seabed kind code.
  int32_t seabed_code = 1;
  // Block 14 word 5 (the code that sets hdr_14_5) and word 6 (the seabed
  // angle, written in V861 and V841 alone; the other formats hold 0 there).
  int32_t hdr_14_5_code = 0;
  float seabed_angle = 0.0F;
  // The counts of the blocks whose size the header does not hold; the header's
  // own counts in here are replaced by those of run.
  common_database::BlockCounts counts;
  // Raw contents of header blocks, by V861 directory entry (2 to 52), in any
  // format. A raw block stands in place of what the job would write there,
  // where the format keeps that block; a raw block for a block the format
  // does not have makes image throw std::invalid_argument.
  std::map<int32_t, std::vector<Record>> blocks;

  // Result frames, one a step in each file, behind the header, laid out
  // section by section (see frames.h). Unless run.result_start_record is
  // set, the files are written with their frames, and the step layout of
  // block 3 (start record, step sizes, no offsets) is that of the frames
  // written; with it set, block 3 holds run's values and no frames are
  // written.
  //
  // What a frame word holds, the first that has something to say:
  //   results      values set word by word,
  //                  job.results.set(section_kind::displacement, 7, 3, 2, 1.25F);
  //   frame_value  a function of the word, called for every word of every
  //                frame, that gives a value or nothing,
  //   the step time, component 1 of each step record: step_times[n - 1] for
  //                step n, or n * time_step where the list has none,
  //   default_value(file, step, offset, frame words): a value of its own.
  // A value set for a word that the frames do not hold makes image throw.
  FrameValues results;
  FrameFunction frame_value;
  std::vector<float> step_times;
  float time_step = 0.1F;

  // The sections of one frame of the file for the counted run.
  FrameLayout frame_sections(FileKind kind) const;
  // The records of one frame of each file.
  int64_t motion_frame_records() const;
  int64_t force_frame_records() const;
  // The time written for step n.
  float step_time(int32_t step) const;
  // The value that the builder writes at the word. Throws std::out_of_range
  // for a word that the frames do not hold.
  float value(const FrameWord& word) const;
  // The 1-based number of the word in its file, as a reader counts words;
  // any step is placed, as the frames would continue either way. Throws
  // std::out_of_range for a word outside its section or no frames written.
  int64_t word_number(const FrameWord& word) const;
  // The word whose default value this is (the file by its sign), or nothing
  // for a value that no word of the frames takes by default.
  std::optional<FrameWord> word_of_default(float value) const;
  // Writes the frames of the file from 0-based record `first_record` on.
  void put_frames(FileImage& image, FileKind kind, int64_t first_record) const;

  // run with the counts that the model sets where run leaves them at 0, as
  // the format holds them: a value it has no word for is 0 (hdr_14_5 is
  // run's in every format).
  header::HeaderVariables counted_run() const;
  // The run control values as written, what a reader of the file finds: the
  // counted run, with the step layout of the frames when the builder lays
  // them out.
  header::HeaderVariables written_run() const;

  // The counts by which the header is laid out: the counted run, and counts
  // with the plastic hardening and binary item records of the model where
  // counts leaves them at 0 (0 in a format without those blocks).
  common_database::BlockCounts layout_counts() const;

  // The 0-based record at which header block k (numbered as the entries of
  // a V861 directory, 2 to 52; 15 is the title) starts in the format, or -1
  // for a block that the format does not have (or, in V861, that the
  // directory has no entry for). In V861 it is directory().entry(k) - 1.
  int64_t block_record(int32_t k) const;

  // The directory of a V861 header in 1-based record numbers, as written,
  // and in `header_end` the 1-based record behind the header. Throws
  // std::logic_error for a format without a directory.
  common_database::BlockAddresses directory(int64_t* header_end = nullptr) const;
  // The 1-based number of the last directory record of a V861 header, as
  // written. Throws std::logic_error for a format without a directory.
  int32_t last_directory_record() const;

  // The image of one file. Throws std::invalid_argument for a description
  // that cannot be laid out (a block larger than its place, a name longer
  // than its field).
  FileImage image(FileKind kind) const;
  // Writes <stem>.dbm and <stem>.dbf, each when present. Throws
  // std::runtime_error when a file cannot be written.
  void write(const std::string& stem) const;
};

}  // namespace tmrdar::builder
