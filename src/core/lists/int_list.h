// The growable array of 32-bit integers of the core library.
//
// Indices count from 1. The storage is allocated on demand; its size is the
// capacity, and growth at least doubles it, so the capacity is a defined,
// observable value: a list created without a capacity holds 8 entries, and the
// 9th append takes it to 16. A list counts as created once its storage exists,
// even when that storage holds no entry.
//
// Entry access (at, ref, set, swap) reaches the whole storage, the unused part
// above the length included, without looking at the length. An index outside
// the storage is never followed: at gives 0, set and swap do nothing, and ref
// hands out a scratch entry of the object whose writes go nowhere.
//
// sort keeps a sort direction shared by all lists: ascending at the start of
// the process, changed by every call that names a direction, and used by every
// call that does not.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace tmrdar::int_lists {

class IntList {
 public:
  IntList() = default;
  ~IntList() { final_list(); }
  // Copies are deep and exact: see assign_list.
  IntList(const IntList& other);
  IntList& operator=(const IntList& other);
  IntList(IntList&& other) noexcept;
  IntList& operator=(IntList&& other) noexcept;

  // Allocates storage for `capacity` entries (a negative value counts as 0),
  // destroying what the list held. The status is 0, or 1 when the storage
  // could not be allocated, in which case the list is left not created.
  void create(int32_t capacity = 8, int32_t* status = nullptr);
  void destroy();
  bool created() const { return data_ != nullptr; }
  int32_t capacity() const { return capacity_; }
  int32_t length() const { return length_; }
  // Length 0; the storage is kept.
  void clear() { length_ = 0; }

  // Makes the capacity the greater of n and twice the present capacity, when
  // that is more than the present capacity. The used entries are kept.
  void grow(int32_t n);

  int32_t at(int32_t index) const;
  int32_t& ref(int32_t index);
  void set(int32_t index, int32_t value);
  void swap(int32_t first, int32_t second);

  // Creates the list if needed and grows it when it is full.
  void append_data(int32_t value);
  void append_list(const IntList& other);
  // A new array of exactly length() entries.
  void to_list_data_array(std::vector<int32_t>& out) const;

  // Removes `count` entries from `index` on; a count that runs past the end
  // removes the rest. An index outside 1..length() or a count below 1 does
  // nothing.
  void remove(int32_t index, int32_t count = 1);
  // Stores `value` `count` times from `index` on, shifting the entries from
  // there up. The index runs from 1 to length() + 1; outside that, or with a
  // count below 1, nothing happens.
  void insert(int32_t value, int32_t index, int32_t count = 1);

  // First index from `start` on that holds the value, or -1. A start below 1
  // counts as 1.
  int32_t index_of(int32_t value, int32_t start = 1) const;
  bool has(int32_t value) const { return index_of(value) > 0; }
  // Keeps the first occurrence of every value, in order.
  void remove_duplicates();
  // The extremes of the entries. For an empty list maximum is the most
  // negative and minimum the most positive 32-bit integer.
  int32_t maximum() const;
  int32_t minimum() const;

  // Exchange sort in the shared direction, or in the direction given, which
  // then becomes the shared direction. Descending, equal entries are
  // exchanged too.
  void sort();
  void sort(bool ascending);

 private:
  void final_list() { destroy(); }
  bool in_storage(int32_t index) const { return index >= 1 && index <= capacity_; }
  // Creates the list when needed and grows it to hold `needed` entries; false
  // when that is not possible.
  bool make_room(int64_t needed);

  std::unique_ptr<int32_t[]> data_;
  int32_t length_ = 0;
  int32_t capacity_ = 0;
  int32_t scratch_ = 0;
};

// Replaces the target by a deep copy of the source's entries, with a capacity
// of exactly that many entries. A source of length 0 leaves the target
// destroyed.
void assign_list(IntList& target, const IntList& source);

// True when every entry of the right list equals the entry at the same index
// of the left list. Only the right list's length counts: a longer left list
// with the same beginning compares equal, and an empty right list equals
// anything. The left list is read in its storage, so entries cleared from it
// but still stored take part; an index beyond its storage compares unequal.
bool compare_list(const IntList& left, const IntList& right);

// The comparison operator of lists is compare_list, one-sided as it is.
inline bool operator==(const IntList& left, const IntList& right) {
  return compare_list(left, right);
}

}  // namespace tmrdar::int_lists
