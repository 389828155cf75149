// The structural model blocks 16 to 21 read back field for field, and the
// element end nodes translated from file numbers to node rows.
#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <string>
#include <vector>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

using builder::FILE_KIND;
using builder::JOB;
using builder::RECORD;
using testing::SCRATCH_DIR;

class StructureBlocks : public ::testing::Test {
 protected:
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  // Writes the job and opens it; true when the open failed.
  bool OPEN(const JOB& job) {
    job.WRITE(dir.FILE("job"));
    return REOPEN();
  }
  // The same with directory entry `block` of the motion file set to 0, an
  // address before the start of the file.
  bool OPEN_WITHOUT(const JOB& job, int32_t block) {
    builder::FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
    image.PUT_INT(2 + (block - 1) / 8, (block - 1) % 8 + 1, 0);
    EXPECT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    return REOPEN();
  }
  bool REOPEN() {
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    return failed;
  }

  SCRATCH_DIR dir;
  TIDE3_DATABASE_FILES& db = V861_TIDE3_DATABASE_FILES();
};

// Element i (from 1) with both end nodes given by file number, and every
// other word distinct.
std::vector<RECORD> ELEMENT(int32_t i, int32_t first, int32_t second, float length) {
  const float f = static_cast<float>(i);
  return {RECORD::INTS({100 + i, 200 + i, first, second}).REAL(5, length).REAL(6, f + 0.25F).REAL(7, f + 0.5F)
              .INT(8, 300 + i),
          RECORD::REALS({f + 1.0F, f + 2.0F, f + 3.0F, f + 4.0F}).INT(5, 400 + i).REAL(6, f + 6.0F)
              .REAL(7, f + 7.0F).REAL(8, f + 8.0F),
          RECORD::REALS({f + 9.0F, -1.0F})};
}

