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

using tmrdar::testing::FIELDS;
using tmrdar::testing::LINES;
using tmrdar::testing::RUN_TOOL;
using tmrdar::testing::TOOL_RUN;

const std::string JOB = TMRDAR_SAMPLE_JOB;

// A failed run: its status, nothing on standard output, and one line on
// standard error, which is returned without its line break.
std::string REASON(const TOOL_RUN& run, int status) {
  EXPECT_EQ(run.STATUS, status) << run.ERR;
  EXPECT_EQ(run.OUT, "");
  EXPECT_EQ(LINES(run.ERR).size(), 1U) << run.ERR;
  EXPECT_TRUE(!run.ERR.empty() && run.ERR.back() == '\n');
  return LINES(run.ERR).empty() ? "" : LINES(run.ERR).front();
}

TEST(ToolInput, MistakesInTheCommandLine) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"bogus"}, "tmrdar: unknown command 'bogus' (see tmrdar --help)"},
      {{"help", "bogus"}, "tmrdar: unknown command 'bogus' (see tmrdar --help)"},
      {{"info"}, "tmrdar info: the JOB is missing (see tmrdar info --help)"},
      {{"info", JOB, "extra"}, "tmrdar info: unexpected argument 'extra' (see tmrdar info --help)"},
      {{"info", JOB, "--bogus"}, "tmrdar info: unknown option '--bogus' (see tmrdar info --help)"},
      {{"info", JOB, "--csv=yes"}, "tmrdar info: option --csv takes no value (see tmrdar info --help)"},
      {{"nodes", JOB, "--max-number"}, "tmrdar nodes: option --max-number needs a value (see tmrdar nodes --help)"},
      {{"elements", JOB, "--max-number", "0"},
       "tmrdar elements: --max-number must be 1 or more, not 0 (see tmrdar elements --help)"},
      {{"curve", JOB}, "tmrdar curve: the curve ID is missing (see tmrdar curve --help)"},
      {{"curve", JOB, "one"},
       "tmrdar curve: the curve ID must be a whole number, not 'one' (see tmrdar curve --help)"},
      {{"value", JOB}, "tmrdar value: the output TYPE is missing (see tmrdar value --help)"},
      {{"value", JOB, "nonsense", "1", "--node", "1", "--step", "1"},
       "tmrdar value: unknown output type 'nonsense' (see tmrdar value --help)"},
      {{"value", JOB, "displacement", "--node", "1", "--step", "1"},
       "tmrdar value: displacement needs a SUBTYPE, 1 to 7 (see tmrdar value --help)"},
      {{"value", JOB, "displacement", "x", "--node", "1", "--step", "1"},
       "tmrdar value: unknown subtype 'x' of displacement (see tmrdar value --help)"},
      {{"value", JOB, "displacement", "3", "--node", "12"},
       "tmrdar value: the --step is missing (see tmrdar value --help)"},
      {{"value", JOB, "displacement", "3", "--step", "2"},
       "tmrdar value: displacement needs --node N or --label TEXT (see tmrdar value --help)"},
      {{"range", JOB, "time", "1"},
       "tmrdar range: time is not a result of a node or an element along the riser (see tmrdar range --help)"},
      {{"range", JOB, "element-force", "1", "--from", "5", "--to", "4"},
       "tmrdar range: --from 5 comes after --to 4 (see tmrdar range --help)"},
      {{"value", JOB, "displacement", "3", "--node", "1", "--node", "2", "--step", "2"},
       "tmrdar value: option --node is given twice (see tmrdar value --help)"},
      {{"value", JOB, "displacement", "3", "--node", "12.5", "--step", "2"},
       "tmrdar value: --node must be a whole number, not '12.5' (see tmrdar value --help)"},
      {{"value", JOB, "element-force", "1", "--node", "1", "--step", "2"},
       "tmrdar value: element-force belongs to an element: give --element, not --node (see tmrdar value --help)"},
      {{"value", JOB, "time", "--node", "1", "--step", "2"},
       "tmrdar value: time belongs to the step alone: it takes no node, element or label (see tmrdar value "
       "--help)"},
      {{"history", JOB, "displacement", "1", "--node", "1", "--label", "Hang-off"},
       "tmrdar history: give either a number or --label, not both (see tmrdar history --help)"},
  };
  for (const auto& [arguments, reason] : cases) EXPECT_EQ(REASON(RUN_TOOL(arguments), 2), reason);

  const TOOL_RUN bare = RUN_TOOL({});
  EXPECT_EQ(bare.STATUS, 2);
  EXPECT_EQ(bare.OUT, "");
  EXPECT_EQ(bare.ERR.rfind("usage: tmrdar COMMAND", 0), 0U);
}

