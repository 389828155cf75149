// How a history below the exports fills its steps and stops. The words that
// each output type reads are checked by the request sweep through the exports.
#include <vector>

#include "results/requests.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

constexpr int32_t steps = 3;

TEST_F(WrittenJob, HistoriesFillTheirStepsAndStopAtAFailure) {
  job.run.num_time_steps = steps;
  job.model.nodes = {{.file_number = 1, .user_number = 10}, {.file_number = 2, .user_number = 30}};
  job.model.elements = {{.file_number = 1, .user_number = 100, .nodes = {1, 2}}};
  job.run.output_flags = {};
  job.run.output_flags[0] = job.run.output_flags[4] = 1;
  open();
  std::vector<float> values(steps, -1.0F);
  int32_t status = 0;
  getrequestedhistory(db, {.output_type = 6, .parameter = 1, .node = 30}, values, status);
  EXPECT_EQ(std::pair(status, values), std::pair(2048, std::vector<float>(steps, 0.0F)));

  // Without the force file an element force fails at the first step.
  job.force.present = false;
  open();
  values.assign(steps, -1.0F);
  status = 0;
  getrequestedhistory(db, {.output_type = 17, .parameter = 1, .element = 100, .location = 1}, values, status);
  EXPECT_EQ(std::pair(status, values), std::pair(16384, std::vector<float>(steps, 0.0F)));

  std::vector<float> none;
  status = 0;
  getrequestedhistory(db, {.output_type = 5, .parameter = 1, .node = 10}, none, status);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tmrdar::results
