// The growable array of 32-bit integers of the core library.
//
// Indices count from 1. The storage is allocated on demand; its size is the
// capacity, and growth at least doubles it, so the capacity is a defined,
// observable value: a list created without a capacity holds 8 entries, and the
// 9th append takes it to 16. A list counts as created once its storage exists,
// even when that storage holds no entry.
//
// Entry access (AT, REF, SET, SWAP) reaches the whole storage, the unused part
// above the length included, without looking at the length. An index outside
// the storage is never followed: AT gives 0, SET and SWAP do nothing, and REF
// hands out a scratch entry of the object whose writes go nowhere.
//
// SORT keeps a sort direction shared by all lists: ascending at the start of
// the process, changed by every call that names a direction, and used by every
// call that does not.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace tmrdar::MOD_INT_LIST {

class T_INT_LIST {
 public:
  T_INT_LIST() = default;
  ~T_INT_LIST() { FINAL_LIST(); }
  // Copies are deep and exact: see ASSIGN_LIST.
  T_INT_LIST(const T_INT_LIST& other);
  T_INT_LIST& operator=(const T_INT_LIST& other);
  T_INT_LIST(T_INT_LIST&& other) noexcept;
  T_INT_LIST& operator=(T_INT_LIST&& other) noexcept;

  // Allocates storage for `capacity` entries (a negative value counts as 0),
  // destroying what the list held. The status is 0, or 1 when the storage
  // could not be allocated, in which case the list is left not created.
  void CREATE(int32_t capacity = 8, int32_t* status = nullptr);
  void DESTROY();
  bool CREATED() const { return data_ != nullptr; }
  int32_t CAPACITY() const { return capacity_; }
  int32_t LENGTH() const { return length_; }
  // Length 0; the storage is kept.
  void CLEAR() { length_ = 0; }

  // Makes the capacity the greater of n and twice the present capacity, when
  // that is more than the present capacity. The used entries are kept.
  void GROW(int32_t n);

  int32_t AT(int32_t index) const;
  int32_t& REF(int32_t index);
  void SET(int32_t index, int32_t value);
  void SWAP(int32_t first, int32_t second);

  // Creates the list if needed and grows it when it is full.
  void APPEND_DATA(int32_t value);
  void APPEND_LIST(const T_INT_LIST& other);
  // A new array of exactly LENGTH() entries.
  void TO_LIST_DATA_ARRAY(std::vector<int32_t>& out) const;

  // Removes `count` entries from `index` on; a count that runs past the end
  // removes the rest. An index outside 1..LENGTH() or a count below 1 does
  // nothing.
  void REMOVE(int32_t index, int32_t count = 1);
  // Stores `value` `count` times from `index` on, shifting the entries from
  // there up. The index runs from 1 to LENGTH() + 1; outside that, or with a
  // count below 1, nothing happens.
  void INSERT(int32_t value, int32_t index, int32_t count = 1);

  // First index from `start` on that holds the value, or -1. A start below 1
  // counts as 1.
  int32_t INDEX_OF(int32_t value, int32_t start = 1) const;
  bool HAS(int32_t value) const { return INDEX_OF(value) > 0; }
  // Keeps the first occurrence of every value, in order.
  void REMOVE_DUPLICATES();
  // The extremes of the entries. For an empty list MAXIMUM is the most
  // negative and MINIMUM the most positive 32-bit integer.
  int32_t MAXIMUM() const;
  int32_t MINIMUM() const;

  // Exchange sort in the shared direction, or in the direction given, which
  // then becomes the shared direction. Descending, equal entries are
  // exchanged too.
  void SORT();
  void SORT(bool ascending);

 private:
  void FINAL_LIST() { DESTROY(); }
  bool IN_STORAGE(int32_t index) const { return index >= 1 && index <= capacity_; }
  // Creates the list when needed and grows it to hold `needed` entries; false
  // when that is not possible.
  bool MAKE_ROOM(int64_t needed);

  std::unique_ptr<int32_t[]> data_;
  int32_t length_ = 0;
  int32_t capacity_ = 0;
  int32_t scratch_ = 0;
};

// Replaces the target by a deep copy of the source's entries, with a capacity
// of exactly that many entries. A source of length 0 leaves the target
// destroyed.
void ASSIGN_LIST(T_INT_LIST& target, const T_INT_LIST& source);

// True when every entry of the right list equals the entry at the same index
// of the left list. Only the right list's length counts: a longer left list
// with the same beginning compares equal, and an empty right list equals
// anything. The left list is read in its storage, so entries cleared from it
// but still stored take part; an index beyond its storage compares unequal.
bool COMPARE_LIST(const T_INT_LIST& left, const T_INT_LIST& right);

// The comparison operator of lists is COMPARE_LIST, one-sided as it is.
inline bool operator==(const T_INT_LIST& left, const T_INT_LIST& right) {
  return COMPARE_LIST(left, right);
}

}  // namespace tmrdar::MOD_INT_LIST
