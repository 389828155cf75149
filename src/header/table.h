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
struct Logical {
  bool value = false;
  Logical() = default;
  Logical(bool value) : value(value) {}  // NOLINT: converts as a bool does
  operator bool() const { return value; }  // NOLINT
};

template <typename T, std::size_t rank = 1>
class Table {
 public:
  static_assert(rank >= 1 && rank <= 3);

  bool allocated() const { return allocated_; }
  // Makes the table with these extents, each below 0 taken as 0, all entries
  // `fill`. Returns false, with the table left released, when the memory
  // cannot be had.
  bool allocate(const std::array<int64_t, rank>& extents, const T& fill = T{}) {
    deallocate();
    std::size_t total = 1;
    for (std::size_t d = 0; d < rank; ++d) {
      extents_[d] = extents[d] > 0 ? static_cast<std::size_t>(extents[d]) : 0;
      total *= extents_[d];
    }
    try {
      data_.assign(total, fill);
    } catch (const std::bad_alloc&) {
      deallocate();
      return false;
    }
    allocated_ = true;
    return true;
  }
  void deallocate() {
    std::vector<T>().swap(data_);
    extents_.fill(0);
    allocated_ = false;
  }

  // Extent of dimension d (from 1); 0 for a released table.
  int64_t extent(std::size_t d = 1) const { return static_cast<int64_t>(extents_.at(d - 1)); }
  std::size_t size() const { return data_.size(); }

  bool contains(int64_t i) const requires(rank == 1) { return in(i, 0); }
  bool contains(int64_t i, int64_t j) const requires(rank == 2) { return in(i, 0) && in(j, 1); }
  bool contains(int64_t i, int64_t j, int64_t k) const requires(rank == 3) {
    return in(i, 0) && in(j, 1) && in(k, 2);
  }

  T& operator()(int64_t i) requires(rank == 1) { return data_[offset({i})]; }
  const T& operator()(int64_t i) const requires(rank == 1) { return data_[offset({i})]; }
  T& operator()(int64_t i, int64_t j) requires(rank == 2) { return data_[offset({i, j})]; }
  const T& operator()(int64_t i, int64_t j) const requires(rank == 2) { return data_[offset({i, j})]; }
  T& operator()(int64_t i, int64_t j, int64_t k) requires(rank == 3) { return data_[offset({i, j, k})]; }
  const T& operator()(int64_t i, int64_t j, int64_t k) const requires(rank == 3) {
    return data_[offset({i, j, k})];
  }

  // The entries in storage order.
  const std::vector<T>& data() const { return data_; }
  std::span<T> storage() { return data_; }

 private:
  bool in(int64_t index, std::size_t d) const {
    return index >= 1 && static_cast<uint64_t>(index) <= extents_[d];
  }
  std::size_t offset(const std::array<int64_t, rank>& index) const {
    std::size_t offset = 0;
    std::size_t stride = 1;
    for (std::size_t d = 0; d < rank; ++d) {
      if (!in(index[d], d)) throw std::out_of_range("header table index");
      offset += static_cast<std::size_t>(index[d] - 1) * stride;
      stride *= extents_[d];
    }
    return offset;
  }

  std::vector<T> data_;
  std::array<std::size_t, rank> extents_{};
  bool allocated_ = false;
};

}  // namespace tmrdar::header
