#include "frame/base/header_data.h"

#include <algorithm>

namespace tmrdar::HEADER_DATA {

STATE& DATA() {
  static STATE state;
  return state;
}

void SAVE_MODEL_DIMENSIONS(int32_t /*unused*/,
                           const std::array<int32_t, NUM_MODEL_DIMENSIONS>& dims,
                           int32_t detail_1, int32_t detail_2, float detail_3,
                           std::string_view title) {
  STATE& state = DATA();
  state.MODEL_DIMENSIONS = dims;
  state.ANALYSIS_DETAIL_1 = detail_1;
  state.ANALYSIS_DETAIL_2 = detail_2;
  state.ANALYSIS_DETAIL_3 = detail_3;
  const std::size_t length = std::min(chars::LEN_TRIM(title), TITLE_WIDTH);
  state.ANALYSIS_TITLE_LENGTH = static_cast<int32_t>(length);
  state.ANALYSIS_TITLE.ASSIGN(title.substr(0, length));
}

}  // namespace tmrdar::HEADER_DATA
