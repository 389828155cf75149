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

std::string LOWER(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = c == '_' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

const tmrdar::OUTPUT_TYPE_INFO& OUTPUT_TYPE(std::string_view text) {
  const std::string name = LOWER(text);
  for (const tmrdar::OUTPUT_TYPE_INFO& info : tmrdar::OUTPUT_TYPES()) {
    if (name == info.NAME || name == std::to_string(info.TYPE)) return info;
  }
  throw USAGE_ERROR("unknown output type '" + std::string(text) + "'");
}

// A subtype by number, or by the name that a few subtypes have.
int32_t SUBTYPE(const tmrdar::OUTPUT_TYPE_INFO& info, std::string_view text) {
  const std::string name = LOWER(text);
  const struct {
    const char* NAME;
    std::initializer_list<int32_t> TYPES;
    int32_t SUBTYPE;
  } named[] = {
      {"resultant",
       {tmrdar::OUTPUT_TYPE::DISPLACEMENT, tmrdar::OUTPUT_TYPE::VELOCITY, tmrdar::OUTPUT_TYPE::ACCELERATION,
        tmrdar::OUTPUT_TYPE::REACTION},
       tmrdar::NODAL::RESULTANT_4_TO_6},
      {"magnitude",
       {tmrdar::OUTPUT_TYPE::GUIDE_SURFACE_REACTION, tmrdar::OUTPUT_TYPE::ZERO_GAP_GUIDE_REACTION,
        tmrdar::OUTPUT_TYPE::PIPE_IN_PIPE_REACTION},
       tmrdar::CONTACT_REACTION::MAGNITUDE},
      {"temperature", {tmrdar::OUTPUT_TYPE::ELEMENT_FORCE}, tmrdar::ELEMENT_FORCE::TEMPERATURE},
  };
  for (const auto& entry : named) {
    if (name == entry.NAME && std::ranges::find(entry.TYPES, info.TYPE) != entry.TYPES.end()) return entry.SUBTYPE;
  }
  if (!name.empty() && std::isdigit(static_cast<unsigned char>(name.back())) == 0) {
    throw USAGE_ERROR("unknown subtype '" + std::string(text) + "' of " + info.NAME);
  }
  return WHOLE_NUMBER(text, "the SUBTYPE");
}

// The request that the command line names: JOB TYPE [SUBTYPE] and the item.
tmrdar::REQUEST REQUEST_OF(const ARGUMENTS& arguments) {
  CHECK_POSITIONAL(arguments, {"JOB", "output TYPE", "SUBTYPE"}, 2);
  const auto& words = arguments.POSITIONAL();
  const tmrdar::OUTPUT_TYPE_INFO& info = OUTPUT_TYPE(words[1]);
  tmrdar::REQUEST request;
  request.OUTPUT_TYPE = info.TYPE;
  if (words.size() == 3) {
    request.SUBTYPE = SUBTYPE(info, words[2]);
  } else if (info.MAX_SUBTYPE > 0) {
    throw USAGE_ERROR(std::string(info.NAME) + " needs a SUBTYPE, 1 to " + std::to_string(info.MAX_SUBTYPE));
  }

  const std::optional<std::string> node = arguments.VALUE("--node");
  const std::optional<std::string> entry = arguments.VALUE("--entry");
  const std::optional<std::string> element = arguments.VALUE("--element");
  const std::optional<std::string> position = arguments.VALUE("--position");
  const std::optional<std::string> label = arguments.VALUE("--label");
  if (node && entry) throw USAGE_ERROR("--node and --entry are the same option; give one");
  const std::optional<std::string> node_or_entry = node ? node : entry;
  const char* node_option = node ? "--node" : "--entry";

  if (info.ITEM_KIND == tmrdar::ITEM::NONE) {
    if (node_or_entry || element || position || label) {
      throw USAGE_ERROR(std::string(info.NAME) + " belongs to the step alone: it takes no node, element or label");
    }
    return request;
  }
  const bool of_element = info.ITEM_KIND == tmrdar::ITEM::ELEMENT;
  if (of_element && node_or_entry) {
    throw USAGE_ERROR(std::string(info.NAME) + " belongs to an element: give --element, not " + node_option);
  }
  if (!of_element && (element || position)) {
    throw USAGE_ERROR(std::string(info.NAME) +
                      " belongs to a node or entry: give --node, not --element or --position");
  }
  const bool numbered = of_element ? element.has_value() : node_or_entry.has_value();
  if (numbered && label) throw USAGE_ERROR("give either a number or --label, not both");
  if (!numbered && !label) {
    throw USAGE_ERROR(std::string(info.NAME) +
                      (of_element ? " needs --element E or --label TEXT" : " needs --node N or --label TEXT"));
  }
  if (label) {
    if (label->find_first_not_of(' ') == std::string::npos) throw USAGE_ERROR("the --label is blank");
    request.LABEL = *label;
  } else if (of_element) {
    request.ELEMENT = WHOLE_NUMBER(*element, "--element");
  } else {
    request.NODE = WHOLE_NUMBER(*node_or_entry, node_option);
  }
  if (position) request.POSITION = WHOLE_NUMBER(*position, "--position");
  return request;
}

void PRINT(const std::vector<int32_t>& steps, const std::vector<float>& times, const std::vector<float>& values,
           bool csv) {
  TABLE table;
  for (const char* name : {"step", "time", "value"}) table.COLUMN(name);
  for (std::size_t i = 0; i < steps.size(); ++i) table.ROW({WHOLE(steps[i]), REAL(times[i]), REAL(values[i])});
  table.PRINT(stdout, csv);
}


// The output type and subtype of a result along the riser: JOB TYPE SUBTYPE.
tmrdar::REQUEST ALONG_THE_RISER(const ARGUMENTS& arguments) {
  CHECK_POSITIONAL(arguments, {"JOB", "output TYPE", "SUBTYPE"}, 2);
  const auto& words = arguments.POSITIONAL();
  const tmrdar::OUTPUT_TYPE_INFO& info = OUTPUT_TYPE(words[1]);
  if (info.ITEM_KIND != tmrdar::ITEM::NODE && info.ITEM_KIND != tmrdar::ITEM::ELEMENT) {
    throw USAGE_ERROR(std::string(info.NAME) + " is not a result of a node or an element along the riser");
  }
  if (words.size() < 3) {
    throw USAGE_ERROR(std::string(info.NAME) + " needs a SUBTYPE, 1 to " + std::to_string(info.MAX_SUBTYPE));
  }
  tmrdar::REQUEST request;
  request.OUTPUT_TYPE = info.TYPE;
  request.SUBTYPE = SUBTYPE(info, words[2]);
  return request;
}

// The steps --from and --to, 1 and the last step unless given.
std::pair<int32_t, int32_t> STEPS(const ARGUMENTS& arguments, const tmrdar::JOB& job) {
  const std::optional<std::string> from = arguments.VALUE("--from");
  const std::optional<std::string> to = arguments.VALUE("--to");
  const int32_t first = from ? WHOLE_NUMBER(*from, "--from") : 1;
  const int32_t last = to ? WHOLE_NUMBER(*to, "--to") : job.DIMENSIONS().NUM_TIME_STEPS;
  if (from && to && first > last) throw USAGE_ERROR("--from " + *from + " comes after --to " + *to);
  return {first, last};
}

// Points done of all, on standard error when it is a terminal; nothing
// otherwise, so that a script's standard error holds only reasons.
tmrdar::JOB::PROGRESS PROGRESS_ON_TERMINAL(const char* what) {
  if (isatty(STDERR_FILENO) == 0) return {};
  return [what](std::size_t done, std::size_t total) {
    if (done != total && done % 64 != 0) return;
    std::fprintf(stderr, "\r%s: %zu of %zu points", what, done, total);
    if (done == total) std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
  };
}

// The columns that name a point along the riser, and its cells.
void POINT_COLUMNS(TABLE& table, bool of_element) {
  if (of_element) {
    table.COLUMN("element");
    table.COLUMN("position");
  } else {
    table.COLUMN("node");
  }
  table.COLUMN("distance");
}
std::vector<std::string> POINT_CELLS(const tmrdar::RISER_POINT& point, bool of_element) {
  if (of_element) return {WHOLE(point.ELEMENT), WHOLE(point.POSITION), REAL(point.DISTANCE)};
  return {WHOLE(point.NODE), REAL(point.DISTANCE)};
}

// The name of a request's result, for a graph: "element-force 1".
std::string RESULT_NAME(const tmrdar::REQUEST& request) {
  const tmrdar::OUTPUT_TYPE_INFO* info = tmrdar::DESCRIBE_OUTPUT_TYPE(request.OUTPUT_TYPE);
  std::string name = info != nullptr ? info->NAME : std::to_string(request.OUTPUT_TYPE);
  if (info != nullptr && info->MAX_SUBTYPE > 0) name += " " + std::to_string(request.SUBTYPE);
  return name;
}

void STATISTICS_COLUMNS(TABLE& table) {
  for (const char* name : {"minimum", "minimum-step", "maximum", "maximum-step", "mean", "standard-deviation"}) {
    table.COLUMN(name);
  }
}
void STATISTICS_CELLS(std::vector<std::string>& cells, const tmrdar::HISTORY_STATISTICS& stats) {
  cells.insert(cells.end(), {REAL(stats.MINIMUM), WHOLE(stats.MINIMUM_STEP), REAL(stats.MAXIMUM),
                             WHOLE(stats.MAXIMUM_STEP), REAL(stats.MEAN), REAL(stats.STANDARD_DEVIATION)});
}
}  // namespace

