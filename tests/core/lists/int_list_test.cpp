#include "core/lists/int_list.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace tmrdar::int_lists {
namespace {

IntList make(std::initializer_list<int32_t> values) {
  IntList list;
  for (int32_t v : values) list.append_data(v);
  return list;
}

std::vector<int32_t> entries(const IntList& list) {
  std::vector<int32_t> out;
  list.to_list_data_array(out);
  return out;
}

TEST(IntList, GrowEditSearchSortCompareAndCopy) {
  IntList list = make({1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_EQ(list.capacity(), 16);
  list.insert(0, 1, 40);  // the need, 49, beats twice 16
  EXPECT_EQ(list.capacity(), 49);

  list = make({1, 2, 3});
  list.insert(9, 2, 3);
  list.insert(7, 7);  // just behind the end
  list.insert(5, 9);  // beyond it: ignored
  EXPECT_EQ(entries(list), (std::vector<int32_t>{1, 9, 9, 9, 2, 3, 7}));
  list.remove(2, 3);
  list.remove(4, 100);
  list.append_list(list);  // grows while reading itself
  EXPECT_EQ(entries(list), (std::vector<int32_t>{1, 2, 3, 1, 2, 3}));

  const IntList found = make({4, -9, 4});
  EXPECT_EQ(found.index_of(4, 2), 3);
  EXPECT_EQ(found.index_of(6), -1);
  EXPECT_FALSE(found.has(0));  // the unused storage is not searched
  EXPECT_EQ(found.maximum(), 4);
  EXPECT_EQ(found.minimum(), -9);
  IntList duplicates = make({3, 1, 3, 2, 1});
  duplicates.remove_duplicates();
  EXPECT_EQ(entries(duplicates), (std::vector<int32_t>{3, 1, 2}));

  IntList down = make({2, 5, 1, 2});
  down.sort(false);
  IntList other = make({1, 3, 2});
  other.sort();  // the direction given last, by another list
  EXPECT_EQ(entries(down), (std::vector<int32_t>{5, 2, 2, 1}));
  EXPECT_EQ(entries(other), (std::vector<int32_t>{3, 2, 1}));

  const IntList left = make({1, 2, 3});
  EXPECT_TRUE(left == make({1, 2}));  // only the right list's length counts
  EXPECT_FALSE(make({1, 2}) == left);
  EXPECT_TRUE(left != make({1, 4}));

  IntList source = make({1, 2, 3});
  IntList target = make({9, 9, 9, 9, 9, 9, 9, 9, 9});
  target = source;
  source.set(1, 100);
  EXPECT_EQ(target.capacity(), 3);
  EXPECT_EQ(entries(target), (std::vector<int32_t>{1, 2, 3}));
  IntList empty;
  empty.create();
  assign_list(target, empty);
  EXPECT_FALSE(target.created());
  target.create(4);
  target.set(5, 50);  // outside the storage: goes nowhere
  target.ref(99) = 7;
  EXPECT_EQ(target.at(5), 0);
  EXPECT_EQ(target.ref(99), 0);
}

}  // namespace
}  // namespace tmrdar::int_lists
