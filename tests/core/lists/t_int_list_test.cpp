#include "core/lists/t_int_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>
#include <vector>

namespace tmrdar::MOD_INT_LIST {
namespace {

using ::testing::ElementsAre;

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

TEST(IntListGrowth, DoublesWhenFullAndOnlyThen) {
  T_INT_LIST list = MAKE({1, 2, 3, 4, 5, 6, 7, 8});  // created with the default 8
  EXPECT_EQ(list.CAPACITY(), 8);
  list.APPEND_DATA(9);
  EXPECT_EQ(list.CAPACITY(), 16);
  list.INSERT(0, 1, 7);  // fits
  EXPECT_EQ(list.CAPACITY(), 16);
  list.INSERT(0, 1, 40);  // the need, 56, beats twice 16
  EXPECT_EQ(list.CAPACITY(), 56);

  int32_t status = 7;
  list.CREATE(-5, &status);  // counts as 0, and is created
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(list.CREATED());
  std::vector<int32_t> capacities;
  for (int32_t v = 1; v <= 5; ++v) {
    list.APPEND_DATA(v);
    capacities.push_back(list.CAPACITY());
  }
  EXPECT_THAT(capacities, ElementsAre(1, 2, 4, 4, 8));
}

TEST(IntListEditing, InsertRemoveAndAppendToItself) {
  T_INT_LIST list = MAKE({1, 2, 3});
  list.INSERT(9, 2, 3);
  list.INSERT(7, 7);  // just behind the end
  list.INSERT(5, 9);  // beyond it, or with no count: ignored
  list.INSERT(5, 1, 0);
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 9, 9, 9, 2, 3, 7));
  list.REMOVE(2, 3);
  list.REMOVE(4, 100);  // runs past the end: the rest goes
  list.REMOVE(0);
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2, 3));

  list.APPEND_DATA(4);
  list.APPEND_DATA(5);
  list.APPEND_LIST(list);  // grows while reading itself
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2, 3, 4, 5, 1, 2, 3, 4, 5));
}

TEST(IntListSearch, MissingIsMinusOneAndEmptyExtremesAreDefined) {
  const T_INT_LIST list = MAKE({4, -9, 4});
  EXPECT_EQ(list.INDEX_OF(4, 2), 3);
  EXPECT_EQ(list.INDEX_OF(6), -1);
  EXPECT_EQ(list.INDEX_OF(4, -10), 1);
  EXPECT_FALSE(list.HAS(0));  // the zeros of the unused storage are not searched
  EXPECT_EQ(list.MAXIMUM(), 4);
  EXPECT_EQ(list.MINIMUM(), -9);
  EXPECT_EQ(T_INT_LIST().MAXIMUM(), INT32_MIN);
  EXPECT_EQ(T_INT_LIST().MINIMUM(), INT32_MAX);

  T_INT_LIST duplicates = MAKE({3, 1, 3, 2, 1});
  duplicates.REMOVE_DUPLICATES();
  EXPECT_THAT(ENTRIES(duplicates), ElementsAre(3, 1, 2));
}

TEST(IntListSort, DirectionIsStickyAcrossCallsAndLists) {
  T_INT_LIST().SORT(true);  // a known direction to start from
  T_INT_LIST list = MAKE({2, 5, 1, 4});
  list.SORT(false);
  T_INT_LIST other = MAKE({1, 3, 2});
  other.SORT();  // the direction given last, by another list
  EXPECT_THAT(ENTRIES(list), ElementsAre(5, 4, 2, 1));
  EXPECT_THAT(ENTRIES(other), ElementsAre(3, 2, 1));
  list.SORT(true);
  other.SORT();
  EXPECT_THAT(ENTRIES(other), ElementsAre(1, 2, 3));

  T_INT_LIST equal = MAKE({2, 1, 2, 3, 2, -1, 3});
  equal.SORT(false);
  EXPECT_THAT(ENTRIES(equal), ElementsAre(3, 3, 2, 2, 2, 1, -1));
}

TEST(IntListCompare, OnlyTheRightListsLengthCounts) {
  const T_INT_LIST left = MAKE({1, 2, 3});
  EXPECT_TRUE(left == MAKE({1, 2}));
  EXPECT_FALSE(MAKE({1, 2}) == left);  // reaches beyond the left list's storage
  EXPECT_TRUE(COMPARE_LIST(left, T_INT_LIST()));
  EXPECT_TRUE(left != MAKE({1, 4}));
  T_INT_LIST cleared = MAKE({7, 8});
  cleared.CLEAR();  // still stored, so still compared
  EXPECT_TRUE(COMPARE_LIST(cleared, MAKE({7, 8})));
}

TEST(IntListCopy, DeepAndExactAndEmptyDestroys) {
  T_INT_LIST source = MAKE({1, 2, 3});
  T_INT_LIST target = MAKE({9, 9, 9, 9, 9, 9, 9, 9, 9});
  target = source;
  source.SET(1, 100);
  EXPECT_EQ(target.CAPACITY(), 3);
  EXPECT_THAT(ENTRIES(target), ElementsAre(1, 2, 3));
  T_INT_LIST empty;
  empty.CREATE();
  ASSIGN_LIST(target, empty);
  EXPECT_FALSE(target.CREATED());
}

TEST(IntListAccess, IndicesOutsideTheStorageAreHarmless) {
  T_INT_LIST list;
  list.CREATE(4);
  list.APPEND_DATA(10);
  list.SET(3, 30);  // beyond the length, inside the storage
  EXPECT_EQ(list.AT(3), 30);
  EXPECT_EQ(list.LENGTH(), 1);
  list.SET(5, 50);
  EXPECT_EQ(list.AT(5), 0);
  list.REF(1) += 5;
  list.REF(99) = 7;  // goes nowhere
  EXPECT_EQ(list.REF(99), 0);
  list.SWAP(1, 3);
  list.SWAP(1, 9);
  EXPECT_EQ(list.AT(1), 30);
  EXPECT_EQ(list.AT(3), 15);
}

}  // namespace
}  // namespace tmrdar::MOD_INT_LIST
