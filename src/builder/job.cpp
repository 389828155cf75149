#include "builder/job.h"

#include <limits>
#include <stdexcept>

namespace tmrdar::builder {

using MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES;

namespace {

// Blocks 2 to 15 and 48 from the run control values, word by word, those
// that the format has.
std::map<int32_t, std::vector<RECORD>> RUN_CONTROL_BLOCKS(const JOB& job, const FORMAT_LAYOUT& layout) {
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
  RECORD block_14 = RECORD::INTS({v.NUM_TARGET_SPECTRUM_INTERVALS, 0, v.HDR_14_3, v.HDR_14_4, job.HDR_14_5_CODE});
  switch (layout.BLOCK_14) {
    case BLOCK_14_FORM::ANGLE_AND_WORD_7: block_14.REAL(6, job.SEABED_ANGLE).INT(7, v.HDR_14_7); break;
    case BLOCK_14_FORM::ANGLE: block_14.REAL(6, job.SEABED_ANGLE); break;
    case BLOCK_14_FORM::INTEGERS: block_14.INT(6, 0).INT(7, v.HDR_14_7).INT(8, 0); break;
  }
  blocks[14] = {block_14};
  // The title in pieces of 28, 28 and 24 characters, one a record.
  const std::string_view title = v.ANALYSIS_TITLE.VIEW();
  blocks[15] = {RECORD::TEXT(title.substr(0, 28)), RECORD::TEXT(title.substr(28, 28)),
                RECORD::TEXT(title.substr(56, 24))};
  // Block 48: the shape function and plastic hardening counts, and flags 18 and 19.
  blocks[48] = {RECORD::INTS({v.SHAPE_FUNCTION_FLAG, v.NUM_PLASTIC_HARDENING_MODELS, v.OUTPUT_FLAGS[17],
                              v.OUTPUT_FLAGS[18], v.SHAPE_FUNCTION_ORDER})};
  std::erase_if(blocks, [&layout](const auto& block) { return !HAS_BLOCK(layout, block.first); });
  return blocks;
}

// Where the job's blocks stand: by the directory in V861, by the format's
// fixed records and the counts in the others.
HEADER_PLAN PLAN_OF(const JOB& job) {
  const FORMAT_LAYOUT& layout = LAYOUT_OF(*job.FORMAT);
  const MOD_COMMON_DATABASE::BLOCK_COUNTS counts = job.LAYOUT_COUNTS();
  if (!layout.BLOCK_DIRECTORY) return PLAN_WITHOUT_DIRECTORY(layout, counts);
  HEADER_PLAN plan;
  int64_t total = 0;
  const T_BLOCK_ADDRESSES directory = job.DIRECTORY(&total);
  for (int32_t k = 2; k <= MOD_COMMON_DATABASE::NUM_HEADER_BLOCKS && k <= directory.NUM_BLOCKS; ++k) {
    plan.BLOCKS[static_cast<std::size_t>(k)] = {.FIRST = directory.ENTRY(k) - 1,
                                                .RECORDS = MOD_COMMON_DATABASE::BLOCK_RECORDS(k, counts)};
  }
  plan.END = total - 1;
  return plan;
}

}  // namespace

JOB::JOB(const header::FORMAT_VERSION& format) : FORMAT(&format) {
  LAYOUT_OF(format);  // a format that the builder cannot write is refused here
  MOTION.FIRST.DATABASE_VERSION = format.DATABASE_VERSION;
  FORCE.FIRST.DATABASE_VERSION = format.DATABASE_VERSION;
  RUN.NUM_TIME_STEPS = 1;
  RUN.NODES_PER_ELEMENT = 2;
  RUN.COORDS_PER_NODE = 3;
  RUN.DOFS_PER_NODE = 6;
}

header::HEADER_VARIABLES JOB::COUNTED_RUN() const {
  header::HEADER_VARIABLES v = RUN;
  COUNT_MODEL(MODEL, v);
  HOLD_RUN(LAYOUT_OF(*FORMAT), v);
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
  const FORMAT_LAYOUT& layout = LAYOUT_OF(*FORMAT);
  records(counts.PLASTIC_HARDENING_RECORDS, MODEL_PLASTIC_HARDENING_RECORDS(MODEL));
  records(counts.BINARY_DATA_RECORDS, MODEL_BINARY_DATA_RECORDS(MODEL));
  if (!HAS_BLOCK(layout, 50)) counts.PLASTIC_HARDENING_RECORDS = 0;
  if (!HOLDS_ROWS(layout, 52)) counts.BINARY_DATA_RECORDS = 0;
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
  v.RESULT_START_RECORD = static_cast<int32_t>(PLAN_OF(*this).END);
  v.MOTION_START_OFFSET = 0;
  v.FORCE_START_OFFSET = 0;
  v.MOTION_STEP_RECORDS = MOTION_FRAME_RECORDS();
  v.FORCE_STEP_RECORDS = FORCE_FRAME_RECORDS();
  return v;
}

int64_t JOB::BLOCK_RECORD(int32_t k) const {
  if (!HAS_BLOCK(LAYOUT_OF(*FORMAT), k)) return -1;
  return PLAN_OF(*this).PLACE(k).FIRST;
}

T_BLOCK_ADDRESSES JOB::DIRECTORY(int64_t* header_end) const {
  if (!LAYOUT_OF(*FORMAT).BLOCK_DIRECTORY) {
    throw std::logic_error(std::string(FORMAT->NAME) + " has no block directory");
  }
  T_BLOCK_ADDRESSES directory;
  int32_t status = 0;
  MOD_COMMON_DATABASE::INIT_BLOCK_ADDRESSES(directory, NUM_BLOCK_ADDRESSES, status);
  int64_t total = 0;
  MOD_COMMON_DATABASE::SET_BLOCK_ADDRESSES(directory, LAYOUT_COUNTS(), total);
  if (header_end != nullptr) *header_end = total;
  return directory;
}

int32_t JOB::LAST_DIRECTORY_RECORD() const {
  if (!LAYOUT_OF(*FORMAT).BLOCK_DIRECTORY) {
    throw std::logic_error(std::string(FORMAT->NAME) + " has no block directory");
  }
  // The directory starts in record 3 and fills eight entries a record.
  return 2 + (NUM_BLOCK_ADDRESSES + 7) / 8;
}

FILE_IMAGE JOB::IMAGE(FILE_KIND kind) const {
  const DATABASE_FILE_DESCRIPTION& file = kind == FILE_KIND::MOTION ? MOTION : FORCE;
  const FORMAT_LAYOUT& layout = LAYOUT_OF(*FORMAT);
  FILE_IMAGE image;

  // Record 0: the first record.
  RECORD first = RECORD::INTS({file.FIRST.DATABASE_VERSION, file.FIRST.WORD_2, file.FIRST.ANALYSIS_DETAIL_2});
  for (int w = 0; w < 5; ++w) first.INT(4 + w, file.FIRST.FILE_WORDS[static_cast<std::size_t>(w)]);
  image.PUT(0, first);

  // In V861, record 1: the directory size record; then the entries, 8 a
  // record. The blocks stand behind the directory.
  int64_t first_block_record = 1;
  if (layout.BLOCK_DIRECTORY) {
    const int32_t last_directory_record = LAST_DIRECTORY_RECORD();
    image.PUT(1, RECORD::INTS({NUM_BLOCK_ADDRESSES, last_directory_record}));
    const T_BLOCK_ADDRESSES directory = DIRECTORY();
    for (std::size_t i = 0; i < directory.ADDRESSES.size(); ++i) {
      image.PUT_INT(2 + static_cast<int64_t>(i / 8), static_cast<int>(i % 8) + 1, directory.ADDRESSES[i]);
    }
    first_block_record = last_directory_record;  // 0-based record behind the directory
  }

  // The blocks, each at its place, each within the records reserved for it.
  const HEADER_PLAN plan = PLAN_OF(*this);
  const header::HEADER_VARIABLES v = COUNTED_RUN();
  std::map<int32_t, std::vector<RECORD>> blocks = RUN_CONTROL_BLOCKS(*this, layout);
  blocks.merge(MODEL_BLOCKS(MODEL, v, layout));
  for (const auto& [k, records] : BLOCKS) blocks[k] = records;
  for (const auto& [k, records] : blocks) {
    const BLOCK_PLACE& place = plan.PLACE(k);
    if (!HAS_BLOCK(layout, k) || place.FIRST < 0) {
      throw std::invalid_argument("block " + std::to_string(k) + " has no place in a " + std::string(FORMAT->NAME) +
                                  " file");
    }
    if (place.FIRST < first_block_record || static_cast<int64_t>(records.size()) > place.RECORDS) {
      throw std::invalid_argument("block " + std::to_string(k) + " does not fit its place in the layout");
    }
    for (std::size_t r = 0; r < records.size(); ++r) image.PUT(place.FIRST + static_cast<int64_t>(r), records[r]);
  }
  // The header ends before the record behind it.
  image.EXTEND_TO(plan.END);
  if (RUN.RESULT_START_RECORD != 0) {
    for (const auto& set : RESULTS.ALL()) {
      if (set.first.FILE() == kind) throw std::invalid_argument("frame values are set, and no frames are written");
    }
    return image;
  }

  PUT_FRAMES(image, kind, plan.END);
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
