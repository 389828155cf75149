// Opening a job through the exports, as a host does.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include "builder/job.h"
#include "frame/base/header_data.h"
#include "frame/base/io_units.h"
#include "frame/exports/library_state.h"
#include "frame/exports/request_checks.h"
#include "header/every_block_job.h"
#include "support/host_session.h"
#include "support/open_files.h"
#include "support/scratch_dir.h"
#include "tmrdar/tmrdar.h"

namespace tmrdar::frame {
namespace {

using builder::Job;
using testing::ScratchDir;
using testing::descriptors_under;

constexpr float untouched = -7777.0F;

// What one GetDatabaseInfo call gave back.
struct Opened {
  int32_t result = 0;
  int32_t motion = 0;
  int32_t force = 0;
  std::array<int32_t, 5> motion_words{9, 9, 9, 9, 9};
  std::array<int32_t, 5> force_words{9, 9, 9, 9, 9};
  std::vector<int32_t> dims;
  bool operator==(const Opened&) const = default;
};

Opened open(const std::string& path, int32_t n = 14) {
  Opened o;
  o.dims.assign(static_cast<std::size_t>(n), 7);
  o.result = GetDatabaseInfo(&o.motion, &o.force, o.motion_words.data(), o.force_words.data(), &n,
                             o.dims.data(), path.data(), static_cast<int64_t>(path.size()));
  return o;
}

bool units_open() {
  return io_units::unit(io_units::motion_unit).is_open() || io_units::unit(io_units::force_unit).is_open();
}

class DatabaseInfo : public ::testing::Test {
 protected:
  void SetUp() override {
    XIT();
    DllMain(nullptr, 1, nullptr);
  }
  void TearDown() override { XIT(); }

  std::string stem() const { return dir.file("job"); }

  ScratchDir dir;
};

TEST_F(DatabaseInfo, AnyExtensionOpensTheSamePairOfFiles) {
  Job job;
  job.motion.first.file_words = {1, 2, 3, 4, 5};
  job.force.first.file_words = {6, 7, 8, 9, 10};
  job.run.num_time_steps = 40;
  job.run.pip_nodes_per_pair = 2;
  job.run.num_elements = 3;
  job.run.num_nodes = 4;
  job.run.num_labels = 7;
  job.run.num_pip_connections = 12;
  job.run.num_clash_pairs = 13;
  job.run.num_nonlinear_e_tables = 14;
  job.write(stem());
  for (const std::string& path : {stem(), stem() + ".dbm", stem() + ".XYZ", stem() + ".dbf   "}) {
    EXPECT_EQ(open(path), (Opened{0, 13, 13, {1, 2, 3, 4, 5}, {6, 7, 8, 9, 10},
                                  {40, 2, 3, 4, 0, 0, 7, 0, 0, 0, 0, 12, 13, 14}}))
        << path;
  }
  EXPECT_EQ(library().library_motion_code, 13);
  EXPECT_EQ(library().library_force_code, 13);
  EXPECT_TRUE(units_open());
  EXPECT_TRUE(header::v861_database_files().motion_file.is_open());
}

TEST_F(DatabaseInfo, ABlankPathResetsTheOutputsAndFails) {
  EXPECT_EQ(open("    ", 16), (Opened{-1, -1, -1, {}, {}, std::vector<int32_t>(16, -1)}));
  int32_t n = 0, motion = 5;
  EXPECT_EQ(GetDatabaseInfo(&motion, nullptr, nullptr, nullptr, &n, nullptr, nullptr, 10), -1);
  EXPECT_EQ(motion, -1);
}

TEST_F(DatabaseInfo, OnlyTheForceFileSelectsByItsCode) {
  Job job;
  job.motion.present = false;
  job.force.first.analysis_detail_2 = 31;
  job.write(stem());
  const Opened o = open(stem());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force, o.motion_words), std::tuple(0, 0, 13, std::array<int32_t, 5>{}));
  int32_t d1 = -1, d2 = -1;
  float d3 = -1.0F;
  EXPECT_EQ(GetAnalysisDetails(&d1, &d2, &d3, nullptr, 0), 0);
  EXPECT_EQ(d2, 31) << "the header was read from the force file";
  const header::FormatReader& db = header::v861_database_files();
  EXPECT_EQ(std::pair(db.force_db_version, db.motion_db_version), std::pair(13, 0));
}

