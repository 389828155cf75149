// The run control blocks 2 to 15 of a header: the counts that size every
// table behind them, the layout of the result frames and the title.
#include <initializer_list>
#include <string>

#include "frame/base/error_handling.h"
#include "header/block_location.h"
#include "header/block_reading.h"

namespace tmrdar::header {

int64_t TIDE3_DATABASE_FILES::BLOCK_POSITION(int32_t k) const {
  int32_t record = -1;
  if (VERSION.BLOCKS == BLOCK_LOCATION::DIRECTORY) {
    if (BLOCK_ADDRESSES != nullptr) record = BLOCK_ADDRESSES->ENTRY(k);
  } else if (k >= 2 && k <= 15) {
    record = VERSION.RUN_CONTROL[static_cast<std::size_t>(k)];
  } else if (VERSION.BLOCKS == BLOCK_LOCATION::FIXED_LAYOUT) {
    if (BLOCK_ADDRESSES != nullptr && k <= VERSION.LAST_BLOCK) record = BLOCK_ADDRESSES->ENTRY(k);
  } else {
    const std::string title = BLOCK_TITLE(VERSION, k);
    if (!title.empty()) GET_TIDE3_HEADER_ADDRESS(VERSION, title, HEADER_BLOCK_COUNTS(), record);
  }
  return 32 * int64_t{record} + 1;
}

MOD_COMMON_DATABASE::BLOCK_COUNTS TIDE3_DATABASE_FILES::HEADER_BLOCK_COUNTS() const {
  MOD_COMMON_DATABASE::BLOCK_COUNTS c;
  c.NUM_ELEMENTS = NUM_ELEMENTS;
  c.NUM_NONLINEAR_E_TABLES = NUM_NONLINEAR_E_TABLES;
  c.NUM_NODES = NUM_NODES;
  c.NUM_AUX_ELEMENTS = NUM_AUX_ELEMENTS;
  c.NUM_AUX_NODES = NUM_AUX_NODES;
  c.NUM_SEABED_POINTS = NUM_SEABED_POINTS;
  c.NUM_WAVE_HARMONICS = NUM_WAVE_HARMONICS;
  c.NUM_DSP_WAVE_HARMONICS = NUM_DSP_WAVE_HARMONICS;
  c.NUM_ELEMENT_SETS = NUM_ELEMENT_SETS;
  c.NUM_NODE_SETS = NUM_NODE_SETS;
  c.NUM_LABELS = NUM_LABELS;
  c.NUM_POINT_MASSES = NUM_POINT_MASSES;
  c.NUM_POINT_LOADS = NUM_POINT_LOADS;
  c.NUM_BOUNDARY_CONDITIONS = NUM_BOUNDARY_CONDITIONS;
  c.NUM_CURRENT_POINTS = NUM_CURRENT_POINTS;
  c.PIP_NODES_PER_PAIR = PIP_NODES_PER_PAIR;
  c.NUM_PIPE_IN_PIPE = NUM_PIPE_IN_PIPE;
  c.NUM_GUIDE_SURFACES = NUM_GUIDE_SURFACES;
  c.NUM_PANELS = NUM_PANELS;
  c.NUM_ZERO_GAP_GUIDES = NUM_ZERO_GAP_GUIDES;
  c.NUM_INSTALLATION_CRITERIA = NUM_INSTALLATION_CRITERIA;
  c.NUM_FLOATING_BODIES = NUM_FLOATING_BODIES;
  c.NUM_VESSELS = NUM_VESSELS;
  c.NUM_TARGET_SPECTRUM_INTERVALS = NUM_TARGET_SPECTRUM_INTERVALS;
  c.NUM_PLASTIC_HARDENING_MODELS = NUM_PLASTIC_HARDENING_MODELS;
  c.NUM_DAMPER_ELEMENTS = NUM_DAMPER_ELEMENTS;
  return c;
}

void TIDE3_DATABASE_FILES::READ_RUN_CONTROL_BLOCKS(int32_t& flag) {
  const std::array<int32_t, 8>& i = HEADER_INTS;
  const std::array<float, 8>& r = HEADER_REALS;
  constexpr WORDS I = WORDS::INTS;
  constexpr WORDS R = WORDS::REALS;
  int32_t status = 0;
  // A block that cannot be read ends the header; what was stored stays. A
  // block that the format does not have keeps its values at their defaults.
  const auto has = [this](int32_t k) {
    return VERSION.BLOCKS == BLOCK_LOCATION::DIRECTORY || VERSION.RUN_CONTROL[static_cast<std::size_t>(k)] != NO_RECORD;
  };
  const auto read = [&](int32_t k, std::initializer_list<RUN> runs) {
    READ_RUNS(*this, BLOCK_POSITION(k), runs, status);
    if (status == 0) return true;
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "Unable to read from database header.");
    flag = -1;
    return false;
  };

  if (has(2)) {
    if (!read(2, {{I, 8}})) return;
    TAIL_PAIR_COUNT_A = i[4];
    TAIL_PAIR_COUNT_B = i[5];
    NUM_BINARY_ITEMS = i[6];
    HDR_2_8 = i[7];
  }

  if (!read(3, {{I, 8}})) return;
  RESULT_START_RECORD = i[0];
  MOTION_STEP_RECORDS = i[1];
  FORCE_STEP_RECORDS = i[2];
  HDR_3_4 = i[3];
  MOTION_START_OFFSET = i[4];
  FORCE_START_OFFSET = i[5];
  HDR_3_7 = i[6];
  NUM_PANELS = i[7];

