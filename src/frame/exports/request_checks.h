// The checks of a request's arguments before a format's reader sees it. Their
// one result is a mask to which every failed condition adds its value; the
// low bits follow the positions of the request's arguments.
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/base/request_mask.h"

namespace tmrdar::request_checks {

// The arguments of a request that the checks read; node, element and
// position are replaced by what a label names.
struct Request {
  int32_t motion_code = 0;
  int32_t force_code = 0;
  int32_t output_type = 0;
  int32_t output_subtype = 0;
  int32_t node = 0;
  int32_t element = 0;
  int32_t position = 0;
  int32_t num_time_steps = 0;
  int32_t step = 0;
};

// Checks arguments 1 to 9 and the label, resolving the label when the
// request names its item by one, and adds to `mask`.
void perform_arg_checks(Request& request, std::string_view label, int32_t& mask);

// Whether the selected format's files hold what the output type needs, and
// whether the subtype is in range; adds no_version when the codes select none.
void check_output_para(int32_t motion_code, int32_t force_code, int32_t output_type, int32_t subtype, int32_t& mask);

// The table of output types, one for every format.
void check_output_para_v811(int32_t output_type, int32_t subtype, bool motion_missing, bool force_missing,
                            int32_t& mask);

// Finds a label in the selected format's label table: the node, or the
// element, it names and its kind. `not_found` is true when no format is
// selected or no row matches.
void check_label(int32_t motion_code, int32_t force_code, std::string_view label, int32_t& node, int32_t& element,
                 int32_t& kind, bool& not_found);

}  // namespace tmrdar::request_checks
