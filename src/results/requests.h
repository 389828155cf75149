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

#include "header/format_reader.h"

namespace tmrdar::results {

struct RequestArguments {
  int32_t output_type = 0;
  int32_t parameter = 0;  // the output subtype
  int32_t node = 0;       // node number, or guide, pair or auxiliary node entry, by type
  int32_t element = 0;    // element number; a negative number is an auxiliary element
  int32_t location = 0;   // 1 to 3 along the element
};

// Positions of the request's item: the entry (node, boundary condition,
// guide, pair or auxiliary node) and the element.
struct RequestPositions {
  int32_t entry = 0;
  int32_t element = 0;
};

// Adds to `status` every fault of the request's item and contents.
void validate_history_param(const header::FormatReader& db, const RequestArguments& request,
                            RequestPositions& positions, int32_t& status);

// The value at output step `step`; 0 when the request is refused.
void getrequestedsinglevalue(header::FormatReader& db, const RequestArguments& request, int32_t step,
                             float& value, int32_t& status);

// The values of steps 1 to values.size(), into values; all 0 when the request
// is refused, and 0 from the step after a failed one.
void getrequestedhistory(header::FormatReader& db, const RequestArguments& request, std::span<float> values,
                         int32_t& status);

}  // namespace tmrdar::results
