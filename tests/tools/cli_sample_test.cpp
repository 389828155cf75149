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
  if (rows.empty()) {
    ADD_FAILURE() << "no table";
    return rows;
  }
  EXPECT_EQ(rows.front(), names);
  rows.erase(rows.begin());
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
  const TOOL_RUN text = RUN_TOOL({"info", JOB});
  EXPECT_EQ(text.STATUS, 0);
  EXPECT_EQ(text.ERR, "");
  const auto field = [&](const std::string& name) {
    for (const std::string& line : LINES(text.OUT)) {
      if (line.rfind(name + "  ", 0) == 0) return line.substr(line.find_first_not_of(' ', name.size()));
    }
    ADD_FAILURE() << "no line " << name;
    return std::string();
  };
  const std::pair<std::string, std::string> fields[] = {
      {"motion file", JOB + ".dbm: version code 13 (V861)"}, {"force file", JOB + ".dbf: version code 13 (V861)"},
      {"format", "V861"}, {"title", job.DETAILS().TITLE}, {"time steps", "1000"}, {"elements", "300"},
      {"nodes", "301"}, {"labels", "3"}, {"boundary conditions", "2"}, {"guide surfaces", "1"}};
  for (const auto& [name, value] : fields) EXPECT_EQ(field(name), value);
  const std::string range = field("time range");
  const std::vector<float> times = job.TIMES();
  ASSERT_EQ(times.size(), 1000U);
  EXPECT_EQ(REAL(range.substr(0, range.find(" to "))), times.front()) << range;
  EXPECT_EQ(REAL(range.substr(range.find(" to ") + 4)), times.back()) << range;

  const TOOL_RUN csv = RUN_TOOL({"info", JOB + ".dbm", "--csv"});
  const std::vector<std::string> lines = LINES(csv.OUT);
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.front(), "field,value");
  EXPECT_NE(std::find(lines.begin(), lines.end(), "title,Sample catenary riser in a regular wave"), lines.end());
  EXPECT_NE(std::find(lines.begin(), lines.end(), "nodes,301"), lines.end());
}

TEST_F(ToolOnTheSample, NodesHangFromTheHangOffDownToTheSeabed) {
  std::vector<std::vector<std::string>> listed;
  for (const bool csv : {false, true}) {
    std::vector<std::string> arguments{"nodes", JOB};
    if (csv) arguments.push_back("--csv");
    const auto rows = ROWS(RUN_TOOL(arguments), {"kind", "node", "row", "x", "y", "z"}, csv);
    ASSERT_EQ(rows.size(), 301U);
    for (const auto& row : rows) {
      const tmrdar::NODE_PROPERTIES node = job.NODE(WHOLE(row[1]));
      EXPECT_EQ(row[0], "structure");
      EXPECT_EQ(WHOLE(row[2]), node.ROW);
      for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(REAL(row[3 + i]), node.COORDINATES[i]) << row[1];
    }
    if (csv) {
      EXPECT_EQ(rows, listed) << "the text and the csv tables differ";
    }
    listed = rows;
  }
}

TEST_F(ToolOnTheSample, ElementsListNodesLengthsAndDistancesAlongTheRiser) {
  const auto rows = ROWS(RUN_TOOL({"elements", JOB}),
                         {"kind", "element", "row", "node-1", "node-2", "length", "start", "end"}, false);
  ASSERT_EQ(rows.size(), 300U);
  for (const auto& row : rows) {
    const int32_t number = WHOLE(row[1]);
    const tmrdar::ELEMENT_PROPERTIES element = job.ELEMENT(number);
    EXPECT_EQ(WHOLE(row[3]), element.NODES[0]);
    EXPECT_EQ(WHOLE(row[4]), element.NODES[1]);
    EXPECT_EQ(REAL(row[5]), element.LENGTH);
    EXPECT_EQ(REAL(row[6]), job.DISTANCE(number, tmrdar::POSITION::START));
    EXPECT_EQ(REAL(row[7]), job.DISTANCE(number, tmrdar::POSITION::END));
  }

  const auto all = ROWS(RUN_TOOL({"elements", JOB, "--all", "--csv"}),
                        {"kind", "element",   "row",       "node-1",  "node-2",  "length",  "start", "end", "a8",
                         "b5",   "section-2", "section-4", "fluid-1", "fluid-2", "fluid-3", "b1",    "b2",  "b3",
                         "b4",   "section-3", "a6",        "a7",      "b6",      "b7",      "b8",    "c1"},
                        true);
  ASSERT_EQ(all.size(), 300U);
  const tmrdar::ELEMENT_PROPERTIES last = job.ELEMENT(300);
  EXPECT_EQ(WHOLE(all[299][10]), last.SECTION_2);
  EXPECT_EQ(REAL(all[299][12]), last.EXTERNAL_FLUID[0]);
  EXPECT_EQ(REAL(all[299][16]), last.B1_TO_B4[1]);
  EXPECT_EQ(REAL(all[299][19]), last.SECTION_3);
}

