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

using tmrdar::testing::SMALL_JOB;
using builder_job = tmrdar::builder::JOB;
using tmrdar::FAILURE;
using tmrdar::REQUEST;
using tmrdar::builder::SECTION_KIND;
namespace KIND = tmrdar::KIND;
namespace POSITION = tmrdar::POSITION;
namespace TYPE = tmrdar::OUTPUT_TYPE;

REQUEST ASK(int32_t type, int32_t subtype, int32_t node = 0, int32_t element = 0, int32_t position = 1,
            std::string label = "") {
  REQUEST request;
  request.OUTPUT_TYPE = type;
  request.SUBTYPE = subtype;
  request.NODE = node;
  request.ELEMENT = element;
  request.POSITION = position;
  request.LABEL = std::move(label);
  return request;
}

// The FAILURE that `call` throws, or a test failure.
template <typename CALL>
std::pair<int32_t, std::string> FAILURE_OF(CALL call) {
  try {
    call();
  } catch (const FAILURE& failure) {
    return {failure.CODE(), failure.what()};
  }
  ADD_FAILURE() << "nothing was thrown";
  return {0, ""};
}

// Every field of an element, to compare whole structs.
auto FIELDS(const tmrdar::ELEMENT_PROPERTIES& e) {
  return std::tie(e.NUMBER, e.KIND, e.ROW, e.NODES, e.A8, e.B5, e.SECTION_2, e.SECTION_4, e.LENGTH, e.EXTERNAL_FLUID,
                  e.B1_TO_B4, e.SECTION_3, e.A6, e.A7, e.B6_TO_B8, e.C1);
}

class CppInterface : public ::testing::Test {
 protected:
  tmrdar::JOB OPEN_SMALL(builder_job job = SMALL_JOB()) {
    job.WRITE(dir.FILE("small"));
    return tmrdar::JOB(dir.FILE("small.dbf"));
  }
  tmrdar::testing::SCRATCH_DIR dir;
};

TEST_F(CppInterface, OpensOneJobAtATimeAndClosesItWhenItGoesOutOfScope) {
  {
    tmrdar::JOB sample(TMRDAR_SAMPLE_JOB);
    EXPECT_EQ(std::make_pair(sample.CODES().MOTION, sample.CODES().FORCE), std::make_pair(13, 13));
    const auto [code, text] = FAILURE_OF([] { tmrdar::JOB second(TMRDAR_SAMPLE_JOB); });
    EXPECT_EQ(text, "another job is open: the library holds one job at a time");
    EXPECT_EQ(sample.NODE(1).ROW, 1) << "the first job stays open";

    tmrdar::JOB moved = std::move(sample);
    EXPECT_FALSE(sample.IS_OPEN());
    EXPECT_EQ(FAILURE_OF([&] { sample.NODE(1); }), std::make_pair(0, std::string("the job is not open")));
    EXPECT_EQ(moved.NODE(301).ROW, 301);
  }
  tmrdar::JOB again = OPEN_SMALL();
  EXPECT_EQ(again.DIMENSIONS().NUM_TIME_STEPS, 3);
  again.CLOSE();
  EXPECT_FALSE(again.IS_OPEN());
  EXPECT_EQ(FAILURE_OF([&] { again.DISTANCE(5); }).second, "the job " + dir.FILE("small.dbf") + " is not open");
  tmrdar::JOB third(TMRDAR_SAMPLE_JOB);
  EXPECT_TRUE(third.IS_OPEN());
}

