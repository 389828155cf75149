// The kind letters of a step's result where no request reaches them: the
// failures and their messages, what gives nothing, the derived parameters no
// request asks for, and the rules in which the formats differ. Where each
// letter reads is held by the builder's frame readers and the request sweep.
#include <string>
#include <string_view>

#include "results/letter_lookup.h"
#include "results/written_job.h"

namespace tmrdar::results {
namespace {

using K = builder::SectionKind;
constexpr float untouched = -7777.0F;
constexpr float limit = 999.9990234375F;
constexpr std::string_view unreadable = "Unable to read record from database.";
constexpr std::string_view not_included =
    "The requested force data is not included in the database. Use the *DATABASE CONTENT keyword to manage the "
    "contents of the database.";

class LetterLookup : public WrittenJob {
 protected:
  using WrittenJob::WrittenJob;
  // Sets components 1 to 3 of an entry at a step.
  void set3(K section, int32_t step, int64_t entry, float a, float b, float c) {
    job.results.set(section, step, entry, 1, a).set(section, step, entry, 2, b).set(section, step, entry, 3, c);
  }

  float get(char letter, int32_t step, int32_t element, int32_t entry, int32_t parameter) {
    error_handling::error3(false, "", "");
    value = untouched;
    error = true;
    dabfnd(db, step, element, entry, parameter, letter, value, error);
    return value;
  }
  // The call gives nothing: no value, no error, no message; or fails with `text`.
  void nothing(char letter, int32_t step, int32_t element, int32_t entry, int32_t parameter) {
    EXPECT_EQ(get(letter, step, element, entry, parameter), untouched) << letter << parameter;
    EXPECT_FALSE(error) << letter << parameter;
    EXPECT_EQ(error_handling::last_message(), "");
  }
  void fails(std::string_view text, char letter, int32_t step, int32_t element, int32_t entry, int32_t parameter) {
    EXPECT_EQ(get(letter, step, element, entry, parameter), untouched) << letter;
    EXPECT_TRUE(error) << letter;
    EXPECT_EQ(error_handling::last_message(), "Error: Database Postprocessing: " + std::string(text));
  }

