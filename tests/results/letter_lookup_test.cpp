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

using K = builder::SECTION_KIND;
constexpr float UNTOUCHED = -7777.0F;
constexpr float LIMIT = 999.9990234375F;
constexpr std::string_view UNREADABLE = "Unable to read record from database.";
constexpr std::string_view NOT_INCLUDED =
    "The requested force data is not included in the database. Use the *DATABASE CONTENT keyword to manage the "
    "contents of the database.";

class LetterLookup : public WRITTEN_JOB {
 protected:
  using WRITTEN_JOB::WRITTEN_JOB;
  // Sets components 1 to 3 of an entry at a step.
  void SET3(K section, int32_t step, int64_t entry, float a, float b, float c) {
    job.RESULTS.SET(section, step, entry, 1, a).SET(section, step, entry, 2, b).SET(section, step, entry, 3, c);
  }

  float GET(char letter, int32_t step, int32_t element, int32_t entry, int32_t parameter) {
    ERROR_HANDLING::ERROR3(false, "", "");
    value = UNTOUCHED;
    error = true;
    DABFND(db, step, element, entry, parameter, letter, value, error);
    return value;
  }
  // The call gives nothing: no value, no error, no message; or fails with `text`.
  void NOTHING(char letter, int32_t step, int32_t element, int32_t entry, int32_t parameter) {
    EXPECT_EQ(GET(letter, step, element, entry, parameter), UNTOUCHED) << letter << parameter;
    EXPECT_FALSE(error) << letter << parameter;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "");
  }
  void FAILS(std::string_view text, char letter, int32_t step, int32_t element, int32_t entry, int32_t parameter) {
    EXPECT_EQ(GET(letter, step, element, entry, parameter), UNTOUCHED) << letter;
    EXPECT_TRUE(error) << letter;
    EXPECT_EQ(ERROR_HANDLING::LAST_MESSAGE(), "Error: Database Postprocessing: " + std::string(text));
  }

  float value = 0.0F;
  bool error = false;
};

using LetterLookupOfEachFormat = OF_EACH_FORMAT<LetterLookup>;

TEST_F(LetterLookup, WhatGivesNothingAndWhatFails) {
  job.RUN.NUM_TIME_STEPS = 3, job.RUN.NUM_NODES = 4, job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
  job.RUN.OUTPUT_FLAGS[0] = job.RUN.OUTPUT_FLAGS[1] = job.RUN.OUTPUT_FLAGS[2] = job.RUN.OUTPUT_FLAGS[3] = 1;
  OPEN();
  for (const char c : {'Q', 'e', 'd', '\0'}) NOTHING(c, 2, 1, 1, 1);
  for (const char c : {'D', 'V', 'R', 'G', 'H', 'C', 'K'}) NOTHING(c, 2, 0, 1, 10);
  for (const char c : {'D', 'A', 'C', 'K'}) NOTHING(c, 2, 0, 1, 0);
  FAILS(UNREADABLE, 'D', -100, 0, 1, 1);  // a word before the file's start

  job.FORCE.PRESENT = false;
  job.RUN.OUTPUT_FLAGS[1] = job.RUN.OUTPUT_FLAGS[2] = 0;
  OPEN();
  FAILS("A force result was requested but the Force Database (*.dbf) does not exist.", 'E', 1, 1, 1, 18);
  FAILS("Database does not contain nodal velocity data.", 'V', 1, 0, 1, 1);
  FAILS("Database does not contain nodal acceleration data.", 'A', 1, 0, 1, 1);

  job.FORCE.PRESENT = true;
  job.MOTION.PRESENT = false;
  job.RUN.NUM_DAMPER_ELEMENTS = 2, job.RUN.OUTPUT_FLAGS[1] = job.RUN.OUTPUT_FLAGS[2] = 1;
  OPEN();
  FAILS("Nodal velocity was requested but the Motion Database (*.dbm) does not exist.", 'V', 2, 0, 1, 1);
  FAILS("Nodal acceleration was requested but the Motion Database (*.dbm) does not exist.", 'A', 2, 0, 1, 1);
  for (const char c : {'Y', 'Z'}) {
    FAILS("Vessel motion was requested but the Motion Database (*.dbm) does not exist.", c, 2, 1, 0, 0);
  }
  for (const char c : {'O', '1', '2'}) NOTHING(c, 2, 1, 0, 0);
  for (const char c : {'W', 'G', 'H', 'C', 'K'}) FAILS(UNREADABLE, c, 2, 0, 1, 1);
}

