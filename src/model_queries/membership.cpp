#include "model_queries/membership.h"

#include <algorithm>

namespace tmrdar::membership {
namespace {

// Entry `index` (from 0) of a table, where it has one.
bool holds(std::span<const int32_t> table, int64_t index, int32_t value) {
  return index >= 0 && static_cast<uint64_t>(index) < table.size() && table[static_cast<std::size_t>(index)] == value;
}

// The first row (from 1) among the `rows` of column `column` of a table of
// `rows` rows that holds `value`; 0 for none.
int64_t first_row(std::span<const int32_t> table, int64_t rows, int64_t column, int32_t value) {
  for (int64_t r = 1; r <= rows; ++r) {
    if (holds(table, (column - 1) * rows + r - 1, value)) return r;
  }
  return 0;
}

}  // namespace

int32_t is_node_in_database(int32_t node, int32_t n, int32_t m, int32_t /*unused*/,
                            std::span<const int32_t> node_table, std::span<const int32_t> pair_table) {
  const int64_t row = first_row(node_table, n, 2, node);
  if (row == 0 || m < 1) return logical_false;
  const auto entries = std::min<uint64_t>(2 * static_cast<uint64_t>(m), pair_table.size());
  const auto pairs = pair_table.first(static_cast<std::size_t>(entries));
  return std::find(pairs.begin(), pairs.end(), row) != pairs.end() ? logical_true : logical_false;
}

int32_t is_element_in_database(int32_t element, std::span<const int32_t> table, int32_t m) {
  return first_row(table, m, 2, element) != 0 ? logical_true : logical_false;
}

int32_t elem_in_set(int32_t element, std::span<const int32_t> list, int32_t m) {
  return static_cast<int32_t>(first_row(list, m, 1, element));
}

}  // namespace tmrdar::membership
