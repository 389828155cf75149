// What an element is made of: its end nodes, length, fluid and section values,
// in slots of fixed meaning.
#include <algorithm>

#include "model_queries/model_queries.h"

namespace tmrdar::model_queries {
namespace {

using header::HEADER_TABLES;
using header::TABLE;

// An entry of a table, or `mark` for a row that it does not hold.
template <typename T>
T AT(const TABLE<T>& table, int64_t row, T mark) {
  return table.CONTAINS(row) ? table(row) : mark;
}

// Writes to slot s (from 1) where the array has it.
template <typename T>
void PUT(std::span<T> slots, int32_t s, T value) {
  if (s >= 1 && static_cast<std::size_t>(s) <= slots.size()) slots[static_cast<std::size_t>(s - 1)] = value;
}

// The user's number of node row `row`, -1 for a row the node table does not
// hold (an end that stayed a file number has row 0).
int32_t NODE_NUMBER(const HEADER_TABLES& t, int32_t row) {
  return t.NODE_NUMBERS.CONTAINS(row, 2) ? t.NODE_NUMBERS(row, 2) : NO_INTEGER;
}

void MAIN_SLOTS(const TIDE3_DATABASE_FILES& db, int32_t row, std::span<int32_t> integers, std::span<float> reals) {
  const HEADER_TABLES& t = db.TABLES;
  if (!t.ELEMENT_NUMBERS.CONTAINS(row, 2)) return;
  const header::TABLE<int32_t, 2>& ends = t.MODEL_QUERIES.END_NODE_ROWS;
  const auto end = [&](int32_t k) { return ends.CONTAINS(row, k) ? ends(row, k) : 0; };
  const auto section = [&](int32_t c) {
    return t.ELEMENT_SECTION_TABLE.CONTAINS(row, c) ? t.ELEMENT_SECTION_TABLE(row, c) : NO_REAL;
  };

  PUT(integers, 1, row);
  PUT(integers, 2, NODE_NUMBER(t, end(1)));
  PUT(integers, 3, NODE_NUMBER(t, end(2)));
  PUT(integers, 4, AT(t.ELEMENT_A8, row, NO_INTEGER));
  PUT(integers, 5, AT(t.ELEMENT_B5, row, NO_INTEGER));
  if (t.ELEMENT_SECTION_TABLE.CONTAINS(row, 4)) {
    PUT(integers, 6, NEAREST_INTEGER(section(2)));
    PUT(integers, 7, NEAREST_INTEGER(section(4)));
  }

  float fluid_1 = 0.0F;
  float fluid_2 = 0.0F;
  float fluid_3 = 0.0F;
  GET_EXTERNAL_FLUID_PROP(db, row, fluid_1, fluid_2, fluid_3);
  const float values[] = {AT(t.ELEMENT_LENGTH, row, NO_REAL),
                          fluid_1,
                          fluid_2,
                          fluid_3,
                          AT(t.ELEMENT_B1, row, NO_REAL),
                          AT(t.ELEMENT_B2, row, NO_REAL),
                          AT(t.ELEMENT_B3, row, NO_REAL),
                          AT(t.ELEMENT_B4, row, NO_REAL),
                          section(3),
                          AT(t.ELEMENT_A6, row, NO_REAL),
                          AT(t.ELEMENT_A7, row, NO_REAL),
                          AT(t.ELEMENT_B6, row, NO_REAL),
                          AT(t.ELEMENT_B7, row, NO_REAL),
                          AT(t.ELEMENT_B8, row, NO_REAL),
                          AT(t.ELEMENT_C1, row, NO_REAL)};
  int32_t s = 0;
  for (const float value : values) PUT(reals, ++s, value);
}

void AUXILIARY_SLOTS(const TIDE3_DATABASE_FILES& db, int64_t row, std::span<int32_t> integers) {
  const HEADER_TABLES& t = db.TABLES;
  if (!t.AUX_ELEMENT_NUMBERS.CONTAINS(row)) return;
  // The ends are rows of the auxiliary node table as the file gives them.
  const auto node_number = [&](int64_t end) {
    if (!t.AUX_ELEMENT_NODES.CONTAINS(end, row)) return NO_INTEGER;
    return AT(t.AUX_NODE_NUMBERS, t.AUX_ELEMENT_NODES(end, row), NO_INTEGER);
  };
  PUT(integers, 1, static_cast<int32_t>(row));
  PUT(integers, 2, node_number(1));
  PUT(integers, 3, node_number(2));
  PUT(integers, 4, AT(t.AUX_ELEMENT_W8, row, NO_INTEGER));
}

}  // namespace

int32_t ELEMENT_ROW(const TIDE3_DATABASE_FILES& db, int32_t number, int32_t kind) {
  if (kind == MAIN_KIND) return db.POST_ELEM_CODING(number);
  if (kind == AUXILIARY_KIND) return db.POST_AUX_ELEM_CODING(number);
  return 0;
}

void GET_EXTERNAL_FLUID_PROP(const TIDE3_DATABASE_FILES& db, int32_t row, float& value_1, float& value_2,
                             float& value_3) {
  const HEADER_TABLES& t = db.TABLES;
  value_1 = db.EXTERNAL_FLUID_DEFAULT_A;
  value_2 = db.EXTERNAL_FLUID_DEFAULT_B;
  value_3 = 0.0F;
  // The pair whose search finds the row was found for every row at open.
  const int32_t pair = AT(t.MODEL_QUERIES.ENCLOSING_PAIR, row, 0);
  if (!t.PIP_DATA.CONTAINS(1, 1, pair)) return;
  // The enclosing element stands in the first row of the pair, whichever row
  // the search found; one that is no element row leaves the defaults.
  const int32_t outer = t.PIP_DATA(1, 1, pair);
  if (outer < 1 || !t.ELEMENT_B1.CONTAINS(outer) || !t.ELEMENT_B2.CONTAINS(outer) || !t.ELEMENT_B3.CONTAINS(outer)) {
    return;
  }
  value_1 = t.ELEMENT_B1(outer);
  value_2 = t.ELEMENT_B2(outer);
  value_3 = t.ELEMENT_B3(outer);
}

void V861_GETELEMENTPROPERTIES(const TIDE3_DATABASE_FILES& db, int32_t row, int32_t kind, int32_t n,
                               std::span<int32_t> integers, std::span<float> reals, int32_t& status) {
  const auto marked = static_cast<std::size_t>(std::max(n, 0));
  std::fill_n(integers.begin(), std::min(marked, integers.size()), NO_INTEGER);
  std::fill_n(reals.begin(), std::min(marked, reals.size()), NO_REAL);
  status = 0;
  // A negative main row is an auxiliary element's, and is answered as one.
  int64_t r = row;
  if (kind == MAIN_KIND && r < 0) {
    kind = AUXILIARY_KIND;
    r = -r;
  }
  if (kind == MAIN_KIND) {
    if (n < ELEMENT_SLOTS) {
      status = ELEMENT_SLOTS;
      return;
    }
    MAIN_SLOTS(db, row, integers, reals);
  } else if (kind == AUXILIARY_KIND) {
    if (n < AUX_ELEMENT_SLOTS) {
      status = AUX_ELEMENT_SLOTS;
      return;
    }
    AUXILIARY_SLOTS(db, r, integers);
  }
}

int32_t ELEMENT_PROPERTIES(const TIDE3_DATABASE_FILES& db, int32_t number, int32_t kind, int32_t n,
                           std::span<int32_t> integers, std::span<float> reals) {
  const int32_t row = ELEMENT_ROW(db, number, kind);
  if (row == 0) return -1;
  int32_t status = 0;
  V861_GETELEMENTPROPERTIES(db, row, kind, n, integers, reals, status);
  return status;
}

}  // namespace tmrdar::model_queries
