// The time of every step, read at open from the step record of each frame,
// and the word reads beneath it.
#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <vector>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

using builder::JOB;
using testing::SCRATCH_DIR;

class StepTimes : public ::testing::Test {
 protected:
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  bool OPEN(const JOB& job) {
    job.WRITE(dir.FILE("job"));
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    return failed;
  }

  std::vector<float> TIMES() const { return db.TABLES.TIME_LIST.DATA(); }

  SCRATCH_DIR dir;
  TIDE3_DATABASE_FILES& db = V861_TIDE3_DATABASE_FILES();
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

// The step record stands ahead of the vessel records, the two-record items
// and the auxiliary element sets, which the frame's end anchors.
TEST_F(StepTimes, TheMotionStepRecordIsFoundFromTheEndOfTheFrame) {
  JOB job;
  job.RUN.NUM_TIME_STEPS = 3;
  job.RUN.NUM_NODES = 5;
  job.RUN.OUTPUT_FLAGS[0] = 1;
  job.RUN.NUM_VESSELS = 2;
  job.RUN.TAIL_PAIR_COUNT_A = 1;
  job.RUN.TAIL_PAIR_COUNT_B = 2;
  job.RUN.NUM_AUX_ELEMENTS = 8;  // two records a set
  job.RUN.AUX_ELEMENT_RESULT_SETS = 3;
  job.STEP_TIMES = {1.5F, 2.5F, 3.5F};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(TIMES(), job.STEP_TIMES);
}

// Without a motion file the time comes from the force file, ahead of the
// damper records at the end of each frame.
TEST_F(StepTimes, AForceFileGivesTheTimeAheadOfItsDampers) {
  JOB job;
  job.MOTION.PRESENT = false;
  job.RUN.NUM_TIME_STEPS = 2;
  job.RUN.NUM_ELEMENTS = 3;
  job.RUN.NUM_DAMPER_ELEMENTS = 2;
  job.RUN.OUTPUT_FLAGS[4] = 1;
  job.STEP_TIMES = {10.0F, 20.0F};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(TIMES(), job.STEP_TIMES);
}

TEST_F(StepTimes, AStepBeforeTheStartOfTheFileFailsTheHeader) {
  JOB job;
  job.RUN.NUM_TIME_STEPS = 2;
  job.RUN.RESULT_START_RECORD = 1;  // block 3 as written, no frames behind the header
  job.RUN.MOTION_STEP_RECORDS = 1;
  job.RUN.NUM_VESSELS = 3;  // the step record of frame 1 would end 3 records before the first
  EXPECT_TRUE(OPEN(job));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read record from database.");
}

TEST_F(StepTimes, AWordIsPlaceWordMinusEightTimesItsRecordLessOne) {
  JOB job;
  job.MOTION.FIRST.FILE_WORDS = {1, 2, 3, 4, 0x3F800000};  // word 8 of the first record holds 1.0F
  ASSERT_FALSE(OPEN(job));
  float value = -1.0F;
  bool error = true;
  db.READIN(1, 8, value, error);
  EXPECT_FALSE(error);
  EXPECT_EQ(value, 1.0F);
  db.READIN(0, 9, value, error);  // the motion file stays selected
  EXPECT_FALSE(error);
  EXPECT_EQ(std::bit_cast<int32_t>(value), job.NUM_BLOCK_ADDRESSES) << "word 1 of record 2";

  for (const int64_t word : {0, -1, -7, -8}) {
    value = 7.0F;
    db.READIN(1, word, value, error);
    EXPECT_TRUE(error) << word;
    EXPECT_EQ(value, 7.0F) << word;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read record from database.");
  }
}

}  // namespace
}  // namespace tmrdar::header