TEST_F(CppInterface, SaysWhyAJobCannotBeOpened) {
  const std::string missing = dir.FILE("missing");
  EXPECT_EQ(FAILURE_OF([&] { tmrdar::JOB job(missing); }),
            std::make_pair(-3, "no database files found for " + missing + " (looked for .dbm and .dbf)"));
  EXPECT_EQ(FAILURE_OF([] { tmrdar::JOB job("   "); }), std::make_pair(-1, std::string("the job path is blank")));

  dir.WRITE("empty.dbm", "");
  EXPECT_EQ(FAILURE_OF([&] { tmrdar::JOB job(dir.FILE("empty")); }).second,
            "no usable database in " + dir.FILE("empty") +
                ": the motion database cannot be read, and the force database does not exist");

  builder_job mixed;
  mixed.FORCE.FIRST.DATABASE_VERSION = 11;
  mixed.WRITE(dir.FILE("mixed"));
  EXPECT_EQ(FAILURE_OF([&] { tmrdar::JOB job(dir.FILE("mixed")); }).second,
            "no usable database in " + dir.FILE("mixed") +
                ": the motion database (version code 13) and the force database (version code 11) are of "
                "different formats");
  EXPECT_TRUE(OPEN_SMALL().IS_OPEN()) << "a failed open leaves the library free";
}

TEST_F(CppInterface, NodesElementsDistancesAndCurvesAsStructs) {
  const tmrdar::JOB job = OPEN_SMALL();
  EXPECT_EQ(std::make_pair(job.NODE(30).ROW, job.NODE(30).COORDINATES), std::pair(2, std::array{4.0F, 5.0F, 6.0F}));
  EXPECT_EQ(job.NODE(102, KIND::AUXILIARY).COORDINATES, (std::array<float, 3>{0.0F, 0.0F, -0.75F}));

  const tmrdar::ELEMENT_PROPERTIES seven{.NUMBER = 7, .ROW = 1, .NODES = {10, 30}, .A8 = 8, .B5 = 55, .SECTION_2 = -12,
                                         .SECTION_4 = 14, .LENGTH = 2.5F, .EXTERNAL_FLUID = {1025.0F, 0.5F, 0.0F},
                                         .B1_TO_B4 = {1.25F, 2.25F, 3.25F, 4.25F}, .SECTION_3 = 13.5F, .A6 = 6.5F,
                                         .A7 = 7.5F, .B6_TO_B8 = {6.25F, 7.25F, 8.25F}, .C1 = 9.5F};
  EXPECT_EQ(FIELDS(job.ELEMENT(7)), FIELDS(seven));
  // A negative number of kind 0 is the auxiliary element of that number,
  // which keeps the marks in the fields it has not.
  const tmrdar::ELEMENT_PROPERTIES three{.NUMBER = 3, .KIND = KIND::AUXILIARY, .ROW = 1, .NODES = {102, 101}, .A8 = 77};
  EXPECT_EQ(FIELDS(job.ELEMENT(-3)), FIELDS(three));
  EXPECT_EQ(FIELDS(job.ELEMENT(3, KIND::AUXILIARY)), FIELDS(three));

  EXPECT_EQ(std::make_pair(job.DISTANCE(7, POSITION::MIDDLE), job.DISTANCE(5, POSITION::END)), std::pair(1.25F, 4.0F));

  std::vector<std::pair<float, float>> curve;
  for (const tmrdar::CURVE_POINT& p : job.CURVE(4)) curve.emplace_back(p.FIRST, p.SECOND);
  EXPECT_EQ(curve, (std::vector<std::pair<float, float>>{{0.0F, 0.0F}, {0.001F, 200.0F}, {0.002F, 350.0F}}));

  const std::vector<std::pair<std::pair<int32_t, std::string>, std::pair<int32_t, std::string>>> failures{
      {FAILURE_OF([&] { job.NODE(99); }), {0, "node 99 is not in the database"}},
      {FAILURE_OF([&] { job.NODE(10, KIND::AUXILIARY); }), {0, "auxiliary node 10 is not in the database"}},
      {FAILURE_OF([&] { job.NODE(10, 2); }), {-2, "node kind 2 is neither 0 nor 1"}},
      {FAILURE_OF([&] { job.ELEMENT(8); }), {-1, "element 8 is not in the database"}},
      {FAILURE_OF([&] { job.ELEMENT(-8); }), {-1, "auxiliary element 8 is not in the database"}},
      {FAILURE_OF([&] { job.ELEMENT(7, 5); }), {-3, "element kind 5 is neither 0 nor 1"}},
      {FAILURE_OF([&] { job.DISTANCE(5, 4); }),
       {-2, "position 4 is not 1, 2 or 3 (start, middle or end of the element)"}},
      {FAILURE_OF([&] { job.DISTANCE(-3); }),
       {-1, "element -3 has no place along the riser: only elements of the structure, numbered from 1, have one"}},
      {FAILURE_OF([&] { job.DISTANCE(6); }), {-1, "element 6 is not in the database"}},
      {FAILURE_OF([&] { job.CURVE(5); }), {-5, "stress-strain curve 5 is not in the database"}},
      {FAILURE_OF([&] { job.CURVE(9); }),
       {50, "stress-strain curve 9 claims 50 points, but the table has only 4 rows"}},
  };
  for (const auto& [got, expected] : failures) EXPECT_EQ(got, expected);
}

