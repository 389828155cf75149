// Opening a job through the exports, as a host does.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

#include "builder/job.h"
#include "frame/base/header_data.h"
#include "frame/base/io_units.h"
#include "frame/exports/library_state.h"
#include "header/every_block_job.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::frame {
namespace {

using builder::JOB;
using testing::SCRATCH_DIR;

// What one GetDatabaseInfo call gave back.
struct OPENED {
  int32_t result = 0;
  int32_t motion = 0;
  int32_t force = 0;
  std::array<int32_t, 5> motion_words{9, 9, 9, 9, 9};
  std::array<int32_t, 5> force_words{9, 9, 9, 9, 9};
  std::vector<int32_t> dims;
  bool operator==(const OPENED&) const = default;
};

OPENED OPEN(const std::string& path, int32_t n = 14) {
  OPENED o;
  o.dims.assign(static_cast<std::size_t>(n), 7);
  o.result = GetDatabaseInfo(&o.motion, &o.force, o.motion_words.data(), o.force_words.data(), &n,
                             o.dims.data(), path.data(), static_cast<int64_t>(path.size()));
  return o;
}

bool UNITS_OPEN() {
  return IO_UNITS::UNIT(IO_UNITS::MOTION_UNIT).IS_OPEN() || IO_UNITS::UNIT(IO_UNITS::FORCE_UNIT).IS_OPEN();
}

class DatabaseInfo : public ::testing::Test {
 protected:
  void SetUp() override {
    XIT();
    DllMain(nullptr, 1, nullptr);
  }
  void TearDown() override { XIT(); }

  std::string STEM() const { return dir.FILE("job"); }

  SCRATCH_DIR dir;
};

TEST_F(DatabaseInfo, AnyExtensionOpensTheSamePairOfFiles) {
  JOB job;
  job.MOTION.FIRST.FILE_WORDS = {1, 2, 3, 4, 5};
  job.FORCE.FIRST.FILE_WORDS = {6, 7, 8, 9, 10};
  job.RUN.NUM_TIME_STEPS = 40;
  job.RUN.PIP_NODES_PER_PAIR = 2;
  job.RUN.NUM_ELEMENTS = 3;
  job.RUN.NUM_NODES = 4;
  job.RUN.NUM_LABELS = 7;
  job.RUN.NUM_PIP_CONNECTIONS = 12;
  job.RUN.NUM_CLASH_PAIRS = 13;
  job.RUN.NUM_NONLINEAR_E_TABLES = 14;
  job.WRITE(STEM());
  for (const std::string& path : {STEM(), STEM() + ".dbm", STEM() + ".XYZ", STEM() + ".dbf   "}) {
    EXPECT_EQ(OPEN(path), (OPENED{0, 13, 13, {1, 2, 3, 4, 5}, {6, 7, 8, 9, 10},
                                  {40, 2, 3, 4, 0, 0, 7, 0, 0, 0, 0, 12, 13, 14}}))
        << path;
  }
  EXPECT_EQ(LIBRARY().LIBRARY_MOTION_CODE, 13);
  EXPECT_EQ(LIBRARY().LIBRARY_FORCE_CODE, 13);
  EXPECT_TRUE(UNITS_OPEN());
  EXPECT_TRUE(header::V861_TIDE3_DATABASE_FILES().MOTION_FILE.IS_OPEN());
}

TEST_F(DatabaseInfo, ABlankPathResetsTheOutputsAndFails) {
  EXPECT_EQ(OPEN("    ", 16), (OPENED{-1, -1, -1, {}, {}, std::vector<int32_t>(16, -1)}));
  int32_t n = 0, motion = 5;
  EXPECT_EQ(GetDatabaseInfo(&motion, nullptr, nullptr, nullptr, &n, nullptr, nullptr, 10), -1);
  EXPECT_EQ(motion, -1);
}

TEST_F(DatabaseInfo, OnlyTheForceFileSelectsByItsCode) {
  JOB job;
  job.MOTION.PRESENT = false;
  job.FORCE.FIRST.ANALYSIS_DETAIL_2 = 31;
  job.WRITE(STEM());
  const OPENED o = OPEN(STEM());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force, o.motion_words), std::tuple(0, 0, 13, std::array<int32_t, 5>{}));
  int32_t d1 = -1, d2 = -1;
  float d3 = -1.0F;
  EXPECT_EQ(GetAnalysisDetails(&d1, &d2, &d3, nullptr, 0), 0);
  EXPECT_EQ(d2, 31) << "the header was read from the force file";
  const header::TIDE3_DATABASE_FILES& db = header::V861_TIDE3_DATABASE_FILES();
  EXPECT_EQ(std::pair(db.FORCE_DB_VERSION, db.MOTION_DB_VERSION), std::pair(13, 0));
}

