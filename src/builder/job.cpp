#include "builder/job.h"

#include <limits>
#include <stdexcept>

namespace tmrdar::builder {

using MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES;

namespace {

// Blocks 2 to 15 and 48 from the run control values, word by word.
std::map<int32_t, std::vector<RECORD>> RUN_CONTROL_BLOCKS(const JOB& job) {
  const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
  std::map<int32_t, std::vector<RECORD>> blocks;
  blocks[2] = {RECORD::INTS({0, 0, 0, 0, v.TAIL_PAIR_COUNT_A, v.TAIL_PAIR_COUNT_B, v.NUM_BINARY_ITEMS, v.HDR_2_8})};
  blocks[3] = {RECORD::INTS({v.RESULT_START_RECORD, static_cast<int32_t>(v.MOTION_STEP_RECORDS),
                             static_cast<int32_t>(v.FORCE_STEP_RECORDS), v.HDR_3_4,
                             static_cast<int32_t>(v.MOTION_START_OFFSET), static_cast<int32_t>(v.FORCE_START_OFFSET),
                             v.HDR_3_7, v.NUM_PANELS})};
  blocks[4] = {RECORD::REALS({v.START_TIME, v.HDR_4_2, v.HDR_4_3, v.HDR_4_4, v.HDR_4_5, v.HDR_4_6})
                   .INT(7, v.PIP_NODES_PER_PAIR)
                   .INT(8, v.NUM_NONLINEAR_E_TABLES)};
  blocks[5] = {RECORD::REALS({v.ANALYSIS_DETAIL_3, v.EXTERNAL_FLUID_DEFAULT_A, v.EXTERNAL_FLUID_DEFAULT_B})
                   .INT(4, v.NUM_GUIDE_SURFACES)
                   .INT(5, v.NUM_ZERO_GAP_GUIDES)
                   .INT(6, v.NUM_PIP_CONNECTIONS)
                   .INT(7, v.NUM_PIPE_IN_PIPE)
                   .INT(8, v.NUM_CLASH_PAIRS)};
  blocks[6] = {RECORD::INTS({v.NUM_ELEMENTS, v.NUM_NODES, v.NODES_PER_ELEMENT, v.COORDS_PER_NODE, v.DOFS_PER_NODE,
                             v.NUM_BOUNDARY_CONDITIONS, v.NUM_ELEMENT_SETS, v.NUM_NODE_SETS})};
  blocks[7] = {RECORD::INTS({v.NUM_TIME_STEPS})};
  blocks[8] = {RECORD::INTS({v.ANALYSIS_DETAIL_1, v.HDR_8_2, job.SEABED_CODE, v.NUM_SEABED_POINTS,
                             v.NUM_WAVE_HARMONICS})
                   .REAL(6, v.HDR_8_6)
                   .INT(7, v.NUM_VESSELS)
                   .INT(8, v.HDR_8_8)};
  RECORD flags_1;
  RECORD flags_2;
  for (int w = 1; w <= 8; ++w) {
    flags_1.INT(w, v.OUTPUT_FLAGS[static_cast<std::size_t>(w - 1)]);
    flags_2.INT(w, v.OUTPUT_FLAGS[static_cast<std::size_t>(w + 7)]);
  }
  blocks[9] = {flags_1};
  blocks[10] = {flags_2};
  blocks[11] = {RECORD::INTS({v.NUM_AUX_NODES, v.NUM_AUX_ELEMENTS, v.NUM_POINT_MASSES, v.NUM_POINT_LOADS,
                              v.NUM_CURRENT_POINTS, v.NUM_FLOATING_BODIES, v.NUM_INSTALLATION_CRITERIA,
                              v.NUM_LABELS})};
  blocks[12] = {RECORD::INTS({v.NUM_DAMPER_ELEMENTS, v.OUTPUT_FLAGS[16]})};
  blocks[13] = {RECORD::INTS({v.HDR_13_1, v.NUM_DSP_WAVE_HARMONICS, v.HDR_13_3, v.HDR_13_4, 0, v.HDR_13_6})
                    .INT(8, v.AUX_ELEMENT_RESULT_SETS)};
  blocks[14] = {RECORD::INTS({v.NUM_TARGET_SPECTRUM_INTERVALS, 0, v.HDR_14_3, v.HDR_14_4, job.HDR_14_5_CODE})
                    .REAL(6, job.SEABED_ANGLE)
                    .INT(7, v.HDR_14_7)};
  // The title in pieces of 28, 28 and 24 characters, one a record.
  const std::string_view title = v.ANALYSIS_TITLE.VIEW();
  blocks[15] = {RECORD::TEXT(title.substr(0, 28)), RECORD::TEXT(title.substr(28, 28)),
                RECORD::TEXT(title.substr(56, 24))};
  // Block 48: the shape function and plastic hardening counts, and flags 18 and 19.
  blocks[48] = {RECORD::INTS({v.SHAPE_FUNCTION_FLAG, v.NUM_PLASTIC_HARDENING_MODELS, v.OUTPUT_FLAGS[17],
                              v.OUTPUT_FLAGS[18], v.SHAPE_FUNCTION_ORDER})};
  return blocks;
}

}  // namespace

JOB::JOB() {
  RUN.NUM_TIME_STEPS = 1;
  RUN.NODES_PER_ELEMENT = 2;
  RUN.COORDS_PER_NODE = 3;
  RUN.DOFS_PER_NODE = 6;
}

header::HEADER_VARIABLES JOB::COUNTED_RUN() const {
  header::HEADER_VARIABLES v = RUN;
  COUNT_MODEL(MODEL, v);
  return v;
}

MOD_COMMON_DATABASE::BLOCK_COUNTS JOB::LAYOUT_COUNTS() const {
  MOD_COMMON_DATABASE::BLOCK_COUNTS counts = COUNTS;
  const header::HEADER_VARIABLES run = COUNTED_RUN();  // the counts as written
  const auto records = [](int32_t& field, int64_t model_records) {
    if (field != 0) return;
    if (model_records > std::numeric_limits<int32_t>::max()) {
      throw std::invalid_argument("the model's records overflow a count of the layout");
    }
    field = static_cast<int32_t>(model_records);
  };
  records(counts.PLASTIC_HARDENING_RECORDS, MODEL_PLASTIC_HARDENING_RECORDS(MODEL));
  records(counts.BINARY_DATA_RECORDS, MODEL_BINARY_DATA_RECORDS(MODEL));
  counts.NUM_ELEMENTS = run.NUM_ELEMENTS;
  counts.NUM_NONLINEAR_E_TABLES = run.NUM_NONLINEAR_E_TABLES;
  counts.NUM_NODES = run.NUM_NODES;
  counts.NUM_AUX_ELEMENTS = run.NUM_AUX_ELEMENTS;
  counts.NUM_AUX_NODES = run.NUM_AUX_NODES;
  counts.NUM_SEABED_POINTS = run.NUM_SEABED_POINTS;
  counts.NUM_WAVE_HARMONICS = run.NUM_WAVE_HARMONICS;
  counts.NUM_DSP_WAVE_HARMONICS = run.NUM_DSP_WAVE_HARMONICS;
  counts.NUM_ELEMENT_SETS = run.NUM_ELEMENT_SETS;
  counts.NUM_NODE_SETS = run.NUM_NODE_SETS;
  counts.NUM_LABELS = run.NUM_LABELS;
  counts.NUM_POINT_MASSES = run.NUM_POINT_MASSES;
  counts.NUM_POINT_LOADS = run.NUM_POINT_LOADS;
  counts.NUM_BOUNDARY_CONDITIONS = run.NUM_BOUNDARY_CONDITIONS;
  counts.NUM_CURRENT_POINTS = run.NUM_CURRENT_POINTS;
  counts.PIP_NODES_PER_PAIR = run.PIP_NODES_PER_PAIR;
  counts.NUM_PIPE_IN_PIPE = run.NUM_PIPE_IN_PIPE;
  counts.NUM_GUIDE_SURFACES = run.NUM_GUIDE_SURFACES;
  counts.NUM_PANELS = run.NUM_PANELS;
  counts.NUM_ZERO_GAP_GUIDES = run.NUM_ZERO_GAP_GUIDES;
  counts.NUM_INSTALLATION_CRITERIA = run.NUM_INSTALLATION_CRITERIA;
  counts.NUM_FLOATING_BODIES = run.NUM_FLOATING_BODIES;
  counts.NUM_VESSELS = run.NUM_VESSELS;
  counts.NUM_TARGET_SPECTRUM_INTERVALS = run.NUM_TARGET_SPECTRUM_INTERVALS;
  counts.NUM_PLASTIC_HARDENING_MODELS = run.NUM_PLASTIC_HARDENING_MODELS;
  counts.NUM_DAMPER_ELEMENTS = run.NUM_DAMPER_ELEMENTS;
  return counts;
}

header::HEADER_VARIABLES JOB::WRITTEN_RUN() const {
  header::HEADER_VARIABLES v = COUNTED_RUN();
  if (v.RESULT_START_RECORD != 0) return v;
  int64_t header_end = 0;
  DIRECTORY(&header_end);
  v.RESULT_START_RECORD = static_cast<int32_t>(header_end - 1);
  v.MOTION_START_OFFSET = 0;
  v.FORCE_START_OFFSET = 0;
  v.MOTION_STEP_RECORDS = MOTION_FRAME_RECORDS();
  v.FORCE_STEP_RECORDS = FORCE_FRAME_RECORDS();
  return v;
}

T_BLOCK_ADDRESSES JOB::DIRECTORY(int64_t* header_end) const {
  T_BLOCK_ADDRESSES directory;
  int32_t status = 0;
  MOD_COMMON_DATABASE::INIT_BLOCK_ADDRESSES(directory, NUM_BLOCK_ADDRESSES, status);
  int64_t total = 0;
  MOD_COMMON_DATABASE::SET_BLOCK_ADDRESSES(directory, LAYOUT_COUNTS(), total);
  if (header_end != nullptr) *header_end = total;
  return directory;
}

int32_t JOB::LAST_DIRECTORY_RECORD() const {
  // The directory starts in record 3 and fills eight entries a record.
  return 2 + (NUM_BLOCK_ADDRESSES + 7) / 8;
}

FILE_IMAGE JOB::IMAGE(FILE_KIND kind) const {
  const DATABASE_FILE_DESCRIPTION& file = kind == FILE_KIND::MOTION ? MOTION : FORCE;
  FILE_IMAGE image;

  // Record 0: the first record.
  RECORD first = RECORD::INTS({file.FIRST.DATABASE_VERSION, file.FIRST.WORD_2, file.FIRST.ANALYSIS_DETAIL_2});
  for (int w = 0; w < 5; ++w) first.INT(4 + w, file.FIRST.FILE_WORDS[static_cast<std::size_t>(w)]);
  image.PUT(0, first);

  // Record 1: the directory size record; then the entries, 8 a record.
  const int32_t last_directory_record = LAST_DIRECTORY_RECORD();
  image.PUT(1, RECORD::INTS({NUM_BLOCK_ADDRESSES, last_directory_record}));
  int64_t total = 0;
  const T_BLOCK_ADDRESSES directory = DIRECTORY(&total);
  for (std::size_t i = 0; i < directory.ADDRESSES.size(); ++i) {
    image.PUT_INT(2 + static_cast<int64_t>(i / 8), static_cast<int>(i % 8) + 1, directory.ADDRESSES[i]);
  }

  // The blocks, each at its entry, each within the records reserved for it.
  const int64_t after_directory = last_directory_record;  // 0-based record behind the directory
  const MOD_COMMON_DATABASE::BLOCK_COUNTS counts = LAYOUT_COUNTS();
  const header::HEADER_VARIABLES v = COUNTED_RUN();
  std::map<int32_t, std::vector<RECORD>> blocks = RUN_CONTROL_BLOCKS(*this);
  blocks.merge(MODEL_BLOCKS(MODEL, v));
  for (const auto& [k, records] : BLOCKS) blocks[k] = records;
  for (const auto& [k, records] : blocks) {
    if (k < 2 || k > MOD_COMMON_DATABASE::NUM_HEADER_BLOCKS || k > NUM_BLOCK_ADDRESSES) {
      throw std::invalid_argument("block " + std::to_string(k) + " has no directory entry");
    }
    const int64_t start = directory.ENTRY(k) - 1;  // 0-based record
    const int64_t reserved = MOD_COMMON_DATABASE::BLOCK_RECORDS(k, counts);
    if (start < after_directory || static_cast<int64_t>(records.size()) > reserved) {
      throw std::invalid_argument("block " + std::to_string(k) + " does not fit its place in the layout");
    }
    for (std::size_t r = 0; r < records.size(); ++r) image.PUT(start + static_cast<int64_t>(r), records[r]);
  }
  // The header ends before the first record behind it (1-based `total`).
  image.EXTEND_TO(total - 1);
  if (RUN.RESULT_START_RECORD != 0) {
    for (const auto& set : RESULTS.ALL()) {
      if (set.first.FILE() == kind) throw std::invalid_argument("frame values are set, and no frames are written");
    }
    return image;
  }

  PUT_FRAMES(image, kind, total - 1);
  return image;
}

void JOB::WRITE(const std::string& stem) const {
  if (MOTION.PRESENT && !IMAGE(FILE_KIND::MOTION).WRITE(stem + ".dbm")) {
    throw std::runtime_error("cannot write " + stem + ".dbm");
  }
  if (FORCE.PRESENT && !IMAGE(FILE_KIND::FORCE).WRITE(stem + ".dbf")) {
    throw std::runtime_error("cannot write " + stem + ".dbf");
  }
}

}  // namespace tmrdar::builder