TEST_F(CppInterface, ValuesAndHistoriesOfNumbersAndLabels) {
  const tmrdar::JOB job = OPEN_SMALL();
  EXPECT_EQ(job.TIMES(), (std::vector<float>{0.5F, 1.0F, 2.5F}));
  const REQUEST displacement = ASK(TYPE::DISPLACEMENT, tmrdar::NODAL::COMPONENT_3, 20);
  EXPECT_EQ(job.VALUE(displacement, 2), 1.25F);
  const std::vector<float> history = job.HISTORY(displacement);
  EXPECT_EQ(history.at(1), 1.25F);

  // Into the caller's array: as many steps as it holds, from the first.
  std::array<float, 2> owned{9.0F, 9.0F};
  job.HISTORY(displacement, owned.data(), owned.size());
  EXPECT_EQ(owned, (std::array{history[0], 1.25F}));

  // An element's label gives the element and, by its kind, the position.
  const REQUEST by_label = ASK(TYPE::ELEMENT_FORCE, tmrdar::ELEMENT_FORCE::SECTION_1, 0, 0, 1, "JOINT");
  REQUEST resolved;
  EXPECT_EQ(job.VALUE(by_label, 3, &resolved), -7.5F);
  EXPECT_EQ(std::make_pair(resolved.ELEMENT, resolved.POSITION), std::make_pair(5, 3));
  EXPECT_EQ(job.HISTORY(ASK(TYPE::ELEMENT_FORCE, 1, 0, 5, POSITION::END)).at(2), -7.5F);
  EXPECT_NO_THROW(job.VALUE(ASK(TYPE::REACTION, tmrdar::NODAL::RESULTANT_4_TO_6, 10), 1));
}

TEST_F(CppInterface, EveryBitOfARefusedRequestInWords) {
  const tmrdar::JOB job = OPEN_SMALL();
  const struct {
    REQUEST request;
    int32_t step;
    int32_t code;
    std::string text;
  } cases[] = {
      {ASK(TYPE::VELOCITY, 1, 10), 1, 2048, "the motion database holds no nodal velocities"},
      {ASK(TYPE::ELEMENT_FORCE, 2, 0, 5), 1, 2048, "the force database holds no element section 2"},
      {ASK(TYPE::ELEMENT_FORCE, tmrdar::ELEMENT_FORCE::SECTION_9, 0, 5), 1, 2048,
       "the force database holds no element section 9"},
      {ASK(TYPE::DISPLACEMENT, 1, 99), 1, 4096, "node 99 is not in the database"},
      {ASK(TYPE::REACTION, 1, 30), 1, 4096, "node 30 has no boundary condition, so no reaction"},
      {ASK(TYPE::GUIDE_SURFACE, 1, 2), 1, 4096, "guide surface 2 is not in the database (it has 0)"},
      {ASK(TYPE::ELEMENT_FORCE, 1, 0, 6, 5), 1, 8192 + 64,
       "position 5 is not 1, 2 or 3 (start, middle or end of the element); element 6 is not in the database"},
      {ASK(TYPE::ELEMENT_FORCE, 1, 0, -4), 1, 1024,
       "element -4 is below 1, so the request looks for a label, and names none"},
      {ASK(TYPE::ELEMENT_FORCE, 1, 1, -4), 1, 8192, "auxiliary element 4 is not in the database"},
      {ASK(TYPE::DISPLACEMENT, 8, 10), 1, 8, "subtype 8 of output type 5 (displacement) is not one of 1 to 7"},
      {ASK(19, 1, 10), 1, 4, "output type 19 is not one of 1 to 18"},
      {ASK(TYPE::DISPLACEMENT, 1, 10), 4, 256, "step 4 is not one of the job's steps, 1 to 3"},
      {ASK(TYPE::DISPLACEMENT, 1, 0, 0, 1, "Nowhere"), 1, 1024, "label \"Nowhere\" is not in the database"},
      {ASK(TYPE::DISPLACEMENT, 1), 1, 1024, "the request names no item: give a number above 0 or a label"},
      {ASK(TYPE::ELEMENT_FORCE, 1, 0, 0, 1, "top"), 1, 8192, "label \"top\" names node 10, not an element"},
      {ASK(TYPE::DISPLACEMENT, 1, 0, 0, 1, "Joint"), 1, 4096, "label \"Joint\" names element 5, not a node"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FAILURE_OF([&] { job.VALUE(c.request, c.step); }), std::make_pair(c.code, c.text))
        << "type " << c.request.OUTPUT_TYPE << " subtype " << c.request.SUBTYPE;
  }
  EXPECT_EQ(FAILURE_OF([&] { job.HISTORY(ASK(TYPE::TIME, 1), 4); }),
            std::make_pair(256, std::string("a history of 4 steps is longer than the job's 3 steps")));
}

