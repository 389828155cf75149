// Membership predicates over node and element tables, tied to no format:
// whether a node or element was written to the database, and where an element
// stands in a list.
#pragma once

#include <cstdint>
#include <span>

namespace tmrdar::membership {

// Logical results: all bits set for true, none for false; callers test bit 0.
inline constexpr int32_t logical_true = -1;
inline constexpr int32_t logical_false = 0;

// Tables are given in storage order, the first index fastest, with their
// row counts; entries that a shorter array lacks are not looked at.

// True when the first row r of the node table (n rows, 2 columns) whose
// column 2 holds `node` appears anywhere in the pair table (m rows, 2
// columns): the pair table holds node rows. False when no row holds the
// node, or m is below 1. `unused` is not read.
int32_t is_node_in_database(int32_t node, int32_t n, int32_t m, int32_t unused, std::span<const int32_t> node_table,
                            std::span<const int32_t> pair_table);

// True when column 2 of the table (m rows, 2 columns) holds `element`; column
// 1 is not looked at.
int32_t is_element_in_database(int32_t element, std::span<const int32_t> table, int32_t m);

// The first position (from 1) of `element` among the first m entries of the
// list, 0 when there is none.
int32_t elem_in_set(int32_t element, std::span<const int32_t> list, int32_t m);

}  // namespace tmrdar::membership
