#include "header/number_index.h"

#include <algorithm>
#include <new>

namespace tmrdar::header {

bool NUMBER_INDEX::BUILD(std::span<const int32_t> numbers) {
  CLEAR();
  try {
    entries_.reserve(numbers.size());
    for (std::size_t r = 0; r < numbers.size(); ++r) {
      entries_.emplace_back(numbers[r], static_cast<int32_t>(r + 1));
    }
  } catch (const std::bad_alloc&) {
    CLEAR();
    return false;
  }
  // Sorting by number and then row puts the first row of each number first;
  // the later rows of a number are dropped.
  std::sort(entries_.begin(), entries_.end());
  entries_.erase(std::unique(entries_.begin(), entries_.end(),
                             [](const auto& a, const auto& b) { return a.first == b.first; }),
                 entries_.end());
  return true;
}

void NUMBER_INDEX::CLEAR() { std::vector<std::pair<int32_t, int32_t>>().swap(entries_); }

int32_t NUMBER_INDEX::FIND(int32_t number) const {
  const auto it = std::lower_bound(entries_.begin(), entries_.end(), number,
                                   [](const auto& entry, int32_t value) { return entry.first < value; });
  return it != entries_.end() && it->first == number ? it->second : 0;
}

}  // namespace tmrdar::header