TEST_F(StructureBlocks, EveryFieldLandsInItsTable) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 2;
  job.RUN.NUM_NODES = 3;
  job.RUN.NUM_NONLINEAR_E_TABLES = 2;
  job.RUN.NUM_AUX_ELEMENTS = 2;
  job.RUN.NUM_AUX_NODES = 2;
  for (int32_t i = 1; i <= 2; ++i) {
    for (const RECORD& r : ELEMENT(i, 30 + i, 29 + i, 1.5F * static_cast<float>(i))) job.BLOCKS[16].push_back(r);
    job.BLOCKS[17].push_back(RECORD::INTS({10 + i, -20 - i}).REAL(3, 0.75F * static_cast<float>(i)).INT(4, 40 + i));
    job.BLOCKS[18].push_back(RECORD::INTS({i, 7}).REAL(3, 2.5F + static_cast<float>(i)).REAL(4, -1.0F));
    job.BLOCKS[20].push_back(RECORD::INTS({9, -50 - i, 3 - i, i}).REAL(5, 5.5F).REAL(6, 6.5F)
                                 .REAL(7, static_cast<float>(i)).INT(8, 80 + i));
    job.BLOCKS[20].push_back(RECORD::INTS({90 + i, 99}));
    job.BLOCKS[21].push_back(RECORD::INTS({60 + i}).REAL(2, 1.0F).REAL(3, 2.0F).REAL(4, static_cast<float>(i)));
  }
  for (int32_t j = 1; j <= 3; ++j) {
    const float f = static_cast<float>(j);
    job.BLOCKS[19].push_back(RECORD::INTS({29 + j}).REAL(2, f).REAL(3, f + 0.5F).REAL(4, -f).INT(5, 70 + j));
  }
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const HEADER_TABLES& t = db.TABLES;

  for (int64_t i = 1; i <= 2; ++i) {
    const auto n = static_cast<int32_t>(i);
    const float f = static_cast<float>(i);
    EXPECT_EQ(t.ELEMENT_NUMBERS(i, 1), 100 + n);
    EXPECT_EQ(t.ELEMENT_NUMBERS(i, 2), 200 + n);
    EXPECT_EQ(t.ELEMENT_NODES(i, 1), n + 1) << "file number 30 + i is node row i + 1";
    EXPECT_EQ(t.ELEMENT_NODES(i, 2), n);
    EXPECT_EQ(t.ELEMENT_LENGTH(i), 1.5F * f);
    EXPECT_EQ(t.ELEMENT_A6(i), f + 0.25F);
    EXPECT_EQ(t.ELEMENT_A7(i), f + 0.5F);
    EXPECT_EQ(t.ELEMENT_A8(i), 300 + n);
    const std::vector<float> b{t.ELEMENT_B1(i), t.ELEMENT_B2(i), t.ELEMENT_B3(i), t.ELEMENT_B4(i),
                               t.ELEMENT_B6(i), t.ELEMENT_B7(i), t.ELEMENT_B8(i), t.ELEMENT_C1(i)};
    EXPECT_EQ(b, (std::vector<float>{f + 1, f + 2, f + 3, f + 4, f + 6, f + 7, f + 8, f + 9}));
    EXPECT_EQ(t.ELEMENT_B5(i), 400 + n);
    const std::vector<float> section{t.ELEMENT_SECTION_TABLE(i, 1), t.ELEMENT_SECTION_TABLE(i, 2),
                                     t.ELEMENT_SECTION_TABLE(i, 3), t.ELEMENT_SECTION_TABLE(i, 4)};
    EXPECT_EQ(section, (std::vector<float>{10.0F + f, -20.0F - f, 0.75F * f, 40.0F + f}));
    EXPECT_EQ(t.NONLINEAR_E_TABLE(i, 1), f);
    EXPECT_EQ(t.NONLINEAR_E_TABLE(i, 2), 7.0F);
    EXPECT_EQ(t.NONLINEAR_E_TABLE(i, 3), 2.5F + f);
    EXPECT_EQ(t.NONLINEAR_E_TABLE(i, 4), -1.0F);
    EXPECT_EQ(t.AUX_ELEMENT_NUMBERS(i), -50 - n);
    EXPECT_EQ(t.AUX_ELEMENT_NODES(1, i), 3 - n) << "auxiliary node rows are kept as given";
    EXPECT_EQ(t.AUX_ELEMENT_NODES(2, i), n);
    EXPECT_EQ(t.AUX_ELEMENT_R5(i), 5.5F);
    EXPECT_EQ(t.AUX_ELEMENT_R6(i), 6.5F);
    EXPECT_EQ(t.AUX_ELEMENT_R7(i), f);
    EXPECT_EQ(t.AUX_ELEMENT_W8(i), 80 + n);
    EXPECT_EQ(t.AUX_ELEMENT_W9(i), 90 + n) << "only the first word of the second record";
    EXPECT_EQ(t.AUX_NODE_NUMBERS(i), 60 + n);
    EXPECT_EQ(t.AUX_NODE_COORDINATES(i, 1), 1.0F);
    EXPECT_EQ(t.AUX_NODE_COORDINATES(i, 2), 2.0F);
    EXPECT_EQ(t.AUX_NODE_COORDINATES(i, 3), f);
  }
  for (int64_t j = 1; j <= 3; ++j) {
    const float f = static_cast<float>(j);
    EXPECT_EQ(t.NODE_NUMBERS(j, 1), 29 + j);
    EXPECT_EQ(t.NODE_NUMBERS(j, 2), 70 + j);
    EXPECT_EQ(t.NODE_COORDINATES(1, j), f);
    EXPECT_EQ(t.NODE_COORDINATES(2, j), f + 0.5F);
    EXPECT_EQ(t.NODE_COORDINATES(3, j), -f);
  }
}

TEST_F(StructureBlocks, OnlyANegativeLengthBecomesTheTinyLength) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 4;
  const std::vector<float> lengths{-0.5F, 0.0F, -0.0F, 2.0F};
  for (int32_t i = 1; i <= 4; ++i) {
    for (const RECORD& r : ELEMENT(i, 0, 0, lengths[static_cast<std::size_t>(i - 1)])) job.BLOCKS[16].push_back(r);
  }
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(std::bit_cast<uint32_t>(db.TABLES.ELEMENT_LENGTH(1)), 0x322BCC77U);
  EXPECT_EQ(std::bit_cast<uint32_t>(db.TABLES.ELEMENT_LENGTH(2)), 0U);
  EXPECT_EQ(std::bit_cast<uint32_t>(db.TABLES.ELEMENT_LENGTH(3)), 0x80000000U) << "minus zero is not below zero";
  EXPECT_EQ(db.TABLES.ELEMENT_LENGTH(4), 2.0F);
}

