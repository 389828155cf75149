// The structural model blocks 16 to 21 of a header: elements, their section
// values, the nonlinear E tables, nodes, auxiliary elements and auxiliary
// nodes; and the translation of the element end nodes from the numbers that
// the file gives them to rows of the node tables.
#include <algorithm>
#include <bit>
#include <initializer_list>

#include "header/block_reading.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view ELEMENT_FAILURE = "Unable to read element data from database header.";
constexpr std::string_view MATERIAL_FAILURE = "Unable to read nonlinear material data from the database header.";
constexpr std::string_view NODE_FAILURE = "Unable to read node data from database header.";
constexpr std::string_view AUX_ELEMENT_FAILURE = "Unable to read auxiliary element data from database header.";
constexpr std::string_view AUX_NODE_FAILURE = "Unable to read auxiliary node data from database header.";
constexpr std::string_view INDEX_FAILURE = "Unable to allocate memory for database header data.";

// The length kept for an element whose file gives a negative one: 1.0e-8.
constexpr uint32_t TINY_LENGTH_BITS = 0x322BCC77U;

// Stores a value where the table has the entry, and nowhere else: a table
// made smaller than its count loses the rows it has no room for.
template <typename T, std::size_t RANK, typename V, typename... I>
void PUT(TABLE<T, RANK>& table, V value, I... index) {
  if (table.CONTAINS(index...)) table(index...) = static_cast<T>(value);
}

// The rows of a block that are read: its count, but never more than the rows
// of the table that a row is read into.
int64_t ROWS(int32_t count, int64_t table_rows) { return std::min<int64_t>(count, table_rows); }

}  // namespace

