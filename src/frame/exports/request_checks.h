// The checks of a request's arguments before a format's reader sees it. Their
// one result is a mask to which every failed condition adds its value; the
// low bits follow the positions of the request's arguments.
#pragma once

#include <cstdint>
#include <string_view>

#include "frame/base/request_mask.h"

namespace tmrdar::REVISION_IDS {

// The arguments of a request that the checks read; node, element and
// position are replaced by what a label names.
struct REQUEST {
  int32_t MOTION_CODE = 0;
  int32_t FORCE_CODE = 0;
  int32_t OUTPUT_TYPE = 0;
  int32_t OUTPUT_SUBTYPE = 0;
  int32_t NODE = 0;
  int32_t ELEMENT = 0;
  int32_t POSITION = 0;
  int32_t NUM_TIME_STEPS = 0;
  int32_t STEP = 0;
};

// Checks arguments 1 to 9 and the label, resolving the label when the
// request names its item by one, and adds to `mask`.
void PERFORM_ARG_CHECKS(REQUEST& request, std::string_view label, int32_t& mask);

// Whether the selected format's files hold what the output type needs, and
// whether the subtype is in range; adds NO_VERSION when the codes select none.
void CHECK_OUTPUT_PARA(int32_t motion_code, int32_t force_code, int32_t output_type, int32_t subtype, int32_t& mask);

// The table of output types, one for every format.
void CHECK_OUTPUT_PARA_V811(int32_t output_type, int32_t subtype, bool motion_missing, bool force_missing,
                            int32_t& mask);

// Finds a label in the selected format's label table: the node, or the
// element, it names and its kind. `not_found` is true when no format is
// selected or no row matches.
void CHECK_LABEL(int32_t motion_code, int32_t force_code, std::string_view label, int32_t& node, int32_t& element,
                 int32_t& kind, bool& not_found);

}  // namespace tmrdar::REVISION_IDS
