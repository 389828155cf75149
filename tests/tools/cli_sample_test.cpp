// Every command of the tool on the sample job, its answers checked against
// what the C++ interface gives for the same questions and against what a
// riser hanging in a wave does: it moves with the wave at the hang-off and
// lies still at touchdown, its ends hold the tension that reaches them, and
// the bend stiffener at the hang-off moves with it and pushes square to it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

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

double MEAN(const std::vector<float>& values) {
  double sum = 0.0;
  for (const float v : values) sum += v;
  return values.empty() ? 0.0 : sum / static_cast<double>(values.size());
}

double HALF_RANGE(const std::vector<float>& values) {
  const auto [low, high] = std::ranges::minmax(values);
  return 0.5 * (static_cast<double>(high) - low);
}

// The mean time between the series' upward crossings of its mean, each
// crossing placed between its two steps, and in `crossings` their number.
double PERIOD(const SERIES& series, std::size_t* crossings = nullptr) {
  const double mean = MEAN(series.VALUES);
  std::vector<double> at;
  for (std::size_t i = 1; i < series.VALUES.size(); ++i) {
    const double before = series.VALUES[i - 1];
    const double after = series.VALUES[i];
    if (before < mean && after >= mean) {
      const double f = (mean - before) / (after - before);
      at.push_back(series.TIMES[i - 1] + f * (series.TIMES[i] - series.TIMES[i - 1]));
    }
  }
  if (crossings != nullptr) *crossings = at.size();
  if (at.size() < 2) {
    ADD_FAILURE() << "the series does not swing about its mean";
    return 0.0;
  }
  return (at.back() - at.front()) / static_cast<double>(at.size() - 1);
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
  EXPECT_NEAR(times.back(), 100.0F, 1e-3F);

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
  // 10 m below the surface at the vessel, 200 m down at touchdown, falling
  // and moving away from the vessel all the way.
  EXPECT_EQ(REAL(listed.front()[3]), 0.0F);
  EXPECT_NEAR(REAL(listed.front()[5]), -10.0F, 1e-4F);
  EXPECT_NEAR(REAL(listed.back()[5]), -200.0F, 1e-3F);
  for (std::size_t i = 1; i < listed.size(); ++i) {
    EXPECT_LT(REAL(listed[i][5]), REAL(listed[i - 1][5])) << "row " << i + 1;
    EXPECT_GT(REAL(listed[i][3]), REAL(listed[i - 1][3])) << "row " << i + 1;
  }
}

TEST_F(ToolOnTheSample, ElementsListNodesLengthsAndDistancesAlongTheRiser) {
  const auto rows = ROWS(RUN_TOOL({"elements", JOB}),
                         {"kind", "element", "row", "node-1", "node-2", "length", "start", "end"}, false);
  ASSERT_EQ(rows.size(), 300U);
  double chords = 0.0;
  for (const auto& row : rows) {
    const int32_t number = WHOLE(row[1]);
    const tmrdar::ELEMENT_PROPERTIES element = job.ELEMENT(number);
    EXPECT_EQ(WHOLE(row[3]), element.NODES[0]);
    EXPECT_EQ(WHOLE(row[4]), element.NODES[1]);
    EXPECT_EQ(REAL(row[5]), element.LENGTH);
    EXPECT_EQ(REAL(row[6]), job.DISTANCE(number, tmrdar::POSITION::START));
    EXPECT_EQ(REAL(row[7]), job.DISTANCE(number, tmrdar::POSITION::END));
    // The stored length is the distance between the element's end nodes.
    const auto a = job.NODE(element.NODES[0]).COORDINATES;
    const auto b = job.NODE(element.NODES[1]).COORDINATES;
    const double chord = std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
    EXPECT_NEAR(REAL(row[5]), chord, 1e-3) << "element " << number;
    chords += chord;
  }
  // The distances run end to end from the hang-off down the whole riser.
  EXPECT_EQ(REAL(rows.front()[6]), 0.0F);
  for (std::size_t i = 1; i < rows.size(); ++i) EXPECT_EQ(rows[i][6], rows[i - 1][7]) << "element " << i + 1;
  EXPECT_NEAR(REAL(rows.back()[7]), chords, 0.05);

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
  EXPECT_NE(WHOLE(all[299][10]), WHOLE(all[0][10])) << "the touchdown zone has a section of its own";
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

  // The element label at the stiffener's tip names the end of an element a
  // few metres down the riser, and the tool asks for that end.
  tmrdar::REQUEST by_label;
  by_label.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  by_label.LABEL = "STIFFENER TIP";
  tmrdar::REQUEST resolved;
  const float tension = job.VALUE(by_label, 250, &resolved);
  EXPECT_EQ(resolved.POSITION, tmrdar::POSITION::END);
  const float depth = job.DISTANCE(resolved.ELEMENT, tmrdar::POSITION::END);
  EXPECT_GT(depth, 2.0F);
  EXPECT_LT(depth, 10.0F);
  EXPECT_EQ(VALUE_OF({"element-force", "1", "--label", "stiffener tip"}, 250), tension);
  EXPECT_EQ(VALUE_OF({"element-force", "1", "--element", std::to_string(resolved.ELEMENT), "--position", "3"}, 250),
            tension);
}