TEST_F(CppInterface, NamesTheMissingFileAndTheValueThatCannotBeComputed) {
  builder_job motion_only = SMALL_JOB();
  motion_only.FORCE.PRESENT = false;
  motion_only.RESULTS.CLEAR();
  const tmrdar::JOB job = OPEN_SMALL(motion_only);
  EXPECT_EQ(FAILURE_OF([&] { job.VALUE(ASK(TYPE::ELEMENT_FORCE, 1, 0, 5), 1); }),
            std::make_pair(4, std::string("output type 17 (element-force) needs the force database, which does not "
                                          "exist")));
  EXPECT_EQ(FAILURE_OF([&] { job.VALUE(ASK(TYPE::CLASHING, tmrdar::CLASHING::FORCE_WORD_1, 1), 1); }).second,
            "clashing subtype 2 needs the force database, which does not exist");
}

TEST_F(CppInterface, NoHistoryLongerThanTheFilesCanHold) {
  // A header that counts far more steps than its files have records.
  builder_job job = SMALL_JOB();
  job.RUN.NUM_TIME_STEPS = 2000000000;
  job.RUN.RESULT_START_RECORD = 200;
  job.RUN.MOTION_STEP_RECORDS = 1;
  job.RUN.FORCE_STEP_RECORDS = 1;
  job.RESULTS.CLEAR();
  job.STEP_TIMES.clear();
  tmrdar::JOB opened = OPEN_SMALL(job);
  const tmrdar::JOB open = std::move(opened);  // a moved job keeps what its files hold
  ASSERT_EQ(open.DIMENSIONS().NUM_TIME_STEPS, 2000000000);
  const auto [code, text] = FAILURE_OF([&] { open.TIMES(); });
  EXPECT_EQ(code, 256);
  EXPECT_EQ(
      text.rfind("a history of 2000000000 steps cannot be read: the job's files have room for no more than ", 0), 0U)
      << text;
  EXPECT_EQ(open.HISTORY(ASK(TYPE::TIME, 1), 2).size(), 2U) << "a short history is read all the same";
}

