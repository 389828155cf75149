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

using tmrdar::testing::fields_of;
using tmrdar::testing::lines_of;
using tmrdar::testing::run_tool;
using tmrdar::testing::ToolRun;

const std::string sample_job = TMRDAR_SAMPLE_JOB;

float real_of(const std::string& text) {
  char* end = nullptr;
  const float value = std::strtof(text.c_str(), &end);
  EXPECT_EQ(*end, '\0') << "not a number: " << text;
  return value;
}

int32_t whole(const std::string& text) { return static_cast<int32_t>(std::stol(text)); }

// The rows of a table the tool printed, a vector of fields each, without
// the column names, which must be `names`.
std::vector<std::vector<std::string>> table_rows(const ToolRun& run, const std::vector<std::string>& names, bool csv) {
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.err, "");
  std::vector<std::vector<std::string>> rows;
  for (const std::string& line : lines_of(run.out)) rows.push_back(fields_of(line, csv ? ',' : ' '));
  EXPECT_EQ(rows.empty() ? std::vector<std::string>() : rows.front(), names);
  if (!rows.empty()) rows.erase(rows.begin());
  for (const auto& row : rows) EXPECT_EQ(row.size(), names.size()) << "a row of " << row.size() << " fields";
  return rows;
}

// A history as the tool prints it: `tmrdar history job <arguments> --csv`.
struct Series {
  std::vector<float> times;
  std::vector<float> values;
};
Series history_of(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{"history", sample_job};
  command.insert(command.end(), arguments.begin(), arguments.end());
  command.push_back("--csv");
  Series series;
  for (const auto& row : table_rows(run_tool(command), {"step", "time", "value"}, true)) {
    if (row.size() != 3) continue;
    EXPECT_EQ(whole(row[0]), static_cast<int32_t>(series.values.size()) + 1);
    series.times.push_back(real_of(row[1]));
    series.values.push_back(real_of(row[2]));
  }
  return series;
}

// One value as the tool prints it: `tmrdar value job <arguments> --step N`.
float value_of(std::vector<std::string> arguments, int32_t step) {
  arguments.insert(arguments.begin(), {"value", sample_job});
  arguments.insert(arguments.end(), {"--step", std::to_string(step)});
  const auto rows = table_rows(run_tool(arguments), {"step", "time", "value"}, false);
  if (rows.size() != 1 || rows[0].size() != 3) {
    ADD_FAILURE() << "not one value";
    return NAN;
  }
  EXPECT_EQ(whole(rows[0][0]), step);
  return real_of(rows[0][2]);
}

class ToolOnTheSample : public ::testing::Test {
 protected:
  tmrdar::job job{sample_job};
};

TEST_F(ToolOnTheSample, InfoTellsFilesFormatTitleDimensionsAndTimeRange) {
  const std::vector<float> times = job.times();
  std::ostringstream range;
  range << times.front() << " to " << times.back();
  const std::string words = "2026 11 21 0 0";
  const std::vector<std::vector<std::string>> expected{
      {"field", "value"}, {"job", sample_job + ".dbm"}, {"motion file", sample_job + ".dbm: version code 13 (V861)"},
      {"motion file words 4-8", words}, {"force file", sample_job + ".dbf: version code 13 (V861)"},
      {"force file words 4-8", words}, {"format", "V861"}, {"title", job.details().title},
      {"analysis detail 1", "2"}, {"analysis detail 2", "1"}, {"analysis detail 3", "1025"},
      {"time steps", std::to_string(times.size())}, {"pipe-in-pipe rows per connection", "0"}, {"elements", "300"},
      {"nodes", "301"}, {"auxiliary elements", "0"}, {"auxiliary nodes", "0"}, {"labels", "3"},
      {"boundary conditions", "2"}, {"guide surfaces", "1"}, {"zero gap guides", "0"},
      {"pipe-in-pipe connections", "0"}, {"pipe-in-pipe reaction entries", "0"}, {"clash pairs", "0"},
      {"stress-strain table rows", "0"}, {"time range", range.str()}};
  const ToolRun csv = run_tool({"info", sample_job + ".dbm", "--csv"});
  std::vector<std::vector<std::string>> fields;
  for (const std::string& line : lines_of(csv.out)) fields.push_back(fields_of(line, ','));
  EXPECT_EQ(fields, expected) << csv.out;
}

