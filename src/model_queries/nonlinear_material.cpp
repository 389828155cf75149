// The points of one nonlinear material curve: the rows of the nonlinear E
// table from the first that carries the curve's number, as pairs.
#include <algorithm>
#include <cmath>

#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {

void v861_getnonlinearmaterial(const FormatReader& db, int32_t curve, int32_t capacity,
                               std::span<float> values, int32_t& status) {
  const header::Table<float, 2>& table = db.tables.nonlinear_e_table;
  const int64_t rows = table.extent(2) >= 4 ? std::min<int64_t>(db.num_nonlinear_e_tables, table.extent(1)) : 0;
  // The negated number; the lowest integer has no other.
  const auto not_found = static_cast<int32_t>(-static_cast<int64_t>(curve));

  // Column 1 to the nearest integer, compared as a real: a value past the
  // integers matches no number.
  int64_t first = 0;
  for (int64_t i = 1; i <= rows && first == 0; ++i) {
    if (std::round(static_cast<double>(table(i, 1))) == static_cast<double>(curve)) first = i;
  }
  if (first == 0) {
    status = not_found;
    return;
  }
  const int32_t points = nearest_integer(table(first, 2));
  if (points == 0) {
    status = not_found;
    return;
  }
  if (capacity < points) {
    status = points;
    return;
  }
  status = 0;
  // A count that runs past the last row copies the rows there are.
  const int64_t last = std::min<int64_t>(first + points - 1, rows);
  for (int64_t i = first; i <= last; ++i) {
    const auto place = static_cast<std::size_t>(2 * (i - first));
    if (place + 1 >= values.size()) break;
    values[place] = table(i, 3);
    values[place + 1] = table(i, 4);
  }
}

}  // namespace tmrdar::model_queries