TEST_F(ToolOnTheSample, TheHangOffHeavesWithTheWaveAndTouchdownLiesStill) {
  const SERIES wave = HISTORY_OF({"surface-elevation"});
  const SERIES heave = HISTORY_OF({"displacement", "1", "--label", "HANG-OFF"});
  const SERIES still = HISTORY_OF({"displacement", "1", "--label", "TOUCHDOWN"});
  ASSERT_EQ(heave.VALUES.size(), 1000U);
  ASSERT_EQ(wave.VALUES.size(), 1000U);
  ASSERT_EQ(still.VALUES.size(), 1000U);
  EXPECT_EQ(heave.TIMES, job.TIMES());

  // Ten periods of a 10 s wave, which the hang-off follows, heaving about
  // its place in the model by a little less than the wave's height.
  std::size_t crossings = 0;
  EXPECT_NEAR(PERIOD(wave, &crossings), 10.0, 0.05);
  EXPECT_GE(crossings, 9U);
  EXPECT_LE(crossings, 10U);
  EXPECT_NEAR(PERIOD(heave), 10.0, 0.01);
  EXPECT_NEAR(MEAN(heave.VALUES), job.NODE(1).COORDINATES[2], 0.01);
  EXPECT_NEAR(HALF_RANGE(wave.VALUES), 1.0, 0.3);
  EXPECT_GT(HALF_RANGE(heave.VALUES), 0.5 * HALF_RANGE(wave.VALUES));
  EXPECT_LE(HALF_RANGE(heave.VALUES), HALF_RANGE(wave.VALUES));
  EXPECT_NEAR(MEAN(still.VALUES), job.NODE(job.DIMENSIONS().NUM_NODES).COORDINATES[2], 1e-3);
  EXPECT_LT(HALF_RANGE(still.VALUES), 0.01);

  // The velocity is the rate of the heave.
  const SERIES rate = HISTORY_OF({"velocity", "1", "--node", "1"});
  ASSERT_EQ(rate.VALUES.size(), heave.VALUES.size());
  const double peak = HALF_RANGE(rate.VALUES);
  EXPECT_GT(peak, 0.1);
  for (std::size_t i = 1; i + 1 < heave.VALUES.size(); ++i) {
    const double slope = (heave.VALUES[i + 1] - heave.VALUES[i - 1]) / (heave.TIMES[i + 1] - heave.TIMES[i - 1]);
    EXPECT_NEAR(rate.VALUES[i], slope, 0.02 * peak) << "step " << i + 1;
  }
}

