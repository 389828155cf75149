// The model blocks as the builder writes them, checked against the file
// layout itself: block starts, record counts, rows of several records, and
// what the layout cannot hold.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "builder/job.h"

namespace tmrdar::builder {
namespace {

using HV = header::HEADER_VARIABLES;

int32_t INT_AT(const FILE_IMAGE& image, int64_t record, int word) {
  const std::vector<std::byte>& bytes = image.BYTES();
  const auto at = static_cast<std::size_t>(record) * 32 + 4 * static_cast<std::size_t>(word - 1);
  uint32_t value = 0;
  for (int b = 3; b >= 0; --b) value = (value << 8) | static_cast<uint32_t>(bytes.at(at + static_cast<std::size_t>(b)));
  return static_cast<int32_t>(value);
}
float REAL_AT(const FILE_IMAGE& image, int64_t record, int word) {
  const int32_t bits = INT_AT(image, record, word);
  float value = 0.0F;
  std::memcpy(&value, &bits, 4);
  return value;
}
std::string TEXT_AT(const FILE_IMAGE& image, int64_t record, std::size_t bytes) {
  const auto* first = reinterpret_cast<const char*>(image.BYTES().data()) + record * 32;
  return {first, bytes};
}

// A row in every block; the first word of each block is a marker.
MODEL EVERY_BLOCK() {
  MODEL m;
  m.ELEMENTS = {{.FILE_NUMBER = 1601, .MATERIAL_1 = 1701}, {}};
  m.NONLINEAR_E_TABLES = {{.CURVE = 1801}};
  m.NODES = {{.FILE_NUMBER = 1901}, {}, {}};
  m.AUX_ELEMENTS = {{.W1 = 2001}};
  m.AUX_NODES = {{.NUMBER = 2101}, {}};
  m.SEABED.POINTS = {{22.5F, 0.0F}, {}, {}};
  m.WAVE_HARMONICS = {{23.5F}, {}};
  m.DSP_WAVE_HARMONICS = {{24.5F}};
  m.CONTACT_DIAMETERS = {25.5F, 1.0F};
  m.ELEMENT_SETS = {{"E", {1, 2}}, {"F", {2}}};
  m.NODE_SETS = {{"N", {1}}};
  m.LABELS = {{"L", 1, 2}};
  m.POINT_MASSES = {2901, 3};
  m.POINT_LOADS = {{3001}};
  m.BOUNDARY_CONDITIONS = {3101, 3};
  m.CURRENT_PROFILE = {{32.5F}, {}};
  m.PIPE_IN_PIPE = {{{3301, 1}, {2, 3}}};
  m.GUIDE_SURFACES = {{.ID = 3401}};
  m.PANELS = {{3501}};
  m.ZERO_GAP_GUIDES = {{.ID = 3601}};
  m.INSTALLATION = {.SETTINGS = {3701}, .CRITERIA = {{}}};
  m.FLOATING_BODIES = {{.ID = 3801}};
  m.VESSELS = {{.NAME_CHUNKS = {"V"}}};
  m.STINGER = {40.5F};
  m.TARGET_SPECTRUM = {{41.5F, 0.0F}, {}, {}};
  m.PLASTIC_HARDENING_MODELS = {{.W1 = 4901, .POINTS = {{50.5F, 0.0F}, {}, {}, {}, {}}}};
  m.DAMPER_ELEMENTS = {5101, 2, 3};
  m.BINARY_ITEMS = {{.TYPE = 5201, .BYTES = std::string(40, 'b')}, {}};
  return m;
}

TEST(ModelLayout, EveryBlockStartsAtItsEntryAndTheFileHasTheLayoutsSize) {
  JOB job;
  job.MODEL = EVERY_BLOCK();
  job.RUN.NUM_TIME_STEPS = 2;
  // Records that blocks 16 to 52 take for these rows, by the layout's table:
  // 2 elements, 3 nodes, 2 sets of 11 reserved records, P8 and P4 lists,
  // blocks 46 and 47 of one record at counts of 0, 2 curve records for 5
  // points, items of 1 + 2 and 1 records.
  const std::map<int32_t, int64_t> taken{
      {16, 6}, {17, 2}, {18, 1},  {19, 3},  {20, 2},  {21, 2}, {22, 1}, {23, 2}, {24, 1}, {25, 1},
      {26, 22}, {27, 12}, {28, 9}, {29, 1}, {30, 1},  {31, 1}, {32, 2}, {33, 2}, {34, 11}, {35, 1},
      {36, 1}, {37, 10}, {38, 4}, {39, 9},  {40, 1},  {41, 1}, {42, 0}, {43, 0}, {44, 0},  {45, 0},
      {46, 1}, {47, 1},  {48, 1}, {49, 1},  {50, 2},  {51, 1}, {52, 4}};
  int64_t header_end = 0;
  const MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES directory = job.DIRECTORY(&header_end);
  int64_t entry = 26;  // behind 7 directory records, 14 one-record blocks and the title's 3
  for (const auto& [k, records] : taken) {
    EXPECT_EQ(directory.ENTRY(k), entry) << "block " << k;
    entry += records;
  }
  EXPECT_EQ(header_end, entry);

  const FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
  EXPECT_EQ(image.BYTES().size(), 32 * static_cast<std::size_t>(header_end - 1 + 2 * job.MOTION_FRAME_RECORDS()));
  const auto first = [&](int32_t k) { return directory.ENTRY(k) - 1; };
  for (const int32_t k : {16, 17, 18, 19, 20, 21, 29, 30, 31, 33, 34, 35, 36, 37, 38, 49, 51, 52}) {
    EXPECT_EQ(INT_AT(image, first(k), 1), 100 * k + 1) << "block " << k;
  }
  for (const int32_t k : {22, 23, 24, 25, 32, 40, 41, 50}) {
    EXPECT_EQ(REAL_AT(image, first(k), 1), static_cast<float>(k) + 0.5F) << "block " << k;
  }
  for (const auto& [k, text] : std::map<int32_t, std::string>{{26, "E "}, {27, "N "}, {28, "L "}, {39, "V "}}) {
    EXPECT_EQ(TEXT_AT(image, first(k), 2), text) << "block " << k;
  }
  EXPECT_EQ(INT_AT(image, first(48), 2), 1) << "the model count of block 48";
}

// One description for every format: a little of most blocks, rows of the
// blocks that older formats lack (DSP harmonics in V811, dampers, a plastic
// hardening model, a binary item), and counts for the blocks that the model
// does not describe.
JOB SMALL_IN_EVERY_FORMAT(const header::FORMAT_VERSION& format) {
  JOB job(format);
  MODEL& m = job.MODEL;
  m.ELEMENTS = {{.FILE_NUMBER = 1601}, {}};
  m.NODES = {{.FILE_NUMBER = 1901}, {}, {}};
  m.DSP_WAVE_HARMONICS = {{24.5F}};
  m.CONTACT_DIAMETERS = {25.5F};
  m.ELEMENT_SETS = {{"E", {1, 2}}};
  m.LABELS = {{"L", 1, 2}};
  m.GUIDE_SURFACES = {{.ID = 3401, .NAME = "G1"}, {.ID = 3402, .NAME = "G2"}};
  m.STINGER = {40.5F};
  m.TARGET_SPECTRUM = {{41.5F, 0.0F}, {}, {}, {}};  // 3 intervals
  m.PLASTIC_HARDENING_MODELS = {{.W1 = 4901, .POINTS = {{50.5F, 0.0F}}}};
  m.DAMPER_ELEMENTS = {5101};
  m.BINARY_ITEMS = {{.TYPE = 5201, .BYTES = std::string(40, 'b')}};
  job.COUNTS.NUM_POINT_BUOYS = 1;
  job.COUNTS.NUM_VESSEL_PROFILES = 1;
  job.COUNTS.PACKED_BLOCK_COUNT = 9;
  job.RUN.TAIL_PAIR_COUNT_A = 1;
  job.RUN.HDR_14_7 = 147;
  job.HDR_14_5_CODE = 2;
  job.SEABED_ANGLE = 2.5F;
  job.RUN.ANALYSIS_TITLE.ASSIGN(std::string(28, 'a') + std::string(28, 'b') + std::string(24, 'c'));
  return job;
}

TEST(ModelLayout, EachFormatPlacesTheBlocksAtItsOwnRecords) {
  // Worked by hand from Element Data at record E (25 behind V861's
  // directory, 17, 15, 14): elements 6 and 2 records, nodes 3, seabed 1,
  // DSP harmonic 1 (none in V811), diameters 1, the set 11, the label 9,
  // two guide surfaces 22 (20 at 10 records a surface), stinger 1, the
  // spectrum 2 (3 in V811), the buoy 1, the vessel profile 2; then 3 records
  // an element (6) and the packed block of 9 (2) ahead of the items; V861
  // has one record each for blocks 46, 48, 49, 50 and 51, and 2 for 47.
  struct ROW {
    const header::FORMAT_VERSION* FORMAT;
    std::map<int32_t, int64_t> BLOCK;  // -1: the format has no such block
    int64_t END;
    int32_t HEADS;  // guide surface head records
    bool ANGLE;     // block 14 word 6 a real
    int32_t HDR_14_7;
    int32_t ITEMS;
  };
  const std::vector<ROW> rows{
      {&header::V861,
       {{2, 9},   {3, 10},  {12, 19}, {13, 20}, {14, 21}, {15, 22}, {16, 25}, {19, 33}, {24, 37}, {25, 38}, {26, 39},
        {28, 50}, {34, 59}, {40, 81}, {41, 82}, {43, 84}, {44, 85}, {46, 87}, {47, 88}, {48, 90}, {51, 93}, {52, 94}},
       97, 3, true, 147, 1},
      {&header::V841,
       {{2, 2},   {3, 3},   {12, -1}, {13, 12}, {14, 13}, {15, 14}, {16, 17}, {19, 25}, {24, 29}, {25, 30}, {26, 31},
        {28, 42}, {34, 51}, {40, 73}, {41, 74}, {43, 76}, {44, 77}, {46, 79}, {47, 85}, {48, -1}, {51, -1}, {52, 87}},
       90, 3, true, 0, 1},
      {&header::V831,
       {{2, 2},   {3, 3},   {12, -1}, {13, 12}, {14, 13}, {15, 14}, {16, 17}, {19, 25}, {24, 29}, {25, 30}, {26, 31},
        {28, 42}, {34, 51}, {40, 73}, {41, 74}, {43, 76}, {44, 77}, {46, 79}, {47, 85}, {48, -1}, {51, -1}, {52, 87}},
       87, 3, false, 147, 0},
      {&header::V821,
       {{2, 2},   {3, 3},   {12, -1}, {13, 12}, {14, 13}, {15, 14}, {16, 17}, {19, 25}, {24, 29}, {25, 30}, {26, 31},
        {28, 42}, {34, 51}, {40, 71}, {41, 72}, {43, 74}, {44, 75}, {46, 77}, {47, 83}, {48, -1}, {51, -1}, {52, 85}},
       85, 2, false, 147, 0},
      {&header::V815,
       {{2, -1},  {3, 1},   {12, -1}, {13, 10}, {14, 11}, {15, 12}, {16, 15}, {19, 23}, {24, 27}, {25, 28}, {26, 29},
        {28, 40}, {34, 49}, {40, 69}, {41, 70}, {43, 72}, {44, -1}, {46, -1}, {47, -1}, {48, -1}, {51, -1}, {52, -1}},
       73, 2, false, 147, 0},
      {&header::V811,
       {{2, -1},  {3, 1},   {12, -1}, {13, -1}, {14, 10}, {15, 11}, {16, 14}, {19, 22}, {24, 26}, {25, 26}, {26, 27},
        {28, 38}, {34, 47}, {40, 67}, {41, 68}, {43, 71}, {44, -1}, {46, -1}, {47, -1}, {48, -1}, {51, -1}, {52, -1}},
       72, 2, false, 147, 0}};
  for (const ROW& row : rows) {
    SCOPED_TRACE(row.FORMAT->NAME);
    const JOB job = SMALL_IN_EVERY_FORMAT(*row.FORMAT);
    for (const auto& [k, record] : row.BLOCK) EXPECT_EQ(job.BLOCK_RECORD(k), record) << "block " << k;
    const HV v = job.WRITTEN_RUN();
    EXPECT_EQ(v.RESULT_START_RECORD, row.END);
    // What a reader finds of the values that some formats have no word for.
    const bool block_2 = row.BLOCK.at(2) >= 0;
    const bool late = row.BLOCK.at(48) >= 0;
    EXPECT_EQ(v.TAIL_PAIR_COUNT_A, block_2 ? 1 : 0);
    EXPECT_EQ(v.NUM_BINARY_ITEMS, row.ITEMS);
    EXPECT_EQ(v.NUM_DSP_WAVE_HARMONICS, row.BLOCK.at(13) >= 0 ? 1 : 0);
    EXPECT_EQ(v.HDR_14_7, row.HDR_14_7);
    EXPECT_EQ(v.HDR_14_5, 4);
    EXPECT_EQ(v.NUM_DAMPER_ELEMENTS, late ? 1 : 0);
    EXPECT_EQ(v.NUM_PLASTIC_HARDENING_MODELS, late ? 1 : 0);

    const FILE_IMAGE image = job.IMAGE(FILE_KIND::FORCE);
    const auto at = [&row](int32_t k) { return row.BLOCK.at(k); };
    EXPECT_EQ(INT_AT(image, 0, 1), row.FORMAT->DATABASE_VERSION);
    EXPECT_EQ(INT_AT(image, at(3), 1), row.END) << "block 3 opens with the result start record";
    if (block_2) {
      EXPECT_EQ(INT_AT(image, at(2), 5), 1);
      EXPECT_EQ(INT_AT(image, at(2), 7), row.ITEMS);
    }
    if (at(2) == 2) {
      EXPECT_EQ(TEXT_AT(image, 1, 32), std::string(32, '\0')) << "record 1 is not a directory record";
    }
    if (at(13) >= 0) {
      EXPECT_EQ(INT_AT(image, at(13), 2), 1);
      EXPECT_EQ(REAL_AT(image, at(24), 1), 24.5F);
    }
    EXPECT_EQ(INT_AT(image, at(14), 1), 3);
    EXPECT_EQ(INT_AT(image, at(14), 5), 2);
    if (row.ANGLE) {
      EXPECT_EQ(REAL_AT(image, at(14), 6), 2.5F);
    } else {
      EXPECT_EQ(INT_AT(image, at(14), 6), 0);
    }
    EXPECT_EQ(INT_AT(image, at(14), 7), row.HDR_14_7);
    EXPECT_EQ(INT_AT(image, at(14), 8), 0);
    EXPECT_EQ(TEXT_AT(image, at(15), 32), std::string(28, 'a') + std::string(4, '\0'));
    EXPECT_EQ(TEXT_AT(image, at(15) + 1, 32), std::string(28, 'b') + std::string(4, '\0'));
    EXPECT_EQ(TEXT_AT(image, at(15) + 2, 32), std::string(24, 'c') + std::string(8, '\0'));
    EXPECT_EQ(INT_AT(image, at(16), 1), 1601);
    EXPECT_EQ(INT_AT(image, at(19), 1), 1901);
    EXPECT_EQ(REAL_AT(image, at(25), 1), 25.5F);
    // The heads of both surfaces, then both names.
    const int64_t g = at(34);
    EXPECT_EQ(INT_AT(image, g, 1), 3401);
    EXPECT_EQ(INT_AT(image, g + row.HEADS, 1), 3402);
    EXPECT_EQ(TEXT_AT(image, g + 1, 32), std::string(32, '\0'));
    EXPECT_EQ(TEXT_AT(image, g + 2 * row.HEADS, 3), "G1 ");
    EXPECT_EQ(TEXT_AT(image, g + 2 * row.HEADS + 8, 3), "G2 ");
    EXPECT_EQ(REAL_AT(image, at(40), 1), 40.5F);
    EXPECT_EQ(REAL_AT(image, at(41), 1), 41.5F);
    if (row.ITEMS > 0) {
      EXPECT_EQ(INT_AT(image, at(52), 1), 5201);
      EXPECT_EQ(INT_AT(image, at(52), 3), 40);
      EXPECT_EQ(TEXT_AT(image, at(52) + 2, 8), std::string(8, 'b'));
    }
    if (row.FORMAT != &header::V861) {
      EXPECT_THROW(job.DIRECTORY(), std::logic_error);
    }
  }
}

TEST(ModelLayout, CountsComeFromTheModelUnlessTheRunSetsThem) {
  JOB job;
  job.MODEL = EVERY_BLOCK();
  const std::vector<std::pair<int32_t HV::*, int32_t>> derived{
      {&HV::NUM_ELEMENTS, 2},        {&HV::NUM_NONLINEAR_E_TABLES, 1}, {&HV::NUM_NODES, 3},
      {&HV::NUM_AUX_ELEMENTS, 1},    {&HV::NUM_AUX_NODES, 2},          {&HV::NUM_SEABED_POINTS, 3},
      {&HV::NUM_WAVE_HARMONICS, 2},  {&HV::NUM_DSP_WAVE_HARMONICS, 1}, {&HV::NUM_ELEMENT_SETS, 2},
      {&HV::NUM_NODE_SETS, 1},       {&HV::NUM_LABELS, 1},             {&HV::NUM_POINT_MASSES, 2},
      {&HV::NUM_POINT_LOADS, 1},     {&HV::NUM_BOUNDARY_CONDITIONS, 2}, {&HV::NUM_CURRENT_POINTS, 2},
      {&HV::NUM_PIPE_IN_PIPE, 1},    {&HV::PIP_NODES_PER_PAIR, 2},     {&HV::NUM_GUIDE_SURFACES, 1},
      {&HV::NUM_PANELS, 1},          {&HV::NUM_ZERO_GAP_GUIDES, 1},    {&HV::NUM_INSTALLATION_CRITERIA, 1},
      {&HV::NUM_FLOATING_BODIES, 1}, {&HV::NUM_VESSELS, 1},            {&HV::NUM_TARGET_SPECTRUM_INTERVALS, 2},
      {&HV::NUM_PLASTIC_HARDENING_MODELS, 1}, {&HV::NUM_DAMPER_ELEMENTS, 3}, {&HV::NUM_BINARY_ITEMS, 2}};
  const HV written = job.WRITTEN_RUN();
  for (std::size_t f = 0; f < derived.size(); ++f) EXPECT_EQ(written.*derived[f].first, derived[f].second) << f;

  // A count that the run sets is written as it stands and sizes the layout
  // and the frames, and the rows it has no model for stay zero.
  job.RUN.NUM_NODES = 5;
  const FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
  const MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES directory = job.DIRECTORY();
  EXPECT_EQ(INT_AT(image, directory.ENTRY(6) - 1, 2), 5);
  EXPECT_EQ(directory.ENTRY(20) - directory.ENTRY(19), 5);
  EXPECT_EQ(INT_AT(image, directory.ENTRY(19) - 1, 1), 1901);
  EXPECT_EQ(TEXT_AT(image, directory.ENTRY(19) + 2, 64), std::string(64, '\0'));
  // The frames are sized by the model's counts too: 3 nodes give 18
  // displacement words in 3 records and 24 contact words in 4, none 1 and 1.
  JOB nodes;
  nodes.MODEL.NODES.resize(3);
  nodes.RUN.OUTPUT_FLAGS[0] = 1;
  JOB none;
  none.RUN.OUTPUT_FLAGS[0] = 1;
  EXPECT_EQ(nodes.MOTION_FRAME_RECORDS() - none.MOTION_FRAME_RECORDS(), 5);

  // A raw block stands in place of the model's, where the format keeps the
  // block: V815's block 3 in record 1.
  job.BLOCKS[19] = {RECORD::INTS({77})};
  EXPECT_EQ(INT_AT(job.IMAGE(FILE_KIND::MOTION), directory.ENTRY(19) - 1, 1), 77);
  JOB old(header::V815);
  old.BLOCKS[3] = {RECORD::INTS({78})};
  EXPECT_EQ(INT_AT(old.IMAGE(FILE_KIND::MOTION), 1, 1), 78);
}

TEST(ModelLayout, SetsLieBackToBackByTheirTrueCounts) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 5;
  job.MODEL.ELEMENT_SETS = {{"A", {}}, {"B", {7, 8, 9}}, {std::string(256, 'c'), {4}}};
  const FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
  const int64_t r = job.DIRECTORY().ENTRY(26) - 1;
  EXPECT_EQ(TEXT_AT(image, r, 256), "A" + std::string(255, ' ')) << "a name is padded with blanks to its field";
  EXPECT_EQ(INT_AT(image, r + 8, 1), 0);
  EXPECT_EQ(TEXT_AT(image, r + 9, 2), "B ");
  EXPECT_EQ(INT_AT(image, r + 17, 1), 3);
  for (int m = 0; m < 3; ++m) EXPECT_EQ(INT_AT(image, r + 18 + m, 1), 7 + m);
  EXPECT_EQ(TEXT_AT(image, r + 21, 256), std::string(256, 'c'));
  EXPECT_EQ(INT_AT(image, r + 29, 1), 1);
  EXPECT_EQ(INT_AT(image, r + 30, 1), 4);

