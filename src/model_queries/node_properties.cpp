// Where a node lies in the undeformed model.
#include <cmath>
#include <limits>

#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {

int32_t nearest_integer(float value) {
  if (std::isnan(value)) return 0;
  const double rounded = std::round(static_cast<double>(value));
  if (rounded <= static_cast<double>(std::numeric_limits<int32_t>::min())) return std::numeric_limits<int32_t>::min();
  if (rounded >= static_cast<double>(std::numeric_limits<int32_t>::max())) return std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(rounded);
}

void v861_getnodeproperties(const FormatReader& db, int32_t row, int32_t kind,
                            std::span<float> coordinates) {
  const header::HeaderTables& t = db.tables;
  if (coordinates.size() < 3) return;
  // A node's coordinates stand together in its column; an auxiliary node's
  // stand in one row, a column apart.
  if (kind == main_kind && t.node_coordinates.contains(3, row)) {
    for (int32_t c = 1; c <= 3; ++c) coordinates[static_cast<std::size_t>(c - 1)] = t.node_coordinates(c, row);
  } else if (kind == auxiliary_kind && t.aux_node_coordinates.contains(row, 3)) {
    for (int32_t c = 1; c <= 3; ++c) coordinates[static_cast<std::size_t>(c - 1)] = t.aux_node_coordinates(row, c);
  }
}

int32_t node_properties(const FormatReader& db, int32_t number, int32_t kind,
                        std::span<float> coordinates) {
  const int32_t row = kind == auxiliary_kind ? db.post_aux_node_coding(number) : db.post_node_coding(number);
  if (row == 0) return 0;
  v861_getnodeproperties(db, row, kind, coordinates);
  return row;
}

}  // namespace tmrdar::model_queries
