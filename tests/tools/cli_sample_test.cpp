// Every command of the tool on the sample job, its answers checked against
// what the C++ interface gives for the same questions: the tool passes the
// library's values through unchanged, in text and in csv.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.hpp"
#include "tools/tool_runner.h"

namespace {

using tmrdar::testing::FIELDS;
using tmrdar::testing::LINES;
using tmrdar::testing::RUN_TOOL;
using tmrdar::testing::TOOL_RUN;

const std::string JOB = TMRDAR_SAMPLE_JOB;

float REAL(const std::string& text) {
  char* end = nullptr;
  const float value = std::strtof(text.c_str(), &end);
  EXPECT_EQ(*end, '\0') << "not a number: " << text;
  return value;
}

int32_t WHOLE(const std::string& text) { return static_cast<int32_t>(std::stol(text)); }

// The rows of a table the tool printed, a vector of fields each, without
// the column names, which must be `names`.
std::vector<std::vector<std::string>> ROWS(const TOOL_RUN& run, const std::vector<std::string>& names, bool csv) {
  EXPECT_EQ(run.STATUS, 0) << run.ERR;
  EXPECT_EQ(run.ERR, "");
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : LINES(run.OUT)) rows.push_back(FIELDS(line, csv ? ',' : ' '));
  EXPECT_EQ(rows.empty() ? std::vector<std::string>() : rows.front(), names);
  if (!rows.empty()) rows.erase(rows.begin());
  for (const auto& row : rows) EXPECT_EQ(row.size(), names.size()) << "a row of " << row.size() << " fields";
  return rows;
}

// A history as the tool prints it: `tmrdar history JOB <arguments> --csv`.
struct SERIES {
  std::vector<float> TIMES;
  std::vector<float> VALUES;
};
SERIES HISTORY_OF(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{"history", JOB};
  command.insert(command.end(), arguments.begin(), arguments.end());
  command.push_back("--csv");
  SERIES series;
  for (const auto& row : ROWS(RUN_TOOL(command), {"step", "time", "value"}, true)) {
    if (row.size() != 3) continue;
    EXPECT_EQ(WHOLE(row[0]), static_cast<int32_t>(series.VALUES.size()) + 1);
    series.TIMES.push_back(REAL(row[1]));
    series.VALUES.push_back(REAL(row[2]));
  }
  return series;
}

// One value as the tool prints it: `tmrdar value JOB <arguments> --step N`.
float VALUE_OF(std::vector<std::string> arguments, int32_t step) {
  arguments.insert(arguments.begin(), {"value", JOB});
  arguments.insert(arguments.end(), {"--step", std::to_string(step)});
  const auto rows = ROWS(RUN_TOOL(arguments), {"step", "time", "value"}, false);
  if (rows.size() != 1 || rows[0].size() != 3) {
    ADD_FAILURE() << "not one value";
    return NAN;
  }
  EXPECT_EQ(WHOLE(rows[0][0]), step);
  return REAL(rows[0][2]);
}

class ToolOnTheSample : public ::testing::Test {
 protected:
  tmrdar::JOB job{JOB};
};

TEST_F(ToolOnTheSample, InfoTellsFilesFormatTitleDimensionsAndTimeRange) {
  const std::vector<float> times = job.TIMES();
  std::ostringstream range;
  range << times.front() << " to " << times.back();
  const std::string words = "2026 11 21 0 0";
  const std::vector<std::vector<std::string>> expected{
      {"field", "value"}, {"job", JOB + ".dbm"}, {"motion file", JOB + ".dbm: version code 13 (V861)"},
      {"motion file words 4-8", words}, {"force file", JOB + ".dbf: version code 13 (V861)"},
      {"force file words 4-8", words}, {"format", "V861"}, {"title", job.DETAILS().TITLE},
      {"analysis detail 1", "2"}, {"analysis detail 2", "1"}, {"analysis detail 3", "1025"},
      {"time steps", std::to_string(times.size())}, {"pipe-in-pipe rows per connection", "0"}, {"elements", "300"},
      {"nodes", "301"}, {"auxiliary elements", "0"}, {"auxiliary nodes", "0"}, {"labels", "3"},
      {"boundary conditions", "2"}, {"guide surfaces", "1"}, {"zero gap guides", "0"},
      {"pipe-in-pipe connections", "0"}, {"pipe-in-pipe reaction entries", "0"}, {"clash pairs", "0"},
      {"stress-strain table rows", "0"}, {"time range", range.str()}};
  const TOOL_RUN csv = RUN_TOOL({"info", JOB + ".dbm", "--csv"});
  std::vector<std::vector<std::string>> fields;
  for (const std::string& line : LINES(csv.OUT)) fields.push_back(FIELDS(line, ','));
  EXPECT_EQ(fields, expected) << csv.OUT;
}

