#include "core/lists/t_int_list.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace tmrdar::MOD_INT_LIST {
namespace {

T_INT_LIST MAKE(std::initializer_list<int32_t> values) {
  T_INT_LIST list;
  for (int32_t v : values) list.APPEND_DATA(v);
  return list;
}

std::vector<int32_t> ENTRIES(const T_INT_LIST& list) {
  std::vector<int32_t> out;
  list.TO_LIST_DATA_ARRAY(out);
  return out;
}

TEST(IntList, GrowEditSearchSortCompareAndCopy) {
  T_INT_LIST list = MAKE({1, 2, 3, 4, 5, 6, 7, 8, 9});
  EXPECT_EQ(list.CAPACITY(), 16);
  list.INSERT(0, 1, 40);  // the need, 49, beats twice 16
  EXPECT_EQ(list.CAPACITY(), 49);

  list = MAKE({1, 2, 3});
  list.INSERT(9, 2, 3);
  list.INSERT(7, 7);  // just behind the end
  list.INSERT(5, 9);  // beyond it: ignored
  EXPECT_EQ(ENTRIES(list), (std::vector<int32_t>{1, 9, 9, 9, 2, 3, 7}));
  list.REMOVE(2, 3);
  list.REMOVE(4, 100);
  list.APPEND_LIST(list);  // grows while reading itself
  EXPECT_EQ(ENTRIES(list), (std::vector<int32_t>{1, 2, 3, 1, 2, 3}));

  const T_INT_LIST found = MAKE({4, -9, 4});
  EXPECT_EQ(found.INDEX_OF(4, 2), 3);
  EXPECT_EQ(found.INDEX_OF(6), -1);
  EXPECT_FALSE(found.HAS(0));  // the unused storage is not searched
  EXPECT_EQ(found.MAXIMUM(), 4);
  EXPECT_EQ(found.MINIMUM(), -9);
  T_INT_LIST duplicates = MAKE({3, 1, 3, 2, 1});
  duplicates.REMOVE_DUPLICATES();
  EXPECT_EQ(ENTRIES(duplicates), (std::vector<int32_t>{3, 1, 2}));

  T_INT_LIST down = MAKE({2, 5, 1, 2});
  down.SORT(false);
  T_INT_LIST other = MAKE({1, 3, 2});
  other.SORT();  // the direction given last, by another list
  EXPECT_EQ(ENTRIES(down), (std::vector<int32_t>{5, 2, 2, 1}));
  EXPECT_EQ(ENTRIES(other), (std::vector<int32_t>{3, 2, 1}));

  const T_INT_LIST left = MAKE({1, 2, 3});
  EXPECT_TRUE(left == MAKE({1, 2}));  // only the right list's length counts
  EXPECT_FALSE(MAKE({1, 2}) == left);
  EXPECT_TRUE(left != MAKE({1, 4}));

  T_INT_LIST source = MAKE({1, 2, 3});
  T_INT_LIST target = MAKE({9, 9, 9, 9, 9, 9, 9, 9, 9});
  target = source;
  source.SET(1, 100);
  EXPECT_EQ(target.CAPACITY(), 3);
  EXPECT_EQ(ENTRIES(target), (std::vector<int32_t>{1, 2, 3}));
  T_INT_LIST empty;
  empty.CREATE();
  ASSIGN_LIST(target, empty);
  EXPECT_FALSE(target.CREATED());
  target.CREATE(4);
  target.SET(5, 50);  // outside the storage: goes nowhere
  target.REF(99) = 7;
  EXPECT_EQ(target.AT(5), 0);
  EXPECT_EQ(target.REF(99), 0);
}

}  // namespace
}  // namespace tmrdar::MOD_INT_LIST
