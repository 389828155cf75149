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
#include "header/format_reader.h"
#include "support/scratch_dir.h"

namespace tmrdar::results {

class WrittenJob : public ::testing::Test {
 protected:
  explicit WrittenJob(const header::FormatVersion& format = header::v861)
      : job(format), db(*header::reader_for_version(format.database_version)) {}
  void TearDown() override { db.close_database_files(); }

  // Writes the job's files, and no others, and opens them.
  void open() {
    db.close_database_files();
    for (const char* name : {"job.dbm", "job.dbf"}) std::filesystem::remove(dir.file(name));
    job.write(dir.file("job"));
    bool failed = true;
    db.open_database_files("job", dir.path().string() + "/", failed);
    ASSERT_FALSE(failed) << error_handling::last_message();
  }
  // The value `shift` words on from an entry's word, into the next frame
  // past the end of its own.
  float at(builder::SectionKind section, int32_t step, int64_t entry, int32_t component, int64_t shift = 0) const {
    const builder::FrameLayout layout = job.frame_sections(builder::file_of(section));
    int64_t offset = builder::word_offset(layout, {section, step, entry, component}) + shift;
    for (; offset > builder::frame_words(layout); offset -= builder::frame_words(layout)) ++step;
    return job.value(builder::word_at(layout, step, offset));
  }

  testing::ScratchDir dir;
  builder::Job job;
  header::FormatReader& db;
};

// A fixture run once for every format.
template <typename Fixture>
class OfEachFormat : public Fixture, public ::testing::WithParamInterface<const header::FormatVersion*> {
 protected:
  OfEachFormat() : Fixture(*::testing::WithParamInterface<const header::FormatVersion*>::GetParam()) {}
  bool up_to_v831() const { return this->GetParam()->database_version <= header::v831.database_version; }
};

#define TMRDAR_FOR_EVERY_FORMAT(suite)                                            \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(header::format_versions), \
                           [](const auto& info) { return std::string(info.param->name); })

}  // namespace tmrdar::results