// A whole guide entry is read at once and kept: its other words come from
// the kept records even after the file has changed beneath them.
TEST_F(LetterLookup, GuideEntriesComeFromTheKeptRecords) {
  job.RUN.NUM_GUIDE_SURFACES = 2, job.RUN.OUTPUT_FLAGS[0] = 1;
  OPEN();
  const float kept = AT(K::GUIDE_SURFACE, 1, 1, 9);
  EXPECT_EQ(GET('G', 1, 0, 1, 1), AT(K::GUIDE_SURFACE, 1, 1, 1));
  job.RESULTS.SET(K::GUIDE_SURFACE, 1, 1, 9, -1.0F).SET(K::DISPLACEMENT, 1, 1, 1, -2.0F);
  job.WRITE(dir.FILE("changed"));
  db.MOTION_FILE.CLOSE();
  ASSERT_TRUE(db.MOTION_FILE.OPEN(dir.FILE("changed.dbm"), MOD_FILE::MODE_READ));
  EXPECT_EQ(GET('G', 1, 0, 1, 9), kept);
  EXPECT_EQ(GET('D', 1, 0, 1, 1), -2.0F) << "single words are read anew";
}

// Parameter 8 is the magnitude of components 1 to 3, which displacements
// do not have; W is the first displacement less the height of the sea
// floor under the second and third.
TEST_F(LetterLookup, TheMagnitudeOfTheFirstComponentsAndTheHeightAboveTheSeabed) {
  job.RUN.NUM_NODES = 3, job.RUN.NUM_BOUNDARY_CONDITIONS = 2;
  for (const int f : {2, 3, 4}) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
  SET3(K::VELOCITY, 1, 2, 1.0F, 4.0F, 8.0F);
  SET3(K::REACTION, 1, 2, 0.0F, -3.0F, 4.0F);
  OPEN();
  EXPECT_EQ(GET('V', 1, 0, 2, 8), 9.0F);
  EXPECT_EQ(GET('R', 1, 0, 2, 8), 5.0F);
  FAILS("Database does not contain nodal motion data.", 'D', 1, 0, 2, 7);
  FAILS("Database does not contain nodal motion data.", 'W', 1, 0, 2, 0);

  job.RUN.OUTPUT_FLAGS[0] = 1;
  job.SEABED_CODE = 0;  // no sea floor
  SET3(K::DISPLACEMENT, 1, 2, 10.0F, 4.0F, 100.0F);
  OPEN();
  NOTHING('D', 1, 0, 2, 8);
  EXPECT_EQ(GET('W', 1, 0, 2, 0), 10.0F);
  // A plane rising at 45 degrees along x: the height under (4, 100) is 4.
  job.SEABED_CODE = 2;
  job.MODEL.SEABED = {.POINTS = {{0.0F, 0.0F}}, .SLOPE = 45.0F};
  OPEN();
  ASSERT_EQ(db.SEABED_PROFILE.GEOMETRY(), 2);
  EXPECT_EQ(GET('W', 1, 0, 2, 0), 6.0F);
}

// Parameters 23 and 43 are the inverse of the resultants of 24 and 25, and
// of 38 and 39 (42), limited to 999.999; those of an absent section fail.
TEST_F(LetterLookup, InverseResultantsAndParametersOfNoSection) {
  job.RUN.NUM_TIME_STEPS = 2, job.RUN.NUM_ELEMENTS = 5;
  for (const int f : {5, 9, 10, 12, 13, 18}) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
  const float a[] = {6.0F, 0.0F, 0.0005F, 0.0F, 1e-11F};
  const float b[] = {8.0F, 0.0F, 0.0F, -0.5F, 0.0F};
  for (int32_t e = 1; e <= 5; ++e) {
    job.RESULTS.SET(K::ELEMENT_24, 2, e, 2, a[e - 1]).SET(K::ELEMENT_25, 2, e, 2, b[e - 1]);
    job.RESULTS.SET(K::ELEMENT_38, 2, e, 2, b[e - 1]).SET(K::ELEMENT_39, 2, e, 2, a[e - 1]);
  }
  OPEN();
  EXPECT_EQ(GET('E', 2, 1, 2, 23), 0.1F);
  EXPECT_EQ(GET('E', 2, 4, 2, 23), 2.0F);
  EXPECT_EQ(GET('E', 2, 3, 2, 42), 0.0005F);
  EXPECT_EQ(GET('E', 2, 4, 2, 43), 2.0F);
  for (const int e : {2, 3, 5}) {
    EXPECT_EQ(GET('E', 2, e, 2, 23), LIMIT) << e;
    EXPECT_EQ(GET('E', 2, e, 2, 43), LIMIT) << e;
  }
  for (const int32_t p : {18, 26, 36, 44}) NOTHING('E', 2, 1, 2, p);  // parameters of no section
  FAILS(NOT_INCLUDED, 'E', 2, 1, 2, 11);
  job.RUN.OUTPUT_FLAGS[9] = 0;  // parameter 14 gone: no resultant 16
  OPEN();
  FAILS(NOT_INCLUDED, 'E', 2, 1, 2, 16);
}

