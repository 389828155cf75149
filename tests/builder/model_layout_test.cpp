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

  // A raw block stands in place of the model's.
  job.BLOCKS[19] = {RECORD::INTS({77})};
  EXPECT_EQ(INT_AT(job.IMAGE(FILE_KIND::MOTION), directory.ENTRY(19) - 1, 1), 77);
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
  const auto refused = [](const auto& change) {
    JOB job;
    change(job);
    EXPECT_THROW(job.IMAGE(FILE_KIND::FORCE), std::invalid_argument);
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
}

}  // namespace
}  // namespace tmrdar::builder
