// The checks of a request's arguments before a format's reader sees it. Their
// one result is a mask to which every failed condition adds its value; the
// low bits follow the positions of the request's arguments.
#pragma once

#include <cstdint>
#include <string_view>

namespace tmrdar::REVISION_IDS {

// Values of the mask.
inline constexpr int32_t MOTION_CODE_BAD = 1;
inline constexpr int32_t FORCE_CODE_BAD = 2;
inline constexpr int32_t NO_VERSION = 3;
inline constexpr int32_t OUTPUT_TYPE_BAD = 4;
inline constexpr int32_t SUBTYPE_BAD = 8;
inline constexpr int32_t TYPE_11_FILE_MISSING = 12;
inline constexpr int32_t NODE_BAD = 16;
inline constexpr int32_t ELEMENT_BAD = 32;
inline constexpr int32_t POSITION_BAD = 64;
inline constexpr int32_t STEP_COUNT_BAD = 128;
inline constexpr int32_t STEP_BAD = 256;
inline constexpr int32_t LABEL_BAD = 1024;
inline constexpr int32_t OUTPUT_NOT_WRITTEN = 2048;
inline constexpr int32_t ITEM_NOT_FOUND = 4096;
inline constexpr int32_t ELEMENT_NOT_FOUND = 8192;
inline constexpr int32_t READ_FAILED = 16384;

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
