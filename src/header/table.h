// Tables of a header: arrays of one to three dimensions, every index from 1,
// the first index varying fastest in storage. A table is "allocated" once it
// has been made, even with no entries, and released tables are distinct from
// empty ones, as the release guards of a header need.
//
// Indexing outside the table throws std::out_of_range: every reader loop is
// bounded by the table's own extents, so the check only ever fires on a
// defect, and a defect must not read or write outside the table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <vector>

namespace tmrdar::header {

// A logical entry of a table (a table of bool could not hand out references).
struct LOGICAL {
  bool VALUE = false;
  LOGICAL() = default;
  LOGICAL(bool value) : VALUE(value) {}  // NOLINT: converts as a bool does
  operator bool() const { return VALUE; }  // NOLINT
};

template <typename T, std::size_t RANK = 1>
class TABLE {
 public:
  static_assert(RANK >= 1 && RANK <= 3);

  bool ALLOCATED() const { return allocated_; }
  // Makes the table with these extents, each below 0 taken as 0, all entries
  // `fill`. Returns false, with the table left released, when the memory
  // cannot be had.
  bool ALLOCATE(const std::array<int64_t, RANK>& extents, const T& fill = T{}) {
    DEALLOCATE();
    std::size_t total = 1;
    for (std::size_t d = 0; d < RANK; ++d) {
      extents_[d] = extents[d] > 0 ? static_cast<std::size_t>(extents[d]) : 0;
      total *= extents_[d];
    }
    try {
      data_.assign(total, fill);
    } catch (const std::bad_alloc&) {
      DEALLOCATE();
      return false;
    }
    allocated_ = true;
    return true;
  }
  void DEALLOCATE() {
    std::vector<T>().swap(data_);
    extents_.fill(0);
    allocated_ = false;
  }

  // Extent of dimension d (from 1); 0 for a released table.
  int64_t EXTENT(std::size_t d = 1) const { return static_cast<int64_t>(extents_.at(d - 1)); }
  std::size_t SIZE() const { return data_.size(); }

  bool CONTAINS(int64_t i) const requires(RANK == 1) { return IN(i, 0); }
  bool CONTAINS(int64_t i, int64_t j) const requires(RANK == 2) { return IN(i, 0) && IN(j, 1); }
  bool CONTAINS(int64_t i, int64_t j, int64_t k) const requires(RANK == 3) {
    return IN(i, 0) && IN(j, 1) && IN(k, 2);
  }

  T& operator()(int64_t i) requires(RANK == 1) { return data_[OFFSET({i})]; }
  const T& operator()(int64_t i) const requires(RANK == 1) { return data_[OFFSET({i})]; }
  T& operator()(int64_t i, int64_t j) requires(RANK == 2) { return data_[OFFSET({i, j})]; }
  const T& operator()(int64_t i, int64_t j) const requires(RANK == 2) { return data_[OFFSET({i, j})]; }
  T& operator()(int64_t i, int64_t j, int64_t k) requires(RANK == 3) { return data_[OFFSET({i, j, k})]; }
  const T& operator()(int64_t i, int64_t j, int64_t k) const requires(RANK == 3) {
    return data_[OFFSET({i, j, k})];
  }

  // The entries in storage order.
  const std::vector<T>& DATA() const { return data_; }
  std::span<T> STORAGE() { return data_; }

 private:
  bool IN(int64_t index, std::size_t d) const {
    return index >= 1 && static_cast<uint64_t>(index) <= extents_[d];
  }
  std::size_t OFFSET(const std::array<int64_t, RANK>& index) const {
    std::size_t offset = 0;
    std::size_t stride = 1;
    for (std::size_t d = 0; d < RANK; ++d) {
      if (!IN(index[d], d)) throw std::out_of_range("header table index");
      offset += static_cast<std::size_t>(index[d] - 1) * stride;
      stride *= extents_[d];
    }
    return offset;
  }

  std::vector<T> data_;
  std::array<std::size_t, RANK> extents_{};
  bool allocated_ = false;
};

}  // namespace tmrdar::header
