// Every command of the tool on the sample job, its answers checked against
// what the C++ interface gives for the same questions.
#include <gtest/gtest.h>

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
  EXPECT_EQ(WHOLE(field("time steps")), job.DIMENSIONS().NUM_TIME_STEPS);
  EXPECT_EQ(WHOLE(field("elements")), 60);
  EXPECT_EQ(WHOLE(field("nodes")), 61);
  EXPECT_EQ(WHOLE(field("labels")), 2);
  const std::string range = field("time range");
  const std::vector<float> times = job.TIMES();
  EXPECT_EQ(REAL(range.substr(0, range.find(" to "))), times.front()) << range;
  EXPECT_EQ(REAL(range.substr(range.find(" to ") + 4)), times.back()) << range;

  const TOOL_RUN csv = RUN_TOOL({"info", JOB + ".dbm", "--csv"});
  const std::vector<std::string> lines = LINES(csv.OUT);
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.front(), "field,value");
  EXPECT_NE(std::find(lines.begin(), lines.end(), "title,Sample catenary riser in a regular wave"), lines.end());
  EXPECT_NE(std::find(lines.begin(), lines.end(), "nodes,61"), lines.end());
}

TEST_F(ToolOnTheSample, NodesListEveryNodeWithItsCoordinates) {
  for (const bool csv : {false, true}) {
    std::vector<std::string> arguments{"nodes", JOB};
    if (csv) arguments.push_back("--csv");
    const auto rows = ROWS(RUN_TOOL(arguments), {"kind", "node", "row", "x", "y", "z"}, csv);
    ASSERT_EQ(rows.size(), 61U);
    for (const auto& row : rows) {
      const tmrdar::NODE_PROPERTIES node = job.NODE(WHOLE(row[1]));
      EXPECT_EQ(row[0], "structure");
      EXPECT_EQ(WHOLE(row[2]), node.ROW);
      for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(REAL(row[3 + i]), node.COORDINATES[i]) << row[1];
    }
  }
}

TEST_F(ToolOnTheSample, ElementsListNodesLengthsAndDistancesAlongTheRiser) {
  const auto rows = ROWS(RUN_TOOL({"elements", JOB}),
                         {"kind", "element", "row", "node-1", "node-2", "length", "start", "end"}, false);
  ASSERT_EQ(rows.size(), 60U);
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
  ASSERT_EQ(all.size(), 60U);
  const tmrdar::ELEMENT_PROPERTIES last = job.ELEMENT(60);
  EXPECT_EQ(WHOLE(all[59][10]), last.SECTION_2);
  EXPECT_EQ(REAL(all[59][12]), last.EXTERNAL_FLUID[0]);
  EXPECT_EQ(REAL(all[59][16]), last.B1_TO_B4[1]);
  EXPECT_EQ(REAL(all[59][19]), last.SECTION_3);
}

TEST_F(ToolOnTheSample, ValueByNumberNameOrLabelWithItsTime) {
  const std::vector<float> times = job.TIMES();
  tmrdar::REQUEST displacement;
  displacement.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::DISPLACEMENT;
  displacement.SUBTYPE = 3;
  displacement.NODE = 12;
  for (const std::string type : {"displacement", "5", "Displacement"}) {
    const auto rows =
        ROWS(RUN_TOOL({"value", JOB, type, "3", "--node", "12", "--step", "40"}), {"step", "time", "value"}, false);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0][0], "40");
    EXPECT_EQ(REAL(rows[0][1]), times[39]);
    EXPECT_EQ(REAL(rows[0][2]), job.VALUE(displacement, 40)) << type;
  }

  // The node label of the hang-off, and the element label at touchdown,
  // whose kind places it at the element's middle.
  displacement.NODE = 1;
  auto rows = ROWS(RUN_TOOL({"value", JOB, "displacement", "3", "--label", "hang-off", "--step=7", "--csv"}),
                   {"step", "time", "value"}, true);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(REAL(rows[0][2]), job.VALUE(displacement, 7));
  tmrdar::REQUEST force;
  force.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  force.ELEMENT = 60;
  force.POSITION = tmrdar::POSITION::MIDDLE;
  rows = ROWS(RUN_TOOL({"value", JOB, "element-force", "1", "--label", "Touchdown", "--step", "100"}),
              {"step", "time", "value"}, false);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(REAL(rows[0][2]), job.VALUE(force, 100));
}

TEST_F(ToolOnTheSample, HistoryHasALineAStepWithATimeColumn) {
  tmrdar::REQUEST force;
  force.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::ELEMENT_FORCE;
  force.ELEMENT = 5;
  force.POSITION = tmrdar::POSITION::MIDDLE;
  const std::vector<float> expected = job.HISTORY(force);
  const std::vector<float> times = job.TIMES();
  const auto rows =
      ROWS(RUN_TOOL({"history", JOB, "element-force", "1", "--element", "5", "--position", "2", "--csv"}),
           {"step", "time", "value"}, true);
  ASSERT_EQ(rows.size(), expected.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(WHOLE(rows[i][0]), static_cast<int32_t>(i) + 1);
    EXPECT_EQ(REAL(rows[i][1]), times[i]);
    EXPECT_EQ(REAL(rows[i][2]), expected[i]) << "step " << i + 1;
  }
  const auto three = ROWS(RUN_TOOL({"history", JOB, "reaction", "resultant", "--node", "61", "--count", "3"}),
                          {"step", "time", "value"}, false);
  tmrdar::REQUEST reaction;
  reaction.OUTPUT_TYPE = tmrdar::OUTPUT_TYPE::REACTION;
  reaction.SUBTYPE = tmrdar::NODAL::RESULTANT_4_TO_6;
  reaction.NODE = 61;
  ASSERT_EQ(three.size(), 3U);
  EXPECT_EQ(REAL(three[2][2]), job.HISTORY(reaction, 3)[2]);
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
