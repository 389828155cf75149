// The structural model blocks 16 to 21 of a header: elements, their section
// values, the nonlinear E tables, nodes, auxiliary elements and auxiliary
// nodes; and the translation of the element end nodes from the numbers that
// the file gives them to rows of the node tables.
#include <algorithm>
#include <array>
#include <bit>
#include <initializer_list>
#include <span>

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

// The rows of a block that are read: its count, but never more than any of
// the tables that a row is read into has rows.
int64_t rows_read(int32_t count, std::initializer_list<int64_t> table_rows) {
  return std::max<int64_t>(std::min<int64_t>(count, std::min(table_rows)), 0);
}

// Column j of a table that has rows to read; none when it has not.
template <typename T>
std::span<T> column_or_none(Table<T, 2>& table, int64_t rows, int64_t j) {
  return rows > 0 ? table.column(j) : std::span<T>();
}

// Where a row's entry goes: entry i (from 1) of a span.
template <typename T>
T& at(std::span<T> entries, int64_t i) {
  return entries[static_cast<std::size_t>(i - 1)];
}

// The first columns (up to four) of a table that has rows to read; none when
// it has not.
std::array<std::span<float>, 4> four_columns(Table<float, 2>& table, int64_t rows) {
  std::array<std::span<float>, 4> columns{};
  for (int64_t c = 1; rows > 0 && c <= std::min<int64_t>(4, table.extent(2)); ++c) {
    columns[static_cast<std::size_t>(c - 1)] = table.column(c);
  }
  return columns;
}

constexpr Words ints = Words::ints;
constexpr Words reals = Words::reals;
constexpr Run element_record_1[] = {{ints, 4}, {reals, 3}, {ints, 1}};
constexpr Run element_record_2[] = {{reals, 4}, {ints, 1}, {reals, 3}};
constexpr Run element_record_3[] = {{reals, 1}};
constexpr Run section_record[] = {{ints, 2}, {reals, 1}, {ints, 1}};
constexpr Run curve_point_record[] = {{ints, 2}, {reals, 2}};
constexpr Run node_record[] = {{ints, 1}, {reals, 3}, {ints, 2}};
constexpr Run aux_element_record_1[] = {{ints, 4}, {reals, 3}, {ints, 1}};
constexpr Run aux_element_record_2[] = {{ints, 2}};
constexpr Run aux_node_record[] = {{ints, 1}, {reals, 3}};

}  // namespace

