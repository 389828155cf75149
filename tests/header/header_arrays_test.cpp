// The tables of a header: made from the counts as far as the file can back
// them, replaced whole by the next header of the same format, and indexed so
// that a lookup gives the first row that holds a number.
#include <cmath>
#include <limits>
#include <string>
#include <vector>

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

TEST_F(HeaderArrays, TablesTakeTheirShapesFromTheCounts) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 4;
  job.RUN.NUM_NODES = 5;
  job.RUN.NUM_DSP_WAVE_HARMONICS = 3;
  job.RUN.PIP_NODES_PER_PAIR = 2;
  job.RUN.NUM_PIPE_IN_PIPE = 3;
  job.RUN.NUM_LABELS = -2;
  job.RUN.NUM_TIME_STEPS = 7;
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const HEADER_TABLES& t = db.TABLES;
  EXPECT_EQ(t.ELEMENT_NODES.EXTENT(1), 4);
  EXPECT_EQ(t.ELEMENT_NODES.EXTENT(2), 2);
  EXPECT_EQ(t.NODE_COORDINATES.EXTENT(1), 3);
  EXPECT_EQ(t.NODE_COORDINATES.EXTENT(2), 5);
  EXPECT_EQ(t.DSP_WAVE_HARMONICS.EXTENT(1), 5) << "five values a harmonic, first";
  EXPECT_EQ(t.DSP_WAVE_HARMONICS.EXTENT(2), 3);
  EXPECT_EQ(t.PIP_DATA.SIZE(), 2U * 2U * 3U);
  EXPECT_TRUE(t.LABEL_NAMES.ALLOCATED()) << "a negative count makes an empty table";
  EXPECT_EQ(t.LABEL_NAMES.SIZE(), 0U);
  EXPECT_EQ(t.TIME_LIST.EXTENT(), 7);
  EXPECT_FALSE(t.TARGET_SPECTRUM.ALLOCATED()) << "made by its reader only when a spectrum is present";
}

TEST_F(HeaderArrays, EndsAndCoordinatesAlwaysHaveRoomForWhatTheBlocksGive) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 2;
  job.RUN.NUM_NODES = 2;
  job.RUN.NODES_PER_ELEMENT = 1;
  job.RUN.COORDS_PER_NODE = 0;
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_TRUE(db.TABLES.ELEMENT_NODES.CONTAINS(2, 2));
  EXPECT_TRUE(db.TABLES.NODE_COORDINATES.CONTAINS(3, 2));
}

// Counts that no file of this size could hold are refused before they size
// anything; the counts stay for the host to see.
TEST_F(HeaderArrays, CountsTheFileCannotBackAreRefused) {
  struct CASE {
    int32_t HEADER_VARIABLES::*count;
    int32_t block;
    int word;
  };
  for (const CASE& c : std::vector<CASE>{{&HEADER_VARIABLES::NUM_ELEMENTS, 6, 1},
                                         {&HEADER_VARIABLES::NUM_NODES, 6, 2},
                                         {&HEADER_VARIABLES::NUM_ELEMENT_SETS, 6, 7},
                                         {&HEADER_VARIABLES::NUM_TIME_STEPS, 7, 1},
                                         {&HEADER_VARIABLES::NUM_SEABED_POINTS, 8, 4},
                                         {&HEADER_VARIABLES::NUM_DAMPER_ELEMENTS, 12, 1}}) {
    JOB job;
    job.FORCE.PRESENT = false;
    builder::FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
    image.PUT_INT(job.DIRECTORY().ENTRY(c.block) - 1, c.word, 2'000'000'000);
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    const std::string what = "block " + std::to_string(c.block) + " word " + std::to_string(c.word);
    EXPECT_TRUE(REOPEN()) << what;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), ALLOCATION_FAILURE) << what;
    EXPECT_EQ(db.*c.count, 2'000'000'000) << what;
    EXPECT_LT(db.TABLES.TIME_LIST.SIZE() + db.TABLES.ELEMENT_LENGTH.SIZE() + db.TABLES.NODE_NUMBERS.SIZE(), 100U)
        << what;
  }
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
  EXPECT_EQ(db.TABLES.NODE_NUMBERS.EXTENT(1), 2);
  EXPECT_EQ(db.TABLES.TIME_LIST.EXTENT(), 1);

  // A header without steps stops before the tables are released.
  JOB empty;
  empty.RUN.NUM_NODES = 9;
  empty.RUN.NUM_TIME_STEPS = 0;
  EXPECT_TRUE(OPEN(empty));
  EXPECT_EQ(db.NUM_NODES, 9);
  EXPECT_EQ(db.TABLES.NODE_NUMBERS.EXTENT(1), 2);

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
  ASSERT_EQ(points.EXTENT(1), 10);
  ASSERT_EQ(points.EXTENT(2), 2);
  const double xi = std::sqrt(0.6);
  EXPECT_NEAR(points(1, 2), 10.0 * (1.0 - xi) / 2.0, 1e-12);
  EXPECT_NEAR(points(2, 2), 5.0, 1e-12);
  EXPECT_NEAR(points(3, 2), 10.0 * (1.0 + xi) / 2.0, 1e-12);
  EXPECT_NEAR(points(3, 1), 1.0 + xi, 1e-12);
  for (int64_t i = 4; i <= 10; ++i) EXPECT_EQ(points(i, 1) + points(i, 2), 0.0) << i;

  job.RUN.SHAPE_FUNCTION_ORDER = 11;
  ASSERT_FALSE(OPEN(job));
  EXPECT_EQ(db.TABLES.INTEGRATION_POINTS.SIZE(), 20U);
  EXPECT_EQ(db.TABLES.INTEGRATION_POINTS.DATA(), std::vector<double>(20, 0.0)) << "an order past 10 places none";

  job.RUN.SHAPE_FUNCTION_FLAG = 2;
  ASSERT_FALSE(OPEN(job));
  EXPECT_FALSE(db.TABLES.INTEGRATION_POINTS.ALLOCATED());
}