// Every field of every element, the whole table, is the interface's.
TEST_F(ToolOnTheSample, ElementsListNodesLengthsAndDistancesAlongTheRiser) {
  const auto all = ROWS(RUN_TOOL({"elements", JOB, "--all", "--csv"}),
                        {"kind", "element",   "row",       "node-1",  "node-2",  "length",  "start", "end", "a8",
                         "b5",   "section-2", "section-4", "fluid-1", "fluid-2", "fluid-3", "b1",    "b2",  "b3",
                         "b4",   "section-3", "a6",        "a7",      "b6",      "b7",      "b8",    "c1"},
                        true);
  ASSERT_EQ(all.size(), 300U);
  for (const auto& row : all) {
    const int32_t n = WHOLE(row[1]);
    const tmrdar::ELEMENT_PROPERTIES e = job.ELEMENT(n);
    const auto F = [](int32_t i) { return static_cast<float>(i); };
    std::vector<float> listed;
    for (std::size_t i = 2; i < row.size(); ++i) listed.push_back(REAL(row[i]));
    EXPECT_EQ(row[0], "structure");
    EXPECT_EQ(listed, (std::vector<float>{F(e.ROW), F(e.NODES[0]), F(e.NODES[1]), e.LENGTH,
                                          job.DISTANCE(n, tmrdar::POSITION::START),
                                          job.DISTANCE(n, tmrdar::POSITION::END), F(e.A8), F(e.B5), F(e.SECTION_2),
                                          F(e.SECTION_4), e.EXTERNAL_FLUID[0], e.EXTERNAL_FLUID[1],
                                          e.EXTERNAL_FLUID[2], e.B1_TO_B4[0], e.B1_TO_B4[1], e.B1_TO_B4[2],
                                          e.B1_TO_B4[3], e.SECTION_3, e.A6, e.A7, e.B6_TO_B8[0], e.B6_TO_B8[1],
                                          e.B6_TO_B8[2], e.C1}))
        << n;
  }
}

TEST_F(ToolOnTheSample, ValueByNumberNameOrLabelWithItsTime) {
  const auto rows = ROWS(RUN_TOOL({"value", JOB, "Displacement", "1", "--node", "12", "--step=400"}),
                         {"step", "time", "value"}, false);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(REAL(rows[0][1]), job.TIMES()[399]);
  // The element label at the stiffener's tip names the end of an element,
  // and the tool asks for that end.
  tmrdar::REQUEST tip;
  tip.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  tip.LABEL = "STIFFENER TIP";
  tmrdar::REQUEST resolved;
  const float tension = job.VALUE(tip, 250, &resolved);
  EXPECT_EQ(resolved.POSITION, tmrdar::POSITION::END);
  const auto request = [](int32_t type, int32_t subtype, int32_t node, int32_t element, int32_t position) {
    tmrdar::REQUEST r;
    r.OUTPUT_TYPE = type, r.SUBTYPE = subtype, r.NODE = node, r.ELEMENT = element, r.POSITION = position;
    return r;
  };
  const std::string tip_element = std::to_string(resolved.ELEMENT);
  const std::vector<std::tuple<std::vector<std::string>, int32_t, float>> cases{
      {{"displacement", "1", "--node", "12"}, 400, job.VALUE(request(5, 1, 12, 0, 1), 400)},
      {{"5", "1", "--node", "12"}, 400, job.VALUE(request(5, 1, 12, 0, 1), 400)},
      {{"displacement", "2", "--label", "Touchdown"}, 7, job.VALUE(request(5, 2, 301, 0, 1), 7)},
      {{"element-force", "1", "--label", "stiffener tip"}, 250, tension},
      {{"element-force", "1", "--element", tip_element, "--position", "3"}, 250, tension}};
  for (const auto& [arguments, step, value] : cases) EXPECT_EQ(VALUE_OF(arguments, step), value) << arguments[0];
}

