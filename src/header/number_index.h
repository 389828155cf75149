// An index from a number to the first row (from 1) of a list that holds it:
// the answer of a search of the list from its first row, in logarithmic time.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace tmrdar::header {

class NUMBER_INDEX {
 public:
  // Indexes `numbers`, whose entry r - 1 is row r. Returns false, with the
  // index left empty, when the memory cannot be had.
  bool BUILD(std::span<const int32_t> numbers);
  void CLEAR();
  // The first row that holds `number`, or 0.
  int32_t FIND(int32_t number) const;
  bool EMPTY() const { return entries_.empty(); }

 private:
  // (number, first row), ascending by number, one entry per number.
  std::vector<std::pair<int32_t, int32_t>> entries_;
};

}  // namespace tmrdar::header
