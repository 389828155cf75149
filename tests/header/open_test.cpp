// Opening a job with one format's reader: the files, the first record, the
// block directory and the dimensions handed on.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "frame/base/header_data.h"
#include "frame/base/io_units.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

using builder::FILE_KIND;
using builder::JOB;
using testing::SCRATCH_DIR;

class ReaderOpen : public ::testing::Test {
 protected:
  void TearDown() override {
    for (const FORMAT_VERSION* version : FORMAT_VERSIONS) {
      TIDE3_DATABASE_MODULE(version->DATABASE_VERSION)->CLOSE_TIDE3_DATABASE_FILES();
    }
  }

  // Opens <dir>/job with the given reader; returns the failure flag.
  bool OPEN(TIDE3_DATABASE_FILES& module) {
    bool failed = false;
    module.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    return failed;
  }

  std::string STEM() const { return dir.FILE("job"); }

  SCRATCH_DIR dir;
};

TEST_F(ReaderOpen, DirectoryCopyStopsAtTheCountAndAtTheLastRecord) {
  // A count of 50 leaves words in the last directory record that are no entries.
  JOB job;
  job.NUM_BLOCK_ADDRESSES = 50;
  builder::FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
  image.PUT_INT(8, 3, 12345);  // entry 51 would stand here
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  EXPECT_FALSE(OPEN(v861));
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ADDRESSES.size(), 50U);
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ENTRY(50), job.DIRECTORY().ENTRY(50) - 1);

  // A last directory record of 5 reads entries 1 to 24; the rest stay -1.
  image = JOB().IMAGE(FILE_KIND::MOTION);
  image.PUT_INT(1, 2, 5);
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  // The stinger block is read whatever the model holds, and its entry is gone.
  EXPECT_TRUE(OPEN(v861));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to read stinger plane data from database header");
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ENTRY(24), JOB().DIRECTORY().ENTRY(24) - 1);
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ENTRY(25), -1);
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ENTRY(52), -1);

  // A last directory record of 2 reads no directory at all, so the first
  // block has an address before the file and cannot be read.
  image.PUT_INT(1, 2, 2);
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  EXPECT_TRUE(OPEN(v861));
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ADDRESSES, std::vector<int32_t>(52, -1));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read from database header.");
}

TEST_F(ReaderOpen, ATruncatedDirectoryRepeatsTheLastRecordItCouldRead) {
  builder::FILE_IMAGE image = JOB().IMAGE(FILE_KIND::MOTION);
  image.TRUNCATE(7 * 32);  // directory records 3 to 7 of 3 to 9 remain
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  OPEN(v861);  // the blocks behind the directory are gone; only the directory counts here
  const auto& entries = *v861.BLOCK_ADDRESSES;
  // Records 8 and 9 find nothing, so the entries of record 7 are copied again.
  for (int32_t k = 41; k <= 52; ++k) EXPECT_EQ(entries.ENTRY(k), entries.ENTRY(33 + (k - 41) % 8)) << k;
  EXPECT_EQ(entries.ENTRY(33), JOB().DIRECTORY().ENTRY(33) - 1);
}

