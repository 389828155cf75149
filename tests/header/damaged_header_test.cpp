// Damaged headers: words anywhere in a header with every block replaced by
// values a damaged file may hold, or the file cut short. The read must end in
// success or a reported failure, never outside a table (the sanitizer build
// runs this too), and no table may grow beyond what the file could fill.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

using builder::JOB;

// A small model with something in every block the reader reads.
JOB EVERY_BLOCK() {
  JOB job;
  builder::MODEL& m = job.MODEL;
  m.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .BOUNDARY_SLOT = 1}, {.FILE_NUMBER = 2, .X = 1.0F, .USER_NUMBER = 2}};
  m.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {1, 2}, .LENGTH = 1.0F}};
  m.NONLINEAR_E_TABLES = {{.CURVE = 1, .POINTS = 1}};
  m.AUX_NODES = {{.NUMBER = 5}};
  m.AUX_ELEMENTS = {{.NUMBER = -5, .NODES = {1, 1}}};
  m.SEABED.POINTS = {{0.0F, -100.0F}, {50.0F, -90.0F}, {90.0F, -85.0F}};
  m.WAVE_HARMONICS = {{1, 2, 3, 4, 5}};
  m.DSP_WAVE_HARMONICS = {{1, 2, 3, 4, 5}};
  m.CONTACT_DIAMETERS = {0.5F};
  m.ELEMENT_SETS = {{"All", {1}}};
  m.NODE_SETS = {{"Ends", {1, 2}}};
  m.LABELS = {{"Top", 1, 1}};
  m.POINT_MASSES = {2};
  m.POINT_LOADS = {{1, 2, 3.0F}};
  m.BOUNDARY_CONDITIONS = {1};
  m.CURRENT_PROFILE = {{0, 1, 2}, {10, 1, 2}};
  m.PIPE_IN_PIPE = {{{1, 2}}};
  m.GUIDE_SURFACES = {{.ID = 1, .NAME = "Guide"}};
  m.PANELS = {{1, 2, 3, 4, 5, 6, 7}};
  m.ZERO_GAP_GUIDES = {{.ID = 3}};
  m.INSTALLATION = {{1, 2, 3, 4, 5}, {{.ID = 1, .NAME = "Tension"}}};
  m.FLOATING_BODIES = {{.ID = 1, .NAME = "Buoy", .VALUE = 2.5}};
  m.VESSELS = {{}};
  m.TARGET_SPECTRUM = {{0.1F, 1.0F}, {0.2F, 2.0F}};
  m.PLASTIC_HARDENING_MODELS = {{.W1 = 1, .W2 = 2, .POINTS = {{0.0F, 1.0F}, {0.1F, 2.0F}}}};
  m.DAMPER_ELEMENTS = {1};
  m.BINARY_ITEMS = {{.TYPE = 7, .ID = 1, .BYTES = "data"}};
  job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 1;
  job.RUN.SHAPE_FUNCTION_FLAG = 1;
  job.RUN.SHAPE_FUNCTION_ORDER = 2;
  job.RUN.NUM_TIME_STEPS = 3;
  return job;
}

TEST(DamagedHeader, EveryBlockReadsWhole) {
  testing::SCRATCH_DIR dir;
  EVERY_BLOCK().WRITE(dir.FILE("job"));
  TIDE3_DATABASE_FILES& db = V861_TIDE3_DATABASE_FILES();
  bool failed = true;
  db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
  EXPECT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.TABLES.TIME_LIST.EXTENT(), 3);
  db.CLOSE_TIDE3_DATABASE_FILES();
}

TEST(DamagedHeader, ReadsEndInSuccessOrAReportedFailure) {
  testing::SCRATCH_DIR dir;
  JOB job = EVERY_BLOCK();
  job.FORCE.PRESENT = false;
  const builder::FILE_IMAGE good = job.IMAGE(builder::FILE_KIND::MOTION);
  int64_t header_end = 0;
  job.DIRECTORY(&header_end);
  const std::array<int32_t, 10> hostile{0, -1, 1, 2, 3, 9, 2'147'483'647, -2'147'483'647 - 1, 1'000'000, 0x7F800001};
  uint32_t seed = 2026;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  TIDE3_DATABASE_FILES& db = V861_TIDE3_DATABASE_FILES();
  for (int round = 0; round < 400; ++round) {
    builder::FILE_IMAGE image = good;
    for (int change = 0; change < 1 + round % 4; ++change) {
      const auto record = static_cast<int64_t>(next() % static_cast<uint32_t>(header_end));
      image.PUT_INT(record, static_cast<int>(next() % 8) + 1, hostile[next() % hostile.size()]);
    }
    if (round % 5 == 0) image.TRUNCATE(next() % good.BYTES().size());
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    bool failed = false;
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, "(none)");
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    const std::string message(ERROR_HANDLING::LAST_MESSAGE());
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
  db.CLOSE_TIDE3_DATABASE_FILES();
}

}  // namespace
}  // namespace tmrdar::header
