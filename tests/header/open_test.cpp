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
#include "header/format_reader.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

using builder::FileKind;
using builder::Job;
using testing::ScratchDir;

class ReaderOpen : public ::testing::Test {
 protected:
  void TearDown() override {
    for (const FormatVersion* version : format_versions) {
      reader_for_version(version->database_version)->close_database_files();
    }
  }

  // Opens <dir>/job with the given reader; returns the failure flag.
  bool open(FormatReader& module) {
    bool failed = false;
    module.open_database_files("job", dir.path().string() + "/", failed);
    return failed;
  }

  std::string stem() const { return dir.file("job"); }

  ScratchDir dir;
};

// The directory is copied as far as its count, its last record and the file
// go; a record the file cannot give repeats the last one read, and a count
// no file could back fails before anything is made.
TEST_F(ReaderOpen, TheDirectoryIsCopiedAsFarAsItsCountAndTheFileGo) {
  Job plain, fifty, tiny;
  fifty.num_block_addresses = 50;
  tiny.motion.first.word_2 = 9;
  const auto entries = [](const Job& job, int32_t from, int32_t to) {
    std::vector<int32_t> read;
    for (int32_t k = from; k <= to; ++k) read.push_back(job.directory().entry(k) - 1);
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
  struct Row {
    const Job* job;
    std::function<void(builder::FileImage&)> damage;
    std::string message;  // empty when the open succeeds
    int32_t count, last_record;
    std::optional<std::vector<int32_t>> addresses;
  };
  const std::vector<Row> rows{
      {&fifty, [](auto& image) { image.put_int(8, 3, 12345); }, "", 50, 9, entries(fifty, 1, 50)},
      {&plain, [](auto& image) { image.put_int(1, 2, 5); }, stinger, 52, 5,
       join(entries(plain, 1, 24), std::vector(28, -1))},
      {&plain, [](auto& image) { image.put_int(1, 2, 2); }, header, 52, 2, std::vector(52, -1)},
      {&plain, [](auto& image) { image.truncate(7 * 32); }, refused, 52, 9,
       join(join(entries(plain, 1, 40), entries(plain, 33, 40)), entries(plain, 33, 36))},
      {&plain, [](auto& image) { image.put_int(1, 1, 2'000'000'000); }, header, 2'000'000'000, 9,
       std::vector<int32_t>{}},
      {&tiny, [](auto& image) { image.truncate(32); }, header, 13, 9, std::nullopt}};
  FormatReader& v861 = v861_database_files();
  for (const Row& row : rows) {
    builder::FileImage image = row.job->image(FileKind::motion);
    row.damage(image);
    ASSERT_TRUE(image.write(stem() + ".dbm"));
    error_handling::error3(false, "", "");
    SCOPED_TRACE(::testing::Message() << "count " << row.count << ", last record " << row.last_record);
    EXPECT_EQ(open(v861), !row.message.empty());
    EXPECT_EQ(error_handling::last_message(), row.message);
    EXPECT_EQ(std::pair(v861.num_block_addresses, v861.last_directory_record),
              std::pair(row.count, row.last_record));
    if (row.addresses) {
      EXPECT_EQ(v861.block_addresses ? v861.block_addresses->addresses : std::vector<int32_t>{}, *row.addresses);
    }
  }
}

// A second open resets the header and replaces the directory; the reader of
// another format keeps its own state.
TEST_F(ReaderOpen, ASecondOpenStartsAfreshAndEachVersionKeepsItsOwnState) {
  FormatReader& v861 = v861_database_files();
  Job job;
  job.write(stem());
  EXPECT_FALSE(open(v861));
  v861.num_elements = 12;
  v861.hdr_14_5 = 1;
  job.num_block_addresses = 60;
  job.write(stem());
  EXPECT_FALSE(open(v861));
  EXPECT_EQ(std::tuple(v861.num_elements, v861.hdr_14_5, v861.block_addresses->num_blocks), std::tuple(0, 4, 60));
  EXPECT_EQ(v861.block_addresses->entry(2), job.directory().entry(2) - 1);
  const std::vector<int32_t> directory = v861.block_addresses->addresses;

  Job older(v841);
  older.motion.first.analysis_detail_2 = 5;
  older.write(dir.file("older"));
  bool failed = false;
  FormatReader& v841 = v841_database_files();
  v841.open_database_files("older", dir.path().string() + "/", failed);
  EXPECT_FALSE(failed);
  EXPECT_EQ(std::tuple(v841.motion_db_version, v841.analysis_detail_2, v841.num_block_addresses), std::tuple(11, 5, 0))
      << "this format has no directory in its files";
  ASSERT_NE(v841.block_addresses, nullptr) << "the table computed from the counts";
  EXPECT_EQ(v841.block_addresses->num_blocks, 48);
  EXPECT_EQ(std::tuple(v861.block_addresses->addresses, v861.analysis_detail_2, v861.motion_file.is_open()),
            std::tuple(directory, 0, true));
}

TEST_F(ReaderOpen, FailuresToOpenAreReportedWithTheFormatsMessage) {
  FormatReader& v861 = v861_database_files();
  EXPECT_TRUE(open(v861));
  EXPECT_EQ(error_handling::last_message(), "Error: Database Postprocessing: No database files exist for opening.");

  // A directory where the motion file should be cannot be opened.
  std::filesystem::create_directory(stem() + ".dbm");
  EXPECT_TRUE(open(v861));
  EXPECT_EQ(error_handling::last_message(),
            "Error: Database Postprocessing: Unable to open the specified motion database file:");
  EXPECT_TRUE(open(v821_database_files()));
  EXPECT_EQ(error_handling::last_message(),
            "Error: Database Postprocessing: Unable to open the specified motion database file: " + stem() + ".dbm");

  std::filesystem::remove(stem() + ".dbm");
  std::filesystem::create_directory(stem() + ".dbf");
  EXPECT_TRUE(open(v811_database_files()));
  EXPECT_EQ(error_handling::last_message(),
            "Error: Database Postprocessing: Unable to open the specified force database file: " + stem() + ".dbf");
}

TEST_F(ReaderOpen, TheOldestFormatsReadThroughTheFrameUnits) {
  Job job(v811);
  job.motion.present = false;
  job.force.first = {3, 0, 21, {1, 2, 3, 4, 5}};
  job.write(stem());
  FormatReader& v811 = v811_database_files();
  EXPECT_FALSE(open(v811));
  EXPECT_EQ(std::pair(io_units::unit(io_units::force_unit).is_open(), v811.force_file.is_open()),
            std::pair(true, false));
  EXPECT_EQ(std::tuple(v811.force_db_version, v811.analysis_detail_2, v811.file_words),
            std::tuple(3, 21, std::array<int32_t, 5>{1, 2, 3, 4, 5}));
  v811.close_database_files();
  EXPECT_FALSE(io_units::unit(io_units::force_unit).is_open());
}

TEST_F(ReaderOpen, DimensionsNeedRoomForFourteen) {
  Job job;
  job.motion.first.analysis_detail_2 = 8;
  job.write(stem());
  FormatReader& v861 = v861_database_files();
  EXPECT_FALSE(open(v861));
  v861.num_time_steps = 100;
  v861.num_nonlinear_e_tables = 3;
  v861.num_clash_pairs = 2;
  v861.analysis_title.assign("Riser  ");
  std::vector<int32_t> dims(13, -1);
  int32_t required = 0;
  bool failed = false;
  v861.update_dimensions(dims, required, failed);
  EXPECT_EQ(std::tuple(failed, required, dims), std::tuple(true, 14, std::vector<int32_t>(13, -1)));
  dims.assign(15, -1);
  v861.update_dimensions(dims, required, failed);
  EXPECT_EQ(std::pair(failed, dims),
            std::pair(false, std::vector<int32_t>{100, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 3, -1}));
  const header_data::State& data = header_data::data();
  EXPECT_EQ(std::tuple(data.analysis_detail_2, data.analysis_title_length, data.analysis_title.trimmed()),
            std::tuple(8, 5, std::string_view("Riser")));
}

}  // namespace
}  // namespace tmrdar::header
