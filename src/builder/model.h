// The model that header blocks 16 to 52 describe, row by row, for the
// database builder. Every row kind is a plain struct whose fields default to
// zeros and blanks, so a test names only what it cares about:
//
//   builder::JOB job;
//   job.MODEL.NODES = {{.FILE_NUMBER = 10, .X = 0.0F}, {.FILE_NUMBER = 11, .X = 5.0F}};
//   job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {10, 11}, .LENGTH = 5.0F}};
//   job.MODEL.ELEMENT_SETS = {{.NAME = "Riser", .MEMBERS = {1}}};
//
// Fields are named after the words of the file that hold them; rows are kept
// in file order and words within a row in word order. Names are written
// padded with blanks to their field.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "builder/file_image.h"
#include "builder/format_layout.h"
#include "header/tide3_database_files.h"

namespace tmrdar::builder {

// Widths of the text fields of the header.
inline constexpr std::size_t NAME_FIELD_BYTES = 256;  // 8 records
inline constexpr std::size_t NAME_CHUNK_BYTES = 32;   // one record
inline constexpr std::size_t VESSEL_NAME_CHUNKS = 8;

// Block 16 (records A, B and C, three a row) and block 17 (one record a row).
struct ELEMENT {
  // Record A: 4 ints, 3 reals, 1 int.
  int32_t FILE_NUMBER = 0;
  int32_t USER_NUMBER = 0;
  std::array<int32_t, 2> NODES{};  // the two end nodes, as node file numbers
  float LENGTH = 0.0F;
  float A6 = 0.0F;
  float A7 = 0.0F;
  int32_t A8 = 0;
  // Record B: 4 reals, 1 int, 3 reals.
  float B1 = 0.0F;
  float B2 = 0.0F;
  float B3 = 0.0F;
  float B4 = 0.0F;
  int32_t B5 = 0;
  float B6 = 0.0F;
  float B7 = 0.0F;
  float B8 = 0.0F;
  // Record C: one real.
  float C1 = 0.0F;
  // The material record of block 17: 2 ints, 1 real, 1 int.
  int32_t MATERIAL_1 = 0;
  int32_t MATERIAL_2 = 0;
  float MATERIAL_3 = 0.0F;
  int32_t MATERIAL_4 = 0;
};

// Block 18: one record a row, 2 ints and 2 reals.
struct NONLINEAR_E_ROW {
  int32_t CURVE = 0;
  int32_t POINTS = 0;
  float VALUE_1 = 0.0F;
  float VALUE_2 = 0.0F;
};

// Block 19: one record a node, 1 int, 3 reals, 2 ints.
struct NODE {
  int32_t FILE_NUMBER = 0;
  float X = 0.0F;
  float Y = 0.0F;
  float Z = 0.0F;
  int32_t USER_NUMBER = 0;
  int32_t BOUNDARY_SLOT = 0;  // word 6: a node with a value above 0 holds a boundary condition
};

// Block 20: two records an auxiliary element, the first of 4 ints, 3 reals
// and 1 int, the second of 2 ints.
struct AUX_ELEMENT {
  int32_t W1 = 0;
  int32_t NUMBER = 0;
  std::array<int32_t, 2> NODES{};  // auxiliary node rows
  float R5 = 0.0F;
  float R6 = 0.0F;
  float R7 = 0.0F;
  int32_t W8 = 0;
  int32_t W9 = 0;   // word 1 of the second record
  int32_t W10 = 0;  // word 2 of the second record
};

// Block 21: one record an auxiliary node, 1 int and 3 reals.
struct AUX_NODE {
  int32_t NUMBER = 0;
  float X = 0.0F;
  float Y = 0.0F;
  float Z = 0.0F;
};

// Block 22: the seabed points as the file holds them, pairs of words four a
// record. For a profile the first word of a pair is the horizontal distance
// and the second the height. The slope, in degrees, stands in word 5 of the
// record that holds the last point (record 0 without points), which is free
// only when that record holds at most two points.
struct SEABED_POINT {
  float FIRST = 0.0F;
  float SECOND = 0.0F;
};
struct SEABED_DATA {
  std::vector<SEABED_POINT> POINTS{};
  std::optional<float> SLOPE{};
};

// Blocks 23 and 24: one record a harmonic, 5 reals.
using WAVE_HARMONIC = std::array<float, 5>;

// Blocks 26 and 27: a name field, a record with the member count, then one
// record a member.
struct NAMED_SET {
  std::string NAME{};
  std::vector<int32_t> MEMBERS{};
};

// Block 28: a name field and a record with the number and its kind.
struct LABEL {
  std::string NAME{};
  int32_t NUMBER = 0;
  int32_t KIND = 0;
};

// Block 30: one record a load, 2 ints and 1 real.
struct POINT_LOAD {
  int32_t W1 = 0;
  int32_t W2 = 0;
  float W3 = 0.0F;
};

// Block 32: one record a row, 3 reals.
using CURRENT_ROW = std::array<float, 3>;

// Block 33: a connection has one record of 2 ints for each of its rows; every
// connection takes as many records as the longest one has rows.
using PIP_CONNECTION = std::vector<std::array<int32_t, 2>>;

// Block 34: three head records a surface (two in V821, V815 and V811), of
// which the first holds the words below and the others are zeros, all
// surfaces' heads first and then a name field for each.
struct GUIDE_SURFACE {
  int32_t ID = 0;
  std::array<float, 2> VALUES{};
  std::array<int32_t, 2> SWITCHES{};  // words 4 and 5, 1 for on
  int32_t FLAG = 0;                   // word 6, 1 for on
  std::array<float, 2> W7_W8{};       // words 7 and 8, not kept by the reader
  std::string NAME{};
};

// Block 35: one record of 7 ints a panel.
using PANEL = std::array<int32_t, 7>;

// Block 36: one record a guide, 1 int and 7 reals.
struct ZERO_GAP_GUIDE {
  int32_t ID = 0;
  std::array<float, 7> VALUES{};
};

// Block 37: a record of 5 settings, then 9 records a criterion: 1 int and
// 2 reals, then a name field.
struct INSTALLATION_CRITERION {
  int32_t ID = 0;
  float VALUE_1 = 0.0F;
  float VALUE_2 = 0.0F;
  std::string NAME{};
};
struct INSTALLATION_DATA {
  std::array<int32_t, 5> SETTINGS{};
  std::vector<INSTALLATION_CRITERION> CRITERIA{};
};

// Block 38: four records a body: an int, 32 characters, a 64-bit real, an int.
struct FLOATING_BODY {
  int32_t ID = 0;
  std::string NAME{};
  double VALUE = 0.0;
  int32_t CODE = 0;
};

// Block 39: nine records a vessel, eight chunks of the name (32 characters
// each) and one record the reader passes over.
struct VESSEL {
  std::array<std::string, VESSEL_NAME_CHUNKS> NAME_CHUNKS{};
};

// Block 49 holds one record of 3 ints a model; block 50 the models' points,
// four pairs a record, each model from a new record. A model takes
// truncate(single(max(1, W3) * 2) * 0.125) + 1 records of block 50.
struct PLASTIC_HARDENING_MODEL {
  int32_t W1 = 0;
  int32_t W2 = 0;  // the hardening rule
  int32_t W3 = 0;  // the point count; 0 is written as the number of POINTS
  std::vector<std::array<float, 2>> POINTS{};
};

// Block 52: a head record of type, id and length in bytes, then the bytes in
// floor(single(length - 1) * 0.03125) + 1 records.
struct BINARY_ITEM {
  int32_t TYPE = 0;
  int32_t ID = 0;
  std::string BYTES{};
};

struct MODEL {
  std::vector<ELEMENT> ELEMENTS{};                                  // blocks 16 and 17
  std::vector<NONLINEAR_E_ROW> NONLINEAR_E_TABLES{};                // block 18
  std::vector<NODE> NODES{};                                        // block 19
  std::vector<AUX_ELEMENT> AUX_ELEMENTS{};                          // block 20
  std::vector<AUX_NODE> AUX_NODES{};                                // block 21
  SEABED_DATA SEABED{};                                             // block 22
  std::vector<WAVE_HARMONIC> WAVE_HARMONICS{};                      // block 23
  std::vector<WAVE_HARMONIC> DSP_WAVE_HARMONICS{};                  // block 24
  std::vector<float> CONTACT_DIAMETERS{};                           // block 25, one an element, 8 a record
  std::vector<NAMED_SET> ELEMENT_SETS{};                            // block 26
  std::vector<NAMED_SET> NODE_SETS{};                               // block 27
  std::vector<LABEL> LABELS{};                                      // block 28
  std::vector<int32_t> POINT_MASSES{};                              // block 29, 8 a record
  std::vector<POINT_LOAD> POINT_LOADS{};                            // block 30
  std::vector<int32_t> BOUNDARY_CONDITIONS{};                       // block 31, 8 a record
  std::vector<CURRENT_ROW> CURRENT_PROFILE{};                       // block 32
  std::vector<PIP_CONNECTION> PIPE_IN_PIPE{};                       // block 33
  std::vector<GUIDE_SURFACE> GUIDE_SURFACES{};                      // block 34
  std::vector<PANEL> PANELS{};                                      // block 35
  std::vector<ZERO_GAP_GUIDE> ZERO_GAP_GUIDES{};                    // block 36
  INSTALLATION_DATA INSTALLATION{};                                 // block 37
  std::vector<FLOATING_BODY> FLOATING_BODIES{};                     // block 38
  std::vector<VESSEL> VESSELS{};                                    // block 39
  std::array<float, 6> STINGER{};                                   // block 40, always written
  std::vector<std::array<float, 2>> TARGET_SPECTRUM{};              // block 41, 4 pairs a record
  std::vector<PLASTIC_HARDENING_MODEL> PLASTIC_HARDENING_MODELS{};  // blocks 49 and 50
  std::vector<int32_t> DAMPER_ELEMENTS{};                           // block 51, 8 a record
  std::vector<BINARY_ITEM> BINARY_ITEMS{};                          // block 52
};

// Records of block 50 that a plastic hardening model with this point count
// takes, in 32-bit arithmetic.
int64_t PLASTIC_HARDENING_RECORDS(int32_t w3);
// Records of the data of a binary item of this many bytes, in 32-bit
// arithmetic; the head record is not counted.
int64_t BINARY_DATA_RECORDS(int32_t length);

// The header counts that the model sets: each count of `run` that is 0 takes
// the model's size, and any other value stays as it is.
void COUNT_MODEL(const MODEL& model, header::HEADER_VARIABLES& run);
// The block records of the model's plastic hardening models and binary items.
int64_t MODEL_PLASTIC_HARDENING_RECORDS(const MODEL& model);
int64_t MODEL_BINARY_DATA_RECORDS(const MODEL& model);

// Blocks 16 to 41 and 49 to 52 of the model in the format's layout, block by
// block, record by record from each block's first record. Block 48 holds run
// control values and is written with them. `run` gives the counts by which
// rows are placed (the pipe-in-pipe rows of a connection, the guide surfaces
// ahead of their names). The rows of a block that the format does not keep
// (HOLDS_ROWS) are left out. Throws std::invalid_argument for a row that the
// file has no words for (a name longer than its field).
std::map<int32_t, std::vector<RECORD>> MODEL_BLOCKS(const MODEL& model, const header::HEADER_VARIABLES& run,
                                                    const FORMAT_LAYOUT& layout = V861_LAYOUT);

}  // namespace tmrdar::builder
