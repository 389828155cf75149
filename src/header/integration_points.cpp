// The integration point locations that the open builds when the header's
// shape function switch asks for them.
#include <algorithm>

#include "header/block_reading.h"
#include "shape_functions/shape_function_data.h"

namespace tmrdar::header {

void FormatReader::build_integration_points(bool& failed) {
  using shape_functions::max_integration_order;
  Table<double, 2>& locations = tables.integration_points;
  // One column for each element of the length table, which the file backs.
  const int64_t columns = std::min<int64_t>(std::max(num_elements, 0), tables.element_length.extent());
  if (!locations.allocate({max_integration_order, columns}, 0.0)) {
    int32_t flag = 0;
    header_failure("Unable to allocate memory for the integration point locations:", flag);
    failed = true;
    return;
  }
  shape_functions::initialise_fc_data4(shape_function_order, static_cast<int32_t>(columns),
                                                tables.element_length.data(), locations.storage());
}

}  // namespace tmrdar::header
