// Guide surface, zero gap guide and pipe-in-pipe reactions, read from force
// frames whose every word holds its own word number, so that a word from the
// wrong place shows.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "frame/base/io_units.h"
#include "header/format_version.h"
#include "results/derived_results.h"
#include "support/scratch_dir.h"

namespace tmrdar::results {
namespace {

constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::string_view UNREADABLE = "Error: Database Postprocessing: Unable to read record from database.";

class Reactions : public ::testing::Test {
 protected:
  explicit Reactions(const header::FORMAT_VERSION& format = header::V861)
      : job(format), db(*header::TIDE3_DATABASE_MODULE(format.DATABASE_VERSION)) {
    job.MOTION.PRESENT = false;
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.NUM_ELEMENTS = 5;
    for (const int flag : {4, 5, 7}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;
    job.RUN.NUM_BOUNDARY_CONDITIONS = 2;  // 12 words: 2 records
    job.RUN.NUM_GUIDE_SURFACES = 3;       // 9 words: 2 records
    job.RUN.NUM_ZERO_GAP_GUIDES = 2;
    job.RUN.NUM_PIP_CONNECTIONS = 4;
  }
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  // Writes and opens the force file; `put` gives entries of the three
  // sections of frame 1, by section (0 guides, 1 zero gap, 2 pipe-in-pipe),
  // entry and components, other values than their word numbers.
  void OPEN(std::initializer_list<std::tuple<int, int64_t, std::array<float, 3>>> put = {}) {
    image = job.IMAGE(builder::FILE_KIND::FORCE);
    for (int64_t r = job.WRITTEN_RUN().RESULT_START_RECORD; r < image.RECORDS(); ++r) {
      for (int w = 1; w <= 8; ++w) image.PUT_REAL(r, w, static_cast<float>(8 * r + w));
    }
    for (const auto& [section, i, x] : put) {
      const int64_t word = WALK(1)[static_cast<std::size_t>(section)] + 3 * i - 3;  // 0-based component 1
      for (int c = 0; c < 3; ++c) image.PUT_REAL((word + c) / 8, static_cast<int>((word + c) % 8) + 1, x[c]);
    }
    ASSERT_TRUE(image.WRITE(dir.FILE("job.dbf")));
    bool failed = true;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    ASSERT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
  }

  // The word numbers just before the guide, zero gap and pipe-in-pipe
  // sections of frame n, walking the sections of the frame in order.
  std::array<int64_t, 3> WALK(int64_t n) const {
    const header::HEADER_VARIABLES v = job.WRITTEN_RUN();
    const auto records = [](int64_t words) { return words / 8 + 1; };
    const int64_t f4 = v.OUTPUT_FLAGS[3];
    int64_t r = v.RESULT_START_RECORD + (n - 1) * job.FORCE_FRAME_RECORDS();
    r += f4 * records(int64_t{v.NUM_BOUNDARY_CONDITIONS} * v.DOFS_PER_NODE);
    for (int k = 4; k < 14; ++k) r += v.OUTPUT_FLAGS[k] * records(3 * v.NUM_ELEMENTS);
    std::array<int64_t, 3> s{8 * r, 0, 0};
    if (v.NUM_GUIDE_SURFACES > 0) r += f4 * records(3 * v.NUM_GUIDE_SURFACES);
    s[1] = 8 * r;
    if (v.NUM_ZERO_GAP_GUIDES > 0) r += f4 * records(3 * v.NUM_ZERO_GAP_GUIDES);
    s[2] = 8 * r;
    return s;
  }

  builder::JOB job;
  builder::FILE_IMAGE image;
  testing::SCRATCH_DIR dir;
  header::TIDE3_DATABASE_FILES& db;
  float value = -7.0F;
  int32_t status = 99;
};

class ReactionsOfEachFormat : public Reactions, public ::testing::WithParamInterface<const header::FORMAT_VERSION*> {
 protected:
  ReactionsOfEachFormat() : Reactions(*GetParam()) {}
};

// Up to V831 the guide surface and zero gap guide reactions answer any code
// other than 1 to 3 with the magnitude; the pipe-in-pipe reaction, and every
// reaction of the later formats, with nothing.
TEST_P(ReactionsOfEachFormat, ACodeOutsideOneToFourIsAMagnitudeForGuidesUpToV831) {
  OPEN({{0, 1, {3.0F, 4.0F, 12.0F}}, {1, 1, {0.0F, 6.0F, 8.0F}}, {2, 1, {2.0F, 3.0F, 6.0F}}});
  const bool magnitude = GetParam()->DATABASE_VERSION <= header::V831.DATABASE_VERSION;
  for (const int32_t code : {0, 5}) {
    value = -7.0F;
    CALCULATE_CONTACT_REACTIONS(db, 1, 1, code, value, status);
    EXPECT_EQ(std::pair(value, status), std::pair(magnitude ? 13.0F : -7.0F, 0)) << code;
    value = -7.0F;
    CALCULATE_ZG_GUIDE_REACTIONS(db, 1, 1, code, value, status);
    EXPECT_EQ(std::pair(value, status), std::pair(magnitude ? 10.0F : -7.0F, 0)) << code;
    value = -7.0F;
    CALCULATE_PIP_REACTIONS(db, 1, 1, code, value, status);
    EXPECT_EQ(std::pair(value, status), std::pair(-7.0F, 0)) << code;
  }
  CALCULATE_PIP_REACTIONS(db, 1, 1, 4, value, status);
  EXPECT_EQ(value, 7.0F);
}

INSTANTIATE_TEST_SUITE_P(, ReactionsOfEachFormat, ::testing::ValuesIn(header::FORMAT_VERSIONS),
                         [](const auto& info) { return std::string(info.param->NAME); });

// The requests reach every entry of these sections; here the places that
// no request reaches. Entry 0 is the three words before its section, the
// whole-entry read crosses a record boundary, and with flag 4 of 0 no
// contact section is there, yet every entry is still placed behind the
// element sections and reads what stands there.
TEST_F(Reactions, PlacesThatNoRequestReaches) {
  OPEN();
  const std::array<int64_t, 3> s = WALK(2);
  int k = 0;
  for (auto* routine : {CALCULATE_CONTACT_REACTIONS, CALCULATE_ZG_GUIDE_REACTIONS, CALCULATE_PIP_REACTIONS}) {
    routine(db, 2, 0, 3, value, status);
    EXPECT_EQ(value, static_cast<float>(s[static_cast<std::size_t>(k++)]));
    EXPECT_EQ(status, 0);
  }
  std::array<float, 3> r{};
  READ_CONTACT_REACTIONS(db, 2, 3, r, status);
  EXPECT_EQ(r, (std::array<float, 3>{float(s[0] + 7), float(s[0] + 8), float(s[0] + 9)}));

  job.RUN.OUTPUT_FLAGS[3] = 0;
  OPEN();
  for (auto* routine : {CALCULATE_CONTACT_REACTIONS, CALCULATE_ZG_GUIDE_REACTIONS, CALCULATE_PIP_REACTIONS}) {
    routine(db, 1, 2, 2, value, status);
    EXPECT_EQ(value, static_cast<float>(WALK(1)[0] + 5));
  }
}

TEST_F(Reactions, TheMagnitudeIsFormedInSinglePrecisionInTheOrderOfTheComponents) {
  // (4097, 1, 59) gives 4097.4248 in other orders or in double precision;
  // 3e19 squared overflows in single precision.
  OPEN({{0, 1, {4097, 1, 59}}, {1, 2, {4097, 1, 59}}, {2, 3, {4097, 1, 59}}, {0, 2, {3e19F, 0, 0}},
        {1, 1, {1, NaN, 2}}, {2, 1, {NaN, 0, 0}}, {0, 3, {0, 0, NaN}}});
  ERROR_HANDLING::ERROR3(false, "", "");
  CALCULATE_CONTACT_REACTIONS(db, 1, 1, 4, value, status);
  EXPECT_EQ(value, 4097.42432F);
  CALCULATE_ZG_GUIDE_REACTIONS(db, 1, 2, 4, value, status);
  EXPECT_EQ(value, 4097.42432F);
  CALCULATE_PIP_REACTIONS(db, 1, 3, 4, value, status);
  EXPECT_EQ(value, 4097.42432F);
  CALCULATE_CONTACT_REACTIONS(db, 1, 2, 4, value, status);
  EXPECT_EQ(value, std::numeric_limits<float>::infinity());
  CALCULATE_ZG_GUIDE_REACTIONS(db, 1, 1, 2, value, status);  // a NaN component as stored
  EXPECT_TRUE(std::isnan(value));
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");

  // The magnitude of a NaN is refused, with the NaN kept.
  const auto refused = [&](auto routine, int32_t entry, std::string_view what) {
    value = 0.0F;
    routine(db, 1, entry, 4, value, status);
    EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(status, -1);
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(),
              "Error: Database Postprocessing: Invalid square root argument when calculating " + std::string(what));
  };
  refused(CALCULATE_CONTACT_REACTIONS, 3, "contact surface reaction.");
  refused(CALCULATE_ZG_GUIDE_REACTIONS, 1, "guide reaction.");
  refused(CALCULATE_PIP_REACTIONS, 1, "the magnitude of the Pipe-In-Pipe reaction.");
}

// Codes other than 1 to 4: the contact routine reads its three words all the
// same, and fails with them; the guide routines read nothing.
TEST_F(Reactions, AnUnknownCodeGivesNothingButTheContactRoutineStillReads) {
  OPEN();
  for (const int32_t code : {0, 5, -1}) {
    for (const int32_t entry : {1, -1'000'000}) {  // the second lies before the start of the file
      ERROR_HANDLING::ERROR3(false, "", "");
      CALCULATE_ZG_GUIDE_REACTIONS(db, 1, entry, code, value, status);
      EXPECT_EQ(status, 0);
      CALCULATE_PIP_REACTIONS(db, 1, entry, code, value, status);
      EXPECT_EQ(status, 0);
      EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
      CALCULATE_CONTACT_REACTIONS(db, 1, entry, code, value, status);
      EXPECT_EQ(status, entry == 1 ? 0 : -1);
      EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), entry == 1 ? "" : UNREADABLE);
      EXPECT_EQ(value, -7.0F);
    }
  }
}

