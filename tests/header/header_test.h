// The fixture of the reader's block tests: a scratch folder, one format's
// reader (V861 by default), and the open of a job with unreadable blocks.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {

class HEADER_TEST : public ::testing::Test {
 protected:
  explicit HEADER_TEST(const FORMAT_VERSION& format = V861)
      : format(format), db(*TIDE3_DATABASE_MODULE(format.DATABASE_VERSION)) {}

  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  // Writes the job's motion file with the directory entries `dead` set to
  // `entry` (0: before the file) and opens it; true when the open failed.
  bool OPEN(const builder::JOB& job, std::initializer_list<int32_t> dead, int32_t entry = 0) {
    builder::FILE_IMAGE image = job.IMAGE(builder::FILE_KIND::MOTION);
    for (const int32_t k : dead) image.PUT_INT(2 + (k - 1) / 8, (k - 1) % 8 + 1, entry);
    EXPECT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    return REOPEN();
  }
  bool OPEN(const builder::JOB& job, int32_t dead = 0) {
    return dead > 0 ? OPEN(job, {dead}) : OPEN(job, std::initializer_list<int32_t>{});
  }
  // Writes both files of the job and opens them.
  bool OPEN_WRITTEN(const builder::JOB& job) {
    job.WRITE(dir.FILE("job"));
    return REOPEN();
  }
  // Opens what the folder holds, with the last message cleared first.
  bool REOPEN() {
    ERROR_HANDLING::ERROR3(false, "", "");
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    return failed;
  }

  testing::SCRATCH_DIR dir;
  const FORMAT_VERSION& format;
  TIDE3_DATABASE_FILES& db;
};

// The same fixture once for each format: `job` is written in the format's
// layout, and `db` is the format's reader.
class FORMAT_TEST : public HEADER_TEST, public ::testing::WithParamInterface<const FORMAT_VERSION*> {
 protected:
  FORMAT_TEST() : HEADER_TEST(*GetParam()) {}
  bool IS(const FORMAT_VERSION& f) const { return &format == &f; }
};

inline std::string FORMAT_NAME(const ::testing::TestParamInfo<const FORMAT_VERSION*>& info) {
  return std::string(info.param->NAME);
}
#define TMRDAR_FOR_EVERY_FORMAT(suite) \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(FORMAT_VERSIONS), FORMAT_NAME)

}  // namespace tmrdar::header
