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
  EXPECT_EQ(field("motion file"), JOB + ".dbm: version code 13 (V861)");
  EXPECT_EQ(field("force file"), JOB + ".dbf: version code 13 (V861)");
  EXPECT_EQ(field("format"), "V861");
  EXPECT_EQ(field("title"), job.DETAILS().TITLE);
  EXPECT_EQ(WHOLE(field("time steps")), 1000);
  EXPECT_EQ(WHOLE(field("elements")), 300);
  EXPECT_EQ(WHOLE(field("nodes")), 301);
  EXPECT_EQ(WHOLE(field("labels")), 3);
  EXPECT_EQ(WHOLE(field("boundary conditions")), 2);
  EXPECT_EQ(WHOLE(field("guide surfaces")), 1);
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

// An element-force request at a point along the riser.
tmrdar::REQUEST TENSION_AT(int32_t element, int32_t position) {
  tmrdar::REQUEST request;
  request.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  request.SUBTYPE = tmrdar::ELEMENT_FORCE::SECTION_1;
  request.ELEMENT = element;
  request.POSITION = position;
  return request;
}

TEST_F(ToolOnTheSample, SnapshotIsTheRiserAtOneStepValueByValue) {
  for (const bool csv : {false, true}) {
    std::vector<std::string> arguments{"snapshot", JOB, "element-force", "1", "--step", "400"};
    if (csv) arguments.push_back("--csv");
    const auto rows = ROWS(RUN_TOOL(arguments), {"element", "position", "distance", "value"}, csv);
    ASSERT_EQ(rows.size(), 900U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const int32_t element = WHOLE(rows[i][0]);
      const int32_t position = WHOLE(rows[i][1]);
      EXPECT_EQ(element, static_cast<int32_t>(i / 3) + 1);
      EXPECT_EQ(position, static_cast<int32_t>(i % 3) + 1);
      EXPECT_EQ(REAL(rows[i][2]), job.DISTANCE(element, position)) << i;
      EXPECT_EQ(REAL(rows[i][3]), job.VALUE(TENSION_AT(element, position), 400)) << i;
    }
  }
  // Results of a node: each node once, from the hang-off to the seabed.
  const auto nodes = ROWS(RUN_TOOL({"snapshot", JOB, "displacement", "2", "--step", "7", "--csv"}),
                          {"node", "distance", "value"}, true);
  ASSERT_EQ(nodes.size(), 301U);
  tmrdar::REQUEST sway;
  sway.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::DISPLACEMENT;
  sway.SUBTYPE = 2;
  for (const std::size_t i : {0, 1, 150, 299, 300}) {
    sway.NODE = WHOLE(nodes[i][0]);
    EXPECT_EQ(sway.NODE, static_cast<int32_t>(i) + 1);
    EXPECT_EQ(REAL(nodes[i][2]), job.VALUE(sway, 7)) << i;
  }
  EXPECT_EQ(REAL(nodes[300][1]), job.DISTANCE(300, tmrdar::POSITION::END));
}

