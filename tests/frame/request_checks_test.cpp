// The checks of a request's arguments and the mask they build.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "builder/job.h"
#include "frame/exports/request_checks.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::REVISION_IDS {
namespace {

// A request for output type 5 of node 1, step 1 of 1, that passes with both files.
REQUEST GOOD() {
  REQUEST r;
  r.MOTION_CODE = 13;
  r.FORCE_CODE = 13;
  r.OUTPUT_TYPE = 5;
  r.OUTPUT_SUBTYPE = 1;
  r.NODE = 1;
  r.NUM_TIME_STEPS = 1;
  r.STEP = 1;
  return r;
}

int32_t MASK(REQUEST r, std::string_view label = "") {
  int32_t mask = -99;
  PERFORM_ARG_CHECKS(r, label, mask);
  return mask;
}

TEST(RequestChecks, StepCountAndStep) {
  // A bad count or step stops the checks before the output type is seen.
  const struct {
    int32_t steps, step, type, mask;
  } rows[] = {{1, 1, 5, 0}, {4, 4, 5, 0}, {4, 5, 5, 256}, {4, 0, 5, 0}, {4, -1, 5, 256},
              {0, 0, 5, 128}, {0, 1, 5, 384}, {0, 1, 0, 384}};
  for (const auto& row : rows) {
    REQUEST r = GOOD();
    r.NUM_TIME_STEPS = row.steps, r.STEP = row.step, r.OUTPUT_TYPE = row.type;
    EXPECT_EQ(MASK(r), row.mask) << row.steps << " steps, step " << row.step << ", type " << row.type;
  }
}

TEST(RequestChecks, OutputTypesNeedTheirFilesAndSubtypes) {
  struct CASE {
    int32_t motion, force, type, subtype, mask;
  };
  for (const CASE& c : {CASE{0, 13, 5, 1, 4}, CASE{13, 0, 13, 1, 4}, CASE{13, 0, 5, 8, 8}, CASE{0, 13, 5, 8, 12},
                        CASE{13, 0, 11, 2, 12}, CASE{13, 0, 11, 3, 12}, CASE{0, 13, 11, 1, 12}, CASE{13, 0, 11, 1, 0},
                        CASE{13, 0, 11, 4, 8}, CASE{13, 13, 19, 1, 4}, CASE{13, 13, 0, 1, 4}, CASE{13, 13, 1, 99, 0},
                        CASE{0, 13, 4, -5, 0}, CASE{13, 13, 8, 9, 0}, CASE{13, 13, 8, 10, 8}, CASE{13, 13, 9, 7, 8},
                        CASE{13, 13, 17, 14, 0}, CASE{13, 13, 17, 15, 8}, CASE{13, 13, 18, 3, 8},
                        CASE{13, 13, 12, 0, 8}, CASE{13, 11, 5, 1, 3}, CASE{0, 0, 5, 1, 3}, CASE{1, 1, 5, 1, 3}}) {
    REQUEST r = GOOD();
    r.MOTION_CODE = c.motion;
    r.FORCE_CODE = c.force;
    r.OUTPUT_TYPE = c.type;
    r.OUTPUT_SUBTYPE = c.subtype;
    EXPECT_EQ(MASK(r), c.mask) << "codes " << c.motion << "/" << c.force << " type " << c.type << " subtype "
                               << c.subtype;
  }
}

class RequestLabels : public ::testing::Test {
 protected:
  void SetUp() override {
    builder::JOB job;
    job.MODEL.LABELS = {{"Riser End", 41, 1}, {"riser end", 42, 1}, {"Joint", 7, 2}};
    job.WRITE(dir.FILE("job"));
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    ASSERT_FALSE(failed);
  }
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  testing::SCRATCH_DIR dir;
  header::TIDE3_DATABASE_FILES& db = header::V861_TIDE3_DATABASE_FILES();
};

// An item without number needs a label, which gives its item and kind in
// place of the arguments: the first row that matches, in either case.
TEST_F(RequestLabels, AnItemWithoutNumberNeedsALabel) {
  const struct {
    int32_t node, element, type, subtype;
    const char* label;
    int32_t mask, node_out, element_out, position_out;
  } rows[] = {
      {0, 0, 5, 1, "   ", 1024, 0, 0, 3},
      {0, 0, 5, 0, "", 1024 + 8, 0, 0, 3},
      {0, 0, 4, 1, "", 0, 0, 0, 3},                // the types of one value a step name no item
      {0, 3, 5, 1, "no such label", 0, 0, 3, 3},   // an element number makes the label unused
      {0, 0, 5, 1, "RISER END  ", 0, 41, 0, 1},
      {-4, 0, 5, 1, "joint", 0, 0, 7, 2},
      {0, 0, 5, 1, "joints", 1024, 0, 0, 0},  // an unknown label clears the item and kind
  };
  for (const auto& row : rows) {
    REQUEST r = GOOD();
    r.NODE = row.node, r.ELEMENT = row.element, r.OUTPUT_TYPE = row.type, r.OUTPUT_SUBTYPE = row.subtype, r.POSITION = 3;
    int32_t mask = -1;
    PERFORM_ARG_CHECKS(r, row.label, mask);
    EXPECT_EQ(std::tuple(mask, r.NODE, r.ELEMENT, r.POSITION),
              std::tuple(row.mask, row.node_out, row.element_out, row.position_out))
        << "'" << row.label << "'";
  }

  // Codes that select no format find no label.
  int32_t node = 9, element = 9, kind = 9;
  bool not_found = false;
  CHECK_LABEL(13, 11, "Joint", node, element, kind, not_found);
  EXPECT_TRUE(not_found);
  EXPECT_EQ(node + element + kind, 0);
}

}  // namespace
}  // namespace tmrdar::REVISION_IDS
