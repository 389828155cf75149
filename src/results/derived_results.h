// Results formed from stored words: the reactions of guide surfaces, zero gap
// guides and pipe-in-pipe connections, element pressures and temperatures,
// clashing results and the distance between two nodes.
#pragma once

#include <array>
#include <cstdint>

#include "header/format_reader.h"

namespace tmrdar::results {

// Status: 0 on success, -1 (all bits) on a reported failure.
// Component code 1 to 3 a stored component, 4 the magnitude of the three.
void read_contact_reactions(header::FormatReader& db, int32_t step, int32_t entry,
                            std::array<float, 3>& components, int32_t& status);
void calculate_contact_reactions(header::FormatReader& db, int32_t step, int32_t entry, int32_t code,
                                 float& value, int32_t& status);
void calculate_zg_guide_reactions(header::FormatReader& db, int32_t step, int32_t entry, int32_t code,
                                  float& value, int32_t& status);
void calculate_pip_reactions(header::FormatReader& db, int32_t step, int32_t entry, int32_t code,
                             float& value, int32_t& status);

// One stored element result of output step `step` at `location` (1 to 3) of
// element position `element`: pressure `selector` (1 or 2, 0 meaning 1), and
// the temperature. The pressures are refused, reported, when the frames do
// not hold them. A failed read is reported with `value` kept.
void retrieve_element_pressures(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                                int32_t selector, float& value, int32_t& status);
void retrieve_element_temperature(header::FormatReader& db, int32_t step, int32_t element, int32_t location,
                                  float& value, int32_t& status);
// A result of clash pair `pair`: code 1 or 33 its word of the motion frame;
// any other code the force frame's word just before the pair's two, and code
// 2 or 34 that word's successor, 3 or 35 the one behind it.
void retrieve_clashing_results(header::FormatReader& db, int32_t step, int32_t pair, int32_t code,
                               float& value, int32_t& status);
// The straight distance at step `step` between the displaced positions of
// two node rows. The status is that of the last of the six reads; the
// distance is formed whatever they gave.
void retrieve_distance_two_nodes(header::FormatReader& db, int32_t step, int32_t first_node,
                                 int32_t second_node, float& value, int32_t& status);

}  // namespace tmrdar::results