TEST(HistoryStatistics, WorkedByHand) {
  // Extremes at their first step, the population's deviation: the squares
  // about the mean 1.6 sum to 25.2 over five steps.
  const std::vector<float> values{2.0F, -1.0F, 4.0F, -1.0F, 4.0F};
  const tmrdar::HISTORY_STATISTICS stats = tmrdar::STATISTICS_OF(values.data(), values.size(), 10);
  EXPECT_EQ(std::make_pair(stats.FIRST_STEP, stats.LAST_STEP), std::make_pair(10, 14));
  EXPECT_EQ(std::make_pair(stats.MINIMUM, stats.MINIMUM_STEP), std::make_pair(-1.0F, 11));
  EXPECT_EQ(std::make_pair(stats.MAXIMUM, stats.MAXIMUM_STEP), std::make_pair(4.0F, 12));
  EXPECT_DOUBLE_EQ(stats.MEAN, 1.6);
  EXPECT_DOUBLE_EQ(stats.STANDARD_DEVIATION, std::sqrt(5.04));

  const std::vector<float> one{-3.5F};
  const tmrdar::HISTORY_STATISTICS single = tmrdar::STATISTICS_OF(one.data(), 1, 7);
  EXPECT_EQ(std::make_tuple(single.MINIMUM, single.MAXIMUM, single.MEAN, single.STANDARD_DEVIATION),
            std::make_tuple(-3.5F, -3.5F, -3.5, 0.0));
  EXPECT_EQ(std::make_pair(single.MINIMUM_STEP, single.MAXIMUM_STEP), std::make_pair(7, 7));
}

TEST_F(CppInterface, HistoriesAndStatisticsOverARangeOfSteps) {
  const tmrdar::JOB job = OPEN_SMALL();
  const REQUEST displacement = ASK(TYPE::DISPLACEMENT, tmrdar::NODAL::COMPONENT_3, 20);
  const std::vector<float> history = job.HISTORY(displacement);
  EXPECT_EQ(job.HISTORY_STEPS(displacement, 2, 3), (std::vector<float>{history[1], history[2]}));
  EXPECT_EQ(job.HISTORY_STEPS(displacement, 3, 3), (std::vector<float>{history[2]}));

  // The statistics of a range are those of its history, worked by hand above.
  for (const auto& [first, last] : {std::pair{1, 3}, {3, 3}}) {
    const tmrdar::HISTORY_STATISTICS got = job.STATISTICS(displacement, first, last);
    const tmrdar::HISTORY_STATISTICS s =
        tmrdar::STATISTICS_OF(history.data() + first - 1, static_cast<std::size_t>(last - first + 1), first);
    EXPECT_EQ(std::make_tuple(got.FIRST_STEP, got.LAST_STEP, got.MINIMUM, got.MINIMUM_STEP, got.MAXIMUM,
                              got.MAXIMUM_STEP, got.MEAN, got.STANDARD_DEVIATION),
              std::make_tuple(s.FIRST_STEP, s.LAST_STEP, s.MINIMUM, s.MINIMUM_STEP, s.MAXIMUM, s.MAXIMUM_STEP, s.MEAN,
                              s.STANDARD_DEVIATION));
  }

  const std::vector<std::pair<std::pair<int32_t, int32_t>, std::string>> refused{
      {{0, 2}, "step 0 is not one of the job's steps, 1 to 3"},
      {{1, 4}, "step 4 is not one of the job's steps, 1 to 3"},
      {{3, 2}, "the first step 3 comes after the last step 2"},
  };
  for (const auto& [steps, reason] : refused) {
    const int32_t first = steps.first;
    const int32_t last_step = steps.second;
    EXPECT_EQ(FAILURE_OF([&] { job.HISTORY_STEPS(displacement, first, last_step); }), std::make_pair(256, reason));
    EXPECT_EQ(FAILURE_OF([&] { job.STATISTICS(displacement, first, last_step); }), std::make_pair(256, reason));
    EXPECT_EQ(FAILURE_OF([&] { job.RANGE_GRAPH(displacement, first, last_step); }), std::make_pair(256, reason));
  }
}

