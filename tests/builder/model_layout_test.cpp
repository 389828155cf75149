// The block layout of each format as the builder writes it, pinned from
// tables worked by hand, and what the layout cannot hold.
#include <gtest/gtest.h>

#include <bit>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "builder/job.h"
#include "header/every_block_job.h"

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
  return std::bit_cast<float>(INT_AT(image, record, word));
}
std::string TEXT_AT(const FILE_IMAGE& image, int64_t record, std::size_t bytes) {
  const auto* first = reinterpret_cast<const char*>(image.BYTES().data()) + record * 32;
  return {first, bytes};
}

// A little of most blocks, rows of those older formats lack, and counts for
// the blocks the model does not describe.
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
  const std::map<int32_t, int64_t> v84x{  // V841 and V831 alike
      {2, 2},   {3, 3},   {12, -1}, {13, 12}, {14, 13}, {15, 14}, {16, 17}, {19, 25}, {24, 29}, {25, 30}, {26, 31},
      {28, 42}, {34, 51}, {40, 73}, {41, 74}, {43, 76}, {44, 77}, {46, 79}, {47, 85}, {48, -1}, {51, -1}, {52, 87}};
  const std::vector<ROW> rows{
      {&header::V861,
       {{2, 9},   {3, 10},  {12, 19}, {13, 20}, {14, 21}, {15, 22}, {16, 25}, {19, 33}, {24, 37}, {25, 38}, {26, 39},
        {28, 50}, {34, 59}, {40, 81}, {41, 82}, {43, 84}, {44, 85}, {46, 87}, {47, 88}, {48, 90}, {51, 93}, {52, 94}},
       97, 3, true, 147, 1},
      {&header::V841, v84x, 90, 3, true, 0, 1},
      {&header::V831, v84x, 87, 3, false, 147, 0},
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
  // The shared every-block job in V861, by the layout's table: 9 elements of
  // 3 records, 5 nodes, sets of 9 reserved records and one an element (26)
  // or node (27), 2 labels of 9, criteria of 9 behind the settings, blocks 46
  // and 47 of one record at counts of 0, curves of 3, 0 and 5 points in 1, 1
  // and 2 records, items of 70 and 64 bytes in 1 + 3 and 1 + 2.
  const int64_t taken[] = {27, 9, 2, 5, 2, 2, 2, 2, 3, 2, 54, 14, 18, 1, 2, 1, 2, 4, 22,
                           2, 2, 19, 8, 9, 1, 2, 0, 0, 0, 0, 1, 1, 1, 3, 4, 2, 7};
  JOB every = header::EVERY_BLOCK_JOB();
  every.RUN.NUM_TIME_STEPS = 2;
  int64_t header_end = 0;
  const MOD_COMMON_DATABASE::T_BLOCK_ADDRESSES directory = every.DIRECTORY(&header_end);
  int64_t entry = 26;  // behind 7 directory records, 14 one-record blocks and the title's 3
  for (int32_t k = 16; k <= 52; ++k) {
    EXPECT_EQ(directory.ENTRY(k), entry) << "block " << k;
    entry += taken[k - 16];
  }
  EXPECT_EQ(header_end, entry);
  EXPECT_EQ(every.IMAGE(FILE_KIND::MOTION).RECORDS(), header_end - 1 + 2 * every.MOTION_FRAME_RECORDS());

  for (const ROW& row : rows) {
    SCOPED_TRACE(row.FORMAT->NAME);
    const JOB job = SMALL_IN_EVERY_FORMAT(*row.FORMAT);
    for (const auto& [k, record] : row.BLOCK) EXPECT_EQ(job.BLOCK_RECORD(k), record) << "block " << k;
    // What a reader finds of the values that some formats have no word for.
    const HV v = job.WRITTEN_RUN();
    const int32_t late = row.BLOCK.at(48) >= 0 ? 1 : 0;
    EXPECT_EQ(std::tuple(v.RESULT_START_RECORD, v.TAIL_PAIR_COUNT_A, v.NUM_BINARY_ITEMS, v.NUM_DSP_WAVE_HARMONICS,
                         v.HDR_14_7, v.HDR_14_5, v.NUM_DAMPER_ELEMENTS, v.NUM_PLASTIC_HARDENING_MODELS),
              std::tuple(row.END, row.BLOCK.at(2) >= 0 ? 1 : 0, row.ITEMS, row.BLOCK.at(13) >= 0 ? 1 : 0,
                         row.HDR_14_7, 4, late, late));

    const FILE_IMAGE image = job.IMAGE(FILE_KIND::FORCE);
    const auto at = [&row](int32_t k) { return row.BLOCK.at(k); };
    EXPECT_EQ(std::tuple(INT_AT(image, 0, 1), INT_AT(image, at(3), 1), INT_AT(image, at(14), 1),
                         INT_AT(image, at(14), 5), INT_AT(image, at(14), 7), INT_AT(image, at(14), 8)),
              std::tuple(row.FORMAT->DATABASE_VERSION, int32_t(row.END), 3, 2, row.HDR_14_7, 0));
    EXPECT_EQ(INT_AT(image, at(14), 6), row.ANGLE ? std::bit_cast<int32_t>(2.5F) : 0) << "the angle, a real";
    if (at(2) >= 0) {
      EXPECT_EQ(std::pair(INT_AT(image, at(2), 5), INT_AT(image, at(2), 7)), std::pair(1, row.ITEMS));
    }
    if (at(2) == 2) {
      EXPECT_EQ(TEXT_AT(image, 1, 32), std::string(32, '\0')) << "record 1 is not a directory record";
    }
    if (at(13) >= 0) {
      EXPECT_EQ(std::pair(INT_AT(image, at(13), 2), REAL_AT(image, at(24), 1)), std::pair(1, 24.5F));
    }
    const std::string pad(4, '\0');
    EXPECT_EQ(TEXT_AT(image, at(15), 96), std::string(28, 'a') + pad + std::string(28, 'b') + pad +
                                              std::string(24, 'c') + pad + pad);
    // The heads of both surfaces, then both names.
    const int64_t g = at(34);
    EXPECT_EQ(std::pair(INT_AT(image, g, 1), INT_AT(image, g + row.HEADS, 1)), std::pair(3401, 3402));
    EXPECT_EQ(TEXT_AT(image, g + 1, 32), std::string(32, '\0'));
    EXPECT_EQ(TEXT_AT(image, g + 2 * row.HEADS, 3) + TEXT_AT(image, g + 2 * row.HEADS + 8, 3), "G1 G2 ");
    if (row.ITEMS > 0) {
      EXPECT_EQ(std::tuple(INT_AT(image, at(52), 1), INT_AT(image, at(52), 3), TEXT_AT(image, at(52) + 2, 8)),
                std::tuple(5201, 40, std::string(8, 'b')));
    }
    if (row.FORMAT != &header::V861) {
      EXPECT_THROW(job.DIRECTORY(), std::logic_error);
    }
  }
}

