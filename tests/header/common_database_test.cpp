#include "header/common_database.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace tmrdar::MOD_COMMON_DATABASE {
namespace {

TEST(PackedRecords, AFullLastRecordStillTakesOneMore) {
  for (const auto& [count, records] : {std::pair{0, 1}, {7, 1}, {8, 2}, {9, 2}}) EXPECT_EQ(P8(count), records) << count;
  EXPECT_EQ(P4(3), 1);
  EXPECT_EQ(P4(4), 2);
  // The single-precision form follows the rounded count above 2^24.
  EXPECT_EQ(P8(16'777'231), 2'097'154);
  EXPECT_EQ(P8_SINGLE(16'777'231), 2'097'155);
}

TEST(BlockDirectoryObject, InitCleanAndCopyStopAtTheCount) {
  T_BLOCK_ADDRESSES blocks;
  int32_t status = -1;
  INIT_BLOCK_ADDRESSES(blocks, 10, status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(blocks.NUM_BLOCKS, 10);
  EXPECT_EQ(blocks.ADDRESSES, std::vector<int32_t>(10, 0));

  const std::array<int32_t, 8> first{1, 2, 3, 4, 5, 6, 7, 8};
  const std::array<int32_t, 8> second{9, 10, 11, 12, 13, 14, 15, 16};
  int32_t next = 1;
  GET_BLOCK_ADDRESSES(blocks, next, first);
  EXPECT_EQ(next, 9);
  GET_BLOCK_ADDRESSES(blocks, next, second);
  EXPECT_EQ(next, 11);
  EXPECT_EQ(blocks.ADDRESSES.back(), 10);
  GET_BLOCK_ADDRESSES(blocks, next, second);  // full: nothing more
  EXPECT_EQ(next, 11);
  EXPECT_EQ(blocks.ENTRY(11), -1);
  EXPECT_EQ(blocks.ENTRY(0), -1);

  INIT_BLOCK_ADDRESSES(blocks, -3, status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(blocks.NUM_BLOCKS, -3);
  EXPECT_TRUE(blocks.ADDRESSES.empty());
  next = 1;
  GET_BLOCK_ADDRESSES(blocks, next, first);
  EXPECT_EQ(next, 1);

  CLEAN_BLOCK_ADDRESSES(blocks);
  EXPECT_EQ(blocks.NUM_BLOCKS, 0);
  EXPECT_TRUE(blocks.ADDRESSES.empty());
}

TEST(LayoutRule, AnEmptyModelPlacesTheBlocksBehindTheDirectory) {
  T_BLOCK_ADDRESSES blocks;
  int32_t status = 0;
  INIT_BLOCK_ADDRESSES(blocks, NUM_HEADER_BLOCKS, status);
  int64_t total = 0;
  SET_BLOCK_ADDRESSES(blocks, BLOCK_COUNTS{}, total);
  // 52 entries fill records 3 to 9; entry 1 names the last of them, and the
  // title takes 3 records ahead of block 16. With every count 0: blocks 16 to
  // 21 are empty, the seabed takes P8(0) = 1, blocks 23 and 24 nothing, the
  // contact diameters 1; point masses, boundary conditions and installation
  // criteria nothing, the stinger always one; no spectrum nothing; element
  // values, the packed block, block 48 and the dampers one each.
  const std::pair<int32_t, int32_t> entries[] = {{1, 9},   {2, 10},  {15, 23}, {16, 26}, {22, 26}, {23, 27},
                                                 {25, 27}, {26, 28}, {29, 28}, {30, 28}, {31, 28}, {40, 28},
                                                 {41, 29}, {42, 29}, {47, 30}, {48, 31}, {49, 32}, {51, 32},
                                                 {52, 33}};
  for (const auto& [k, entry] : entries) EXPECT_EQ(blocks.ENTRY(k), entry) << "block " << k;
  EXPECT_EQ(total, 33);
}

TEST(LayoutRule, CountsSizeEachBlockByItsOwnRule) {
  BLOCK_COUNTS counts;
  counts.NUM_ELEMENTS = 8;
  counts.NUM_NODES = 9;
  counts.NUM_ELEMENT_SETS = 2;
  counts.NUM_POINT_MASSES = 8;
  counts.NUM_INSTALLATION_CRITERIA = 1;
  counts.NUM_TARGET_SPECTRUM_INTERVALS = 3;
  counts.NUM_DAMPER_ELEMENTS = 16;
  counts.BINARY_DATA_RECORDS = 5;
  T_BLOCK_ADDRESSES blocks;
  int32_t status = 0;
  INIT_BLOCK_ADDRESSES(blocks, 56, status);  // B = 7
  int64_t total = 0;
  SET_BLOCK_ADDRESSES(blocks, counts, total);
  EXPECT_EQ(blocks.ENTRY(1), 10);
  EXPECT_EQ(blocks.ENTRY(16), 27);
  EXPECT_EQ(blocks.ENTRY(17), 27 + 24);                     // 3 records an element
  EXPECT_EQ(blocks.ENTRY(26) - blocks.ENTRY(25), 2);        // P8(8)
  EXPECT_EQ(blocks.ENTRY(27) - blocks.ENTRY(26), 2 * 17);   // (8 + 9) records a set
  EXPECT_EQ(blocks.ENTRY(30) - blocks.ENTRY(29), 2);        // P8(8) point masses
  EXPECT_EQ(blocks.ENTRY(38) - blocks.ENTRY(37), 10);       // 9 a criterion, plus 1
  EXPECT_EQ(blocks.ENTRY(42) - blocks.ENTRY(41), 2);        // P4(3 + 1)
  EXPECT_EQ(blocks.ENTRY(47) - blocks.ENTRY(46), 1);        // P8(0) element values
  EXPECT_EQ(blocks.ENTRY(52) - blocks.ENTRY(51), 3);        // 16 dampers
  EXPECT_EQ(total, blocks.ENTRY(52) + 5);
  // Entries past the last block name the end of the header.
  EXPECT_EQ(blocks.ENTRY(53), total);
  EXPECT_EQ(blocks.ENTRY(56), total);
}

}  // namespace
}  // namespace tmrdar::MOD_COMMON_DATABASE
