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

using K = builder::SectionKind;
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr std::string_view unreadable = "Error: Database Postprocessing: Unable to read record from database.";

class Reactions : public WrittenJob {
 protected:
  explicit Reactions(const header::FormatVersion& format = header::v861) : WrittenJob(format) {
    job.motion.present = false;
    job.run.num_time_steps = 2;
    job.run.num_elements = 5;
    for (const int flag : {4, 5, 7}) job.run.output_flags[flag - 1] = 1;
    job.run.num_boundary_conditions = 2;
    job.run.num_guide_surfaces = 3;
    job.run.num_zero_gap_guides = 2;
    job.run.num_pip_connections = 4;
  }
  // Opens the job with these entries of step 1.
  void open_with(std::initializer_list<std::tuple<K, int64_t, std::array<float, 3>>> put) {
    for (const auto& [section, i, x] : put) {
      for (int32_t c = 1; c <= 3; ++c) job.results.set(section, 1, i, c, x[static_cast<std::size_t>(c - 1)]);
    }
    open();
  }

  float value = -7.0F;
  int32_t status = 99;
};

using ReactionsOfEachFormat = OfEachFormat<Reactions>;

// Up to V831 the guide surface and zero gap guide reactions answer any code
// other than 1 to 3 with the magnitude; the pipe-in-pipe reaction, and every
// reaction of the later formats, with nothing.
TEST_P(ReactionsOfEachFormat, ACodeOutsideOneToFourIsAMagnitudeForGuidesUpToV831) {
  open_with({{K::guide_surface_reaction, 1, {3.0F, 4.0F, 12.0F}},
        {K::zero_gap_guide_reaction, 1, {0.0F, 6.0F, 8.0F}},
        {K::pip_reaction, 1, {2.0F, 3.0F, 6.0F}}});
  const struct {
    decltype(&calculate_pip_reactions) routine;
    float up_to_v831;
  } rows[] = {{calculate_contact_reactions, 13.0F}, {calculate_zg_guide_reactions, 10.0F}, {calculate_pip_reactions, -7.0F}};
  for (const int32_t code : {0, 5}) {
    for (const auto& row : rows) {
      value = -7.0F;
      row.routine(db, 1, 1, code, value, status);
      EXPECT_EQ(std::pair(value, status), std::pair(up_to_v831() ? row.up_to_v831 : -7.0F, 0)) << code;
    }
  }
  calculate_pip_reactions(db, 1, 1, 4, value, status);
  EXPECT_EQ(value, 7.0F);
}

TMRDAR_FOR_EVERY_FORMAT(ReactionsOfEachFormat);

// The magnitude is formed in single precision in the order of the
// components: (4097, 1, 59) gives 4097.4248 in other orders or in double
// precision. A NaN component is given as stored, but its magnitude is
// refused with the NaN kept.
TEST_F(Reactions, TheMagnitudeInSinglePrecisionAndOfANaN) {
  open_with({{K::guide_surface_reaction, 1, {4097, 1, 59}}, {K::zero_gap_guide_reaction, 1, {1, NaN, 2}},
             {K::pip_reaction, 1, {NaN, 0, 0}}, {K::guide_surface_reaction, 3, {0, 0, NaN}}});
  error_handling::error3(false, "", "");
  calculate_contact_reactions(db, 1, 1, 4, value, status);
  EXPECT_EQ(value, 4097.42432F);
  calculate_zg_guide_reactions(db, 1, 1, 2, value, status);
  EXPECT_TRUE(std::isnan(value));
  EXPECT_EQ(status, 0);
  EXPECT_EQ(error_handling::last_message(), "");
  const auto refused = [&](auto routine, int32_t entry, std::string_view what) {
    value = 0.0F;
    routine(db, 1, entry, 4, value, status);
    EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(status, -1);
    EXPECT_EQ(error_handling::last_message(),
              "Error: Database Postprocessing: Invalid square root argument when calculating " + std::string(what));
  };
  refused(calculate_contact_reactions, 3, "contact surface reaction.");
  refused(calculate_zg_guide_reactions, 1, "guide reaction.");
  refused(calculate_pip_reactions, 1, "the magnitude of the Pipe-In-Pipe reaction.");
}

