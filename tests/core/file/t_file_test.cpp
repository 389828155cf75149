#include "core/file/t_file.h"

#include <gtest/gtest.h>

#include "support/scratch_dir.h"

namespace tmrdar::MOD_FILE {
namespace {

TEST(RecordAddresses, CountThirtyTwoBytesFromOne) {
  EXPECT_EQ(RECN4(1), 1);
  EXPECT_EQ(RECN4(2), 33);
  EXPECT_EQ(RECN8(100'000'000), 3'199'999'969LL);
}

}  // namespace
}  // namespace tmrdar::MOD_FILE
