// Where a node lies in the undeformed model.
#include <cmath>
#include <limits>

#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {

int32_t NEAREST_INTEGER(float value) {
  if (std::isnan(value)) return 0;
  const double rounded = std::round(static_cast<double>(value));
  if (rounded <= static_cast<double>(std::numeric_limits<int32_t>::min())) return std::numeric_limits<int32_t>::min();
  if (rounded >= static_cast<double>(std::numeric_limits<int32_t>::max())) return std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(rounded);
}

void V861_GETNODEPROPERTIES(const TIDE3_DATABASE_FILES& db, int32_t row, int32_t kind,
                            std::span<float> coordinates) {
  const header::HEADER_TABLES& t = db.TABLES;
  if (coordinates.size() < 3) return;
  // A node's coordinates stand together in its column; an auxiliary node's
  // stand in one row, a column apart.
  if (kind == MAIN_KIND && t.NODE_COORDINATES.CONTAINS(3, row)) {
    for (int32_t c = 1; c <= 3; ++c) coordinates[static_cast<std::size_t>(c - 1)] = t.NODE_COORDINATES(c, row);
  } else if (kind == AUXILIARY_KIND && t.AUX_NODE_COORDINATES.CONTAINS(row, 3)) {
    for (int32_t c = 1; c <= 3; ++c) coordinates[static_cast<std::size_t>(c - 1)] = t.AUX_NODE_COORDINATES(row, c);
  }
}

int32_t NODE_PROPERTIES(const TIDE3_DATABASE_FILES& db, int32_t number, int32_t kind,
                        std::span<float> coordinates) {
  const int32_t row = kind == AUXILIARY_KIND ? db.POST_AUX_NODE_CODING(number) : db.POST_NODE_CODING(number);
  if (row == 0) return 0;
  V861_GETNODEPROPERTIES(db, row, kind, coordinates);
  return row;
}

}  // namespace tmrdar::model_queries
