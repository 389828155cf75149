// The environment blocks read back: seabed points and slope, wave harmonics,
// contact diameters, the current profile and the target spectrum.
#include <string>
#include <tuple>
#include <vector>

#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::RECORD;

class SeaBlocks : public HEADER_TEST {};

// Points 1 to 5 as pairs (distance 10i, height -i), four a record; word 5 of
// the second record, behind the fifth point, holds a slope of 12.5 degrees.
TEST_F(SeaBlocks, SeabedPairsLandCrossedAndAPlaneSlopeIsWordFiveOfTheLastRecordRead) {
  builder::JOB job;
  job.SEABED_CODE = 2;
  job.BLOCKS[22] = {RECORD::REALS({10, -1, 20, -2, 30, -3, 40, -4}), RECORD::REALS({50, -5, 0, 0, 12.5F})};
  for (const int32_t points : {5, 4}) {
    job.RUN.NUM_SEABED_POINTS = points;
    ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
    const MOD_SEABED_PROFILE::T_SEABED_PROFILE& seabed = db.SEABED_PROFILE;
    for (int32_t i = 1; i <= points; ++i) {
      EXPECT_EQ(seabed.NODE(i, 1), static_cast<float>(-i)) << "column 1 takes the second word";
      EXPECT_EQ(seabed.NODE(i, 2), static_cast<float>(10 * i));
    }
    // Four points leave the first record the last read: its word 5 is point 3's distance.
    EXPECT_EQ(seabed.SLOPE_DEG(), points == 5 ? 12.5F : 30.0F);
  }
  job.SEABED_CODE = 1;  // flat: no slope
  db.SEABED_PROFILE.SET_SLOPE(0.0F);
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.SEABED_PROFILE.SLOPE_DEG(), 0.0F);
  for (const int32_t code : {5, 7}) {  // a file profile and a file surface read no points
    job.SEABED_CODE = code;
    EXPECT_FALSE(OPEN(job, 22)) << ERROR_HANDLING::LAST_MESSAGE();
  }
}

TEST_F(SeaBlocks, HarmonicsDiametersCurrentsAndSpectrumLandInTheirTables) {
  builder::JOB job;
  job.RUN.NUM_WAVE_HARMONICS = 1;
  job.RUN.NUM_DSP_WAVE_HARMONICS = 2;
  job.RUN.NUM_ELEMENTS = 9;
  job.RUN.NUM_CURRENT_POINTS = 2;
  job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 4;  // five pairs: a record and a pair
  job.BLOCKS[23] = {RECORD::REALS({1, 2, 3, 4, 5, 6})};
  job.BLOCKS[24] = {RECORD::REALS({1, 2, 3, 4, 5, 6}), RECORD::REALS({7, 8, 9, 10, 11, 12})};
  job.BLOCKS[25] = {RECORD::REALS({1, 2, 3, 4, 5, 6, 7, 8}), RECORD::REALS({9, 10})};
  job.BLOCKS[32] = {RECORD::REALS({-100, 1.5F, 45, 9}), RECORD::REALS({0, 0.5F, 90, 9})};
  job.BLOCKS[41] = {RECORD::REALS({0.1F, 1, 0.2F, 2, 0.3F, 3, 0.4F, 4}), RECORD::REALS({0.5F, 5, 0.6F, 6})};
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  const HEADER_TABLES& t = db.TABLES;
  EXPECT_EQ(t.WAVE_HARMONICS.DATA(), (std::vector<float>{1, 2, 3, 4, 5}));
  EXPECT_EQ(t.DSP_WAVE_HARMONICS.DATA(), (std::vector<float>{1, 2, 3, 4, 5, 7, 8, 9, 10, 11}));
  EXPECT_EQ(t.CONTACT_DIAMETERS.DATA(), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(t.CURRENT_PROFILE.DATA(), (std::vector<float>{-100, 0, 1.5F, 0.5F, 45, 90}));
  EXPECT_EQ(t.TARGET_SPECTRUM.DATA(), (std::vector<float>{0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 1, 2, 3, 4, 5}));

  // One current point takes two words, to columns 2 and 3; no intervals make no spectrum.
  job.RUN.NUM_CURRENT_POINTS = 1;
  job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 0;
  job.BLOCKS.erase(41);
  job.BLOCKS[32].pop_back();
  ASSERT_FALSE(OPEN(job)) << ERROR_HANDLING::LAST_MESSAGE();
  EXPECT_EQ(db.TABLES.CURRENT_PROFILE.DATA(), (std::vector<float>{0, -100, 1.5F}));
  EXPECT_FALSE(db.TABLES.TARGET_SPECTRUM.ALLOCATED());
}

TEST_F(SeaBlocks, AnUnreadableBlockOrAnImpossibleSpectrumReportsItsMessage) {
  builder::JOB job;
  job.SEABED_CODE = 3;
  job.RUN.NUM_SEABED_POINTS = job.RUN.NUM_WAVE_HARMONICS = job.RUN.NUM_DSP_WAVE_HARMONICS = 1;
  job.RUN.NUM_ELEMENTS = job.RUN.NUM_CURRENT_POINTS = job.RUN.NUM_TARGET_SPECTRUM_INTERVALS = 1;
  const std::string read = "Error: Database Postprocessing: Unable to read ";
  for (const auto& [block, message] : std::vector<std::pair<int32_t, std::string>>{
           {22, read + "seabed data from database header."}, {23, read + "wave data from database header."},
           {24, read + "wave data from database header."}, {25, read + "contact diameters from database header."},
           {32, read + "current profile data from database header."},
           {41, read + "Target Spectrum data from database header."}}) {
    EXPECT_TRUE(OPEN(job, block));
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), message);
  }
  job.BLOCKS[14] = {RECORD::INTS({2'000'000'000})};  // far more pairs than the file has room for
  EXPECT_TRUE(OPEN(job));
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
            "Error: Database Postprocessing: Unable to allocate memory for target spectrum database header data.");
  EXPECT_FALSE(db.TABLES.TARGET_SPECTRUM.ALLOCATED());
}

// The unit formats cannot read a record that the file does not hold whole.
// The oldest reports a spectrum cut short behind its first record with the
// words of its own; its first record, and every record of the next format,
// with the usual message.
TEST(SpectrumMessages, TheOldestFormatHasASecondWording) {
  const std::string usual = "Error: Database Postprocessing: Unable to read Target Spectrum data from database header.";
  const std::string second = "Error: Database Postprocessing: Unable to read target spectrum data from database header.";
  for (const auto& [format, cut_behind_first, message] :
       std::vector<std::tuple<const FORMAT_VERSION*, bool, std::string>>{
           {&V811, true, second}, {&V811, false, usual}, {&V815, true, usual}}) {
    testing::SCRATCH_DIR dir;
    builder::JOB job(*format);
    job.FORCE.PRESENT = false;
    job.MODEL.TARGET_SPECTRUM = {{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}};  // two records
    builder::FILE_IMAGE image = job.IMAGE(builder::FILE_KIND::MOTION);
    image.TRUNCATE(32 * (job.BLOCK_RECORD(41) + (cut_behind_first ? 1 : 0)));
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbm")));
    bool failed = false;
    TIDE3_DATABASE_MODULE(format->DATABASE_VERSION)->OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), message) << format->NAME << (cut_behind_first ? " second" : " first");
    TIDE3_DATABASE_MODULE(format->DATABASE_VERSION)->CLOSE_TIDE3_DATABASE_FILES();
  }
}

}  // namespace
}  // namespace tmrdar::header
