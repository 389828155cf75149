// The tables of a header: made from the counts as far as the file can back
// them, replaced whole by the next header, and indexed by number.
#include <cmath>
#include <string>
#include <vector>

#include "every_block_job.h"
#include "header/number_index.h"
#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::FILE_KIND;
using builder::JOB;

constexpr std::string_view ALLOCATION_FAILURE =
    "Error: Database Postprocessing: Unable to allocate memory for database header data.";

class HeaderArrays : public HEADER_TEST {
 protected:
  bool OPEN(const JOB& job) { return OPEN_WRITTEN(job); }
};

TEST_F(HeaderArrays, EndsAndCoordinatesAlwaysHaveRoomForWhatTheBlocksGive) {
  JOB job;
  job.RUN.NUM_ELEMENTS = job.RUN.NUM_NODES = 2;
  job.RUN.NODES_PER_ELEMENT = 1;
  job.RUN.COORDS_PER_NODE = 0;
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_TRUE(db.TABLES.ELEMENT_NODES.CONTAINS(2, 2) && db.TABLES.NODE_COORDINATES.CONTAINS(3, 2));
}

// A count, or a length within a block, that no file of this size could hold
// is refused before it sizes anything; a header count stays for the host.
TEST_F(HeaderArrays, WhatTheFileCannotBackIsRefused) {
  const std::string prefix = "Error: Database Postprocessing: Unable to allocate memory for ";
  const std::string models = prefix + "plastic hardening models.", items = prefix + "seabed database header data.";
  struct ROW {
    int32_t block, record, word;  // the word given 2,000,000,000
    int32_t HEADER_VARIABLES::*count;
    std::string message;
  };
  const std::vector<ROW> rows{{6, 0, 1, &HEADER_VARIABLES::NUM_ELEMENTS, std::string(ALLOCATION_FAILURE)},
                              {6, 0, 2, &HEADER_VARIABLES::NUM_NODES, std::string(ALLOCATION_FAILURE)},
                              {6, 0, 7, &HEADER_VARIABLES::NUM_ELEMENT_SETS, std::string(ALLOCATION_FAILURE)},
                              {7, 0, 1, &HEADER_VARIABLES::NUM_TIME_STEPS, std::string(ALLOCATION_FAILURE)},
                              {8, 0, 4, &HEADER_VARIABLES::NUM_SEABED_POINTS, std::string(ALLOCATION_FAILURE)},
                              {12, 0, 1, &HEADER_VARIABLES::NUM_DAMPER_ELEMENTS, std::string(ALLOCATION_FAILURE)},
                              {14, 0, 1, nullptr, prefix + "target spectrum database header data."},
                              {27, 8, 1, nullptr, std::string(ALLOCATION_FAILURE)},  // the node set's count
                              {48, 0, 2, &HEADER_VARIABLES::NUM_PLASTIC_HARDENING_MODELS, models},
                              {49, 2, 3, nullptr, models},  // the third curve's points
                              {2, 0, 7, &HEADER_VARIABLES::NUM_BINARY_ITEMS, items},
                              {52, 0, 3, nullptr, items},  // the length of an item passed over
                              {52, 4, 3, nullptr, items}};  // and of the seabed item
  const JOB job = EVERY_BLOCK_JOB();
  for (const ROW& row : rows) {
    builder::FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
    image.PUT_INT(job.DIRECTORY().ENTRY(row.block) - 1 + row.record, row.word, 2'000'000'000);
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    const std::string what = "block " + std::to_string(row.block) + " word " + std::to_string(row.word);
    EXPECT_TRUE(REOPEN()) << what;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), row.message) << what;
    if (row.count != nullptr) {
      EXPECT_EQ(db.*row.count, 2'000'000'000) << what;
    }
    EXPECT_LT(db.TABLES.TIME_LIST.SIZE() + db.TABLES.ELEMENT_LENGTH.SIZE() + db.TABLES.NODE_NUMBERS.SIZE(), 100U)
        << what;
  }

  // A curve of 4F points, F the records of the file, would stand in F records
  // but takes F + 1 by its count; one point fewer takes F and is read.
  JOB edge;
  edge.BLOCKS[48] = {builder::RECORD::INTS({0, 1})};
  edge.RUN.NUM_PLASTIC_HARDENING_MODELS = 1;
  edge.BLOCKS[49] = {builder::RECORD::INTS({0, 1, 0})};
  const auto file_records = static_cast<int32_t>(edge.IMAGE(FILE_KIND::MOTION).RECORDS());
  for (const int32_t points : {4 * file_records - 1, 4 * file_records}) {
    edge.BLOCKS[49] = {builder::RECORD::INTS({0, 1, points})};
    EXPECT_EQ(OPEN(edge), points == 4 * file_records) << points << ": " << ERROR_HANDLING::LAST_MESSAGE();
  }
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), models);
}

