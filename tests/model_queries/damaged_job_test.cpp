// Jobs damaged word by word and cut short: every query and request answers
// one of its codes, whether the job opened or not, and no routine reads
// outside a table (a table throws there; the sanitizer builds run this too).
#include <algorithm>

#include "builder/file_image.h"
#include "model_queries/model_queries.h"
#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

// Every routine behind the exports, on one number taken as a number and as a
// row.
void ASK_ROUTINES(const header::TIDE3_DATABASE_FILES& db, int32_t number) {
  std::array<int32_t, 20> ints{};
  std::array<float, 20> reals{};
  int32_t status = 0;
  for (int32_t kind = 0; kind <= 1; ++kind) {
    NODE_PROPERTIES(db, number, kind, reals);
    V861_GETELEMENTPROPERTIES(db, number, kind, 20, ints, reals, status);
  }
  V861_GETDISTANCEALONGRISER(db, number, 3, reals[0]);
  GET_EXTERNAL_FLUID_PROP(db, number, reals[0], reals[1], reals[2]);
  V861_GETNONLINEARMATERIAL(db, number, 8, reals, status);
}

class DamagedJob : public OpenJob {};

TEST_P(DamagedJob, EveryQueryAnswersWithOneOfItsCodes) {
  builder::JOB job = NEW_JOB();
  job.FORCE.PRESENT = false;
  builder::MODEL& m = job.MODEL;
  m.NODES = {{.FILE_NUMBER = 10, .USER_NUMBER = 1}, {.FILE_NUMBER = 20, .USER_NUMBER = 2}};
  m.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {10, 20}, .LENGTH = 1.0F},
                {.FILE_NUMBER = 2, .USER_NUMBER = 5, .NODES = {20, 40}, .LENGTH = -1.0F}};
  m.AUX_NODES = {{.NUMBER = 7}};
  m.AUX_ELEMENTS = {{.NUMBER = 3, .NODES = {1, 2}}};
  m.PIPE_IN_PIPE = {{{1, 2}, {1, 3}}, {{2, 3}, {0, 1}}};
  m.NONLINEAR_E_TABLES = {{.CURVE = 1, .POINTS = 2}, {}, {.CURVE = 2, .POINTS = 5}};
  const builder::FILE_IMAGE good = job.IMAGE(builder::FILE_KIND::MOTION);
  const int64_t header_end = job.WRITTEN_RUN().RESULT_START_RECORD;
  const std::array<int32_t, 9> hostile{0, -1, 1, 2, 3, 40, 2'147'483'647, -2'147'483'647 - 1, 0x7F800001};
  uint32_t seed = 61;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  int opened = 0;
  for (int round = 0; round < 300; ++round) {
    builder::FILE_IMAGE image = good;
    for (int change = 0; change < 1 + round % 3; ++change) {
      const auto record = static_cast<int64_t>(next() % static_cast<uint32_t>(header_end));
      image.PUT_INT(record, static_cast<int>(next() % 8) + 1, hostile[next() % hostile.size()]);
    }
    if (round % 4 == 0) image.TRUNCATE(next() % good.BYTES().size());
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    opened += OPEN(job, false) ? 1 : 0;
    // The codes of the good job, whether or not this one opened.
    int32_t mc = C, fc = 0;
    for (int32_t number = -4; number <= 12; ++number) {
      SCOPED_TRACE(::testing::Message() << "round " << round << ", number " << number);
      std::array<int32_t, 20> ints{};
      std::array<float, 20> reals{};
      int32_t n = 20;
      for (int32_t kind = 0; kind <= 1; ++kind) {
        const int32_t node = GetNodeProperties(&mc, &fc, &number, &kind, reals.data());
        // A damaged count may give the job more rows than it was written
        // with, and a failed header keeps the tables of the last one.
        const header::HEADER_TABLES& t = DB().TABLES;
        EXPECT_TRUE(node >= 0 && node <= std::max(t.NODE_NUMBERS.EXTENT(1), t.AUX_NODE_NUMBERS.EXTENT())) << node;
        const int32_t element = GetElementProperties(&mc, &fc, &number, &kind, &n, ints.data(), reals.data());
        EXPECT_TRUE(element == 0 || element == -1) << element;
      }
      for (int32_t position = 1; position <= 3; ++position) {
        const int32_t distance = GetDistanceAlongRiser(&mc, &fc, &number, &position, reals.data());
        EXPECT_TRUE(distance == 0 || distance == -1) << distance;
      }
      int32_t capacity = 8;
      const int32_t curve = GetProcessedDirectStressStrainData(&mc, &fc, &number, &capacity, reals.data());
      EXPECT_TRUE(curve == -number || curve >= 0) << curve;
      EXPECT_NO_THROW(ASK_ROUTINES(DB(), number));
    }
    // Every output type asked of the damaged job, as a single value of the
    // steps around the job's and as a history, ends in a status.
    for (int32_t type = 1; type <= 18; ++type) {
      for (int32_t step = 0; step <= 2; ++step) {
        int32_t subtype = 1 + step, node = 1, element = type >= 17 ? 1 : 0, location = 2, steps = 2;
        float single = 0.0F;
        std::array<float, 2> history{};
        const int32_t a = GetRequestedSingleValue(&mc, &fc, &type, &subtype, &node, &element, &location, &steps,
                                                  &step, &single, nullptr, 0);
        const int32_t b = GetRequestedHistory(&mc, &fc, &type, &subtype, &node, &element, &location, &steps, &steps,
                                              history.data(), nullptr, 0);
        EXPECT_GE(std::min(a, b), 0) << "round " << round << ", type " << type;
      }
    }
  }
  EXPECT_GT(opened, 30) << "enough damaged jobs open to be asked";
}

TMRDAR_FOR_EVERY_FORMAT(DamagedJob);

}  // namespace
}  // namespace tmrdar::model_queries
