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

constexpr std::array<const char*, 14> dimension_names{"time steps",
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

std::string file_state(int32_t code) {
  if (code == 0) return "not found";
  if (code < 0) return "cannot be read";
  const char* name = tmrdar::format_name(code);
  return "version code " + std::to_string(code) + (name != nullptr ? std::string(" (") + name + ")" : " (unknown)");
}

std::string words(const std::array<int32_t, 5>& words) {
  std::string text;
  for (const int32_t word : words) {
    if (!text.empty()) text += ' ';
    text += std::to_string(word);
  }
  return text;
}

}  // namespace

int info(const Arguments& arguments) {
  check_positional(arguments, {"JOB"}, 1);
  const tmrdar::job job = open_job(arguments);
  const std::string& path = job.path();
  const tmrdar::version_codes& codes = job.codes();
  const tmrdar::model_dimensions& dims = job.dimensions();

  Table table;
  table.column("field", Table::Align::left);
  table.column("value", Table::Align::left);
  const auto row = [&](std::string field, std::string value) { table.row({std::move(field), std::move(value)}); };
  row("job", path);
  std::filesystem::path stem(path);
  row("motion file", stem.replace_extension(".dbm").string() + ": " + file_state(codes.motion));
  if (codes.motion > 0) row("motion file words 4-8", words(codes.motion_words));
  row("force file", stem.replace_extension(".dbf").string() + ": " + file_state(codes.force));
  if (codes.force > 0) row("force file words 4-8", words(codes.force_words));
  const int32_t format = codes.motion > 0 ? codes.motion : codes.force;
  row("format", tmrdar::format_name(format) != nullptr ? tmrdar::format_name(format) : "unknown");

  const tmrdar::analysis_details details = job.details();
  row("title", details.title);
  row("analysis detail 1", whole(details.detail_1));
  row("analysis detail 2", whole(details.detail_2));
  row("analysis detail 3", real(details.detail_3));
  const std::array<int32_t, 14> values = dims.as_array();
  for (std::size_t i = 0; i < values.size(); ++i) row(dimension_names[i], whole(values[i]));

  std::string range = "none";
  if (dims.num_time_steps > 0) {
    try {
      const std::vector<float> times = job.times();
      range = real(times.front()) + " to " + real(times.back());
    } catch (const tmrdar::error& failure) {
      range = std::string("unreadable: ") + failure.what();
    }
  }
  row("time range", range);
  table.print(stdout, arguments.has(csv_option.name), false);
  return 0;
}

}  // namespace tmrdar::cli
