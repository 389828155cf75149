// Blocks 48 to 52 read back: the plastic hardening models and their curves,
// the damper elements, and the chain of binary items that carries a seabed
// file; and the refusal of what the file cannot hold.
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::FILE_KIND;
using builder::JOB;
using builder::RECORD;

const std::string PREFIX = "Error: Database Postprocessing: ";
const std::string COUNTS_FAILURE = PREFIX + "Unable to read from database header.";
const std::string MODELS_FAILURE = PREFIX + "Unable to allocate memory for plastic hardening models.";
const std::string DAMPERS_FAILURE = PREFIX + "Unable to read damper elements from database header.";
const std::string ITEMS_FAILURE = PREFIX + "Unable to allocate memory for seabed database header data.";

// A binary item: its head record and its data, 32 bytes a record.
// The head's length is that of the data unless one is given.
std::vector<RECORD> ITEM(int32_t type, int32_t id, const std::string& data, std::optional<int32_t> length = {}) {
  std::vector<RECORD> records{RECORD::INTS({type, id, length.value_or(static_cast<int32_t>(data.size()))})};
  // The tail of a last record beyond the item's bytes holds noise.
  for (std::size_t at = 0; at < data.size(); at += 32) {
    records.push_back(RECORD::TEXT(std::string(32, '#')).CHARS(0, data.substr(at, 32)));
  }
  return records;
}

std::string BYTES(std::size_t length, char first) {
  std::string text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char>(first + static_cast<char>(i % 26));
  return text;
}

class MaterialItemBlocks : public HEADER_TEST {
 protected:
  bool OPEN(const JOB& job, int32_t dead = 0) { return dead > 0 ? HEADER_TEST::OPEN(job, dead) : OPEN_WRITTEN(job); }
  // Sets the items of block 52, the count in the header and their room in the layout.
  static void SET_ITEMS(JOB& job, const std::vector<std::vector<RECORD>>& items) {
    std::vector<RECORD>& block = job.BLOCKS[52];
    block.clear();
    for (const std::vector<RECORD>& item : items) block.insert(block.end(), item.begin(), item.end());
    job.RUN.NUM_BINARY_ITEMS = static_cast<int32_t>(items.size());
    job.COUNTS.BINARY_DATA_RECORDS = static_cast<int32_t>(block.size());
  }
  const MOD_DATA_BLOCK::T_DATA_BLOCK& SEABED_BLOCK() const { return db.SEABED_PROFILE.DATA_BLOCK(); }
};