TEST_F(ToolOnTheSample, RangeGraphOfTheEffectiveTensionAlongTheRiser) {
  const std::vector<std::string> columns{"element",      "position", "distance", "minimum", "minimum-step",
                                         "maximum",      "maximum-step", "mean", "standard-deviation"};
  for (const auto& [first, last] : std::vector<std::pair<int32_t, int32_t>>{{1, 1000}, {500, 620}}) {
    std::vector<std::string> arguments{"range", JOB, "element-force", "1", "--csv"};
    if (first != 1) arguments.insert(arguments.end(), {"--from", std::to_string(first), "--to", std::to_string(last)});
    const auto rows = ROWS(RUN_TOOL(arguments), columns, true);
    ASSERT_EQ(rows.size(), 900U);
    for (std::size_t i = 0; i < rows.size(); i += 7) {
      const int32_t element = WHOLE(rows[i][0]);
      const int32_t position = WHOLE(rows[i][1]);
      const tmrdar::REQUEST at = TENSION_AT(element, position);
      EXPECT_EQ(REAL(rows[i][2]), job.DISTANCE(element, position));
      // The extremes are the single values at their steps, and no step of
      // the range goes beyond them.
      const int32_t low = WHOLE(rows[i][4]);
      const int32_t high = WHOLE(rows[i][6]);
      ASSERT_TRUE(low >= first && low <= last && high >= first && high <= last) << low << " " << high;
      EXPECT_EQ(REAL(rows[i][3]), job.VALUE(at, low)) << i;
      EXPECT_EQ(REAL(rows[i][5]), job.VALUE(at, high)) << i;
      const std::vector<float> history = job.HISTORY(at);
      double sum = 0.0;
      for (int32_t step = first; step <= last; ++step) {
        const float value = history[static_cast<std::size_t>(step - 1)];
        EXPECT_GE(value, REAL(rows[i][3]));
        EXPECT_LE(value, REAL(rows[i][5]));
        sum += value;
      }
      EXPECT_NEAR(std::strtod(rows[i][7].c_str(), nullptr), sum / (last - first + 1), 1e-9 * std::abs(sum)) << i;
      EXPECT_GT(std::strtod(rows[i][8].c_str(), nullptr), 0.0) << "a regular wave moves every point";
    }
  }
  // The tension is highest at the hang-off, where the wave's tension adds most.
  const auto text = ROWS(RUN_TOOL({"range", JOB, "element-force", "1"}), columns, false);
  ASSERT_EQ(text.size(), 900U);
  EXPECT_GT(REAL(text.front()[5]), REAL(text.back()[5]));
}

TEST_F(ToolOnTheSample, StatsOfOneHistory) {
  const tmrdar::REQUEST top = TENSION_AT(1, tmrdar::POSITION::START);
  const std::vector<std::string> columns{"first-step",   "last-step", "minimum", "minimum-step",
                                         "maximum",      "maximum-step", "mean", "standard-deviation"};
  const auto rows = ROWS(RUN_TOOL({"stats", JOB, "element-force", "1", "--element", "1", "--from", "200", "--csv"}),
                         columns, true);
  ASSERT_EQ(rows.size(), 1U);
  const std::vector<float> history = job.HISTORY_STEPS(top, 200, 1000);
  const tmrdar::HISTORY_STATISTICS stats = tmrdar::STATISTICS_OF(history.data(), history.size(), 200);
  EXPECT_EQ(std::make_pair(WHOLE(rows[0][0]), WHOLE(rows[0][1])), std::make_pair(200, 1000));
  EXPECT_EQ(REAL(rows[0][2]), job.VALUE(top, WHOLE(rows[0][3])));
  EXPECT_EQ(REAL(rows[0][4]), job.VALUE(top, WHOLE(rows[0][5])));
  EXPECT_EQ(std::make_pair(WHOLE(rows[0][3]), WHOLE(rows[0][5])),
            std::make_pair(stats.MINIMUM_STEP, stats.MAXIMUM_STEP));
  EXPECT_EQ(std::strtod(rows[0][6].c_str(), nullptr), stats.MEAN);
  EXPECT_EQ(std::strtod(rows[0][7].c_str(), nullptr), stats.STANDARD_DEVIATION);
}

