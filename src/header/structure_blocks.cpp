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

constexpr std::string_view element_failure = "Unable to read element data from database header.";
constexpr std::string_view material_failure = "Unable to read nonlinear material data from the database header.";
constexpr std::string_view node_failure = "Unable to read node data from database header.";
constexpr std::string_view aux_element_failure = "Unable to read auxiliary element data from database header.";
constexpr std::string_view aux_node_failure = "Unable to read auxiliary node data from database header.";
constexpr std::string_view index_failure = "Unable to allocate memory for database header data.";

// The length kept for an element whose file gives a negative one: 1.0e-8.
constexpr uint32_t tiny_length_bits = 0x322BCC77U;

// Stores a value where the table has the entry, and nowhere else: a table
// made smaller than its count loses the rows it has no room for.
template <typename T, std::size_t rank, typename V, typename... I>
void put(Table<T, rank>& table, V value, I... index) {
  if (table.contains(index...)) table(index...) = static_cast<T>(value);
}

// The rows of a block that are read: its count, but never more than the rows
// of the table that a row is read into.
int64_t rows_read(int32_t count, int64_t table_rows) { return std::min<int64_t>(count, table_rows); }

}  // namespace

bool FormatReader::read_structure_blocks(int32_t& flag) {
  HeaderTables& t = tables;
  const std::array<int32_t, 8>& in = header_ints;
  const std::array<float, 8>& re = header_reals;
  constexpr Words ints = Words::ints;
  constexpr Words reals = Words::reals;
  int32_t status = 0;
  // One record of a block, at record `record` (from 0) of the block.
  const auto read = [&](int64_t block, int64_t record, std::initializer_list<Run> runs) {
    read_runs(*this, record_at(block, record), runs, status);
    return status == 0;
  };

  // Block 16: three records an element.
  if (num_elements > 0) {
    const int64_t block = block_position(16);
    const int64_t rows = rows_read(num_elements, t.element_numbers.extent(1));
    for (int64_t i = 1; i <= rows; ++i) {
      if (!read(block, 3 * (i - 1), {{ints, 4}, {reals, 3}, {ints, 1}})) return header_failure(element_failure, flag);
      put(t.element_numbers, in[0], i, 1);
      put(t.element_numbers, in[1], i, 2);
      put(t.element_nodes, in[2], i, 1);
      put(t.element_nodes, in[3], i, 2);
      // Only a length below zero is replaced; zero, and minus zero, stay.
      put(t.element_length, re[0] < 0.0F ? std::bit_cast<float>(tiny_length_bits) : re[0], i);
      put(t.element_a6, re[1], i);
      put(t.element_a7, re[2], i);
      put(t.element_a8, in[4], i);

      if (!read(block, 3 * (i - 1) + 1, {{reals, 4}, {ints, 1}, {reals, 3}})) return header_failure(element_failure, flag);
      put(t.element_b1, re[0], i);
      put(t.element_b2, re[1], i);
      put(t.element_b3, re[2], i);
      put(t.element_b4, re[3], i);
      put(t.element_b5, in[0], i);
      put(t.element_b6, re[4], i);
      put(t.element_b7, re[5], i);
      put(t.element_b8, re[6], i);

      if (!read(block, 3 * (i - 1) + 2, {{reals, 1}})) return header_failure(element_failure, flag);
      put(t.element_c1, re[0], i);
    }
  }

  // Block 17: one record an element, its integers kept as reals.
  if (num_elements > 0) {
    const int64_t block = block_position(17);
    const int64_t rows = rows_read(num_elements, t.element_section_table.extent(1));
    for (int64_t i = 1; i <= rows; ++i) {
      if (!read(block, i - 1, {{ints, 2}, {reals, 1}, {ints, 1}})) return header_failure(material_failure, flag);
      put(t.element_section_table, static_cast<float>(in[0]), i, 1);
      put(t.element_section_table, static_cast<float>(in[1]), i, 2);
      put(t.element_section_table, re[0], i, 3);
      put(t.element_section_table, static_cast<float>(in[2]), i, 4);
    }
  }

  // Block 18: one record a point of a curve.
  if (num_nonlinear_e_tables > 0) {
    const int64_t block = block_position(18);
    const int64_t rows = rows_read(num_nonlinear_e_tables, t.nonlinear_e_table.extent(1));
    for (int64_t r = 1; r <= rows; ++r) {
      if (!read(block, r - 1, {{ints, 2}, {reals, 2}})) return header_failure(material_failure, flag);
      put(t.nonlinear_e_table, static_cast<float>(in[0]), r, 1);
      put(t.nonlinear_e_table, static_cast<float>(in[1]), r, 2);
      put(t.nonlinear_e_table, re[0], r, 3);
      put(t.nonlinear_e_table, re[1], r, 4);
    }
  }

  // Block 19: one record a node. A node with a boundary condition slot above
  // zero joins the list of condition nodes while the list has room.
  if (num_nodes > 0) {
    const int64_t block = block_position(19);
    const int64_t rows = rows_read(num_nodes, t.node_numbers.extent(1));
    const int64_t room = rows_read(num_boundary_conditions, t.condition_nodes.extent(1));
    int64_t conditions = 0;
    for (int64_t j = 1; j <= rows; ++j) {
      if (!read(block, j - 1, {{ints, 1}, {reals, 3}, {ints, 2}})) return header_failure(node_failure, flag);
      put(t.node_numbers, in[0], j, 1);
      put(t.node_coordinates, re[0], 1, j);
      put(t.node_coordinates, re[1], 2, j);
      put(t.node_coordinates, re[2], 3, j);
      put(t.node_numbers, in[1], j, 2);
      if (in[2] > 0 && conditions < room) put(t.condition_nodes, in[2], ++conditions);
    }
  }

  // The end nodes of the elements, from file numbers to node rows: the first
  // row that holds the number, as a search of the node table from its top
  // would find it. A number that no node has stays as it is.
  {
    const bool has_column = t.node_numbers.allocated() && t.node_numbers.extent(2) >= 1;
    const int64_t rows = has_column ? rows_read(std::max(num_nodes, 0), t.node_numbers.extent(1)) : 0;
    const auto nodes = static_cast<std::size_t>(rows);
    const std::span<const int32_t> file_numbers(t.node_numbers.data().data(), nodes);
    if (!t.node_file_number_index.build(file_numbers)) return header_failure(index_failure, flag);
  }
  if (num_elements > 0 && nodes_per_element > 0) {
    const int64_t rows = rows_read(num_elements, t.element_nodes.extent(1));
    const int64_t columns = rows_read(nodes_per_element, t.element_nodes.extent(2));
    for (int64_t k = 1; k <= columns; ++k) {
      for (int64_t i = 1; i <= rows; ++i) {
        int32_t& node = t.element_nodes(i, k);
        const int32_t row = t.node_file_number_index.find(node);
        if (row != 0) node = row;
      }
    }
  }

  // Block 20: two records an auxiliary element.
  if (num_aux_elements > 0) {
    const int64_t block = block_position(20);
    const int64_t rows = rows_read(num_aux_elements, t.aux_element_numbers.extent(1));
    for (int64_t k = 1; k <= rows; ++k) {
      if (!read(block, 2 * (k - 1), {{ints, 4}, {reals, 3}, {ints, 1}})) return header_failure(aux_element_failure, flag);
      put(t.aux_element_numbers, in[1], k);
      put(t.aux_element_nodes, in[2], 1, k);
      put(t.aux_element_nodes, in[3], 2, k);
      put(t.aux_element_r5, re[0], k);
      put(t.aux_element_r6, re[1], k);
      put(t.aux_element_r7, re[2], k);
      put(t.aux_element_w8, in[4], k);
      if (!read(block, 2 * (k - 1) + 1, {{ints, 2}})) return header_failure(aux_element_failure, flag);
      put(t.aux_element_w9, in[0], k);
    }
  }

  // Block 21: one record an auxiliary node.
  if (num_aux_nodes > 0) {
    const int64_t block = block_position(21);
    const int64_t rows = rows_read(num_aux_nodes, t.aux_node_numbers.extent(1));
    for (int64_t k = 1; k <= rows; ++k) {
      if (!read(block, k - 1, {{ints, 1}, {reals, 3}})) return header_failure(aux_node_failure, flag);
      put(t.aux_node_numbers, in[0], k);
      put(t.aux_node_coordinates, re[0], k, 1);
      put(t.aux_node_coordinates, re[1], k, 2);
      put(t.aux_node_coordinates, re[2], k, 3);
    }
  }
  return true;
}

}  // namespace tmrdar::header
