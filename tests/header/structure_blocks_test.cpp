// The structural model blocks 16 to 21 read back, and the element end nodes
// translated from file numbers to node rows.
#include <algorithm>
#include <bit>
#include <random>
#include <string>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::RECORD;

class StructureBlocks : public HEADER_TEST {};

// The three records of element i, ends given by file number.
void ADD_ELEMENT(builder::JOB& job, int32_t i, int32_t first, int32_t second, float length) {
  const float f = static_cast<float>(i);
  job.BLOCKS[16].push_back(RECORD::INTS({100 + i, 200 + i, first, second}).REAL(5, length).REAL(6, f).INT(8, 8));
  job.BLOCKS[16].push_back(RECORD::REALS({f + 1, f + 2, f + 3, f + 4}).INT(5, 5).REAL(6, f + 6).REAL(8, f + 8));
  job.BLOCKS[16].push_back(RECORD::REALS({f + 9, -1.0F}));
}

TEST_F(StructureBlocks, EveryFieldLandsInItsTableAndOnlyANegativeLengthIsReplaced) {
  builder::JOB job;
  job.RUN.NUM_ELEMENTS = 3;
  job.RUN.NUM_NODES = job.RUN.NUM_NONLINEAR_E_TABLES = job.RUN.NUM_AUX_ELEMENTS = job.RUN.NUM_AUX_NODES = 2;
  ADD_ELEMENT(job, 1, 31, 30, -0.5F);
  ADD_ELEMENT(job, 2, 30, 31, 0.0F);
  ADD_ELEMENT(job, 3, 30, 30, 2.0F);
  job.BLOCKS[17] = {RECORD::INTS({11, -21}).REAL(3, 0.75F).INT(4, 41)};
  job.BLOCKS[18] = {RECORD(), RECORD::INTS({3, 7}).REAL(3, 2.5F).REAL(4, -1.0F)};
  job.BLOCKS[19] = {RECORD::INTS({30}).REAL(2, 1.0F).REAL(3, 2.0F).REAL(4, 3.0F).INT(5, 71).INT(6, 1),
                    RECORD::INTS({31})};
  job.BLOCKS[20] = {RECORD(), RECORD(), RECORD::INTS({9, -52, 1, 2}).REAL(5, 5.5F).REAL(7, 7.5F).INT(8, 82),
                    RECORD::INTS({92, 99})};
  job.BLOCKS[21] = {RECORD(), RECORD::INTS({62}).REAL(2, 1.0F).REAL(3, 2.0F).REAL(4, 3.0F)};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const HEADER_TABLES& t = db.TABLES;
  EXPECT_EQ(t.ELEMENT_NUMBERS.DATA(), (std::vector<int32_t>{101, 102, 103, 201, 202, 203}));
  EXPECT_EQ(t.ELEMENT_NODES.DATA(), (std::vector<int32_t>{2, 1, 1, 1, 2, 1})) << "file numbers 30, 31 are rows 1, 2";
  std::vector<uint32_t> bits;
  for (const float length : t.ELEMENT_LENGTH.DATA()) bits.push_back(std::bit_cast<uint32_t>(length));
  EXPECT_EQ(bits, (std::vector<uint32_t>{0x322BCC77U, 0U, std::bit_cast<uint32_t>(2.0F)})) << "-0.5, 0 and 2";
  const std::vector<float> a{t.ELEMENT_A6(3), t.ELEMENT_A7(3), t.ELEMENT_B1(3), t.ELEMENT_B2(3), t.ELEMENT_B3(3),
                             t.ELEMENT_B4(3), t.ELEMENT_B6(3), t.ELEMENT_B7(3), t.ELEMENT_B8(3), t.ELEMENT_C1(3)};
  EXPECT_EQ(a, (std::vector<float>{3, 0, 4, 5, 6, 7, 9, 0, 11, 12}));
  EXPECT_EQ((std::vector<int32_t>{t.ELEMENT_A8(3), t.ELEMENT_B5(3)}), (std::vector<int32_t>{8, 5}));
  EXPECT_EQ(t.ELEMENT_SECTION_TABLE.DATA(), (std::vector<float>{11, 0, 0, -21, 0, 0, 0.75F, 0, 0, 41, 0, 0}));
  EXPECT_EQ(t.NONLINEAR_E_TABLE.DATA(), (std::vector<float>{0, 3, 0, 7, 0, 2.5F, 0, -1}));
  EXPECT_EQ(t.NODE_NUMBERS.DATA(), (std::vector<int32_t>{30, 31, 71, 0}));
  EXPECT_EQ(t.NODE_COORDINATES.DATA(), (std::vector<float>{1, 2, 3, 0, 0, 0}));
  EXPECT_EQ(t.AUX_ELEMENT_NODES.DATA(), (std::vector<int32_t>{0, 0, 1, 2})) << "kept as given";
  const std::vector<float> r{t.AUX_ELEMENT_R5(2), t.AUX_ELEMENT_R6(2), t.AUX_ELEMENT_R7(2)};
  EXPECT_EQ(r, (std::vector<float>{5.5F, 0, 7.5F}));
  const std::vector<int32_t> w{t.AUX_ELEMENT_NUMBERS(2), t.AUX_ELEMENT_W8(2), t.AUX_ELEMENT_W9(2),
                               t.AUX_NODE_NUMBERS(2)};
  EXPECT_EQ(w, (std::vector<int32_t>{-52, 82, 92, 62})) << "W9: the first word of the second record";
  EXPECT_EQ(t.AUX_NODE_COORDINATES.DATA(), (std::vector<float>{0, 1, 0, 2, 0, 3}));
}

