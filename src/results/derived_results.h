// Results formed from stored words: the reactions of guide surfaces, zero gap
// guides and pipe-in-pipe connections, element pressures and temperatures,
// clashing results and the distance between two nodes.
#pragma once

#include <array>
#include <cstdint>

#include "header/tide3_database_files.h"

namespace tmrdar::results {

// Status: 0 on success, -1 (all bits) on a reported failure.
// Component code 1 to 3 a stored component, 4 the magnitude of the three.
void READ_CONTACT_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry,
                            std::array<float, 3>& components, int32_t& status);
void CALCULATE_CONTACT_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, int32_t code,
                                 float& value, int32_t& status);
void CALCULATE_ZG_GUIDE_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, int32_t code,
                                  float& value, int32_t& status);
void CALCULATE_PIP_REACTIONS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t entry, int32_t code,
                             float& value, int32_t& status);

}  // namespace tmrdar::results
