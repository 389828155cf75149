#include "core/lists/t_int_list.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace tmrdar::MOD_INT_LIST {
namespace {

// The direction of SORT, shared by all lists for the life of the process.
bool SORT_ASCENDING = true;

constexpr int64_t MAX_ENTRIES = std::numeric_limits<int32_t>::max();

// Storage of n entries, all 0; null when it cannot be had.
std::unique_ptr<int32_t[]> ALLOCATE(int32_t n) {
  return std::unique_ptr<int32_t[]>(new (std::nothrow) int32_t[static_cast<std::size_t>(n)]());
}

}  // namespace

T_INT_LIST::T_INT_LIST(const T_INT_LIST& other) { ASSIGN_LIST(*this, other); }

T_INT_LIST& T_INT_LIST::operator=(const T_INT_LIST& other) {
  ASSIGN_LIST(*this, other);
  return *this;
}

T_INT_LIST::T_INT_LIST(T_INT_LIST&& other) noexcept
    : data_(std::move(other.data_)),
      length_(std::exchange(other.length_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

T_INT_LIST& T_INT_LIST::operator=(T_INT_LIST&& other) noexcept {
  if (this != &other) {
    data_ = std::move(other.data_);
    length_ = std::exchange(other.length_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
  }
  return *this;
}

void T_INT_LIST::CREATE(int32_t capacity, int32_t* status) {
  if (CREATED()) DESTROY();
  const int32_t size = std::max(capacity, int32_t{0});
  data_ = ALLOCATE(size);
  capacity_ = CREATED() ? size : 0;
  length_ = 0;
  if (status != nullptr) *status = CREATED() ? 0 : 1;
}

void T_INT_LIST::DESTROY() {
  data_.reset();
  capacity_ = 0;
  length_ = 0;
}

void T_INT_LIST::GROW(int32_t n) {
  const int64_t wanted = std::max<int64_t>(n, int64_t{2} * capacity_);
  const auto new_capacity = static_cast<int32_t>(std::min(wanted, MAX_ENTRIES));
  if (new_capacity <= capacity_) return;
  auto fresh = ALLOCATE(new_capacity);
  if (fresh == nullptr) return;
  std::copy_n(data_.get(), length_, fresh.get());
  data_ = std::move(fresh);
  capacity_ = new_capacity;
}

bool T_INT_LIST::MAKE_ROOM(int64_t needed) {
  if (needed > MAX_ENTRIES) return false;
  if (!CREATED()) CREATE();
  if (needed > capacity_) GROW(static_cast<int32_t>(needed));
  return CREATED() && needed <= capacity_;
}

int32_t T_INT_LIST::AT(int32_t index) const { return IN_STORAGE(index) ? data_[index - 1] : 0; }

int32_t& T_INT_LIST::REF(int32_t index) {
  if (IN_STORAGE(index)) return data_[index - 1];
  scratch_ = 0;
  return scratch_;
}

void T_INT_LIST::SET(int32_t index, int32_t value) {
  if (IN_STORAGE(index)) data_[index - 1] = value;
}

void T_INT_LIST::SWAP(int32_t first, int32_t second) {
  if (IN_STORAGE(first) && IN_STORAGE(second)) std::swap(data_[first - 1], data_[second - 1]);
}

void T_INT_LIST::APPEND_DATA(int32_t value) {
  if (!MAKE_ROOM(int64_t{length_} + 1)) return;
  data_[length_] = value;
  ++length_;
}

void T_INT_LIST::APPEND_LIST(const T_INT_LIST& other) {
  // The other list may be this one: count first, and reach its entries only
  // after the growth.
  const int32_t count = other.length_;
  if (count == 0) return;
  if (!MAKE_ROOM(int64_t{length_} + count)) return;
  std::copy_n(other.data_.get(), count, data_.get() + length_);
  length_ += count;
}

void T_INT_LIST::TO_LIST_DATA_ARRAY(std::vector<int32_t>& out) const {
  out.assign(data_.get(), data_.get() + length_);
}

void T_INT_LIST::REMOVE(int32_t index, int32_t count) {
  if (index < 1 || index > length_ || count < 1) return;
  const int32_t removed = std::min(count, length_ - index + 1);
  int32_t* const at = data_.get() + (index - 1);
  std::copy(at + removed, data_.get() + length_, at);
  length_ -= removed;
}

void T_INT_LIST::INSERT(int32_t value, int32_t index, int32_t count) {
  if (index < 1 || index > int64_t{length_} + 1 || count < 1) return;
  if (!MAKE_ROOM(int64_t{length_} + count)) return;
  int32_t* const at = data_.get() + (index - 1);
  std::copy_backward(at, data_.get() + length_, data_.get() + length_ + count);
  std::fill_n(at, count, value);
  length_ += count;
}

int32_t T_INT_LIST::INDEX_OF(int32_t value, int32_t start) const {
  for (int32_t i = std::max(start, int32_t{1}) - 1; i < length_; ++i) {
    if (data_[i] == value) return i + 1;
  }
  return -1;
}

void T_INT_LIST::REMOVE_DUPLICATES() {
  for (int32_t i = length_; i >= 2; --i) {
    for (int32_t j = i - 1; j >= 1; --j) {
      if (data_[j - 1] == data_[i - 1]) {
        REMOVE(i);
        break;
      }
    }
  }
}

int32_t T_INT_LIST::MAXIMUM() const {
  int32_t result = std::numeric_limits<int32_t>::min();
  for (int32_t i = 0; i < length_; ++i) result = std::max(result, data_[i]);
  return result;
}

int32_t T_INT_LIST::MINIMUM() const {
  int32_t result = std::numeric_limits<int32_t>::max();
  for (int32_t i = 0; i < length_; ++i) result = std::min(result, data_[i]);
  return result;
}

void T_INT_LIST::SORT(bool ascending) {
  SORT_ASCENDING = ascending;
  SORT();
}

void T_INT_LIST::SORT() {
  int32_t* const a = data_.get();
  for (int32_t i = 0; i + 1 < length_; ++i) {
    for (int32_t j = i + 1; j < length_; ++j) {
      const bool exchange = SORT_ASCENDING ? a[j] < a[i] : a[i] <= a[j];
      if (exchange) std::swap(a[i], a[j]);
    }
  }
}

void ASSIGN_LIST(T_INT_LIST& target, const T_INT_LIST& source) {
  if (&target == &source) return;
  target.DESTROY();
  const int32_t count = source.LENGTH();
  if (count == 0) return;
  target.CREATE(count);
  if (!target.CREATED()) return;
  for (int32_t i = 1; i <= count; ++i) target.APPEND_DATA(source.AT(i));
}

bool COMPARE_LIST(const T_INT_LIST& left, const T_INT_LIST& right) {
  if (right.LENGTH() > left.CAPACITY()) return false;
  for (int32_t i = 1; i <= right.LENGTH(); ++i) {
    if (right.AT(i) != left.AT(i)) return false;
  }
  return true;
}

}  // namespace tmrdar::MOD_INT_LIST
