// The fixture of the reader's block tests: a scratch folder, one format's
// reader (V861 by default), and the open of a job with unreadable blocks.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/format_reader.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {

// A table's entries, to compare whole.
template <typename T>
std::vector<T> as_vector(std::span<const T> entries) {
  return {entries.begin(), entries.end()};
}

class HeaderTest : public ::testing::Test {
 protected:
  explicit HeaderTest(const FormatVersion& format = v861)
      : format(format), db(*reader_for_version(format.database_version)) {}

  void TearDown() override { db.close_database_files(); }

  // Writes the job's motion file with the directory entries `dead` set to
  // `entry` (0: before the file) and opens it; true when the open failed.
  bool open(const builder::Job& job, std::initializer_list<int32_t> dead, int32_t entry = 0) {
    builder::FileImage image = job.image(builder::FileKind::motion);
    for (const int32_t k : dead) image.put_int(2 + (k - 1) / 8, (k - 1) % 8 + 1, entry);
    EXPECT_TRUE(image.write(dir.file("job.dbm")));
    return reopen();
  }
  bool open(const builder::Job& job, int32_t dead = 0) {
    return dead > 0 ? open(job, {dead}) : open(job, std::initializer_list<int32_t>{});
  }
  // Writes both files of the job and opens them.
  bool open_written(const builder::Job& job) {
    job.write(dir.file("job"));
    return reopen();
  }
  // Opens what the folder holds, with the last message cleared first.
  bool reopen() {
    error_handling::error3(false, "", "");
    bool failed = false;
    db.open_database_files("job", dir.path().string() + "/", failed);
    return failed;
  }

  testing::ScratchDir dir;
  const FormatVersion& format;
  FormatReader& db;
};

// The same fixture once for each format: `job` is written in the format's
// layout, and `db` is the format's reader.
class FormatTest : public HeaderTest, public ::testing::WithParamInterface<const FormatVersion*> {
 protected:
  FormatTest() : HeaderTest(*GetParam()) {}
  bool is(const FormatVersion& f) const { return &format == &f; }
};

inline std::string format_name(const ::testing::TestParamInfo<const FormatVersion*>& info) {
  return std::string(info.param->name);
}
#define TMRDAR_FOR_EVERY_FORMAT(suite) \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(format_versions), format_name)

}  // namespace tmrdar::header