TEST_F(DatabaseInfo, MissingEmptyAndUnopenableFilesGiveTheirCodes) {
  Opened o = open(stem());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(-3, 0, 0));
  dir.write("job.dbm", "");
  o = open(stem());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(-3, -1, 0));

  // Fewer than 32 bytes hold no first record.
  dir.write("job.dbm", std::string(31, '\x0d'));
  EXPECT_EQ(open(stem()).motion, -1);

  std::filesystem::remove(stem() + ".dbm");
  std::filesystem::create_directory(stem() + ".dbm");
  Job job;
  job.motion.present = false;
  job.write(stem());
  o = open(stem());
  // A directory named like the motion file cannot be opened; the job goes
  // on with the force file.
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(0, -1, 13));

  // The path of a directory names a job of that directory's name beside it.
  EXPECT_EQ(open(dir.path().string()).result, -3);
  EXPECT_EQ(open(dir.path().string() + "/").result, -3);
}

TEST_F(DatabaseInfo, TwoVersionsOrAnUnknownCodeOrCodeOneSelectNothing) {
  Job job;
  job.force.first.database_version = 11;
  job.write(stem());
  Opened o = open(stem());
  EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(-3, 13, 11));
  EXPECT_EQ(std::pair(library().library_motion_code, library().library_force_code), std::pair(0, 0));
  EXPECT_FALSE(units_open());

  job.force.first.database_version = 99;
  job.motion.present = false;
  std::filesystem::remove(stem() + ".dbm");
  job.write(stem());
  o = open(stem());
  EXPECT_EQ(std::tuple(o.result, o.force, library().library_force_code), std::tuple(-3, 99, 0));

  // Code 1 is refused but remembered.
  job.motion.present = true;
  job.motion.first.database_version = job.force.first.database_version = 1;
  job.write(stem());
  o = open(stem());
  EXPECT_EQ(std::tuple(o.result, o.motion, library().library_motion_code, library().library_force_code),
            std::tuple(-3, 1, 1, 1));
  EXPECT_FALSE(units_open());
}

TEST_F(DatabaseInfo, AShortDimensionArrayShutsTheJobAgain) {
  Job().write(stem());
  const Opened o = open(stem(), 13);
  EXPECT_EQ(std::tuple(o.result, o.motion, o.dims), std::tuple(14, 13, std::vector<int32_t>(13, -1)));
  EXPECT_FALSE(units_open());
  EXPECT_EQ(open(stem(), 0).result, 14);
}

