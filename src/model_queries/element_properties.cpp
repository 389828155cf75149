// What an element is made of: its end nodes, length, fluid and section values,
// in slots of fixed meaning.
#include <algorithm>

#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {
namespace {

using header::HeaderTables;
using header::Table;

// An entry of a table, or `mark` for a row that it does not hold.
template <typename T>
T at(const Table<T>& table, int64_t row, T mark) {
  return table.contains(row) ? table(row) : mark;
}

// Writes to slot s (from 1) where the array has it.
template <typename T>
void put(std::span<T> slots, int32_t s, T value) {
  if (s >= 1 && static_cast<std::size_t>(s) <= slots.size()) slots[static_cast<std::size_t>(s - 1)] = value;
}

// The user's number of node row `row`, -1 for a row the node table does not
// hold (an end that stayed a file number has row 0).
int32_t node_number(const HeaderTables& t, int32_t row) {
  return t.node_numbers.contains(row, 2) ? t.node_numbers(row, 2) : no_integer;
}

void main_slots(const FormatReader& db, int32_t row, std::span<int32_t> integers, std::span<float> reals) {
  const HeaderTables& t = db.tables;
  if (!t.element_numbers.contains(row, 2)) return;
  const header::Table<int32_t, 2>& ends = t.model_queries.end_node_rows;
  const auto end = [&](int32_t k) { return ends.contains(row, k) ? ends(row, k) : 0; };
  const auto section = [&](int32_t c) {
    return t.element_section_table.contains(row, c) ? t.element_section_table(row, c) : no_real;
  };

  put(integers, 1, row);
  put(integers, 2, node_number(t, end(1)));
  put(integers, 3, node_number(t, end(2)));
  put(integers, 4, at(t.element_a8, row, no_integer));
  put(integers, 5, at(t.element_b5, row, no_integer));
  if (t.element_section_table.contains(row, 4)) {
    put(integers, 6, nearest_integer(section(2)));
    put(integers, 7, nearest_integer(section(4)));
  }

  float fluid_1 = 0.0F;
  float fluid_2 = 0.0F;
  float fluid_3 = 0.0F;
  get_external_fluid_prop(db, row, fluid_1, fluid_2, fluid_3);
  const float values[] = {at(t.element_length, row, no_real),
                          fluid_1,
                          fluid_2,
                          fluid_3,
                          at(t.element_b1, row, no_real),
                          at(t.element_b2, row, no_real),
                          at(t.element_b3, row, no_real),
                          at(t.element_b4, row, no_real),
                          section(3),
                          at(t.element_a6, row, no_real),
                          at(t.element_a7, row, no_real),
                          at(t.element_b6, row, no_real),
                          at(t.element_b7, row, no_real),
                          at(t.element_b8, row, no_real),
                          at(t.element_c1, row, no_real)};
  int32_t s = 0;
  for (const float value : values) put(reals, ++s, value);
}

void auxiliary_slots(const FormatReader& db, int64_t row, std::span<int32_t> integers) {
  const HeaderTables& t = db.tables;
  if (!t.aux_element_numbers.contains(row)) return;
  // The ends are rows of the auxiliary node table as the file gives them.
  const auto node_number = [&](int64_t end) {
    if (!t.aux_element_nodes.contains(end, row)) return no_integer;
    return at(t.aux_node_numbers, t.aux_element_nodes(end, row), no_integer);
  };
  put(integers, 1, static_cast<int32_t>(row));
  put(integers, 2, node_number(1));
  put(integers, 3, node_number(2));
  put(integers, 4, at(t.aux_element_w8, row, no_integer));
}

}  // namespace

int32_t element_row(const FormatReader& db, int32_t number, int32_t kind) {
  if (kind == main_kind) return db.post_elem_coding(number);
  if (kind == auxiliary_kind) return db.post_aux_elem_coding(number);
  return 0;
}

void get_external_fluid_prop(const FormatReader& db, int32_t row, float& value_1, float& value_2,
                             float& value_3) {
  const HeaderTables& t = db.tables;
  value_1 = db.external_fluid_default_a;
  value_2 = db.external_fluid_default_b;
  value_3 = 0.0F;
  // The pair whose search finds the row was found for every row at open.
  const int32_t pair = at(t.model_queries.enclosing_pair, row, 0);
  if (!t.pip_data.contains(1, 1, pair)) return;
  // The enclosing element stands in the first row of the pair, whichever row
  // the search found; one that is no element row leaves the defaults.
  const int32_t outer = t.pip_data(1, 1, pair);
  if (outer < 1 || !t.element_b1.contains(outer) || !t.element_b2.contains(outer) || !t.element_b3.contains(outer)) {
    return;
  }
  value_1 = t.element_b1(outer);
  value_2 = t.element_b2(outer);
  value_3 = t.element_b3(outer);
}

void v861_getelementproperties(const FormatReader& db, int32_t row, int32_t kind, int32_t n,
                               std::span<int32_t> integers, std::span<float> reals, int32_t& status) {
  const auto marked = static_cast<std::size_t>(std::max(n, 0));
  std::fill_n(integers.begin(), std::min(marked, integers.size()), no_integer);
  std::fill_n(reals.begin(), std::min(marked, reals.size()), no_real);
  status = 0;
  // A negative main row is an auxiliary element's, and is answered as one.
  int64_t r = row;
  if (kind == main_kind && r < 0) {
    kind = auxiliary_kind;
    r = -r;
  }
  if (kind == main_kind) {
    if (n < element_slots) {
      status = element_slots;
      return;
    }
    main_slots(db, row, integers, reals);
  } else if (kind == auxiliary_kind) {
    if (n < aux_element_slots) {
      status = aux_element_slots;
      return;
    }
    auxiliary_slots(db, r, integers);
  }
}

int32_t element_properties(const FormatReader& db, int32_t number, int32_t kind, int32_t n,
                           std::span<int32_t> integers, std::span<float> reals) {
  const int32_t row = element_row(db, number, kind);
  if (row == 0) return -1;
  int32_t status = 0;
  v861_getelementproperties(db, row, kind, n, integers, reals, status);
  return status;
}

}  // namespace tmrdar::model_queries
