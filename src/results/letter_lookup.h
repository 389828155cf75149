// One result of one output step, by its kind letter, and the stored element
// results of a force frame.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "header/format_reader.h"

namespace tmrdar::results {

// The kind letters, in the order in which a letter is matched.
inline constexpr std::string_view result_letters = "TEDVASRXYZO12PWGCHKB";

// The value of `letter` at output step `step`: `element` is the element
// position (letter E) or the vessel (letters X to 2), `entry` the node,
// boundary condition, guide or auxiliary node position (for E the location
// on the element), `parameter` the component or force parameter. `error`
// is false on entry and true on a reported failure, with `value` kept.
void dabfnd(header::FormatReader& db, int32_t step, int32_t element, int32_t entry, int32_t parameter,
            char letter, float& value, bool& error);

// A stored element result of force parameter `parameter` (9 to 15, 24, 25,
// 28 to 30, 36 to 41) at `location` (1 to 3) of element position `element`.
void readf(header::FormatReader& db, int32_t step, int32_t element, int32_t location, int32_t parameter,
           float& value, bool& error);

// The ordinate of `x` in a table of n abscissae followed by n ordinates.
float find_stress(std::span<const float> table, float x);

}  // namespace tmrdar::results
