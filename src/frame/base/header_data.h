// The analysis values that the frame keeps for GetAnalysisDetails. They are
// filled when a database opens and outlive the closing of it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/chars/blank_padded.h"

namespace tmrdar::HEADER_DATA {

inline constexpr std::size_t TITLE_WIDTH = 1024;
inline constexpr std::size_t NUM_MODEL_DIMENSIONS = 14;

struct STATE {
  int32_t ANALYSIS_DETAIL_1 = 0;
  int32_t ANALYSIS_DETAIL_2 = 0;
  float ANALYSIS_DETAIL_3 = 0.0F;
  chars::BLANK_PADDED<TITLE_WIDTH> ANALYSIS_TITLE;
  int32_t ANALYSIS_TITLE_LENGTH = 0;
  // A copy of the dimensions handed to the host; kept and never consulted.
  std::array<int32_t, NUM_MODEL_DIMENSIONS> MODEL_DIMENSIONS{};
};

// The process-wide values.
STATE& DATA();

// Stores the dimensions, the three analysis values and the title; the
// title's length without trailing blanks is capped at the field's width.
// The first argument is not read.
void SAVE_MODEL_DIMENSIONS(int32_t unused, const std::array<int32_t, NUM_MODEL_DIMENSIONS>& dims,
                           int32_t detail_1, int32_t detail_2, float detail_3,
                           std::string_view title);

}  // namespace tmrdar::HEADER_DATA
