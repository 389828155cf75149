// The C++ interface over the shared library: opening and closing a job, the
// model queries and requests it answers, and the words of every failure.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.hpp"
#include "tools/small_job.h"

namespace {

using tmrdar::testing::small_job;
using builder_job = tmrdar::builder::Job;
using tmrdar::error;
using tmrdar::request;
using tmrdar::builder::SectionKind;
namespace kind = tmrdar::kind;
namespace position = tmrdar::position;
namespace type = tmrdar::output_type;

request ask(int32_t type, int32_t subtype, int32_t node = 0, int32_t element = 0, int32_t position = 1,
            std::string label = "") {
  request request;
  request.output_type = type;
  request.subtype = subtype;
  request.node = node;
  request.element = element;
  request.position = position;
  request.label = std::move(label);
  return request;
}

// The error that `call` throws, or a test failure.
template <typename Call>
std::pair<int32_t, std::string> failure_of(Call call) {
  try {
    call();
  } catch (const error& failure) {
    return {failure.code(), failure.what()};
  }
  ADD_FAILURE() << "nothing was thrown";
  return {0, ""};
}

// Every field of an element, to compare whole structs.
auto fields_of(const tmrdar::element_properties& e) {
  return std::tie(e.number, e.kind, e.row, e.nodes, e.a8, e.b5, e.section_2, e.section_4, e.length, e.external_fluid,
                  e.b1_to_b4, e.section_3, e.a6, e.a7, e.b6_to_b8, e.c1);
}

class CppInterface : public ::testing::Test {
 protected:
  tmrdar::job open_small(builder_job job = small_job()) {
    job.write(dir.file("small"));
    return tmrdar::job(dir.file("small.dbf"));
  }
  tmrdar::testing::ScratchDir dir;
};

TEST_F(CppInterface, OpensOneJobAtATimeAndClosesItWhenItGoesOutOfScope) {
  {
    tmrdar::job sample(TMRDAR_SAMPLE_JOB);
    EXPECT_EQ(std::make_pair(sample.codes().motion, sample.codes().force), std::make_pair(13, 13));
    const auto [code, text] = failure_of([] { tmrdar::job second(TMRDAR_SAMPLE_JOB); });
    EXPECT_EQ(text, "another job is open: the library holds one job at a time");
    EXPECT_EQ(sample.node(1).row, 1) << "the first job stays open";

    tmrdar::job moved = std::move(sample);
    EXPECT_FALSE(sample.is_open());
    EXPECT_EQ(failure_of([&] { sample.node(1); }), std::make_pair(0, std::string("the job is not open")));
    EXPECT_EQ(moved.node(301).row, 301);
  }
  tmrdar::job again = open_small();
  EXPECT_EQ(again.dimensions().num_time_steps, 3);
  again.close();
  EXPECT_FALSE(again.is_open());
  EXPECT_EQ(failure_of([&] { again.distance(5); }).second, "the job " + dir.file("small.dbf") + " is not open");
  tmrdar::job third(TMRDAR_SAMPLE_JOB);
  EXPECT_TRUE(third.is_open());
}

TEST_F(CppInterface, SaysWhyAJobCannotBeOpened) {
  const std::string missing = dir.file("missing");
  EXPECT_EQ(failure_of([&] { tmrdar::job job(missing); }),
            std::make_pair(-3, "no database files found for " + missing + " (looked for .dbm and .dbf)"));
  EXPECT_EQ(failure_of([] { tmrdar::job job("   "); }), std::make_pair(-1, std::string("the job path is blank")));

  dir.write("empty.dbm", "");
  EXPECT_EQ(failure_of([&] { tmrdar::job job(dir.file("empty")); }).second,
            "no usable database in " + dir.file("empty") +
                ": the motion database cannot be read, and the force database does not exist");

  builder_job mixed;
  mixed.force.first.database_version = 11;
  mixed.write(dir.file("mixed"));
  EXPECT_EQ(failure_of([&] { tmrdar::job job(dir.file("mixed")); }).second,
            "no usable database in " + dir.file("mixed") +
                ": the motion database (version code 13) and the force database (version code 11) are of "
                "different formats");
  EXPECT_TRUE(open_small().is_open()) << "a failed open leaves the library free";
}

TEST_F(CppInterface, NodesElementsDistancesAndCurvesAsStructs) {
  const tmrdar::job job = open_small();
  EXPECT_EQ(std::make_pair(job.node(30).row, job.node(30).coordinates), std::pair(2, std::array{4.0F, 5.0F, 6.0F}));
  EXPECT_EQ(job.node(102, kind::auxiliary).coordinates, (std::array<float, 3>{0.0F, 0.0F, -0.75F}));

  const tmrdar::element_properties seven{.number = 7, .row = 1, .nodes = {10, 30}, .a8 = 8, .b5 = 55, .section_2 = -12,
                                         .section_4 = 14, .length = 2.5F, .external_fluid = {1025.0F, 0.5F, 0.0F},
                                         .b1_to_b4 = {1.25F, 2.25F, 3.25F, 4.25F}, .section_3 = 13.5F, .a6 = 6.5F,
                                         .a7 = 7.5F, .b6_to_b8 = {6.25F, 7.25F, 8.25F}, .c1 = 9.5F};
  EXPECT_EQ(fields_of(job.element(7)), fields_of(seven));
  // A negative number of kind 0 is the auxiliary element of that number,
  // which keeps the marks in the fields it has not.
  const tmrdar::element_properties three{.number = 3, .kind = kind::auxiliary, .row = 1, .nodes = {102, 101}, .a8 = 77};
  EXPECT_EQ(fields_of(job.element(-3)), fields_of(three));
  EXPECT_EQ(fields_of(job.element(3, kind::auxiliary)), fields_of(three));

  EXPECT_EQ(std::make_pair(job.distance(7, position::middle), job.distance(5, position::end)), std::pair(1.25F, 4.0F));

  std::vector<std::pair<float, float>> curve;
  for (const tmrdar::curve_point& p : job.curve(4)) curve.emplace_back(p.first, p.second);
  EXPECT_EQ(curve, (std::vector<std::pair<float, float>>{{0.0F, 0.0F}, {0.001F, 200.0F}, {0.002F, 350.0F}}));

  const std::vector<std::pair<std::pair<int32_t, std::string>, std::pair<int32_t, std::string>>> failures{
      {failure_of([&] { job.node(99); }), {0, "node 99 is not in the database"}},
      {failure_of([&] { job.node(10, kind::auxiliary); }), {0, "auxiliary node 10 is not in the database"}},
      {failure_of([&] { job.node(10, 2); }), {-2, "node kind 2 is neither 0 nor 1"}},
      {failure_of([&] { job.element(8); }), {-1, "element 8 is not in the database"}},
      {failure_of([&] { job.element(-8); }), {-1, "auxiliary element 8 is not in the database"}},
      {failure_of([&] { job.element(7, 5); }), {-3, "element kind 5 is neither 0 nor 1"}},
      {failure_of([&] { job.distance(5, 4); }),
       {-2, "position 4 is not 1, 2 or 3 (start, middle or end of the element)"}},
      {failure_of([&] { job.distance(-3); }),
       {-1, "element -3 has no place along the riser: only elements of the structure, numbered from 1, have one"}},
      {failure_of([&] { job.distance(6); }), {-1, "element 6 is not in the database"}},
      {failure_of([&] { job.curve(5); }), {-5, "stress-strain curve 5 is not in the database"}},
      {failure_of([&] { job.curve(9); }),
       {50, "stress-strain curve 9 claims 50 points, but the table has only 4 rows"}},
  };
  for (const auto& [got, expected] : failures) EXPECT_EQ(got, expected);
}

TEST_F(CppInterface, ValuesAndHistoriesOfNumbersAndLabels) {
  const tmrdar::job job = open_small();
  EXPECT_EQ(job.times(), (std::vector<float>{0.5F, 1.0F, 2.5F}));
  const request displacement = ask(type::displacement, tmrdar::nodal::component_3, 20);
  EXPECT_EQ(job.value(displacement, 2), 1.25F);
  const std::vector<float> history = job.history(displacement);
  EXPECT_EQ(history.at(1), 1.25F);

  // Into the caller's array: as many steps as it holds, from the first.
  std::array<float, 2> owned{9.0F, 9.0F};
  job.history(displacement, owned.data(), owned.size());
  EXPECT_EQ(owned, (std::array{history[0], 1.25F}));

  // An element's label gives the element and, by its kind, the position.
  const request by_label = ask(type::element_force, tmrdar::element_force::section_1, 0, 0, 1, "JOINT");
  request resolved;
  EXPECT_EQ(job.value(by_label, 3, &resolved), -7.5F);
  EXPECT_EQ(std::make_pair(resolved.element, resolved.position), std::make_pair(5, 3));
  EXPECT_EQ(job.history(ask(type::element_force, 1, 0, 5, position::end)).at(2), -7.5F);
  EXPECT_NO_THROW(job.value(ask(type::reaction, tmrdar::nodal::resultant_4_to_6, 10), 1));
}

TEST_F(CppInterface, EveryBitOfARefusedRequestInWords) {
  const tmrdar::job job = open_small();
  const struct {
    tmrdar::request request;
    int32_t step;
    int32_t code;
    std::string text;
  } cases[] = {
      {ask(type::velocity, 1, 10), 1, 2048, "the motion database holds no nodal velocities"},
      {ask(type::element_force, 2, 0, 5), 1, 2048, "the force database holds no element section 2"},
      {ask(type::element_force, tmrdar::element_force::section_9, 0, 5), 1, 2048,
       "the force database holds no element section 9"},
      {ask(type::displacement, 1, 99), 1, 4096, "node 99 is not in the database"},
      {ask(type::reaction, 1, 30), 1, 4096, "node 30 has no boundary condition, so no reaction"},
      {ask(type::guide_surface, 1, 2), 1, 4096, "guide surface 2 is not in the database (it has 0)"},
      {ask(type::element_force, 1, 0, 6, 5), 1, 8192 + 64,
       "position 5 is not 1, 2 or 3 (start, middle or end of the element); element 6 is not in the database"},
      {ask(type::element_force, 1, 0, -4), 1, 1024,
       "element -4 is below 1, so the request looks for a label, and names none"},
      {ask(type::element_force, 1, 1, -4), 1, 8192, "auxiliary element 4 is not in the database"},
      {ask(type::displacement, 8, 10), 1, 8, "subtype 8 of output type 5 (displacement) is not one of 1 to 7"},
      {ask(19, 1, 10), 1, 4, "output type 19 is not one of 1 to 18"},
      {ask(type::displacement, 1, 10), 4, 256, "step 4 is not one of the job's steps, 1 to 3"},
      {ask(type::displacement, 1, 0, 0, 1, "Nowhere"), 1, 1024, "label \"Nowhere\" is not in the database"},
      {ask(type::displacement, 1), 1, 1024, "the request names no item: give a number above 0 or a label"},
      {ask(type::element_force, 1, 0, 0, 1, "top"), 1, 8192, "label \"top\" names node 10, not an element"},
      {ask(type::displacement, 1, 0, 0, 1, "Joint"), 1, 4096, "label \"Joint\" names element 5, not a node"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(failure_of([&] { job.value(c.request, c.step); }), std::make_pair(c.code, c.text))
        << "type " << c.request.output_type << " subtype " << c.request.subtype;
  }
  EXPECT_EQ(failure_of([&] { job.history(ask(type::time, 1), 4); }),
            std::make_pair(256, std::string("a history of 4 steps is longer than the job's 3 steps")));
}

TEST_F(CppInterface, NamesTheMissingFileAndTheValueThatCannotBeComputed) {
  builder_job motion_only = small_job();
  motion_only.force.present = false;
  motion_only.results.clear();
  const tmrdar::job job = open_small(motion_only);
  EXPECT_EQ(failure_of([&] { job.value(ask(type::element_force, 1, 0, 5), 1); }),
            std::make_pair(4, std::string("output type 17 (element-force) needs the force database, which does not "
                                          "exist")));
  EXPECT_EQ(failure_of([&] { job.value(ask(type::clashing, tmrdar::clashing::force_word_1, 1), 1); }).second,
            "clashing subtype 2 needs the force database, which does not exist");
}

TEST_F(CppInterface, NoHistoryLongerThanTheFilesCanHold) {
  // A header that counts far more steps than its files have records.
  builder_job job = small_job();
  job.run.num_time_steps = 2000000000;
  job.run.result_start_record = 200;
  job.run.motion_step_records = 1;
  job.run.force_step_records = 1;
  job.results.clear();
  job.step_times.clear();
  tmrdar::job opened = open_small(job);
  const tmrdar::job open = std::move(opened);  // a moved job keeps what its files hold
  ASSERT_EQ(open.dimensions().num_time_steps, 2000000000);
  const auto [code, text] = failure_of([&] { open.times(); });
  EXPECT_EQ(code, 256);
  EXPECT_EQ(
      text.rfind("a history of 2000000000 steps cannot be read: the job's files have room for no more than ", 0), 0U)
      << text;
  EXPECT_EQ(open.history(ask(type::time, 1), 2).size(), 2U) << "a short history is read all the same";
}

TEST(HistoryStatistics, WorkedByHand) {
  // Extremes at their first step, the population's deviation: the squares
  // about the mean 1.6 sum to 25.2 over five steps.
  const std::vector<float> values{2.0F, -1.0F, 4.0F, -1.0F, 4.0F};
  const tmrdar::history_statistics stats = tmrdar::statistics_of(values.data(), values.size(), 10);
  EXPECT_EQ(std::make_pair(stats.first_step, stats.last_step), std::make_pair(10, 14));
  EXPECT_EQ(std::make_pair(stats.minimum, stats.minimum_step), std::make_pair(-1.0F, 11));
  EXPECT_EQ(std::make_pair(stats.maximum, stats.maximum_step), std::make_pair(4.0F, 12));
  EXPECT_DOUBLE_EQ(stats.mean, 1.6);
  EXPECT_DOUBLE_EQ(stats.standard_deviation, std::sqrt(5.04));

  const std::vector<float> one{-3.5F};
  const tmrdar::history_statistics single = tmrdar::statistics_of(one.data(), 1, 7);
  EXPECT_EQ(std::make_tuple(single.minimum, single.maximum, single.mean, single.standard_deviation),
            std::make_tuple(-3.5F, -3.5F, -3.5, 0.0));
  EXPECT_EQ(std::make_pair(single.minimum_step, single.maximum_step), std::make_pair(7, 7));
}

TEST_F(CppInterface, HistoriesAndStatisticsOverARangeOfSteps) {
  const tmrdar::job job = open_small();
  const request displacement = ask(type::displacement, tmrdar::nodal::component_3, 20);
  const std::vector<float> history = job.history(displacement);
  EXPECT_EQ(job.history_steps(displacement, 2, 3), (std::vector<float>{history[1], history[2]}));
  EXPECT_EQ(job.history_steps(displacement, 3, 3), (std::vector<float>{history[2]}));

  // The statistics of a range are those of its history, worked by hand above.
  for (const auto& [first, last] : {std::pair{1, 3}, {3, 3}}) {
    const tmrdar::history_statistics got = job.statistics(displacement, first, last);
    const tmrdar::history_statistics s =
        tmrdar::statistics_of(history.data() + first - 1, static_cast<std::size_t>(last - first + 1), first);
    EXPECT_EQ(std::make_tuple(got.first_step, got.last_step, got.minimum, got.minimum_step, got.maximum,
                              got.maximum_step, got.mean, got.standard_deviation),
              std::make_tuple(s.first_step, s.last_step, s.minimum, s.minimum_step, s.maximum, s.maximum_step, s.mean,
                              s.standard_deviation));
  }

  const std::vector<std::pair<std::pair<int32_t, int32_t>, std::string>> refused{
      {{0, 2}, "step 0 is not one of the job's steps, 1 to 3"},
      {{1, 4}, "step 4 is not one of the job's steps, 1 to 3"},
      {{3, 2}, "the first step 3 comes after the last step 2"},
  };
  for (const auto& [steps, reason] : refused) {
    const int32_t first = steps.first;
    const int32_t last_step = steps.second;
    EXPECT_EQ(failure_of([&] { job.history_steps(displacement, first, last_step); }), std::make_pair(256, reason));
    EXPECT_EQ(failure_of([&] { job.statistics(displacement, first, last_step); }), std::make_pair(256, reason));
    EXPECT_EQ(failure_of([&] { job.range_graph(displacement, first, last_step); }), std::make_pair(256, reason));
  }
}

TEST_F(CppInterface, SnapshotsAndRangeGraphsAlongTheRiser) {
  const tmrdar::job job = open_small();
  // Element 7 (2.5 long) then element 5 (1.5 long), end to end.
  const std::vector<tmrdar::riser_point> positions = job.riser_points(type::element_force);
  ASSERT_EQ(positions.size(), 6U);
  const std::vector<std::tuple<int32_t, int32_t, float>> expected{{7, 1, 0.0F}, {7, 2, 1.25F}, {7, 3, 2.5F},
                                                                  {5, 1, 2.5F}, {5, 2, 3.25F}, {5, 3, 4.0F}};
  for (std::size_t i = 0; i < positions.size(); ++i) {
    EXPECT_EQ(std::make_tuple(positions[i].element, positions[i].position, positions[i].distance, positions[i].node),
              std::tuple_cat(expected[i], std::make_tuple(0))) << i;
  }
  // Node 4000 is on no element.
  const std::vector<tmrdar::riser_point> nodes = job.riser_points(type::displacement);
  ASSERT_EQ(nodes.size(), 3U);
  EXPECT_EQ(std::make_tuple(nodes[0].node, nodes[1].node, nodes[2].node, nodes[0].distance, nodes[1].distance,
                            nodes[2].distance), std::make_tuple(10, 30, 20, 0.0F, 2.5F, 4.0F));
  EXPECT_EQ(failure_of([&] { job.riser_points(type::time); }),
            std::make_pair(0, std::string("output type 1 (time) has no place along the riser: only results of a "
                                          "node or an element have one")));

  // Each value is that of the single request at the point; whatever the
  // request named is not looked at.
  const request tension = ask(type::element_force, tmrdar::element_force::section_1, 0, 0, 1, "Top");
  const std::vector<tmrdar::snapshot_point> snapshot = job.snapshot(tension, 3);
  ASSERT_EQ(snapshot.size(), 6U);
  for (const tmrdar::snapshot_point& point : snapshot) {
    EXPECT_EQ(point.value, job.value(ask(type::element_force, 1, 0, point.point.element, point.point.position), 3));
  }
  EXPECT_EQ(snapshot[5].value, -7.5F);
  const std::vector<tmrdar::snapshot_point> heave = job.snapshot(ask(type::displacement, 3), 2, {nodes[2]});
  ASSERT_EQ(heave.size(), 1U);
  EXPECT_EQ(std::make_pair(heave[0].point.node, heave[0].value), std::make_pair(20, 1.25F));

  // The range graph's statistics are those of each point's history.
  std::vector<std::size_t> told;
  const std::vector<tmrdar::range_point> graph =
      job.range_graph(tension, 2, 3, [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, 6U);
        told.push_back(done);
      });
  EXPECT_EQ(told, (std::vector<std::size_t>{1, 2, 3, 4, 5, 6}));
  ASSERT_EQ(graph.size(), 6U);
  for (const tmrdar::range_point& point : graph) {
    const request at = ask(type::element_force, 1, 0, point.point.element, point.point.position);
    const std::vector<float> values = job.history_steps(at, 2, 3);
    const tmrdar::history_statistics stats = tmrdar::statistics_of(values.data(), values.size(), 2);
    EXPECT_EQ(std::make_tuple(point.statistics.minimum, point.statistics.minimum_step, point.statistics.maximum,
                              point.statistics.maximum_step, point.statistics.mean),
              std::make_tuple(stats.minimum, stats.minimum_step, stats.maximum, stats.maximum_step, stats.mean));
  }
  EXPECT_EQ(std::make_tuple(graph[5].statistics.maximum, graph[5].statistics.first_step, graph[5].statistics.last_step),
            std::make_tuple(-7.5F, 2, 3));
}

}  // namespace
