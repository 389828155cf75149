#include "frame/base/header_data.h"

#include <algorithm>

namespace tmrdar::header_data {

State& data() {
  static State state;
  return state;
}

void save_model_dimensions(int32_t /*unused*/,
                           const std::array<int32_t, num_model_dimensions>& dims,
                           int32_t detail_1, int32_t detail_2, float detail_3,
                           std::string_view title) {
  State& state = data();
  state.model_dimensions = dims;
  state.analysis_detail_1 = detail_1;
  state.analysis_detail_2 = detail_2;
  state.analysis_detail_3 = detail_3;
  const std::size_t length = std::min(chars::len_trim(title), title_width);
  state.analysis_title_length = static_cast<int32_t>(length);
  state.analysis_title.assign(title.substr(0, length));
}

}  // namespace tmrdar::header_data
