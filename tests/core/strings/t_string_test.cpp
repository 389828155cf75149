#include "core/strings/t_string.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/strings/data_block.h"

namespace tmrdar::MOD_STRING {
namespace {

using ::testing::ElementsAre;

TEST(StringGrowth, CapacityFollowsTheDoublingRule) {
  T_STRING s;
  s.CREATE_STRING();
  s.APPEND_CHARS("12345678");
  EXPECT_EQ(s.CAPACITY_STRING(), 8);  // exactly full: no growth yet
  s.APPEND_CHARS("9");
  EXPECT_EQ(s.CAPACITY_STRING(), 16);
  s.APPEND_CHARS(std::string(20, 'x'));  // the need, 29, beats twice 16
  s.CLEAR_STRING();
  EXPECT_EQ(s.CAPACITY_STRING(), 32);

  T_STRING fresh;
  fresh.APPEND_CHARS(std::string(20, 'y'));  // created with 8, grown to the need
  EXPECT_EQ(fresh.CAPACITY_STRING(), 20);
}

TEST(StringGrowth, ResizeAndFromCharsSetTheCapacity) {
  T_STRING s;
  s.APPEND_CHARS("abc");
  s.RESIZE(5);  // fits in 8, but a longer length always grows
  EXPECT_EQ(s.CAPACITY_STRING(), 16);
  EXPECT_EQ(s.LENGTH_STRING(), 5);
  s.RESIZE(2);
  EXPECT_EQ(s.CAPACITY_STRING(), 2);
  EXPECT_EQ(s.VIEW(), "ab");
  s.RESIZE(0);
  EXPECT_FALSE(s.CREATED_STRING());

  s.FROM_CHARS("abcdef", 4);
  EXPECT_EQ(s.CAPACITY_STRING(), 4);
  EXPECT_EQ(s.VIEW(), "abcd");
  s.FROM_CHARS("ab", 4);  // fewer characters than the count: blanks
  EXPECT_EQ(s.VIEW(), "ab  ");
  s.FROM_CHARS("abc", 0);
  EXPECT_FALSE(s.CREATED_STRING());
}

TEST(StringInsert, LengthGrowsByTheCountNotTheWidth) {
  T_STRING s("abc");
  s.INSERT_STRING("XY", 2);
  EXPECT_EQ(s.VIEW(), "aXYb");
  EXPECT_EQ(s.AT_STRING1(5), 'c');  // out of the length, still in the storage
  EXPECT_EQ(s.CAPACITY_STRING(), 6);  // room for 3 + 2 from exactly 3

  T_STRING t("abc");
  t.INSERT_STRING("-", 4, 3);  // single characters, just behind the end
  t.INSERT_STRING("ab", 2, 2);
  t.INSERT_STRING("Q", 10);  // beyond the end, empty, or no count: ignored
  t.INSERT_STRING("", 1);
  t.INSERT_STRING("Q", 1, 0);
  EXPECT_EQ(t.VIEW(), "aababbc-");
}

TEST(StringEditing, RemoveDuplicatesLowerCaseAndSelfReference) {
  T_STRING s("abcdef");
  s.REMOVE_STRING(2, 2);
  s.REMOVE_STRING(3, 99);  // runs past the end: the rest goes
  s.REMOVE_STRING(0);
  EXPECT_EQ(s.VIEW(), "ad");
  s.APPEND_CHARS(s.VIEW());
  s.APPEND_STRING(s);  // grows while reading itself
  s.INSERT_STRING(s.VIEW().substr(0, 2), 1);
  EXPECT_EQ(s.VIEW(), "adadadada");

  T_STRING d("abracadabra");
  d.REMOVE_DUPLICATES();
  EXPECT_EQ(d.VIEW(), "abrcd");
  T_STRING t("@AZ[az\xC4");
  t.TO_LOWER();
  EXPECT_EQ(t.VIEW(), "@az[az\xC4");

  T_STRING n;
  n.APPEND_INT(-2147483647 - 1);
  n.APPEND_INT(42);
  EXPECT_EQ(n.VIEW(), "-214748364842");
}

TEST(StringSearch, PositionsFromOneAndMinusOneWhenMissing) {
  const T_STRING s("a.b.c");
  EXPECT_EQ(s.INDEX_OF('.', 3), 4);
  EXPECT_EQ(s.INDEX_OF('x'), -1);
  EXPECT_EQ(s.INDEX_OF('a', -4), 1);
  std::vector<int32_t> dots;
  s.INDICES_OF('.').TO_LIST_DATA_ARRAY(dots);
  EXPECT_THAT(dots, ElementsAre(2, 4));
  EXPECT_EQ(s.INDICES_OF('z').LENGTH(), 0);
  EXPECT_TRUE(T_STRING().IS_BLANK());
  EXPECT_TRUE(T_STRING(" \t ").IS_BLANK());
  EXPECT_FALSE(T_STRING(" \n").IS_BLANK());
}

TEST(StringAccess, PositionsOutsideTheStorageAreHarmless) {
  T_STRING s;
  s.CREATE_STRING(4);
  s.APPEND_CHARS("ab");
  s.SET_STRING(4, 'z');  // beyond the length, inside the storage
  s.SET_STRING(5, 'q');
  s.SET_STRING(0, 'q');
  EXPECT_EQ(s.LENGTH_STRING(), 2);
  EXPECT_EQ(s.AT_STRING1(5), ' ');
  EXPECT_EQ(s.AT_STRING2(-3, 100), "ab z");
  EXPECT_EQ(s.AT_STRING2(3, 2), "");
  s.GROW_STRING(5);  // the whole storage moves, not only the used part
  EXPECT_EQ(s.CAPACITY_STRING(), 8);
  EXPECT_EQ(s.AT_STRING2(1, 8), "ab z    ");
}

TEST(StringCompare, TrailingBlanksCountAndCaseCanBeIgnored) {
  const T_STRING ab("ab");
  EXPECT_TRUE("ab" == ab);
  EXPECT_FALSE(STRING_EQ_CHARS(ab, "ab "));
  EXPECT_TRUE(CHARS_NEQ_STRING("ab ", ab));
  EXPECT_TRUE(STRING_EQ_STRING(T_STRING(), T_STRING("")));
  EXPECT_TRUE(STRING_CIC_STRING(T_STRING("AbC"), T_STRING("aBc")));
  EXPECT_FALSE(STRING_CIC_CHARS(T_STRING("AbC"), "abd"));
}

TEST(StringCopy, UsedPartOnlyAndEmptyDestroys) {
  T_STRING source;
  source.CREATE_STRING(50);
  source.APPEND_CHARS("xyz");
  T_STRING copy(source);
  source.SET_STRING(1, 'Q');
  EXPECT_EQ(copy.CAPACITY_STRING(), 3);
  EXPECT_EQ(copy.VIEW(), "xyz");
  source.CLEAR_STRING();
  copy = source;
  EXPECT_FALSE(copy.CREATED_STRING());
  EXPECT_EQ((T_STRING("ab") + T_STRING("cd") + "e").VIEW(), "abcde");

  char field[5];
  ASSIGN_CHARS_STRING(field, T_STRING("abc"));
  EXPECT_EQ(std::string(field, 5), "abc  ");
  T_STRING("abcdefg").TO_CHARS(field);
  EXPECT_EQ(std::string(field, 5), "abcde");
}

TEST(DataBlock, CarriesTypeAndKeyWithItsBytes) {
  MOD_DATA_BLOCK::T_DATA_BLOCK block;
  block.SET_TYPE(3);
  block.SET_KEY(-17);
  block = "seabed";
  block.APPEND_CHARS(std::string_view("\0\1", 2));
  const MOD_DATA_BLOCK::T_DATA_BLOCK copy(block);
  EXPECT_EQ(copy.GET_TYPE(), 3);
  EXPECT_EQ(copy.GET_KEY(), -17);
  EXPECT_EQ(copy.VIEW(), std::string_view("seabed\0\1", 8));
}

}  // namespace
}  // namespace tmrdar::MOD_STRING
