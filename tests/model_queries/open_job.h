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
#include "header/format_reader.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::model_queries {

class OpenJob : public ::testing::TestWithParam<const header::FormatVersion*> {
 protected:
  // A job of the format under test.
  builder::Job new_job() const { return builder::Job(*GetParam()); }

  void SetUp() override { XIT(); }
  void TearDown() override { XIT(); }

  // Writes the job and opens it; true when it opened.
  bool open(const builder::Job& job, bool write = true) {
    const std::string stem = dir.file("job");
    if (write) job.write(stem);
    std::array<int32_t, 5> words{};
    std::array<int32_t, 14> dims{};
    const int32_t n = 14;
    return GetDatabaseInfo(&m, &f, words.data(), words.data(), &n, dims.data(), stem.data(),
                           static_cast<int64_t>(stem.size())) == 0 && m == c;
  }
  // The reader that the codes select, for tests that reach into its tables.
  header::FormatReader& reader() const { return *header::reader_for_version(c); }

  // The format's code.
  const int32_t c = GetParam()->database_version;
  int32_t m = 0;
  int32_t f = 0;
  testing::ScratchDir dir;
};

// Codes that select no format: two different known codes.
inline constexpr int32_t bad_m = 13;
inline constexpr int32_t bad_f = 11;
// A code argument left to the format under test.
inline constexpr int32_t own = -99;

#define TMRDAR_FOR_EVERY_FORMAT(suite)                                                      \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(header::format_versions),           \
                           [](const auto& info) { return std::string(info.param->name); })

}  // namespace tmrdar::model_queries
