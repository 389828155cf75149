// tmrdar info: what a job is.
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include "tools/cli/commands.h"
#include "tools/cli/job_access.h"
#include "tools/cli/table.h"

namespace tmrdar::cli {
namespace {

constexpr std::array<const char*, 14> DIMENSION_NAMES{"time steps",
                                                      "pipe-in-pipe rows per connection",
                                                      "elements",
                                                      "nodes",
                                                      "auxiliary elements",
                                                      "auxiliary nodes",
                                                      "labels",
                                                      "boundary conditions",
                                                      "guide surfaces",
                                                      "zero gap guides",
                                                      "pipe-in-pipe connections",
                                                      "pipe-in-pipe reaction entries",
                                                      "clash pairs",
                                                      "stress-strain table rows"};

std::string FILE_STATE(int32_t code) {
  if (code == 0) return "not found";
  if (code < 0) return "cannot be read";
  const char* name = tmrdar::FORMAT_NAME(code);
  return "version code " + std::to_string(code) + (name != nullptr ? std::string(" (") + name + ")" : " (unknown)");
}

std::string WORDS(const std::array<int32_t, 5>& words) {
  std::string text;
  for (const int32_t word : words) {
    if (!text.empty()) text += ' ';
    text += std::to_string(word);
  }
  return text;
}

}  // namespace

int INFO(const ARGUMENTS& arguments) {
  CHECK_POSITIONAL(arguments, {"JOB"}, 1);
  const tmrdar::JOB job = OPEN_JOB(arguments);
  const std::string& path = job.PATH();
  const tmrdar::VERSION_CODES& codes = job.CODES();
  const tmrdar::MODEL_DIMENSIONS& dims = job.DIMENSIONS();

  TABLE table;
  table.COLUMN("field", TABLE::ALIGN::LEFT);
  table.COLUMN("value", TABLE::ALIGN::LEFT);
  const auto row = [&](std::string field, std::string value) { table.ROW({std::move(field), std::move(value)}); };
  row("job", path);
  std::filesystem::path stem(path);
  row("motion file", stem.replace_extension(".dbm").string() + ": " + FILE_STATE(codes.MOTION));
  if (codes.MOTION > 0) row("motion file words 4-8", WORDS(codes.MOTION_WORDS));
  row("force file", stem.replace_extension(".dbf").string() + ": " + FILE_STATE(codes.FORCE));
  if (codes.FORCE > 0) row("force file words 4-8", WORDS(codes.FORCE_WORDS));
  const int32_t format = codes.MOTION > 0 ? codes.MOTION : codes.FORCE;
  row("format", tmrdar::FORMAT_NAME(format) != nullptr ? tmrdar::FORMAT_NAME(format) : "unknown");

  const tmrdar::ANALYSIS_DETAILS details = job.DETAILS();
  row("title", details.TITLE);
  row("analysis detail 1", WHOLE(details.DETAIL_1));
  row("analysis detail 2", WHOLE(details.DETAIL_2));
  row("analysis detail 3", REAL(details.DETAIL_3));
  const std::array<int32_t, 14> values = dims.AS_ARRAY();
  for (std::size_t i = 0; i < values.size(); ++i) row(DIMENSION_NAMES[i], WHOLE(values[i]));

  std::string range = "none";
  if (dims.NUM_TIME_STEPS > 0) {
    try {
      const std::vector<float> times = job.TIMES();
      range = REAL(times.front()) + " to " + REAL(times.back());
    } catch (const tmrdar::FAILURE& failure) {
      range = std::string("unreadable: ") + failure.what();
    }
  }
  row("time range", range);
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME), false);
  return 0;
}

}  // namespace tmrdar::cli
