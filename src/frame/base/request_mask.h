// The values that the faults of a request add to its status mask. The low
// bits follow the positions of the request's arguments; the high ones are
// the faults that a format's reader finds.
#pragma once

#include <cstdint>

namespace tmrdar::REVISION_IDS {

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

}  // namespace tmrdar::REVISION_IDS