TEST_F(DatabaseInfo, MissingEmptyAndUnopenableFilesGiveTheirCodes) {
  OPENED o = OPEN(STEM());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(-3, 0, 0));
  dir.WRITE("job.dbm", "");
  o = OPEN(STEM());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(-3, -1, 0));

  // Fewer than 32 bytes hold no first record.
  dir.WRITE("job.dbm", std::string(31, '\x0d'));
  EXPECT_EQ(OPEN(STEM()).motion, -1);

  std::filesystem::remove(STEM() + ".dbm");
  std::filesystem::create_directory(STEM() + ".dbm");
  JOB job;
  job.MOTION.PRESENT = false;
  job.WRITE(STEM());
  o = OPEN(STEM());
  // A directory named like the motion file cannot be opened; the job goes
  // on with the force file.
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(0, -1, 13));

  // The path of a directory names a job of that directory's name beside it.
  EXPECT_EQ(OPEN(dir.PATH().string()).result, -3);
  EXPECT_EQ(OPEN(dir.PATH().string() + "/").result, -3);
}

TEST_F(DatabaseInfo, TwoVersionsOrAnUnknownCodeOrCodeOneSelectNothing) {
  JOB job;
  job.FORCE.FIRST.DATABASE_VERSION = 11;
  job.WRITE(STEM());
  OPENED o = OPEN(STEM());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(-3, 13, 11));
  EXPECT_EQ(std::pair(LIBRARY().LIBRARY_MOTION_CODE, LIBRARY().LIBRARY_FORCE_CODE), std::pair(0, 0));
  EXPECT_FALSE(UNITS_OPEN());

  job.FORCE.FIRST.DATABASE_VERSION = 99;
  job.MOTION.PRESENT = false;
  std::filesystem::remove(STEM() + ".dbm");
  job.WRITE(STEM());
  o = OPEN(STEM());
  EXPECT_EQ(std::tuple(o.result, o.force, LIBRARY().LIBRARY_FORCE_CODE), std::tuple(-3, 99, 0));

  // Code 1 is refused but remembered.
  job.MOTION.PRESENT = true;
  job.MOTION.FIRST.DATABASE_VERSION = job.FORCE.FIRST.DATABASE_VERSION = 1;
  job.WRITE(STEM());
  o = OPEN(STEM());
  EXPECT_EQ(std::tuple(o.result, o.motion, LIBRARY().LIBRARY_MOTION_CODE, LIBRARY().LIBRARY_FORCE_CODE),
            std::tuple(-3, 1, 1, 1));
  EXPECT_FALSE(UNITS_OPEN());
}

TEST_F(DatabaseInfo, AShortDimensionArrayShutsTheJobAgain) {
  JOB().WRITE(STEM());
  const OPENED o = OPEN(STEM(), 13);
  EXPECT_EQ(std::tuple(o.result, o.motion, o.dims), std::tuple(14, 13, std::vector<int32_t>(13, -1)));
  EXPECT_FALSE(UNITS_OPEN());
  EXPECT_EQ(OPEN(STEM(), 0).result, 14);
}

