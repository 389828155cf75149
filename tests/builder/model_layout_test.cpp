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

using Hv = header::HeaderVariables;

int32_t int_at(const FileImage& image, int64_t record, int word) {
  const std::vector<std::byte>& bytes = image.bytes();
  const auto at = static_cast<std::size_t>(record) * 32 + 4 * static_cast<std::size_t>(word - 1);
  uint32_t value = 0;
  for (int b = 3; b >= 0; --b) value = (value << 8) | static_cast<uint32_t>(bytes.at(at + static_cast<std::size_t>(b)));
  return static_cast<int32_t>(value);
}
float real_at(const FileImage& image, int64_t record, int word) {
  return std::bit_cast<float>(int_at(image, record, word));
}
std::string text_at(const FileImage& image, int64_t record, std::size_t bytes) {
  const auto* first = reinterpret_cast<const char*>(image.bytes().data()) + record * 32;
  return {first, bytes};
}

// A little of most blocks, rows of those older formats lack, and counts for
// the blocks the model does not describe.
Job small_in_every_format(const header::FormatVersion& format) {
  Job job(format);
  Model& m = job.model;
  m.elements = {{.file_number = 1601}, {}};
  m.nodes = {{.file_number = 1901}, {}, {}};
  m.dsp_wave_harmonics = {{24.5F}};
  m.contact_diameters = {25.5F};
  m.element_sets = {{"E", {1, 2}}};
  m.labels = {{"L", 1, 2}};
  m.guide_surfaces = {{.id = 3401, .name = "G1"}, {.id = 3402, .name = "G2"}};
  m.stinger = {40.5F};
  m.target_spectrum = {{41.5F, 0.0F}, {}, {}, {}};  // 3 intervals
  m.plastic_hardening_models = {{.w1 = 4901, .points = {{50.5F, 0.0F}}}};
  m.damper_elements = {5101};
  m.binary_items = {{.type = 5201, .bytes = std::string(40, 'b')}};
  job.counts.num_point_buoys = 1;
  job.counts.num_vessel_profiles = 1;
  job.counts.packed_block_count = 9;
  job.run.tail_pair_count_a = 1;
  job.run.hdr_14_7 = 147;
  job.hdr_14_5_code = 2;
  job.seabed_angle = 2.5F;
  job.run.analysis_title.assign(std::string(28, 'a') + std::string(28, 'b') + std::string(24, 'c'));
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
  struct Row {
    const header::FormatVersion* format;
    std::map<int32_t, int64_t> block;  // -1: the format has no such block
    int64_t end;
    int32_t heads;  // guide surface head records
    bool angle;     // block 14 word 6 a real
    int32_t hdr_14_7;
    int32_t items;
  };
  const std::map<int32_t, int64_t> v84x{  // V841 and V831 alike
      {2, 2},   {3, 3},   {12, -1}, {13, 12}, {14, 13}, {15, 14}, {16, 17}, {19, 25}, {24, 29}, {25, 30}, {26, 31},
      {28, 42}, {34, 51}, {40, 73}, {41, 74}, {43, 76}, {44, 77}, {46, 79}, {47, 85}, {48, -1}, {51, -1}, {52, 87}};
  const std::vector<Row> rows{
      {&header::v861,
       {{2, 9},   {3, 10},  {12, 19}, {13, 20}, {14, 21}, {15, 22}, {16, 25}, {19, 33}, {24, 37}, {25, 38}, {26, 39},
        {28, 50}, {34, 59}, {40, 81}, {41, 82}, {43, 84}, {44, 85}, {46, 87}, {47, 88}, {48, 90}, {51, 93}, {52, 94}},
       97, 3, true, 147, 1},
      {&header::v841, v84x, 90, 3, true, 0, 1},
      {&header::v831, v84x, 87, 3, false, 147, 0},
      {&header::v821,
       {{2, 2},   {3, 3},   {12, -1}, {13, 12}, {14, 13}, {15, 14}, {16, 17}, {19, 25}, {24, 29}, {25, 30}, {26, 31},
        {28, 42}, {34, 51}, {40, 71}, {41, 72}, {43, 74}, {44, 75}, {46, 77}, {47, 83}, {48, -1}, {51, -1}, {52, 85}},
       85, 2, false, 147, 0},
      {&header::v815,
       {{2, -1},  {3, 1},   {12, -1}, {13, 10}, {14, 11}, {15, 12}, {16, 15}, {19, 23}, {24, 27}, {25, 28}, {26, 29},
        {28, 40}, {34, 49}, {40, 69}, {41, 70}, {43, 72}, {44, -1}, {46, -1}, {47, -1}, {48, -1}, {51, -1}, {52, -1}},
       73, 2, false, 147, 0},
      {&header::v811,
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
  Job every = header::every_block_job();
  every.run.num_time_steps = 2;
  int64_t header_end = 0;
  const common_database::BlockAddresses directory = every.directory(&header_end);
  int64_t entry = 26;  // behind 7 directory records, 14 one-record blocks and the title's 3
  for (int32_t k = 16; k <= 52; ++k) {
    EXPECT_EQ(directory.entry(k), entry) << "block " << k;
    entry += taken[k - 16];
  }
  EXPECT_EQ(header_end, entry);
  EXPECT_EQ(every.image(FileKind::motion).records(), header_end - 1 + 2 * every.motion_frame_records());

  for (const Row& row : rows) {
    SCOPED_TRACE(row.format->name);
    const Job job = small_in_every_format(*row.format);
    for (const auto& [k, record] : row.block) EXPECT_EQ(job.block_record(k), record) << "block " << k;
    // What a reader finds of the values that some formats have no word for.
    const Hv v = job.written_run();
    const int32_t late = row.block.at(48) >= 0 ? 1 : 0;
    EXPECT_EQ(std::tuple(v.result_start_record, v.tail_pair_count_a, v.num_binary_items, v.num_dsp_wave_harmonics,
                         v.hdr_14_7, v.hdr_14_5, v.num_damper_elements, v.num_plastic_hardening_models),
              std::tuple(row.end, row.block.at(2) >= 0 ? 1 : 0, row.items, row.block.at(13) >= 0 ? 1 : 0,
                         row.hdr_14_7, 4, late, late));

    const FileImage image = job.image(FileKind::force);
    const auto at = [&row](int32_t k) { return row.block.at(k); };
    EXPECT_EQ(std::tuple(int_at(image, 0, 1), int_at(image, at(3), 1), int_at(image, at(14), 1),
                         int_at(image, at(14), 5), int_at(image, at(14), 7), int_at(image, at(14), 8)),
              std::tuple(row.format->database_version, int32_t(row.end), 3, 2, row.hdr_14_7, 0));
    EXPECT_EQ(int_at(image, at(14), 6), row.angle ? std::bit_cast<int32_t>(2.5F) : 0) << "the angle, a real";
    if (at(2) >= 0) {
      EXPECT_EQ(std::pair(int_at(image, at(2), 5), int_at(image, at(2), 7)), std::pair(1, row.items));
    }
    if (at(2) == 2) {
      EXPECT_EQ(text_at(image, 1, 32), std::string(32, '\0')) << "record 1 is not a directory record";
    }
    if (at(13) >= 0) {
      EXPECT_EQ(std::pair(int_at(image, at(13), 2), real_at(image, at(24), 1)), std::pair(1, 24.5F));
    }
    const std::string pad(4, '\0');
    EXPECT_EQ(text_at(image, at(15), 96), std::string(28, 'a') + pad + std::string(28, 'b') + pad +
                                              std::string(24, 'c') + pad + pad);
    // The heads of both surfaces, then both names.
    const int64_t g = at(34);
    EXPECT_EQ(std::pair(int_at(image, g, 1), int_at(image, g + row.heads, 1)), std::pair(3401, 3402));
    EXPECT_EQ(text_at(image, g + 1, 32), std::string(32, '\0'));
    EXPECT_EQ(text_at(image, g + 2 * row.heads, 3) + text_at(image, g + 2 * row.heads + 8, 3), "G1 G2 ");
    if (row.items > 0) {
      EXPECT_EQ(std::tuple(int_at(image, at(52), 1), int_at(image, at(52), 3), text_at(image, at(52) + 2, 8)),
                std::tuple(5201, 40, std::string(8, 'b')));
    }
    if (row.format != &header::v861) {
      EXPECT_THROW(job.directory(), std::logic_error);
    }
  }
}

// Far up, the single-precision forms round to one record more than exact
// arithmetic would, which no job of a test's size reaches.
TEST(ModelLayout, SinglePrecisionCountsRoundFarUp) {
  EXPECT_EQ(common_database::p8(16'777'231), 2'097'154);
  EXPECT_EQ(common_database::p8_single(16'777'231), 2'097'155);
  EXPECT_EQ(plastic_hardening_records(16'777'219), 4'194'306);
  EXPECT_EQ(binary_data_records(33'554'432), 1'048'577);
}

TEST(ModelLayout, WhatTheLayoutCannotHoldIsRefused) {
  const auto refused = [](const auto& change, const header::FormatVersion& format = header::v861) {
    Job job(format);
    change(job);
    EXPECT_THROW(job.image(FileKind::force), std::invalid_argument) << format.name;
  };
  refused([](Job& job) { job.blocks[19] = {Record(), Record()}; });  // no nodes, no records
  refused([](Job& job) { job.blocks[53] = {Record()}; });
  refused([](Job& job) { job.num_block_addresses = 50; job.model.damper_elements = {1}; });
  refused([](Job& job) { job.model.nodes.resize(3); job.run.num_nodes = 2; });
  refused([](Job& job) { job.model.labels = {{.name = std::string(257, 'l')}}; });
  refused([](Job& job) { job.model.floating_bodies = {{.name = std::string(33, 'f')}}; });
  refused([](Job& job) { job.model.vessels = {{.name_chunks = {std::string(33, 'v')}}}; });
  refused([](Job& job) { job.model.target_spectrum = {{1.0F, 2.0F}}; });  // no intervals, no block
  refused([](Job& job) {  // a third point in the last record takes the slope's word 5
    job.model.seabed = {.points = {{}, {}, {}, {}, {}, {}, {}}, .slope = 2.5F};
  });
  refused([](Job& job) { job.model.plastic_hardening_models = {{.w3 = 1, .points = {{}, {}, {}, {}, {}}}}; });
  refused([](Job& job) { job.model.pipe_in_pipe = {{{1, 2}, {3, 4}, {5, 6}}}; job.run.pip_nodes_per_pair = 2; });
  refused([](Job& job) { job.model.installation.settings[0] = 1; });  // settings without criteria
  // Raw blocks that a format does not have, or has with no records.
  const auto raw = [](int32_t k) { return [k](Job& job) { job.blocks[k] = {Record()}; }; };
  for (const auto& [k, format] : {std::pair{12, &header::v841}, {48, &header::v841}, {52, &header::v831},
                                   {2, &header::v815}, {44, &header::v815}, {13, &header::v811}}) {
    refused(raw(k), *format);
  }
}

}  // namespace
}  // namespace tmrdar::builder
