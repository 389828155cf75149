// The time of every step, read at open from the step record of each frame,
// and the word reads beneath it.
#include <bit>
#include <limits>
#include <string>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::Job;

class StepTimes : public HeaderTest {
 protected:
  bool open(const Job& job) { return open_written(job); }
  std::vector<float> times() const { return as_vector(db.tables.time_list.data()); }
};

TEST_F(StepTimes, TheTimeListReplacesTheRunSpan) {
  Job job;
  job.run.num_time_steps = 4;
  job.run.start_time = -5.0F;
  job.run.hdr_4_2 = 99.0F;
  job.step_times = {0.25F, 0.5F, 0.75F, 1.0F};
  ASSERT_FALSE(open(job)) << error_handling::last_message();
  EXPECT_EQ(times(), job.step_times);
  EXPECT_EQ(db.start_time, 0.25F);
  EXPECT_EQ(db.end_time, 1.0F);
  EXPECT_EQ(db.hdr_4_2, 99.0F) << "the stored end time stays";
}

TEST_F(StepTimes, AWordIsPlaceWordMinusEightTimesItsRecordLessOne) {
  Job job;
  job.motion.first.file_words = {1, 2, 3, 4, 0x3F800000};  // word 8 of the first record holds 1.0F
  ASSERT_FALSE(open(job));
  float value = -1.0F;
  bool error = true;
  db.readin(1, 8, value, error);
  EXPECT_EQ(std::pair(value, error), std::pair(1.0F, false));
  db.readin(0, 9, value, error);  // the motion file stays selected
  EXPECT_EQ(std::pair(std::bit_cast<int32_t>(value), error), std::pair(job.num_block_addresses, false));

  for (const int64_t word : {int64_t{0}, int64_t{-1}, int64_t{-7}, int64_t{-8}, std::numeric_limits<int64_t>::max()}) {
    value = 7.0F;
    db.readin(1, word, value, error);
    EXPECT_EQ(std::pair(value, error), std::pair(7.0F, true)) << word;
    EXPECT_EQ(error_handling::last_message(), "Error: Database Postprocessing: Unable to read record from database.");
  }
}

// Before V841 the start record and a file's offset are summed in 32 bits: the
// first frame wraps round to end at record 5, whose first word (block 4) is
// the stored start time; in 64 bits it lies far behind the file, all zeros.
TEST(StartRecords, SumIn32BitsBeforeV841) {
  for (const FormatVersion* format : {&v831, &v841}) {
    testing::ScratchDir dir;
    Job job(*format);
    job.force.present = false;
    job.run.result_start_record = 2'147'483'647;
    job.run.motion_start_offset = 7;
    job.run.motion_step_records = 2'147'483'647;
    job.run.start_time = 12.5F;
    ASSERT_EQ(job.block_record(4), 4);
    job.write(dir.file("job"));
    FormatReader& db = *reader_for_version(format->database_version);
    bool failed = true;
    db.open_database_files("job", dir.path().string() + "/", failed);
    EXPECT_FALSE(failed) << error_handling::last_message();
    EXPECT_EQ(as_vector(db.tables.time_list.data()), std::vector<float>{format == &v831 ? 12.5F : 0.0F}) << format->name;
    db.close_database_files();
  }
}

}  // namespace
}  // namespace tmrdar::header
