// The analysis values that the frame keeps for GetAnalysisDetails. They are
// filled when a database opens and outlive the closing of it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/chars/blank_padded.h"

namespace tmrdar::header_data {

inline constexpr std::size_t title_width = 1024;
inline constexpr std::size_t num_model_dimensions = 14;

struct State {
  int32_t analysis_detail_1 = 0;
  int32_t analysis_detail_2 = 0;
  float analysis_detail_3 = 0.0F;
  chars::BlankPadded<title_width> analysis_title;
  int32_t analysis_title_length = 0;
  // A copy of the dimensions handed to the host; kept and never consulted.
  std::array<int32_t, num_model_dimensions> model_dimensions{};
};

// The process-wide values.
State& data();

// Stores the dimensions, the three analysis values and the title; the
// title's length without trailing blanks is capped at the field's width.
// The first argument is not read.
void save_model_dimensions(int32_t unused, const std::array<int32_t, num_model_dimensions>& dims,
                           int32_t detail_1, int32_t detail_2, float detail_3,
                           std::string_view title);

}  // namespace tmrdar::header_data
