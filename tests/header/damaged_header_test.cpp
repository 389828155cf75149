// Damaged headers: words anywhere in a header with every block replaced by
// values a damaged file may hold, or the file cut short. The read must end in
// success or a reported failure, never outside a table (the sanitizer build
// runs this too), and no table may grow beyond what the file could fill.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "builder/job.h"
#include "every_block_job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

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
    // A header that fails before its tables are made keeps those of the
    // last one; the tables looked at below are this file's own.
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
  // Both ends are reached often: reads that fail and damaged headers that open.
  EXPECT_GT(failures, 50);
  EXPECT_LT(failures, 550);
  db.CLOSE_TIDE3_DATABASE_FILES();
}

INSTANTIATE_TEST_SUITE_P(, DamagedHeader, ::testing::ValuesIn(FORMAT_VERSIONS),
                         [](const auto& info) { return std::string(info.param->NAME); });

}  // namespace
}  // namespace tmrdar::header