TEST_F(ReaderOpen, AGarbageCountFailsBeforeAnyAllocation) {
  builder::FILE_IMAGE image = JOB().IMAGE(FILE_KIND::MOTION);
  image.PUT_INT(1, 1, 2'000'000'000);
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  ERROR_HANDLING::ERROR3(false, "", "");
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  EXPECT_TRUE(OPEN(v861));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read from database header.");
  EXPECT_EQ(v861.NUM_BLOCK_ADDRESSES, 2'000'000'000);
  EXPECT_TRUE(v861.BLOCK_ADDRESSES == nullptr || v861.BLOCK_ADDRESSES->ADDRESSES.empty());

  // A file of the first record alone: the size record finds nothing, so the
  // first record's words stand for the count (13 entries) and the last
  // directory record (word 2), which a one-record file cannot hold.
  JOB tiny;
  tiny.MOTION.FIRST.WORD_2 = 9;
  image = tiny.IMAGE(FILE_KIND::MOTION);
  image.TRUNCATE(32);
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  EXPECT_TRUE(OPEN(v861));
  EXPECT_EQ(v861.NUM_BLOCK_ADDRESSES, 13);
  EXPECT_EQ(v861.LAST_DIRECTORY_RECORD, 9);
}

TEST_F(ReaderOpen, ASecondOpenResetsTheHeaderAndReplacesTheDirectory) {
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  JOB job;
  job.WRITE(STEM());
  EXPECT_FALSE(OPEN(v861));
  v861.NUM_ELEMENTS = 12;
  v861.HDR_14_5 = 1;

  job.NUM_BLOCK_ADDRESSES = 60;
  job.WRITE(STEM());
  EXPECT_FALSE(OPEN(v861));
  EXPECT_EQ(v861.NUM_ELEMENTS, 0);
  EXPECT_EQ(v861.HDR_14_5, 4);
  EXPECT_EQ(v861.BLOCK_ADDRESSES->NUM_BLOCKS, 60);
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ENTRY(2), job.DIRECTORY().ENTRY(2) - 1);
}

TEST_F(ReaderOpen, EachVersionKeepsItsOwnState) {
  JOB job;
  job.WRITE(STEM());
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  EXPECT_FALSE(OPEN(v861));
  const std::vector<int32_t> directory = v861.BLOCK_ADDRESSES->ADDRESSES;

  JOB older(V841);
  older.MOTION.FIRST.ANALYSIS_DETAIL_2 = 5;
  older.WRITE(dir.FILE("older"));
  bool failed = false;
  TIDE3_DATABASE_FILES& v841 = V841_TIDE3_DATABASE_FILES();
  v841.OPEN_TIDE3_DATABASE_FILES("older", dir.PATH().string() + "/", failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(v841.MOTION_DB_VERSION, 11);
  EXPECT_EQ(v841.ANALYSIS_DETAIL_2, 5);
  ASSERT_NE(v841.BLOCK_ADDRESSES, nullptr) << "the table computed from the counts";
  EXPECT_EQ(v841.BLOCK_ADDRESSES->NUM_BLOCKS, 48);
  EXPECT_EQ(v841.NUM_BLOCK_ADDRESSES, 0) << "this format has no directory in its files";
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ADDRESSES, directory);
  EXPECT_EQ(v861.ANALYSIS_DETAIL_2, 0);
  EXPECT_TRUE(v861.MOTION_FILE.IS_OPEN());
}

TEST_F(ReaderOpen, FailuresToOpenAreReportedWithTheFormatsMessage) {
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  EXPECT_TRUE(OPEN(v861));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: No database files exist for opening.");

  // A directory where the motion file should be cannot be opened.
  std::filesystem::create_directory(STEM() + ".dbm");
  EXPECT_TRUE(OPEN(v861));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to open the specified motion database file:");
  EXPECT_TRUE(OPEN(V821_TIDE3_DATABASE_FILES()));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to open the specified motion database file: " + STEM() + ".dbm");

  std::filesystem::remove(STEM() + ".dbm");
  std::filesystem::create_directory(STEM() + ".dbf");
  EXPECT_TRUE(OPEN(V811_TIDE3_DATABASE_FILES()));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to open the specified force database file: " + STEM() + ".dbf");
}

TEST_F(ReaderOpen, TheOldestFormatsReadThroughTheFrameUnits) {
  JOB job(V811);
  job.MOTION.PRESENT = false;
  job.FORCE.FIRST = {3, 0, 21, {1, 2, 3, 4, 5}};
  job.WRITE(STEM());
  TIDE3_DATABASE_FILES& v811 = V811_TIDE3_DATABASE_FILES();
  EXPECT_FALSE(OPEN(v811));
  EXPECT_TRUE(IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT).IS_OPEN());
  EXPECT_FALSE(v811.FORCE_FILE.IS_OPEN());
  EXPECT_EQ(v811.FORCE_DB_VERSION, 3);
  EXPECT_EQ(v811.ANALYSIS_DETAIL_2, 21);
  EXPECT_EQ(v811.FILE_WORDS, (std::array<int32_t, 5>{1, 2, 3, 4, 5}));
  v811.CLOSE_TIDE3_DATABASE_FILES();
  EXPECT_FALSE(IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT).IS_OPEN());
}

TEST_F(ReaderOpen, DimensionsNeedRoomForFourteen) {
  JOB job;
  job.MOTION.FIRST.ANALYSIS_DETAIL_2 = 8;
  job.WRITE(STEM());
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  EXPECT_FALSE(OPEN(v861));
  v861.NUM_TIME_STEPS = 100;
  v861.NUM_NONLINEAR_E_TABLES = 3;
  v861.NUM_CLASH_PAIRS = 2;
  v861.ANALYSIS_TITLE.ASSIGN("Riser  ");
  std::vector<int32_t> dims(13, -1);
  int32_t required = 0;
  bool failed = false;
  v861.UPDATE_DIMENSIONS(dims, required, failed);
  EXPECT_TRUE(failed);
  EXPECT_EQ(required, 14);
  EXPECT_EQ(dims, std::vector<int32_t>(13, -1));
  dims.assign(15, -1);
  v861.UPDATE_DIMENSIONS(dims, required, failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(dims, (std::vector<int32_t>{100, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 3, -1}));
  const HEADER_DATA::STATE& data = HEADER_DATA::DATA();
  EXPECT_EQ(std::tuple(data.ANALYSIS_DETAIL_2, data.ANALYSIS_TITLE_LENGTH, data.ANALYSIS_TITLE.TRIMMED()),
            std::tuple(8, 5, std::string_view("Riser")));
}

}  // namespace
}  // namespace tmrdar::header
