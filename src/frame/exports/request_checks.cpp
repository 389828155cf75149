#include "frame/exports/request_checks.h"

#include <cmath>

#include "core/chars/blank_padded.h"
#include "frame/exports/version_selection.h"
#include "header/format_reader.h"

namespace tmrdar::request_checks {
namespace {

// The test of an argument, turned into a real, for not being a number. An
// integer never is one; the test keeps each argument's place in the mask.
bool not_a_number(int32_t argument) { return std::isnan(static_cast<float>(argument)); }

struct OutputTypeRule {
  enum Needs { nothing, motion, force, by_subtype } needs;
  int32_t max_subtype;  // 0: any subtype
};

// Output types 1 to 18.
constexpr OutputTypeRule output_types[18] = {
    {OutputTypeRule::nothing, 0},     {OutputTypeRule::nothing, 0}, {OutputTypeRule::nothing, 0},
    {OutputTypeRule::nothing, 0},     {OutputTypeRule::motion, 7},  {OutputTypeRule::motion, 7},
    {OutputTypeRule::motion, 7},      {OutputTypeRule::motion, 9},  {OutputTypeRule::motion, 6},
    {OutputTypeRule::motion, 7},      {OutputTypeRule::by_subtype, 3}, {OutputTypeRule::motion, 3},
    {OutputTypeRule::force, 7},       {OutputTypeRule::force, 4},   {OutputTypeRule::force, 4},
    {OutputTypeRule::force, 4},       {OutputTypeRule::force, 14},  {OutputTypeRule::force, 2}};

}  // namespace

void perform_arg_checks(Request& request, std::string_view label, int32_t& mask) {
  mask = 0;
  const struct {
    int32_t argument;
    int32_t value;
  } plain[] = {{request.motion_code, motion_code_bad}, {request.force_code, force_code_bad},
               {request.output_type, output_type_bad}, {request.output_subtype, subtype_bad},
               {request.node, node_bad},               {request.element, element_bad},
               {request.position, position_bad}};
  for (const auto& [argument, value] : plain) {
    if (not_a_number(argument)) mask += value;
  }
  if (not_a_number(request.num_time_steps) || request.num_time_steps < 1) mask += step_count_bad;
  if (not_a_number(request.step) || request.step < 0) {
    mask += step_bad;
  } else if (!not_a_number(request.num_time_steps) && request.step > request.num_time_steps) {
    mask += step_bad;
  }
  if (mask >= 1) return;

  if (request.output_type > 4 && request.node < 1 && request.element < 1) {
    const std::string_view name = chars::trim(label);
    if (name.empty()) {
      mask += label_bad;
    } else {
      bool not_found = true;
      check_label(request.motion_code, request.force_code, name, request.node, request.element, request.position,
                  not_found);
      if (not_found) mask += label_bad;
    }
  }
  check_output_para(request.motion_code, request.force_code, request.output_type, request.output_subtype, mask);
}

void check_output_para(int32_t motion_code, int32_t force_code, int32_t output_type, int32_t subtype,
                       int32_t& mask) {
  if (frame::select_version(motion_code, force_code) == 0) {
    mask += no_version;
    return;
  }
  check_output_para_v811(output_type, subtype, motion_code < 1, force_code < 1, mask);
}

void check_output_para_v811(int32_t output_type, int32_t subtype, bool motion_missing, bool force_missing,
                            int32_t& mask) {
  if (output_type < 1 || output_type > 18) {
    mask += output_type_bad;
    return;
  }
  const OutputTypeRule& rule = output_types[output_type - 1];
  switch (rule.needs) {
    case OutputTypeRule::nothing: return;
    case OutputTypeRule::motion:
      if (motion_missing) mask += output_type_bad;
      break;
    case OutputTypeRule::force:
      if (force_missing) mask += output_type_bad;
      break;
    case OutputTypeRule::by_subtype:
      if ((subtype == 1 && motion_missing) || ((subtype == 2 || subtype == 3) && force_missing)) {
        mask += type_11_file_missing;
      }
      break;
  }
  if (subtype < 1 || subtype > rule.max_subtype) mask += subtype_bad;
}

void check_label(int32_t motion_code, int32_t force_code, std::string_view label, int32_t& node, int32_t& element,
                 int32_t& kind, bool& not_found) {
  node = 0;
  element = 0;
  kind = 0;
  header::FormatReader* module = header::reader_for_version(frame::select_version(motion_code, force_code));
  if (module == nullptr) {
    not_found = true;
    return;
  }
  not_found = false;
  module->check_label(label, node, element, kind, not_found);
}

}  // namespace tmrdar::request_checks