// Every field of every element, the whole table, is the interface's.
TEST_F(ToolOnTheSample, ElementsListNodesLengthsAndDistancesAlongTheRiser) {
  const auto all = table_rows(run_tool({"elements", sample_job, "--all", "--csv"}),
                        {"kind", "element",   "row",       "node-1",  "node-2",  "length",  "start", "end", "a8",
                         "b5",   "section-2", "section-4", "fluid-1", "fluid-2", "fluid-3", "b1",    "b2",  "b3",
                         "b4",   "section-3", "a6",        "a7",      "b6",      "b7",      "b8",    "c1"},
                        true);
  ASSERT_EQ(all.size(), 300U);
  for (const auto& row : all) {
    const int32_t n = whole(row[1]);
    const tmrdar::element_properties e = job.element(n);
    const auto f = [](int32_t i) { return static_cast<float>(i); };
    std::vector<float> listed;
    for (std::size_t i = 2; i < row.size(); ++i) listed.push_back(real_of(row[i]));
    EXPECT_EQ(row[0], "structure");
    EXPECT_EQ(listed, (std::vector<float>{f(e.row), f(e.nodes[0]), f(e.nodes[1]), e.length,
                                          job.distance(n, tmrdar::position::start),
                                          job.distance(n, tmrdar::position::end), f(e.a8), f(e.b5), f(e.section_2),
                                          f(e.section_4), e.external_fluid[0], e.external_fluid[1],
                                          e.external_fluid[2], e.b1_to_b4[0], e.b1_to_b4[1], e.b1_to_b4[2],
                                          e.b1_to_b4[3], e.section_3, e.a6, e.a7, e.b6_to_b8[0], e.b6_to_b8[1],
                                          e.b6_to_b8[2], e.c1}))
        << n;
  }
}

TEST_F(ToolOnTheSample, ValueByNumberNameOrLabelWithItsTime) {
  const auto rows = table_rows(run_tool({"value", sample_job, "Displacement", "1", "--node", "12", "--step=400"}),
                         {"step", "time", "value"}, false);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(real_of(rows[0][1]), job.times()[399]);
  // The element label at the stiffener's tip names the end of an element,
  // and the tool asks for that end.
  tmrdar::request tip;
  tip.output_type = tmrdar::output_type::element_force;
  tip.label = "STIFFENER TIP";
  tmrdar::request resolved;
  const float tension = job.value(tip, 250, &resolved);
  EXPECT_EQ(resolved.position, tmrdar::position::end);
  const auto request = [](int32_t type, int32_t subtype, int32_t node, int32_t element, int32_t position) {
    tmrdar::request r;
    r.output_type = type, r.subtype = subtype, r.node = node, r.element = element, r.position = position;
    return r;
  };
  const std::string tip_element = std::to_string(resolved.element);
  const std::vector<std::tuple<std::vector<std::string>, int32_t, float>> cases{
      {{"displacement", "1", "--node", "12"}, 400, job.value(request(5, 1, 12, 0, 1), 400)},
      {{"5", "1", "--node", "12"}, 400, job.value(request(5, 1, 12, 0, 1), 400)},
      {{"displacement", "2", "--label", "Touchdown"}, 7, job.value(request(5, 2, 301, 0, 1), 7)},
      {{"element-force", "1", "--label", "stiffener tip"}, 250, tension},
      {{"element-force", "1", "--element", tip_element, "--position", "3"}, 250, tension}};
  for (const auto& [arguments, step, value] : cases) EXPECT_EQ(value_of(arguments, step), value) << arguments[0];
}

