// A job that the builder writes and a format's reader opens, for the tests
// of the results routines; every frame word holds the builder's own value
// unless the test sets another.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/format_version.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::results {

class WRITTEN_JOB : public ::testing::Test {
 protected:
  explicit WRITTEN_JOB(const header::FORMAT_VERSION& format = header::V861)
      : job(format), db(*header::TIDE3_DATABASE_MODULE(format.DATABASE_VERSION)) {}
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  // Writes the job's files, and no others, and opens them.
  void OPEN() {
    db.CLOSE_TIDE3_DATABASE_FILES();
    for (const char* name : {"job.dbm", "job.dbf"}) std::filesystem::remove(dir.FILE(name));
    job.WRITE(dir.FILE("job"));
    bool failed = true;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    ASSERT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
  }
  // The value `shift` words on from an entry's word, into the next frame
  // past the end of its own.
  float AT(builder::SECTION_KIND section, int32_t step, int64_t entry, int32_t component, int64_t shift = 0) const {
    const builder::FRAME_LAYOUT layout = job.FRAME_SECTIONS(builder::FILE_OF(section));
    int64_t offset = builder::WORD_OFFSET(layout, {section, step, entry, component}) + shift;
    for (; offset > builder::FRAME_WORDS(layout); offset -= builder::FRAME_WORDS(layout)) ++step;
    return job.VALUE(builder::WORD_AT(layout, step, offset));
  }

  testing::SCRATCH_DIR dir;
  builder::JOB job;
  header::TIDE3_DATABASE_FILES& db;
};

// A fixture run once for every format.
template <typename FIXTURE>
class OF_EACH_FORMAT : public FIXTURE, public ::testing::WithParamInterface<const header::FORMAT_VERSION*> {
 protected:
  OF_EACH_FORMAT() : FIXTURE(*::testing::WithParamInterface<const header::FORMAT_VERSION*>::GetParam()) {}
  bool UP_TO_V831() const { return this->GetParam()->DATABASE_VERSION <= header::V831.DATABASE_VERSION; }
};

#define TMRDAR_FOR_EVERY_FORMAT(suite)                                            \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(header::FORMAT_VERSIONS), \
                           [](const auto& info) { return std::string(info.param->NAME); })

}  // namespace tmrdar::results
