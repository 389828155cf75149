// The tables that the model queries answer from, made at open once the model
// blocks are read: the distance to the start of each element row, the node
// row of each element end, and the pipe-in-pipe pair that encloses each
// element row.
#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "header/block_reading.h"
#include "header/format_reader.h"

namespace tmrdar::header {
namespace {

// The element lengths of the rows before each row, summed in single
// precision in row order, so that each entry is bit for bit the running sum
// from row 1.
bool build_distance_prefix(HeaderTables& t) {
  Table<float>& prefix = t.model_queries.distance_prefix;
  const int64_t rows = t.element_length.extent();
  if (!prefix.allocate({rows})) return false;
  float sum = 0.0F;
  for (int64_t r = 1; r <= rows; ++r) {
    prefix(r) = sum;
    sum = sum + t.element_length(r);
  }
  return true;
}

// The end nodes of each element as rows of the node table. The translation
// at open turned each end's file number into the first row that holds it,
// and left it as it was where no row does; an end is a row here when the
// table holds that translation, and 0 otherwise. The value alone decides
// nearly always: a value that some node has as its file number would have
// been translated, so it is a row; a value that is no row, or a row that is
// not the first of its file number, is an untranslated file number. Only a
// value that is both a first row and no node's file number can be either,
// and for those the file number is read again from words 3 and 4 of the
// element's first record. A record beyond the end of the file gives 0.
// Ends that the translation does not cover (fewer than two nodes an
// element) hold file numbers, and are rows where they name their own row.
// All this holds for a header read to its end, the only one that is asked.
bool build_end_node_rows(FormatReader& db) {
  HeaderTables& t = db.tables;
  Table<int32_t, 2>& ends = t.model_queries.end_node_rows;
  const int64_t rows = std::min<int64_t>(std::max(db.num_elements, 0), t.element_nodes.extent(1));
  if (!ends.allocate({rows, 2})) return false;
  if (rows == 0 || t.element_nodes.extent(2) < 2) return true;

  const NumberIndex& file_numbers = t.node_file_number_index;
  const int64_t translated = db.nodes_per_element > 0 ? std::min(db.nodes_per_element, 2) : 0;
  // Which of the values 1 to the node rows some node has as its file number.
  const int64_t nodes = t.node_numbers.extent(2) >= 1 ? t.node_numbers.extent(1) : 0;
  std::vector<bool> is_file_number;
  try {
    is_file_number.assign(static_cast<std::size_t>(nodes + 1), false);
  } catch (const std::bad_alloc&) {
    return false;
  }
  for (int64_t j = 1; j <= nodes; ++j) {
    const int32_t f = t.node_numbers(j, 1);
    if (f >= 1 && f <= nodes) is_file_number[static_cast<std::size_t>(f)] = true;
  }
  const auto first_row = [&](int32_t v) { return file_numbers.find(t.node_numbers(v, 1)) == v; };
  // The scratch buffer keeps what the header read left in it.
  const std::array<int32_t, 8> kept = db.header_ints;
  const int64_t block = db.block_position(16);
  const int64_t size = db.header_file.size();
  for (int64_t i = 1; i <= rows; ++i) {
    bool read_again = false;
    for (int64_t k = 1; k <= 2; ++k) {
      const int32_t v = t.element_nodes(i, k);
      if (v < 1 || v > nodes) continue;  // no row
      if (k > translated) {
        if (file_numbers.find(v) == v) ends(i, k) = v;
      } else if (is_file_number[static_cast<std::size_t>(v)]) {
        ends(i, k) = v;
      } else if (first_row(v)) {
        read_again = true;
      }
    }
    if (!read_again) continue;
    // Words 3 and 4 of record A: bytes 9 to 16 of the element's first record.
    const int64_t position = record_at(block, 3 * (i - 1)) + 8;
    if (block < 1 || position + 7 > size) continue;
    int32_t status = 0;
    read_runs(db, position, {{Words::ints, 2}}, status);
    if (status != 0) continue;
    for (int64_t k = 1; k <= translated; ++k) {
      const int32_t row = file_numbers.find(db.header_ints[static_cast<std::size_t>(k - 1)]);
      if (row != 0 && t.element_nodes(i, k) == row) ends(i, k) = row;
    }
  }
  db.header_ints = kept;
  return true;
}

// For each element row e, the first pair k whose search finds e: the search
// of pair k compares e with the words of the pipe-in-pipe table taken as flat
// storage from column 2 of pair k on, num_elements words of them, and stops
// at the end of the table. The pairs' word ranges overlap when num_elements
// exceeds a pair's rows, so a word is found by every pair whose range holds
// it; the first of them is the one with the lowest range start that still
// reaches the word. One pass over the table makes the answer of every row.
bool build_enclosing_pairs(FormatReader& db) {
  HeaderTables& t = db.tables;
  Table<int32_t>& first_pair = t.model_queries.enclosing_pair;
  const int64_t elements = t.element_numbers.extent(1);
  if (!first_pair.allocate({elements})) return false;

  const int64_t rows = t.pip_data.extent(1);
  const int64_t pairs = std::min<int64_t>(db.num_pipe_in_pipe, t.pip_data.extent(3));
  const int64_t reach = std::max(db.num_elements, 0);
  if (rows < 1 || pairs < 1 || reach < 1) return true;
  const std::span<const int32_t> words = t.pip_data.data();
  const auto total = static_cast<int64_t>(words.size());
  // Pair k's range starts at word P + 2P(k - 1) (from 0), P the rows of a pair.
  const auto start = [rows](int64_t k) { return rows + 2 * rows * (k - 1); };
  for (int64_t x = rows; x < total; ++x) {
    const int32_t e = words[static_cast<std::size_t>(x)];
    if (e < 1 || e > elements) continue;
    // The lowest k whose range start is at least x - reach + 1.
    const int64_t lowest_start = x - reach + 1;
    const int64_t k = lowest_start <= rows ? 1 : (lowest_start - rows + 2 * rows - 1) / (2 * rows) + 1;
    if (k > pairs || start(k) > x) continue;
    int32_t& found = first_pair(e);
    if (found == 0 || k < found) found = static_cast<int32_t>(k);
  }
  return true;
}

}  // namespace

bool build_model_query_tables(FormatReader& db) {
  return build_distance_prefix(db.tables) && build_end_node_rows(db) && build_enclosing_pairs(db);
}

}  // namespace tmrdar::header