// The curves of an SVG graph the tool drew: the points of each polyline, in
// the picture's coordinates (y grows downwards).
struct DRAWN {
  std::string TEXT;
  std::vector<std::vector<std::pair<double, double>>> CURVES;
};
DRAWN DRAWN_IN(const std::string& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  DRAWN drawn{text.str(), {}};
  EXPECT_EQ(drawn.TEXT.rfind("<svg xmlns=\"http://www.w3.org/2000/svg\"", 0), 0U);
  EXPECT_GE(drawn.TEXT.size(), 7U);
  EXPECT_EQ(drawn.TEXT.substr(drawn.TEXT.size() - 7), "</svg>\n");
  const std::string mark = "<polyline class=\"curve\"";
  for (std::size_t at = drawn.TEXT.find(mark); at != std::string::npos; at = drawn.TEXT.find(mark, at + 1)) {
    const std::size_t begin = drawn.TEXT.find("points=\"", at) + 8;
    std::istringstream points(drawn.TEXT.substr(begin, drawn.TEXT.find('"', begin) - begin));
    std::vector<std::pair<double, double>> curve;
    double x = 0.0;
    double y = 0.0;
    char comma = 0;
    while (points >> x >> comma >> y) curve.emplace_back(x, y);
    drawn.CURVES.push_back(curve);
  }
  return drawn;
}

TEST_F(ToolOnTheSample, GraphsOfAHistoryAndOfARangeGraph) {
  tmrdar::testing::SCRATCH_DIR dir;
  const std::string path = dir.FILE("history.svg");
  const SERIES top = HISTORY_OF({"element-force", "1", "--element", "1", "--svg", path});
  ASSERT_EQ(top.VALUES.size(), 1000U);
  DRAWN drawn = DRAWN_IN(path);
  EXPECT_NE(drawn.TEXT.find(">time</text>"), std::string::npos);
  EXPECT_NE(drawn.TEXT.find(">element-force 1</text>"), std::string::npos);
  EXPECT_NE(drawn.TEXT.find(">element-force 1 of element 1 at position 1</text>"), std::string::npos);
  ASSERT_EQ(drawn.CURVES.size(), 1U);
  ASSERT_EQ(drawn.CURVES[0].size(), 1000U);
  // Time runs to the right, and the highest value is drawn highest.
  const auto& curve = drawn.CURVES[0];
  for (std::size_t i = 1; i < curve.size(); ++i) EXPECT_GT(curve[i].first, curve[i - 1].first) << i;
  const auto highest = std::max_element(top.VALUES.begin(), top.VALUES.end()) - top.VALUES.begin();
  const auto drawn_highest = std::min_element(curve.begin(), curve.end(), [](const auto& a, const auto& b) {
                               return a.second < b.second;
                             }) - curve.begin();
  EXPECT_EQ(top.VALUES[static_cast<std::size_t>(drawn_highest)], top.VALUES[static_cast<std::size_t>(highest)]);

  const std::string range = dir.FILE("range.svg");
  const TOOL_RUN run = RUN_TOOL({"range", JOB, "element-force", "1", "--from", "100", "--svg", range});
  EXPECT_EQ(run.STATUS, 0) << run.ERR;
  EXPECT_EQ(LINES(run.OUT).size(), 901U);
  drawn = DRAWN_IN(range);
  EXPECT_NE(drawn.TEXT.find(">distance along the riser</text>"), std::string::npos);
  for (const char* key : {">minimum</text>", ">maximum</text>", ">mean</text>"}) {
    EXPECT_NE(drawn.TEXT.find(key), std::string::npos) << key;
  }
  ASSERT_EQ(drawn.CURVES.size(), 3U);
  for (const auto& drawn_curve : drawn.CURVES) ASSERT_EQ(drawn_curve.size(), 900U);
  for (std::size_t i = 0; i < 900; ++i) {
    const double x = drawn.CURVES[0][i].first;
    EXPECT_TRUE(drawn.CURVES[1][i].first == x && drawn.CURVES[2][i].first == x) << i;
    // The maximum above the mean, the mean above the minimum.
    EXPECT_LE(drawn.CURVES[1][i].second, drawn.CURVES[2][i].second) << i;
    EXPECT_LE(drawn.CURVES[2][i].second, drawn.CURVES[0][i].second) << i;
  }
  EXPECT_LT(drawn.CURVES[0].front().first, drawn.CURVES[0].back().first) << "the riser's top on the left";
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