TEST_F(MaterialItemBlocks, CountsAndModelsWithTheirCurves) {
  JOB job;
  job.RUN.OUTPUT_FLAGS[17] = 1;  // the frames are laid out with both sections
  job.RUN.OUTPUT_FLAGS[18] = 1;
  job.BLOCKS[48] = {RECORD::INTS({1, 6, 1, 1, 4})};
  job.RUN.NUM_PLASTIC_HARDENING_MODELS = 6;
  // Head words: (not kept, rule, points).
  job.BLOCKS[49] = {RECORD::INTS({91, 2, 3}), RECORD::INTS({92, 5, 4}), RECORD::INTS({93, 1, 0}),
                    RECORD::INTS({94, 7, 9}), RECORD::INTS({95, 3, -2}), RECORD::INTS({96, 4, 1})};
  // A curve takes truncate(2 * max(points, 1) / 8) + 1 records: 1, 2, 1, 3, 1, 1.
  const auto pairs = [](float model, int count) {
    RECORD record;
    for (int p = 1; p <= count; ++p) record.REAL(2 * p - 1, model + 0.1F * p).REAL(2 * p, -model * p);
    return record;
  };
  const RECORD noise = RECORD::REALS({999.0F, 999.0F, 999.0F, 999.0F, 999.0F, 999.0F, 999.0F, 999.0F});
  job.BLOCKS[50] = {pairs(1, 3), pairs(2, 4), noise, noise, pairs(4, 4), pairs(8, 4), pairs(12, 1),
                    noise, pairs(6, 1)};
  job.COUNTS.PLASTIC_HARDENING_RECORDS = 9;
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();

  EXPECT_EQ(db.SHAPE_FUNCTION_FLAG, 1);
  EXPECT_EQ(db.NUM_PLASTIC_HARDENING_MODELS, 6);
  EXPECT_EQ(db.OUTPUT_FLAGS[17], 1);
  EXPECT_EQ(db.OUTPUT_FLAGS[18], 1);
  EXPECT_EQ(db.SHAPE_FUNCTION_ORDER, 4);
  EXPECT_TRUE(db.TABLES.INTEGRATION_POINTS.ALLOCATED()) << "the open builds the points when word 1 is 1";

  const auto& models = db.TABLES.PLASTIC_HARDENING_MODELS;
  ASSERT_EQ(models.EXTENT(), 6);
  const std::vector<int32_t> rules{2, 5, 1, 7, 3, 4};
  const std::vector<int32_t> points{3, 4, 0, 9, -2, 1};
  const std::vector<int32_t> kept_pairs{3, 4, 0, 9, 0, 1};
  for (int32_t m = 1; m <= 6; ++m) {
    const auto& model = models(m);
    const auto i = static_cast<std::size_t>(m - 1);
    EXPECT_EQ(model.RULE, rules[i]) << "model " << m;
    EXPECT_EQ(model.NUM_POINTS, points[i]) << "model " << m;
    EXPECT_EQ(model.NUM_PAIRS(), kept_pairs[i]) << "model " << m;
    EXPECT_EQ(model.KINEMATIC_SHARE, MOD_PLASTIC_HARDENING::DEFAULT_KINEMATIC_SHARE);
    EXPECT_EQ(model.CURVE_TOLERANCE, MOD_PLASTIC_HARDENING::DEFAULT_CURVE_TOLERANCE);
  }
  // Each pair as written, widened from 32 bits: pair p of the record of base b
  // is (b + 0.1p, -bp).
  const auto expect_pair = [&](int32_t m, int32_t pair, float base, int place) {
    EXPECT_EQ(models(m).DATA(1, pair), static_cast<double>(base + 0.1F * place)) << "model " << m << " pair " << pair;
    EXPECT_EQ(models(m).DATA(2, pair), static_cast<double>(-base * place)) << "model " << m << " pair " << pair;
  };
  for (int p = 1; p <= 3; ++p) expect_pair(1, p, 1, p);
  for (int p = 1; p <= 4; ++p) expect_pair(2, p, 2, p);
  for (int p = 1; p <= 4; ++p) expect_pair(4, p, 4, p);
  for (int p = 1; p <= 4; ++p) expect_pair(4, p + 4, 8, p);
  expect_pair(4, 9, 12, 1);
  expect_pair(6, 1, 6, 1);
  EXPECT_NE(models(1).DATA(1, 1), 1.1) << "the 32-bit value, not its decimal";
}

TEST_F(MaterialItemBlocks, DampersAcrossARecordBoundary) {
  for (const int32_t count : {8, 9}) {
    JOB job;
    job.RUN.NUM_DAMPER_ELEMENTS = count;
    // Two records either way; with 8 dampers the second holds nothing of theirs.
    job.BLOCKS[51] = {RECORD::INTS({101, 102, 103, 104, 105, 106, 107, 108}), RECORD::INTS({109, 110})};
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    const TABLE<int32_t>& dampers = db.TABLES.DAMPER_ELEMENTS;
    ASSERT_EQ(dampers.EXTENT(), count);
    for (int32_t i = 1; i <= count; ++i) EXPECT_EQ(dampers(i), 100 + i) << count << " dampers, damper " << i;
  }
}

TEST_F(MaterialItemBlocks, ASeabedItemReachesTheProfileWithItsExactBytes) {
  for (const std::size_t length : {32U, 33U, 64U}) {
    const std::string data = BYTES(length, 'a');
    // Behind an item of another type, passed over by its 3 records.
    JOB job;
    SET_ITEMS(job, {ITEM(5, 40, BYTES(70, 'A')), ITEM(3, 77, data)});
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    EXPECT_EQ(SEABED_BLOCK().VIEW(), data) << "length " << length;
    EXPECT_EQ(SEABED_BLOCK().GET_TYPE(), 3);
    EXPECT_EQ(SEABED_BLOCK().GET_KEY(), 77);

    // Ahead of another: the next head stands right behind its records.
    SET_ITEMS(job, {ITEM(3, 77, data), ITEM(3, 78, "tail")});
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    EXPECT_EQ(SEABED_BLOCK().VIEW(), "tail") << "behind an item of length " << length;
    EXPECT_EQ(SEABED_BLOCK().GET_KEY(), 78);
  }
}