TEST_F(ToolOnTheSample, HistoriesAreTheLibrarysValuesUnchanged) {
  tmrdar::REQUEST heave;
  heave.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::DISPLACEMENT;
  heave.NODE = 1;
  const SERIES by_label = HISTORY_OF({"displacement", "1", "--label", "HANG-OFF"});
  EXPECT_EQ(by_label.TIMES, job.TIMES());
  EXPECT_EQ(by_label.VALUES, job.HISTORY(heave));

  // The stiffener's guide surface entry, by type name or number, moves with
  // the hang-off; --count keeps the first steps, in aligned text.
  for (const auto& [type, c] : {std::pair{"guide-surface", 1}, {"8", 3}}) {
    heave.SUBTYPE = c;
    EXPECT_EQ(HISTORY_OF({type, std::to_string(c), "--entry", "1"}).VALUES, job.HISTORY(heave)) << type << c;
  }
  heave.SUBTYPE = 1;
  const auto three = ROWS(RUN_TOOL({"history", JOB, "displacement", "1", "--node", "1", "--count", "3"}),
                          {"step", "time", "value"}, false);
  ASSERT_EQ(three.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(REAL(three[i][2]), by_label.VALUES[i]);
}

// The effective tension (element force 1), as a request the interface takes.
tmrdar::REQUEST TENSION(int32_t element = 0) {
  tmrdar::REQUEST request;
  request.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  request.SUBTYPE = tmrdar::ELEMENT_FORCE::SECTION_1;
  request.ELEMENT = element;
  request.POSITION = tmrdar::POSITION::START;
  return request;
}

// The tool's snapshots, range graphs and statistics are the interface's,
// whose values the interface's own tests hold against single requests.
TEST_F(ToolOnTheSample, SnapshotRangeAndStatsAreTheInterfacesAnswers) {
  const std::vector<tmrdar::SNAPSHOT_POINT> snapshot = job.SNAPSHOT(TENSION(), 400);
  const auto points = ROWS(RUN_TOOL({"snapshot", JOB, "element-force", "1", "--step", "400"}),
                           {"element", "position", "distance", "value"}, false);
  ASSERT_EQ(points.size(), snapshot.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const tmrdar::SNAPSHOT_POINT& p = snapshot[i];
    EXPECT_EQ(std::make_tuple(WHOLE(points[i][0]), WHOLE(points[i][1]), REAL(points[i][2]), REAL(points[i][3])),
              std::make_tuple(p.POINT.ELEMENT, p.POINT.POSITION, p.POINT.DISTANCE, p.VALUE)) << i;
  }

  const auto nodes = ROWS(RUN_TOOL({"snapshot", JOB, "displacement", "2", "--step", "7", "--csv"}),
                          {"node", "distance", "value"}, true);
  EXPECT_EQ(nodes.size(), 301U) << "each node once, from the hang-off to the seabed";
  const std::vector<tmrdar::RANGE_POINT> graph = job.RANGE_GRAPH(TENSION(), 500, 620);
  const auto rows = ROWS(RUN_TOOL({"range", JOB, "element-force", "1", "--from", "500", "--to", "620", "--csv"}),
                         {"element", "position", "distance", "minimum", "minimum-step", "maximum", "maximum-step",
                          "mean", "standard-deviation"},
                         true);
  ASSERT_EQ(rows.size(), graph.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const tmrdar::HISTORY_STATISTICS& s = graph[i].STATISTICS;
    EXPECT_EQ(std::make_tuple(REAL(rows[i][3]), WHOLE(rows[i][4]), REAL(rows[i][5]), WHOLE(rows[i][6]),
                              std::strtod(rows[i][7].c_str(), nullptr), std::strtod(rows[i][8].c_str(), nullptr)),
              std::make_tuple(s.MINIMUM, s.MINIMUM_STEP, s.MAXIMUM, s.MAXIMUM_STEP, s.MEAN, s.STANDARD_DEVIATION))
        << i;
  }

  const tmrdar::HISTORY_STATISTICS s = job.STATISTICS(TENSION(1), 200, 1000);
  const auto stats = ROWS(RUN_TOOL({"stats", JOB, "element-force", "1", "--element", "1", "--from", "200", "--csv"}),
                          {"first-step", "last-step", "minimum", "minimum-step", "maximum", "maximum-step", "mean",
                           "standard-deviation"},
                          true);
  ASSERT_EQ(stats.size(), 1U);
  EXPECT_EQ(std::make_tuple(WHOLE(stats[0][0]), WHOLE(stats[0][1]), REAL(stats[0][2]), WHOLE(stats[0][3]),
                            REAL(stats[0][4]), WHOLE(stats[0][5]), std::strtod(stats[0][6].c_str(), nullptr)),
            std::make_tuple(200, 1000, s.MINIMUM, s.MINIMUM_STEP, s.MAXIMUM, s.MAXIMUM_STEP, s.MEAN));
}

// The curves of an SVG graph the tool drew, each a list of points in the
// picture's coordinates (y grows downwards), and whether it has each label.
std::vector<std::vector<std::pair<double, double>>> CURVES_IN(const std::string& path,
                                                              const std::vector<std::string>& labels) {
  std::ifstream in(path);
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  for (const std::string& label : labels) EXPECT_NE(text.find(">" + label + "</text>"), std::string::npos) << label;
  std::vector<std::vector<std::pair<double, double>>> curves;
  const std::string mark = "<polyline class=\"curve\"";
  for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
    const std::size_t begin = text.find("points=\"", at) + 8;
    std::istringstream points(text.substr(begin, text.find('"', begin) - begin));
    curves.emplace_back();
    double x = 0.0, y = 0.0;
    char comma = 0;
    while (points >> x >> comma >> y) curves.back().emplace_back(x, y);
  }
  return curves;
}

