// Damaged headers: words anywhere in a header with every block replaced by
// values a damaged file may hold, or the file cut short. The read must end in
// success or a reported failure, never outside a table (the sanitizer build
// runs this too), and no table may grow beyond what the file could fill.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "builder/job.h"
#include "every_block_job.h"
#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::JOB;

class DamagedHeader : public ::testing::TestWithParam<const FORMAT_VERSION*> {};

TEST_P(DamagedHeader, ReadsEndInSuccessOrAReportedFailure) {
  const FORMAT_VERSION& format = *GetParam();
  testing::SCRATCH_DIR dir;
  JOB job = EVERY_BLOCK_JOB(format);
  job.FORCE.PRESENT = false;
  job.RUN.SHAPE_FUNCTION_FLAG = 1;  // the integration points are made too
  job.RUN.SHAPE_FUNCTION_ORDER = 2;
  job.RUN.NUM_TIME_STEPS = 3;
  const builder::FILE_IMAGE good = job.IMAGE(builder::FILE_KIND::MOTION);
  const int64_t header_end = job.WRITTEN_RUN().RESULT_START_RECORD;
  TIDE3_DATABASE_FILES& db = *TIDE3_DATABASE_MODULE(format.DATABASE_VERSION);
  ASSERT_TRUE(good.WRITE(dir.FILE("job.dbm")));
  bool failed = true;
  db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
  ASSERT_FALSE(failed) << "undamaged: " << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.TABLES.INTEGRATION_POINTS.ALLOCATED(), format.BUILDS_INTEGRATION_POINTS);
  const std::array<int32_t, 10> hostile{0, -1, 1, 2, 3, 9, 2'147'483'647, -2'147'483'647 - 1, 1'000'000, 0x7F800001};
  uint32_t seed = 2026;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  int failures = 0;
  for (int round = 0; round < 600; ++round) {
    builder::FILE_IMAGE image = good;
    for (int change = 0; change < 1 + round % 4; ++change) {
      const auto record = static_cast<int64_t>(next() % static_cast<uint32_t>(header_end));
      image.PUT_INT(record, static_cast<int>(next() % 8) + 1, hostile[next() % hostile.size()]);
    }
    if (round % 5 == 0) image.TRUNCATE(next() % good.BYTES().size());
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    // The tables looked at below are this file's own.
    db.DEALLOCATE_TIDE3_DATABASE_HEADER_ARRAYS();
    failed = false;
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "(none)");
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    const std::string message(ERROR_HANDLING::LAST_MESSAGE());
    failures += failed ? 1 : 0;
    if (failed) {
      EXPECT_NE(message, "Error: Database Postprocessing: (none)") << "round " << round;
    }
    // No table holds more entries than the file has words.
    const auto words = image.BYTES().size() / 4 + 8;
    const HEADER_TABLES& t = db.TABLES;
    for (const std::size_t size : {t.ELEMENT_NODES.SIZE(), t.NODE_COORDINATES.SIZE(), t.TIME_LIST.SIZE(),
                                   t.PIP_DATA.SIZE(), t.ELEMENT_SET_NAMES.SIZE(), t.TARGET_SPECTRUM.SIZE(),
                                   t.DAMPER_ELEMENTS.SIZE(), t.INTEGRATION_POINTS.SIZE() / 10}) {
      EXPECT_LE(size, words) << "round " << round;
    }
    std::size_t members = 0;
    for (const auto& set : t.ELEMENT_SET_MEMBERS) members += set.size();
    EXPECT_LE(members, words) << "round " << round;
  }
  EXPECT_GT(failures, 50);
  EXPECT_LT(failures, 550);
  db.CLOSE_TIDE3_DATABASE_FILES();
}

INSTANTIATE_TEST_SUITE_P(, DamagedHeader, ::testing::ValuesIn(FORMAT_VERSIONS), FORMAT_NAME);

// A block whose directory entry lies ahead of the file ends the read with its
// own message, keeping the blocks read before it; a block of no rows is not
// read at all.
class UnreadableBlock : public HEADER_TEST {};

