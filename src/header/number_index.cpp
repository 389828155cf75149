#include "header/number_index.h"

#include <algorithm>
#include <bit>
#include <new>

namespace tmrdar::header {
namespace {

// A direct table may hold this many places a number.
constexpr int64_t direct_spread = 4;

}  // namespace

bool NumberIndex::build(std::span<const int32_t> numbers) {
  clear();
  if (numbers.empty()) return true;
  try {
    const auto [least, most] = std::minmax_element(numbers.begin(), numbers.end());
    const int64_t span = int64_t{*most} - *least + 1;
    const auto count = static_cast<int64_t>(numbers.size());
    // Rows are visited from the first, and a number keeps the first row it got.
    if (span <= direct_spread * count + 64) {
      direct_ = true;
      base_ = *least;
      rows_.assign(static_cast<std::size_t>(span), 0);
      for (std::size_t r = 0; r < numbers.size(); ++r) {
        int32_t& row = rows_[static_cast<std::size_t>(int64_t{numbers[r]} - base_)];
        if (row == 0) row = static_cast<int32_t>(r + 1);
      }
    } else {
      const uint64_t slots = std::bit_ceil(static_cast<uint64_t>(2 * count));
      mask_ = slots - 1;
      rows_.assign(slots, 0);
      keys_.assign(slots, 0);
      for (std::size_t r = 0; r < numbers.size(); ++r) {
        const int32_t number = numbers[r];
        uint64_t slot = hash(number) & mask_;
        while (rows_[slot] != 0 && keys_[slot] != number) slot = (slot + 1) & mask_;
        if (rows_[slot] == 0) {
          rows_[slot] = static_cast<int32_t>(r + 1);
          keys_[slot] = number;
        }
      }
    }
  } catch (const std::bad_alloc&) {
    clear();
    return false;
  }
  count_ = numbers.size();
  built_over_ = numbers.data();
  built_size_ = numbers.size();
  return true;
}

void NumberIndex::clear() {
  std::vector<int32_t>().swap(rows_);
  std::vector<int32_t>().swap(keys_);
  direct_ = false;
  base_ = 0;
  mask_ = 0;
  count_ = 0;
  built_over_ = nullptr;
  built_size_ = 0;
}

}  // namespace tmrdar::header
