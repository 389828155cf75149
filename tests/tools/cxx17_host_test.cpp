// The C++ interface in a host that is built as C++17.
#include <gtest/gtest.h>

#include "tmrdar/tmrdar.hpp"

namespace {

static_assert(__cplusplus < 202002L, "this host is meant to be built as C++17");

TEST(CppInterfaceInCxx17, AsksTheSampleJob) {
  tmrdar::JOB job(TMRDAR_SAMPLE_JOB);
  const std::vector<float> times = job.TIMES();
  ASSERT_EQ(times.size(), static_cast<std::size_t>(job.DIMENSIONS().NUM_TIME_STEPS));
  tmrdar::REQUEST time;
  EXPECT_EQ(job.VALUE(time, 1), times.front());
  EXPECT_EQ(job.NODE(1).ROW, 1);
  try {
    job.NODE(1000);
    ADD_FAILURE() << "node 1000 was found";
  } catch (const tmrdar::FAILURE& failure) {
    EXPECT_STREQ(failure.what(), "node 1000 is not in the database");
  }
}

}  // namespace