TEST_F(CppInterface, SnapshotsAndRangeGraphsAlongTheRiser) {
  const tmrdar::JOB job = OPEN_SMALL();
  // Element 7 (2.5 long) then element 5 (1.5 long), end to end.
  const std::vector<tmrdar::RISER_POINT> positions = job.RISER_POINTS(TYPE::ELEMENT_FORCE);
  ASSERT_EQ(positions.size(), 6U);
  const std::vector<std::tuple<int32_t, int32_t, float>> expected{{7, 1, 0.0F}, {7, 2, 1.25F}, {7, 3, 2.5F},
                                                                  {5, 1, 2.5F}, {5, 2, 3.25F}, {5, 3, 4.0F}};
  for (std::size_t i = 0; i < positions.size(); ++i) {
    EXPECT_EQ(std::make_tuple(positions[i].ELEMENT, positions[i].POSITION, positions[i].DISTANCE, positions[i].NODE),
              std::tuple_cat(expected[i], std::make_tuple(0))) << i;
  }
  // Node 4000 is on no element.
  const std::vector<tmrdar::RISER_POINT> nodes = job.RISER_POINTS(TYPE::DISPLACEMENT);
  ASSERT_EQ(nodes.size(), 3U);
  EXPECT_EQ(std::make_tuple(nodes[0].NODE, nodes[1].NODE, nodes[2].NODE, nodes[0].DISTANCE, nodes[1].DISTANCE,
                            nodes[2].DISTANCE), std::make_tuple(10, 30, 20, 0.0F, 2.5F, 4.0F));
  EXPECT_EQ(FAILURE_OF([&] { job.RISER_POINTS(TYPE::TIME); }),
            std::make_pair(0, std::string("output type 1 (time) has no place along the riser: only results of a "
                                          "node or an element have one")));

  // Each value is that of the single request at the point; whatever the
  // request named is not looked at.
  const REQUEST tension = ASK(TYPE::ELEMENT_FORCE, tmrdar::ELEMENT_FORCE::SECTION_1, 0, 0, 1, "Top");
  const std::vector<tmrdar::SNAPSHOT_POINT> snapshot = job.SNAPSHOT(tension, 3);
  ASSERT_EQ(snapshot.size(), 6U);
  for (const tmrdar::SNAPSHOT_POINT& point : snapshot) {
    EXPECT_EQ(point.VALUE, job.VALUE(ASK(TYPE::ELEMENT_FORCE, 1, 0, point.POINT.ELEMENT, point.POINT.POSITION), 3));
  }
  EXPECT_EQ(snapshot[5].VALUE, -7.5F);
  const std::vector<tmrdar::SNAPSHOT_POINT> heave = job.SNAPSHOT(ASK(TYPE::DISPLACEMENT, 3), 2, {nodes[2]});
  ASSERT_EQ(heave.size(), 1U);
  EXPECT_EQ(std::make_pair(heave[0].POINT.NODE, heave[0].VALUE), std::make_pair(20, 1.25F));

  // The range graph's statistics are those of each point's history.
  std::vector<std::size_t> told;
  const std::vector<tmrdar::RANGE_POINT> graph =
      job.RANGE_GRAPH(tension, 2, 3, [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, 6U);
        told.push_back(done);
      });
  EXPECT_EQ(told, (std::vector<std::size_t>{1, 2, 3, 4, 5, 6}));
  ASSERT_EQ(graph.size(), 6U);
  for (const tmrdar::RANGE_POINT& point : graph) {
    const REQUEST at = ASK(TYPE::ELEMENT_FORCE, 1, 0, point.POINT.ELEMENT, point.POINT.POSITION);
    const std::vector<float> values = job.HISTORY_STEPS(at, 2, 3);
    const tmrdar::HISTORY_STATISTICS stats = tmrdar::STATISTICS_OF(values.data(), values.size(), 2);
    EXPECT_EQ(std::make_tuple(point.STATISTICS.MINIMUM, point.STATISTICS.MINIMUM_STEP, point.STATISTICS.MAXIMUM,
                              point.STATISTICS.MAXIMUM_STEP, point.STATISTICS.MEAN),
              std::make_tuple(stats.MINIMUM, stats.MINIMUM_STEP, stats.MAXIMUM, stats.MAXIMUM_STEP, stats.MEAN));
  }
  EXPECT_EQ(std::make_tuple(graph[5].STATISTICS.MAXIMUM, graph[5].STATISTICS.FIRST_STEP, graph[5].STATISTICS.LAST_STEP),
            std::make_tuple(-7.5F, 2, 3));
}

}  // namespace