TEST_F(MaterialItemBlocks, ItemsOfNoBytesTakeTheirHeadAlone) {
  JOB job;
  // Length 0 gives floor(-1/32) + 1 = 0 data records; a negative length,
  // which would give fewer, takes none either.
  SET_ITEMS(job, {ITEM(3, 5, "")});
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_TRUE(SEABED_BLOCK().VIEW().empty());
  EXPECT_EQ(SEABED_BLOCK().GET_TYPE(), 3);
  EXPECT_EQ(SEABED_BLOCK().GET_KEY(), 5);

  SET_ITEMS(job, {ITEM(8, 1, ""), ITEM(3, 6, ""), ITEM(4, 2, "", -40), ITEM(3, 7, "xyz")});
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(SEABED_BLOCK().VIEW(), "xyz");
  EXPECT_EQ(SEABED_BLOCK().GET_KEY(), 7);
}

TEST_F(MaterialItemBlocks, WhatTheFileCannotHoldIsRefused) {
  constexpr int32_t HUGE = std::numeric_limits<int32_t>::max();
  // More models than the file has records for their heads.
  JOB models;
  models.BLOCKS[48] = {RECORD::INTS({0, 1000000})};
  EXPECT_TRUE(OPEN(models));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), MODELS_FAILURE);
  EXPECT_FALSE(db.TABLES.PLASTIC_HARDENING_MODELS.ALLOCATED());

  // A curve of more points than the file holds, behind a model that was made.
  JOB curve;
  curve.BLOCKS[48] = {RECORD::INTS({0, 2})};
  curve.RUN.NUM_PLASTIC_HARDENING_MODELS = 2;
  curve.BLOCKS[49] = {RECORD::INTS({0, 3, 1}), RECORD::INTS({0, 4, HUGE})};
  EXPECT_TRUE(OPEN(curve));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), MODELS_FAILURE);
  EXPECT_EQ(db.TABLES.PLASTIC_HARDENING_MODELS(1).RULE, 3);

  // A curve of 4F points, F the records of the file, would stand in F records
  // but takes F + 1 by its count; one point fewer takes F and is read.
  JOB edge;
  edge.BLOCKS[48] = {RECORD::INTS({0, 1})};
  edge.RUN.NUM_PLASTIC_HARDENING_MODELS = 1;
  edge.BLOCKS[49] = {RECORD::INTS({0, 1, 0})};
  const auto file_records = static_cast<int32_t>(edge.IMAGE(FILE_KIND::MOTION).RECORDS());
  edge.BLOCKS[49] = {RECORD::INTS({0, 1, 4 * file_records - 1})};
  EXPECT_FALSE(OPEN(edge)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.TABLES.PLASTIC_HARDENING_MODELS(1).NUM_PAIRS(), 4 * file_records - 1);
  edge.BLOCKS[49] = {RECORD::INTS({0, 1, 4 * file_records})};
  EXPECT_TRUE(OPEN(edge));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), MODELS_FAILURE);

  // Items: more than the file has records, and lengths beyond the file, of
  // the seabed type and of one that would be passed over.
  for (const int32_t type : {3, 9}) {
    JOB items;
    SET_ITEMS(items, {ITEM(type, 1, "", HUGE)});
    EXPECT_TRUE(OPEN(items)) << "type " << type;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), ITEMS_FAILURE) << "type " << type;
  }
  JOB items;
  items.RUN.NUM_BINARY_ITEMS = 1000000;
  EXPECT_TRUE(OPEN(items));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), ITEMS_FAILURE);
}

TEST_F(MaterialItemBlocks, ABlockThatCannotBeReadReportsItsMessage) {
  JOB job;
  job.BLOCKS[48] = {RECORD::INTS({0, 1})};
  job.RUN.NUM_PLASTIC_HARDENING_MODELS = 1;
  job.BLOCKS[49] = {RECORD::INTS({0, 1, 2})};
  job.COUNTS.PLASTIC_HARDENING_RECORDS = 1;
  job.RUN.NUM_DAMPER_ELEMENTS = 1;
  SET_ITEMS(job, {ITEM(3, 1, "abc")});
  // A directory entry of 0 puts its block ahead of the file.
  const std::vector<std::pair<int32_t, std::string>> cases{
      {48, COUNTS_FAILURE}, {49, MODELS_FAILURE}, {50, MODELS_FAILURE}, {51, DAMPERS_FAILURE}, {52, ITEMS_FAILURE}};
  for (const auto& [block, message] : cases) {
    EXPECT_TRUE(OPEN(job, block)) << "block " << block;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), message) << "block " << block;
  }
}

}  // namespace
}  // namespace tmrdar::header