// Only the newest format says that a file is missing; the others fail the
// read, or give nothing, as they would with any word they cannot reach.
TEST_P(LetterLookupOfEachFormat, AMissingFileIsReportedOnlyByTheNewestFormat) {
  const bool newest = (GetParam() == &header::V861);
  job.MOTION.PRESENT = false;
  job.RUN.OUTPUT_FLAGS[0] = 1;
  OPEN();
  if (newest) {
    FAILS("Nodal motion was requested but the Motion Database (*.dbm) does not exist.", 'D', 1, 0, 1, 1);
    FAILS("Vessel motion was requested but the Motion Database (*.dbm) does not exist.", 'X', 1, 1, 0, 0);
  } else {
    FAILS(UNREADABLE, 'D', 1, 0, 1, 1);
    NOTHING('X', 1, 1, 0, 0);
  }
  db.FORCE_FILE_OPEN = false;  // neither file
  if (newest) {
    FAILS("Water surface elevation was requested but no database (*.dbm / *.dbf) exists.", 'S', 1, 0, 0, 0);
  } else {
    NOTHING('S', 1, 0, 0, 0);
  }
  db.FORCE_FILE_OPEN = true;

  job.MOTION.PRESENT = true;
  job.FORCE.PRESENT = false;
  OPEN();
  FAILS(newest ? "A reaction was requested but the Force Database (*.dbf) does not exist." : UNREADABLE, 'R', 1, 0, 1, 1);
}

// With 3 degrees of freedom a node, parameter 4 of a displacement is the
// fourth stored word of the entry in the newest format, and in the formats
// that count from the degrees of freedom the resultant of words 4 to 6.
TEST_P(LetterLookupOfEachFormat, NodalComponentsCountFromTheDegreesOfFreedomUpToV831) {
  job.RUN.NUM_NODES = 4, job.RUN.DOFS_PER_NODE = 3, job.RUN.OUTPUT_FLAGS[0] = 1;
  SET3(K::DISPLACEMENT, 1, 2, 2.0F, 3.0F, 6.0F);  // words 4 to 6
  OPEN();
  EXPECT_EQ(GET('D', 1, 0, 1, 4), UP_TO_V831() ? 7.0F : 2.0F);
  EXPECT_EQ(GET('D', 1, 0, 1, 3), AT(K::DISPLACEMENT, 1, 1, 3));
  if (UP_TO_V831()) {
    NOTHING('D', 1, 0, 1, 7);  // beyond the resultant
  } else {
    EXPECT_EQ(GET('D', 1, 0, 1, 7), 7.0F);
  }
}

// Letter E in the formats' own numbering of force parameters.
TEST_P(LetterLookupOfEachFormat, ElementForceParametersInEachFormatsNumbering) {
  job.RUN.NUM_TIME_STEPS = 1, job.RUN.NUM_ELEMENTS = 5;
  for (const int f : {5, 6, 7, 9, 10, 12, 13, 18}) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
  job.RESULTS.SET(K::ELEMENT_13, 1, 1, 2, 3.0F).SET(K::ELEMENT_14, 1, 1, 2, 4.0F);
  job.RESULTS.SET(K::ELEMENT_24, 1, 1, 2, 0.6F).SET(K::ELEMENT_25, 1, 1, 2, 0.8F);
  OPEN();
  const float flag_6 = AT(K::ELEMENT_10, 1, 1, 2);
  if (UP_TO_V831()) {
    EXPECT_EQ(GET('E', 1, 1, 2, 2), flag_6);
    EXPECT_EQ(GET('E', 1, 1, 2, 8), 5.0F) << "the resultant of flags 9 and 10";
    EXPECT_EQ(GET('E', 1, 1, 2, 9), 1.0F) << "the resultant of flags 12 and 13";
    EXPECT_EQ(GET('E', 1, 1, 2, 15), 1.0F) << "its inverse";
    FAILS(NOT_INCLUDED, 'E', 1, 1, 2, 4);  // flag 8
    for (const int32_t p : {10, 13, 14, 23, 24, 37}) NOTHING('E', 1, 1, 2, p);
  } else {
    EXPECT_EQ(GET('E', 1, 1, 2, 10), flag_6);
    EXPECT_EQ(GET('E', 1, 1, 2, 16), 5.0F);
    EXPECT_EQ(GET('E', 1, 1, 2, 17), 1.0F);
    EXPECT_EQ(GET('E', 1, 1, 2, 23), 1.0F);
    for (const int32_t p : {2, 8}) NOTHING('E', 1, 1, 2, p);
    FAILS(NOT_INCLUDED, 'E', 1, 1, 2, 15);  // flag 11
    // The sections of flag 18 only in the newest format.
    if ((GetParam() == &header::V861)) {
      EXPECT_EQ(GET('E', 1, 1, 2, 37), AT(K::ELEMENT_37, 1, 1, 2));
    } else {
      NOTHING('E', 1, 1, 2, 37);
    }
  }
}

TMRDAR_FOR_EVERY_FORMAT(LetterLookupOfEachFormat);

}  // namespace
}  // namespace tmrdar::results