TEST(ToolInput, QuestionsTheJobCannotAnswer) {
  tmrdar::testing::SCRATCH_DIR dir;
  const std::string missing = dir.FILE("nowhere");
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{"info", missing}, "tmrdar: no database files found for " + missing + " (looked for .dbm and .dbf)"},
      {{"value", JOB, "displacement", "3", "--node", "999", "--step", "4"},
       "tmrdar: node 999 is not in the database"},
      {{"value", JOB, "displacement", "3", "--node", "1", "--step", "1001"},
       "tmrdar: step 1001 is not one of the job's steps, 1 to 1000"},
      {{"value", JOB, "acceleration", "1", "--node", "1", "--step", "4"},
       "tmrdar: the motion database holds no nodal accelerations"},
      {{"value", JOB, "element-force", "1", "--element", "999", "--position", "4", "--step", "4"},
       "tmrdar: position 4 is not 1, 2 or 3 (start, middle or end of the element); element 999 is not in the "
       "database"},
      {{"value", JOB, "displacement", "1", "--label", "Nowhere", "--step", "4"},
       "tmrdar: label \"Nowhere\" is not in the database"},
      {{"history", JOB, "time", "--count", "1001"},
       "tmrdar: a history of 1001 steps is longer than the job's 1000 steps"},
      {{"history", JOB, "guide-surface-reaction", "magnitude", "--entry", "2"},
       "tmrdar: guide surface 2 is not in the database (it has 1)"},
      {{"range", JOB, "element-force", "1", "--to", "3", "--svg", missing + "/graph.svg"},
       "tmrdar: the graph could not be written to " + missing + "/graph.svg"},
  };
  for (const auto& [arguments, reason] : cases) EXPECT_EQ(REASON(RUN_TOOL(arguments), 1), reason);
}

class ToolOnASmallJob : public ::testing::Test {
 protected:
  std::string WRITE(const tmrdar::builder::JOB& job) {
    job.WRITE(dir.FILE("small"));
    return dir.FILE("small");
  }
  tmrdar::testing::SCRATCH_DIR dir;
};

TEST_F(ToolOnASmallJob, ValuesCurvesAndListsOfAuxiliaryItems) {
  tmrdar::builder::JOB small = tmrdar::testing::SMALL_JOB();
  small.RUN.ANALYSIS_TITLE.ASSIGN("Riser, \"lazy\" wave");
  const std::string job = WRITE(small);
  TOOL_RUN run = RUN_TOOL({"info", job, "--csv"});
  const std::vector<std::string> info = LINES(run.OUT);
  EXPECT_NE(std::find(info.begin(), info.end(), "title,\"Riser, \"\"lazy\"\" wave\""), info.end()) << run.OUT;
  EXPECT_NE(std::find(info.begin(), info.end(), "time range,0.5 to 2.5"), info.end()) << run.OUT;

  run = RUN_TOOL({"value", job, "displacement", "3", "--node", "20", "--step", "2", "--csv"});
  EXPECT_EQ(run.STATUS, 0);
  EXPECT_EQ(run.OUT, "step,time,value\n2,1,1.25\n");
  run = RUN_TOOL({"history", job, "element-force", "1", "--label", "Joint"});
  EXPECT_EQ(FIELDS(LINES(run.OUT).at(3), ' '), (std::vector<std::string>{"3", "2.5", "-7.5"}));

  run = RUN_TOOL({"curve", job, "4"});
  EXPECT_EQ(run.STATUS, 0);
  EXPECT_EQ(run.OUT, "point  first  second\n    1      0       0\n    2  0.001     200\n    3  0.002     350\n");
  EXPECT_EQ(REASON(RUN_TOOL({"curve", job, "9"}), 1),
            "tmrdar: stress-strain curve 9 claims 50 points, but the table has only 4 rows");

  // Node 4000 is on no element and above the numbers asked for.
  run = RUN_TOOL({"nodes", job, "--max-number", "3999", "--csv"});
  EXPECT_EQ(run.STATUS, 0);
  EXPECT_EQ(run.OUT,
            "kind,node,row,x,y,z\nstructure,10,1,1,2,3\nstructure,30,2,4,5,6\nstructure,20,3,7,8,9\n"
            "auxiliary,101,1,0.25,0,0\nauxiliary,102,2,0,0,-0.75\n");
  EXPECT_EQ(run.ERR,
            "tmrdar: warning: 1 node rows not listed: their numbers are above 3999 or repeat an earlier row's "
            "number (see --max-number)\n");

  run = RUN_TOOL({"elements", job});
  EXPECT_EQ(run.ERR, "");
  EXPECT_EQ(run.OUT,
            "kind       element  row  node-1  node-2  length  start  end\n"
            "structure        7    1      10      30     2.5      0  2.5\n"
            "structure        5    2      30      20     1.5    2.5    4\n"
            "auxiliary        3    1     102     101       -      -    -\n");
}

