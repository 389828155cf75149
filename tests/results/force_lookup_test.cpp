// The element force lookup: where a force parameter's word stands in a force
// frame, by the flags of the sections ahead of it. Every word of the frames
// holds a value of its own; the expected places are those of the file's
// sections, taken in order.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "results/letter_lookup.h"
#include "support/scratch_dir.h"

namespace tmrdar::results {
namespace {

constexpr float UNTOUCHED = -7777.0F;

class ForceLookup : public ::testing::Test {
 protected:
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  // A force file of two steps whose word k of frame n holds 100000 n + k.
  void OPEN(std::initializer_list<int> flags) {
    job.MOTION.PRESENT = false;
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.NUM_ELEMENTS = 5;  // an element section takes 2 records
    job.RUN.OUTPUT_FLAGS = {};
    for (const int f : flags) {
      if (f > 0) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
    }
    builder::FILE_IMAGE image = job.IMAGE(builder::FILE_KIND::FORCE);
    const int64_t records = job.FORCE_FRAME_RECORDS();
    const int64_t start = job.WRITTEN_RUN().RESULT_START_RECORD;
    for (int64_t n = 1; n <= 2; ++n) {
      for (int64_t k = 1; k <= 8 * records; ++k) {
        image.PUT_REAL(start + (n - 1) * records + (k - 1) / 8, static_cast<int>((k - 1) % 8) + 1,
                       static_cast<float>(100'000 * n + k));
      }
    }
    db.CLOSE_TIDE3_DATABASE_FILES();
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbf")));
    bool failed = true;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    ASSERT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
  }
  // Word k of step 2's frame.
  static float AT(int64_t k) { return static_cast<float>(200'000 + k); }
  float READ(int32_t element, int32_t location, int32_t parameter) {
    ERROR_HANDLING::ERROR3(false, "", "");
    value = UNTOUCHED;
    error = true;
    READF(db, 2, element, location, parameter, value, error);
    return value;
  }

  testing::SCRATCH_DIR dir;
  builder::JOB job;
  float value = 0.0F;
  bool error = false;
  header::TIDE3_DATABASE_FILES& db = header::V861_TIDE3_DATABASE_FILES();
};

// The requests reach every element section with every flag set or not;
// here what they cannot ask. Element sections of 16 words each, behind 16
// words of reactions when flag 4 is set; flag 6's section is not there.
TEST_F(ForceLookup, PositionsAheadOfASectionAndParametersOfNoSection) {
  job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
  for (const int reactions : {1, 0}) {
    OPEN({4 * reactions, 5, 7, 8, 13});  // flag 4 only in the first round
    const int64_t r = 16 * reactions;
    // An auxiliary element's negated position reads ahead of the section.
    EXPECT_EQ(READ(-1, 3, 11), AT(r + 16 - 3));
    EXPECT_EQ(READ(0, 1, 12), AT(r + 32 - 2));
    EXPECT_FALSE(error);
  }
  EXPECT_EQ(READ(1, 1, 10), UNTOUCHED);
  EXPECT_TRUE(error);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: The requested force data is not included in the database. Use the "
            "*DATABASE CONTENT keyword to manage the contents of the database.");
  for (const int32_t p : {0, 1, 8, 16, 26, 42}) {
    EXPECT_EQ(READ(1, 1, p), UNTOUCHED) << p;
    EXPECT_FALSE(error) << p;
  }
}

// The temperatures and pressures are counted from the element sections, as
// if the guide and clashing reactions between them were not there: with a
// guide and two clash pairs (one record each) they are read 16 words short.
TEST_F(ForceLookup, SectionsBehindTheContactReactionsAreReadShortOfThem) {
  job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
  job.RUN.NUM_GUIDE_SURFACES = 1;
  job.RUN.NUM_CLASH_PAIRS = 2;
  OPEN({4, 5, 15, 16});
  const int64_t temperatures = 16 + 16 + 8 + 8;
  EXPECT_EQ(READ(1, 1, 9), AT(16 + 1));
  EXPECT_EQ(READ(2, 1, 29), AT(temperatures - 16 + 3 + 1));
  EXPECT_EQ(READ(2, 1, 30), AT(temperatures + 16 - 16 + 3 + 1));
}

// Behind the pressures (32 words): flag 18's three sub-sections and flag
// 19's two, 16 words each, then a record, then flag 17's word an element.
TEST_F(ForceLookup, SubSectionsOfTheLastFlags) {
  OPEN({16, 17, 18, 19});
  for (int32_t s = 0; s < 3; ++s) EXPECT_EQ(READ(2, 1, 37 + s), AT(32 + 16 * s + 3 + 1));
  for (int32_t s = 0; s < 2; ++s) EXPECT_EQ(READ(2, 1, 40 + s), AT(80 + 16 * s + 3 + 1));
  EXPECT_EQ(READ(2, 3, 36), AT(112 + 8 + 2)) << "one word an element, whatever the location";

  OPEN({17, 19});
  EXPECT_EQ(READ(2, 1, 41), AT(16 + 3 + 1));
  EXPECT_EQ(READ(4, 1, 36), AT(32 + 8 + 4));
  EXPECT_EQ(READ(2, 1, 38), UNTOUCHED);
  EXPECT_TRUE(error);
}

// The ordinate of an abscissa: the entry itself, a straight line between
// the entries around it, or the line of the first or the last two beyond.
TEST(FindStress, InterpolatesWithinAndExtrapolatesBeyondTheTable) {
  const std::vector<float> table = {0.0F, 1.0F, 2.0F, 4.0F, 0.0F, 10.0F, 30.0F, 50.0F};
  EXPECT_EQ(FIND_STRESS(table, 1.0F), 10.0F);
  EXPECT_EQ(FIND_STRESS(table, 1.5F), 20.0F);
  EXPECT_EQ(FIND_STRESS(table, 3.0F), 40.0F);
  EXPECT_EQ(FIND_STRESS(table, 4.0F), 50.0F);
  EXPECT_EQ(FIND_STRESS(table, -1.0F), -10.0F);
  EXPECT_EQ(FIND_STRESS(table, 6.0F), 70.0F);
  EXPECT_EQ(FIND_STRESS(std::vector<float>{2.0F, 7.0F}, 9.0F), 7.0F);
  EXPECT_EQ(FIND_STRESS(std::vector<float>{}, 9.0F), 0.0F);
  EXPECT_TRUE(std::isnan(FIND_STRESS(table, NAN)));
}

}  // namespace
}  // namespace tmrdar::results