TEST_F(DatabaseInfo, AFailedHeaderStillOpensTheJob) {
  builder::FileImage image = Job().image(builder::FileKind::motion);
  image.put_int(1, 1, 1'000'000);  // a directory count the file cannot hold
  ASSERT_TRUE(image.write(stem() + ".dbm"));
  const Opened o = open(stem());
  EXPECT_EQ(std::pair(o.result, o.dims), std::pair(0, std::vector<int32_t>(14, 0)));
  // Without time steps the header stops behind the run control blocks, and
  // the dimensions read so far are handed on.
  Job job;
  job.run.num_time_steps = 0;
  job.run.num_elements = 5;
  job.run.num_nodes = 6;
  job.write(stem());
  EXPECT_EQ(open(stem()).dims, (std::vector<int32_t>{0, 0, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

// One job written in each format opens through the exports with the same
// dimensions, details and title, and the codes are the format's own.
TEST_F(DatabaseInfo, EveryFormatOpensTheSameJob) {
  for (const header::FormatVersion* format : header::format_versions) {
    SCOPED_TRACE(format->name);
    Job job = header::every_block_job(*format);
    job.run.num_clash_pairs = 3;
    job.run.num_pip_connections = 2;
    job.run.analysis_detail_1 = 4;
    job.run.analysis_detail_3 = 2.5F;
    job.motion.first.analysis_detail_2 = 5;
    job.run.analysis_title.assign("Archived riser");
    job.write(stem());
    const Opened o = open(stem());
    EXPECT_EQ(std::tuple(o.result, o.motion, o.force), std::tuple(0, format->database_version, format->database_version));
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
  const builder::FileImage good = Job().image(builder::FileKind::motion);
  const std::array<int32_t, 9> hostile{0, -1, 1, 2, 13, 2'147'483'647, -2'147'483'647 - 1, 1'000'000, 9};
  uint32_t seed = 12345;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  for (int round = 0; round < 200; ++round) {
    builder::FileImage image = good;
    for (int change = 0; change < 3; ++change) {
      const auto record = static_cast<int64_t>(next() % 10);
      const auto word = static_cast<int>(next() % 8) + 1;
      image.put_int(record, word, hostile[next() % hostile.size()]);
    }
    if (round % 4 == 0) image.truncate(next() % 400);
    ASSERT_TRUE(image.write(stem() + ".dbm"));
    const Opened o = open(stem());
    EXPECT_TRUE(o.result == 0 || o.result == -3) << "round " << round << " gave " << o.result;
  }
}

// A small job of each format with one file cut short, at every byte of its
// header and at every record of its frames: the motion file beside the
// whole force file, and the force file alone (a header is read from the
// motion file when there is one). Every cut opens or fails with a code,
// every export answers, and a cut in the frames opens the job as the whole
// file does and answers as it does for every step that it holds whole.
TEST_F(DatabaseInfo, EveryCutOfAFileAnswers) {
  for (const header::FormatVersion* format : header::format_versions) {
    SCOPED_TRACE(format->name);
    const Job job = testing::small_job(*format);
    const int32_t steps = job.written_run().num_time_steps;
    for (const builder::FileKind kind : {builder::FileKind::motion, builder::FileKind::force}) {
      const bool motion = kind == builder::FileKind::motion;
      job.write(stem());
      if (!motion) std::filesystem::remove(stem() + ".dbm");
      const Opened whole = open(stem());
      ASSERT_EQ(whole.result, 0);
      std::vector<testing::Answers> whole_steps;
      for (int32_t held = 0; held <= steps; ++held) {
        whole_steps.push_back(testing::ask_every_export(whole.motion, whole.force, held, testing::Asked::each_type));
      }
      XIT();
      const std::string path = stem() + (motion ? ".dbm" : ".dbf");
      const auto size = static_cast<std::size_t>(std::filesystem::file_size(path));
      const std::size_t frame = 32 * static_cast<std::size_t>(motion ? job.motion_frame_records() : job.force_frame_records());
      const std::size_t header = size - frame * static_cast<std::size_t>(steps);
      // Shorter and shorter: a file made longer again would hold zeros.
      std::vector<std::size_t> cuts;
      for (std::size_t at = size - 32; at >= header; at -= 32) cuts.push_back(at);
      // Read by descriptor, each open fills a window of its own: that pass
      // cuts the header at every 7th byte, which still meets every place in
      // a word and in a record.
      const std::size_t stride = std::getenv("TMRDAR_NO_MMAP") != nullptr ? 7 : 1;
      for (std::size_t at = header; at >= stride; at -= stride) cuts.push_back(at - stride);
      for (const std::size_t cut : cuts) {
        std::filesystem::resize_file(path, cut);
        const Opened o = open(stem());
        ASSERT_TRUE(o.result == 0 || o.result == -3) << cut << " bytes gave " << o.result;
        if (cut < header) {
          testing::ask_every_export(o.motion, o.force, steps, testing::Asked::each_export_once);
        } else {
          const auto held = static_cast<int32_t>((cut - header) / frame);
          EXPECT_EQ(o, whole) << cut << " bytes";
          const testing::Answers answers = testing::ask_every_export(o.motion, o.force, std::max(held, 1), testing::Asked::each_type);
          EXPECT_TRUE(held == 0 || answers == whole_steps[static_cast<std::size_t>(held)]) << cut << " bytes";
        }
        XIT();
      }
    }
  }
}

// Every file is opened for reading only, and nothing is written: a whole
// session of every export leaves both files as they were, byte for byte and
// in time, and a job in a read-only directory of read-only files answers
// as it does elsewhere, also to a user the permissions hold back (when the
// tests run as root, a child process that has given up root).
TEST_F(DatabaseInfo, ReadOnlyFilesAnswerAndStayAsTheyWere) {
  const auto contents = [](const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::make_pair(std::string(std::istreambuf_iterator<char>(in), {}), std::filesystem::last_write_time(path));
  };
  for (const header::FormatVersion* format : header::format_versions) {
    SCOPED_TRACE(format->name);
    const Job job = testing::small_job(*format);
    const int32_t steps = job.written_run().num_time_steps;
    job.write(stem());
    const auto motion_before = contents(stem() + ".dbm"), force_before = contents(stem() + ".dbf");
    ASSERT_EQ(open(stem()).result, 0);
    const testing::Answers writable =
        testing::ask_every_export(format->database_version, format->database_version, steps, testing::Asked::every_subtype);
    XIT();
    using std::filesystem::perms;
    for (const char* extension : {".dbm", ".dbf"}) {
      std::filesystem::permissions(stem() + extension, perms::owner_read | perms::group_read | perms::others_read);
    }
    std::filesystem::permissions(dir.path(), perms::owner_read | perms::owner_exec | perms::group_read |
                                                 perms::group_exec | perms::others_read | perms::others_exec);
    const auto session = [&] {
      const Opened o = open(stem());
      bool read_only = o.result == 0 && testing::writable_mappings_under(dir.path()).empty();
      for (const testing::OpenFile& file : descriptors_under(dir.path())) read_only = read_only && file.read_only;
      const bool same = testing::ask_every_export(o.motion, o.force, steps, testing::Asked::every_subtype) == writable;
      XIT();
      return read_only && same;
    };
    if (::geteuid() == 0) {
      // Root passes every permission: the session runs in a child that has
      // become the unprivileged user 65534.
      const pid_t child = ::fork();
      ASSERT_GE(child, 0);
      if (child == 0) {
        const bool dropped = ::setgid(65534) == 0 && ::setuid(65534) == 0;
        std::error_code error;
        const bool reachable = std::filesystem::exists(stem() + ".dbm", error);
        ::_exit(!dropped ? 2 : !reachable ? 3 : session() ? 0 : 1);
      }
      int status = 0;
      ASSERT_EQ(::waitpid(child, &status, 0), child);
      ASSERT_TRUE(WIFEXITED(status));
      if (WEXITSTATUS(status) == 3) {
        std::cout << "the scratch directory is out of an unprivileged user's reach; asked as root\n";
        EXPECT_TRUE(session());
      } else {
        EXPECT_EQ(WEXITSTATUS(status), 0) << "1: answers differ or a file was open for writing; 2: setuid failed";
      }
    } else {
      EXPECT_TRUE(session());
    }
    EXPECT_EQ(contents(stem() + ".dbm"), motion_before);
    EXPECT_EQ(contents(stem() + ".dbf"), force_before);
    std::filesystem::permissions(dir.path(), perms::owner_all);
    for (const char* extension : {".dbm", ".dbf"}) std::filesystem::permissions(stem() + extension, perms::owner_all);
  }
}

// XIT closes every file of the job, units and the reader's own, so that the
// host may move or rewrite them; it keeps the codes, and a request after it
// reads nothing. An open that fails holds no file either.
TEST_F(DatabaseInfo, XitAndFailedOpensLeaveNoFileOpen) {
  for (const header::FormatVersion* format : header::format_versions) {
    SCOPED_TRACE(format->name);
    const Job job(*format);
    job.write(stem());
    ASSERT_EQ(open(stem()).result, 0);
    EXPECT_FALSE(descriptors_under(dir.path()).empty());
    int32_t m = format->database_version, f = m, type = 1, subtype = 1, node = 0, element = 0, position = 0;
    int32_t steps = 1, step = 1;
    float value = untouched;
    ASSERT_EQ(GetRequestedSingleValue(&m, &f, &type, &subtype, &node, &element, &position, &steps, &step, &value,
                                      nullptr, 0), 0);
    EXPECT_EQ(XIT(), 0);
    EXPECT_EQ(descriptors_under(dir.path()), std::vector<testing::OpenFile>{});
    EXPECT_EQ(library().library_motion_code, format->database_version);
    EXPECT_EQ(XIT(), 0);
    value = untouched;
    EXPECT_EQ(GetRequestedSingleValue(&m, &f, &type, &subtype, &node, &element, &position, &steps, &step, &value,
                                      nullptr, 0), request_checks::read_failed);
  }
  builder::FileImage motion = Job().image(builder::FileKind::motion);
  const builder::FileImage force = Job(header::v841).image(builder::FileKind::force);
  const struct {
    const char* what;
    std::size_t motion_bytes;  // the motion file cut to this size
    bool other_force;          // a force file of another format beside it
    int32_t n, result;
  } rows[] = {{"no whole first record", 20, false, 14, -3},
              {"files of two formats", SIZE_MAX, true, 14, -3},
              {"a dimension array too short", SIZE_MAX, false, 13, 14}};
  for (const auto& row : rows) {
    std::filesystem::remove(stem() + ".dbf");
    builder::FileImage cut = motion;
    if (row.motion_bytes != SIZE_MAX) cut.truncate(row.motion_bytes);
    ASSERT_TRUE(cut.write(stem() + ".dbm"));
    if (row.other_force) {
      ASSERT_TRUE(force.write(stem() + ".dbf"));
    }
    EXPECT_EQ(open(stem(), row.n).result, row.result) << row.what;
    EXPECT_EQ(descriptors_under(dir.path()), std::vector<testing::OpenFile>{}) << row.what;
  }
}

TEST_F(DatabaseInfo, AnalysisDetailsCopyTheTitleOnlyWhenItFits) {
  header_data::save_model_dimensions(0, {}, 4, 5, 2.5F, "Catenary riser   ");
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