TEST_F(ToolOnTheSample, HistoriesAreTheLibrarysValuesUnchanged) {
  tmrdar::request heave;
  heave.output_type = tmrdar::output_type::displacement;
  heave.node = 1;
  const Series by_label = history_of({"displacement", "1", "--label", "HANG-OFF"});
  EXPECT_EQ(by_label.times, job.times());
  EXPECT_EQ(by_label.values, job.history(heave));

  // The stiffener's guide surface entry, by type name or number, moves with
  // the hang-off; --count keeps the first steps, in aligned text.
  for (const auto& [type, c] : {std::pair{"guide-surface", 1}, {"8", 3}}) {
    heave.subtype = c;
    EXPECT_EQ(history_of({type, std::to_string(c), "--entry", "1"}).values, job.history(heave)) << type << c;
  }
  heave.subtype = 1;
  const auto three = table_rows(run_tool({"history", sample_job, "displacement", "1", "--node", "1", "--count", "3"}),
                          {"step", "time", "value"}, false);
  ASSERT_EQ(three.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(real_of(three[i][2]), by_label.values[i]);
}

// The effective tension (element force 1), as a request the interface takes.
tmrdar::request tension(int32_t element = 0) {
  tmrdar::request request;
  request.output_type = tmrdar::output_type::element_force;
  request.subtype = tmrdar::element_force::section_1;
  request.element = element;
  request.position = tmrdar::position::start;
  return request;
}

// The tool's snapshots, range graphs and statistics are the interface's,
// whose values the interface's own tests hold against single requests.
TEST_F(ToolOnTheSample, SnapshotRangeAndStatsAreTheInterfacesAnswers) {
  const std::vector<tmrdar::snapshot_point> snapshot = job.snapshot(tension(), 400);
  const auto points = table_rows(run_tool({"snapshot", sample_job, "element-force", "1", "--step", "400"}),
                           {"element", "position", "distance", "value"}, false);
  ASSERT_EQ(points.size(), snapshot.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    const tmrdar::snapshot_point& p = snapshot[i];
    EXPECT_EQ(std::make_tuple(whole(points[i][0]), whole(points[i][1]), real_of(points[i][2]), real_of(points[i][3])),
              std::make_tuple(p.point.element, p.point.position, p.point.distance, p.value)) << i;
  }

  const auto nodes = table_rows(run_tool({"snapshot", sample_job, "displacement", "2", "--step", "7", "--csv"}),
                          {"node", "distance", "value"}, true);
  EXPECT_EQ(nodes.size(), 301U) << "each node once, from the hang-off to the seabed";
  const std::vector<tmrdar::range_point> graph = job.range_graph(tension(), 500, 620);
  const auto rows = table_rows(run_tool({"range", sample_job, "element-force", "1", "--from", "500", "--to", "620", "--csv"}),
                         {"element", "position", "distance", "minimum", "minimum-step", "maximum", "maximum-step",
                          "mean", "standard-deviation"},
                         true);
  ASSERT_EQ(rows.size(), graph.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const tmrdar::history_statistics& s = graph[i].statistics;
    EXPECT_EQ(std::make_tuple(real_of(rows[i][3]), whole(rows[i][4]), real_of(rows[i][5]), whole(rows[i][6]),
                              std::strtod(rows[i][7].c_str(), nullptr), std::strtod(rows[i][8].c_str(), nullptr)),
              std::make_tuple(s.minimum, s.minimum_step, s.maximum, s.maximum_step, s.mean, s.standard_deviation))
        << i;
  }

  const tmrdar::history_statistics s = job.statistics(tension(1), 200, 1000);
  const auto stats = table_rows(run_tool({"stats", sample_job, "element-force", "1", "--element", "1", "--from", "200", "--csv"}),
                          {"first-step", "last-step", "minimum", "minimum-step", "maximum", "maximum-step", "mean",
                           "standard-deviation"},
                          true);
  ASSERT_EQ(stats.size(), 1U);
  EXPECT_EQ(std::make_tuple(whole(stats[0][0]), whole(stats[0][1]), real_of(stats[0][2]), whole(stats[0][3]),
                            real_of(stats[0][4]), whole(stats[0][5]), std::strtod(stats[0][6].c_str(), nullptr)),
            std::make_tuple(200, 1000, s.minimum, s.minimum_step, s.maximum, s.maximum_step, s.mean));
}

// The curves of an SVG graph the tool drew, each a list of points in the
// picture's coordinates (y grows downwards), and whether it has each label.
std::vector<std::vector<std::pair<double, double>>> curves_in(const std::string& path,
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
  tmrdar::testing::ScratchDir dir;
  const Series top = history_of({"element-force", "1", "--element", "1", "--svg", dir.file("history.svg")});
  auto curves = curves_in(dir.file("history.svg"), {"time", "element-force 1 of element 1 at position 1"});
  ASSERT_EQ(curves.size(), 1U);
  ASSERT_EQ(curves[0].size(), top.values.size());
  // The highest value is drawn highest.
  const auto lowest_y = [](auto& a, auto& b) { return a.second < b.second; };
  const auto drawn_highest = std::min_element(curves[0].begin(), curves[0].end(), lowest_y) - curves[0].begin();
  EXPECT_EQ(top.values.at(static_cast<std::size_t>(drawn_highest)),
            *std::max_element(top.values.begin(), top.values.end()));

  EXPECT_EQ(run_tool({"range", sample_job, "element-force", "1", "--svg", dir.file("range.svg")}).status, 0);
  curves = curves_in(dir.file("range.svg"), {"distance along the riser", "minimum", "maximum", "mean"});
  ASSERT_EQ(curves.size(), 3U);
  for (std::size_t i = 0; i < 900; ++i) {  // the maximum above the mean, the mean above the minimum
    EXPECT_LE(curves[1].at(i).second, curves[2].at(i).second) << i;
    EXPECT_LE(curves[2].at(i).second, curves[0].at(i).second) << i;
  }
}

TEST(ToolHelp, EveryCommandHasItsHelp) {
  const ToolRun run = run_tool({"--help"});
  EXPECT_EQ(run.status, 0);
  for (const std::string command :
       {"info", "nodes", "elements", "value", "history", "curve", "stats", "snapshot", "range"}) {
    EXPECT_NE(run.out.find("  " + command + " JOB"), std::string::npos) << command;
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{command, "--help"}, {command, sample_job, "-h"}, {"help", command}}) {
      const ToolRun help = run_tool(arguments);
      EXPECT_EQ(std::make_tuple(help.status, help.err, help.out.rfind("usage: tmrdar " + command + " JOB", 0)),
                std::make_tuple(0, "", 0U)) << help.out;
    }
  }
}

}  // namespace