// Far up, the single-precision forms round to one record more than exact
// arithmetic would, which no job of a test's size reaches.
TEST(ModelLayout, SinglePrecisionCountsRoundFarUp) {
  EXPECT_EQ(MOD_COMMON_DATABASE::P8(16'777'231), 2'097'154);
  EXPECT_EQ(MOD_COMMON_DATABASE::P8_SINGLE(16'777'231), 2'097'155);
  EXPECT_EQ(PLASTIC_HARDENING_RECORDS(16'777'219), 4'194'306);
  EXPECT_EQ(BINARY_DATA_RECORDS(33'554'432), 1'048'577);
}

TEST(ModelLayout, WhatTheLayoutCannotHoldIsRefused) {
  const auto refused = [](const auto& change, const header::FORMAT_VERSION& format = header::V861) {
    JOB job(format);
    change(job);
    EXPECT_THROW(job.IMAGE(FILE_KIND::FORCE), std::invalid_argument) << format.NAME;
  };
  refused([](JOB& job) { job.BLOCKS[19] = {RECORD(), RECORD()}; });  // no nodes, no records
  refused([](JOB& job) { job.BLOCKS[53] = {RECORD()}; });
  refused([](JOB& job) { job.NUM_BLOCK_ADDRESSES = 50; job.MODEL.DAMPER_ELEMENTS = {1}; });
  refused([](JOB& job) { job.MODEL.NODES.resize(3); job.RUN.NUM_NODES = 2; });
  refused([](JOB& job) { job.MODEL.LABELS = {{.NAME = std::string(257, 'l')}}; });
  refused([](JOB& job) { job.MODEL.FLOATING_BODIES = {{.NAME = std::string(33, 'f')}}; });
  refused([](JOB& job) { job.MODEL.VESSELS = {{.NAME_CHUNKS = {std::string(33, 'v')}}}; });
  refused([](JOB& job) { job.MODEL.TARGET_SPECTRUM = {{1.0F, 2.0F}}; });  // no intervals, no block
  refused([](JOB& job) {  // a third point in the last record takes the slope's word 5
    job.MODEL.SEABED = {.POINTS = {{}, {}, {}, {}, {}, {}, {}}, .SLOPE = 2.5F};
  });
  refused([](JOB& job) { job.MODEL.PLASTIC_HARDENING_MODELS = {{.W3 = 1, .POINTS = {{}, {}, {}, {}, {}}}}; });
  refused([](JOB& job) { job.MODEL.PIPE_IN_PIPE = {{{1, 2}, {3, 4}, {5, 6}}}; job.RUN.PIP_NODES_PER_PAIR = 2; });
  refused([](JOB& job) { job.MODEL.INSTALLATION.SETTINGS[0] = 1; });  // settings without criteria
  // Raw blocks that a format does not have, or has with no records.
  const auto raw = [](int32_t k) { return [k](JOB& job) { job.BLOCKS[k] = {RECORD()}; }; };
  for (const auto& [k, format] : {std::pair{12, &header::V841}, {48, &header::V841}, {52, &header::V831},
                                   {2, &header::V815}, {44, &header::V815}, {13, &header::V811}}) {
    refused(raw(k), *format);
  }
}

}  // namespace
}  // namespace tmrdar::builder
