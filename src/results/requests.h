// Requests for results: one value of one step, or a history of the steps
// from the first, of one of the eighteen output types.
//
// A request has passed the argument checks of the frame before it comes
// here. Its node and element numbers are turned into positions of the
// header's tables and the frames are tested for holding what it needs; each
// fault adds its value to the request's status mask, as the error decoders
// read it. Then the output type decides the lookup.
#pragma once

#include <cstdint>
#include <span>

#include "header/tide3_database_files.h"

namespace tmrdar::results {

struct REQUEST_ARGUMENTS {
  int32_t OUTPUT_TYPE = 0;
  int32_t PARAMETER = 0;  // the output subtype
  int32_t NODE = 0;       // node number, or guide, pair or auxiliary node entry, by type
  int32_t ELEMENT = 0;    // element number; a negative number is an auxiliary element
  int32_t LOCATION = 0;   // 1 to 3 along the element
};

// Positions of the request's item: the entry (node, boundary condition,
// guide, pair or auxiliary node) and the element.
struct REQUEST_POSITIONS {
  int32_t ENTRY = 0;
  int32_t ELEMENT = 0;
};

// Adds to `status` every fault of the request's item and contents.
void VALIDATE_HISTORY_PARAM(const header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request,
                            REQUEST_POSITIONS& positions, int32_t& status);

// The value at output step `step`; 0 when the request is refused.
void GETREQUESTEDSINGLEVALUE(header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request, int32_t step,
                             float& value, int32_t& status);

// The values of steps 1 to values.size(), into values; all 0 when the request
// is refused, and 0 from the step after a failed one.
void GETREQUESTEDHISTORY(header::TIDE3_DATABASE_FILES& db, const REQUEST_ARGUMENTS& request, std::span<float> values,
                         int32_t& status);

}  // namespace tmrdar::results
