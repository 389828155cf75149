// The tables of a header: made once the run control counts are known, filled
// by the block readers, released by DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS
// or by the next header read. Each table names the block it comes from.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/chars/blank_padded.h"
#include "header/number_index.h"
#include "header/table.h"
#include "plastic_hardening/plastic_hardening.h"

namespace tmrdar::header {

inline constexpr std::size_t NAME_FIELD_WIDTH = 256;
inline constexpr std::size_t FLOATING_BODY_NAME_WIDTH = 32;
using NAME_FIELD = chars::BLANK_PADDED<NAME_FIELD_WIDTH>;

struct HEADER_TABLES {
  // Element data (block 16): numbers, end nodes (rows of the node table once
  // translated), length and the other words of records A, B and C.
  TABLE<int32_t, 2> ELEMENT_NUMBERS;  // (NUM_ELEMENTS, 2): file number, user's number
  TABLE<int32_t, 2> ELEMENT_NODES;    // (NUM_ELEMENTS, NODES_PER_ELEMENT)
  TABLE<float> ELEMENT_LENGTH;
  TABLE<float> ELEMENT_A6;
  TABLE<float> ELEMENT_A7;
  TABLE<int32_t> ELEMENT_A8;
  TABLE<float> ELEMENT_B1;
  TABLE<float> ELEMENT_B2;
  TABLE<float> ELEMENT_B3;
  TABLE<float> ELEMENT_B4;
  TABLE<int32_t> ELEMENT_B5;
  TABLE<float> ELEMENT_B6;
  TABLE<float> ELEMENT_B7;
  TABLE<float> ELEMENT_B8;
  TABLE<float> ELEMENT_C1;
  // Material properties (block 17): (NUM_ELEMENTS, 4).
  TABLE<float, 2> ELEMENT_SECTION_TABLE;
  // Nonlinear E tables (block 18): (NUM_NONLINEAR_E_TABLES, 4).
  TABLE<float, 2> NONLINEAR_E_TABLE;
  // Node data (block 19).
  TABLE<int32_t, 2> NODE_NUMBERS;     // (NUM_NODES, 2): file number, user's number
  TABLE<float, 2> NODE_COORDINATES;   // (COORDS_PER_NODE, NUM_NODES)
  TABLE<int32_t> CONDITION_NODES;     // (NUM_BOUNDARY_CONDITIONS)
  // Auxiliary elements (block 20) and nodes (block 21).
  TABLE<int32_t> AUX_ELEMENT_NUMBERS;
  TABLE<int32_t, 2> AUX_ELEMENT_NODES;  // (2, NUM_AUX_ELEMENTS)
  TABLE<float> AUX_ELEMENT_R5;
  TABLE<float> AUX_ELEMENT_R6;
  TABLE<float> AUX_ELEMENT_R7;
  TABLE<int32_t> AUX_ELEMENT_W8;
  TABLE<int32_t> AUX_ELEMENT_W9;
  TABLE<int32_t> AUX_NODE_NUMBERS;
  TABLE<float, 2> AUX_NODE_COORDINATES;  // (NUM_AUX_NODES, 3)

  // Environment (blocks 23 to 25, 32 and 41); the seabed points live in the
  // seabed profile.
  TABLE<float, 2> WAVE_HARMONICS;      // (NUM_WAVE_HARMONICS, 5)
  TABLE<float, 2> DSP_WAVE_HARMONICS;  // (5, NUM_DSP_WAVE_HARMONICS)
  TABLE<float> CONTACT_DIAMETERS;      // (NUM_ELEMENTS)
  TABLE<float, 2> CURRENT_PROFILE;     // (NUM_CURRENT_POINTS, 3)
  TABLE<float, 2> TARGET_SPECTRUM;     // (NUM_TARGET_SPECTRUM_INTERVALS + 1, 2), made by its reader

  // Sets and labels (blocks 26 to 28). A set's members are kept as a list of
  // the length the file gives it.
  TABLE<NAME_FIELD> ELEMENT_SET_NAMES;
  TABLE<int32_t> ELEMENT_SET_COUNTS;
  std::vector<std::vector<int32_t>> ELEMENT_SET_MEMBERS;
  TABLE<NAME_FIELD> NODE_SET_NAMES;
  TABLE<int32_t> NODE_SET_COUNTS;
  std::vector<std::vector<int32_t>> NODE_SET_MEMBERS;
  TABLE<NAME_FIELD> LABEL_NAMES;
  TABLE<int32_t, 2> LABEL_TARGETS;  // (NUM_LABELS, 2): number, kind
  // Point masses, point loads, boundary conditions (blocks 29 to 31).
  TABLE<int32_t> POINT_MASS_NODES;
  TABLE<float, 2> POINT_LOADS;  // (3, NUM_POINT_LOADS)
  TABLE<int32_t> BOUNDARY_CONDITION_NODES;

