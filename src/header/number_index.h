// An index from a number to the first row (from 1) of a list that holds it:
// the answer of a search of the list from its first row, in constant time.
// Compact numbers (their range at most a few times the count) index a direct
// table by number; others an open-addressing hash table.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tmrdar::header {

class NumberIndex {
 public:
  // Indexes `numbers`, whose entry r - 1 is row r. Returns false, with the
  // index left empty, when the memory cannot be had.
  bool build(std::span<const int32_t> numbers);
  void clear();
  // The first row that holds `number`, or 0.
  int32_t find(int32_t number) const {
    if (direct_) {
      const uint64_t place = static_cast<uint64_t>(int64_t{number} - base_);
      return place < rows_.size() ? rows_[place] : 0;
    }
    if (rows_.empty()) return 0;
    for (uint64_t slot = hash(number) & mask_;; slot = (slot + 1) & mask_) {
      if (rows_[slot] == 0) return 0;
      if (keys_[slot] == number) return rows_[slot];
    }
  }
  bool empty() const { return count_ == 0; }
  // Whether the index was built over exactly these entries (the same list,
  // as long), so that building it again would change nothing.
  bool covers(std::span<const int32_t> numbers) const {
    return built_over_ == numbers.data() && built_size_ == numbers.size() && built_size_ != 0;
  }

 private:
  static uint64_t hash(int32_t number) {
    return (static_cast<uint64_t>(static_cast<uint32_t>(number)) * 0x9E3779B97F4A7C15ULL) >> 32;
  }

  bool direct_ = false;
  int64_t base_ = 0;  // the least number, of direct place 0
  uint64_t mask_ = 0;
  std::size_t count_ = 0;
  // Direct: the row of number base_ + place, 0 for none. Hash: the row of the
  // slot's key, 0 for an empty slot.
  std::vector<int32_t> rows_;
  std::vector<int32_t> keys_;
  const int32_t* built_over_ = nullptr;
  std::size_t built_size_ = 0;
};

}  // namespace tmrdar::header
