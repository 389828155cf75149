// Element pressures and temperatures, clashing results and the distance of
// two nodes, read from frames whose every word holds its own word number
// (negated in the motion file), so that a word from the wrong place shows.
#include <gtest/gtest.h>

#include <string>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/format_version.h"
#include "results/derived_results.h"
#include "support/scratch_dir.h"

namespace tmrdar::results {
namespace {

using builder::FILE_KIND;
using builder::JOB;
constexpr std::string_view UNREADABLE = "Error: Database Postprocessing: Unable to read record from database.";

class ElementResults : public ::testing::Test {
 protected:
  explicit ElementResults(const header::FORMAT_VERSION& format = header::V861)
      : job(format), db(*header::TIDE3_DATABASE_MODULE(format.DATABASE_VERSION)) {
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.NUM_ELEMENTS = 3;
    job.RUN.NUM_NODES = 8;  // the node contact section: 64 words take 9 records
    for (const int flag : {1, 2, 4, 5, 9, 15, 16}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;
    job.RUN.NUM_BOUNDARY_CONDITIONS = 1;
    job.RUN.NUM_GUIDE_SURFACES = 1;
    job.RUN.NUM_ZERO_GAP_GUIDES = 1;
    job.RUN.NUM_PIP_CONNECTIONS = 1;
    job.RUN.NUM_CLASH_PAIRS = 2;
  }
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  void OPEN() {
    for (const FILE_KIND kind : {FILE_KIND::MOTION, FILE_KIND::FORCE}) {
      builder::FILE_IMAGE& image = kind == FILE_KIND::MOTION ? motion : force;
      image = job.IMAGE(kind);
      const float sign = kind == FILE_KIND::MOTION ? -1.0F : 1.0F;
      for (int64_t r = job.WRITTEN_RUN().RESULT_START_RECORD; r < image.RECORDS(); ++r) {
        for (int w = 1; w <= 8; ++w) image.PUT_REAL(r, w, sign * static_cast<float>(8 * r + w));
      }
    }
    // Displaced positions of nodes 1 to 3 at step 2, 6 words a node.
    const int64_t nodes = job.WRITTEN_RUN().RESULT_START_RECORD + job.MOTION_FRAME_RECORDS();
    const std::array<std::array<float, 3>, 3> at{{{10, 20, 30}, {4107, 21, 89}, {13, 24, 42}}};
    for (int i = 0; i < 3; ++i) {
      for (int p = 0; p < 3; ++p) motion.PUT_REAL(nodes + (6 * i + p) / 8, (6 * i + p) % 8 + 1, at[i][p]);
    }
    ASSERT_TRUE(motion.WRITE(dir.FILE("job.dbm")) && force.WRITE(dir.FILE("job.dbf")));
    bool failed = true;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    ASSERT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
  }

  // The word numbers just before the sections of frame n, found by walking
  // the sections of each frame in order.
  struct SECTIONS {
    int64_t MOTION_CLASHES, FORCE_CLASHES, TEMPERATURES, PRESSURES;
  };
  SECTIONS WALK(int64_t n) const {
    const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
    const auto records = [](int64_t words) { return words / 8 + 1; };
    const auto& f = v.OUTPUT_FLAGS;
    SECTIONS s{};
    int64_t r = v.RESULT_START_RECORD + (n - 1) * job.MOTION_FRAME_RECORDS();
    r += (f[0] + f[1] + f[2]) * records(int64_t{v.NUM_NODES} * v.DOFS_PER_NODE);
    // One guide surface, one zero gap guide, and the node contact words:
    // 8 a node, or 7 up to V831.
    const int64_t contact = job.FORMAT->DATABASE_VERSION <= header::V831.DATABASE_VERSION ? 7 : 8;
    r += records(9) + records(6) + records(contact * v.NUM_NODES);
    s.MOTION_CLASHES = 8 * r;
    r = v.RESULT_START_RECORD + (n - 1) * job.FORCE_FRAME_RECORDS();
    r += records(int64_t{v.NUM_BOUNDARY_CONDITIONS} * v.DOFS_PER_NODE);
    for (int k = 4; k < 14; ++k) r += f[k] * records(3 * v.NUM_ELEMENTS);
    r += 3 * records(3);  // one guide surface, zero gap guide and pipe-in-pipe connection
    s.FORCE_CLASHES = 8 * r;
    r += records(2 * v.NUM_CLASH_PAIRS);
    s.TEMPERATURES = 8 * r;
    s.PRESSURES = 8 * (r + records(3 * v.NUM_ELEMENTS));
    return s;
  }

  JOB job;
  builder::FILE_IMAGE motion, force;
  testing::SCRATCH_DIR dir;
  header::TIDE3_DATABASE_FILES& db;
  float value = -7.0F;
  int32_t status = 99;
};

class ElementResultsOfEachFormat : public ElementResults,
                                   public ::testing::WithParamInterface<const header::FORMAT_VERSION*> {
 protected:
  ElementResultsOfEachFormat() : ElementResults(*GetParam()) {}
};

// The clashing results and pressures of each format. Up to V831 the node
// contact section ahead of the motion frame's clashes has 7 words a node,
// only code 1 reads the motion file and the force word adds the code less 1
// to the pair's first word; only V861 refuses pressures the frames lack.
TEST_P(ElementResultsOfEachFormat, ClashCodesAndPressuresAsTheFormatHasThem) {
  const bool older = GetParam()->DATABASE_VERSION <= header::V831.DATABASE_VERSION;
  job.RUN.OUTPUT_FLAGS[15] = 0;  // no pressures
  OPEN();
  const SECTIONS s = WALK(1);  // words of frame 1 behind its end lie in frame 2
  const auto READ = [&](int32_t pair, int32_t code) {
    value = -7.0F;
    RETRIEVE_CLASHING_RESULTS(db, 1, pair, code, value, status);
    EXPECT_EQ(status, 0);
    return value;
  };
  EXPECT_EQ(READ(2, 1), -static_cast<float>(s.MOTION_CLASHES + 2));
  EXPECT_EQ(READ(2, 2), static_cast<float>(s.FORCE_CLASHES + 3));
  EXPECT_EQ(READ(2, 33), older ? static_cast<float>(s.FORCE_CLASHES + 34) : -static_cast<float>(s.MOTION_CLASHES + 2));
  EXPECT_EQ(READ(2, 0), static_cast<float>(s.FORCE_CLASHES + (older ? 1 : 2)));

  value = -7.0F;
  ERROR_HANDLING::ERROR3(false, "", "");
  RETRIEVE_ELEMENT_PRESSURES(db, 1, 2, 3, 2, value, status);
  if (GetParam() == &header::V861) {
    EXPECT_EQ(std::pair(value, status), std::pair(-7.0F, -1));
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: Database does not contain pressure data.");
  } else {
    // The word where the section would stand: element 2, location 3, pressure 2.
    EXPECT_EQ(std::pair(value, status), std::pair(static_cast<float>(s.PRESSURES + 12), 0));
  }
}

INSTANTIATE_TEST_SUITE_P(, ElementResultsOfEachFormat, ::testing::ValuesIn(header::FORMAT_VERSIONS),
                         [](const auto& info) { return std::string(info.param->NAME); });

TEST_F(ElementResults, EachResultComesFromItsSectionOfTheFrameOfTheStep) {
  OPEN();
  const SECTIONS s = WALK(2);
  for (int32_t e = 1; e <= 3; ++e) {
    for (int32_t l = 1; l <= 3; ++l) {
      RETRIEVE_ELEMENT_TEMPERATURE(db, 2, e, l, value, status);
      EXPECT_EQ(value, static_cast<float>(s.TEMPERATURES + 3 * (e - 1) + l)) << e << " " << l;
      for (const int32_t k : {0, 1, 2}) {
        RETRIEVE_ELEMENT_PRESSURES(db, 2, e, l, k, value, status);
        EXPECT_EQ(value, static_cast<float>(s.PRESSURES + 6 * (e - 1) + 2 * (l - 1) + (k == 0 ? 1 : k)));
        EXPECT_EQ(status, 0);
      }
    }
  }
  // Codes 2 and 3 are the pair's two words, and any other code but 1 the
  // word before them; code 1 is the pair's word in the motion frame.
  for (int32_t i = 1; i <= 2; ++i) {
    for (const int32_t code : {1, 33, 2, 34, 3, 35, 0, 4, 7}) {
      const int64_t step = code == 2 || code == 34 ? 1 : code == 3 || code == 35 ? 2 : 0;
      const float expected = code == 1 || code == 33 ? -static_cast<float>(s.MOTION_CLASHES + i)
                                                     : static_cast<float>(s.FORCE_CLASHES + 2 * i - 2 + step);
      RETRIEVE_CLASHING_RESULTS(db, 2, i, code, value, status);
      EXPECT_EQ(value, expected) << i << " " << code;
      EXPECT_EQ(status, 0);
    }
  }
}

TEST_F(ElementResults, FailuresAreReportedWithTheValueKept) {
  OPEN();
  const auto refused = [&](std::string_view message) {
    EXPECT_EQ(value, -7.0F);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), message);
    status = 99;
  };
  for (const int32_t flag : {0, 2}) {  // present means exactly 1
    db.OUTPUT_FLAGS[15] = flag;
    RETRIEVE_ELEMENT_PRESSURES(db, 1, 1, 1, 1, value, status);
    refused("Error: Database Postprocessing: Database does not contain pressure data.");
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

// The distance is formed whatever the six reads gave: a position that could
// not be read is the one of the last call, and only the last read's outcome
// is reported.
TEST_F(ElementResults, TheDistanceOfTwoNodesIsSinglePrecisionFromTheirPositions) {
  OPEN();
  ERROR_HANDLING::ERROR3(false, "", "");
  RETRIEVE_DISTANCE_TWO_NODES(db, 2, 1, 3, value, status);
  EXPECT_EQ(value, 13.0F);
  RETRIEVE_DISTANCE_TWO_NODES(db, 2, 3, 3, value, status);
  EXPECT_EQ(value, 0.0F);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
  RETRIEVE_DISTANCE_TWO_NODES(db, 2, 1, 2, value, status);
  EXPECT_EQ(value, 4097.42432F) << "the other orders, or double precision, give 4097.4248";
  EXPECT_EQ(status, 0);

  RETRIEVE_DISTANCE_TWO_NODES(db, 2, -1'000'000, 3, value, status);
  EXPECT_EQ(value, 13.0F) << "node 1 is still the first position";
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), UNREADABLE);
  RETRIEVE_DISTANCE_TWO_NODES(db, 2, 3, -1'000'000, value, status);
  EXPECT_EQ(value, 0.0F) << "node 3 is still the second position";
  EXPECT_EQ(status, -1);
}

}  // namespace
}  // namespace tmrdar::results