// Without flag 4 no contact section is there, yet each routine still
// places its entries behind the element sections, all at one place.
TEST_F(Reactions, WithoutFlag4TheEntriesStandBehindTheElementSections) {
  job.run.output_flags[3] = 0;
  open();
  for (auto* routine : {calculate_contact_reactions, calculate_zg_guide_reactions, calculate_pip_reactions}) {
    routine(db, 1, 2, 2, value, status);
    EXPECT_EQ(std::pair(value, status), std::pair(at(K::element_11, 1, 5, 3, 6), 0));
  }
}

// A code other than 1 to 4 (the per-format test gives what it answers): the
// contact routine reads its three words all the same, and fails with an entry
// before the start of the file; the guide routines read nothing.
TEST_F(Reactions, AnUnknownCodeGivesNothingButTheContactRoutineStillReads) {
  open();
  error_handling::error3(false, "", "");
  calculate_zg_guide_reactions(db, 1, -1'000'000, 5, value, status);
  EXPECT_EQ(status, 0);
  calculate_pip_reactions(db, 1, -1'000'000, 5, value, status);
  EXPECT_EQ(std::tuple(status, error_handling::last_message()), std::tuple(0, ""));
  calculate_contact_reactions(db, 1, -1'000'000, 5, value, status);
  EXPECT_EQ(std::tuple(value, status, error_handling::last_message()), std::tuple(-7.0F, -1, unreadable));
}

// The record file object reads past the end of a file without failing, but
// the direct-access units refuse a record that the file does not hold whole.
// Through them a frame cut behind entry 6's first component of the zero gap
// section fails that entry after its first component.
TEST_F(Reactions, AReadThatFailsPartWayKeepsWhatWasRead) {
  job.run.num_guide_surfaces = 0;
  job.run.num_zero_gap_guides = 6;
  const builder::FrameLayout layout = job.frame_sections(builder::FileKind::force);
  const int64_t last_word = 8 * job.written_run().result_start_record +
                            builder::word_offset(layout, {K::zero_gap_guide_reaction, 1, 6, 1});
  const float first = job.value({K::zero_gap_guide_reaction, 1, 6, 1});
  builder::FileImage image = job.image(builder::FileKind::force);
  image.truncate(static_cast<std::size_t>(4 * last_word));
  ASSERT_TRUE(image.write(dir.file("job.dbf")));
  header::FormatReader& units = header::v811_database_files();
  static_cast<header::HeaderVariables&>(units) = job.written_run();
  units.force_frame_records = units.force_step_records;
  io_units::DirectAccessUnit& unit = io_units::unit(io_units::force_unit);
  ASSERT_TRUE(unit.open(dir.file("job.dbf"), io_units::database_record_length));

  std::array<float, 3> r{-1.0F, -2.0F, -3.0F};
  read_contact_reactions(units, 1, 6, r, status);
  EXPECT_EQ(r, (std::array<float, 3>{first, -2.0F, -3.0F}));
  EXPECT_EQ(status, -1);
  for (const int32_t code : {2, 4, 0}) {
    calculate_contact_reactions(units, 1, 6, code, value, status);
    EXPECT_EQ(value, -7.0F);
    EXPECT_EQ(status, -1);
  }
  calculate_zg_guide_reactions(units, 1, 6, 2, value, status);
  EXPECT_EQ(value, -7.0F);
  calculate_zg_guide_reactions(units, 1, 6, 4, value, status);
  EXPECT_EQ(value, first) << "the last component read";
  EXPECT_EQ(status, -1);
  EXPECT_EQ(error_handling::last_message(), unreadable);
  unit.close();
  static_cast<header::HeaderVariables&>(units) = header::HeaderVariables{};
}

}  // namespace
}  // namespace tmrdar::results
