// The two request exports as a host calls them: the checks of the frame and
// the result left alone when refused.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "builder/job.h"
#include "support/open_through_exports.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::frame {
namespace {

class RequestExports : public ::testing::Test {
 protected:
  void SetUp() override {
    builder::JOB job;
    job.RUN.NUM_TIME_STEPS = 4;
    job.STEP_TIMES = {0.5F, 1.0F, 1.5F, 2.0F};
    job.RUN.OUTPUT_FLAGS[0] = 1;
    job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 11}, {.FILE_NUMBER = 2, .USER_NUMBER = 12}};
    job.WRITE(dir.FILE("job"));
    ASSERT_EQ(testing::OPEN_THROUGH_EXPORTS(dir.FILE("job"), motion, force), 0);
  }
  void TearDown() override { XIT(); }

  testing::SCRATCH_DIR dir;
  int32_t motion = 0;
  int32_t force = 0;
};

TEST_F(RequestExports, ASingleValueOfAStep) {
  int32_t type = 1, subtype = 1, node = 0, element = 0, position = 0, steps = 4, step = 3;
  float value = -1.0F;
  EXPECT_EQ(GetRequestedSingleValue(&motion, &force, &type, &subtype, &node, &element, &position, &steps, &step,
                                    &value, nullptr, 0),
            0);
  EXPECT_EQ(value, 1.5F);

  // A refused request gives its mask and leaves the result as it was.
  step = 5;
  value = -1.0F;
  EXPECT_EQ(GetRequestedSingleValue(&motion, &force, &type, &subtype, &node, &element, &position, &steps, &step,
                                    &value, nullptr, 0),
            256);
  EXPECT_EQ(value, -1.0F);
  // Codes that select no format refuse every request.
  int32_t other = 11;
  step = 1;
  EXPECT_EQ(GetRequestedSingleValue(&motion, &other, &type, &subtype, &node, &element, &position, &steps, &step,
                                    &value, nullptr, 0),
            3);
}

TEST_F(RequestExports, AHistoryFromTheFirstStep) {
  int32_t type = 1, subtype = 1, node = 0, element = 0, position = 0, steps = 4, count = 3;
  std::vector<float> values(4, -1.0F);
  EXPECT_EQ(GetRequestedHistory(&motion, &force, &type, &subtype, &node, &element, &position, &steps, &count,
                                values.data(), nullptr, 0),
            0);
  EXPECT_EQ(values, (std::vector<float>{0.5F, 1.0F, 1.5F, -1.0F}));
  count = 0;
  EXPECT_EQ(GetRequestedHistory(&motion, &force, &type, &subtype, &node, &element, &position, &steps, &count,
                                nullptr, nullptr, 0),
            0);
  count = 5;
  EXPECT_EQ(GetRequestedHistory(&motion, &force, &type, &subtype, &node, &element, &position, &steps, &count,
                                values.data(), nullptr, 0),
            256);
}

}  // namespace
}  // namespace tmrdar::frame