bool TIDE3_DATABASE_FILES::READ_STRUCTURE_BLOCKS(int32_t& flag) {
  HEADER_TABLES& t = TABLES;
  const std::array<int32_t, 8>& in = HEADER_INTS;
  const std::array<float, 8>& re = HEADER_REALS;
  constexpr WORDS I = WORDS::INTS;
  constexpr WORDS R = WORDS::REALS;
  int32_t status = 0;
  // One record of a block, at record `record` (from 0) of the block.
  const auto read = [&](int64_t block, int64_t record, std::initializer_list<RUN> runs) {
    READ_RUNS(*this, RECORD_AT(block, record), runs, status);
    return status == 0;
  };

  // Block 16: three records an element.
  if (NUM_ELEMENTS > 0) {
    const int64_t block = BLOCK_POSITION(16);
    const int64_t rows = ROWS(NUM_ELEMENTS, t.ELEMENT_NUMBERS.EXTENT(1));
    for (int64_t i = 1; i <= rows; ++i) {
      if (!read(block, 3 * (i - 1), {{I, 4}, {R, 3}, {I, 1}})) return HEADER_FAILURE(ELEMENT_FAILURE, flag);
      PUT(t.ELEMENT_NUMBERS, in[0], i, 1);
      PUT(t.ELEMENT_NUMBERS, in[1], i, 2);
      PUT(t.ELEMENT_NODES, in[2], i, 1);
      PUT(t.ELEMENT_NODES, in[3], i, 2);
      // Only a length below zero is replaced; zero, and minus zero, stay.
      PUT(t.ELEMENT_LENGTH, re[0] < 0.0F ? std::bit_cast<float>(TINY_LENGTH_BITS) : re[0], i);
      PUT(t.ELEMENT_A6, re[1], i);
      PUT(t.ELEMENT_A7, re[2], i);
      PUT(t.ELEMENT_A8, in[4], i);

      if (!read(block, 3 * (i - 1) + 1, {{R, 4}, {I, 1}, {R, 3}})) return HEADER_FAILURE(ELEMENT_FAILURE, flag);
      PUT(t.ELEMENT_B1, re[0], i);
      PUT(t.ELEMENT_B2, re[1], i);
      PUT(t.ELEMENT_B3, re[2], i);
      PUT(t.ELEMENT_B4, re[3], i);
      PUT(t.ELEMENT_B5, in[0], i);
      PUT(t.ELEMENT_B6, re[4], i);
      PUT(t.ELEMENT_B7, re[5], i);
      PUT(t.ELEMENT_B8, re[6], i);

      if (!read(block, 3 * (i - 1) + 2, {{R, 1}})) return HEADER_FAILURE(ELEMENT_FAILURE, flag);
      PUT(t.ELEMENT_C1, re[0], i);
    }
  }

  // Block 17: one record an element, its integers kept as reals.
  if (NUM_ELEMENTS > 0) {
    const int64_t block = BLOCK_POSITION(17);
    const int64_t rows = ROWS(NUM_ELEMENTS, t.ELEMENT_SECTION_TABLE.EXTENT(1));
    for (int64_t i = 1; i <= rows; ++i) {
      if (!read(block, i - 1, {{I, 2}, {R, 1}, {I, 1}})) return HEADER_FAILURE(MATERIAL_FAILURE, flag);
      PUT(t.ELEMENT_SECTION_TABLE, static_cast<float>(in[0]), i, 1);
      PUT(t.ELEMENT_SECTION_TABLE, static_cast<float>(in[1]), i, 2);
      PUT(t.ELEMENT_SECTION_TABLE, re[0], i, 3);
      PUT(t.ELEMENT_SECTION_TABLE, static_cast<float>(in[2]), i, 4);
    }
  }

  // Block 18: one record a point of a curve.
  if (NUM_NONLINEAR_E_TABLES > 0) {
    const int64_t block = BLOCK_POSITION(18);
    const int64_t rows = ROWS(NUM_NONLINEAR_E_TABLES, t.NONLINEAR_E_TABLE.EXTENT(1));
    for (int64_t r = 1; r <= rows; ++r) {
      if (!read(block, r - 1, {{I, 2}, {R, 2}})) return HEADER_FAILURE(MATERIAL_FAILURE, flag);
      PUT(t.NONLINEAR_E_TABLE, static_cast<float>(in[0]), r, 1);
      PUT(t.NONLINEAR_E_TABLE, static_cast<float>(in[1]), r, 2);
      PUT(t.NONLINEAR_E_TABLE, re[0], r, 3);
      PUT(t.NONLINEAR_E_TABLE, re[1], r, 4);
    }
  }

  // Block 19: one record a node. A node with a boundary condition slot above
  // zero joins the list of condition nodes while the list has room.
  if (NUM_NODES > 0) {
    const int64_t block = BLOCK_POSITION(19);
    const int64_t rows = ROWS(NUM_NODES, t.NODE_NUMBERS.EXTENT(1));
    const int64_t room = ROWS(NUM_BOUNDARY_CONDITIONS, t.CONDITION_NODES.EXTENT(1));
    int64_t conditions = 0;
    for (int64_t j = 1; j <= rows; ++j) {
      if (!read(block, j - 1, {{I, 1}, {R, 3}, {I, 2}})) return HEADER_FAILURE(NODE_FAILURE, flag);
      PUT(t.NODE_NUMBERS, in[0], j, 1);
      PUT(t.NODE_COORDINATES, re[0], 1, j);
      PUT(t.NODE_COORDINATES, re[1], 2, j);
      PUT(t.NODE_COORDINATES, re[2], 3, j);
      PUT(t.NODE_NUMBERS, in[1], j, 2);
      if (in[2] > 0 && conditions < room) PUT(t.CONDITION_NODES, in[2], ++conditions);
    }
  }

  // The end nodes of the elements, from file numbers to node rows: the first
  // row that holds the number, as a search of the node table from its top
  // would find it. A number that no node has stays as it is.
  {
    const bool has_column = t.NODE_NUMBERS.ALLOCATED() && t.NODE_NUMBERS.EXTENT(2) >= 1;
    const int64_t rows = has_column ? ROWS(std::max(NUM_NODES, 0), t.NODE_NUMBERS.EXTENT(1)) : 0;
    const auto nodes = static_cast<std::size_t>(rows);
    const std::span<const int32_t> file_numbers(t.NODE_NUMBERS.DATA().data(), nodes);
    if (!t.NODE_FILE_NUMBER_INDEX.BUILD(file_numbers)) return HEADER_FAILURE(INDEX_FAILURE, flag);
  }
  if (NUM_ELEMENTS > 0 && NODES_PER_ELEMENT > 0) {
    const int64_t rows = ROWS(NUM_ELEMENTS, t.ELEMENT_NODES.EXTENT(1));
    const int64_t columns = ROWS(NODES_PER_ELEMENT, t.ELEMENT_NODES.EXTENT(2));
    for (int64_t k = 1; k <= columns; ++k) {
      for (int64_t i = 1; i <= rows; ++i) {
        int32_t& node = t.ELEMENT_NODES(i, k);
        const int32_t row = t.NODE_FILE_NUMBER_INDEX.FIND(node);
        if (row != 0) node = row;
      }
    }
  }

  // Block 20: two records an auxiliary element.
  if (NUM_AUX_ELEMENTS > 0) {
    const int64_t block = BLOCK_POSITION(20);
    const int64_t rows = ROWS(NUM_AUX_ELEMENTS, t.AUX_ELEMENT_NUMBERS.EXTENT(1));
    for (int64_t k = 1; k <= rows; ++k) {
      if (!read(block, 2 * (k - 1), {{I, 4}, {R, 3}, {I, 1}})) return HEADER_FAILURE(AUX_ELEMENT_FAILURE, flag);
      PUT(t.AUX_ELEMENT_NUMBERS, in[1], k);
      PUT(t.AUX_ELEMENT_NODES, in[2], 1, k);
      PUT(t.AUX_ELEMENT_NODES, in[3], 2, k);
      PUT(t.AUX_ELEMENT_R5, re[0], k);
      PUT(t.AUX_ELEMENT_R6, re[1], k);
      PUT(t.AUX_ELEMENT_R7, re[2], k);
      PUT(t.AUX_ELEMENT_W8, in[4], k);
      if (!read(block, 2 * (k - 1) + 1, {{I, 2}})) return HEADER_FAILURE(AUX_ELEMENT_FAILURE, flag);
      PUT(t.AUX_ELEMENT_W9, in[0], k);
    }
  }

  // Block 21: one record an auxiliary node.
  if (NUM_AUX_NODES > 0) {
    const int64_t block = BLOCK_POSITION(21);
    const int64_t rows = ROWS(NUM_AUX_NODES, t.AUX_NODE_NUMBERS.EXTENT(1));
    for (int64_t k = 1; k <= rows; ++k) {
      if (!read(block, k - 1, {{I, 1}, {R, 3}})) return HEADER_FAILURE(AUX_NODE_FAILURE, flag);
      PUT(t.AUX_NODE_NUMBERS, in[0], k);
      PUT(t.AUX_NODE_COORDINATES, re[0], k, 1);
      PUT(t.AUX_NODE_COORDINATES, re[1], k, 2);
      PUT(t.AUX_NODE_COORDINATES, re[2], k, 3);
    }
  }
  return true;
}

}  // namespace tmrdar::header
