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
void ask_routines(const header::FormatReader& db, int32_t number) {
  std::array<int32_t, 20> ints{};
  std::array<float, 20> reals{};
  int32_t status = 0;
  for (int32_t kind = 0; kind <= 1; ++kind) {
    node_properties(db, number, kind, reals);
    v861_getelementproperties(db, number, kind, 20, ints, reals, status);
  }
  v861_getdistancealongriser(db, number, 3, reals[0]);
  get_external_fluid_prop(db, number, reals[0], reals[1], reals[2]);
  v861_getnonlinearmaterial(db, number, 8, reals, status);
}

class DamagedJob : public OpenJob {};

TEST_P(DamagedJob, EveryQueryAnswersWithOneOfItsCodes) {
  builder::Job job = new_job();
  job.force.present = false;
  builder::Model& m = job.model;
  m.nodes = {{.file_number = 10, .user_number = 1}, {.file_number = 20, .user_number = 2}};
  m.elements = {{.file_number = 1, .user_number = 1, .nodes = {10, 20}, .length = 1.0F},
                {.file_number = 2, .user_number = 5, .nodes = {20, 40}, .length = -1.0F}};
  m.aux_nodes = {{.number = 7}};
  m.aux_elements = {{.number = 3, .nodes = {1, 2}}};
  m.pipe_in_pipe = {{{1, 2}, {1, 3}}, {{2, 3}, {0, 1}}};
  m.nonlinear_e_tables = {{.curve = 1, .points = 2}, {}, {.curve = 2, .points = 5}};
  const builder::FileImage good = job.image(builder::FileKind::motion);
  const int64_t header_end = job.written_run().result_start_record;
  const std::array<int32_t, 9> hostile{0, -1, 1, 2, 3, 40, 2'147'483'647, -2'147'483'647 - 1, 0x7F800001};
  uint32_t seed = 61;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  int opened = 0;
  for (int round = 0; round < 300; ++round) {
    builder::FileImage image = good;
    for (int change = 0; change < 1 + round % 3; ++change) {
      const auto record = static_cast<int64_t>(next() % static_cast<uint32_t>(header_end));
      image.put_int(record, static_cast<int>(next() % 8) + 1, hostile[next() % hostile.size()]);
    }
    if (round % 4 == 0) image.truncate(next() % good.bytes().size());
    ASSERT_TRUE(image.write(dir.file("job.dbm")));
    opened += open(job, false) ? 1 : 0;
    // The codes of the good job, whether or not this one opened.
    int32_t mc = c, fc = 0;
    for (int32_t number = -4; number <= 12; ++number) {
      SCOPED_TRACE(::testing::Message() << "round " << round << ", number " << number);
      std::array<int32_t, 20> ints{};
      std::array<float, 20> reals{};
      int32_t n = 20;
      for (int32_t kind = 0; kind <= 1; ++kind) {
        const int32_t node = GetNodeProperties(&mc, &fc, &number, &kind, reals.data());
        // A damaged count may give the job more rows than it was written
        // with, and a failed header keeps the tables of the last one.
        const header::HeaderTables& t = reader().tables;
        EXPECT_TRUE(node >= 0 && node <= std::max(t.node_numbers.extent(1), t.aux_node_numbers.extent())) << node;
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
      EXPECT_NO_THROW(ask_routines(reader(), number));
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
