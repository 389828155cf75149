// Element pressures and temperatures, and clashing results where the
// builder's frame readers do not reach: the clash codes and pressures of each
// format, and the failures.
#include <string>

#include "results/derived_results.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using K = builder::SECTION_KIND;
constexpr std::string_view UNREADABLE = "Error: Database Postprocessing: Unable to read record from database.";
constexpr std::string_view NO_PRESSURES = "Error: Database Postprocessing: Database does not contain pressure data.";

class ElementResults : public WRITTEN_JOB {
 protected:
  explicit ElementResults(const header::FORMAT_VERSION& format = header::V861) : WRITTEN_JOB(format) {
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.NUM_ELEMENTS = 3;
    job.RUN.NUM_NODES = 8;
    for (const int flag : {1, 2, 4, 5, 9, 15, 16}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;
    job.RUN.NUM_BOUNDARY_CONDITIONS = 1;
    job.RUN.NUM_GUIDE_SURFACES = 1;
    job.RUN.NUM_ZERO_GAP_GUIDES = 1;
    job.RUN.NUM_PIP_CONNECTIONS = 1;
    job.RUN.NUM_CLASH_PAIRS = 2;
  }

  float value = -7.0F;
  int32_t status = 99;
};

using ElementResultsOfEachFormat = OF_EACH_FORMAT<ElementResults>;

// Code 1 reads the pair's word of the motion frame. The newest formats also
// take 33 for it, and 34 and 35 for the two force words of codes 2 and 3,
// any other code giving the word before them; up to V831 the force word is
// the pair's first plus the code less 2. Only V861 refuses pressures that
// the frames lack.
TEST_P(ElementResultsOfEachFormat, ClashCodesAndPressuresAsTheFormatHasThem) {
  const bool older = UP_TO_V831();
  job.RUN.OUTPUT_FLAGS[15] = 0;  // no pressures
  OPEN();
  constexpr int64_t MOTION = 99;
  const struct {
    int32_t code;
    int64_t newer, older;  // the shift from the pair's first force word, or MOTION
  } rows[] = {{1, MOTION, MOTION}, {2, 0, 0}, {3, 1, 1}, {33, MOTION, 31}, {34, 0, 32},
              {35, 1, 33},         {0, -1, -2}, {4, -1, 2}};
  for (int32_t pair = 1; pair <= 2; ++pair) {
    for (const auto& row : rows) {
      const int64_t shift = older ? row.older : row.newer;
      value = -7.0F;
      RETRIEVE_CLASHING_RESULTS(db, 1, pair, row.code, value, status);
      EXPECT_EQ(status, 0);
      EXPECT_EQ(value, shift == MOTION ? AT(K::CLASHING, 1, pair, 1) : AT(K::CLASH_FORCE, 1, pair, 1, shift))
          << "pair " << pair << " code " << row.code;
    }
  }

  value = -7.0F;
  ERROR_HANDLING::ERROR3(false, "", "");
  RETRIEVE_ELEMENT_PRESSURES(db, 1, 2, 3, 2, value, status);
  if (GetParam() == &header::V861) {
    EXPECT_EQ(std::pair(value, status), std::pair(-7.0F, -1));
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), NO_PRESSURES);
  } else {
    EXPECT_EQ(status, 0) << "the word where the section would stand";
    EXPECT_NE(value, -7.0F);
  }
}

TMRDAR_FOR_EVERY_FORMAT(ElementResultsOfEachFormat);

TEST_F(ElementResults, FailuresAreReportedWithTheValueKept) {
  OPEN();
  RETRIEVE_ELEMENT_PRESSURES(db, 2, 3, 2, 0, value, status);
  EXPECT_EQ(value, AT(K::PRESSURE, 2, 3, 3)) << "selector 0 is the first pressure";
  value = -7.0F;
  const auto refused = [&](std::string_view message) {
    EXPECT_EQ(value, -7.0F);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), message);
    status = 99;
  };
  for (const int32_t flag : {0, 2}) {  // present means exactly 1
    db.OUTPUT_FLAGS[15] = flag;
    RETRIEVE_ELEMENT_PRESSURES(db, 1, 1, 1, 1, value, status);
    refused(NO_PRESSURES);
  }
  db.OUTPUT_FLAGS[15] = 1;
  RETRIEVE_ELEMENT_PRESSURES(db, 1, -1'000'000, 1, 1, value, status);  // before the start of the file
  refused(UNREADABLE);
  RETRIEVE_ELEMENT_TEMPERATURE(db, 1, -1'000'000, 1, value, status);
  refused(UNREADABLE);
  for (const int32_t code : {1, 2}) {
    RETRIEVE_CLASHING_RESULTS(db, 1, -10'000'000, code, value, status);
    refused(UNREADABLE);
  }

  // The element sections ahead of the pressures are counted in 32-bit
  // integers: 3 sections of 2^28 elements overflow to a word before the
  // file. The temperatures count them in 64 bits and read past its end.
  db.NUM_ELEMENTS = 1 << 28;
  db.OUTPUT_FLAGS[5] = 1;
  RETRIEVE_ELEMENT_PRESSURES(db, 1, 1, 1, 1, value, status);
  refused(UNREADABLE);
  RETRIEVE_ELEMENT_TEMPERATURE(db, 1, 1, 1, value, status);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace tmrdar::results