TEST_F(ToolOnTheSample, TheEndsHoldTheTensionThatReachesThem) {
  const SERIES top = HISTORY_OF({"element-force", "1", "--element", "1", "--position", "1"});
  const SERIES bottom = HISTORY_OF({"element-force", "1", "--element", "300", "--position", "3"});
  const SERIES vertical = HISTORY_OF({"reaction", "1", "--label", "hang-off"});
  const SERIES pull = HISTORY_OF({"reaction", "2", "--node", "1"});
  const SERIES anchor = HISTORY_OF({"reaction", "2", "--label", "touchdown"});
  ASSERT_EQ(top.VALUES.size(), 1000U);
  for (const SERIES* s : {&bottom, &vertical, &pull, &anchor}) ASSERT_EQ(s->VALUES.size(), 1000U);
  for (std::size_t i = 0; i < top.VALUES.size(); ++i) {
    EXPECT_GT(top.VALUES[i], 1.5F * bottom.VALUES[i]) << "step " << i + 1;
    EXPECT_GT(bottom.VALUES[i], 0.0F) << "step " << i + 1;
    // The hang-off carries the top tension, upwards and towards the vessel.
    EXPECT_GT(vertical.VALUES[i], 0.0F);
    EXPECT_LT(pull.VALUES[i], 0.0F);
    EXPECT_NEAR(std::hypot(vertical.VALUES[i], pull.VALUES[i]), top.VALUES[i], 1e-4 * top.VALUES[i]);
    EXPECT_NEAR(std::abs(anchor.VALUES[i]), bottom.VALUES[i], 1e-4 * bottom.VALUES[i]);
  }
  EXPECT_NEAR(PERIOD(top), 10.0, 0.01);
  EXPECT_GT(HALF_RANGE(top.VALUES), HALF_RANGE(bottom.VALUES));

  // The bending moment grows towards touchdown.
  float before = 0.0F;
  for (const char* element : {"1", "100", "200", "300"}) {
    const float moment = VALUE_OF({"element-force", "2", "--element", element, "--position", "3"}, 500);
    EXPECT_GT(moment, before) << "element " << element;
    before = moment;
  }

  const auto three = ROWS(RUN_TOOL({"history", JOB, "reaction", "2", "--node", "301", "--count", "3"}),
                          {"step", "time", "value"}, false);
  ASSERT_EQ(three.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(REAL(three[i][2]), anchor.VALUES[i]);
}

TEST_F(ToolOnTheSample, TheBendStiffenerMovesWithTheHangOffAndPushesSquareToTheRiser) {
  std::vector<SERIES> words;
  for (int32_t w = 1; w <= 9; ++w) {
    words.push_back(HISTORY_OF({w % 2 == 0 ? "guide-surface" : "8", std::to_string(w), "--entry", "1"}));
    ASSERT_EQ(words.back().VALUES.size(), 1000U) << "word " << w;
  }
  std::vector<SERIES> hang_off;
  for (const char* c : {"1", "2", "3"}) hang_off.push_back(HISTORY_OF({"displacement", c, "--node", "1"}));
  std::vector<SERIES> push;
  for (const char* c : {"1", "2", "3", "magnitude"}) {
    push.push_back(HISTORY_OF({"guide-surface-reaction", c, "--entry", "1"}));
    ASSERT_EQ(push.back().VALUES.size(), 1000U) << "component " << c;
  }
  for (std::size_t i = 0; i < 1000; ++i) {
    const auto at = [&](std::size_t w) { return static_cast<double>(words[w - 1].VALUES[i]); };
    for (std::size_t c = 0; c < 3; ++c) EXPECT_EQ(words[c].VALUES[i], hang_off[c].VALUES[i]) << "step " << i + 1;
    EXPECT_NEAR(std::hypot(at(4), at(5), at(6)), 1.0, 1e-5) << "step " << i + 1;
    EXPECT_NEAR(std::hypot(at(7), at(8), at(9)), 1.0, 1e-5) << "step " << i + 1;
    EXPECT_NEAR(at(4) * at(7) + at(5) * at(8) + at(6) * at(9), 0.0, 1e-5) << "step " << i + 1;
    // The axis points down the riser, towards touchdown.
    EXPECT_LT(at(4), -0.5);
    EXPECT_GT(at(5), 0.0);

    const double f1 = push[0].VALUES[i], f2 = push[1].VALUES[i], f3 = push[2].VALUES[i];
    const double magnitude = push[3].VALUES[i];
    EXPECT_GT(magnitude, 1.0) << "step " << i + 1;
    EXPECT_NEAR(magnitude, std::hypot(f1, f2, f3), 1e-5 * magnitude) << "step " << i + 1;
    EXPECT_NEAR((f1 * at(4) + f2 * at(5) + f3 * at(6)) / magnitude, 0.0, 1e-5) << "step " << i + 1;
  }
  EXPECT_NEAR(PERIOD(push[3]), 10.0, 0.01);
}

TEST_F(ToolOnTheSample, CurveOfATableTheSampleDoesNotHave) {
  ASSERT_EQ(job.DIMENSIONS().NUM_NONLINEAR_E_TABLES, 0);
  const TOOL_RUN run = RUN_TOOL({"curve", JOB, "1"});
  EXPECT_EQ(run.STATUS, 1);
  EXPECT_EQ(run.OUT, "");
  EXPECT_EQ(run.ERR, "tmrdar: stress-strain curve 1 is not in the database\n");
}

TEST(ToolHelp, EveryCommandHasItsHelp) {
  for (const std::string command : {"info", "nodes", "elements", "value", "history", "curve"}) {
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
  for (const char* command : {"info", "nodes", "elements", "value", "history", "curve"}) {
    EXPECT_NE(run.OUT.find(std::string("  ") + command + " JOB"), std::string::npos) << command;
  }
}

}  // namespace
