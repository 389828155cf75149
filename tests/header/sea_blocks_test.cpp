// The environment blocks read back: seabed points and slope, wave harmonics,
// contact diameters, the current profile and the target spectrum.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/tide3_database_files.h"
#include "support/scratch_dir.h"

namespace tmrdar::header {
namespace {

using builder::FILE_KIND;
using builder::JOB;
using builder::RECORD;
using testing::SCRATCH_DIR;

class SeaBlocks : public ::testing::Test {
 protected:
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  bool OPEN(const JOB& job) {
    job.WRITE(dir.FILE("job"));
    return REOPEN();
  }
  // Opens the job with directory entry `block` of the motion file set to 0.
  bool OPEN_WITHOUT(const JOB& job, int32_t block) {
    builder::FILE_IMAGE image = job.IMAGE(FILE_KIND::MOTION);
    image.PUT_INT(2 + (block - 1) / 8, (block - 1) % 8 + 1, 0);
    EXPECT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    return REOPEN();
  }
  bool REOPEN() {
    bool failed = false;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    return failed;
  }

  SCRATCH_DIR dir;
  TIDE3_DATABASE_FILES& db = V861_TIDE3_DATABASE_FILES();
};

// Seabed points as the file packs them: four pairs a record, each pair
// (distance, height).
std::vector<RECORD> SEABED(int32_t points) {
  std::vector<RECORD> records(static_cast<std::size_t>(points / 4 + 1));
  for (int32_t i = 1; i <= points; ++i) {
    RECORD& r = records[static_cast<std::size_t>((i - 1) / 4)];
    const int place = (i - 1) % 4 + 1;
    r.REAL(2 * place - 1, 10.0F * static_cast<float>(i)).REAL(2 * place, -static_cast<float>(i));
  }
  return records;
}

TEST_F(SeaBlocks, SeabedPairsLandCrossedAndAPlaneSlopeTakesWordFive) {
  JOB job;
  job.SEABED_CODE = 2;
  job.RUN.NUM_SEABED_POINTS = 5;
  job.BLOCKS[22] = SEABED(5);
  job.BLOCKS[22].back().REAL(5, 12.5F);  // behind the fifth point
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const MOD_SEABED_PROFILE::T_SEABED_PROFILE& seabed = db.SEABED_PROFILE;
  ASSERT_EQ(seabed.NUM_NODES(), 5);
  for (int32_t i = 1; i <= 5; ++i) {
    EXPECT_EQ(seabed.NODE(i, 1), -static_cast<float>(i)) << "height, the second word of the pair";
    EXPECT_EQ(seabed.NODE(i, 2), 10.0F * static_cast<float>(i)) << "distance, the first word";
  }
  EXPECT_EQ(seabed.SLOPE_DEG(), 12.5F);
  EXPECT_EQ(seabed.SLOPE_RAD(), 12.5 * 0.7853981633974483 / 45.0);
  EXPECT_EQ(seabed.SLOPE(), std::tan(12.5 * 0.7853981633974483 / 45.0));

  // With four points the last record read is the first, whose word 5 is the
  // distance of point 3; a flat seabed takes no slope at all.
  job.RUN.NUM_SEABED_POINTS = 4;
  job.BLOCKS[22] = SEABED(4);
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.SEABED_PROFILE.SLOPE_DEG(), 30.0F);
  job.SEABED_CODE = 1;
  db.SEABED_PROFILE.SET_SLOPE(0.0F);
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.SEABED_PROFILE.SLOPE_DEG(), 0.0F);
  EXPECT_EQ(db.SEABED_PROFILE.NODE(4, 2), 40.0F);
}

TEST_F(SeaBlocks, AFileSeabedReadsNoPoints) {
  for (const int32_t code : {5, 7}) {  // a file profile and a file surface
    JOB job;
    job.SEABED_CODE = code;
    job.RUN.NUM_SEABED_POINTS = 3;
    EXPECT_FALSE(OPEN_WITHOUT(job, 22)) << ERROR_HANDLING::LAST_MESSAGE();
    EXPECT_EQ(db.SEABED_PROFILE.NUM_NODES(), 0);
  }
}

