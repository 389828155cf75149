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
  T_INT_LIST list;
  list.APPEND_DATA(1);  // creates with the default capacity
  EXPECT_TRUE(list.CREATED());
  EXPECT_EQ(list.CAPACITY(), 8);
  for (int32_t v = 2; v <= 8; ++v) list.APPEND_DATA(v);
  EXPECT_EQ(list.CAPACITY(), 8);
  list.APPEND_DATA(9);
  EXPECT_EQ(list.CAPACITY(), 16);
  EXPECT_EQ(list.LENGTH(), 9);
  EXPECT_EQ(list.AT(9), 9);

  // An insert that fits does not grow; one that does not takes the larger of
  // the need and twice the capacity.
  list.INSERT(0, 1, 7);
  EXPECT_EQ(list.CAPACITY(), 16);
  list.INSERT(0, 1, 40);
  EXPECT_EQ(list.CAPACITY(), 56);
}

TEST(IntListGrowth, NegativeCapacityCountsAsZeroAndStillCreates) {
  T_INT_LIST list;
  int32_t status = 7;
  list.CREATE(-5, &status);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(list.CREATED());
  EXPECT_EQ(list.CAPACITY(), 0);
  std::vector<int32_t> capacities;
  for (int32_t v = 1; v <= 5; ++v) {
    list.APPEND_DATA(v);
    capacities.push_back(list.CAPACITY());
  }
  EXPECT_THAT(capacities, ElementsAre(1, 2, 4, 4, 8));
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2, 3, 4, 5));

  list.DESTROY();
  EXPECT_FALSE(list.CREATED());
  EXPECT_EQ(list.LENGTH(), 0);
  EXPECT_EQ(list.CAPACITY(), 0);
}

TEST(IntListEditing, InsertAndRemove) {
  T_INT_LIST list = MAKE({1, 2, 3});
  list.INSERT(9, 2, 3);
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 9, 9, 9, 2, 3));
  list.INSERT(7, 7);  // just behind the end
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 9, 9, 9, 2, 3, 7));
  list.INSERT(5, 9);  // beyond it: ignored
  list.INSERT(5, 0);
  list.INSERT(5, 1, 0);
  EXPECT_EQ(list.LENGTH(), 7);

  list.REMOVE(2, 3);
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2, 3, 7));
  list.REMOVE(3, 100);  // runs past the end: the rest goes
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2));
  list.REMOVE(3);
  list.REMOVE(0);
  list.REMOVE(1, -1);
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2));
}

TEST(IntListEditing, AppendListToItself) {
  T_INT_LIST list = MAKE({1, 2, 3, 4, 5, 6, 7, 8});
  list.APPEND_LIST(list);  // needs growth while reading itself
  EXPECT_EQ(list.LENGTH(), 16);
  EXPECT_EQ(list.AT(9), 1);
  EXPECT_EQ(list.AT(16), 8);
}

TEST(IntListSearch, IndexOfMissingIsMinusOne) {
  const T_INT_LIST list = MAKE({4, 5, 4});
  EXPECT_EQ(list.INDEX_OF(4), 1);
  EXPECT_EQ(list.INDEX_OF(4, 2), 3);
  EXPECT_EQ(list.INDEX_OF(6), -1);
  EXPECT_EQ(list.INDEX_OF(5, 3), -1);
  EXPECT_EQ(list.INDEX_OF(4, -10), 1);
  EXPECT_TRUE(list.HAS(5));
  EXPECT_FALSE(list.HAS(0));  // the unused storage holds zeros; it is not searched
  EXPECT_FALSE(T_INT_LIST().HAS(0));
}

TEST(IntListSearch, ExtremesIncludingEmptyList) {
  const T_INT_LIST list = MAKE({-3, 8, -9, 2});
  EXPECT_EQ(list.MAXIMUM(), 8);
  EXPECT_EQ(list.MINIMUM(), -9);
  EXPECT_EQ(T_INT_LIST().MAXIMUM(), INT32_MIN);
  EXPECT_EQ(T_INT_LIST().MINIMUM(), INT32_MAX);
}

TEST(IntListDuplicates, FirstOccurrenceStays) {
  T_INT_LIST list = MAKE({3, 1, 3, 2, 1});
  list.REMOVE_DUPLICATES();
  EXPECT_THAT(ENTRIES(list), ElementsAre(3, 1, 2));
  T_INT_LIST same = MAKE({5, 5, 5, 5});
  same.REMOVE_DUPLICATES();
  EXPECT_THAT(ENTRIES(same), ElementsAre(5));
}

