// The tool on bad input: mistakes in the command line and questions that the
// job cannot answer each give one line in words and a non-zero exit; and its
// answers on a job whose every value is known.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/scratch_dir.h"
#include "tools/small_job.h"
#include "tools/tool_runner.h"

namespace {

using tmrdar::testing::fields_of;
using tmrdar::testing::lines_of;
using tmrdar::testing::run_tool;
using tmrdar::testing::ToolRun;

const std::string job = TMRDAR_SAMPLE_JOB;

// A failed run: its status, nothing on standard output, and one line on
// standard error, which is returned without its line break.
std::string reason_of(const ToolRun& run, int status) {
  EXPECT_EQ(run.status, status) << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
  EXPECT_TRUE(!run.err.empty() && run.err.back() == '\n');
  return lines_of(run.err).empty() ? "" : lines_of(run.err).front();
}

TEST(ToolInput, MistakesInTheCommandLine) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"bogus"}, "tmrdar: unknown command 'bogus' (see tmrdar --help)"},
      {{"help", "bogus"}, "tmrdar: unknown command 'bogus' (see tmrdar --help)"},
      {{"info"}, "tmrdar info: the JOB is missing (see tmrdar info --help)"},
      {{"info", job, "extra"}, "tmrdar info: unexpected argument 'extra' (see tmrdar info --help)"},
      {{"info", job, "--bogus"}, "tmrdar info: unknown option '--bogus' (see tmrdar info --help)"},
      {{"info", job, "--csv=yes"}, "tmrdar info: option --csv takes no value (see tmrdar info --help)"},
      {{"nodes", job, "--max-number"}, "tmrdar nodes: option --max-number needs a value (see tmrdar nodes --help)"},
      {{"elements", job, "--max-number", "0"},
       "tmrdar elements: --max-number must be 1 or more, not 0 (see tmrdar elements --help)"},
      {{"curve", job}, "tmrdar curve: the curve ID is missing (see tmrdar curve --help)"},
      {{"curve", job, "one"},
       "tmrdar curve: the curve ID must be a whole number, not 'one' (see tmrdar curve --help)"},
      {{"value", job}, "tmrdar value: the output TYPE is missing (see tmrdar value --help)"},
      {{"value", job, "nonsense", "1", "--node", "1", "--step", "1"},
       "tmrdar value: unknown output type 'nonsense' (see tmrdar value --help)"},
      {{"value", job, "displacement", "--node", "1", "--step", "1"},
       "tmrdar value: displacement needs a SUBTYPE, 1 to 7 (see tmrdar value --help)"},
      {{"value", job, "displacement", "x", "--node", "1", "--step", "1"},
       "tmrdar value: unknown subtype 'x' of displacement (see tmrdar value --help)"},
      {{"value", job, "displacement", "3", "--node", "12"},
       "tmrdar value: the --step is missing (see tmrdar value --help)"},
      {{"value", job, "displacement", "3", "--step", "2"},
       "tmrdar value: displacement needs --node N or --label TEXT (see tmrdar value --help)"},
      {{"range", job, "time", "1"},
       "tmrdar range: time is not a result of a node or an element along the riser (see tmrdar range --help)"},
      {{"range", job, "element-force", "1", "--from", "5", "--to", "4"},
       "tmrdar range: --from 5 comes after --to 4 (see tmrdar range --help)"},
      {{"value", job, "displacement", "3", "--node", "1", "--node", "2", "--step", "2"},
       "tmrdar value: option --node is given twice (see tmrdar value --help)"},
      {{"value", job, "displacement", "3", "--node", "12.5", "--step", "2"},
       "tmrdar value: --node must be a whole number, not '12.5' (see tmrdar value --help)"},
      {{"value", job, "element-force", "1", "--node", "1", "--step", "2"},
       "tmrdar value: element-force belongs to an element: give --element, not --node (see tmrdar value --help)"},
      {{"value", job, "time", "--node", "1", "--step", "2"},
       "tmrdar value: time belongs to the step alone: it takes no node, element or label (see tmrdar value "
       "--help)"},
      {{"history", job, "displacement", "1", "--node", "1", "--label", "Hang-off"},
       "tmrdar history: give either a number or --label, not both (see tmrdar history --help)"},
  };
  for (const auto& [arguments, reason] : cases) EXPECT_EQ(reason_of(run_tool(arguments), 2), reason);

  const ToolRun bare = run_tool({});
  EXPECT_EQ(bare.status, 2);
  EXPECT_EQ(bare.out, "");
  EXPECT_EQ(bare.err.rfind("usage: tmrdar COMMAND", 0), 0U);
}

