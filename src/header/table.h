// Tables of a header: arrays of one to three dimensions, every index from 1,
// the first index varying fastest in storage. A table is "allocated" once it
// has been made, even with no entries, and released tables are distinct from
// empty ones, as the release guards of a header need.
//
// Indexing outside the table throws std::out_of_range: every reader loop is
// bounded by the table's own extents, so the check only ever fires on a
// defect, and a defect must not read or write outside the table. A reader
// that fills a whole column in one pass takes the column as a span, checked
// once.
//
// Tables of plain values are made zeroed by the allocator, so that a large
// table costs no pass of its own before the header's words are decoded into
// it: the pages are zero when first touched.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace tmrdar::header {

// Zeroed storage for entries of a plain type, or a vector for any other.
template <typename T>
class PlainStorage {
 public:
  bool assign(std::size_t count, const T& fill) {
    clear();
    if (count > 0) {
      void* memory = std::calloc(count, sizeof(T));
      if (memory == nullptr) return false;
      data_.reset(static_cast<T*>(memory));
    }
    size_ = count;
    const std::array<std::byte, sizeof(T)> zero{};
    if (std::memcmp(&fill, zero.data(), sizeof(T)) != 0) std::fill_n(data_.get(), count, fill);
    return true;
  }
  void clear() {
    data_.reset();
    size_ = 0;
  }
  T* data() { return data_.get(); }
  const T* data() const { return data_.get(); }
  std::size_t size() const { return size_; }

 private:
  struct Free {
    void operator()(T* memory) const { std::free(memory); }
  };
  std::unique_ptr<T, Free> data_;
  std::size_t size_ = 0;
};

template <typename T>
class VectorStorage {
 public:
  bool assign(std::size_t count, const T& fill) {
    try {
      data_.assign(count, fill);
    } catch (const std::bad_alloc&) {
      clear();
      return false;
    }
    return true;
  }
  void clear() { std::vector<T>().swap(data_); }
  T* data() { return data_.data(); }
  const T* data() const { return data_.data(); }
  std::size_t size() const { return data_.size(); }

 private:
  std::vector<T> data_;
};

template <typename T>
using TableStorage = std::conditional_t<std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>,
                                        PlainStorage<T>, VectorStorage<T>>;

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
      if (extents_[d] != 0 && total > SIZE_MAX / sizeof(T) / extents_[d]) {
        deallocate();
        return false;
      }
      total *= extents_[d];
    }
    if (!data_.assign(total, fill)) {
      deallocate();
      return false;
    }
    allocated_ = true;
    return true;
  }
  void deallocate() {
    data_.clear();
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

  T& operator()(int64_t i) requires(rank == 1) { return data_.data()[offset({i})]; }
  const T& operator()(int64_t i) const requires(rank == 1) { return data_.data()[offset({i})]; }
  T& operator()(int64_t i, int64_t j) requires(rank == 2) { return data_.data()[offset({i, j})]; }
  const T& operator()(int64_t i, int64_t j) const requires(rank == 2) { return data_.data()[offset({i, j})]; }
  T& operator()(int64_t i, int64_t j, int64_t k) requires(rank == 3) { return data_.data()[offset({i, j, k})]; }
  const T& operator()(int64_t i, int64_t j, int64_t k) const requires(rank == 3) {
    return data_.data()[offset({i, j, k})];
  }

  // The entries in storage order.
  std::span<const T> data() const { return {data_.data(), data_.size()}; }
  std::span<T> storage() { return {data_.data(), data_.size()}; }
  // The entries (1 .. extent(1), j) of a two-dimensional table, which stand
  // together; throws std::out_of_range for a column the table lacks.
  std::span<T> column(int64_t j) requires(rank == 2) {
    if (!in(j, 1)) throw std::out_of_range("header table column");
    return storage().subspan(static_cast<std::size_t>(j - 1) * extents_[0], extents_[0]);
  }

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

  TableStorage<T> data_;
  std::array<std::size_t, rank> extents_{};
  bool allocated_ = false;
};

}  // namespace tmrdar::header
