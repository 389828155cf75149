// Blocks 26 to 31 of a header: the element and node sets, the labels, the
// point masses, the point loads and the boundary conditions.
#include <algorithm>
#include <new>
#include <string_view>
#include <vector>

#include "header/block_reading.h"

namespace tmrdar::header {
namespace {

constexpr std::string_view ALLOCATION_FAILURE = "Unable to allocate memory for database header data.";

enum class SETS_READ { DONE, READ_FAILED, REFUSED };

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
SETS_READ READ_SETS(TIDE3_DATABASE_FILES& db, int32_t k, TABLE<NAME_FIELD>& names, TABLE<int32_t>& counts,
                    std::vector<std::vector<int32_t>>& members) {
  const int64_t block = db.BLOCK_POSITION(k);
  const int64_t file_records = db.FILE_RECORDS();
  const int64_t sets = std::min({names.EXTENT(), counts.EXTENT(), static_cast<int64_t>(members.size())});
  int32_t status = 0;
  int64_t r = 0;  // the set's first record within the block
  for (int64_t s = 1; s <= sets; ++s) {
    READ_NAME_FIELD(db.HEADER_FILE, RECORD_AT(block, r), names(s), status);
    db.HEADER_FILE.READ_INT_AT(std::span(db.HEADER_INTS).first(1), RECORD_AT(block, r + 8), status);
    if (status != 0) return SETS_READ::READ_FAILED;
    const int32_t count = db.HEADER_INTS[0];
    counts(s) = count;

    // The reads above succeeded, so the block starts inside the file's
    // address range and its first record is (block - 1) / 32.
    const int64_t members_count = std::max(count, 0);
    const int64_t first_member = (block - 1) / 32 + r + 9;
    if (members_count > 0 && first_member + members_count > file_records) return SETS_READ::REFUSED;
    std::vector<int32_t>& list = members[static_cast<std::size_t>(s - 1)];
    try {
      list.assign(static_cast<std::size_t>(members_count), 0);
    } catch (const std::bad_alloc&) {
      return SETS_READ::REFUSED;
    }
    for (int64_t j = 0; j < members_count; ++j) {
      db.HEADER_FILE.READ_INT_AT(std::span(list).subspan(static_cast<std::size_t>(j), 1),
                                 RECORD_AT(block, r + 9 + j), status);
    }
    if (status != 0) return SETS_READ::READ_FAILED;
    r += 9 + members_count;
  }
  return SETS_READ::DONE;
}

// A list of integers packed 8 to a record from the start of block k, read up
// to the table's length.
bool READ_PACKED_INTS(TIDE3_DATABASE_FILES& db, int32_t k, TABLE<int32_t>& list) {
  const int64_t block = db.BLOCK_POSITION(k);
  int32_t status = 0;
  for (int64_t i = 1; i <= list.EXTENT(); ++i) {
    const int64_t place = PACKED_PLACE(i);
    if (place == 1) {
      db.HEADER_FILE.READ_INT_AT(db.HEADER_INTS, RECORD_AT(block, PACKED_RECORD(i)), status);
      if (status != 0) return false;
    }
    list(i) = db.HEADER_INTS[static_cast<std::size_t>(place - 1)];
  }
  return true;
}

}  // namespace

bool TIDE3_DATABASE_FILES::READ_SET_BLOCKS(int32_t& flag) {
  HEADER_TABLES& t = TABLES;

  const auto sets = [&](int32_t k, TABLE<NAME_FIELD>& names, TABLE<int32_t>& counts,
                        std::vector<std::vector<int32_t>>& members, std::string_view message) {
    switch (READ_SETS(*this, k, names, counts, members)) {
      case SETS_READ::DONE: return true;
      case SETS_READ::READ_FAILED: return HEADER_FAILURE(message, flag);
      case SETS_READ::REFUSED: return HEADER_FAILURE(ALLOCATION_FAILURE, flag);
    }
    return HEADER_FAILURE(message, flag);
  };
  if (NUM_ELEMENT_SETS > 0 &&
      !sets(26, t.ELEMENT_SET_NAMES, t.ELEMENT_SET_COUNTS, t.ELEMENT_SET_MEMBERS,
            "Unable to read element set data from database header.")) {
    return false;
  }
  if (NUM_NODE_SETS > 0 &&
      !sets(27, t.NODE_SET_NAMES, t.NODE_SET_COUNTS, t.NODE_SET_MEMBERS,
            "Unable to read node set data from database header.")) {
    return false;
  }

  int32_t status = 0;
  // Labels: a name field, then the number and the kind of what the label
  // names in words 1 and 2 of the 9th record.
  if (NUM_LABELS > 0) {
    const int64_t block = BLOCK_POSITION(28);
    const int64_t labels = std::min(t.LABEL_NAMES.EXTENT(), t.LABEL_TARGETS.EXTENT(1));
    for (int64_t l = 1; l <= labels; ++l) {
      const int64_t first = RECORD_AT(block, 9 * (l - 1));
      READ_NAME_FIELD(HEADER_FILE, first, t.LABEL_NAMES(l), status);
      HEADER_FILE.READ_INT_AT(std::span(HEADER_INTS).first(2), RECORD_AT(first, 8), status);
      if (status != 0) return HEADER_FAILURE("Unable to read node/element labels from database header.", flag);
      t.LABEL_TARGETS(l, 1) = HEADER_INTS[0];
      t.LABEL_TARGETS(l, 2) = HEADER_INTS[1];
    }
  }

  if (NUM_POINT_MASSES > 0 && !READ_PACKED_INTS(*this, 29, t.POINT_MASS_NODES)) {
    return HEADER_FAILURE("Unable to read point mass data from database header.", flag);
  }

  // Point loads: one record a load, 2 integers and a real, all kept as reals.
  if (NUM_POINT_LOADS > 0) {
    const int64_t block = BLOCK_POSITION(30);
    for (int64_t l = 1; l <= t.POINT_LOADS.EXTENT(2); ++l) {
      READ_RUNS(*this, RECORD_AT(block, l - 1), {{WORDS::INTS, 2}, {WORDS::REALS, 1}}, status);
      if (status != 0) return HEADER_FAILURE("Unable to read point load data from database header.", flag);
      t.POINT_LOADS(1, l) = static_cast<float>(HEADER_INTS[0]);
      t.POINT_LOADS(2, l) = static_cast<float>(HEADER_INTS[1]);
      t.POINT_LOADS(3, l) = HEADER_REALS[0];
    }
  }

  if (NUM_BOUNDARY_CONDITIONS > 0 && !READ_PACKED_INTS(*this, 31, t.BOUNDARY_CONDITION_NODES)) {
    return HEADER_FAILURE("Unable to read boundary condition data from database header.", flag);
  }
  return true;
}

}  // namespace tmrdar::header
