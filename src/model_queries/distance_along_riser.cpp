// How far along the riser an element lies: its rows laid end to end in row
// order, from the start of row 1, in single precision.
#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {

void V861_GETDISTANCEALONGRISER(const TIDE3_DATABASE_FILES& db, int32_t row, int32_t position, float& distance) {
  const header::HEADER_TABLES& t = db.TABLES;
  const header::TABLE<float>& before = t.MODEL_QUERIES.DISTANCE_PREFIX;
  if (!before.CONTAINS(row) || !t.ELEMENT_LENGTH.CONTAINS(row)) return;
  // The lengths of the rows before this one were summed at open, in row
  // order from 0.0 in a 32-bit sum: the value of the sum made here and now.
  const float sum = before(row);
  const float length = t.ELEMENT_LENGTH(row);
  if (position == ELEMENT_MIDDLE) {
    distance = length * 0.5F + sum;
  } else if (position == ELEMENT_END) {
    distance = sum + length;
  } else {
    distance = sum;
  }
}

int32_t DISTANCE_ALONG_RISER(const TIDE3_DATABASE_FILES& db, int32_t number, int32_t position, float& distance) {
  // An auxiliary element, negative, has no place along the riser.
  const int32_t row = db.POST_ELEM_CODING(number);
  if (row < 1 || !db.TABLES.MODEL_QUERIES.DISTANCE_PREFIX.CONTAINS(row) || !db.TABLES.ELEMENT_LENGTH.CONTAINS(row)) {
    distance = 0.0F;
    return -1;
  }
  V861_GETDISTANCEALONGRISER(db, row, position, distance);
  return 0;
}

}  // namespace tmrdar::model_queries