TEST_F(ToolOnTheSample, ValueByNumberNameOrLabelWithItsTime) {
  const std::vector<float> times = job.TIMES();
  tmrdar::REQUEST displacement;
  displacement.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::DISPLACEMENT;
  displacement.SUBTYPE = 1;
  displacement.NODE = 12;
  for (const std::string type : {"displacement", "5", "Displacement"}) {
    const auto rows =
        ROWS(RUN_TOOL({"value", JOB, type, "1", "--node", "12", "--step", "400"}), {"step", "time", "value"}, false);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0][0], "400");
    EXPECT_EQ(REAL(rows[0][1]), times[399]);
    EXPECT_EQ(REAL(rows[0][2]), job.VALUE(displacement, 400)) << type;
  }

  // The end nodes by their labels, in any case.
  displacement.NODE = 1;
  auto rows = ROWS(RUN_TOOL({"value", JOB, "displacement", "1", "--label", "hang-off", "--step=7", "--csv"}),
                   {"step", "time", "value"}, true);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(REAL(rows[0][2]), job.VALUE(displacement, 7));
  displacement.NODE = job.DIMENSIONS().NUM_NODES;
  displacement.SUBTYPE = 2;
  EXPECT_EQ(VALUE_OF({"displacement", "2", "--label", "Touchdown"}, 7), job.VALUE(displacement, 7));

  // The element label at the stiffener's tip names the end of an element,
  // and the tool asks for that end.
  tmrdar::REQUEST by_label;
  by_label.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  by_label.LABEL = "STIFFENER TIP";
  tmrdar::REQUEST resolved;
  const float tension = job.VALUE(by_label, 250, &resolved);
  EXPECT_EQ(resolved.POSITION, tmrdar::POSITION::END);
  EXPECT_EQ(VALUE_OF({"element-force", "1", "--label", "stiffener tip"}, 250), tension);
  EXPECT_EQ(VALUE_OF({"element-force", "1", "--element", std::to_string(resolved.ELEMENT), "--position", "3"}, 250),
            tension);
}

