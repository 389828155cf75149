// How a history below the exports fills its steps and stops. The words that
// each output type reads are checked by the request sweep through the exports.
#include <vector>

#include "results/requests.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

constexpr int32_t STEPS = 3;

TEST_F(WRITTEN_JOB, HistoriesFillTheirStepsAndStopAtAFailure) {
  job.RUN.NUM_TIME_STEPS = STEPS;
  job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 10}, {.FILE_NUMBER = 2, .USER_NUMBER = 30}};
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 100, .NODES = {1, 2}}};
  job.RUN.OUTPUT_FLAGS = {};
  job.RUN.OUTPUT_FLAGS[0] = job.RUN.OUTPUT_FLAGS[4] = 1;
  OPEN();
  std::vector<float> values(STEPS, -1.0F);
  int32_t status = 0;
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 6, .PARAMETER = 1, .NODE = 30}, values, status);
  EXPECT_EQ(std::pair(status, values), std::pair(2048, std::vector<float>(STEPS, 0.0F)));

  // Without the force file an element force fails at the first step.
  job.FORCE.PRESENT = false;
  OPEN();
  values.assign(STEPS, -1.0F);
  status = 0;
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 17, .PARAMETER = 1, .ELEMENT = 100, .LOCATION = 1}, values, status);
  EXPECT_EQ(std::pair(status, values), std::pair(16384, std::vector<float>(STEPS, 0.0F)));

  std::vector<float> none;
  status = 0;
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 5, .PARAMETER = 1, .NODE = 10}, none, status);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tmrdar::results