  job.MODEL.ELEMENT_SETS[0].NAME = std::string(257, 'a');
  EXPECT_THROW(job.IMAGE(FILE_KIND::MOTION), std::invalid_argument);
}

TEST(ModelLayout, CurvesAndItemsTakeTheirSinglePrecisionRecords) {
  // Curve records: truncate(single(2 max(1, w3)) / 8) + 1; item data records:
  // floor(single(length - 1) / 32) + 1. Far up, the rounding of the single
  // value gives one record more than exact arithmetic would.
  const std::vector<std::pair<int32_t, int64_t>> curves{{0, 1}, {1, 1}, {3, 1}, {4, 2}, {8, 3}, {-2, 1},
                                                        {16'777'219, 4'194'306}};
  for (const auto& [w3, records] : curves) EXPECT_EQ(PLASTIC_HARDENING_RECORDS(w3), records) << w3;
  const std::vector<std::pair<int32_t, int64_t>> items{{0, 0}, {1, 1}, {32, 1}, {33, 2}, {65, 3},
                                                       {33'554'432, 1'048'577}};
  for (const auto& [length, records] : items) EXPECT_EQ(BINARY_DATA_RECORDS(length), records) << length;

  JOB job;
  for (const int32_t points : {0, 4, 3, 8}) {
    job.MODEL.PLASTIC_HARDENING_MODELS.push_back({.W2 = points, .POINTS = std::vector<std::array<float, 2>>(
                                                                   static_cast<std::size_t>(points), {1.0F, 2.0F})});
  }
  job.MODEL.PLASTIC_HARDENING_MODELS.push_back({.W3 = 12, .POINTS = {{9.0F, 9.5F}}});
  const FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
  const MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES d = job.DIRECTORY();
  EXPECT_EQ(job.LAYOUT_COUNTS().PLASTIC_HARDENING_RECORDS, 1 + 2 + 1 + 3 + 4);
  EXPECT_EQ(d.ENTRY(51) - d.ENTRY(50), 11);
  EXPECT_EQ(INT_AT(image, d.ENTRY(49) - 1 + 3, 3), 8) << "w3 is the point count when left at 0";
  EXPECT_EQ(INT_AT(image, d.ENTRY(49) - 1 + 4, 3), 12);
  EXPECT_EQ(REAL_AT(image, d.ENTRY(50) - 1 + 4, 1), 1.0F) << "the fourth curve begins in record 4";
  EXPECT_EQ(REAL_AT(image, d.ENTRY(50) - 1 + 5, 8), 2.0F);
  EXPECT_EQ(INT_AT(image, d.ENTRY(50) - 1 + 6, 1), 0) << "8 points leave their third record empty";
  EXPECT_EQ(REAL_AT(image, d.ENTRY(50) - 1 + 7, 2), 9.5F) << "the fifth in record 7";
}

TEST(ModelLayout, WhatTheLayoutCannotHoldIsRefused) {
  const auto refused = [](const auto& change, const header::FORMAT_VERSION& format = header::V861) {
    JOB job(format);
    change(job);
    EXPECT_THROW(job.IMAGE(FILE_KIND::FORCE), std::invalid_argument) << format.NAME;
  };
  refused([](JOB& job) { job.BLOCKS[19] = {RECORD(), RECORD()}; });  // no nodes, no records
  refused([](JOB& job) { job.BLOCKS[53] = {RECORD()}; });
  refused([](JOB& job) {
    job.NUM_BLOCK_ADDRESSES = 50;
    job.MODEL.DAMPER_ELEMENTS = {1};
  });
  refused([](JOB& job) {
    job.MODEL.NODES.resize(3);
    job.RUN.NUM_NODES = 2;
  });
  refused([](JOB& job) { job.MODEL.LABELS = {{.NAME = std::string(257, 'l')}}; });
  refused([](JOB& job) { job.MODEL.FLOATING_BODIES = {{.NAME = std::string(33, 'f')}}; });
  refused([](JOB& job) { job.MODEL.VESSELS = {{.NAME_CHUNKS = {std::string(33, 'v')}}}; });
  refused([](JOB& job) { job.MODEL.TARGET_SPECTRUM = {{1.0F, 2.0F}}; });  // no intervals, no block
  refused([](JOB& job) {  // a third point in the last record takes the slope's word 5
    job.MODEL.SEABED = {.POINTS = {{}, {}, {}, {}, {}, {}, {}}, .SLOPE = 2.5F};
  });
  refused([](JOB& job) { job.MODEL.PLASTIC_HARDENING_MODELS = {{.W3 = 1, .POINTS = {{}, {}, {}, {}, {}}}}; });
  refused([](JOB& job) {
    job.MODEL.PIPE_IN_PIPE = {{{1, 2}, {3, 4}, {5, 6}}};
    job.RUN.PIP_NODES_PER_PAIR = 2;
  });
  refused([](JOB& job) { job.MODEL.INSTALLATION.SETTINGS[0] = 1; });  // settings without criteria
  // Raw blocks that a format does not have, or has with no records.
  const auto raw = [](int32_t k) { return [k](JOB& job) { job.BLOCKS[k] = {RECORD()}; }; };
  refused(raw(12), header::V841);
  refused(raw(48), header::V841);
  refused(raw(52), header::V831);
  refused(raw(2), header::V815);
  refused(raw(44), header::V815);
  refused(raw(13), header::V811);
}

}  // namespace
}  // namespace tmrdar::builder