TEST_F(ToolOnTheSample, HistoriesAreTheLibrarysValuesUnchanged) {
  tmrdar::REQUEST heave;
  heave.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::DISPLACEMENT;
  heave.NODE = 1;
  const SERIES by_label = HISTORY_OF({"displacement", "1", "--label", "HANG-OFF"});
  EXPECT_EQ(by_label.TIMES, job.TIMES());
  EXPECT_EQ(by_label.VALUES, job.HISTORY(heave));

  // The hang-off carries the top tension: its two reactions, upwards and
  // towards the vessel, make up the force at the start of element 1.
  const SERIES top = HISTORY_OF({"element-force", "1", "--element", "1", "--position", "1"});
  const SERIES vertical = HISTORY_OF({"reaction", "1", "--label", "hang-off"});
  const SERIES pull = HISTORY_OF({"reaction", "2", "--node", "1"});
  ASSERT_EQ(top.VALUES.size(), 1000U);
  ASSERT_EQ(vertical.VALUES.size(), 1000U);
  ASSERT_EQ(pull.VALUES.size(), 1000U);
  for (std::size_t i = 0; i < top.VALUES.size(); ++i) {
    EXPECT_NEAR(std::hypot(vertical.VALUES[i], pull.VALUES[i]), top.VALUES[i], 1e-4 * top.VALUES[i]) << i + 1;
  }

  // The stiffener's guide surface entry, by type name or number, moves with
  // the hang-off; --count keeps the first steps, in aligned text.
  for (const char* type : {"guide-surface", "8"}) {
    for (int32_t c = 1; c <= 3; ++c) {
      heave.SUBTYPE = c;
      EXPECT_EQ(HISTORY_OF({type, std::to_string(c), "--entry", "1"}).VALUES, job.HISTORY(heave)) << type << c;
    }
  }
  const auto three = ROWS(RUN_TOOL({"history", JOB, "reaction", "2", "--node", "1", "--count", "3"}),
                          {"step", "time", "value"}, false);
  ASSERT_EQ(three.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(REAL(three[i][2]), pull.VALUES[i]);
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
  for (const bool csv : {false, true}) {
    std::vector<std::string> arguments{"snapshot", JOB, "element-force", "1", "--step", "400"};
    if (csv) arguments.push_back("--csv");
    const auto rows = ROWS(RUN_TOOL(arguments), {"element", "position", "distance", "value"}, csv);
    ASSERT_EQ(rows.size(), snapshot.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const tmrdar::SNAPSHOT_POINT& p = snapshot[i];
      EXPECT_EQ(std::make_tuple(WHOLE(rows[i][0]), WHOLE(rows[i][1]), REAL(rows[i][2]), REAL(rows[i][3])),
                std::make_tuple(p.POINT.ELEMENT, p.POINT.POSITION, p.POINT.DISTANCE, p.VALUE)) << i;
    }
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
  EXPECT_GT(REAL(rows.front()[5]), REAL(rows.back()[5])) << "the tension is highest at the hang-off";

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

// The curves of an SVG graph the tool drew: the points of each polyline, in
// the picture's coordinates (y grows downwards).
std::vector<std::vector<std::pair<double, double>>> CURVES_IN(const std::string& text) {
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
  const auto TEXT_OF = [](const std::string& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  };
  const SERIES top = HISTORY_OF({"element-force", "1", "--element", "1", "--svg", dir.FILE("history.svg")});
  std::string text = TEXT_OF(dir.FILE("history.svg"));
  for (const char* label : {">time</text>", ">element-force 1 of element 1 at position 1</text>"}) {
    EXPECT_NE(text.find(label), std::string::npos) << label;
  }
  auto curves = CURVES_IN(text);
  ASSERT_EQ(curves.size(), 1U);
  ASSERT_EQ(curves[0].size(), top.VALUES.size());
  // The highest value is drawn highest.
  const auto highest = std::max_element(top.VALUES.begin(), top.VALUES.end()) - top.VALUES.begin();
  const auto drawn_highest =
      std::min_element(curves[0].begin(), curves[0].end(), [](auto& a, auto& b) { return a.second < b.second; }) -
      curves[0].begin();
  EXPECT_EQ(top.VALUES[static_cast<std::size_t>(drawn_highest)], top.VALUES[static_cast<std::size_t>(highest)]);

  const TOOL_RUN run = RUN_TOOL({"range", JOB, "element-force", "1", "--svg", dir.FILE("range.svg")});
  EXPECT_EQ(run.STATUS, 0) << run.ERR;
  text = TEXT_OF(dir.FILE("range.svg"));
  for (const char* label : {">distance along the riser</text>", ">minimum</text>", ">maximum</text>", ">mean</text>"}) {
    EXPECT_NE(text.find(label), std::string::npos) << label;
  }
  curves = CURVES_IN(text);
  ASSERT_EQ(curves.size(), 3U);
  for (std::size_t i = 0; i < 900; ++i) {  // the maximum above the mean, the mean above the minimum
    EXPECT_LE(curves[1].at(i).second, curves[2].at(i).second) << i;
    EXPECT_LE(curves[2].at(i).second, curves[0].at(i).second) << i;
  }
}

TEST_F(ToolOnTheSample, CurveOfATableTheSampleDoesNotHave) {
  ASSERT_EQ(job.DIMENSIONS().NUM_NONLINEAR_E_TABLES, 0);
  const TOOL_RUN run = RUN_TOOL({"curve", JOB, "1"});
  EXPECT_EQ(run.STATUS, 1);
  EXPECT_EQ(run.OUT, "");
  EXPECT_EQ(run.ERR, "tmrdar: stress-strain curve 1 is not in the database\n");
}

TEST(ToolHelp, EveryCommandHasItsHelp) {
  for (const std::string command :
       {"info", "nodes", "elements", "value", "history", "curve", "stats", "snapshot", "range"}) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{command, "--help"}, {command, JOB, "-h"}, {"help", command}}) {
      const TOOL_RUN run = RUN_TOOL(arguments);
      EXPECT_EQ(run.STATUS, 0) << command;
      EXPECT_EQ(run.ERR, "");
      EXPECT_EQ(run.OUT.rfind("usage: tmrdar " + command + " JOB", 0), 0U) << run.OUT;
    }
  }
  const TOOL_RUN run = RUN_TOOL({"--help"});
  EXPECT_EQ(run.STATUS, 0);
  for (const char* command :
       {"info", "nodes", "elements", "value", "history", "curve", "stats", "snapshot", "range"}) {
    EXPECT_NE(run.OUT.find(std::string("  ") + command + " JOB"), std::string::npos) << command;
  }
}

}  // namespace