TEST_F(HeaderArrays, ASecondHeaderReplacesTheFirstAndAFailedOneKeepsIt) {
  JOB first;
  first.RUN.NUM_NODES = 6;
  first.RUN.NUM_TIME_STEPS = 3;
  ASSERT_FALSE(OPEN(first));
  ASSERT_EQ(db.TABLES.NODE_NUMBERS.EXTENT(1), 6);

  JOB second;
  second.RUN.NUM_NODES = 2;
  ASSERT_FALSE(OPEN(second));
  EXPECT_EQ(std::pair(db.TABLES.NODE_NUMBERS.EXTENT(1), db.TABLES.TIME_LIST.EXTENT()),
            std::pair(int64_t{2}, int64_t{1}));

  // A header without steps stops before the tables are released.
  JOB empty;
  empty.RUN.NUM_NODES = 9;
  empty.RUN.NUM_TIME_STEPS = 0;
  EXPECT_TRUE(OPEN(empty));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: No solution time steps were outputted to the database.");
  EXPECT_EQ(std::pair(db.NUM_NODES, db.TABLES.NODE_NUMBERS.EXTENT(1)), std::pair(9, int64_t{2}));

  db.DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS();
  EXPECT_FALSE(db.TABLES.NODE_NUMBERS.ALLOCATED());
  db.DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS();  // nothing left to release
  EXPECT_FALSE(db.TABLES.TIME_LIST.ALLOCATED());
}

// The open builds the integration point locations when block 48 asks for
// them: the Gauss points of the order along each element, then zeros.
TEST_F(HeaderArrays, TheOpenPlacesIntegrationPointsAlongEachElement) {
  JOB job;
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .LENGTH = 2.0F}, {.FILE_NUMBER = 2, .LENGTH = 10.0F}};
  job.RUN.SHAPE_FUNCTION_FLAG = 1;
  job.RUN.SHAPE_FUNCTION_ORDER = 3;
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const TABLE<double, 2>& points = db.TABLES.INTEGRATION_POINTS;
  ASSERT_EQ(std::pair(points.EXTENT(1), points.EXTENT(2)), std::pair(int64_t{10}, int64_t{2}));
  const double xi = std::sqrt(0.6);
  EXPECT_NEAR(points(1, 2), 5.0 * (1.0 - xi), 1e-12);
  EXPECT_NEAR(points(3, 1), 1.0 + xi, 1e-12);
  for (int64_t i = 4; i <= 10; ++i) EXPECT_EQ(points(i, 1) + points(i, 2), 0.0) << i;
  job.RUN.SHAPE_FUNCTION_ORDER = 11;
  ASSERT_FALSE(OPEN(job));
  EXPECT_EQ(db.TABLES.INTEGRATION_POINTS.DATA(), std::vector<double>(20, 0.0)) << "an order past 10 places none";
  job.RUN.SHAPE_FUNCTION_FLAG = 2;
  ASSERT_FALSE(OPEN(job));
  EXPECT_FALSE(db.TABLES.INTEGRATION_POINTS.ALLOCATED());
}

TEST(NumberIndex, GivesTheFirstRowOfANumber) {
  constexpr int32_t LOW = std::numeric_limits<int32_t>::min();
  constexpr int32_t HIGH = std::numeric_limits<int32_t>::max();
  // Compact numbers go to a direct table, spread ones to a hash table; both
  // answer with the first row and 0 for a number no row holds.
  struct CASE {
    std::vector<int32_t> numbers;
    std::vector<std::pair<int32_t, int32_t>> answers;  // (number, row)
  };
  std::vector<int32_t> spread;  // 5,000 numbers 400,009 apart, the last twice
  for (int32_t i = 0; i < 5'000; ++i) spread.push_back(-1'000'000'000 + i * 400'009);
  spread.push_back(spread.back());
  const CASE cases[] = {
      {{40, 7, -3, 7, 0, 40}, {{40, 1}, {7, 2}, {-3, 3}, {0, 5}, {8, 0}, {41, 0}, {-4, 0}, {LOW, 0}}},
      {{HIGH, LOW, 5, HIGH, 0}, {{HIGH, 1}, {LOW, 2}, {5, 3}, {0, 5}, {1, 0}, {HIGH - 1, 0}, {LOW + 1, 0}}},
      {spread, {{spread[0], 1}, {spread[4'999], 5'000}, {spread[2'500], 2'501}, {spread[2'500] + 1, 0}, {0, 0}}},
      {{}, {{40, 0}, {0, 0}}},
  };
  NUMBER_INDEX index;
  for (const CASE& c : cases) {
    ASSERT_TRUE(index.BUILD(c.numbers));
    EXPECT_EQ(index.EMPTY(), c.numbers.empty());
    for (const auto& [number, row] : c.answers) EXPECT_EQ(index.FIND(number), row) << number;
  }
}

}  // namespace
}  // namespace tmrdar::header
