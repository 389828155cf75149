// Element pressures and temperatures, and clashing results where the
// builder's frame readers do not reach: the clash codes and pressures of each
// format, and the failures.
#include <string>

#include "results/derived_results.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using K = builder::SectionKind;
constexpr std::string_view unreadable = "Error: Database Postprocessing: Unable to read record from database.";
constexpr std::string_view no_pressures = "Error: Database Postprocessing: Database does not contain pressure data.";

class ElementResults : public WrittenJob {
 protected:
  explicit ElementResults(const header::FormatVersion& format = header::v861) : WrittenJob(format) {
    job.run.num_time_steps = 2;
    job.run.num_elements = 3;
    job.run.num_nodes = 8;
    for (const int flag : {1, 2, 4, 5, 9, 15, 16}) job.run.output_flags[flag - 1] = 1;
    job.run.num_boundary_conditions = 1;
    job.run.num_guide_surfaces = 1;
    job.run.num_zero_gap_guides = 1;
    job.run.num_pip_connections = 1;
    job.run.num_clash_pairs = 2;
  }

  float value = -7.0F;
  int32_t status = 99;
};

using ElementResultsOfEachFormat = OfEachFormat<ElementResults>;

// Code 1 reads the pair's word of the motion frame. The newest formats also
// take 33 for it, and 34 and 35 for the two force words of codes 2 and 3,
// any other code giving the word before them; up to V831 the force word is
// the pair's first plus the code less 2. Only V861 refuses pressures that
// the frames lack.
TEST_P(ElementResultsOfEachFormat, ClashCodesAndPressuresAsTheFormatHasThem) {
  const bool older = up_to_v831();
  job.run.output_flags[15] = 0;  // no pressures
  open();
  constexpr int64_t motion = 99;
  const struct {
    int32_t code;
    int64_t newer, older;  // the shift from the pair's first force word, or motion
  } rows[] = {{1, motion, motion}, {2, 0, 0}, {3, 1, 1}, {33, motion, 31}, {34, 0, 32},
              {35, 1, 33},         {0, -1, -2}, {4, -1, 2}};
  for (int32_t pair = 1; pair <= 2; ++pair) {
    for (const auto& row : rows) {
      const int64_t shift = older ? row.older : row.newer;
      value = -7.0F;
      retrieve_clashing_results(db, 1, pair, row.code, value, status);
      EXPECT_EQ(status, 0);
      EXPECT_EQ(value, shift == motion ? at(K::clashing, 1, pair, 1) : at(K::clash_force, 1, pair, 1, shift))
          << "pair " << pair << " code " << row.code;
    }
  }

  value = -7.0F;
  error_handling::error3(false, "", "");
  retrieve_element_pressures(db, 1, 2, 3, 2, value, status);
  if (GetParam() == &header::v861) {
    EXPECT_EQ(std::pair(value, status), std::pair(-7.0F, -1));
    EXPECT_EQ(error_handling::last_message(), no_pressures);
  } else {
    EXPECT_EQ(status, 0) << "the word where the section would stand";
    EXPECT_NE(value, -7.0F);
  }
}

TMRDAR_FOR_EVERY_FORMAT(ElementResultsOfEachFormat);

TEST_F(ElementResults, FailuresAreReportedWithTheValueKept) {
  open();
  retrieve_element_pressures(db, 2, 3, 2, 0, value, status);
  EXPECT_EQ(value, at(K::pressure, 2, 3, 3)) << "selector 0 is the first pressure";
  value = -7.0F;
  const auto refused = [&](std::string_view message) {
    EXPECT_EQ(value, -7.0F);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(error_handling::last_message(), message);
    status = 99;
  };
  for (const int32_t flag : {0, 2}) {  // present means exactly 1
    db.output_flags[15] = flag;
    retrieve_element_pressures(db, 1, 1, 1, 1, value, status);
    refused(no_pressures);
  }
  db.output_flags[15] = 1;
  retrieve_element_pressures(db, 1, -1'000'000, 1, 1, value, status);  // before the start of the file
  refused(unreadable);
  retrieve_element_temperature(db, 1, -1'000'000, 1, value, status);
  refused(unreadable);
  for (const int32_t code : {1, 2}) {
    retrieve_clashing_results(db, 1, -10'000'000, code, value, status);
    refused(unreadable);
  }

  // The element sections ahead of the pressures are counted in 32-bit
  // integers: 3 sections of 2^28 elements overflow to a word before the
  // file. The temperatures count them in 64 bits and read past its end.
  db.num_elements = 1 << 28;
  db.output_flags[5] = 1;
  retrieve_element_pressures(db, 1, 1, 1, 1, value, status);
  refused(unreadable);
  retrieve_element_temperature(db, 1, 1, 1, value, status);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tmrdar::results
