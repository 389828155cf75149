// Blocks 26 to 31 of a header: the element and node sets, the labels, the
// point masses, the point loads and the boundary conditions.
#include <algorithm>
#include <new>
#include <string_view>
#include <vector>

#include "header/block_reading.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view allocation_failure = "Unable to allocate memory for database header data.";

enum class SetsRead { done, read_failed, refused };

// The sets of block k, chained from the block's first record: a name field
// of 8 records, the member count in word 1 of the 9th, then one member a
// record in word 1, and the next set straight behind the last member. The
// layout reserves room for a set of every element (or node), but the chain
// follows the true counts, so the sets lie back to back.
//
// A negative count reads no member and moves the chain on by the 9 records
// of the set's head alone: the chain never steps back over records that it
// has read. The count is kept as the file gives it.
//
// A set with members that would run past the last record of the file is
// refused before its list is made, so the lists of one block never hold more
// entries than the file has records, whatever its counts say.
SetsRead read_sets(FormatReader& db, int32_t k, Table<NameField>& names, Table<int32_t>& counts,
                    std::vector<std::vector<int32_t>>& members) {
  const int64_t block = db.block_position(k);
  const int64_t file_records = db.file_records();
  const int64_t sets = std::min({names.extent(), counts.extent(), static_cast<int64_t>(members.size())});
  int32_t status = 0;
  int64_t r = 0;  // the set's first record within the block
  for (int64_t s = 1; s <= sets; ++s) {
    read_name_field(db.header_file, record_at(block, r), names(s), status);
    db.header_file.read_int_at(std::span(db.header_ints).first(1), record_at(block, r + 8), status);
    if (status != 0) return SetsRead::read_failed;
    const int32_t count = db.header_ints[0];
    counts(s) = count;

    // The reads above succeeded, so the block starts inside the file's
    // address range and its first record is (block - 1) / 32.
    const int64_t members_count = std::max(count, 0);
    const int64_t first_member = (block - 1) / 32 + r + 9;
    if (members_count > 0 && first_member + members_count > file_records) return SetsRead::refused;
    std::vector<int32_t>& list = members[static_cast<std::size_t>(s - 1)];
    try {
      list.assign(static_cast<std::size_t>(members_count), 0);
    } catch (const std::bad_alloc&) {
      return SetsRead::refused;
    }
    // One member a record: out of the mapping when it holds them all.
    const int64_t first = record_at(block, r + 9);
    if (const std::byte* mapped = db.header_file.mapped_view(first, 32 * members_count); mapped != nullptr) {
      for (int64_t j = 0; j < members_count; ++j) list[static_cast<std::size_t>(j)] = int_word(mapped + 32 * j, 1);
      if (members_count > 0) db.header_file.mapped_at(record_at(first, members_count - 1), 4);
    } else {
      for (int64_t j = 0; j < members_count; ++j) {
        db.header_file.read_int_at(std::span(list).subspan(static_cast<std::size_t>(j), 1), record_at(first, j),
                                   status);
      }
    }
    if (status != 0) return SetsRead::read_failed;
    r += 9 + members_count;
  }
  return SetsRead::done;
}

// A list of integers packed 8 to a record from the start of block k, read up
// to the table's length.
bool read_packed_ints(FormatReader& db, int32_t k, Table<int32_t>& list) {
  constexpr Run eight_ints[] = {{Words::ints, 8}};
  const int64_t count = list.extent();
  const std::span<int32_t> entries = list.storage();
  BlockRecords records(db, db.block_position(k), count > 0 ? packed_record(count) + 1 : 0);
  const std::byte* r = nullptr;
  for (int64_t i = 1; i <= count; ++i) {
    const auto place = static_cast<int>(packed_place(i));
    if (place == 1 && (r = records.record(packed_record(i), eight_ints)) == nullptr) return false;
    entries[static_cast<std::size_t>(i - 1)] = int_word(r, place);
  }
  return true;
}

}  // namespace

bool FormatReader::read_set_blocks(int32_t& flag) {
  HeaderTables& t = tables;

  const auto sets = [&](int32_t k, Table<NameField>& names, Table<int32_t>& counts,
                        std::vector<std::vector<int32_t>>& members, std::string_view message) {
    switch (read_sets(*this, k, names, counts, members)) {
      case SetsRead::done: return true;
      case SetsRead::read_failed: return header_failure(message, flag);
      case SetsRead::refused: return header_failure(allocation_failure, flag);
    }
    return header_failure(message, flag);
  };
  if (num_element_sets > 0 &&
      !sets(26, t.element_set_names, t.element_set_counts, t.element_set_members,
            "Unable to read element set data from database header.")) {
    return false;
  }
  if (num_node_sets > 0 &&
      !sets(27, t.node_set_names, t.node_set_counts, t.node_set_members,
            "Unable to read node set data from database header.")) {
    return false;
  }

  int32_t status = 0;
  // Labels: a name field, then the number and the kind of what the label
  // names in words 1 and 2 of the 9th record.
  if (num_labels > 0) {
    const int64_t block = block_position(28);
    const int64_t labels = std::min(t.label_names.extent(), t.label_targets.extent(1));
    for (int64_t l = 1; l <= labels; ++l) {
      const int64_t first = record_at(block, 9 * (l - 1));
      read_name_field(header_file, first, t.label_names(l), status);
      header_file.read_int_at(std::span(header_ints).first(2), record_at(first, 8), status);
      if (status != 0) return header_failure("Unable to read node/element labels from database header.", flag);
      t.label_targets(l, 1) = header_ints[0];
      t.label_targets(l, 2) = header_ints[1];
    }
  }

  if (num_point_masses > 0 && !read_packed_ints(*this, 29, t.point_mass_nodes)) {
    return header_failure("Unable to read point mass data from database header.", flag);
  }

  // Point loads: one record a load, 2 integers and a real, all kept as reals.
  if (num_point_loads > 0) {
    const int64_t block = block_position(30);
    for (int64_t l = 1; l <= t.point_loads.extent(2); ++l) {
      read_runs(*this, record_at(block, l - 1), {{Words::ints, 2}, {Words::reals, 1}}, status);
      if (status != 0) return header_failure("Unable to read point load data from database header.", flag);
      t.point_loads(1, l) = static_cast<float>(header_ints[0]);
      t.point_loads(2, l) = static_cast<float>(header_ints[1]);
      t.point_loads(3, l) = header_reals[0];
    }
  }

  if (num_boundary_conditions > 0 && !read_packed_ints(*this, 31, t.boundary_condition_nodes)) {
    return header_failure("Unable to read boundary condition data from database header.", flag);
  }
  return true;
}

}  // namespace tmrdar::header