bool FormatReader::read_structure_blocks(int32_t& flag) {
  HeaderTables& t = tables;

  // Block 16: three records an element.
  if (num_elements > 0) {
    const int64_t rows = rows_read(
        num_elements, {t.element_numbers.extent(1), t.element_nodes.extent(1), t.element_length.extent(),
                       t.element_a6.extent(), t.element_a7.extent(), t.element_a8.extent(), t.element_b1.extent(),
                       t.element_b2.extent(), t.element_b3.extent(), t.element_b4.extent(), t.element_b5.extent(),
                       t.element_b6.extent(), t.element_b7.extent(), t.element_b8.extent(), t.element_c1.extent()});
    const std::span<int32_t> number = column_or_none(t.element_numbers, rows, 1);
    const std::span<int32_t> user_number = column_or_none(t.element_numbers, rows, 2);
    const std::span<int32_t> first_node = column_or_none(t.element_nodes, rows, 1);
    const std::span<int32_t> second_node = column_or_none(t.element_nodes, rows, 2);
    const std::span<float> length = t.element_length.storage(), a6 = t.element_a6.storage(),
                           a7 = t.element_a7.storage(), b1 = t.element_b1.storage(), b2 = t.element_b2.storage(),
                           b3 = t.element_b3.storage(), b4 = t.element_b4.storage(), b6 = t.element_b6.storage(),
                           b7 = t.element_b7.storage(), b8 = t.element_b8.storage(), c1 = t.element_c1.storage();
    const std::span<int32_t> a8 = t.element_a8.storage(), b5 = t.element_b5.storage();
    BlockRecords records(*this, block_position(16), 3 * rows, 3);
    for (int64_t i = 1; i <= rows; ++i) {
      const std::byte* r = records.record(3 * (i - 1), element_record_1);
      if (r == nullptr) return header_failure(element_failure, flag);
      at(number, i) = int_word(r, 1);
      at(user_number, i) = int_word(r, 2);
      at(first_node, i) = int_word(r, 3);
      at(second_node, i) = int_word(r, 4);
      // Only a length below zero is replaced; zero, and minus zero, stay.
      const float given = real_word(r, 5);
      at(length, i) = given < 0.0F ? std::bit_cast<float>(tiny_length_bits) : given;
      at(a6, i) = real_word(r, 6);
      at(a7, i) = real_word(r, 7);
      at(a8, i) = int_word(r, 8);

      r = records.record(3 * (i - 1) + 1, element_record_2);
      if (r == nullptr) return header_failure(element_failure, flag);
      at(b1, i) = real_word(r, 1);
      at(b2, i) = real_word(r, 2);
      at(b3, i) = real_word(r, 3);
      at(b4, i) = real_word(r, 4);
      at(b5, i) = int_word(r, 5);
      at(b6, i) = real_word(r, 6);
      at(b7, i) = real_word(r, 7);
      at(b8, i) = real_word(r, 8);

      r = records.record(3 * (i - 1) + 2, element_record_3);
      if (r == nullptr) return header_failure(element_failure, flag);
      at(c1, i) = real_word(r, 1);
    }
  }

  // Blocks 17 and 18: one record an element, and one a point of a curve,
  // their integers kept as reals; the fourth word is an integer in block 17
  // and a real in block 18.
  const auto four_column_rows = [&](int32_t k, int32_t count, Table<float, 2>& table, std::span<const Run> runs) {
    const int64_t rows = table.extent(2) >= 4 ? rows_read(count, {table.extent(1)}) : 0;
    const std::array<std::span<float>, 4> columns = four_columns(table, rows);
    const bool fourth_is_int = runs.back().kind == ints;
    BlockRecords records(*this, block_position(k), rows);
    for (int64_t i = 1; i <= rows; ++i) {
      const std::byte* r = records.record(i - 1, runs);
      if (r == nullptr) return header_failure(material_failure, flag);
      at(columns[0], i) = static_cast<float>(int_word(r, 1));
      at(columns[1], i) = static_cast<float>(int_word(r, 2));
      at(columns[2], i) = real_word(r, 3);
      at(columns[3], i) = fourth_is_int ? static_cast<float>(int_word(r, 4)) : real_word(r, 4);
    }
    return true;
  };
  if (num_elements > 0 && !four_column_rows(17, num_elements, t.element_section_table, section_record)) return false;
  if (num_nonlinear_e_tables > 0 &&
      !four_column_rows(18, num_nonlinear_e_tables, t.nonlinear_e_table, curve_point_record)) {
    return false;
  }

  // Block 19: one record a node. A node with a boundary condition slot above
  // zero joins the list of condition nodes while the list has room.
  if (num_nodes > 0) {
    Table<float, 2>& coordinates = t.node_coordinates;
    const int64_t rows = coordinates.extent(1) >= 3
                             ? rows_read(num_nodes, {t.node_numbers.extent(1), coordinates.extent(2)})
                             : 0;
    const std::span<int32_t> number = column_or_none(t.node_numbers, rows, 1);
    const std::span<int32_t> user_number = column_or_none(t.node_numbers, rows, 2);
    const std::span<float> stored = coordinates.storage();
    const int64_t stride = coordinates.extent(1);
    const std::span<int32_t> condition_nodes = t.condition_nodes.storage();
    const int64_t room = rows_read(num_boundary_conditions, {t.condition_nodes.extent()});
    int64_t conditions = 0;
    BlockRecords records(*this, block_position(19), rows);
    for (int64_t j = 1; j <= rows; ++j) {
      const std::byte* r = records.record(j - 1, node_record);
      if (r == nullptr) return header_failure(node_failure, flag);
      at(number, j) = int_word(r, 1);
      float* xyz = &at(stored, 1 + (j - 1) * stride);
      xyz[0] = real_word(r, 2);
      xyz[1] = real_word(r, 3);
      xyz[2] = real_word(r, 4);
      at(user_number, j) = int_word(r, 5);
      const int32_t slot = int_word(r, 6);
      if (slot > 0 && conditions < room) at(condition_nodes, ++conditions) = slot;
    }
  }

  // The end nodes of the elements, from file numbers to node rows: the first
  // row that holds the number, as a search of the node table from its top
  // would find it. A number that no node has stays as it is.
  {
    const bool has_column = t.node_numbers.allocated() && t.node_numbers.extent(2) >= 1;
    const int64_t rows = has_column ? rows_read(num_nodes, {t.node_numbers.extent(1)}) : 0;
    const auto nodes = static_cast<std::size_t>(rows);
    const std::span<const int32_t> file_numbers(t.node_numbers.data().data(), nodes);
    if (!t.node_file_number_index.build(file_numbers)) return header_failure(index_failure, flag);
  }
  if (num_elements > 0 && nodes_per_element > 0) {
    const int64_t rows = rows_read(num_elements, {t.element_nodes.extent(1)});
    const int64_t columns = rows_read(nodes_per_element, {t.element_nodes.extent(2)});
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
    const int64_t rows = t.aux_element_nodes.extent(1) >= 2
                             ? rows_read(num_aux_elements,
                                         {t.aux_element_numbers.extent(), t.aux_element_nodes.extent(2),
                                          t.aux_element_r5.extent(), t.aux_element_r6.extent(),
                                          t.aux_element_r7.extent(), t.aux_element_w8.extent(),
                                          t.aux_element_w9.extent()})
                             : 0;
    const std::span<int32_t> ends = t.aux_element_nodes.storage();
    BlockRecords records(*this, block_position(20), 2 * rows, 2);
    for (int64_t k = 1; k <= rows; ++k) {
      const std::byte* r = records.record(2 * (k - 1), aux_element_record_1);
      if (r == nullptr) return header_failure(aux_element_failure, flag);
      at(t.aux_element_numbers.storage(), k) = int_word(r, 2);
      at(ends, 2 * k - 1) = int_word(r, 3);
      at(ends, 2 * k) = int_word(r, 4);
      at(t.aux_element_r5.storage(), k) = real_word(r, 5);
      at(t.aux_element_r6.storage(), k) = real_word(r, 6);
      at(t.aux_element_r7.storage(), k) = real_word(r, 7);
      at(t.aux_element_w8.storage(), k) = int_word(r, 8);
      r = records.record(2 * (k - 1) + 1, aux_element_record_2);
      if (r == nullptr) return header_failure(aux_element_failure, flag);
      at(t.aux_element_w9.storage(), k) = int_word(r, 1);
    }
  }

  // Block 21: one record an auxiliary node.
  if (num_aux_nodes > 0) {
    Table<float, 2>& coordinates = t.aux_node_coordinates;
    const int64_t rows = coordinates.extent(2) >= 3
                             ? rows_read(num_aux_nodes, {t.aux_node_numbers.extent(), coordinates.extent(1)})
                             : 0;
    const std::span<int32_t> number = t.aux_node_numbers.storage();
    const std::array<std::span<float>, 4> xyz = four_columns(coordinates, rows);
    BlockRecords records(*this, block_position(21), rows);
    for (int64_t k = 1; k <= rows; ++k) {
      const std::byte* r = records.record(k - 1, aux_node_record);
      if (r == nullptr) return header_failure(aux_node_failure, flag);
      at(number, k) = int_word(r, 1);
      at(xyz[0], k) = real_word(r, 2);
      at(xyz[1], k) = real_word(r, 3);
      at(xyz[2], k) = real_word(r, 4);
    }
  }
  return true;
}

}  // namespace tmrdar::header
