// Guide surface, zero gap guide and pipe-in-pipe reactions where the
// requests and the builder's frame readers do not reach: the codes of each
// format, refused magnitudes, unknown codes and reads that fail part way.
#include <cmath>
#include <limits>
#include <string>
#include <tuple>

#include "frame/base/io_units.h"
#include "results/derived_results.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using K = builder::SECTION_KIND;
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::string_view UNREADABLE = "Error: Database Postprocessing: Unable to read record from database.";

class Reactions : public WRITTEN_JOB {
 protected:
  explicit Reactions(const header::FORMAT_VERSION& format = header::V861) : WRITTEN_JOB(format) {
    job.MOTION.PRESENT = false;
    job.RUN.NUM_TIME_STEPS = 2;
    job.RUN.NUM_ELEMENTS = 5;
    for (const int flag : {4, 5, 7}) job.RUN.OUTPUT_FLAGS[flag - 1] = 1;
    job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
    job.RUN.NUM_GUIDE_SURFACES = 3;
    job.RUN.NUM_ZERO_GAP_GUIDES = 2;
    job.RUN.NUM_PIP_CONNECTIONS = 4;
  }
  // Opens the job with these entries of step 1.
  void OPEN_WITH(std::initializer_list<std::tuple<K, int64_t, std::array<float, 3>>> put) {
    for (const auto& [section, i, x] : put) {
      for (int32_t c = 1; c <= 3; ++c) job.RESULTS.SET(section, 1, i, c, x[static_cast<std::size_t>(c - 1)]);
    }
    OPEN();
  }

  float value = -7.0F;
  int32_t status = 99;
};

using ReactionsOfEachFormat = OF_EACH_FORMAT<Reactions>;

// Up to V831 the guide surface and zero gap guide reactions answer any code
// other than 1 to 3 with the magnitude; the pipe-in-pipe reaction, and every
// reaction of the later formats, with nothing.
TEST_P(ReactionsOfEachFormat, ACodeOutsideOneToFourIsAMagnitudeForGuidesUpToV831) {
  OPEN_WITH({{K::GUIDE_SURFACE_REACTION, 1, {3.0F, 4.0F, 12.0F}},
        {K::ZERO_GAP_GUIDE_REACTION, 1, {0.0F, 6.0F, 8.0F}},
        {K::PIP_REACTION, 1, {2.0F, 3.0F, 6.0F}}});
  const struct {
    decltype(&CALCULATE_PIP_REACTIONS) routine;
    float up_to_v831;
  } rows[] = {{CALCULATE_CONTACT_REACTIONS, 13.0F}, {CALCULATE_ZG_GUIDE_REACTIONS, 10.0F}, {CALCULATE_PIP_REACTIONS, -7.0F}};
  for (const int32_t code : {0, 5}) {
    for (const auto& row : rows) {
      value = -7.0F;
      row.routine(db, 1, 1, code, value, status);
      EXPECT_EQ(std::pair(value, status), std::pair(UP_TO_V831() ? row.up_to_v831 : -7.0F, 0)) << code;
    }
  }
  CALCULATE_PIP_REACTIONS(db, 1, 1, 4, value, status);
  EXPECT_EQ(value, 7.0F);
}

TMRDAR_FOR_EVERY_FORMAT(ReactionsOfEachFormat);

// The magnitude is formed in single precision in the order of the
// components: (4097, 1, 59) gives 4097.4248 in other orders or in double
// precision. A NaN component is given as stored, but its magnitude is
// refused with the NaN kept.
TEST_F(Reactions, TheMagnitudeInSinglePrecisionAndOfANaN) {
  OPEN_WITH({{K::GUIDE_SURFACE_REACTION, 1, {4097, 1, 59}}, {K::ZERO_GAP_GUIDE_REACTION, 1, {1, NaN, 2}},
             {K::PIP_REACTION, 1, {NaN, 0, 0}}, {K::GUIDE_SURFACE_REACTION, 3, {0, 0, NaN}}});
  ERROR_HANDLING::ERROR3(false, "", "");
  CALCULATE_CONTACT_REACTIONS(db, 1, 1, 4, value, status);
  EXPECT_EQ(value, 4097.42432F);
  CALCULATE_ZG_GUIDE_REACTIONS(db, 1, 1, 2, value, status);
  EXPECT_TRUE(std::isnan(value));
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
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

// Without flag 4 no contact section is there, yet each routine still
// places its entries behind the element sections, all at one place.
TEST_F(Reactions, WithoutFlag4TheEntriesStandBehindTheElementSections) {
  job.RUN.OUTPUT_FLAGS[3] = 0;
  OPEN();
  for (auto* routine : {CALCULATE_CONTACT_REACTIONS, CALCULATE_ZG_GUIDE_REACTIONS, CALCULATE_PIP_REACTIONS}) {
    routine(db, 1, 2, 2, value, status);
    EXPECT_EQ(std::pair(value, status), std::pair(AT(K::ELEMENT_11, 1, 5, 3, 6), 0));
  }
}

// A code other than 1 to 4 (the per-format test gives what it answers): the
// contact routine reads its three words all the same, and fails with an entry
// before the start of the file; the guide routines read nothing.
TEST_F(Reactions, AnUnknownCodeGivesNothingButTheContactRoutineStillReads) {
  OPEN();
  ERROR_HANDLING::ERROR3(false, "", "");
  CALCULATE_ZG_GUIDE_REACTIONS(db, 1, -1'000'000, 5, value, status);
  EXPECT_EQ(status, 0);
  CALCULATE_PIP_REACTIONS(db, 1, -1'000'000, 5, value, status);
  EXPECT_EQ(std::tuple(status, ERROR_HANDLING::LAST_MESSAGE()), std::tuple(0, ""));
  CALCULATE_CONTACT_REACTIONS(db, 1, -1'000'000, 5, value, status);
  EXPECT_EQ(std::tuple(value, status, ERROR_HANDLING::LAST_MESSAGE()), std::tuple(-7.0F, -1, UNREADABLE));
}

// The record file object reads past the end of a file without failing, but
// the direct-access units refuse a record that the file does not hold whole.
// Through them a frame cut behind entry 6's first component of the zero gap
// section fails that entry after its first component.
TEST_F(Reactions, AReadThatFailsPartWayKeepsWhatWasRead) {
  job.RUN.NUM_GUIDE_SURFACES = 0;
  job.RUN.NUM_ZERO_GAP_GUIDES = 6;
  const builder::FRAME_LAYOUT layout = job.FRAME_SECTIONS(builder::FILE_KIND::FORCE);
  const int64_t last_word = 8 * job.WRITTEN_RUN().RESULT_START_RECORD +
                            builder::WORD_OFFSET(layout, {K::ZERO_GAP_GUIDE_REACTION, 1, 6, 1});
  const float first = job.VALUE({K::ZERO_GAP_GUIDE_REACTION, 1, 6, 1});
  builder::FILE_IMAGE image = job.IMAGE(builder::FILE_KIND::FORCE);
  image.TRUNCATE(static_cast<std::size_t>(4 * last_word));
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