// The record file object reads past the end of a file without failing, but
// the direct-access units refuse a record that the file does not hold whole.
// Through them a frame cut behind word 16 of the zero gap section fails entry
// 6 after its first component.
TEST_F(Reactions, AReadThatFailsPartWayKeepsWhatWasRead) {
  job.RUN.NUM_GUIDE_SURFACES = 0;
  job.RUN.NUM_ZERO_GAP_GUIDES = 6;
  const auto first = static_cast<float>(WALK(1)[1] + 16);
  image = job.IMAGE(builder::FILE_KIND::FORCE);
  for (int w = 1; w <= 8; ++w) image.PUT_REAL(WALK(1)[1] / 8 + 1, w, first - 8 + static_cast<float>(w));
  image.TRUNCATE(static_cast<std::size_t>(4 * (WALK(1)[1] + 16)));
  ASSERT_TRUE(image.WRITE(dir.FILE("job.dbf")));
  header::TIDE3_DATABASE_FILES& units = header::V811_TIDE3_DATABASE_FILES();
  static_cast<header::HEADER_VARIABLES&>(units) = job.WRITTEN_RUN();
  units.FORCE_FRAME_RECORDS = units.FORCE_STEP_RECORDS;
  IO_UNITS::DIRECT_ACCESS_UNIT& unit = IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT);
  ASSERT_TRUE(unit.OPEN(dir.FILE("job.dbf"), IO_UNITS::DATABASE_RECORD_LENGTH));

  std::array<float, 3> r{-1.0F, -2.0F, -3.0F};
  READ_CONTACT_REACTIONS(units, 1, 6, r, status);
  EXPECT_EQ(r, (std::array<float, 3>{first, -2.0F, -3.0F}));
  EXPECT_EQ(status, -1);
  for (const int32_t code : {2, 4, 0}) {
    CALCULATE_CONTACT_REACTIONS(units, 1, 6, code, value, status);
    EXPECT_EQ(value, -7.0F);
    EXPECT_EQ(status, -1);
  }
  CALCULATE_ZG_GUIDE_REACTIONS(units, 1, 6, 2, value, status);
  EXPECT_EQ(value, -7.0F);
  CALCULATE_ZG_GUIDE_REACTIONS(units, 1, 6, 4, value, status);
  EXPECT_EQ(value, first) << "the last component read";
  EXPECT_EQ(status, -1);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), UNREADABLE);
  unit.CLOSE();
  static_cast<header::HEADER_VARIABLES&>(units) = header::HEADER_VARIABLES{};
}

}  // namespace
}  // namespace tmrdar::results