  // Contact and installation (blocks 33 to 40).
  TABLE<int32_t, 3> PIP_DATA;  // (PIP_NODES_PER_PAIR, 2, NUM_PIPE_IN_PIPE)
  TABLE<int32_t> GUIDE_SURFACE_IDS;
  TABLE<float, 2> GUIDE_SURFACE_VALUES;   // (NUM_GUIDE_SURFACES, 2)
  TABLE<LOGICAL, 2> GUIDE_SURFACE_SWITCHES;  // (NUM_GUIDE_SURFACES, 2)
  TABLE<LOGICAL> GUIDE_SURFACE_FLAGS;
  int32_t GUIDE_SURFACE_FLAG_COUNT = 0;
  TABLE<NAME_FIELD> GUIDE_SURFACE_NAMES;
  TABLE<int32_t, 2> PANEL_TABLE;  // (NUM_PANELS, 4)
  TABLE<int32_t> PANEL_VALUES;
  TABLE<int32_t> ZERO_GAP_GUIDE_IDS;      // word 1 of a zero gap guide
  TABLE<float> ZERO_GAP_GUIDE_VALUES;     // word 2
  // Where the guides stood at an output step, as the motion frame of that
  // step gives them; the V841 reader's UPDATE_GUIDE_COORDS_AXES fills them.
  TABLE<float, 3> AXES_TABLE;     // (NUM_GUIDE_SURFACES, 2, 3): two axes a guide surface
  TABLE<float, 2> ORIGIN_TABLE;   // (NUM_GUIDE_SURFACES, 3)
  TABLE<float, 2> ZGG_DIRECTION;  // (NUM_ZERO_GAP_GUIDES, 3): the first axis of a zero gap guide
  TABLE<float, 2> ZGG_ORIGIN;     // (NUM_ZERO_GAP_GUIDES, 3)
  std::array<int32_t, 5> INSTALLATION_SETTINGS{};  // the first record of block 37
  TABLE<int32_t> INSTALLATION_CRITERIA_IDS;
  TABLE<float> INSTALLATION_CRITERIA_VALUE_1;
  TABLE<float> INSTALLATION_CRITERIA_VALUE_2;
  TABLE<NAME_FIELD> INSTALLATION_CRITERIA_NAMES;
  TABLE<int32_t> FLOATING_BODY_IDS;
  TABLE<chars::BLANK_PADDED<FLOATING_BODY_NAME_WIDTH>> FLOATING_BODY_NAMES;
  TABLE<double> FLOATING_BODY_VALUES;
  TABLE<int32_t> FLOATING_BODY_CODES;
  TABLE<NAME_FIELD> VESSEL_NAMES;
  TABLE<float> STINGER_DATA;  // 6 values

  // Plastic hardening models (blocks 49 and 50), made by their reader, and
  // the damper elements (block 51).
  TABLE<MOD_PLASTIC_HARDENING::T_PLASTIC_HARDENING> PLASTIC_HARDENING_MODELS;
  TABLE<int32_t> DAMPER_ELEMENTS;

  // The time of each output step, read from the result frames.
  TABLE<float> TIME_LIST;

  // Integration point locations along each element: (10, NUM_ELEMENTS),
  // made by the open when the header asks for them.
  TABLE<double, 2> INTEGRATION_POINTS;

  // Indexes from a number to the first row that holds it, made once the
  // tables they cover are read.
  NUMBER_INDEX NODE_FILE_NUMBER_INDEX;  // NODE_NUMBERS(:, 1)
  NUMBER_INDEX NODE_USER_NUMBER_INDEX;  // NODE_NUMBERS(:, 2)
  NUMBER_INDEX ELEMENT_USER_NUMBER_INDEX;  // ELEMENT_NUMBERS(:, 2)
  NUMBER_INDEX AUX_NODE_NUMBER_INDEX;
  NUMBER_INDEX AUX_ELEMENT_NUMBER_INDEX;
  NUMBER_INDEX BOUNDARY_CONDITION_INDEX;  // BOUNDARY_CONDITION_NODES
  // Label names, trimmed and with A to Z in lower case, to their first row.
  std::unordered_map<std::string, int32_t> LABEL_INDEX;

  // What the model queries answer from, made with the indexes: for each
  // element row the lengths of the rows before it summed in single precision
  // in row order, the node rows of its two ends (0 for an end whose file
  // number no node has), and the first pipe-in-pipe pair whose search finds
  // the row (0 for none).
  struct MODEL_QUERY_TABLES {
    TABLE<float> DISTANCE_PREFIX;     // (NUM_ELEMENTS)
    TABLE<int32_t, 2> END_NODE_ROWS;  // (NUM_ELEMENTS, 2)
    TABLE<int32_t> ENCLOSING_PAIR;    // (NUM_ELEMENTS)
  } MODEL_QUERIES;
};

class TIDE3_DATABASE_FILES;
// Makes the reader's MODEL_QUERIES from its tables as read; false when the
// memory cannot be had.
bool BUILD_MODEL_QUERY_TABLES(TIDE3_DATABASE_FILES& db);

}  // namespace tmrdar::header
