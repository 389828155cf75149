// The tables of a header: made from the counts as far as the file can back
// them, replaced whole by the next header, and indexed by number.
#include <malloc.h>

#include <cmath>
#include <string>
#include <vector>

#include "every_block_job.h"
#include "header/number_index.h"
#include "header_test.h"

namespace tmrdar::header {
namespace {

using builder::FileKind;
using builder::Job;

constexpr std::string_view allocation_failure =
    "Error: Database Postprocessing: Unable to allocate memory for database header data.";

// Bytes the process holds from the allocator; 0 where the allocator keeps no
// count of them (as under the address sanitizer).
int64_t heap_bytes() {
  const struct mallinfo2 info = ::mallinfo2();
  return static_cast<int64_t>(info.uordblks + info.hblkhd);
}

class HeaderArrays : public HeaderTest {
 protected:
  bool open(const Job& job) { return open_written(job); }
};

TEST_F(HeaderArrays, EndsAndCoordinatesAlwaysHaveRoomForWhatTheBlocksGive) {
  Job job;
  job.run.num_elements = job.run.num_nodes = 2;
  job.run.nodes_per_element = 1;
  job.run.coords_per_node = 0;
  ASSERT_FALSE(open(job)) << error_handling::last_message();
  EXPECT_TRUE(db.tables.element_nodes.contains(2, 2) && db.tables.node_coordinates.contains(3, 2));
}

// A count, or a length within a block, that no file of this size could hold
// is refused before it sizes anything; a header count stays for the host.
TEST_F(HeaderArrays, WhatTheFileCannotBackIsRefused) {
  const std::string prefix = "Error: Database Postprocessing: Unable to allocate memory for ";
  const std::string models = prefix + "plastic hardening models.", items = prefix + "seabed database header data.";
  struct Row {
    int32_t block, record, word;  // the word given 2,000,000,000
    int32_t HeaderVariables::*count;
    std::string message;
  };
  const std::vector<Row> rows{{6, 0, 1, &HeaderVariables::num_elements, std::string(allocation_failure)},
                              {6, 0, 2, &HeaderVariables::num_nodes, std::string(allocation_failure)},
                              {6, 0, 7, &HeaderVariables::num_element_sets, std::string(allocation_failure)},
                              {7, 0, 1, &HeaderVariables::num_time_steps, std::string(allocation_failure)},
                              {8, 0, 4, &HeaderVariables::num_seabed_points, std::string(allocation_failure)},
                              {12, 0, 1, &HeaderVariables::num_damper_elements, std::string(allocation_failure)},
                              {14, 0, 1, nullptr, prefix + "target spectrum database header data."},
                              {27, 8, 1, nullptr, std::string(allocation_failure)},  // the node set's count
                              {48, 0, 2, &HeaderVariables::num_plastic_hardening_models, models},
                              {49, 2, 3, nullptr, models},  // the third curve's points
                              {2, 0, 7, &HeaderVariables::num_binary_items, items},
                              {52, 0, 3, nullptr, items},  // the length of an item passed over
                              {52, 4, 3, nullptr, items}};  // and of the seabed item
  const Job job = every_block_job();
  for (const Row& row : rows) {
    builder::FileImage image = job.image(FileKind::motion);
    image.put_int(job.directory().entry(row.block) - 1 + row.record, row.word, 2'000'000'000);
    ASSERT_TRUE(image.write(dir.file("job.dbm")));
    const std::string what = "block " + std::to_string(row.block) + " word " + std::to_string(row.word);
    EXPECT_TRUE(reopen()) << what;
    EXPECT_EQ(error_handling::last_message(), row.message) << what;
    if (row.count != nullptr) {
      EXPECT_EQ(db.*row.count, 2'000'000'000) << what;
    }
    EXPECT_LT(db.tables.time_list.size() + db.tables.element_length.size() + db.tables.node_numbers.size(), 100U)
        << what;
  }

  // A curve of 4F points, F the records of the file, would stand in F records
  // but takes F + 1 by its count; one point fewer takes F and is read.
  Job edge;
  edge.blocks[48] = {builder::Record::ints({0, 1})};
  edge.run.num_plastic_hardening_models = 1;
  edge.blocks[49] = {builder::Record::ints({0, 1, 0})};
  const auto file_records = static_cast<int32_t>(edge.image(FileKind::motion).records());
  for (const int32_t points : {4 * file_records - 1, 4 * file_records}) {
    edge.blocks[49] = {builder::Record::ints({0, 1, points})};
    EXPECT_EQ(open(edge), points == 4 * file_records) << points << ": " << error_handling::last_message();
  }
  EXPECT_EQ(error_handling::last_message(), models);
}

// Counts that promise gigabytes, from a file of 1 MiB: each count as large
// as the file could back on its own, and all of them together, or more than
// the file has words. Whatever they say, what the open makes and keeps holds
// at most four times the file's bytes, beside the fixed buffer of 256 KiB
// through which a file that is not mapped is read.
TEST_F(HeaderArrays, NoCountMakesTheOpenHoldMoreThanFourTimesTheFile) {
  const Job job = every_block_job();
  builder::FileImage good = job.image(FileKind::motion);
  good.extend_to(32768);
  const auto records = static_cast<int32_t>(good.records());
  struct Count {
    int32_t block, word, value;
  };
  const std::vector<Count> counts{{6, 1, records / 3}, {6, 2, records},     {6, 3, 8},           {6, 4, 8},
                                  {7, 1, records},     {8, 5, records},     {11, 1, records},    {11, 2, records / 2},
                                  {11, 5, records},    {13, 2, records}};
  for (const int32_t times : {1, 8}) {
    builder::FileImage image = good;
    for (const Count& c : counts) image.put_int(job.directory().entry(c.block) - 1, c.word, times * c.value);
    ASSERT_TRUE(image.write(dir.file("job.dbm")));
    db.deallocate_database_header_arrays();
    const int64_t before = heap_bytes();
    reopen();
    EXPECT_LE(heap_bytes() - before, 4 * std::ssize(image.bytes()) + (256 << 10)) << times << ": " << error_handling::last_message();
  }
}

TEST_F(HeaderArrays, ASecondHeaderReplacesTheFirstAndAFailedOneKeepsIt) {
  Job first;
  first.run.num_nodes = 6;
  first.run.num_time_steps = 3;
  ASSERT_FALSE(open(first));
  ASSERT_EQ(db.tables.node_numbers.extent(1), 6);

  Job second;
  second.run.num_nodes = 2;
  ASSERT_FALSE(open(second));
  EXPECT_EQ(std::pair(db.tables.node_numbers.extent(1), db.tables.time_list.extent()),
            std::pair(int64_t{2}, int64_t{1}));

  // A header without steps stops before the tables are released.
  Job empty;
  empty.run.num_nodes = 9;
  empty.run.num_time_steps = 0;
  EXPECT_TRUE(open(empty));
  EXPECT_EQ(error_handling::last_message(),
            "Error: Database Postprocessing: No solution time steps were outputted to the database.");
  EXPECT_EQ(std::pair(db.num_nodes, db.tables.node_numbers.extent(1)), std::pair(9, int64_t{2}));

  db.deallocate_database_header_arrays();
  EXPECT_FALSE(db.tables.node_numbers.allocated());
  db.deallocate_database_header_arrays();  // nothing left to release
  EXPECT_FALSE(db.tables.time_list.allocated());
}

// The open builds the integration point locations when block 48 asks for
// them: the Gauss points of the order along each element, then zeros.
TEST_F(HeaderArrays, TheOpenPlacesIntegrationPointsAlongEachElement) {
  Job job;
  job.model.elements = {{.file_number = 1, .length = 2.0F}, {.file_number = 2, .length = 10.0F}};
  job.run.shape_function_flag = 1;
  job.run.shape_function_order = 3;
  ASSERT_FALSE(open(job)) << error_handling::last_message();
  const Table<double, 2>& points = db.tables.integration_points;
  ASSERT_EQ(std::pair(points.extent(1), points.extent(2)), std::pair(int64_t{10}, int64_t{2}));
  const double xi = std::sqrt(0.6);
  EXPECT_NEAR(points(1, 2), 5.0 * (1.0 - xi), 1e-12);
  EXPECT_NEAR(points(3, 1), 1.0 + xi, 1e-12);
  for (int64_t i = 4; i <= 10; ++i) EXPECT_EQ(points(i, 1) + points(i, 2), 0.0) << i;
  job.run.shape_function_order = 11;
  ASSERT_FALSE(open(job));
  EXPECT_EQ(as_vector(db.tables.integration_points.data()), std::vector<double>(20, 0.0)) << "an order past 10 places none";
  job.run.shape_function_flag = 2;
  ASSERT_FALSE(open(job));
  EXPECT_FALSE(db.tables.integration_points.allocated());
}

TEST(NumberIndex, GivesTheFirstRowOfANumber) {
  constexpr int32_t low = std::numeric_limits<int32_t>::min();
  constexpr int32_t high = std::numeric_limits<int32_t>::max();
  // Compact numbers go to a direct table, spread ones to a hash table; both
  // answer with the first row and 0 for a number no row holds.
  struct test_case {
    std::vector<int32_t> numbers;
    std::vector<std::pair<int32_t, int32_t>> answers;  // (number, row)
  };
  std::vector<int32_t> spread;  // 5,000 numbers 400,009 apart, the last twice
  for (int32_t i = 0; i < 5'000; ++i) spread.push_back(-1'000'000'000 + i * 400'009);
  spread.push_back(spread.back());
  const test_case cases[] = {
      {{40, 7, -3, 7, 0, 40}, {{40, 1}, {7, 2}, {-3, 3}, {0, 5}, {8, 0}, {41, 0}, {-4, 0}, {low, 0}}},
      {{high, low, 5, high, 0}, {{high, 1}, {low, 2}, {5, 3}, {0, 5}, {1, 0}, {high - 1, 0}, {low + 1, 0}}},
      {spread, {{spread[0], 1}, {spread[4'999], 5'000}, {spread[2'500], 2'501}, {spread[2'500] + 1, 0}, {0, 0}}},
      {{}, {{40, 0}, {0, 0}}},
  };
  NumberIndex index;
  for (const test_case& c : cases) {
    ASSERT_TRUE(index.build(c.numbers));
    EXPECT_EQ(index.empty(), c.numbers.empty());
    for (const auto& [number, row] : c.answers) EXPECT_EQ(index.find(number), row) << number;
  }
}

}  // namespace
}  // namespace tmrdar::header