TEST_F(DatabaseInfo, AFailedHeaderStillOpensTheJob) {
  builder::FILE_IMAGE image = JOB().IMAGE(builder::FILE_KIND::MOTION);
  image.PUT_INT(1, 1, 1'000'000);  // a directory count the file cannot hold
  ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
  const OPENED o = OPEN(STEM());
  EXPECT_EQ(std::pair(o.result, o.dims), std::pair(0, std::vector<int32_t>(14, 0)));
  // Without time steps the header stops behind the run control blocks, and
  // the dimensions read so far are handed on.
  JOB job;
  job.RUN.NUM_TIME_STEPS = 0;
  job.RUN.NUM_ELEMENTS = 5;
  job.RUN.NUM_NODES = 6;
  job.WRITE(STEM());
  EXPECT_EQ(OPEN(STEM()).dims, (std::vector<int32_t>{0, 0, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

// One job written in each format opens through the exports with the same
// dimensions, details and title, and the codes are the format's own.
TEST_F(DatabaseInfo, EveryFormatOpensTheSameJob) {
  for (const header::FORMAT_VERSION* format : header::FORMAT_VERSIONS) {
    SCOPED_TRACE(format->NAME);
    JOB job = header::EVERY_BLOCK_JOB(*format);
    job.RUN.NUM_CLASH_PAIRS = 3;
    job.RUN.NUM_PIP_CONNECTIONS = 2;
    job.RUN.ANALYSIS_DETAIL_1 = 4;
    job.RUN.ANALYSIS_DETAIL_3 = 2.5F;
    job.MOTION.FIRST.ANALYSIS_DETAIL_2 = 5;
    job.RUN.ANALYSIS_TITLE.ASSIGN("Archived riser");
    job.WRITE(STEM());
    const OPENED o = OPEN(STEM());
    EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(0, format->DATABASE_VERSION, format->DATABASE_VERSION));
    EXPECT_EQ(o.dims, (std::vector<int32_t>{1, 2, 9, 5, 1, 2, 2, 3, 2, 2, 2, 2, 3, 2}));
    int32_t d1 = 0, d2 = 0;
    float d3 = 0.0F;
    std::string title(14, '#');
    EXPECT_EQ(GetAnalysisDetails(&d1, &d2, &d3, title.data(), 14), 0);
    EXPECT_EQ(std::tuple(d1, d2, d3, title), std::tuple(4, 5, 2.5F, std::string("Archived riser")));
    XIT();
  }
}

TEST_F(DatabaseInfo, DamagedHeadersOpenOrFailButNeverCrash) {
  // Words of the first, size and directory records replaced by values a
  // damaged file may hold: huge, negative, zero, or pointing past the end.
  const builder::FILE_IMAGE good = JOB().IMAGE(builder::FILE_KIND::MOTION);
  const std::array<int32_t, 9> hostile{0, -1, 1, 2, 13, 2'147'483'647, -2'147'483'647 - 1, 1'000'000, 9};
  uint32_t seed = 12345;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  for (int round = 0; round < 200; ++round) {
    builder::FILE_IMAGE image = good;
    for (int change = 0; change < 3; ++change) {
      const auto record = static_cast<int64_t>(next() % 10);
      const auto word = static_cast<int>(next() % 8) + 1;
      image.PUT_INT(record, word, hostile[next() % hostile.size()]);
    }
    if (round % 4 == 0) image.TRUNCATE(next() % 400);
    ASSERT_TRUE(image.WRITE(STEM() + ".dbm"));
    const OPENED o = OPEN(STEM());
    EXPECT_TRUE(o.result == 0 || o.result == -3) << "round " << round << " gave " << o.result;
  }
}

TEST_F(DatabaseInfo, XitClosesOnceAndKeepsTheCodes) {
  JOB().WRITE(STEM());
  ASSERT_EQ(OPEN(STEM()).result, 0);
  EXPECT_EQ(XIT(), 0);
  EXPECT_FALSE(UNITS_OPEN());
  EXPECT_EQ(LIBRARY().LIBRARY_MOTION_CODE, 13);
  EXPECT_EQ(XIT(), 0);
  // The reader's own files stay open until the next open replaces them.
  EXPECT_TRUE(header::V861_TIDE3_DATABASE_FILES().MOTION_FILE.IS_OPEN());
}

TEST_F(DatabaseInfo, AnalysisDetailsCopyTheTitleOnlyWhenItFits) {
  HEADER_DATA::SAVE_MODEL_DIMENSIONS(0, {}, 4, 5, 2.5F, "Catenary riser   ");
  int32_t d1 = 0, d2 = 0;
  float d3 = 0.0F;
  std::string title(13, '#');
  EXPECT_EQ(GetAnalysisDetails(&d1, &d2, &d3, title.data(), 13), 14);
  EXPECT_EQ(std::tuple(d1, d2, d3, title), std::tuple(4, 5, 2.5F, std::string(13, '#')));
  title.assign(18, '#');
  EXPECT_EQ(GetAnalysisDetails(&d1, &d2, &d3, title.data(), 18), 0);
  EXPECT_EQ(title, "Catenary riser    ");
}

}  // namespace
}  // namespace tmrdar::frame
