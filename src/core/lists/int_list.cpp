#include "core/lists/int_list.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace tmrdar::int_lists {
namespace {

// The direction of sort, shared by all lists for the life of the process.
bool sort_ascending = true;

constexpr int64_t max_entries = std::numeric_limits<int32_t>::max();

// Storage of n entries, all 0; null when it cannot be had.
std::unique_ptr<int32_t[]> allocate(int32_t n) {
  return std::unique_ptr<int32_t[]>(new (std::nothrow) int32_t[static_cast<std::size_t>(n)]());
}

}  // namespace

IntList::IntList(const IntList& other) { assign_list(*this, other); }

IntList& IntList::operator=(const IntList& other) {
  assign_list(*this, other);
  return *this;
}

IntList::IntList(IntList&& other) noexcept
    : data_(std::move(other.data_)),
      length_(std::exchange(other.length_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

IntList& IntList::operator=(IntList&& other) noexcept {
  if (this != &other) {
    data_ = std::move(other.data_);
    length_ = std::exchange(other.length_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
  }
  return *this;
}

void IntList::create(int32_t capacity, int32_t* status) {
  if (created()) destroy();
  const int32_t size = std::max(capacity, int32_t{0});
  data_ = allocate(size);
  capacity_ = created() ? size : 0;
  length_ = 0;
  if (status != nullptr) *status = created() ? 0 : 1;
}

void IntList::destroy() {
  data_.reset();
  capacity_ = 0;
  length_ = 0;
}

void IntList::grow(int32_t n) {
  const int64_t wanted = std::max<int64_t>(n, int64_t{2} * capacity_);
  const auto new_capacity = static_cast<int32_t>(std::min(wanted, max_entries));
  if (new_capacity <= capacity_) return;
  auto fresh = allocate(new_capacity);
  if (fresh == nullptr) return;
  std::copy_n(data_.get(), length_, fresh.get());
  data_ = std::move(fresh);
  capacity_ = new_capacity;
}

bool IntList::make_room(int64_t needed) {
  if (needed > max_entries) return false;
  if (!created()) create();
  if (needed > capacity_) grow(static_cast<int32_t>(needed));
  return created() && needed <= capacity_;
}

int32_t IntList::at(int32_t index) const { return in_storage(index) ? data_[index - 1] : 0; }

int32_t& IntList::ref(int32_t index) {
  if (in_storage(index)) return data_[index - 1];
  scratch_ = 0;
  return scratch_;
}

void IntList::set(int32_t index, int32_t value) {
  if (in_storage(index)) data_[index - 1] = value;
}

void IntList::swap(int32_t first, int32_t second) {
  if (in_storage(first) && in_storage(second)) std::swap(data_[first - 1], data_[second - 1]);
}

void IntList::append_data(int32_t value) {
  if (!make_room(int64_t{length_} + 1)) return;
  data_[length_] = value;
  ++length_;
}

void IntList::append_list(const IntList& other) {
  // The other list may be this one: count first, and reach its entries only
  // after the growth.
  const int32_t count = other.length_;
  if (count == 0) return;
  if (!make_room(int64_t{length_} + count)) return;
  std::copy_n(other.data_.get(), count, data_.get() + length_);
  length_ += count;
}

void IntList::to_list_data_array(std::vector<int32_t>& out) const {
  out.assign(data_.get(), data_.get() + length_);
}

void IntList::remove(int32_t index, int32_t count) {
  if (index < 1 || index > length_ || count < 1) return;
  const int32_t removed = std::min(count, length_ - index + 1);
  int32_t* const at = data_.get() + (index - 1);
  std::copy(at + removed, data_.get() + length_, at);
  length_ -= removed;
}

void IntList::insert(int32_t value, int32_t index, int32_t count) {
  if (index < 1 || index > int64_t{length_} + 1 || count < 1) return;
  if (!make_room(int64_t{length_} + count)) return;
  int32_t* const at = data_.get() + (index - 1);
  std::copy_backward(at, data_.get() + length_, data_.get() + length_ + count);
  std::fill_n(at, count, value);
  length_ += count;
}

int32_t IntList::index_of(int32_t value, int32_t start) const {
  for (int32_t i = std::max(start, int32_t{1}) - 1; i < length_; ++i) {
    if (data_[i] == value) return i + 1;
  }
  return -1;
}

void IntList::remove_duplicates() {
  for (int32_t i = length_; i >= 2; --i) {
    for (int32_t j = i - 1; j >= 1; --j) {
      if (data_[j - 1] == data_[i - 1]) {
        remove(i);
        break;
      }
    }
  }
}

int32_t IntList::maximum() const {
  int32_t result = std::numeric_limits<int32_t>::min();
  for (int32_t i = 0; i < length_; ++i) result = std::max(result, data_[i]);
  return result;
}

int32_t IntList::minimum() const {
  int32_t result = std::numeric_limits<int32_t>::max();
  for (int32_t i = 0; i < length_; ++i) result = std::min(result, data_[i]);
  return result;
}

void IntList::sort(bool ascending) {
  sort_ascending = ascending;
  sort();
}

void IntList::sort() {
  int32_t* const a = data_.get();
  for (int32_t i = 0; i + 1 < length_; ++i) {
    for (int32_t j = i + 1; j < length_; ++j) {
      const bool exchange = sort_ascending ? a[j] < a[i] : a[i] <= a[j];
      if (exchange) std::swap(a[i], a[j]);
    }
  }
}

void assign_list(IntList& target, const IntList& source) {
  if (&target == &source) return;
  target.destroy();
  const int32_t count = source.length();
  if (count == 0) return;
  target.create(count);
  if (!target.created()) return;
  for (int32_t i = 1; i <= count; ++i) target.append_data(source.at(i));
}

bool compare_list(const IntList& left, const IntList& right) {
  if (right.length() > left.capacity()) return false;
  for (int32_t i = 1; i <= right.length(); ++i) {
    if (right.at(i) != left.at(i)) return false;
  }
  return true;
}

}  // namespace tmrdar::int_lists
