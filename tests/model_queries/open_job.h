// A job written by the builder and opened through the exports, as a host
// opens it, for the tests of the model queries.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "builder/job.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::model_queries {

class OpenJob : public ::testing::Test {
 protected:
  void SetUp() override { XIT(); }
  void TearDown() override { XIT(); }

  // Writes the job and opens it; true when it opened.
  bool OPEN(const builder::JOB& job, bool write = true) {
    const std::string stem = dir.FILE("job");
    if (write) job.WRITE(stem);
    std::array<int32_t, 5> words{};
    std::array<int32_t, 14> dims{};
    const int32_t n = 14;
    return GetDatabaseInfo(&M, &F, words.data(), words.data(), &n, dims.data(), stem.data(),
                           static_cast<int64_t>(stem.size())) == 0 && M == 13;
  }
  // The reader that the codes select, for tests that reach into its tables.
  static header::TIDE3_DATABASE_FILES& DB() { return header::V861_TIDE3_DATABASE_FILES(); }

  int32_t M = 0;
  int32_t F = 0;
  testing::SCRATCH_DIR dir;
};

// Codes that select no format: two different known codes.
inline constexpr int32_t BAD_M = 13;
inline constexpr int32_t BAD_F = 11;

}  // namespace tmrdar::model_queries
