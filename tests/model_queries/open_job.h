// A job written by the builder and opened through the exports, as a host
// opens it, for the tests of the model queries. Each test runs once for
// every format: the job is written in the format's layout, and the answers
// are the same in all of them.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "builder/job.h"
#include "header/format_version.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::model_queries {

class OpenJob : public ::testing::TestWithParam<const header::FORMAT_VERSION*> {
 protected:
  // A job of the format under test.
  builder::JOB NEW_JOB() const { return builder::JOB(*GetParam()); }

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
                           static_cast<int64_t>(stem.size())) == 0 && M == C;
  }
  // The reader that the codes select, for tests that reach into its tables.
  header::TIDE3_DATABASE_FILES& DB() const { return *header::TIDE3_DATABASE_MODULE(C); }

  // The format's code.
  const int32_t C = GetParam()->DATABASE_VERSION;
  int32_t M = 0;
  int32_t F = 0;
  testing::SCRATCH_DIR dir;
};

// Codes that select no format: two different known codes.
inline constexpr int32_t BAD_M = 13;
inline constexpr int32_t BAD_F = 11;
// A code argument left to the format under test.
inline constexpr int32_t OWN = -99;

#define TMRDAR_FOR_EVERY_FORMAT(suite)                                                      \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(header::FORMAT_VERSIONS),           \
                           [](const auto& info) { return std::string(info.param->NAME); })

}  // namespace tmrdar::model_queries
