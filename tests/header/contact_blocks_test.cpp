// Blocks 33 to 40: contact and installation data read back field by field.
#include <string>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::RECORD;
using Records = std::vector<RECORD>;

// Appends a blank-padded name field, 32 characters a record.
void ADD_NAME(Records& records, const std::string& name) {
  const std::string field = name + std::string(256 - name.size(), ' ');
  for (std::size_t r = 0; r < 8; ++r) records.push_back(RECORD::TEXT(field.substr(32 * r, 32)));
}
RECORD PIECE(const std::string& text) { return RECORD::TEXT(text + std::string(32 - text.size(), ' ')); }

class ContactBlocks : public HEADER_TEST {
 protected:
  bool OPEN(std::initializer_list<int32_t> dead = {}) { return HEADER_TEST::OPEN(job, dead); }

  builder::JOB job;
  HEADER_TABLES& t = db.TABLES;
};

TEST_F(ContactBlocks, PipesPanelsGuidesCriteriaAndBodies) {
  job.RUN.PIP_NODES_PER_PAIR = job.RUN.NUM_PIPE_IN_PIPE = job.RUN.NUM_GUIDE_SURFACES = 2;
  job.RUN.NUM_PANELS = job.RUN.NUM_ZERO_GAP_GUIDES = job.RUN.NUM_INSTALLATION_CRITERIA = 1;
  job.RUN.NUM_FLOATING_BODIES = 1;
  job.BLOCKS[33] = {RECORD::INTS({11, 12}), RECORD::INTS({21, 22}), RECORD::INTS({31, 32}), RECORD::INTS({41, 42})};
  // Two heads of 3 records, of which only the first counts, then the names.
  const RECORD junk = RECORD::INTS({77, 77, 77, 1, 1, 1, 77, 77});
  Records guides{RECORD::INTS({5}).REAL(2, 1.5F).REAL(3, 2.5F).INT(4, 1).INT(5, 0).INT(6, 1), junk, junk,
                 RECORD::INTS({6}).REAL(2, -1.0F).INT(4, 2).INT(5, 1).INT(6, -1), junk, junk};
  ADD_NAME(guides, "upper");
  ADD_NAME(guides, "lower");
  job.BLOCKS[34] = guides;
  job.BLOCKS[35] = {RECORD::INTS({1, 2, 3, 4, 5, 6, 7, 8})};
  job.BLOCKS[36] = {RECORD::INTS({9}).REAL(2, 1.5F).REAL(3, 2.5F)};
  Records criteria{RECORD::INTS({1, 2, 3, 4, 5, 6}), RECORD::INTS({8}).REAL(2, 0.25F).REAL(3, 0.5F)};
  ADD_NAME(criteria, "tension");
  job.BLOCKS[37] = criteria;
  job.BLOCKS[38] = {RECORD::INTS({3, 99}), RECORD::TEXT(std::string(31, 'b') + "z"), RECORD().REAL8(1, 1.0 / 3.0),
                    RECORD::INTS({-2})};
  EXPECT_FALSE(OPEN()) << ERROR_HANDLING::LAST_MESSAGE();

  EXPECT_EQ(t.PIP_DATA.DATA(), (std::vector<int32_t>{11, 21, 12, 22, 31, 41, 32, 42}));
  EXPECT_EQ(t.GUIDE_SURFACE_IDS.DATA(), (std::vector<int32_t>{5, 6}));
  EXPECT_EQ(t.GUIDE_SURFACE_VALUES.DATA(), (std::vector<float>{1.5F, -1.0F, 2.5F, 0.0F}));
  EXPECT_EQ(t.GUIDE_SURFACE_SWITCHES.DATA(), (std::vector<LOGICAL>{true, false, false, true})) << "true at 1 only";
  EXPECT_EQ(t.GUIDE_SURFACE_FLAGS.DATA(), (std::vector<LOGICAL>{true, false}));
  EXPECT_EQ(t.GUIDE_SURFACE_FLAG_COUNT, 1);
  EXPECT_EQ(t.GUIDE_SURFACE_NAMES(1).TRIMMED(), "upper");
  EXPECT_EQ(t.GUIDE_SURFACE_NAMES(2).TRIMMED(), "lower");
  EXPECT_EQ(t.PANEL_TABLE.DATA(), (std::vector<int32_t>{6, 1, 2, 3}));
  EXPECT_EQ(t.PANEL_VALUES(1), 4);
  EXPECT_EQ(t.ZERO_GAP_GUIDE_IDS(1), 9);
  EXPECT_EQ(t.ZERO_GAP_GUIDE_VALUES(1), 1.5F);
  EXPECT_EQ(t.INSTALLATION_SETTINGS, (std::array<int32_t, 5>{1, 2, 3, 4, 5}));
  EXPECT_EQ(t.INSTALLATION_CRITERIA_IDS(1), 8);
  EXPECT_EQ(t.INSTALLATION_CRITERIA_VALUE_1(1), 0.25F);
  EXPECT_EQ(t.INSTALLATION_CRITERIA_VALUE_2(1), 0.5F);
  EXPECT_EQ(t.INSTALLATION_CRITERIA_NAMES(1).TRIMMED(), "tension");
  EXPECT_EQ(t.FLOATING_BODY_IDS(1), 3);
  EXPECT_EQ(t.FLOATING_BODY_NAMES(1).VIEW(), std::string(31, 'b') + "z");
  EXPECT_EQ(t.FLOATING_BODY_VALUES(1), 1.0 / 3.0);
  EXPECT_EQ(t.FLOATING_BODY_CODES(1), -2);
}