TEST_F(ToolOnASmallJob, RiserResultsOfKnownValues) {
  // Node 20 is the end of element 5, 4 along the riser, and is 1.25 at step 2.
  const std::string job = WRITE(tmrdar::testing::SMALL_JOB());
  const TOOL_RUN run = RUN_TOOL({"range", job, "displacement", "3", "--from", "2", "--to", "2"});
  const std::vector<std::string> lines = LINES(run.OUT);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(FIELDS(lines[3], ' '), (std::vector<std::string>{"20", "4", "1.25", "2", "1.25", "2", "1.25", "0"}));
  EXPECT_EQ(run.ERR, "") << "no progress on standard error when it is not a terminal";
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
  const auto ANSWERS = [&](const std::string& stem) {
    std::vector<std::string> answers;
    for (std::vector<std::string> question : questions) {
      question.insert(question.begin() + 1, stem);
      question.push_back("--csv");
      const TOOL_RUN run = RUN_TOOL(question);
      EXPECT_EQ(run.STATUS, 0) << run.ERR;
      answers.emplace_back();
      for (const std::string& line : LINES(run.OUT)) {
        const bool names_files = line.rfind("job,", 0) == 0 || line.rfind("motion file", 0) == 0 ||
                                 line.rfind("force file", 0) == 0 || line.rfind("format,", 0) == 0;
        if (!names_files) answers.back() += line + "\n";
      }
    }
    return answers;
  };
  const std::vector<std::string> newest = ANSWERS(JOB);
  for (const std::string format : {"V841", "V831", "V821", "V815", "V811"}) {
    SCOPED_TRACE(format);
    const std::string stem = dir.FILE("riser-" + format);
    ASSERT_EQ(std::system((std::string(TMRDAR_SAMPLE_GENERATOR) + " --format " + format + " " + stem).c_str()), 0);
    EXPECT_NE(RUN_TOOL({"info", stem, "--csv"}).OUT.find("\nformat," + format + "\n"), std::string::npos);
    EXPECT_EQ(ANSWERS(stem), newest);
  }
}

TEST_F(ToolOnASmallJob, TheLibrarysOwnMessageWhereItHasOne) {
  tmrdar::builder::JOB nan = tmrdar::testing::SMALL_JOB();
  nan.MODEL.GUIDE_SURFACES = {{.ID = 1}};
  nan.RESULTS.SET(tmrdar::builder::SECTION_KIND::GUIDE_SURFACE_REACTION, 1, 1, 2,
                  std::numeric_limits<float>::quiet_NaN());
  const std::string job = WRITE(nan);
  EXPECT_EQ(REASON(RUN_TOOL({"value", job, "guide-surface-reaction", "magnitude", "--entry", "1", "--step", "1"}), 1),
            "tmrdar: the value could not be read or computed from the database (Error: Database Postprocessing: "
            "Invalid square root argument when calculating contact surface reaction.)");

  // A motion file cut short in its header: the tool says what the library
  // found, and goes on with what it could read.
  std::filesystem::resize_file(job + ".dbm", 300);
  std::filesystem::remove(job + ".dbf");
  const TOOL_RUN run = RUN_TOOL({"info", job});
  EXPECT_EQ(run.STATUS, 0);
  const std::string warning = "tmrdar: warning: the header of " + job + " may be incomplete: ";
  EXPECT_EQ(run.ERR.rfind(warning + "Error: Database Postprocessing: ", 0), 0U) << run.ERR;
  EXPECT_EQ(LINES(run.ERR).size(), 1U);
}

}  // namespace
