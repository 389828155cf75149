// The C++ interface in a host that is built as C++17.
#include <gtest/gtest.h>

#include "tmrdar/tmrdar.hpp"

namespace {

static_assert(__cplusplus < 202002L, "this host is meant to be built as C++17");

TEST(CppInterfaceInCxx17, AsksTheSampleJob) {
  tmrdar::job job(TMRDAR_SAMPLE_JOB);
  const std::vector<float> times = job.times();
  ASSERT_EQ(times.size(), static_cast<std::size_t>(job.dimensions().num_time_steps));
  tmrdar::request time;
  EXPECT_EQ(job.value(time, 1), times.front());
  EXPECT_EQ(job.node(1).row, 1);
  try {
    job.node(1000);
    ADD_FAILURE() << "node 1000 was found";
  } catch (const tmrdar::error& failure) {
    EXPECT_STREQ(failure.what(), "node 1000 is not in the database");
  }
}

}  // namespace