// The rows of the numbers that the user knows: the first row that holds a
// number, except that an element number held by its own row is that row.
TEST_F(HeaderArrays, NumbersFindTheirRows) {
  builder::JOB job;
  builder::MODEL& m = job.MODEL;
  // Elements numbered out of order, 2 twice: in rows 2 and 4, and row 2 is
  // not its own number's row, so the search from the top finds it first.
  m.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 30}, {.FILE_NUMBER = 2, .USER_NUMBER = 2},
                {.FILE_NUMBER = 3, .USER_NUMBER = 10}, {.FILE_NUMBER = 4, .USER_NUMBER = 3},
                {.FILE_NUMBER = 5, .USER_NUMBER = 3}};
  m.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 7}, {.FILE_NUMBER = 2, .USER_NUMBER = 5},
             {.FILE_NUMBER = 3, .USER_NUMBER = 7}};
  m.AUX_ELEMENTS = {{.NUMBER = 4}, {.NUMBER = 9}, {.NUMBER = 9}};
  m.AUX_NODES = {{.NUMBER = 11}, {.NUMBER = 12}};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();

  EXPECT_EQ(db.POST_NODE_CODING(7), 1);
  EXPECT_EQ(db.POST_NODE_CODING(5), 2);
  EXPECT_EQ(db.POST_NODE_CODING(1), 0) << "a file number is no user's number";
  EXPECT_EQ(db.POST_AUX_NODE_CODING(12), 2);
  EXPECT_EQ(db.POST_AUX_NODE_CODING(-12), 0);

  EXPECT_EQ(db.POST_ELEM_CODING(30), 1);
  EXPECT_EQ(db.POST_ELEM_CODING(2), 2) << "row 2 holds 2";
  EXPECT_EQ(db.POST_ELEM_CODING(3), 4) << "row 3 holds another number; the first row holding 3 is 4";
  EXPECT_EQ(db.POST_ELEM_CODING(10), 3);
  EXPECT_EQ(db.POST_ELEM_CODING(6), 0);
  EXPECT_EQ(db.POST_ELEM_CODING(0), 0);
  EXPECT_EQ(db.POST_ELEM_CODING(-9), -2) << "an auxiliary element, its row negated";
  EXPECT_EQ(db.POST_ELEM_CODING(-30), 0);
  EXPECT_EQ(db.POST_ELEM_CODING(std::numeric_limits<int32_t>::min()), 0);
  EXPECT_EQ(db.POST_AUX_ELEM_CODING(4), 1);
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
