// How far along the riser an element lies: its rows laid end to end in row
// order, from the start of row 1, in single precision.
#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {

void v861_getdistancealongriser(const FormatReader& db, int32_t row, int32_t position, float& distance) {
  const header::HeaderTables& t = db.tables;
  const header::Table<float>& before = t.model_queries.distance_prefix;
  if (!before.contains(row) || !t.element_length.contains(row)) return;
  // The lengths of the rows before this one were summed at open, in row
  // order from 0.0 in a 32-bit sum: the value of the sum made here and now.
  const float sum = before(row);
  const float length = t.element_length(row);
  if (position == element_middle) {
    distance = length * 0.5F + sum;
  } else if (position == element_end) {
    distance = sum + length;
  } else {
    distance = sum;
  }
}

int32_t distance_along_riser(const FormatReader& db, int32_t number, int32_t position, float& distance) {
  // An auxiliary element, negative, has no place along the riser.
  const int32_t row = db.post_elem_coding(number);
  if (row < 1 || !db.tables.model_queries.distance_prefix.contains(row) || !db.tables.element_length.contains(row)) {
    distance = 0.0F;
    return -1;
  }
  v861_getdistancealongriser(db, row, position, distance);
  return 0;
}

}  // namespace tmrdar::model_queries
