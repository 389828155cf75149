// Damaged headers: words anywhere in a header with every block replaced by
// values a damaged file may hold, or the file cut short. The read must end in
// success or a reported failure, never outside a table (the sanitizer build
// runs this too), and no table may grow beyond what the file could fill. The
// mapped reads must leave what the reads through the descriptor leave, stale
// words included.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "builder/job.h"
#include "every_block_job.h"
#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::Job;

class DamagedHeader : public ::testing::TestWithParam<const FormatVersion*> {};

// The bytes of what an open leaves for the reads after it: the scratch
// words and the model's tables.
std::string left_by_open(const FormatReader& db) {
  std::string bytes;
  const auto add = [&bytes](auto... entries) {
    ((bytes.append(reinterpret_cast<const char*>(entries.data()), entries.size_bytes()), bytes += '|'), ...);
  };
  const HeaderTables& t = db.tables;
  add(std::span(db.header_ints), std::span(db.header_reals));
  add(t.element_numbers.data(), t.element_nodes.data(), t.node_numbers.data(), t.aux_element_nodes.data(),
      t.element_a8.data(), t.element_b5.data(), t.condition_nodes.data(), t.aux_element_numbers.data(),
      t.aux_node_numbers.data(), t.point_mass_nodes.data(), t.boundary_condition_nodes.data(), t.pip_data.data());
  for (const auto& members : t.element_set_members) add(std::span(members));
  for (const auto& members : t.node_set_members) add(std::span(members));
  add(t.element_length.data(), t.element_a6.data(), t.element_c1.data(), t.element_b8.data(),
      t.contact_diameters.data(), t.time_list.data(), t.aux_element_r7.data(), t.element_section_table.data(),
      t.nonlinear_e_table.data(), t.node_coordinates.data(), t.aux_node_coordinates.data(),
      t.wave_harmonics.data(), t.current_profile.data());
  std::vector<float> seabed;
  for (int32_t i = 1; i <= db.seabed_profile.num_nodes(); ++i) {
    seabed.insert(seabed.end(), {db.seabed_profile.node(i, 1), db.seabed_profile.node(i, 2)});
  }
  add(std::span(seabed));
  return bytes;
}

// Opens with the files read through the descriptor, not the mapping.
class UnmappedOpens {
 public:
  UnmappedOpens() {
    if (const char* value = std::getenv(name)) saved_ = value;
    ::setenv(name, "1", 1);
  }
  ~UnmappedOpens() { saved_ ? ::setenv(name, saved_->c_str(), 1) : ::unsetenv(name); }
  UnmappedOpens(const UnmappedOpens&) = delete;
  UnmappedOpens& operator=(const UnmappedOpens&) = delete;

 private:
  static constexpr const char* name = "TMRDAR_NO_MMAP";
  std::optional<std::string> saved_;
};

TEST_P(DamagedHeader, ReadsEndInSuccessOrAReportedFailure) {
  const FormatVersion& format = *GetParam();
  testing::ScratchDir dir;
  Job job = every_block_job(format);
  job.force.present = false;
  job.run.shape_function_flag = 1;  // the integration points are made too
  job.run.shape_function_order = 2;
  job.run.num_time_steps = 3;
  const builder::FileImage good = job.image(builder::FileKind::motion);
  const int64_t header_end = job.written_run().result_start_record;
  FormatReader& db = *reader_for_version(format.database_version);
  ASSERT_TRUE(good.write(dir.file("job.dbm")));
  bool failed = true;
  db.open_database_files("job", dir.path().string() + "/", failed);
  ASSERT_FALSE(failed) << "undamaged: " << error_handling::last_message();
  EXPECT_EQ(db.tables.integration_points.allocated(), format.builds_integration_points);
  const std::array<int32_t, 10> hostile{0, -1, 1, 2, 3, 9, 2'147'483'647, -2'147'483'647 - 1, 1'000'000, 0x7F800001};
  uint32_t seed = 2026;
  const auto next = [&seed] { return seed = seed * 1'103'515'245U + 12'345U; };
  int failures = 0;
  for (int round = 0; round < 600; ++round) {
    builder::FileImage image = good;
    for (int change = 0; change < 1 + round % 4; ++change) {
      const auto record = static_cast<int64_t>(next() % static_cast<uint32_t>(header_end));
      image.put_int(record, static_cast<int>(next() % 8) + 1, hostile[next() % hostile.size()]);
    }
    if (round % 5 == 0) image.truncate(next() % good.bytes().size());
    ASSERT_TRUE(image.write(dir.file("job.dbm")));
    // The tables looked at below are this file's own.
    db.deallocate_database_header_arrays();
    const auto scratch = std::pair(db.header_ints, db.header_reals);  // stale words from the last open
    failed = false;
    error_handling::error3(true, error_handling::database_postprocessing, "(none)");
    db.open_database_files("job", dir.path().string() + "/", failed);
    const std::string message(error_handling::last_message());
    const std::string left = left_by_open(db);
    {
      const UnmappedOpens unmapped;
      db.deallocate_database_header_arrays();
      std::tie(db.header_ints, db.header_reals) = scratch;
      bool unmapped_failed = false;
      db.open_database_files("job", dir.path().string() + "/", unmapped_failed);
      EXPECT_EQ(std::pair(unmapped_failed, std::string(error_handling::last_message())), std::pair(failed, message))
          << "round " << round;
      EXPECT_TRUE(left_by_open(db) == left) << "round " << round << ": the mapped reads left other words";
    }
    failures += failed ? 1 : 0;
    if (failed) {
      EXPECT_NE(message, "Error: Database Postprocessing: (none)") << "round " << round;
    }
    // No table holds more entries than the file has words.
    const auto words = image.bytes().size() / 4 + 8;
    const HeaderTables& t = db.tables;
    for (const std::size_t size : {t.element_nodes.size(), t.node_coordinates.size(), t.time_list.size(),
                                   t.pip_data.size(), t.element_set_names.size(), t.target_spectrum.size(),
                                   t.damper_elements.size(), t.integration_points.size() / 10}) {
      EXPECT_LE(size, words) << "round " << round;
    }
    std::size_t members = 0;
    for (const auto& set : t.element_set_members) members += set.size();
    EXPECT_LE(members, words) << "round " << round;
  }
  EXPECT_GT(failures, 50);
  EXPECT_LT(failures, 550);
  db.close_database_files();
}