  float value = 0.0F;
  bool error = false;
};

using LetterLookupOfEachFormat = OfEachFormat<LetterLookup>;

TEST_F(LetterLookup, WhatGivesNothingAndWhatFails) {
  job.run.num_time_steps = 3, job.run.num_nodes = 4, job.run.num_boundary_conditions = 2;
  job.run.output_flags[0] = job.run.output_flags[1] = job.run.output_flags[2] = job.run.output_flags[3] = 1;
  open();
  for (const char c : {'Q', 'e', 'd', '\0'}) nothing(c, 2, 1, 1, 1);
  for (const char c : {'D', 'V', 'R', 'G', 'H', 'C', 'K'}) nothing(c, 2, 0, 1, 10);
  for (const char c : {'D', 'A', 'C', 'K'}) nothing(c, 2, 0, 1, 0);
  fails(unreadable, 'D', -100, 0, 1, 1);  // a word before the file's start

  job.force.present = false;
  job.run.output_flags[1] = job.run.output_flags[2] = 0;
  open();
  fails("A force result was requested but the Force Database (*.dbf) does not exist.", 'E', 1, 1, 1, 18);
  fails("Database does not contain nodal velocity data.", 'V', 1, 0, 1, 1);
  fails("Database does not contain nodal acceleration data.", 'A', 1, 0, 1, 1);

  job.force.present = true;
  job.motion.present = false;
  job.run.num_damper_elements = 2, job.run.output_flags[1] = job.run.output_flags[2] = 1;
  open();
  fails("Nodal velocity was requested but the Motion Database (*.dbm) does not exist.", 'V', 2, 0, 1, 1);
  fails("Nodal acceleration was requested but the Motion Database (*.dbm) does not exist.", 'A', 2, 0, 1, 1);
  for (const char c : {'Y', 'Z'}) {
    fails("Vessel motion was requested but the Motion Database (*.dbm) does not exist.", c, 2, 1, 0, 0);
  }
  for (const char c : {'O', '1', '2'}) nothing(c, 2, 1, 0, 0);
  for (const char c : {'W', 'G', 'H', 'C', 'K'}) fails(unreadable, c, 2, 0, 1, 1);
}

// A whole guide entry is read at once and kept: its other words come from
// the kept records even after the file has changed beneath them.
TEST_F(LetterLookup, GuideEntriesComeFromTheKeptRecords) {
  job.run.num_guide_surfaces = 2, job.run.output_flags[0] = 1;
  open();
  const float kept = at(K::guide_surface, 1, 1, 9);
  EXPECT_EQ(get('G', 1, 0, 1, 1), at(K::guide_surface, 1, 1, 1));
  job.results.set(K::guide_surface, 1, 1, 9, -1.0F).set(K::displacement, 1, 1, 1, -2.0F);
  job.write(dir.file("changed"));
  db.motion_file.close();
  ASSERT_TRUE(db.motion_file.open(dir.file("changed.dbm"), record_files::mode_read));
  EXPECT_EQ(get('G', 1, 0, 1, 9), kept);
  EXPECT_EQ(get('D', 1, 0, 1, 1), -2.0F) << "single words are read anew";
}

// Parameter 8 is the magnitude of components 1 to 3, which displacements
// do not have; W is the first displacement less the height of the sea
// floor under the second and third.
TEST_F(LetterLookup, TheMagnitudeOfTheFirstComponentsAndTheHeightAboveTheSeabed) {
  job.run.num_nodes = 3, job.run.num_boundary_conditions = 2;
  for (const int f : {2, 3, 4}) job.run.output_flags[static_cast<std::size_t>(f - 1)] = 1;
  set3(K::velocity, 1, 2, 1.0F, 4.0F, 8.0F);
  set3(K::reaction, 1, 2, 0.0F, -3.0F, 4.0F);
  open();
  EXPECT_EQ(get('V', 1, 0, 2, 8), 9.0F);
  EXPECT_EQ(get('R', 1, 0, 2, 8), 5.0F);
  fails("Database does not contain nodal motion data.", 'D', 1, 0, 2, 7);
  fails("Database does not contain nodal motion data.", 'W', 1, 0, 2, 0);

  job.run.output_flags[0] = 1;
  job.seabed_code = 0;  // no sea floor
  set3(K::displacement, 1, 2, 10.0F, 4.0F, 100.0F);
  open();
  nothing('D', 1, 0, 2, 8);
  EXPECT_EQ(get('W', 1, 0, 2, 0), 10.0F);
  // A plane rising at 45 degrees along x: the height under (4, 100) is 4.
  job.seabed_code = 2;
  job.model.seabed = {.points = {{0.0F, 0.0F}}, .slope = 45.0F};
  open();
  ASSERT_EQ(db.seabed_profile.geometry(), 2);
  EXPECT_EQ(get('W', 1, 0, 2, 0), 6.0F);
}

// Parameters 23 and 43 are the inverse of the resultants of 24 and 25, and
// of 38 and 39 (42), limited to 999.999; those of an absent section fail.
TEST_F(LetterLookup, InverseResultantsAndParametersOfNoSection) {
  job.run.num_time_steps = 2, job.run.num_elements = 5;
  for (const int f : {5, 9, 10, 12, 13, 18}) job.run.output_flags[static_cast<std::size_t>(f - 1)] = 1;
  const float a[] = {6.0F, 0.0F, 0.0005F, 0.0F, 1e-11F};
  const float b[] = {8.0F, 0.0F, 0.0F, -0.5F, 0.0F};
  for (int32_t e = 1; e <= 5; ++e) {
    job.results.set(K::element_24, 2, e, 2, a[e - 1]).set(K::element_25, 2, e, 2, b[e - 1]);
    job.results.set(K::element_38, 2, e, 2, b[e - 1]).set(K::element_39, 2, e, 2, a[e - 1]);
  }
  open();
  EXPECT_EQ(get('E', 2, 1, 2, 23), 0.1F);
  EXPECT_EQ(get('E', 2, 4, 2, 23), 2.0F);
  EXPECT_EQ(get('E', 2, 3, 2, 42), 0.0005F);
  EXPECT_EQ(get('E', 2, 4, 2, 43), 2.0F);
  for (const int e : {2, 3, 5}) {
    EXPECT_EQ(get('E', 2, e, 2, 23), limit) << e;
    EXPECT_EQ(get('E', 2, e, 2, 43), limit) << e;
  }
  for (const int32_t p : {18, 26, 36, 44}) nothing('E', 2, 1, 2, p);  // parameters of no section
  fails(not_included, 'E', 2, 1, 2, 11);
  job.run.output_flags[9] = 0;  // parameter 14 gone: no resultant 16
  open();
  fails(not_included, 'E', 2, 1, 2, 16);
}

// Only the newest format says that a file is missing; the others fail the
// read, or give nothing, as they would with any word they cannot reach.
TEST_P(LetterLookupOfEachFormat, AMissingFileIsReportedOnlyByTheNewestFormat) {
  const bool newest = (GetParam() == &header::v861);
  job.motion.present = false;
  job.run.output_flags[0] = 1;
  open();
  if (newest) {
    fails("Nodal motion was requested but the Motion Database (*.dbm) does not exist.", 'D', 1, 0, 1, 1);
    fails("Vessel motion was requested but the Motion Database (*.dbm) does not exist.", 'X', 1, 1, 0, 0);
  } else {
    fails(unreadable, 'D', 1, 0, 1, 1);
    nothing('X', 1, 1, 0, 0);
  }
  db.force_file_open = false;  // neither file
  if (newest) {
    fails("Water surface elevation was requested but no database (*.dbm / *.dbf) exists.", 'S', 1, 0, 0, 0);
  } else {
    nothing('S', 1, 0, 0, 0);
  }
  db.force_file_open = true;

  job.motion.present = true;
  job.force.present = false;
  open();
  fails(newest ? "A reaction was requested but the Force Database (*.dbf) does not exist." : unreadable, 'R', 1, 0, 1, 1);
}

// With 3 degrees of freedom a node, parameter 4 of a displacement is the
// fourth stored word of the entry in the newest format, and in the formats
// that count from the degrees of freedom the resultant of words 4 to 6.
TEST_P(LetterLookupOfEachFormat, NodalComponentsCountFromTheDegreesOfFreedomUpToV831) {
  job.run.num_nodes = 4, job.run.dofs_per_node = 3, job.run.output_flags[0] = 1;
  set3(K::displacement, 1, 2, 2.0F, 3.0F, 6.0F);  // words 4 to 6
  open();
  EXPECT_EQ(get('D', 1, 0, 1, 4), up_to_v831() ? 7.0F : 2.0F);
  EXPECT_EQ(get('D', 1, 0, 1, 3), at(K::displacement, 1, 1, 3));
  if (up_to_v831()) {
    nothing('D', 1, 0, 1, 7);  // beyond the resultant
  } else {
    EXPECT_EQ(get('D', 1, 0, 1, 7), 7.0F);
  }
}

// Letter E in the formats' own numbering of force parameters.
TEST_P(LetterLookupOfEachFormat, ElementForceParametersInEachFormatsNumbering) {
  job.run.num_time_steps = 1, job.run.num_elements = 5;
  for (const int f : {5, 6, 7, 9, 10, 12, 13, 18}) job.run.output_flags[static_cast<std::size_t>(f - 1)] = 1;
  job.results.set(K::element_13, 1, 1, 2, 3.0F).set(K::element_14, 1, 1, 2, 4.0F);
  job.results.set(K::element_24, 1, 1, 2, 0.6F).set(K::element_25, 1, 1, 2, 0.8F);
  open();
  const float flag_6 = at(K::element_10, 1, 1, 2);
  if (up_to_v831()) {
    EXPECT_EQ(get('E', 1, 1, 2, 2), flag_6);
    EXPECT_EQ(get('E', 1, 1, 2, 8), 5.0F) << "the resultant of flags 9 and 10";
    EXPECT_EQ(get('E', 1, 1, 2, 9), 1.0F) << "the resultant of flags 12 and 13";
    EXPECT_EQ(get('E', 1, 1, 2, 15), 1.0F) << "its inverse";
    fails(not_included, 'E', 1, 1, 2, 4);  // flag 8
    for (const int32_t p : {10, 13, 14, 23, 24, 37}) nothing('E', 1, 1, 2, p);
  } else {
    EXPECT_EQ(get('E', 1, 1, 2, 10), flag_6);
    EXPECT_EQ(get('E', 1, 1, 2, 16), 5.0F);
    EXPECT_EQ(get('E', 1, 1, 2, 17), 1.0F);
    EXPECT_EQ(get('E', 1, 1, 2, 23), 1.0F);
    for (const int32_t p : {2, 8}) nothing('E', 1, 1, 2, p);
    fails(not_included, 'E', 1, 1, 2, 15);  // flag 11
    // The sections of flag 18 only in the newest format.
    if ((GetParam() == &header::v861)) {
      EXPECT_EQ(get('E', 1, 1, 2, 37), at(K::element_37, 1, 1, 2));
    } else {
      nothing('E', 1, 1, 2, 37);
    }
  }
}

TMRDAR_FOR_EVERY_FORMAT(LetterLookupOfEachFormat);

}  // namespace
}  // namespace tmrdar::results
