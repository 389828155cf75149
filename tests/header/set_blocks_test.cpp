// Blocks 26 to 31: sets, labels, point masses, point loads and boundary
// conditions, read back field by field.
#include <string>
#include <tuple>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::RECORD;
using Records = std::vector<RECORD>;
using Lists = std::vector<std::vector<int32_t>>;
const std::string PREFIX = "Error: Database Postprocessing: ";

// Appends a blank-padded name field, 32 characters a record, and its tail.
void ADD(Records& records, const std::string& name, const Records& tail) {
  const std::string field = name + std::string(256 - name.size(), ' ');
  for (std::size_t r = 0; r < 8; ++r) records.push_back(RECORD::TEXT(field.substr(32 * r, 32)));
  records.insert(records.end(), tail.begin(), tail.end());
}

// Sets: a name, a count, then one member a record (word 2 is no member).
Records SETS(const std::vector<std::tuple<std::string, int32_t, std::vector<int32_t>>>& sets) {
  Records records;
  for (const auto& [name, count, members] : sets) {
    Records tail{RECORD::INTS({count})};
    for (const int32_t member : members) tail.push_back(RECORD::INTS({member, -99}));
    ADD(records, name, tail);
  }
  return records;
}

class SetBlocks : public HEADER_TEST {
 protected:
  bool OPEN(int32_t dead = 0) { return HEADER_TEST::OPEN(job, dead); }

  builder::JOB job;
  HEADER_TABLES& t = db.TABLES;
};

TEST_F(SetBlocks, SetsLieBackToBackByTheirTrueCounts) {
  job.RUN.NUM_ELEMENTS = 4;
  job.RUN.NUM_ELEMENT_SETS = 3;
  job.RUN.NUM_NODES = 2;
  job.RUN.NUM_NODE_SETS = 2;
  job.BLOCKS[26] = SETS({{"risers", 2, {7, 9}}, {"empty", 0, {}}, {std::string(40, 't'), 3, {1, 2, 3}}});
  job.BLOCKS[27] = SETS({{"odd", -4, {}}, {"ends", 1, {8}}});  // a negative count reads no member
  EXPECT_FALSE(OPEN()) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(t.ELEMENT_SET_NAMES(3).TRIMMED(), std::string(40, 't'));
  EXPECT_EQ(t.ELEMENT_SET_COUNTS.DATA(), (std::vector<int32_t>{2, 0, 3}));
  EXPECT_EQ(t.ELEMENT_SET_MEMBERS, (Lists{{7, 9}, {}, {1, 2, 3}}));
  EXPECT_EQ(t.NODE_SET_NAMES(2).TRIMMED(), "ends");
  EXPECT_EQ(t.NODE_SET_COUNTS.DATA(), (std::vector<int32_t>{-4, 1}));
  EXPECT_EQ(t.NODE_SET_MEMBERS, (Lists{{}, {8}}));

  job.BLOCKS[27] = SETS({{"kept", 1, {3}}, {"huge", 1'000'000, {}}});
  EXPECT_TRUE(OPEN());
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), PREFIX + "Unable to allocate memory for database header data.");
  EXPECT_EQ(t.NODE_SET_MEMBERS, (Lists{{3}, {}})) << "refused before its list was made";
  EXPECT_EQ(t.NODE_SET_COUNTS(2), 1'000'000);
}

TEST_F(SetBlocks, LabelsMassesLoadsAndConditions) {
  job.RUN.NUM_LABELS = 2;
  job.RUN.NUM_POINT_MASSES = 9;
  job.RUN.NUM_POINT_LOADS = 2;
  job.RUN.NUM_BOUNDARY_CONDITIONS = 8;  // a full record, and one more reserved
  std::string full;
  for (char c = 'a'; c < 'i'; ++c) full += std::string(32, c);
  ADD(job.BLOCKS[28], full, {RECORD::INTS({12, 2, 77})});
  ADD(job.BLOCKS[28], "top", {RECORD::INTS({-3, 1})});
  job.BLOCKS[29] = {RECORD::INTS({1, 2, 3, 4, 5, 6, 7, 8}), RECORD::INTS({9, 99})};
  job.BLOCKS[30] = {RECORD::INTS({4, -5}).REAL(3, 2.5F).REAL(4, 9.0F), RECORD::INTS({6, 7}).REAL(3, -1.25F)};
  job.BLOCKS[31] = {RECORD::INTS({11, 12, 13, 14, 15, 16, 17, 18}), RECORD::INTS({99})};
  EXPECT_FALSE(OPEN()) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(t.LABEL_NAMES(1).VIEW(), full.substr(0, 255) + " ") << "the 256th character stays blank";
  EXPECT_EQ(t.LABEL_NAMES(2).TRIMMED(), "top");
  EXPECT_EQ(t.LABEL_TARGETS.DATA(), (std::vector<int32_t>{12, -3, 2, 1}));
  EXPECT_EQ(t.POINT_MASS_NODES.DATA(), (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(t.POINT_LOADS.DATA(), (std::vector<float>{4.0F, -5.0F, 2.5F, 6.0F, 7.0F, -1.25F}));
  EXPECT_EQ(t.BOUNDARY_CONDITION_NODES.DATA(), (std::vector<int32_t>{11, 12, 13, 14, 15, 16, 17, 18}));
}

TEST_F(SetBlocks, EachBlockReportsItsFailureAndCountsOfZeroReadNothing) {
  for (int32_t k = 26; k <= 31; ++k) EXPECT_FALSE(OPEN(k)) << "block " << k << " is not read";
  job.RUN.NUM_ELEMENTS = job.RUN.NUM_NODES = 1;
  job.RUN.NUM_ELEMENT_SETS = job.RUN.NUM_NODE_SETS = job.RUN.NUM_LABELS = 1;
  job.RUN.NUM_POINT_MASSES = job.RUN.NUM_POINT_LOADS = job.RUN.NUM_BOUNDARY_CONDITIONS = 1;
  job.BLOCKS[29] = {RECORD::INTS({24})};
  const std::vector<std::string> messages{
      "element set data", "node set data", "node/element labels", "point mass data", "point load data",
      "boundary condition data"};
  for (int32_t k = 26; k <= 31; ++k) {
    EXPECT_TRUE(OPEN(k));
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), PREFIX + "Unable to read " + messages[k - 26] + " from database header.");
    EXPECT_EQ(t.POINT_MASS_NODES(1), k > 29 ? 24 : 0) << "blocks ahead are kept, those behind not read";
  }
}

}  // namespace
}  // namespace tmrdar::header
