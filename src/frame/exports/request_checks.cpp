#include "frame/exports/request_checks.h"

#include <cmath>

#include "core/chars/blank_padded.h"
#include "frame/exports/version_selection.h"
#include "header/tide3_database_files.h"

namespace tmrdar::REVISION_IDS {
namespace {

// The test of an argument, turned into a real, for not being a number. An
// integer never is one; the test keeps each argument's place in the mask.
bool NOT_A_NUMBER(int32_t argument) { return std::isnan(static_cast<float>(argument)); }

struct OUTPUT_TYPE_RULE {
  enum NEEDS { NOTHING, MOTION, FORCE, BY_SUBTYPE } needs;
  int32_t max_subtype;  // 0: any subtype
};

// Output types 1 to 18.
constexpr OUTPUT_TYPE_RULE OUTPUT_TYPES[18] = {
    {OUTPUT_TYPE_RULE::NOTHING, 0},     {OUTPUT_TYPE_RULE::NOTHING, 0}, {OUTPUT_TYPE_RULE::NOTHING, 0},
    {OUTPUT_TYPE_RULE::NOTHING, 0},     {OUTPUT_TYPE_RULE::MOTION, 7},  {OUTPUT_TYPE_RULE::MOTION, 7},
    {OUTPUT_TYPE_RULE::MOTION, 7},      {OUTPUT_TYPE_RULE::MOTION, 9},  {OUTPUT_TYPE_RULE::MOTION, 6},
    {OUTPUT_TYPE_RULE::MOTION, 7},      {OUTPUT_TYPE_RULE::BY_SUBTYPE, 3}, {OUTPUT_TYPE_RULE::MOTION, 3},
    {OUTPUT_TYPE_RULE::FORCE, 7},       {OUTPUT_TYPE_RULE::FORCE, 4},   {OUTPUT_TYPE_RULE::FORCE, 4},
    {OUTPUT_TYPE_RULE::FORCE, 4},       {OUTPUT_TYPE_RULE::FORCE, 14},  {OUTPUT_TYPE_RULE::FORCE, 2}};

}  // namespace

void PERFORM_ARG_CHECKS(REQUEST& request, std::string_view label, int32_t& mask) {
  mask = 0;
  const struct {
    int32_t argument;
    int32_t value;
  } plain[] = {{request.MOTION_CODE, MOTION_CODE_BAD}, {request.FORCE_CODE, FORCE_CODE_BAD},
               {request.OUTPUT_TYPE, OUTPUT_TYPE_BAD}, {request.OUTPUT_SUBTYPE, SUBTYPE_BAD},
               {request.NODE, NODE_BAD},               {request.ELEMENT, ELEMENT_BAD},
               {request.POSITION, POSITION_BAD}};
  for (const auto& [argument, value] : plain) {
    if (NOT_A_NUMBER(argument)) mask += value;
  }
  if (NOT_A_NUMBER(request.NUM_TIME_STEPS) || request.NUM_TIME_STEPS < 1) mask += STEP_COUNT_BAD;
  if (NOT_A_NUMBER(request.STEP) || request.STEP < 0) {
    mask += STEP_BAD;
  } else if (!NOT_A_NUMBER(request.NUM_TIME_STEPS) && request.STEP > request.NUM_TIME_STEPS) {
    mask += STEP_BAD;
  }
  if (mask >= 1) return;

  if (request.OUTPUT_TYPE > 4 && request.NODE < 1 && request.ELEMENT < 1) {
    const std::string_view name = chars::TRIM(label);
    if (name.empty()) {
      mask += LABEL_BAD;
    } else {
      bool not_found = true;
      CHECK_LABEL(request.MOTION_CODE, request.FORCE_CODE, name, request.NODE, request.ELEMENT, request.POSITION,
                  not_found);
      if (not_found) mask += LABEL_BAD;
    }
  }
  CHECK_OUTPUT_PARA(request.MOTION_CODE, request.FORCE_CODE, request.OUTPUT_TYPE, request.OUTPUT_SUBTYPE, mask);
}

void CHECK_OUTPUT_PARA(int32_t motion_code, int32_t force_code, int32_t output_type, int32_t subtype,
                       int32_t& mask) {
  if (frame::SELECT_VERSION(motion_code, force_code) == 0) {
    mask += NO_VERSION;
    return;
  }
  CHECK_OUTPUT_PARA_V811(output_type, subtype, motion_code < 1, force_code < 1, mask);
}

void CHECK_OUTPUT_PARA_V811(int32_t output_type, int32_t subtype, bool motion_missing, bool force_missing,
                            int32_t& mask) {
  if (output_type < 1 || output_type > 18) {
    mask += OUTPUT_TYPE_BAD;
    return;
  }
  const OUTPUT_TYPE_RULE& rule = OUTPUT_TYPES[output_type - 1];
  switch (rule.needs) {
    case OUTPUT_TYPE_RULE::NOTHING: return;
    case OUTPUT_TYPE_RULE::MOTION:
      if (motion_missing) mask += OUTPUT_TYPE_BAD;
      break;
    case OUTPUT_TYPE_RULE::FORCE:
      if (force_missing) mask += OUTPUT_TYPE_BAD;
      break;
    case OUTPUT_TYPE_RULE::BY_SUBTYPE:
      if ((subtype == 1 && motion_missing) || ((subtype == 2 || subtype == 3) && force_missing)) {
        mask += TYPE_11_FILE_MISSING;
      }
      break;
  }
  if (subtype < 1 || subtype > rule.max_subtype) mask += SUBTYPE_BAD;
}

void CHECK_LABEL(int32_t motion_code, int32_t force_code, std::string_view label, int32_t& node, int32_t& element,
                 int32_t& kind, bool& not_found) {
  node = 0;
  element = 0;
  kind = 0;
  header::TIDE3_DATABASE_FILES* module = header::TIDE3_DATABASE_MODULE(frame::SELECT_VERSION(motion_code, force_code));
  if (module == nullptr) {
    not_found = true;
    return;
  }
  not_found = false;
  module->CHECK_LABEL(label, node, element, kind, not_found);
}

}  // namespace tmrdar::REVISION_IDS