TEST_F(ContactBlocks, VesselNamePiecesJoinTrimmed) {
  job.RUN.NUM_VESSELS = 2;
  // The blanks that end a piece are lost at the join, and a blank piece vanishes.
  Records vessels{PIECE("Semi "), PIECE(""), PIECE("sub A"), PIECE(""), PIECE(""), PIECE(""), PIECE(""), PIECE(""),
                  PIECE("skipped")};
  std::string full;  // eight full pieces keep all 256 characters
  for (char c = 'a'; c < 'i'; ++c) {
    full += std::string(32, c);
    vessels.push_back(RECORD::TEXT(std::string(32, c)));
  }
  vessels.push_back(PIECE("skipped"));
  job.BLOCKS[39] = vessels;
  EXPECT_FALSE(OPEN()) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(t.VESSEL_NAMES(1).TRIMMED(), "Semisub A");
  EXPECT_EQ(t.VESSEL_NAMES(2).VIEW(), full);
}

TEST_F(ContactBlocks, CountsOfZeroReadNothingButTheStingerIsAlwaysRead) {
  job.BLOCKS[40] = {RECORD::REALS({0.5F, 0.0F, 0.0F, 0.0F, 0.0F, -6.5F})};
  EXPECT_FALSE(OPEN({33, 34, 35, 36, 37, 38, 39})) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(t.STINGER_DATA.DATA(), (std::vector<float>{0.5F, 0.0F, 0.0F, 0.0F, 0.0F, -6.5F}));

  job.RUN.PIP_NODES_PER_PAIR = job.RUN.NUM_PIPE_IN_PIPE = job.RUN.NUM_GUIDE_SURFACES = job.RUN.NUM_PANELS = 1;
  job.RUN.NUM_ZERO_GAP_GUIDES = job.RUN.NUM_INSTALLATION_CRITERIA = job.RUN.NUM_FLOATING_BODIES = 1;
  job.RUN.NUM_VESSELS = 1;
  const std::vector<std::string> messages{
      "pipe-in-pipe data from database header.",          "guide surface data from database header.",
      "panel data from database header.",                 "zero gap guide dimensions from database header.",
      "installation criteria data from database header.", "floating body data from database header.",
      "vessel data from database header.",                "stinger plane data from database header"};
  for (int32_t k = 33; k <= 40; ++k) {
    EXPECT_TRUE(OPEN({k}));
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Unable to read " + messages[k - 33]);
  }
}

}  // namespace
}  // namespace tmrdar::header
