// Single value and history requests below the exports: the statuses of
// arguments that the exports' own checks would refuse first, and how a
// history fills its steps and stops. The words that each output type reads
// are checked by the request sweep through the exports.
#include <vector>

#include "results/requests.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

constexpr int32_t STEPS = 3;

class Requests : public WRITTEN_JOB {
 protected:
  void SetUp() override {
    job.RUN.NUM_TIME_STEPS = STEPS;
    job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 10}, {.FILE_NUMBER = 2, .USER_NUMBER = 20},
                       {.FILE_NUMBER = 3, .USER_NUMBER = 30}};
    job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 100, .NODES = {1, 2}},
                          {.FILE_NUMBER = 2, .USER_NUMBER = 200, .NODES = {2, 3}}};
    job.MODEL.AUX_ELEMENTS = {{.NUMBER = 7}};
    job.MODEL.BOUNDARY_CONDITIONS = {3};  // node of file number 3
    job.RUN.OUTPUT_FLAGS = {};
  }
  void FLAGS(std::initializer_list<int> flags) {
    for (const int f : flags) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
  }

  // The value of one request at a step, and its status.
  std::pair<float, int32_t> SINGLE(REQUEST_ARGUMENTS r, int32_t step = 2) {
    float value = -1.0F;
    int32_t status = 0;
    GETREQUESTEDSINGLEVALUE(db, r, step, value, status);
    return {value, status};
  }
};

TEST_F(Requests, ItemsAndContentsBuildTheStatus) {
  FLAGS({1, 5});
  OPEN();
  struct CASE {
    REQUEST_ARGUMENTS r;
    int32_t status;
  };
  // What the request sweep through the exports cannot ask: numbers that the
  // frame's checks would refuse first, and items that need no number.
  for (const CASE& c : std::vector<CASE>{
           {{.OUTPUT_TYPE = 5, .PARAMETER = 1, .NODE = 20}, 0},
           {{.OUTPUT_TYPE = 5, .PARAMETER = 1, .NODE = 2}, 4096},   // a file number is no user's number
           {{.OUTPUT_TYPE = 6, .PARAMETER = 1, .NODE = 0}, 4096 + 2048},
           {{.OUTPUT_TYPE = 13, .PARAMETER = 1, .NODE = 20}, 4096 + 2048},  // no boundary condition
           {{.OUTPUT_TYPE = 8, .PARAMETER = 1, .NODE = -2}, 0},     // a negative guide passes
           {{.OUTPUT_TYPE = 11, .PARAMETER = 2, .NODE = 0}, 4096 + 2048},
           {{.OUTPUT_TYPE = 17, .PARAMETER = 1, .ELEMENT = 0, .LOCATION = 5}, 8192 + 64},
           {{.OUTPUT_TYPE = 18, .PARAMETER = 1, .ELEMENT = 100, .LOCATION = 0}, 64 + 2048},
           {{.OUTPUT_TYPE = 2, .NODE = -5, .ELEMENT = -5, .LOCATION = 9}, 0},  // one value a step: no item
       }) {
    const auto [value, status] = SINGLE(c.r);
    EXPECT_EQ(status, c.status) << "type " << c.r.OUTPUT_TYPE << " parameter " << c.r.PARAMETER << " node "
                                << c.r.NODE << " element " << c.r.ELEMENT;
    if (status > 0) {
      EXPECT_EQ(value, 0.0F) << "a refused request leaves 0";
    }
  }
}

TEST_F(Requests, HistoriesFillTheirStepsAndStopAtAFailure) {
  FLAGS({1, 5});
  OPEN();
  std::vector<float> values(STEPS, -1.0F);
  int32_t status = 0;
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 1}, values, status);
  EXPECT_EQ(values, db.TABLES.TIME_LIST.DATA()) << "the step times are the times of the open";

  values.assign(STEPS, -1.0F);
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 6, .PARAMETER = 1, .NODE = 30}, values, status);
  EXPECT_EQ(status, 2048);
  EXPECT_EQ(values, std::vector<float>(STEPS, 0.0F));

  // Without the force file an element force fails at the first step.
  std::vector<float> more(STEPS, -1.0F);
  status = 0;
  job.FORCE.PRESENT = false;
  OPEN();
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 17, .PARAMETER = 1, .ELEMENT = 100, .LOCATION = 1}, more, status);
  EXPECT_EQ(status, 16384) << "no force file: the first step fails";
  EXPECT_EQ(more, std::vector<float>(STEPS, 0.0F));

  std::vector<float> none;
  status = 0;
  GETREQUESTEDHISTORY(db, {.OUTPUT_TYPE = 5, .PARAMETER = 1, .NODE = 10}, none, status);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tmrdar::results
