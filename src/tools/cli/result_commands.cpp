// tmrdar value and history: one result at one step, or at every step.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <string>
#include <vector>

#include "tools/cli/commands.h"
#include "tools/cli/job_access.h"
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
  PRINT(steps, times, values, arguments.HAS(CSV_OPTION.NAME));
  return 0;
}

}  // namespace tmrdar::cli