INSTANTIATE_TEST_SUITE_P(, DamagedHeader, ::testing::ValuesIn(format_versions), format_name);

// A block whose directory entry lies ahead of the file ends the read with its
// own message, keeping the blocks read before it; a block of no rows is not
// read at all.
class UnreadableBlock : public HeaderTest {};

TEST_F(UnreadableBlock, ReportsItsOwnMessage) {
  const std::string read = "Unable to read ", header = " from database header.";
  const std::string models = "Unable to allocate memory for plastic hardening models.";
  const std::vector<std::pair<int32_t, std::string>> rows{
      {9, read + "from database header."}, {16, read + "element data" + header},
      {17, read + "nonlinear material data from the database header."},
      {18, read + "nonlinear material data from the database header."}, {19, read + "node data" + header},
      {20, read + "auxiliary element data" + header}, {21, read + "auxiliary node data" + header},
      {22, read + "seabed data" + header}, {23, read + "wave data" + header}, {24, read + "wave data" + header},
      {25, read + "contact diameters" + header}, {26, read + "element set data" + header},
      {27, read + "node set data" + header}, {28, read + "node/element labels" + header},
      {29, read + "point mass data" + header}, {30, read + "point load data" + header},
      {31, read + "boundary condition data" + header}, {32, read + "current profile data" + header},
      {33, read + "pipe-in-pipe data" + header}, {34, read + "guide surface data" + header},
      {35, read + "panel data" + header}, {36, read + "zero gap guide dimensions" + header},
      {37, read + "installation criteria data" + header}, {38, read + "floating body data" + header},
      {39, read + "vessel data" + header}, {40, read + "stinger plane data from database header"},
      {41, read + "Target Spectrum data" + header}, {48, read + "from database header."}, {49, models}, {50, models},
      {51, read + "damper elements" + header}, {52, "Unable to allocate memory for seabed database header data."}};
  const Job job = every_block_job();
  for (const auto& [k, message] : rows) {
    EXPECT_TRUE(open(job, k)) << "block " << k;
    EXPECT_EQ(error_handling::last_message(), "Error: Database Postprocessing: " + message) << "block " << k;
    if (k >= 16) {
      EXPECT_EQ(db.tables.point_mass_nodes(1), k > 29 ? job.model.point_masses[0] : 0) << "block " << k;
    }
  }
  for (const int32_t k : {20, 26, 27, 28, 29, 30, 31, 33, 34, 35, 36, 37, 38, 39}) {
    EXPECT_FALSE(open(Job(), k)) << "block " << k << " has no rows";
  }
  Job file_seabed;
  file_seabed.seabed_code = 5;  // a profile from a file reads no points
  EXPECT_FALSE(open(file_seabed, 22)) << error_handling::last_message();
}

// The unit formats cannot read a record the file does not hold whole; the
// oldest words a spectrum cut short behind its first record its own way.
TEST(SpectrumMessages, TheOldestFormatHasASecondWording) {
  const std::string read = "Error: Database Postprocessing: Unable to read ", rest = " data from database header.";
  const std::string usual = read + "Target Spectrum" + rest, second = read + "target spectrum" + rest;
  for (const auto& [format, cut_behind_first, message] :
       std::vector<std::tuple<const FormatVersion*, bool, std::string>>{
           {&v811, true, second}, {&v811, false, usual}, {&v815, true, usual}}) {
    testing::ScratchDir dir;
    Job job(*format);
    job.force.present = false;
    job.model.target_spectrum = {{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}};  // two records
    builder::FileImage image = job.image(builder::FileKind::motion);
    image.truncate(32 * (job.block_record(41) + (cut_behind_first ? 1 : 0)));
    ASSERT_TRUE(image.write(dir.file("job.dbm")));
    FormatReader& db = *reader_for_version(format->database_version);
    bool failed = false;
    db.open_database_files("job", dir.path().string() + "/", failed);
    EXPECT_EQ(std::pair(failed, std::string(error_handling::last_message())), std::pair(true, message))
        << format->name << (cut_behind_first ? " second" : " first");
    db.close_database_files();
  }
}

}  // namespace
}  // namespace tmrdar::header