  if (!read(4, {{R, 6}, {I, 2}})) return;
  START_TIME = r[0];
  END_TIME = r[1];
  HDR_4_2 = r[1];
  HDR_4_3 = r[2];
  HDR_4_4 = r[3];
  HDR_4_5 = r[4];
  HDR_4_6 = r[5];
  PIP_NODES_PER_PAIR = i[0];
  NUM_NONLINEAR_E_TABLES = i[1];

  if (!read(5, {{R, 3}, {I, 5}})) return;
  ANALYSIS_DETAIL_3 = r[0];
  EXTERNAL_FLUID_DEFAULT_A = r[1];
  EXTERNAL_FLUID_DEFAULT_B = r[2];
  NUM_GUIDE_SURFACES = i[0];
  NUM_ZERO_GAP_GUIDES = i[1];
  NUM_PIP_CONNECTIONS = i[2];
  NUM_PIPE_IN_PIPE = i[3];
  NUM_CLASH_PAIRS = i[4];

  if (!read(6, {{I, 8}})) return;
  NUM_ELEMENTS = i[0];
  NUM_NODES = i[1];
  NODES_PER_ELEMENT = i[2];
  COORDS_PER_NODE = i[3];
  DOFS_PER_NODE = i[4];
  NUM_BOUNDARY_CONDITIONS = i[5];
  NUM_ELEMENT_SETS = i[6];
  NUM_NODE_SETS = i[7];

  if (!read(7, {{I, 2}})) return;
  NUM_TIME_STEPS = i[0];

  if (!read(8, {{I, 5}, {R, 1}, {I, 2}})) return;
  ANALYSIS_DETAIL_1 = i[0];
  HDR_8_2 = i[1];
  SEABED_PROFILE.SET_GEOMETRY_AND_INTERPOLATION(i[2]);
  SEABED_GEOMETRY = SEABED_PROFILE.GEOMETRY();
  NUM_SEABED_POINTS = i[3];
  NUM_WAVE_HARMONICS = i[4];
  HDR_8_6 = r[0];
  NUM_VESSELS = i[5];
  HDR_8_8 = i[6];

  if (!read(9, {{I, 8}})) return;
  std::copy(i.begin(), i.end(), OUTPUT_FLAGS.begin());
  if (!read(10, {{I, 8}})) return;
  std::copy(i.begin(), i.end(), OUTPUT_FLAGS.begin() + 8);

  if (!read(11, {{I, 8}})) return;
  NUM_AUX_NODES = i[0];
  NUM_AUX_ELEMENTS = i[1];
  NUM_POINT_MASSES = i[2];
  NUM_POINT_LOADS = i[3];
  NUM_CURRENT_POINTS = i[4];
  NUM_FLOATING_BODIES = i[5];
  NUM_INSTALLATION_CRITERIA = i[6];
  NUM_LABELS = i[7];

  if (has(12)) {
    if (!read(12, {{I, 2}})) return;
    NUM_DAMPER_ELEMENTS = i[0];
    OUTPUT_FLAGS[16] = i[1];
  }

  if (has(13)) {
    if (!read(13, {{I, 6}, {R, 1}, {I, 1}})) return;
    HDR_13_1 = i[0];
    NUM_DSP_WAVE_HARMONICS = i[1];
    HDR_13_3 = i[2];
    HDR_13_4 = i[3];
    HDR_13_6 = i[5];
    AUX_ELEMENT_RESULT_SETS = i[6];
  }

  // Block 14: the seabed angle in word 6, and a word 7, as the format has them.
  switch (VERSION.BLOCK_14) {
    case BLOCK_14_WORDS::INTS_REAL_INT:
      if (!read(14, {{I, 5}, {R, 1}, {I, 1}})) return;
      break;
    case BLOCK_14_WORDS::INTS_REAL:
      if (!read(14, {{I, 5}, {R, 1}})) return;
      break;
    case BLOCK_14_WORDS::INTS:
      if (!read(14, {{I, 8}})) return;
      break;
  }
  NUM_TARGET_SPECTRUM_INTERVALS = i[0];
  HDR_14_3 = i[2];
  HDR_14_4 = i[3];
  switch (i[4]) {
    case 1: HDR_14_5 = 4; break;
    case 2: HDR_14_5 = 1; break;
    case 3: HDR_14_5 = 2; break;
    default: break;
  }
  if (VERSION.BLOCK_14 != BLOCK_14_WORDS::INTS) SEABED_PROFILE.SET_DIRECTION(r[0]);
  if (VERSION.BLOCK_14 == BLOCK_14_WORDS::INTS_REAL_INT) HDR_14_7 = i[5];
  if (VERSION.BLOCK_14 == BLOCK_14_WORDS::INTS) HDR_14_7 = i[6];

  // The title: three pieces, each at the start of its record.
  const int64_t title = BLOCK_POSITION(15);
  HEADER_FILE.READ_CHAR_AT(ANALYSIS_TITLE.SPAN().subspan(0, 28), title, status);
  HEADER_FILE.READ_CHAR_AT(ANALYSIS_TITLE.SPAN().subspan(28, 28), title + 32, status);
  HEADER_FILE.READ_CHAR_AT(ANALYSIS_TITLE.SPAN().subspan(56, 24), title + 64, status);
  if (status != 0) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "Unable to read from database header.");
    flag = -1;
    return;
  }

  if (NUM_TIME_STEPS < 1) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING,
                           "No solution time steps were outputted to the database.");
    flag = -1;
  }
}

}  // namespace tmrdar::header