int VALUE(const ARGUMENTS& arguments) {
  const tmrdar::REQUEST request = REQUEST_OF(arguments);
  const std::optional<std::string> step_text = arguments.VALUE("--step");
  if (!step_text) throw USAGE_ERROR("the --step is missing");
  const int32_t step = WHOLE_NUMBER(*step_text, "--step");
  const tmrdar::JOB job = OPEN_JOB(arguments);
  const float value = job.VALUE(request, step);
  const float time = job.VALUE(tmrdar::REQUEST{}, step);
  PRINT({step}, {time}, {value}, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

int HISTORY(const ARGUMENTS& arguments) {
  const tmrdar::REQUEST request = REQUEST_OF(arguments);
  const std::optional<std::string> count_text = arguments.VALUE("--count");
  const std::optional<int32_t> wanted =
      count_text ? std::optional<int32_t>(WHOLE_NUMBER(*count_text, "--count")) : std::nullopt;
  if (wanted && *wanted < 1) throw USAGE_ERROR("--count must be 1 or more, not " + *count_text);
  const tmrdar::JOB job = OPEN_JOB(arguments);
  const int32_t count = wanted.value_or(job.DIMENSIONS().NUM_TIME_STEPS);
  if (count < 1) throw tmrdar::FAILURE("the job has no time steps", 0);
  const std::vector<float> values = job.HISTORY(request, count);
  const std::vector<float> times = job.HISTORY(tmrdar::REQUEST{}, count);
  std::vector<int32_t> steps(values.size());
  for (std::size_t i = 0; i < steps.size(); ++i) steps[i] = static_cast<int32_t>(i) + 1;
  // The graph first: when it cannot be written, nothing is printed.
  if (const std::optional<std::string> svg = arguments.VALUE("--svg")) {
    GRAPH graph;
    std::string item;
    if (request.ELEMENT > 0) {
      item = " of element " + std::to_string(request.ELEMENT) + " at position " + std::to_string(request.POSITION);
    } else if (request.NODE > 0) {
      item = " of " + tmrdar::detail::ITEM_WORDS(tmrdar::DESCRIBE_OUTPUT_TYPE(request.OUTPUT_TYPE)->ITEM_KIND,
                                                 request.NODE);
    } else if (!request.LABEL.empty()) {
      item = " at " + request.LABEL;
    }
    graph.TITLE = RESULT_NAME(request) + item;
    graph.X_LABEL = "time";
    graph.Y_LABEL = RESULT_NAME(request);
    graph.X.assign(times.begin(), times.end());
    graph.CURVES.push_back({"value", "#1f77b4", std::vector<double>(values.begin(), values.end())});
    WRITE_SVG(*svg, graph);
  }
  PRINT(steps, times, values, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

int STATS(const ARGUMENTS& arguments) {
  const tmrdar::REQUEST request = REQUEST_OF(arguments);
  const tmrdar::JOB job = OPEN_JOB(arguments);
  const auto [first, last] = STEPS(arguments, job);
  const tmrdar::HISTORY_STATISTICS stats = job.STATISTICS(request, first, last);
  TABLE table;
  table.COLUMN("first-step");
  table.COLUMN("last-step");
  STATISTICS_COLUMNS(table);
  std::vector<std::string> cells{WHOLE(stats.FIRST_STEP), WHOLE(stats.LAST_STEP)};
  STATISTICS_CELLS(cells, stats);
  table.ROW(std::move(cells));
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

int SNAPSHOT(const ARGUMENTS& arguments) {
  const tmrdar::REQUEST request = ALONG_THE_RISER(arguments);
  const std::optional<std::string> step_text = arguments.VALUE("--step");
  if (!step_text) throw USAGE_ERROR("the --step is missing");
  const int32_t step = WHOLE_NUMBER(*step_text, "--step");
  const tmrdar::JOB job = OPEN_JOB(arguments);
  // The step is checked before the riser's points are looked for.
  job.VALUE(tmrdar::REQUEST{}, step);
  const std::vector<tmrdar::SNAPSHOT_POINT> snapshot = job.SNAPSHOT(request, step, PROGRESS_ON_TERMINAL("snapshot"));
  const bool of_element = tmrdar::DESCRIBE_OUTPUT_TYPE(request.OUTPUT_TYPE)->ITEM_KIND == tmrdar::ITEM::ELEMENT;
  TABLE table;
  POINT_COLUMNS(table, of_element);
  table.COLUMN("value");
  for (const tmrdar::SNAPSHOT_POINT& point : snapshot) {
    std::vector<std::string> cells = POINT_CELLS(point.POINT, of_element);
    cells.push_back(REAL(point.VALUE));
    table.ROW(std::move(cells));
  }
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

int RANGE(const ARGUMENTS& arguments) {
  const tmrdar::REQUEST request = ALONG_THE_RISER(arguments);
  const tmrdar::JOB job = OPEN_JOB(arguments);
  const auto [first, last] = STEPS(arguments, job);
  const std::vector<tmrdar::RANGE_POINT> range = job.RANGE_GRAPH(request, first, last, PROGRESS_ON_TERMINAL("range"));
  const bool of_element = tmrdar::DESCRIBE_OUTPUT_TYPE(request.OUTPUT_TYPE)->ITEM_KIND == tmrdar::ITEM::ELEMENT;
  TABLE table;
  POINT_COLUMNS(table, of_element);
  STATISTICS_COLUMNS(table);
  for (const tmrdar::RANGE_POINT& point : range) {
    std::vector<std::string> cells = POINT_CELLS(point.POINT, of_element);
    STATISTICS_CELLS(cells, point.STATISTICS);
    table.ROW(std::move(cells));
  }
  // The graph first: when it cannot be written, nothing is printed.
  if (const std::optional<std::string> svg = arguments.VALUE("--svg")) {
    GRAPH graph;
    graph.TITLE = "range graph of " + RESULT_NAME(request) + ", steps " + std::to_string(first) + " to " +
                  std::to_string(last);
    graph.X_LABEL = "distance along the riser";
    graph.Y_LABEL = RESULT_NAME(request);
    graph.CURVES = {{"minimum", "#1f77b4", {}}, {"maximum", "#d62728", {}}, {"mean", "#2ca02c", {}}};
    for (const tmrdar::RANGE_POINT& point : range) {
      graph.X.push_back(point.POINT.DISTANCE);
      graph.CURVES[0].Y.push_back(point.STATISTICS.MINIMUM);
      graph.CURVES[1].Y.push_back(point.STATISTICS.MAXIMUM);
      graph.CURVES[2].Y.push_back(point.STATISTICS.MEAN);
    }
    WRITE_SVG(*svg, graph);
  }
  table.PRINT(stdout, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

}  // namespace tmrdar::cli
