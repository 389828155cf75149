// tmrdar value and history: one result at one step, or at every step; stats,
// its statistics; snapshot and range: a result along the whole riser.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

#include "tools/cli/commands.h"
#include "tools/cli/job_access.h"
#include "tools/cli/svg.h"
#include "tools/cli/table.h"

namespace tmrdar::cli {
namespace {

std::string lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = c == '_' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

const tmrdar::output_type_info& output_type(std::string_view text) {
  const std::string name = lower(text);
  for (const tmrdar::output_type_info& info : tmrdar::output_types()) {
    if (name == info.name || name == std::to_string(info.type)) return info;
  }
  throw UsageError("unknown output type '" + std::string(text) + "'");
}

// A subtype by number, or by the name that a few subtypes have.
int32_t subtype(const tmrdar::output_type_info& info, std::string_view text) {
  const std::string name = lower(text);
  const struct {
    const char* name;
    std::initializer_list<int32_t> types;
    int32_t subtype;
  } named[] = {
      {"resultant",
       {tmrdar::output_type::displacement, tmrdar::output_type::velocity, tmrdar::output_type::acceleration,
        tmrdar::output_type::reaction},
       tmrdar::nodal::resultant_4_to_6},
      {"magnitude",
       {tmrdar::output_type::guide_surface_reaction, tmrdar::output_type::zero_gap_guide_reaction,
        tmrdar::output_type::pipe_in_pipe_reaction},
       tmrdar::contact_reaction::magnitude},
      {"temperature", {tmrdar::output_type::element_force}, tmrdar::element_force::temperature},
  };
  for (const auto& entry : named) {
    if (name == entry.name && std::ranges::find(entry.types, info.type) != entry.types.end()) return entry.subtype;
  }
  if (!name.empty() && std::isdigit(static_cast<unsigned char>(name.back())) == 0) {
    throw UsageError("unknown subtype '" + std::string(text) + "' of " + info.name);
  }
  return whole_number(text, "the SUBTYPE");
}

// The request that the command line names: job type [subtype] and the item.
tmrdar::request request_of(const Arguments& arguments) {
  check_positional(arguments, {"JOB", "output TYPE", "SUBTYPE"}, 2);
  const auto& words = arguments.positional();
  const tmrdar::output_type_info& info = output_type(words[1]);
  tmrdar::request request;
  request.output_type = info.type;
  if (words.size() == 3) {
    request.subtype = subtype(info, words[2]);
  } else if (info.max_subtype > 0) {
    throw UsageError(std::string(info.name) + " needs a SUBTYPE, 1 to " + std::to_string(info.max_subtype));
  }

  const std::optional<std::string> node = arguments.value("--node");
  const std::optional<std::string> entry = arguments.value("--entry");
  const std::optional<std::string> element = arguments.value("--element");
  const std::optional<std::string> position = arguments.value("--position");
  const std::optional<std::string> label = arguments.value("--label");
  if (node && entry) throw UsageError("--node and --entry are the same option; give one");
  const std::optional<std::string> node_or_entry = node ? node : entry;
  const char* node_option = node ? "--node" : "--entry";

  if (info.item_kind == tmrdar::item::none) {
    if (node_or_entry || element || position || label) {
      throw UsageError(std::string(info.name) + " belongs to the step alone: it takes no node, element or label");
    }
    return request;
  }
  const bool of_element = info.item_kind == tmrdar::item::element;
  if (of_element && node_or_entry) {
    throw UsageError(std::string(info.name) + " belongs to an element: give --element, not " + node_option);
  }
  if (!of_element && (element || position)) {
    throw UsageError(std::string(info.name) +
                      " belongs to a node or entry: give --node, not --element or --position");
  }
  const bool numbered = of_element ? element.has_value() : node_or_entry.has_value();
  if (numbered && label) throw UsageError("give either a number or --label, not both");
  if (!numbered && !label) {
    throw UsageError(std::string(info.name) +
                      (of_element ? " needs --element E or --label TEXT" : " needs --node N or --label TEXT"));
  }
  if (label) {
    if (label->find_first_not_of(' ') == std::string::npos) throw UsageError("the --label is blank");
    request.label = *label;
  } else if (of_element) {
    request.element = whole_number(*element, "--element");
  } else {
    request.node = whole_number(*node_or_entry, node_option);
  }
  if (position) request.position = whole_number(*position, "--position");
  return request;
}

void print(const std::vector<int32_t>& steps, const std::vector<float>& times, const std::vector<float>& values,
           bool csv) {
  Table table;
  for (const char* name : {"step", "time", "value"}) table.column(name);
  for (std::size_t i = 0; i < steps.size(); ++i) table.row({whole(steps[i]), real(times[i]), real(values[i])});
  table.print(stdout, csv);
}


// The output type and subtype of a result along the riser: job type subtype.
tmrdar::request along_the_riser(const Arguments& arguments) {
  check_positional(arguments, {"JOB", "output TYPE", "SUBTYPE"}, 2);
  const auto& words = arguments.positional();
  const tmrdar::output_type_info& info = output_type(words[1]);
  if (info.item_kind != tmrdar::item::node && info.item_kind != tmrdar::item::element) {
    throw UsageError(std::string(info.name) + " is not a result of a node or an element along the riser");
  }
  if (words.size() < 3) {
    throw UsageError(std::string(info.name) + " needs a SUBTYPE, 1 to " + std::to_string(info.max_subtype));
  }
  tmrdar::request request;
  request.output_type = info.type;
  request.subtype = subtype(info, words[2]);
  return request;
}

// The steps --from and --to, 1 and the last step unless given.
std::pair<int32_t, int32_t> steps(const Arguments& arguments, const tmrdar::job& job) {
  const std::optional<std::string> from = arguments.value("--from");
  const std::optional<std::string> to = arguments.value("--to");
  const int32_t first = from ? whole_number(*from, "--from") : 1;
  const int32_t last = to ? whole_number(*to, "--to") : job.dimensions().num_time_steps;
  if (from && to && first > last) throw UsageError("--from " + *from + " comes after --to " + *to);
  return {first, last};
}

// Points done of all, on standard error when it is a terminal; nothing
// otherwise, so that a script's standard error holds only reasons.
tmrdar::job::progress progress_on_terminal(const char* what) {
  if (isatty(STDERR_FILENO) == 0) return {};
  return [what](std::size_t done, std::size_t total) {
    if (done != total && done % 64 != 0) return;
    std::fprintf(stderr, "\r%s: %zu of %zu points", what, done, total);
    if (done == total) std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
  };
}

// The columns that name a point along the riser, and its cells.
void point_columns(Table& table, bool of_element) {
  if (of_element) {
    table.column("element");
    table.column("position");
  } else {
    table.column("node");
  }
  table.column("distance");
}
std::vector<std::string> point_cells(const tmrdar::riser_point& point, bool of_element) {
  if (of_element) return {whole(point.element), whole(point.position), real(point.distance)};
  return {whole(point.node), real(point.distance)};
}

// The name of a request's result, for a graph: "element-force 1".
std::string result_name(const tmrdar::request& request) {
  const tmrdar::output_type_info* info = tmrdar::describe_output_type(request.output_type);
  std::string name = info != nullptr ? info->name : std::to_string(request.output_type);
  if (info != nullptr && info->max_subtype > 0) name += " " + std::to_string(request.subtype);
  return name;
}

void statistics_columns(Table& table) {
  for (const char* name : {"minimum", "minimum-step", "maximum", "maximum-step", "mean", "standard-deviation"}) {
    table.column(name);
  }
}
void statistics_cells(std::vector<std::string>& cells, const tmrdar::history_statistics& stats) {
  cells.insert(cells.end(), {real(stats.minimum), whole(stats.minimum_step), real(stats.maximum),
                             whole(stats.maximum_step), real(stats.mean), real(stats.standard_deviation)});
}
}  // namespace

int value(const Arguments& arguments) {
  const tmrdar::request request = request_of(arguments);
  const std::optional<std::string> step_text = arguments.value("--step");
  if (!step_text) throw UsageError("the --step is missing");
  const int32_t step = whole_number(*step_text, "--step");
  const tmrdar::job job = open_job(arguments);
  const float value = job.value(request, step);
  const float time = job.value(tmrdar::request{}, step);
  print({step}, {time}, {value}, arguments.has(csv_option.name));
  return 0;
}

int history(const Arguments& arguments) {
  const tmrdar::request request = request_of(arguments);
  const std::optional<std::string> count_text = arguments.value("--count");
  const std::optional<int32_t> wanted =
      count_text ? std::optional<int32_t>(whole_number(*count_text, "--count")) : std::nullopt;
  if (wanted && *wanted < 1) throw UsageError("--count must be 1 or more, not " + *count_text);
  const tmrdar::job job = open_job(arguments);
  const int32_t count = wanted.value_or(job.dimensions().num_time_steps);
  if (count < 1) throw tmrdar::error("the job has no time steps", 0);
  const std::vector<float> values = job.history(request, count);
  const std::vector<float> times = job.history(tmrdar::request{}, count);
  std::vector<int32_t> steps(values.size());
  for (std::size_t i = 0; i < steps.size(); ++i) steps[i] = static_cast<int32_t>(i) + 1;
  // The graph first: when it cannot be written, nothing is printed.
  if (const std::optional<std::string> svg = arguments.value("--svg")) {
    Graph graph;
    std::string item;
    if (request.element > 0) {
      item = " of element " + std::to_string(request.element) + " at position " + std::to_string(request.position);
    } else if (request.node > 0) {
      item = " of " + tmrdar::detail::item_words(tmrdar::describe_output_type(request.output_type)->item_kind,
                                                 request.node);
    } else if (!request.label.empty()) {
      item = " at " + request.label;
    }
    graph.title = result_name(request) + item;
    graph.x_label = "time";
    graph.y_label = result_name(request);
    graph.x.assign(times.begin(), times.end());
    graph.curves.push_back({"value", "#1f77b4", std::vector<double>(values.begin(), values.end())});
    write_svg(*svg, graph);
  }
  print(steps, times, values, arguments.has(csv_option.name));
  return 0;
}

int stats(const Arguments& arguments) {
  const tmrdar::request request = request_of(arguments);
  const tmrdar::job job = open_job(arguments);
  const auto [first, last] = steps(arguments, job);
  const tmrdar::history_statistics stats = job.statistics(request, first, last);
  Table table;
  table.column("first-step");
  table.column("last-step");
  statistics_columns(table);
  std::vector<std::string> cells{whole(stats.first_step), whole(stats.last_step)};
  statistics_cells(cells, stats);
  table.row(std::move(cells));
  table.print(stdout, arguments.has(csv_option.name));
  return 0;
}

int snapshot(const Arguments& arguments) {
  const tmrdar::request request = along_the_riser(arguments);
  const std::optional<std::string> step_text = arguments.value("--step");
  if (!step_text) throw UsageError("the --step is missing");
  const int32_t step = whole_number(*step_text, "--step");
  const tmrdar::job job = open_job(arguments);
  // The step is checked before the riser's points are looked for.
  job.value(tmrdar::request{}, step);
  const std::vector<tmrdar::snapshot_point> snapshot = job.snapshot(request, step, progress_on_terminal("snapshot"));
  const bool of_element = tmrdar::describe_output_type(request.output_type)->item_kind == tmrdar::item::element;
  Table table;
  point_columns(table, of_element);
  table.column("value");
  for (const tmrdar::snapshot_point& point : snapshot) {
    std::vector<std::string> cells = point_cells(point.point, of_element);
    cells.push_back(real(point.value));
    table.row(std::move(cells));
  }
  table.print(stdout, arguments.has(csv_option.name));
  return 0;
}

int range(const Arguments& arguments) {
  const tmrdar::request request = along_the_riser(arguments);
  const tmrdar::job job = open_job(arguments);
  const auto [first, last] = steps(arguments, job);
  const std::vector<tmrdar::range_point> range = job.range_graph(request, first, last, progress_on_terminal("range"));
  const bool of_element = tmrdar::describe_output_type(request.output_type)->item_kind == tmrdar::item::element;
  Table table;
  point_columns(table, of_element);
  statistics_columns(table);
  for (const tmrdar::range_point& point : range) {
    std::vector<std::string> cells = point_cells(point.point, of_element);
    statistics_cells(cells, point.statistics);
    table.row(std::move(cells));
  }
  // The graph first: when it cannot be written, nothing is printed.
  if (const std::optional<std::string> svg = arguments.value("--svg")) {
    Graph graph;
    graph.title = "range graph of " + result_name(request) + ", steps " + std::to_string(first) + " to " +
                  std::to_string(last);
    graph.x_label = "distance along the riser";
    graph.y_label = result_name(request);
    graph.curves = {{"minimum", "#1f77b4", {}}, {"maximum", "#d62728", {}}, {"mean", "#2ca02c", {}}};
    for (const tmrdar::range_point& point : range) {
      graph.x.push_back(point.point.distance);
      graph.curves[0].y.push_back(point.statistics.minimum);
      graph.curves[1].y.push_back(point.statistics.maximum);
      graph.curves[2].y.push_back(point.statistics.mean);
    }
    write_svg(*svg, graph);
  }
  table.print(stdout, arguments.has(csv_option.name));
  return 0;
}

}  // namespace tmrdar::cli