// The translation gives what a search of the node file numbers from the top
// gives: the first row holding the number, or the number itself when no row
// does. Numbers are drawn from a narrow range so that some repeat and some
// are missing; a third column, never written, holds 0 and is translated too.
TEST_F(StructureBlocks, EndNodesTranslateAsASearchFromTheTopWould) {
  std::mt19937 random(861);
  std::uniform_int_distribution<int32_t> node_number(0, 59);
  std::uniform_int_distribution<int32_t> end_number(-3, 79);
  for (const int32_t nodes_per_element : {3, 1}) {
    JOB job;
    job.RUN.NUM_ELEMENTS = 150;
    job.RUN.NUM_NODES = 100;
    job.RUN.NODES_PER_ELEMENT = nodes_per_element;
    std::vector<int32_t> file_numbers;
    for (int32_t j = 0; j < 100; ++j) {
      file_numbers.push_back(node_number(random));
      job.BLOCKS[19].push_back(RECORD::INTS({file_numbers.back()}));
    }
    std::vector<std::array<int32_t, 3>> ends;
    for (int32_t i = 1; i <= 150; ++i) {
      ends.push_back({end_number(random), end_number(random), 0});
      for (const RECORD& r : ELEMENT(i, ends.back()[0], ends.back()[1], 1.0F)) job.BLOCKS[16].push_back(r);
    }
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    ASSERT_EQ(db.TABLES.ELEMENT_NODES.EXTENT(2), std::max(nodes_per_element, 2));
    const auto search = [&](int32_t number) {
      for (std::size_t j = 0; j < file_numbers.size(); ++j) {
        if (file_numbers[j] == number) return static_cast<int32_t>(j + 1);
      }
      return number;
    };
    for (int64_t k = 1; k <= db.TABLES.ELEMENT_NODES.EXTENT(2); ++k) {
      for (int64_t i = 1; i <= 150; ++i) {
        const int32_t given = ends[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(k - 1)];
        const int32_t expected = k <= nodes_per_element ? search(given) : given;
        ASSERT_EQ(db.TABLES.ELEMENT_NODES(i, k), expected) << "element " << i << " column " << k;
      }
    }
  }
}

TEST_F(StructureBlocks, ConditionNodesTakeThePositiveSlotsWhileTheListHasRoom) {
  JOB job;
  job.RUN.NUM_NODES = 6;
  job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
  for (const int32_t slot : {0, 7, -4, 5, 9, 3}) job.BLOCKS[19].push_back(RECORD::INTS({1}).INT(6, slot));
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.TABLES.CONDITION_NODES.DATA(), (std::vector<int32_t>{7, 5}));

  job.RUN.NUM_BOUNDARY_CONDITIONS = 0;
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_TRUE(db.TABLES.CONDITION_NODES.DATA().empty());
}

TEST_F(StructureBlocks, ABlockWithNoRowsIsNotRead) {
  JOB job;
  job.RUN.NUM_ELEMENTS = 1;
  job.RUN.NUM_NODES = 1;
  EXPECT_FALSE(OPEN_WITHOUT(job, 20)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_TRUE(db.TABLES.AUX_ELEMENT_NUMBERS.ALLOCATED());
  EXPECT_EQ(db.TABLES.AUX_ELEMENT_NUMBERS.EXTENT(), 0);
  job.RUN.NUM_NONLINEAR_E_TABLES = 0;
  EXPECT_FALSE(OPEN_WITHOUT(job, 18)) << ERROR_HANDLING::LAST_MESSAGE();
}

// Each block that cannot be read ends the header with its own message; the
// blocks before it stay read, and a failed node block leaves the end nodes
// untranslated.
TEST_F(StructureBlocks, AnUnreadableBlockReportsItsMessageAndKeepsWhatWasRead) {
  const std::vector<std::pair<int32_t, std::string>> cases{
      {16, "Unable to read element data from database header."},
      {17, "Unable to read nonlinear material data from the database header."},
      {18, "Unable to read nonlinear material data from the database header."},
      {19, "Unable to read node data from database header."},
      {20, "Unable to read auxiliary element data from database header."},
      {21, "Unable to read auxiliary node data from database header."}};
  JOB job;
  job.RUN.NUM_ELEMENTS = 1;
  job.RUN.NUM_NODES = 2;
  job.RUN.NUM_NONLINEAR_E_TABLES = 1;
  job.RUN.NUM_AUX_ELEMENTS = 1;
  job.RUN.NUM_AUX_NODES = 1;
  job.BLOCKS[16] = ELEMENT(1, 12, 11, 1.0F);
  job.BLOCKS[19] = {RECORD::INTS({11}), RECORD::INTS({12})};
  for (const auto& [block, message] : cases) {
    EXPECT_TRUE(OPEN_WITHOUT(job, block)) << block;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: " + message);
    if (block > 16) {
      EXPECT_EQ(db.TABLES.ELEMENT_NUMBERS(1, 2), 201) << block;
      EXPECT_EQ(db.TABLES.ELEMENT_NODES(1, 1), block > 19 ? 2 : 12) << block;
    }
  }
}

}  // namespace
}  // namespace tmrdar::header
