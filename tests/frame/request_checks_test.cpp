// The checks of a request's arguments and the mask they build.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "builder/job.h"
#include "frame/exports/request_checks.h"
#include "header/format_reader.h"
#include "support/scratch_dir.h"

namespace tmrdar::request_checks {
namespace {

// A request for output type 5 of node 1, step 1 of 1, that passes with both files.
Request good() {
  Request r;
  r.motion_code = 13;
  r.force_code = 13;
  r.output_type = 5;
  r.output_subtype = 1;
  r.node = 1;
  r.num_time_steps = 1;
  r.step = 1;
  return r;
}

int32_t mask(Request r, std::string_view label = "") {
  int32_t mask = -99;
  perform_arg_checks(r, label, mask);
  return mask;
}

TEST(RequestChecks, StepCountAndStep) {
  // A bad count or step stops the checks before the output type is seen.
  const struct {
    int32_t steps, step, type, mask;
  } rows[] = {{1, 1, 5, 0}, {4, 4, 5, 0}, {4, 5, 5, 256}, {4, 0, 5, 0}, {4, -1, 5, 256},
              {0, 0, 5, 128}, {0, 1, 5, 384}, {0, 1, 0, 384}};
  for (const auto& row : rows) {
    Request r = good();
    r.num_time_steps = row.steps, r.step = row.step, r.output_type = row.type;
    EXPECT_EQ(mask(r), row.mask) << row.steps << " steps, step " << row.step << ", type " << row.type;
  }
}

TEST(RequestChecks, OutputTypesNeedTheirFilesAndSubtypes) {
  struct test_case {
    int32_t motion, force, type, subtype, mask;
  };
  for (const test_case& c : {test_case{0, 13, 5, 1, 4}, test_case{13, 0, 13, 1, 4}, test_case{13, 0, 5, 8, 8}, test_case{0, 13, 5, 8, 12},
                        test_case{13, 0, 11, 2, 12}, test_case{13, 0, 11, 3, 12}, test_case{0, 13, 11, 1, 12}, test_case{13, 0, 11, 1, 0},
                        test_case{13, 0, 11, 4, 8}, test_case{13, 13, 19, 1, 4}, test_case{13, 13, 0, 1, 4}, test_case{13, 13, 1, 99, 0},
                        test_case{0, 13, 4, -5, 0}, test_case{13, 13, 8, 9, 0}, test_case{13, 13, 8, 10, 8}, test_case{13, 13, 9, 7, 8},
                        test_case{13, 13, 17, 14, 0}, test_case{13, 13, 17, 15, 8}, test_case{13, 13, 18, 3, 8},
                        test_case{13, 13, 12, 0, 8}, test_case{13, 11, 5, 1, 3}, test_case{0, 0, 5, 1, 3}, test_case{1, 1, 5, 1, 3}}) {
    Request r = good();
    r.motion_code = c.motion;
    r.force_code = c.force;
    r.output_type = c.type;
    r.output_subtype = c.subtype;
    EXPECT_EQ(mask(r), c.mask) << "codes " << c.motion << "/" << c.force << " type " << c.type << " subtype "
                               << c.subtype;
  }
}

class RequestLabels : public ::testing::Test {
 protected:
  void SetUp() override {
    builder::Job job;
    job.model.labels = {{"Riser End", 41, 1}, {"riser end", 42, 1}, {"Joint", 7, 2}};
    job.write(dir.file("job"));
    bool failed = false;
    db.open_database_files("job", dir.path().string() + "/", failed);
    ASSERT_FALSE(failed);
  }
  void TearDown() override { db.close_database_files(); }

  testing::ScratchDir dir;
  header::FormatReader& db = header::v861_database_files();
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
    Request r = good();
    r.node = row.node, r.element = row.element, r.output_type = row.type, r.output_subtype = row.subtype, r.position = 3;
    int32_t mask = -1;
    perform_arg_checks(r, row.label, mask);
    EXPECT_EQ(std::tuple(mask, r.node, r.element, r.position),
              std::tuple(row.mask, row.node_out, row.element_out, row.position_out))
        << "'" << row.label << "'";
  }

  // Codes that select no format find no label.
  int32_t node = 9, element = 9, kind = 9;
  bool not_found = false;
  check_label(13, 11, "Joint", node, element, kind, not_found);
  EXPECT_TRUE(not_found);
  EXPECT_EQ(node + element + kind, 0);
}

}  // namespace
}  // namespace tmrdar::request_checks
