// The integration point locations that the open builds when the header's
// shape function switch asks for them.
#include <algorithm>

#include "header/block_reading.h"
#include "shape_functions/shape_function_data.h"

namespace tmrdar::header {

void TIDE3_DATABASE_FILES::BUILD_INTEGRATION_POINTS(bool& failed) {
  using V861_SHAPE_FUNCTION_DATA::MAX_INTEGRATION_ORDER;
  TABLE<double, 2>& locations = TABLES.INTEGRATION_POINTS;
  // One column for each element of the length table, which the file backs.
  const int64_t columns = std::min<int64_t>(std::max(NUM_ELEMENTS, 0), TABLES.ELEMENT_LENGTH.EXTENT());
  if (!locations.ALLOCATE({MAX_INTEGRATION_ORDER, columns}, 0.0)) {
    int32_t flag = 0;
    HEADER_FAILURE("Unable to allocate memory for the integration point locations:", flag);
    failed = true;
    return;
  }
  V861_SHAPE_FUNCTION_DATA::INITIALISE_FC_DATA4(SHAPE_FUNCTION_ORDER, static_cast<int32_t>(columns),
                                                TABLES.ELEMENT_LENGTH.DATA(), locations.STORAGE());
}

}  // namespace tmrdar::header