TEST(IntListSort, DirectionIsStickyAcrossCallsAndLists) {
  T_INT_LIST().SORT(true);  // a known direction to start from

  T_INT_LIST list = MAKE({2, 5, 1, 4});
  list.SORT(false);
  EXPECT_THAT(ENTRIES(list), ElementsAre(5, 4, 2, 1));
  T_INT_LIST other = MAKE({1, 3, 2});
  other.SORT();  // no direction: the last one given, by another list
  EXPECT_THAT(ENTRIES(other), ElementsAre(3, 2, 1));
  list.SORT();
  EXPECT_THAT(ENTRIES(list), ElementsAre(5, 4, 2, 1));

  list.SORT(true);
  EXPECT_THAT(ENTRIES(list), ElementsAre(1, 2, 4, 5));
  other.SORT();
  EXPECT_THAT(ENTRIES(other), ElementsAre(1, 2, 3));
}

TEST(IntListSort, EqualEntriesInBothDirections) {
  T_INT_LIST list = MAKE({2, 1, 2, 3, 2, -1, 3});
  list.SORT(false);
  EXPECT_THAT(ENTRIES(list), ElementsAre(3, 3, 2, 2, 2, 1, -1));
  list.SORT(true);
  EXPECT_THAT(ENTRIES(list), ElementsAre(-1, 1, 2, 2, 2, 3, 3));
}

TEST(IntListCompare, OnlyTheRightListsLengthCounts) {
  const T_INT_LIST left = MAKE({1, 2, 3});
  EXPECT_TRUE(COMPARE_LIST(left, MAKE({1, 2})));
  EXPECT_TRUE(left == MAKE({1, 2}));
  EXPECT_FALSE(MAKE({1, 2}) == left);  // the right list reaches beyond the left one
  EXPECT_TRUE(COMPARE_LIST(left, T_INT_LIST()));
  EXPECT_TRUE(COMPARE_LIST(T_INT_LIST(), T_INT_LIST()));
  EXPECT_FALSE(COMPARE_LIST(left, MAKE({1, 4})));
  EXPECT_TRUE(left != MAKE({1, 4}));

  // The left list is read in its storage, past its length.
  T_INT_LIST cleared = MAKE({7, 8});
  cleared.CLEAR();
  EXPECT_TRUE(COMPARE_LIST(cleared, MAKE({7, 8})));
}

TEST(IntListCopy, DeepAndExactAndEmptyDestroys) {
  T_INT_LIST source = MAKE({1, 2, 3});
  T_INT_LIST target = MAKE({9, 9, 9, 9, 9, 9, 9, 9, 9});
  ASSIGN_LIST(target, source);
  EXPECT_EQ(target.CAPACITY(), 3);
  EXPECT_THAT(ENTRIES(target), ElementsAre(1, 2, 3));
  source.SET(1, 100);
  EXPECT_EQ(target.AT(1), 1);

  T_INT_LIST empty;
  empty.CREATE();
  target = empty;
  EXPECT_FALSE(target.CREATED());
  EXPECT_EQ(target.LENGTH(), 0);
}

TEST(IntListAccess, PositionsOutsideTheStorageAreHarmless) {
  T_INT_LIST list;
  list.CREATE(4);
  list.APPEND_DATA(10);
  list.SET(3, 30);  // inside the storage, beyond the length
  EXPECT_EQ(list.AT(3), 30);
  EXPECT_EQ(list.LENGTH(), 1);
  list.SET(5, 50);
  list.SET(0, 50);
  EXPECT_EQ(list.AT(5), 0);
  EXPECT_EQ(list.AT(0), 0);

  list.REF(1) += 5;
  EXPECT_EQ(list.AT(1), 15);
  list.REF(99) = 7;  // goes nowhere
  EXPECT_EQ(list.REF(99), 0);

  list.SWAP(1, 3);
  EXPECT_EQ(list.AT(1), 30);
  list.SWAP(1, 9);
  EXPECT_EQ(list.AT(1), 30);

  EXPECT_EQ(T_INT_LIST().AT(1), 0);
}

}  // namespace
}  // namespace tmrdar::MOD_INT_LIST
