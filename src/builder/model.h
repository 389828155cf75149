// The model that header blocks 16 to 52 describe, row by row, for the
// database builder. Every row kind is a plain struct whose fields default to
// zeros and blanks, so a test names only what it cares about:
//
//   builder::job job;
//   job.model.nodes = {{.file_number = 10, .X = 0.0F}, {.file_number = 11, .X = 5.0F}};
//   job.model.elements = {{.file_number = 1, .user_number = 1, .nodes = {10, 11}, .length = 5.0F}};
//   job.model.element_sets = {{.name = "Riser", .members = {1}}};
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
#include "header/format_reader.h"

namespace tmrdar::builder {

// Widths of the text fields of the header.
inline constexpr std::size_t name_field_bytes = 256;  // 8 records
inline constexpr std::size_t name_chunk_bytes = 32;   // one record
inline constexpr std::size_t vessel_name_chunks = 8;

// Block 16 (records A, B and C, three a row) and block 17 (one record a row).
struct Element {
  // Record A: 4 ints, 3 reals, 1 int.
  int32_t file_number = 0;
  int32_t user_number = 0;
  std::array<int32_t, 2> nodes{};  // the two end nodes, as node file numbers
  float length = 0.0F;
  float a6 = 0.0F;
  float a7 = 0.0F;
  int32_t a8 = 0;
  // Record B: 4 reals, 1 int, 3 reals.
  float b1 = 0.0F;
  float b2 = 0.0F;
  float b3 = 0.0F;
  float b4 = 0.0F;
  int32_t b5 = 0;
  float b6 = 0.0F;
  float b7 = 0.0F;
  float b8 = 0.0F;
  // Record C: one real.
  float c1 = 0.0F;
  // The material record of block 17: 2 ints, 1 real, 1 int.
  int32_t material_1 = 0;
  int32_t material_2 = 0;
  float material_3 = 0.0F;
  int32_t material_4 = 0;
};

// Block 18: one record a row, 2 ints and 2 reals.
struct NonlinearERow {
  int32_t curve = 0;
  int32_t points = 0;
  float value_1 = 0.0F;
  float value_2 = 0.0F;
};

// Block 19: one record a node, 1 int, 3 reals, 2 ints.
struct Node {
  int32_t file_number = 0;
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;
  int32_t user_number = 0;
  int32_t boundary_slot = 0;  // word 6: a node with a value above 0 holds a boundary condition
};

// Block 20: two records an auxiliary element, the first of 4 ints, 3 reals
// and 1 int, the second of 2 ints.
struct AuxElement {
  int32_t w1 = 0;
  int32_t number = 0;
  std::array<int32_t, 2> nodes{};  // auxiliary node rows
  float r5 = 0.0F;
  float r6 = 0.0F;
  float r7 = 0.0F;
  int32_t w8 = 0;
  int32_t w9 = 0;   // word 1 of the second record
  int32_t w10 = 0;  // word 2 of the second record
};

// Block 21: one record an auxiliary node, 1 int and 3 reals.
struct AuxNode {
  int32_t number = 0;
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;
};

// Block 22: the seabed points as the file holds them, pairs of words four a
// record. For a profile the first word of a pair is the horizontal distance
// and the second the height. The slope, in degrees, stands in word 5 of the
// record that holds the last point (record 0 without points), which is free
// only when that record holds at most two points.
struct SeabedPoint {
  float first = 0.0F;
  float second = 0.0F;
};
struct SeabedData {
  std::vector<SeabedPoint> points{};
  std::optional<float> slope{};
};

// Blocks 23 and 24: one record a harmonic, 5 reals.
using WaveHarmonic = std::array<float, 5>;

// Blocks 26 and 27: a name field, a record with the member count, then one
// record a member.
struct NamedSet {
  std::string name{};
  std::vector<int32_t> members{};
};

// Block 28: a name field and a record with the number and its kind.
struct Label {
  std::string name{};
  int32_t number = 0;
  int32_t kind = 0;
};

// Block 30: one record a load, 2 ints and 1 real.
struct PointLoad {
  int32_t w1 = 0;
  int32_t w2 = 0;
  float w3 = 0.0F;
};

// Block 32: one record a row, 3 reals.
using CurrentRow = std::array<float, 3>;

// Block 33: a connection has one record of 2 ints for each of its rows; every
// connection takes as many records as the longest one has rows.
using PipConnection = std::vector<std::array<int32_t, 2>>;

// Block 34: three head records a surface (two in V821, V815 and V811), of
// which the first holds the words below and the others are zeros, all
// surfaces' heads first and then a name field for each.
struct GuideSurface {
  int32_t id = 0;
  std::array<float, 2> values{};
  std::array<int32_t, 2> switches{};  // words 4 and 5, 1 for on
  int32_t flag = 0;                   // word 6, 1 for on
  std::array<float, 2> w7_w8{};       // words 7 and 8, not kept by the reader
  std::string name{};
};

// Block 35: one record of 7 ints a panel.
using Panel = std::array<int32_t, 7>;

// Block 36: one record a guide, 1 int and 7 reals.
struct ZeroGapGuide {
  int32_t id = 0;
  std::array<float, 7> values{};
};

// Block 37: a record of 5 settings, then 9 records a criterion: 1 int and
// 2 reals, then a name field.
struct InstallationCriterion {
  int32_t id = 0;
  float value_1 = 0.0F;
  float value_2 = 0.0F;
  std::string name{};
};
struct InstallationData {
  std::array<int32_t, 5> settings{};
  std::vector<InstallationCriterion> criteria{};
};

// Block 38: four records a body: an int, 32 characters, a 64-bit real, an int.
struct FloatingBody {
  int32_t id = 0;
  std::string name{};
  double value = 0.0;
  int32_t code = 0;
};

// Block 39: nine records a vessel, eight chunks of the name (32 characters
// each) and one record the reader passes over.
struct Vessel {
  std::array<std::string, vessel_name_chunks> name_chunks{};
};

// Block 49 holds one record of 3 ints a model; block 50 the models' points,
// four pairs a record, each model from a new record. A model takes
// truncate(single(max(1, W3) * 2) * 0.125) + 1 records of block 50.
struct PlasticHardeningModel {
  int32_t w1 = 0;
  int32_t w2 = 0;  // the hardening rule
  int32_t w3 = 0;  // the point count; 0 is written as the number of points
  std::vector<std::array<float, 2>> points{};
};

// Block 52: a head record of type, id and length in bytes, then the bytes in
// floor(single(length - 1) * 0.03125) + 1 records.
struct BinaryItem {
  int32_t type = 0;
  int32_t id = 0;
  std::string bytes{};
};

struct Model {
  std::vector<Element> elements{};                                  // blocks 16 and 17
  std::vector<NonlinearERow> nonlinear_e_tables{};                // block 18
  std::vector<Node> nodes{};                                        // block 19
  std::vector<AuxElement> aux_elements{};                          // block 20
  std::vector<AuxNode> aux_nodes{};                                // block 21
  SeabedData seabed{};                                             // block 22
  std::vector<WaveHarmonic> wave_harmonics{};                      // block 23
  std::vector<WaveHarmonic> dsp_wave_harmonics{};                  // block 24
  std::vector<float> contact_diameters{};                           // block 25, one an element, 8 a record
  std::vector<NamedSet> element_sets{};                            // block 26
  std::vector<NamedSet> node_sets{};                               // block 27
  std::vector<Label> labels{};                                      // block 28
  std::vector<int32_t> point_masses{};                              // block 29, 8 a record
  std::vector<PointLoad> point_loads{};                            // block 30
  std::vector<int32_t> boundary_conditions{};                       // block 31, 8 a record
  std::vector<CurrentRow> current_profile{};                       // block 32
  std::vector<PipConnection> pipe_in_pipe{};                       // block 33
  std::vector<GuideSurface> guide_surfaces{};                      // block 34
  std::vector<Panel> panels{};                                      // block 35
  std::vector<ZeroGapGuide> zero_gap_guides{};                    // block 36
  InstallationData installation{};                                 // block 37
  std::vector<FloatingBody> floating_bodies{};                     // block 38
  std::vector<Vessel> vessels{};                                    // block 39
  std::array<float, 6> stinger{};                                   // block 40, always written
  std::vector<std::array<float, 2>> target_spectrum{};              // block 41, 4 pairs a record
  std::vector<PlasticHardeningModel> plastic_hardening_models{};  // blocks 49 and 50
  std::vector<int32_t> damper_elements{};                           // block 51, 8 a record
  std::vector<BinaryItem> binary_items{};                          // block 52
};

// Records of block 50 that a plastic hardening model with this point count
// takes, in 32-bit arithmetic.
int64_t plastic_hardening_records(int32_t w3);
// Records of the data of a binary item of this many bytes, in 32-bit
// arithmetic; the head record is not counted.
int64_t binary_data_records(int32_t length);

// The header counts that the model sets: each count of `run` that is 0 takes
// the model's size, and any other value stays as it is.
void count_model(const Model& model, header::HeaderVariables& run);
// The block records of the model's plastic hardening models and binary items.
int64_t model_plastic_hardening_records(const Model& model);
int64_t model_binary_data_records(const Model& model);

// Blocks 16 to 41 and 49 to 52 of the model in the format's layout, block by
// block, record by record from each block's first record. Block 48 holds run
// control values and is written with them. `run` gives the counts by which
// rows are placed (the pipe-in-pipe rows of a connection, the guide surfaces
// ahead of their names). The rows of a block that the format does not keep
// (holds_rows) are left out. Throws std::invalid_argument for a row that the
// file has no words for (a name longer than its field).
std::map<int32_t, std::vector<Record>> model_blocks(const Model& model, const header::HeaderVariables& run,
                                                    const FormatLayout& layout = v861_layout);

}  // namespace tmrdar::builder
