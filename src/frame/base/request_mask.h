// The values that the faults of a request add to its status mask. The low
// bits follow the positions of the request's arguments; the high ones are
// the faults that a format's reader finds.
#pragma once

#include <cstdint>

namespace tmrdar::request_checks {

inline constexpr int32_t motion_code_bad = 1;
inline constexpr int32_t force_code_bad = 2;
inline constexpr int32_t no_version = 3;
inline constexpr int32_t output_type_bad = 4;
inline constexpr int32_t subtype_bad = 8;
inline constexpr int32_t type_11_file_missing = 12;
inline constexpr int32_t node_bad = 16;
inline constexpr int32_t element_bad = 32;
inline constexpr int32_t position_bad = 64;
inline constexpr int32_t step_count_bad = 128;
inline constexpr int32_t step_bad = 256;
inline constexpr int32_t label_bad = 1024;
inline constexpr int32_t output_not_written = 2048;
inline constexpr int32_t item_not_found = 4096;
inline constexpr int32_t element_not_found = 8192;
inline constexpr int32_t read_failed = 16384;

}  // namespace tmrdar::request_checks