// A search of the node file numbers from the top: the first row holding the
// number, or the number itself. Numbers from a narrow range repeat and miss;
// a third column, never written, holds 0 and is translated too.
TEST_F(StructureBlocks, EndNodesTranslateAsASearchFromTheTopWould) {
  std::mt19937 random(861);
  std::uniform_int_distribution<int32_t> number(-3, 79);
  for (const int32_t per_element : {3, 1}) {
    builder::JOB job;
    job.RUN.NUM_ELEMENTS = 150;
    job.RUN.NUM_NODES = 100;
    job.RUN.NODES_PER_ELEMENT = per_element;
    std::vector<int32_t> file_numbers;
    std::vector<int32_t> ends;  // column by column, as the table holds them
    for (int32_t j = 0; j < 100; ++j) {
      job.BLOCKS[19].push_back(RECORD::INTS({file_numbers.emplace_back(j % 30 == 9 ? 0 : number(random) % 60)}));
    }
    for (int32_t i = 0; i < 450; ++i) ends.push_back(i < 300 ? number(random) : 0);
    for (int32_t i = 1; i <= 150; ++i) ADD_ELEMENT(job, i, ends[i - 1], ends[i + 149], 1.0F);
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    const std::vector<int32_t>& got = db.TABLES.ELEMENT_NODES.DATA();
    ASSERT_EQ(got.size(), per_element == 3 ? 450U : 300U);
    for (std::size_t e = 0; e < got.size(); ++e) {
      const auto first = std::find(file_numbers.begin(), file_numbers.end(), ends[e]);
      const bool translated = e < 150U * static_cast<std::size_t>(per_element) && first != file_numbers.end();
      ASSERT_EQ(got[e], translated ? first - file_numbers.begin() + 1 : ends[e]) << "entry " << e;
    }
  }
}

TEST_F(StructureBlocks, ConditionNodesTakePositiveSlotsWhileTheListHasRoom) {
  builder::JOB job;
  job.RUN.NUM_NODES = 6;
  for (const int32_t slot : {0, 7, -4, 5, 9, 3}) job.BLOCKS[19].push_back(RECORD::INTS({1}).INT(6, slot));
  for (const int32_t room : {2, 0}) {
    job.RUN.NUM_BOUNDARY_CONDITIONS = room;
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    EXPECT_EQ(db.TABLES.CONDITION_NODES.DATA(), (room == 2 ? std::vector<int32_t>{7, 5} : std::vector<int32_t>()));
  }
}

// A block that cannot be read ends the header with its message and keeps what
// came before; a block with no rows is not read at all.
TEST_F(StructureBlocks, AnUnreadableBlockReportsItsMessage) {
  builder::JOB job;
  job.RUN.NUM_ELEMENTS = job.RUN.NUM_NODES = job.RUN.NUM_NONLINEAR_E_TABLES = job.RUN.NUM_AUX_NODES = 1;
  ADD_ELEMENT(job, 1, 12, 12, 1.0F);
  job.BLOCKS[19] = {RECORD::INTS({12})};
  EXPECT_FALSE(OPEN(job, 20)) << "no auxiliary elements: " << ERROR_HANDLING::LAST_MESSAGE();
  job.RUN.NUM_AUX_ELEMENTS = 1;
  for (const auto& [block, message] : std::vector<std::pair<int32_t, std::string>>{
           {16, "element data from database header."}, {17, "nonlinear material data from the database header."},
           {18, "nonlinear material data from the database header."}, {19, "node data from database header."},
           {20, "auxiliary element data from database header."}, {21, "auxiliary node data from database header."}}) {
    EXPECT_TRUE(OPEN(job, block));
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read " + message);
    if (block > 16) {
      EXPECT_EQ(db.TABLES.ELEMENT_NODES(1, 1), block > 19 ? 1 : 12) << "untranslated until the nodes";
    }
  }
}

}  // namespace
}  // namespace tmrdar::header