TEST(ToolInput, QuestionsTheJobCannotAnswer) {
  tmrdar::testing::ScratchDir dir;
  const std::string missing = dir.file("nowhere");
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"info", missing}, "tmrdar: no database files found for " + missing + " (looked for .dbm and .dbf)"},
      {{"value", job, "displacement", "3", "--node", "999", "--step", "4"},
       "tmrdar: node 999 is not in the database"},
      {{"value", job, "displacement", "3", "--node", "1", "--step", "1001"},
       "tmrdar: step 1001 is not one of the job's steps, 1 to 1000"},
      {{"value", job, "acceleration", "1", "--node", "1", "--step", "4"},
       "tmrdar: the motion database holds no nodal accelerations"},
      {{"value", job, "element-force", "1", "--element", "999", "--position", "4", "--step", "4"},
       "tmrdar: position 4 is not 1, 2 or 3 (start, middle or end of the element); element 999 is not in the "
       "database"},
      {{"value", job, "displacement", "1", "--label", "Nowhere", "--step", "4"},
       "tmrdar: label \"Nowhere\" is not in the database"},
      {{"history", job, "time", "--count", "1001"},
       "tmrdar: a history of 1001 steps is longer than the job's 1000 steps"},
      {{"history", job, "guide-surface-reaction", "magnitude", "--entry", "2"},
       "tmrdar: guide surface 2 is not in the database (it has 1)"},
      {{"range", job, "element-force", "1", "--to", "3", "--svg", missing + "/graph.svg"},
       "tmrdar: the graph could not be written to " + missing + "/graph.svg"},
  };
  for (const auto& [arguments, reason] : cases) EXPECT_EQ(reason_of(run_tool(arguments), 1), reason);
}

class ToolOnASmallJob : public ::testing::Test {
 protected:
  std::string write(const tmrdar::builder::Job& job) {
    job.write(dir.file("small"));
    return dir.file("small");
  }
  tmrdar::testing::ScratchDir dir;
};

