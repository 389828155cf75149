// The time of every step, read at open from the step record of each frame,
// and the word reads beneath it.
#include <bit>
#include <limits>
#include <string>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::JOB;

class StepTimes : public HEADER_TEST {
 protected:
  bool OPEN(const JOB& job) { return OPEN_WRITTEN(job); }
  std::vector<float> TIMES() const { return db.TABLES.TIME_LIST.DATA(); }
};

TEST_F(StepTimes, TheTimeListReplacesTheRunSpan) {
  JOB job;
  job.RUN.NUM_TIME_STEPS = 4;
  job.RUN.START_TIME = -5.0F;
  job.RUN.HDR_4_2 = 99.0F;
  job.STEP_TIMES = {0.25F, 0.5F, 0.75F, 1.0F};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(TIMES(), job.STEP_TIMES);
  EXPECT_EQ(db.START_TIME, 0.25F);
  EXPECT_EQ(db.END_TIME, 1.0F);
  EXPECT_EQ(db.HDR_4_2, 99.0F) << "the stored end time stays";
}

TEST_F(StepTimes, AWordIsPlaceWordMinusEightTimesItsRecordLessOne) {
  JOB job;
  job.MOTION.FIRST.FILE_WORDS = {1, 2, 3, 4, 0x3F800000};  // word 8 of the first record holds 1.0F
  ASSERT_FALSE(OPEN(job));
  float value = -1.0F;
  bool error = true;
  db.READIN(1, 8, value, error);
  EXPECT_EQ(std::pair(value, error), std::pair(1.0F, false));
  db.READIN(0, 9, value, error);  // the motion file stays selected
  EXPECT_EQ(std::pair(std::bit_cast<int32_t>(value), error), std::pair(job.NUM_BLOCK_ADDRESSES, false));

  for (const int64_t word : {int64_t{0}, int64_t{-1}, int64_t{-7}, int64_t{-8}, std::numeric_limits<int64_t>::max()}) {
    value = 7.0F;
    db.READIN(1, word, value, error);
    EXPECT_EQ(std::pair(value, error), std::pair(7.0F, true)) << word;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read record from database.");
  }
}

// Before V841 the start record and a file's offset are summed in 32 bits: the
// first frame wraps round to end at record 5, whose first word (block 4) is
// the stored start time; in 64 bits it lies far behind the file, all zeros.
TEST(StartRecords, SumIn32BitsBeforeV841) {
  for (const FORMAT_VERSION* format : {&V831, &V841}) {
    testing::SCRATCH_DIR dir;
    JOB job(*format);
    job.FORCE.PRESENT = false;
    job.RUN.RESULT_START_RECORD = 2'147'483'647;
    job.RUN.MOTION_START_OFFSET = 7;
    job.RUN.MOTION_STEP_RECORDS = 2'147'483'647;
    job.RUN.START_TIME = 12.5F;
    ASSERT_EQ(job.BLOCK_RECORD(4), 4);
    job.WRITE(dir.FILE("job"));
    TIDE3_DATABASE_FILES& db = *TIDE3_DATABASE_MODULE(format->DATABASE_VERSION);
    bool failed = true;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    EXPECT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
    EXPECT_EQ(db.TABLES.TIME_LIST.DATA(), std::vector<float>{format == &V831 ? 12.5F : 0.0F}) << format->NAME;
    db.CLOSE_TIDE3_DATABASE_FILES();
  }
}

}  // namespace
}  // namespace tmrdar::header
