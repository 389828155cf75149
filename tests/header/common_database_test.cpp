#include "header/common_database.h"

#include "header/block_location.h"

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

// The formats without a directory find a model block from the counts. Two
// elements, three nodes, two guide surfaces and a spectrum of 5 rows, worked
// by hand from Element Data (E): elements 6 records, materials 2, nodes 3,
// the seabed and the contact diameters 1 each, so the guide surfaces start
// at E + 13; they take 2 x 11 or 2 x 10 records, the stinger 1, and the
// spectrum 2, or 3 in the oldest format.
TEST(LayoutRule, FormatsWithoutADirectoryWalkTheBlocksFromElementData) {
  using header::FORMAT_VERSION;
  BLOCK_COUNTS counts;
  counts.NUM_ELEMENTS = 2;
  counts.NUM_NODES = 3;
  counts.NUM_GUIDE_SURFACES = 2;
  counts.NUM_TARGET_SPECTRUM_INTERVALS = 4;
  counts.BINARY_DATA_RECORDS = 5;
  struct ROW {
    const FORMAT_VERSION* FORMAT;
    std::string_view GUIDES;    // its title, in other letter case
    int32_t GUIDES_AT;
    std::string_view SPECTRUM;
    int32_t SPECTRUM_AT;
    int32_t END;  // behind the last block
  };
  const ROW rows[] = {
      {&header::V821, "BLOCK 34 - guide surfaces.", 30, "block 41 - target spectrum.  ", 51, 59},
      {&header::V815, "Block 32 - GUIDE SURFACES.", 28, "Block 39 - Target Spectrum.", 49, 51},
      {&header::V811, "block 31 - Guide Surfaces.", 27, "Block 38 - TARGET SPECTRUM.", 48, 51},
  };
  for (const ROW& row : rows) {
    int32_t address = 0;
    header::GET_TIDE3_HEADER_ADDRESS(*row.FORMAT, row.GUIDES, counts, address);
    EXPECT_EQ(address, row.GUIDES_AT) << row.FORMAT->NAME;
    header::GET_TIDE3_HEADER_ADDRESS(*row.FORMAT, row.SPECTRUM, counts, address);
    EXPECT_EQ(address, row.SPECTRUM_AT) << row.FORMAT->NAME;
    header::GET_TIDE3_HEADER_ADDRESS(*row.FORMAT, "Block 99 - Nothing.", counts, address);
    EXPECT_EQ(address, row.END) << row.FORMAT->NAME << ": an unknown title gives the end";
    // The newest numbering finds nothing in the oldest formats.
    header::GET_TIDE3_HEADER_ADDRESS(*row.FORMAT, "Block 41 - Target Spectrum.", counts, address);
    EXPECT_EQ(address, row.FORMAT == &header::V821 ? row.SPECTRUM_AT : row.END) << row.FORMAT->NAME;
  }

  // The computed table: blocks 2 to 15 at records 1 to 14 and Element Data at
  // 17, then 22 records of guide surfaces, and behind the spectrum and the
  // four empty blocks, 3 records an element and one packed record ahead of
  // the last block, which the binary data follow.
  for (const FORMAT_VERSION* format : {&header::V841, &header::V831}) {
    T_BLOCK_ADDRESSES table;
    int64_t total = 0;
    header::V841_SET_BLOCK_ADDRESSES(*format, counts, table, &total);
    const std::pair<int32_t, int32_t> entries[] = {{1, 0},   {2, 1},   {15, 14}, {16, 17}, {17, 23}, {19, 25},
                                                   {34, 30}, {35, 52}, {41, 53}, {42, 55}, {46, 55}, {47, 61},
                                                   {48, 62}};
    for (const auto& [k, entry] : entries) EXPECT_EQ(table.ENTRY(k), entry) << format->NAME << " block " << k;
    EXPECT_EQ(table.NUM_BLOCKS, 48);
    EXPECT_EQ(total, 67);
  }
}

}  // namespace
}  // namespace tmrdar::MOD_COMMON_DATABASE