TEST_F(ToolOnTheSample, GraphsOfAHistoryAndOfARangeGraph) {
  tmrdar::testing::SCRATCH_DIR dir;
  const SERIES top = HISTORY_OF({"element-force", "1", "--element", "1", "--svg", dir.FILE("history.svg")});
  auto curves = CURVES_IN(dir.FILE("history.svg"), {"time", "element-force 1 of element 1 at position 1"});
  ASSERT_EQ(curves.size(), 1U);
  ASSERT_EQ(curves[0].size(), top.VALUES.size());
  // The highest value is drawn highest.
  const auto lowest_y = [](auto& a, auto& b) { return a.second < b.second; };
  const auto drawn_highest = std::min_element(curves[0].begin(), curves[0].end(), lowest_y) - curves[0].begin();
  EXPECT_EQ(top.VALUES.at(static_cast<std::size_t>(drawn_highest)),
            *std::max_element(top.VALUES.begin(), top.VALUES.end()));

  EXPECT_EQ(RUN_TOOL({"range", JOB, "element-force", "1", "--svg", dir.FILE("range.svg")}).STATUS, 0);
  curves = CURVES_IN(dir.FILE("range.svg"), {"distance along the riser", "minimum", "maximum", "mean"});
  ASSERT_EQ(curves.size(), 3U);
  for (std::size_t i = 0; i < 900; ++i) {  // the maximum above the mean, the mean above the minimum
    EXPECT_LE(curves[1].at(i).second, curves[2].at(i).second) << i;
    EXPECT_LE(curves[2].at(i).second, curves[0].at(i).second) << i;
  }
}

TEST(ToolHelp, EveryCommandHasItsHelp) {
  const TOOL_RUN run = RUN_TOOL({"--help"});
  EXPECT_EQ(run.STATUS, 0);
  for (const std::string command :
       {"info", "nodes", "elements", "value", "history", "curve", "stats", "snapshot", "range"}) {
    EXPECT_NE(run.OUT.find("  " + command + " JOB"), std::string::npos) << command;
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{command, "--help"}, {command, JOB, "-h"}, {"help", command}}) {
      const TOOL_RUN help = RUN_TOOL(arguments);
      EXPECT_EQ(std::make_tuple(help.STATUS, help.ERR, help.OUT.rfind("usage: tmrdar " + command + " JOB", 0)),
                std::make_tuple(0, "", 0U)) << help.OUT;
    }
  }
}

}  // namespace