TEST_F(ToolOnASmallJob, ValuesCurvesAndListsOfAuxiliaryItems) {
  tmrdar::builder::Job small = tmrdar::testing::small_job();
  small.run.analysis_title.assign("Riser, \"lazy\" wave");
  const std::string job = write(small);
  ToolRun run = run_tool({"info", job, "--csv"});
  const std::vector<std::string> info = lines_of(run.out);
  EXPECT_NE(std::find(info.begin(), info.end(), "title,\"Riser, \"\"lazy\"\" wave\""), info.end()) << run.out;
  EXPECT_NE(std::find(info.begin(), info.end(), "time range,0.5 to 2.5"), info.end()) << run.out;

  run = run_tool({"value", job, "displacement", "3", "--node", "20", "--step", "2", "--csv"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "step,time,value\n2,1,1.25\n");
  run = run_tool({"history", job, "element-force", "1", "--label", "Joint"});
  EXPECT_EQ(fields_of(lines_of(run.out).at(3), ' '), (std::vector<std::string>{"3", "2.5", "-7.5"}));

  run = run_tool({"curve", job, "4"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "point  first  second\n    1      0       0\n    2  0.001     200\n    3  0.002     350\n");
  EXPECT_EQ(reason_of(run_tool({"curve", job, "9"}), 1),
            "tmrdar: stress-strain curve 9 claims 50 points, but the table has only 4 rows");

  // Node 4000 is on no element and above the numbers asked for.
  run = run_tool({"nodes", job, "--max-number", "3999", "--csv"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out,
            "kind,node,row,x,y,z\nstructure,10,1,1,2,3\nstructure,30,2,4,5,6\nstructure,20,3,7,8,9\n"
            "auxiliary,101,1,0.25,0,0\nauxiliary,102,2,0,0,-0.75\n");
  EXPECT_EQ(run.err,
            "tmrdar: warning: 1 node rows not listed: their numbers are above 3999 or repeat an earlier row's "
            "number (see --max-number)\n");

  run = run_tool({"elements", job});
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            "kind       element  row  node-1  node-2  length  start  end\n"
            "structure        7    1      10      30     2.5      0  2.5\n"
            "structure        5    2      30      20     1.5    2.5    4\n"
            "auxiliary        3    1     102     101       -      -    -\n");
}

TEST_F(ToolOnASmallJob, RiserResultsOfKnownValues) {
  // Node 20 is the end of element 5, 4 along the riser, and is 1.25 at step 2.
  const std::string job = write(tmrdar::testing::small_job());
  const ToolRun run = run_tool({"range", job, "displacement", "3", "--from", "2", "--to", "2"});
  const std::vector<std::string> lines = lines_of(run.out);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(fields_of(lines[3], ' '), (std::vector<std::string>{"20", "4", "1.25", "2", "1.25", "2", "1.25", "0"}));
  EXPECT_EQ(run.err, "") << "no progress on standard error when it is not a terminal";
}

// The sample riser written in each older format: the tool names the format,
// and shows the model and results of the sample job in the newest one, word
// for word.
TEST_F(ToolOnASmallJob, EveryFormatOfTheSampleJobShowsTheSameRiser) {
  const std::vector<std::vector<std::string>> questions{
      {"info"}, {"nodes"}, {"elements"},
      {"value", "element-force", "1", "--element", "300", "--position", "3", "--step", "500"},
      {"history", "displacement", "1", "--label", "HANG-OFF", "--count", "20"},
      {"history", "reaction", "1", "--label", "hang-off", "--count", "20"},
      {"history", "guide-surface-reaction", "magnitude", "--entry", "1", "--count", "20"}};
  // The answers, without the info lines that name the files and the format.
  const auto answers = [&](const std::string& stem) {
    std::vector<std::string> answers;
    for (std::vector<std::string> question : questions) {
      question.insert(question.begin() + 1, stem);
      question.push_back("--csv");
      const ToolRun run = run_tool(question);
      EXPECT_EQ(run.status, 0) << run.err;
      answers.emplace_back();
      for (const std::string& line : lines_of(run.out)) {
        const bool names_files = line.rfind("job,", 0) == 0 || line.rfind("motion file", 0) == 0 ||
                                 line.rfind("force file", 0) == 0 || line.rfind("format,", 0) == 0;
        if (!names_files) answers.back() += line + "\n";
      }
    }
    return answers;
  };
  const std::vector<std::string> newest = answers(job);
  for (const std::string format : {"V841", "V831", "V821", "V815", "V811"}) {
    SCOPED_TRACE(format);
    const std::string stem = dir.file("riser-" + format);
    ASSERT_EQ(std::system((std::string(TMRDAR_SAMPLE_GENERATOR) + " --format " + format + " " + stem).c_str()), 0);
    EXPECT_NE(run_tool({"info", stem, "--csv"}).out.find("\nformat," + format + "\n"), std::string::npos);
    EXPECT_EQ(answers(stem), newest);
  }
}

TEST_F(ToolOnASmallJob, TheLibrarysOwnMessageWhereItHasOne) {
  tmrdar::builder::Job nan = tmrdar::testing::small_job();
  nan.model.guide_surfaces = {{.id = 1}};
  nan.results.set(tmrdar::builder::SectionKind::guide_surface_reaction, 1, 1, 2,
                  std::numeric_limits<float>::quiet_NaN());
  const std::string job = write(nan);
  EXPECT_EQ(reason_of(run_tool({"value", job, "guide-surface-reaction", "magnitude", "--entry", "1", "--step", "1"}), 1),
            "tmrdar: the value could not be read or computed from the database (Error: Database Postprocessing: "
            "Invalid square root argument when calculating contact surface reaction.)");

  // A motion file cut short in its header: the tool says what the library
  // found, and goes on with what it could read.
  std::filesystem::resize_file(job + ".dbm", 300);
  std::filesystem::remove(job + ".dbf");
  const ToolRun run = run_tool({"info", job});
  EXPECT_EQ(run.status, 0);
  const std::string warning = "tmrdar: warning: the header of " + job + " may be incomplete: ";
  EXPECT_EQ(run.err.rfind(warning + "Error: Database Postprocessing: ", 0), 0U) << run.err;
  EXPECT_EQ(lines_of(run.err).size(), 1U);
}

}  // namespace