TEST_F(SeaBlocks, HarmonicsDiametersAndCurrentsLandInTheirTables) {
  JOB job;
  job.RUN.NUM_WAVE_HARMONICS = 2;
  job.RUN.NUM_DSP_WAVE_HARMONICS = 3;
  job.RUN.NUM_ELEMENTS = 9;
  job.RUN.NUM_CURRENT_POINTS = 2;
  for (int32_t r = 1; r <= 3; ++r) {
    const float f = static_cast<float>(r);
    if (r <= 2) job.BLOCKS[23].push_back(RECORD::REALS({f, f + 0.1F, f + 0.2F, f + 0.3F, f + 0.4F, 99.0F}));
    job.BLOCKS[24].push_back(RECORD::REALS({-f, -f - 0.1F, -f - 0.2F, -f - 0.3F, -f - 0.4F, 99.0F}));
  }
  // Nine diameters: eight fill the first record, the ninth opens the second.
  job.BLOCKS[25] = {RECORD::REALS({0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F}), RECORD::REALS({0.9F, 7.0F})};
  job.BLOCKS[32] = {RECORD::REALS({-100.0F, 1.5F, 45.0F, 9.0F}), RECORD::REALS({0.0F, 0.5F, 90.0F, 9.0F})};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const HEADER_TABLES& t = db.TABLES;
  for (int64_t c = 1; c <= 5; ++c) {
    const float step = 0.1F * static_cast<float>(c - 1);
    for (int64_t r = 1; r <= 2; ++r) EXPECT_EQ(t.WAVE_HARMONICS(r, c), static_cast<float>(r) + step);
    for (int64_t r = 1; r <= 3; ++r) EXPECT_EQ(t.DSP_WAVE_HARMONICS(c, r), -static_cast<float>(r) - step);
  }
  EXPECT_EQ(t.CONTACT_DIAMETERS.DATA(),
            (std::vector<float>{0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F, 0.9F}));
  // The profile table is held column by column.
  EXPECT_EQ(t.CURRENT_PROFILE.DATA(), (std::vector<float>{-100.0F, 0.0F, 1.5F, 0.5F, 45.0F, 90.0F}));

  // A profile of one point takes two words, to columns 2 and 3.
  job.RUN.NUM_CURRENT_POINTS = 1;
  job.BLOCKS[32] = {RECORD::REALS({-100.0F, 1.5F, 45.0F})};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.TABLES.CURRENT_PROFILE.DATA(), (std::vector<float>{0.0F, -100.0F, 1.5F}));
}

TEST_F(SeaBlocks, TheTargetSpectrumIsMadeByItsReader) {
  JOB job;
  job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 4;  // five pairs: one record and a pair of the next
  job.BLOCKS[41] = {RECORD::REALS({0.1F, 1.0F, 0.2F, 2.0F, 0.3F, 3.0F, 0.4F, 4.0F}),
                    RECORD::REALS({0.5F, 5.0F, 0.6F, 6.0F})};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const TABLE<float, 2>& spectrum = db.TABLES.TARGET_SPECTRUM;
  ASSERT_EQ(spectrum.EXTENT(1), 5);
  EXPECT_EQ(spectrum.DATA(), (std::vector<float>{0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F}));

  // No intervals: the table of the last header is gone and none is made.
  job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 0;
  job.BLOCKS.erase(41);
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_FALSE(db.TABLES.TARGET_SPECTRUM.ALLOCATED());

  // A count larger than the file could hold is refused before any memory.
  job.BLOCKS[14] = {RECORD::INTS({2'000'000'000})};
  EXPECT_TRUE(OPEN(job));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to allocate memory for target spectrum database header data.");
  EXPECT_FALSE(db.TABLES.TARGET_SPECTRUM.ALLOCATED());
}

TEST_F(SeaBlocks, AnUnreadableBlockReportsItsMessage) {
  const std::vector<std::pair<int32_t, std::string>> cases{
      {22, "Unable to read seabed data from database header."},
      {23, "Unable to read wave data from database header."},
      {24, "Unable to read wave data from database header."},
      {25, "Unable to read contact diameters from database header."},
      {32, "Unable to read current profile data from database header."},
      {41, "Unable to read Target Spectrum data from database header."}};
  JOB job;
  job.SEABED_CODE = 3;
  job.RUN.NUM_SEABED_POINTS = 2;
  job.RUN.NUM_WAVE_HARMONICS = 1;
  job.RUN.NUM_DSP_WAVE_HARMONICS = 1;
  job.RUN.NUM_ELEMENTS = 1;
  job.RUN.NUM_CURRENT_POINTS = 1;
  job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 1;
  job.BLOCKS[23] = {RECORD::REALS({4.5F})};
  for (const auto& [block, message] : cases) {
    EXPECT_TRUE(OPEN_WITHOUT(job, block)) << block;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: " + message);
    if (block > 23) {
      EXPECT_EQ(db.TABLES.WAVE_HARMONICS(1, 1), 4.5F) << "rows read before stay, block " << block;
    }
  }
}

}  // namespace
}  // namespace tmrdar::header
