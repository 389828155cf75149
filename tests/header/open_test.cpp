// Opening a job with one format's reader: the files, the first record, the
// block directory and the dimensions handed on.
#include <gtest/gtest.h>

#include <functional>
#include <optional>
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

// The directory is copied as far as its count, its last record and the file
// go; a record the file cannot give repeats the last one read, and a count
// no file could back fails before anything is made.
TEST_F(ReaderOpen, TheDirectoryIsCopiedAsFarAsItsCountAndTheFileGo) {
  JOB plain, fifty, tiny;
  fifty.NUM_BLOCK_ADDRESSES = 50;
  tiny.MOTION.FIRST.WORD_2 = 9;
  const auto entries = [](const JOB& job, int32_t from, int32_t to) {
    std::vector<int32_t> read;
    for (int32_t k = from; k <= to; ++k) read.push_back(job.DIRECTORY().ENTRY(k) - 1);
    return read;
  };
  const auto join = [](std::vector<int32_t> a, const std::vector<int32_t>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
  };
  const std::string prefix = "Error: Database Postprocessing: Unable to read ";
  const std::string header = prefix + "from database header.";
  const std::string stinger = prefix + "stinger plane data from database header";
  const std::string refused = "Error: Database Postprocessing: Unable to allocate memory for database header data.";
  struct ROW {
    const JOB* job;
    std::function<void(builder::FILE_IMAGE&)> damage;
    std::string message;  // empty when the open succeeds
    int32_t count, last_record;
    std::optional<std::vector<int32_t>> addresses;
  };
  const std::vector<ROW> rows{
      {&fifty, [](auto& image) { image.PUT_INT(8, 3, 12345); }, "", 50, 9, entries(fifty, 1, 50)},
      {&plain, [](auto& image) { image.PUT_INT(1, 2, 5); }, stinger, 52, 5,
       join(entries(plain, 1, 24), std::vector(28, -1))},
      {&plain, [](auto& image) { image.PUT_INT(1, 2, 2); }, header, 52, 2, std::vector(52, -1)},
      {&plain, [](auto& image) { image.TRUNCATE(7 * 32); }, refused, 52, 9,
       join(join(entries(plain, 1, 40), entries(plain, 33, 40)), entries(plain, 33, 36))},
      {&plain, [](auto& image) { image.PUT_INT(1, 1, 2'000'000'000); }, header, 2'000'000'000, 9,
       std::vector<int32_t>{}},
      {&tiny, [](auto& image) { image.TRUNCATE(32); }, header, 13, 9, std::nullopt}};
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  for (const ROW& row : rows) {
    builder::FILE_IMAGE image = row.job->IMAGE(FILE_KIND::MOTION);
    row.damage(image);
    ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
    ERROR_HANDLING::ERROR3(false, "", "");
    SCOPED_TRACE(::testing::Message() << "count " << row.count << ", last record " << row.last_record);
    EXPECT_EQ(OPEN(v861), !row.message.empty());
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), row.message);
    EXPECT_EQ(std::pair(v861.NUM_BLOCK_ADDRESSES, v861.LAST_DIRECTORY_RECORD),
              std::pair(row.count, row.last_record));
    if (row.addresses) {
      EXPECT_EQ(v861.BLOCK_ADDRESSES ? v861.BLOCK_ADDRESSES->ADDRESSES : std::vector<int32_t>{}, *row.addresses);
    }
  }
}

// A second open resets the header and replaces the directory; the reader of
// another format keeps its own state.
TEST_F(ReaderOpen, ASecondOpenStartsAfreshAndEachVersionKeepsItsOwnState) {
  TIDE3_DATABASE_FILES& v861 = V861_TIDE3_DATABASE_FILES();
  JOB job;
  job.WRITE(STEM());
  EXPECT_FALSE(OPEN(v861));
  v861.NUM_ELEMENTS = 12;
  v861.HDR_14_5 = 1;
  job.NUM_BLOCK_ADDRESSES = 60;
  job.WRITE(STEM());
  EXPECT_FALSE(OPEN(v861));
  EXPECT_EQ(std::tuple(v861.NUM_ELEMENTS, v861.HDR_14_5, v861.BLOCK_ADDRESSES->NUM_BLOCKS), std::tuple(0, 4, 60));
  EXPECT_EQ(v861.BLOCK_ADDRESSES->ENTRY(2), job.DIRECTORY().ENTRY(2) - 1);
  const std::vector<int32_t> directory = v861.BLOCK_ADDRESSES->ADDRESSES;

  JOB older(V841);
  older.MOTION.FIRST.ANALYSIS_DETAIL_2 = 5;
  older.WRITE(dir.FILE("older"));
  bool failed = false;
  TIDE3_DATABASE_FILES& v841 = V841_TIDE3_DATABASE_FILES();
  v841.OPEN_TIDE3_DATABASE_FILES("older", dir.PATH().string() + "/", failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::tuple(v841.MOTION_DB_VERSION, v841.ANALYSIS_DETAIL_2, v841.NUM_BLOCK_ADDRESSES), std::tuple(11, 5, 0))
      << "this format has no directory in its files";
  ASSERT_NE(v841.BLOCK_ADDRESSES, nullptr) << "the table computed from the counts";
  EXPECT_EQ(v841.BLOCK_ADDRESSES->NUM_BLOCKS, 48);
  EXPECT_EQ(std::tuple(v861.BLOCK_ADDRESSES->ADDRESSES, v861.ANALYSIS_DETAIL_2, v861.MOTION_FILE.IS_OPEN()),
            std::tuple(directory, 0, true));
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
  EXPECT_EQ(std::pair(IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT).IS_OPEN(), v811.FORCE_FILE.IS_OPEN()),
            std::pair(true, false));
  EXPECT_EQ(std::tuple(v811.FORCE_DB_VERSION, v811.ANALYSIS_DETAIL_2, v811.FILE_WORDS),
            std::tuple(3, 21, std::array<int32_t, 5>{1, 2, 3, 4, 5}));
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
  EXPECT_EQ(std::tuple(failed, required, dims), std::tuple(true, 14, std::vector<int32_t>(13, -1)));
  dims.assign(15, -1);
  v861.UPDATE_DIMENSIONS(dims, required, failed);
  EXPECT_EQ(std::pair(failed, dims),
            std::pair(false, std::vector<int32_t>{100, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 3, -1}));
  const HEADER_DATA::STATE& data = HEADER_DATA::DATA();
  EXPECT_EQ(std::tuple(data.ANALYSIS_DETAIL_2, data.ANALYSIS_TITLE_LENGTH, data.ANALYSIS_TITLE.TRIMMED()),
            std::tuple(8, 5, std::string_view("Riser")));
}

}  // namespace
}  // namespace tmrdar::header
