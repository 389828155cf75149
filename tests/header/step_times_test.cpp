// The time of every step, read at open from the step record of each frame,
// and the word reads beneath it.
#include <bit>
#include <filesystem>
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

// The step record is found from the end of the frame: in the motion file
// ahead of the vessel records, the two-record items and the auxiliary element
// sets; without a motion file, in the force file ahead of the damper records.
TEST_F(StepTimes, TheStepRecordIsFoundFromTheEndOfTheFrame) {
  for (const bool motion : {true, false}) {
    JOB job;
    job.MOTION.PRESENT = motion;
    job.RUN.NUM_TIME_STEPS = 3;
    job.RUN.NUM_NODES = 5;
    job.RUN.NUM_ELEMENTS = 3;
    job.RUN.OUTPUT_FLAGS[0] = job.RUN.OUTPUT_FLAGS[4] = 1;
    job.RUN.NUM_VESSELS = 2;
    job.RUN.TAIL_PAIR_COUNT_A = 1;
    job.RUN.TAIL_PAIR_COUNT_B = 2;
    job.RUN.NUM_AUX_ELEMENTS = 8;  // two records a set
    job.RUN.AUX_ELEMENT_RESULT_SETS = 3;
    job.RUN.NUM_DAMPER_ELEMENTS = 2;
    job.STEP_TIMES = {1.5F, 2.5F, 3.5F};
    std::filesystem::remove(dir.FILE("job.dbm"));  // no motion file left from the round before
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    EXPECT_EQ(TIMES(), job.STEP_TIMES) << (motion ? "motion" : "force");
  }
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

  for (const int64_t word : {int64_t{0}, int64_t{-1}, int64_t{-7}, int64_t{-8}, std::numeric_limits<int64_t>::max()}) {
    value = 7.0F;
    db.READIN(1, word, value, error);
    EXPECT_TRUE(error) << word;
    EXPECT_EQ(value, 7.0F) << word;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read record from database.");
  }
}

// Several words come from one record or two, and the records of the last
// read of a file are kept: a read of the same words again does not see the
// file change, a read that needs another record does.
TEST_F(StepTimes, WordRunsKeepTheirRecordsUntilAnotherIsNeeded) {
  JOB job;
  job.FORCE.PRESENT = false;
  builder::FILE_IMAGE image = job.IMAGE(builder::FILE_KIND::MOTION);
  const int64_t r = image.RECORDS();  // 0-based records r and r + 1 are words 8r + 1 to 8r + 16
  for (int w = 1; w <= 8; ++w) {
    image.PUT_REAL(r, w, static_cast<float>(w));
    image.PUT_REAL(r + 1, w, static_cast<float>(10 + w));
  }
  ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
  ASSERT_FALSE(REOPEN());

  std::vector<float> nine(9, -1.0F);
  bool error = true;
  db.READIN_ARRAY(1, 8 * r + 8, nine, error);  // place 8 of the first record and all of the next
  ASSERT_FALSE(error);
  EXPECT_EQ(nine, (std::vector<float>{8, 11, 12, 13, 14, 15, 16, 17, 18}));

  // Another file with other words takes the place of the first under the
  // kept records.
  for (int w = 1; w <= 8; ++w) {
    image.PUT_REAL(r, w, static_cast<float>(100 + w));
    image.PUT_REAL(r + 1, w, static_cast<float>(200 + w));
  }
  ASSERT_TRUE(image.WRITE(dir.FILE("other.dbm")));
  db.MOTION_FILE.CLOSE();
  ASSERT_TRUE(db.MOTION_FILE.OPEN(dir.FILE("other.dbm"), MOD_FILE::MODE_READ));
  std::vector<float> six(6);
  db.READIN_ARRAY(0, 8 * r + 2, six, error);  // the motion file stays selected; one record, the kept first
  EXPECT_EQ(six, (std::vector<float>{2, 3, 4, 5, 6, 7}));
  db.READIN_ARRAY(1, 8 * r + 5, nine, error);  // two records, both kept
  EXPECT_EQ(nine, (std::vector<float>{5, 6, 7, 8, 11, 12, 13, 14, 15}));
  db.READIN_ARRAY(1, 8 * r + 9, six, error);  // another first record: read anew
  EXPECT_EQ(six, (std::vector<float>{201, 202, 203, 204, 205, 206}));

  // A failed read copies nothing.
  six.assign(6, -7.0F);
  db.READIN_ARRAY(1, -3, six, error);
  EXPECT_TRUE(error);
  EXPECT_EQ(six, std::vector<float>(6, -7.0F));
}

// Before V841 the start record and a file's offset are summed in 32 bits:
// 2^31 - 1 and 7 wrap to 6 - 2^31, and with frames of 2^31 - 1 records the
// first frame ends at record 5, whose first word, in block 4 of these files,
// is the stored start time. In 64 bits the same frame lies far behind the
// file, where the record file finds nothing but zeros.
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