TEST_F(UnreadableBlock, ReportsItsOwnMessage) {
  const std::string read = "Unable to read ", header = " from database header.";
  const std::string models = "Unable to allocate memory for plastic hardening models.";
  const std::vector<std::pair<int32_t, std::string>> rows{
      {9, read + "from database header."}, {16, read + "element data" + header},
      {17, read + "nonlinear material data from the database header."},
      {18, read + "nonlinear material data from the database header."}, {19, read + "node data" + header},
      {20, read + "auxiliary element data" + header}, {21, read + "auxiliary node data" + header},
      {22, read + "seabed data" + header}, {23, read + "wave data" + header}, {24, read + "wave data" + header},
      {25, read + "contact diameters" + header}, {26, read + "element set data" + header},
      {27, read + "node set data" + header}, {28, read + "node/element labels" + header},
      {29, read + "point mass data" + header}, {30, read + "point load data" + header},
      {31, read + "boundary condition data" + header}, {32, read + "current profile data" + header},
      {33, read + "pipe-in-pipe data" + header}, {34, read + "guide surface data" + header},
      {35, read + "panel data" + header}, {36, read + "zero gap guide dimensions" + header},
      {37, read + "installation criteria data" + header}, {38, read + "floating body data" + header},
      {39, read + "vessel data" + header}, {40, read + "stinger plane data from database header"},
      {41, read + "Target Spectrum data" + header}, {48, read + "from database header."}, {49, models}, {50, models},
      {51, read + "damper elements" + header}, {52, "Unable to allocate memory for seabed database header data."}};
  const JOB job = EVERY_BLOCK_JOB();
  for (const auto& [k, message] : rows) {
    EXPECT_TRUE(OPEN(job, k)) << "block " << k;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: " + message) << "block " << k;
    if (k >= 16) {
      EXPECT_EQ(db.TABLES.POINT_MASS_NODES(1), k > 29 ? job.MODEL.POINT_MASSES[0] : 0) << "block " << k;
    }
  }
  for (const int32_t k : {20, 26, 27, 28, 29, 30, 31, 33, 34, 35, 36, 37, 38, 39}) {
    EXPECT_FALSE(OPEN(JOB(), k)) << "block " << k << " has no rows";
  }
  JOB file_seabed;
  file_seabed.SEABED_CODE = 5;  // a profile from a file reads no points
  EXPECT_FALSE(OPEN(file_seabed, 22)) << ERROR_HANDLING::LAST_MESSAGE();
}

// The unit formats cannot read a record the file does not hold whole; the
// oldest words a spectrum cut short behind its first record its own way.
TEST(SpectrumMessages, TheOldestFormatHasASecondWording) {
  const std::string read = "Error: Database Postprocessing: Unable to read ", rest = " data from database header.";
  const std::string usual = read + "Target Spectrum" + rest, second = read + "target spectrum" + rest;
  for (const auto& [format, cut_behind_first, message] :
       std::vector<std::tuple<const FORMAT_VERSION*, bool, std::string>>{
           {&V811, true, second}, {&V811, false, usual}, {&V815, true, usual}}) {
    testing::SCRATCH_DIR dir;
    JOB job(*format);
    job.FORCE.PRESENT = false;
    job.MODEL.TARGET_SPECTRUM = {{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}};  // two records
    builder::FILE_IMAGE image = job.IMAGE(builder::FILE_KIND::MOTION);
    image.TRUNCATE(32 * (job.BLOCK_RECORD(41) + (cut_behind_first ? 1 : 0)));
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    TIDE3_DATABASE_FILES& db = *TIDE3_DATABASE_MODULE(format->DATABASE_VERSION);
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    EXPECT_EQ(std::pair(failed, std::string(ERROR_HANDLING::LAST_MESSAGE())), std::pair(true, message))
        << format->NAME << (cut_behind_first ? " second" : " first");
    db.CLOSE_TIDE3_DATABASE_FILES();
  }
}

}  // namespace
}  // namespace tmrdar::header
