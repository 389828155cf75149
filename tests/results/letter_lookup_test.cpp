// The kind letters of a step's result. Every word of every frame holds a
// value of its own, so a letter that reads a neighbouring word, another
// section or another step is caught; where a letter should read is stated
// section by section, as the file lays a frame out.
#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>

#include "builder/job.h"
#include "frame/base/error_handling.h"
#include "header/format_version.h"
#include "header/tide3_database_files.h"
#include "results/letter_lookup.h"
#include "support/scratch_dir.h"

namespace tmrdar::results {
namespace {

using builder::FILE_KIND;
constexpr FILE_KIND MOTION = FILE_KIND::MOTION;
constexpr FILE_KIND FORCE = FILE_KIND::FORCE;
constexpr float UNTOUCHED = -7777.0F;
constexpr float LIMIT = 999.9990234375F;
constexpr std::string_view NOT_INCLUDED =
    "The requested force data is not included in the database. Use the *DATABASE CONTENT keyword to manage the "
    "contents of the database.";

int64_t REC(int64_t words) { return words / 8 + 1; }
// Word k (from 1) of frame n of a file.
float CODE(FILE_KIND kind, int32_t n, int64_t k) {
  return static_cast<float>((kind == FORCE ? 8'000'000 : 0) + 500'000 * int64_t{n} + k);
}

class LetterLookup : public ::testing::Test {
 protected:
  explicit LetterLookup(const header::FORMAT_VERSION& format = header::V861)
      : job(format), db(*header::TIDE3_DATABASE_MODULE(format.DATABASE_VERSION)) {}
  void TearDown() override { db.CLOSE_TIDE3_DATABASE_FILES(); }

  int64_t RECORDS(FILE_KIND kind) const {
    return kind == MOTION ? job.MOTION_FRAME_RECORDS() : job.FORCE_FRAME_RECORDS();
  }
  // Word k of frame n (k below 1: a word before the frame). The first call
  // lays out the job's files with every frame word numbered.
  void SET(FILE_KIND kind, int32_t n, int64_t k, float value) {
    if (!laid_out) {
      laid_out = true;
      for (const FILE_KIND f : {MOTION, FORCE}) {
        (f == MOTION ? motion : force) = job.IMAGE(f);
        for (int32_t m = 1; m <= job.RUN.NUM_TIME_STEPS; ++m) {
          for (int64_t w = 1; w <= 8 * RECORDS(f); ++w) SET(f, m, w, CODE(f, m, w));
        }
      }
    }
    const int64_t q = k >= 1 ? (k - 1) / 8 : -((8 - k) / 8);  // records from the frame's start, rounded down
    (kind == MOTION ? motion : force).PUT_REAL(START(kind, n) + q, static_cast<int>(k - 8 * q), value);
  }
  int64_t START(FILE_KIND kind, int32_t n) const {
    return job.WRITTEN_RUN().RESULT_START_RECORD + (n - 1) * RECORDS(kind);
  }
  void OPEN() {
    if (!laid_out) SET(MOTION, 1, 1, CODE(MOTION, 1, 1));
    ASSERT_TRUE(!job.MOTION.PRESENT || motion.WRITE(dir.FILE("job.dbm")));
    ASSERT_TRUE(!job.FORCE.PRESENT || force.WRITE(dir.FILE("job.dbf")));
    bool failed = true;
    db.OPEN_TIDE3_DATABASE_FILES("job", dir.PATH().string() + "/", failed);
    ASSERT_FALSE(failed) << ERROR_HANDLING::LAST_MESSAGE();
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

  testing::SCRATCH_DIR dir;
  builder::JOB job;
  builder::FILE_IMAGE motion;
  builder::FILE_IMAGE force;
  bool laid_out = false;
  float value = 0.0F;
  bool error = false;
  header::TIDE3_DATABASE_FILES& db;
};

// The same lookups in each format, for the rules in which they differ.
class LetterLookupOfEachFormat : public LetterLookup, public ::testing::WithParamInterface<const header::FORMAT_VERSION*> {
 protected:
  LetterLookupOfEachFormat() : LetterLookup(*GetParam()) {}
  bool NEWEST() const { return GetParam() == &header::V861; }
  // The formats up to V831 count nodal components from DOFS_PER_NODE and
  // number force parameters as requests do.
  bool REQUEST_NUMBERED() const { return GetParam()->DATABASE_VERSION <= header::V831.DATABASE_VERSION; }
};

// A motion frame with every section, and a tail; reactions in the force
// frame. Nodes take 24 words, a whole number of records, so one more each.
// The word before each section of its motion frame, from the frame's start:
enum FULL : int64_t {
  DISPLACEMENT = 0, VELOCITY = 32, ACCELERATION = 64,
  GUIDES = 96,       // 2 surfaces, 18 words
  ZERO_GAP = 120,    // 3 guides, 18 words
  CONTACT = 144,     // 4 nodes, 32 words
  CLASH = 184,       // 3 pairs
  AUX_NODES = 192,   // 2 nodes, 12 words
  STEP_RECORD = 208  // then 2 vessels, a two-record item and an auxiliary element set
};
void FULL_MOTION(builder::JOB& job) {
  header::HEADER_VARIABLES& r = job.RUN;
  r.NUM_TIME_STEPS = 3, r.NUM_NODES = 4, r.NUM_GUIDE_SURFACES = 2, r.NUM_ZERO_GAP_GUIDES = 3;
  r.NUM_CLASH_PAIRS = 3, r.NUM_AUX_NODES = 2, r.NUM_VESSELS = 2, r.TAIL_PAIR_COUNT_A = 1;
  r.NUM_AUX_ELEMENTS = 3, r.AUX_ELEMENT_RESULT_SETS = 1, r.NUM_BOUNDARY_CONDITIONS = 2;
  r.OUTPUT_FLAGS[0] = r.OUTPUT_FLAGS[1] = r.OUTPUT_FLAGS[2] = r.OUTPUT_FLAGS[3] = 1;
  EXPECT_EQ(job.MOTION_FRAME_RECORDS(), STEP_RECORD / 8 + 6);
}

// The letters that requests reach are checked word by word with the
// requests; here the vessel letters, which none reaches, letters and
// parameters that give nothing, and the places that nothing guards.
TEST_F(LetterLookup, VesselLettersAndWhatNothingGuards) {
  FULL_MOTION(job);
  OPEN();
  // Vessel 2's record behind the step record.
  for (int64_t i = 0; i < 6; ++i) EXPECT_EQ(GET("XYZO12"[i], 2, 2, 0, 0), CODE(MOTION, 2, STEP_RECORD + 17 + i));

  for (const char c : {'Q', 'e', 'd', '\0'}) NOTHING(c, 2, 1, 1, 1);
  for (const char c : {'D', 'V', 'R', 'G', 'H', 'C', 'K'}) NOTHING(c, 2, 0, 1, 10);
  for (const char c : {'D', 'A', 'C', 'K'}) NOTHING(c, 2, 0, 1, 0);

  // Nothing guards the step or the entry: an entry of 0 or less reads ahead
  // of its section, step 0 one frame ahead of step 1, and a word before the
  // file's start fails.
  EXPECT_EQ(GET('G', 2, 0, 0, 9), CODE(MOTION, 2, GUIDES));
  EXPECT_EQ(GET('C', 2, 0, -1, 1), CODE(MOTION, 2, CONTACT - 15));
  const int64_t byte = 32 * (START(MOTION, 1) - RECORDS(MOTION));
  ASSERT_GE(byte, 0);
  float header_word = 0.0F;
  std::memcpy(&header_word, motion.BYTES().data() + byte, sizeof header_word);
  EXPECT_EQ(std::bit_cast<int32_t>(GET('D', 0, 0, 1, 1)), std::bit_cast<int32_t>(header_word));
  EXPECT_FALSE(error);
  FAILS("Unable to read record from database.", 'D', -100, 0, 1, 1);
}

// Parameter 7 is the magnitude of components 4 to 6, 8 that of 1 to 3,
// which displacements do not have. Velocities start the frame without
// displacements.
TEST_F(LetterLookup, ResultantsOfNodalEntries) {
  FULL_MOTION(job);
  job.RUN.OUTPUT_FLAGS[0] = 0;
  const auto PUT3 = [&](FILE_KIND kind, int64_t before, float a, float b, float c) {
    SET(kind, 1, before + 1, a), SET(kind, 1, before + 2, b), SET(kind, 1, before + 3, c);
  };
  PUT3(MOTION, 6, 1.0F, 4.0F, 8.0F);  // node 2's velocities open the frame
  PUT3(MOTION, 9, 2.0F, 6.0F, 9.0F);
  PUT3(MOTION, 32 + 6, 12.0F, 0.0F, 16.0F);
  PUT3(FORCE, 6, 0.0F, -3.0F, 4.0F);  // boundary condition 2
  PUT3(FORCE, 9, -6.0F, 0.0F, 8.0F);
  OPEN();
  EXPECT_EQ(GET('V', 1, 0, 2, 8), 9.0F);
  EXPECT_EQ(GET('V', 1, 0, 2, 7), 11.0F);
  EXPECT_EQ(GET('A', 1, 0, 2, 8), 20.0F);
  EXPECT_EQ(GET('R', 1, 0, 2, 8), 5.0F);
  EXPECT_EQ(GET('R', 1, 0, 2, 7), 10.0F);
  FAILS("Database does not contain nodal motion data.", 'D', 1, 0, 2, 7);
  FAILS("Database does not contain nodal motion data.", 'W', 1, 0, 2, 0);

  db.CLOSE_TIDE3_DATABASE_FILES();
  job.RUN.OUTPUT_FLAGS[0] = 1;
  laid_out = false;
  PUT3(MOTION, 6, 100.0F, 200.0F, 300.0F);
  PUT3(MOTION, 9, 2.0F, 3.0F, 6.0F);
  OPEN();
  EXPECT_EQ(GET('D', 1, 0, 2, 7), 7.0F);
  NOTHING('D', 1, 0, 2, 8);
}

TEST_F(LetterLookup, LettersOfAForceFileAlone) {
  job.MOTION.PRESENT = false;
  job.RUN.NUM_TIME_STEPS = 3, job.RUN.NUM_DAMPER_ELEMENTS = 2;
  job.RUN.OUTPUT_FLAGS[0] = job.RUN.OUTPUT_FLAGS[1] = job.RUN.OUTPUT_FLAGS[2] = 1;
  OPEN();
  FAILS("Nodal motion was requested but the Motion Database (*.dbm) does not exist.", 'D', 2, 0, 1, 1);
  FAILS("Nodal velocity was requested but the Motion Database (*.dbm) does not exist.", 'V', 2, 0, 1, 1);
  FAILS("Nodal acceleration was requested but the Motion Database (*.dbm) does not exist.", 'A', 2, 0, 1, 1);
  for (const char c : {'X', 'Y', 'Z'}) {
    FAILS("Vessel motion was requested but the Motion Database (*.dbm) does not exist.", c, 2, 1, 0, 0);
  }
  for (const char c : {'O', '1', '2'}) NOTHING(c, 2, 1, 0, 0);
  for (const char c : {'W', 'G', 'H', 'C', 'K'}) FAILS("Unable to read record from database.", c, 2, 0, 1, 1);
}

TEST_F(LetterLookup, LettersOfAMotionFileAlone) {
  job.FORCE.PRESENT = false;
  OPEN();
  FAILS("A force result was requested but the Force Database (*.dbf) does not exist.", 'E', 1, 1, 1, 18);
  FAILS("A reaction was requested but the Force Database (*.dbf) does not exist.", 'R', 1, 0, 1, 1);
  FAILS("Database does not contain nodal velocity data.", 'V', 1, 0, 1, 1);
  FAILS("Database does not contain nodal acceleration data.", 'A', 1, 0, 1, 1);
  db.MOTION_FILE_OPEN = false;  // neither file
  FAILS("Water surface elevation was requested but no database (*.dbm / *.dbf) exists.", 'S', 1, 0, 0, 0);
  for (const char c : {'T', 'P', 'B'}) NOTHING(c, 1, 0, 0, 0);
  db.MOTION_FILE_OPEN = true;
}

// Without clash pairs the auxiliary node section stands right behind the
// node contact section. W is the first displacement less the height of the
// sea floor under the second and third.
TEST_F(LetterLookup, AuxiliaryNodesAndTheHeightAboveTheSeabed) {
  job.RUN.NUM_NODES = 3, job.RUN.NUM_AUX_NODES = 3, job.RUN.OUTPUT_FLAGS[0] = 1;
  job.SEABED_CODE = 0;  // no sea floor
  SET(MOTION, 1, 7, 10.0F), SET(MOTION, 1, 8, 4.0F), SET(MOTION, 1, 9, 100.0F);
  OPEN();
  for (int32_t p = 1; p <= 3; ++p) EXPECT_EQ(GET('K', 1, 0, 3, p), CODE(MOTION, 1, 8 * REC(18) + 8 * REC(24) + 12 + p));
  EXPECT_EQ(GET('W', 1, 0, 2, 0), 10.0F);

  // A plane rising at 45 degrees along x: the height under (4, 100) is 4.
  db.CLOSE_TIDE3_DATABASE_FILES();
  job.SEABED_CODE = 2;
  job.MODEL.SEABED = {.POINTS = {{0.0F, 0.0F}}, .SLOPE = 45.0F};
  laid_out = false;
  SET(MOTION, 1, 7, 10.0F), SET(MOTION, 1, 8, 4.0F), SET(MOTION, 1, 9, 100.0F);
  OPEN();
  ASSERT_EQ(db.SEABED_PROFILE.GEOMETRY(), 2);
  EXPECT_EQ(GET('W', 1, 0, 2, 0), 6.0F);
}

// A whole guide entry is read at once and kept: the entry's other words
// come from the kept records even after the file has changed beneath them.
TEST_F(LetterLookup, GuideEntriesComeFromTheKeptRecords) {
  FULL_MOTION(job);
  OPEN();
  EXPECT_EQ(GET('G', 1, 0, 1, 1), CODE(MOTION, 1, GUIDES + 1));
  for (int64_t k = 1; k <= 8 * RECORDS(MOTION); ++k) SET(MOTION, 1, k, -CODE(MOTION, 1, k));
  ASSERT_TRUE(motion.WRITE(dir.FILE("changed.dbm")));
  db.MOTION_FILE.CLOSE();
  ASSERT_TRUE(db.MOTION_FILE.OPEN(dir.FILE("changed.dbm"), MOD_FILE::MODE_READ));
  for (int32_t p = 2; p <= 9; ++p) EXPECT_EQ(GET('G', 1, 0, 1, p), CODE(MOTION, 1, GUIDES + p));
  EXPECT_EQ(GET('H', 1, 0, 1, 6), -CODE(MOTION, 1, ZERO_GAP + 6)) << "another entry is read anew";
  EXPECT_EQ(GET('C', 1, 0, 2, 8), -CODE(MOTION, 1, CONTACT + 16));
  EXPECT_EQ(GET('D', 1, 0, 1, 1), -CODE(MOTION, 1, DISPLACEMENT + 1)) << "single words are read anew";
}

// E: stored words through the element force lookup, the resultant of two
// of them, and its inverse limited to 999.999.
TEST_F(LetterLookup, ElementForceParameters) {
  job.RUN.NUM_TIME_STEPS = 2, job.RUN.NUM_ELEMENTS = 5;  // 16 words a section
  for (const int f : {5, 9, 10, 12, 13, 18}) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
  // Location l of element e in the i-th section present: 5, 9, 10, 12, 13,
  // then the sub-sections of 18.
  const auto AT = [](int i, int e, int l = 2) { return 16 * i + 3 * (e - 1) + l; };
  const auto PUT2 = [&](int i, int e, float a, float b) { SET(FORCE, 2, AT(i, e), a), SET(FORCE, 2, AT(i + 1, e), b); };
  PUT2(1, 1, 3.0F, -4.0F);  // parameters 13 and 14
  PUT2(3, 1, 6.0F, 8.0F);   // 24 and 25
  PUT2(3, 2, 0.0F, 0.0F);
  PUT2(3, 3, 0.0005F, 0.0F);
  PUT2(3, 4, 0.0F, -0.5F);
  PUT2(3, 5, 1e-11F, 0.0F);
  for (int e = 1; e <= 5; ++e) PUT2(6, e, e == 4 ? 0.25F : e == 5 ? 1e-11F : 0.0F, e == 3 ? 0.0005F : 0.0F);  // 38, 39
  OPEN();
  EXPECT_EQ(GET('E', 2, 1, 2, 9), CODE(FORCE, 2, AT(0, 1)));
  EXPECT_EQ(GET('E', 2, 5, 3, 24), CODE(FORCE, 2, AT(3, 5, 3)));
  EXPECT_EQ(GET('E', 2, 5, 3, 37), CODE(FORCE, 2, AT(5, 5, 3)));
  EXPECT_EQ(GET('E', 2, 1, 2, 16), 5.0F);
  EXPECT_EQ(GET('E', 2, 1, 2, 17), 10.0F);
  EXPECT_EQ(GET('E', 2, 1, 2, 23), 0.1F);
  EXPECT_EQ(GET('E', 2, 4, 2, 23), 2.0F);
  for (const int e : {2, 3, 5}) EXPECT_EQ(GET('E', 2, e, 2, 23), LIMIT) << e;
  EXPECT_EQ(GET('E', 2, 3, 2, 42), 0.0005F);
  EXPECT_EQ(GET('E', 2, 4, 2, 43), 4.0F);
  for (const int e : {2, 3, 5}) EXPECT_EQ(GET('E', 2, e, 2, 43), LIMIT) << e;
  for (int32_t p = 18; p <= 36; ++p) {
    if (p != 23 && p != 24 && p != 25) {
      NOTHING('E', 2, 1, 2, p);
    }
  }
  for (const int32_t p : {0, 8, 44}) NOTHING('E', 2, 1, 2, p);
  FAILS(NOT_INCLUDED, 'E', 2, 1, 2, 11);
  job.RUN.OUTPUT_FLAGS[9] = 0;  // parameter 14 gone: no resultant 16
  db.CLOSE_TIDE3_DATABASE_FILES();
  laid_out = false;
  OPEN();
  FAILS(NOT_INCLUDED, 'E', 2, 1, 2, 16);
}

// Only the newest format says that a file is missing; the others fail the
// read, or give nothing, as they would with any word they cannot reach.
TEST_P(LetterLookupOfEachFormat, AMissingFileIsReportedOnlyByTheNewestFormat) {
  const std::string read_failure = "Unable to read record from database.";
  job.MOTION.PRESENT = false;
  job.RUN.OUTPUT_FLAGS[0] = 1;
  OPEN();
  if (NEWEST()) {
    FAILS("Nodal motion was requested but the Motion Database (*.dbm) does not exist.", 'D', 1, 0, 1, 1);
    FAILS("Vessel motion was requested but the Motion Database (*.dbm) does not exist.", 'X', 1, 1, 0, 0);
  } else {
    FAILS(read_failure, 'D', 1, 0, 1, 1);
    NOTHING('X', 1, 1, 0, 0);
  }
  db.FORCE_FILE_OPEN = false;  // neither file
  if (NEWEST()) {
    FAILS("Water surface elevation was requested but no database (*.dbm / *.dbf) exists.", 'S', 1, 0, 0, 0);
  } else {
    NOTHING('S', 1, 0, 0, 0);
  }
  db.FORCE_FILE_OPEN = true;

  db.CLOSE_TIDE3_DATABASE_FILES();
  std::filesystem::remove(dir.FILE("job.dbf"));
  job.MOTION.PRESENT = true;
  job.FORCE.PRESENT = false;
  laid_out = false;
  OPEN();
  if (NEWEST()) {
    FAILS("A reaction was requested but the Force Database (*.dbf) does not exist.", 'R', 1, 0, 1, 1);
  } else {
    FAILS(read_failure, 'R', 1, 0, 1, 1);
  }
}

// With 3 degrees of freedom a node, parameter 4 of a displacement is the
// fourth stored word of the entry in the newest format, and in the formats
// that count from the degrees of freedom the resultant of words 4 to 6.
TEST_P(LetterLookupOfEachFormat, NodalComponentsCountFromTheDegreesOfFreedomUpToV831) {
  job.RUN.NUM_NODES = 4, job.RUN.DOFS_PER_NODE = 3, job.RUN.OUTPUT_FLAGS[0] = 1;
  SET(MOTION, 1, 4, 2.0F), SET(MOTION, 1, 5, 3.0F), SET(MOTION, 1, 6, 6.0F);  // words 4 to 6: node 2's
  OPEN();
  EXPECT_EQ(GET('D', 1, 0, 1, 4), REQUEST_NUMBERED() ? 7.0F : 2.0F);
  EXPECT_EQ(GET('D', 1, 0, 1, 3), CODE(MOTION, 1, 3));
  if (REQUEST_NUMBERED()) {
    NOTHING('D', 1, 0, 1, 7);  // beyond the resultant
  } else {
    EXPECT_EQ(GET('D', 1, 0, 1, 7), 7.0F);
  }
}

// Letter E in the formats' own numbering of force parameters, on sections
// of 16 words: flags 5 to 7, 9, 10, 12 and 13 in that order.
TEST_P(LetterLookupOfEachFormat, ElementForceParametersInEachFormatsNumbering) {
  job.RUN.NUM_TIME_STEPS = 1, job.RUN.NUM_ELEMENTS = 5;
  for (const int f : {5, 6, 7, 9, 10, 12, 13, 18}) job.RUN.OUTPUT_FLAGS[static_cast<std::size_t>(f - 1)] = 1;
  const auto AT = [](int i, int e = 1, int l = 2) { return 16 * i + 3 * (e - 1) + l; };  // i-th section present
  SET(FORCE, 1, AT(3), 3.0F), SET(FORCE, 1, AT(4), 4.0F);  // flags 9 and 10
  SET(FORCE, 1, AT(5), 0.6F), SET(FORCE, 1, AT(6), 0.8F);  // flags 12 and 13
  OPEN();
  if (REQUEST_NUMBERED()) {
    EXPECT_EQ(GET('E', 1, 1, 2, 2), CODE(FORCE, 1, AT(1))) << "flag 6's section";
    EXPECT_EQ(GET('E', 1, 1, 2, 8), 5.0F) << "the resultant of flags 9 and 10";
    EXPECT_EQ(GET('E', 1, 1, 2, 9), 1.0F) << "the resultant of flags 12 and 13";
    EXPECT_EQ(GET('E', 1, 1, 2, 15), 1.0F) << "its inverse";
    EXPECT_EQ(GET('E', 1, 1, 2, 16), 0.6F);
    EXPECT_EQ(GET('E', 1, 1, 2, 17), 0.8F);
    FAILS(NOT_INCLUDED, 'E', 1, 1, 2, 4);  // flag 8
    for (const int32_t p : {10, 13, 14, 23, 24, 37}) NOTHING('E', 1, 1, 2, p);
  } else {
    EXPECT_EQ(GET('E', 1, 1, 2, 10), CODE(FORCE, 1, AT(1))) << "flag 6's section";
    EXPECT_EQ(GET('E', 1, 1, 2, 16), 5.0F);
    EXPECT_EQ(GET('E', 1, 1, 2, 17), 1.0F);
    EXPECT_EQ(GET('E', 1, 1, 2, 23), 1.0F);
    for (const int32_t p : {2, 8}) NOTHING('E', 1, 1, 2, p);
    FAILS(NOT_INCLUDED, 'E', 1, 1, 2, 15);  // flag 11
    // The sections of flag 18 only in the newest format.
    if (NEWEST()) {
      EXPECT_EQ(GET('E', 1, 1, 2, 37), CODE(FORCE, 1, AT(7)));
    } else {
      NOTHING('E', 1, 1, 2, 37);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, LetterLookupOfEachFormat, ::testing::ValuesIn(header::FORMAT_VERSIONS),
                         [](const auto& info) { return std::string(info.param->NAME); });

}  // namespace
}  // namespace tmrdar::results
