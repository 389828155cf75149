// Where a node lies, how far along the riser an element lies (rows end to
// end in row order, in a 32-bit sum), the points of a nonlinear material
// curve as pairs, and the membership predicates over node and element tables.
#include <bit>
#include <functional>
#include <vector>

#include "model_queries/membership.h"
#include "model_queries/open_job.h"
#include "results/derived_results.h"

namespace tmrdar::model_queries {
namespace {

using Xyz = std::array<float, 3>;
constexpr float u = -7.0F;  // a place left untouched
constexpr Xyz untouched{u, u, u};

class NodeProperties : public OpenJob {};

TEST_P(NodeProperties, RowsCoordinatesAndCodes) {
  builder::Job job = new_job();
  job.force.present = false;
  // Out of order, 7 twice, a node numbered 0, file numbers that are other
  // nodes' user numbers.
  job.model.nodes = {{.file_number = 3, .x = 1.0F, .y = 2.0F, .z = 3.0F, .user_number = 30},
                     {.file_number = 1, .x = 4.0F, .y = 5.0F, .z = 6.0F, .user_number = 7},
                     {.file_number = 2, .x = -1.5F, .user_number = 0},
                     {.file_number = 7, .x = 9.0F, .user_number = 7}};
  job.model.aux_nodes = {{.number = 11, .x = 1.0F, .y = 2.0F, .z = 3.0F}, {.number = 7, .x = 4.0F, .y = 5.0F, .z = 6.0F}};
  ASSERT_TRUE(open(job));
  const struct {
    int32_t number, kind, m, f, row;
    Xyz xyz;
    const char* why;
  } cases[] = {
      {7, 0, m, f, 2, {4.0F, 5.0F, 6.0F}, "the lower of two rows, with the codes of a job with no force file"},
      {0, 0, c, c, 3, {-1.5F, 0.0F, 0.0F}, "0 is a number like any other"},
      {7, 1, c, c, 2, {4.0F, 5.0F, 6.0F}, "an auxiliary node's values stand a column apart in their table"},
      {3, 0, c, c, 0, untouched, "a file number is no user's number"},
      {30, 1, c, c, 0, untouched, "no auxiliary node 30"},
      {7, 2, bad_m, bad_f, -2, untouched, "a bad kind wins over a bad version"},
      {7, 0, bad_m, bad_f, -1, untouched, "codes of no format"},
      {7, 1, -1, 0, -1, untouched, "an unreadable motion file"},
  };
  for (auto c : cases) {
    Xyz xyz = untouched;
    EXPECT_EQ(GetNodeProperties(&c.m, &c.f, &c.number, &c.kind, xyz.data()), c.row) << c.why;
    EXPECT_EQ(xyz, c.xyz) << c.why;
  }
}

TEST(Misc, MembershipPredicates) {
  using namespace membership;
  // Node table (3, 2) of user numbers 30, 7, 12; pairs of node rows, row 2 only in column 2.
  using List = std::vector<int32_t>;
  EXPECT_EQ(is_node_in_database(7, 3, 2, 99, List{1, 2, 3, 30, 7, 12}, List{1, 1, 30, 2}), logical_true);
  EXPECT_EQ(is_element_in_database(50, List{4, 5, 6, 40, 50, 60}, 3), logical_true);
  EXPECT_EQ(elem_in_set(3, List{8, 3, 9, 3}, 4), 2);
}

class DistanceAlongRiser : public OpenJob {
 protected:
  // The result and the distance written.
  std::pair<int32_t, float> ask(int32_t number, int32_t position, int32_t m = own, int32_t f = own) {
    if (m == own) m = c;
    if (f == own) f = c;
    float distance = u;
    return {GetDistanceAlongRiser(&m, &f, &number, &position, &distance), distance};
  }
};

TEST_P(DistanceAlongRiser, RowsEndToEndInRowOrderAndTheCodes) {
  builder::Job job = new_job();
  // Numbered out of order; row 2 stored negative, row 3 of length zero.
  job.model.elements = {{.file_number = 1, .user_number = 4, .length = 2.0F},
                        {.file_number = 2, .user_number = 1, .length = -4.0F},
                        {.file_number = 3, .user_number = 3, .length = 0.0F},
                        {.file_number = 4, .user_number = 2, .length = 3.0F}};
  job.model.aux_elements = {{.number = 1}};
  ASSERT_TRUE(open(job));
  const float tiny = std::bit_cast<float>(0x322BCC77U);  // a negative length counts as 1.0e-8
  const struct {
    int32_t number, position, m, f;
    std::pair<int32_t, float> answer;
  } cases[] = {
      {4, 3, c, c, {0, 2.0F}},
      {1, 1, c, c, {0, 2.0F}},  // the end of row 1 is the start of row 2
      {1, 3, c, c, {0, 2.0F + tiny}},
      {2, 2, c, c, {0, 2.0F + tiny + 1.5F}},
      // The position before the version, nothing written; -3 and -1 write 0.
      {1, 0, bad_m, bad_f, {-2, u}},
      {1, 4, c, c, {-2, u}},
      {1, 3, bad_m, bad_f, {-3, 0.0F}},
      {0, 3, c, c, {-1, 0.0F}},
      {-1, 3, c, c, {-1, 0.0F}},  // auxiliary element 1, which has no distance
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ask(c.number, c.position, c.m, c.f), c.answer) << c.number << " at " << c.position;
  }
}

class SinglePrecisionCorners : public OpenJob {};

// Corners of single precision and rounding that no request reaches, a row each.
TEST_P(SinglePrecisionCorners, OneRowEach) {
  builder::Job job = new_job();
  job.run.num_time_steps = 1;
  job.run.output_flags[0] = 1;
  for (const float length : {1.0e7F, 0.6F, 0.6F, 1.0F}) {
    const auto e = static_cast<int32_t>(job.model.elements.size()) + 1;
    job.model.elements.push_back({.file_number = e, .user_number = e, .length = length});
  }
  job.model.nodes = {{.file_number = 1, .user_number = 1}, {.file_number = 2, .user_number = 2}};
  const float at[2][3] = {{10, 20, 30}, {4107, 21, 89}};
  for (int32_t n = 1; n <= 2; ++n) {
    for (int32_t c = 1; c <= 3; ++c) job.results.set(builder::SectionKind::displacement, 1, n, c, at[n - 1][c - 1]);
  }
  ASSERT_TRUE(open(job));
  reader().tables.element_section_table(1, 2) = -2.5F;
  int32_t m = c, f = c;
  const auto mask_error = [](int32_t mask, int32_t n) {
    std::array<int32_t, 16> flags{};
    return GetRequestedSingleValueError(&mask, &n, flags.data());
  };
  const struct {
    const char* what;
    std::function<double()> got;
    double want;
  } rows[] = {
      // 1e7 + 0.6 + 0.6 in turn; a wider sum, or another order, gives 10000001.
      {"distance along the riser, a sequential 32-bit sum", [&] {
         int32_t number = 4, position = 1;
         float distance = 0;
         return GetDistanceAlongRiser(&m, &f, &number, &position, &distance) == 0 ? distance : -1.0F;
       }, 10000002.0},
      {"element slot 6 rounds -2.5 away from zero", [&] {
         int32_t number = 1, kind = 0, n = 15;
         std::array<int32_t, 15> ints{};
         std::array<float, 15> reals{};
         return GetElementProperties(&m, &f, &number, &kind, &n, ints.data(), reals.data()) == 0 ? ints[5] : 99;
       }, -3.0},
      // (4097, 1, 59) gives 4097.4248 in other orders or in double precision.
      {"distance of two nodes", [&] {
         float value = -1.0F;
         int32_t status = -1;
         results::retrieve_distance_two_nodes(reader(), 1, 1, 2, value, status);
         return status == 0 ? value : -1.0F;
       }, 4097.42432F},
      // The bit count of 32768 is one short: room for 15 flags is enough.
      {"error mask bit count", [&] { return mask_error(32768, 15); }, 0.0},
      {"a negative error mask", [&] { return mask_error(-4, 15); }, -1.0},
      {"too little room for the error flags", [&] { return mask_error(1024, 5); }, 11.0},
      {"a null array is room for no flags, whatever its length", [&] {
         int32_t mask = 1024, n = 15;
         return 100 * GetRequestedSingleValueError(&mask, &n, nullptr) + GetRequestedHistoryError(&mask, &n, nullptr);
       }, 1111.0},
  };
  for (const auto& row : rows) EXPECT_EQ(row.got(), row.want) << row.what;
}

class StressStrain : public OpenJob {
 protected:
  // The result and the array of `size` pairs (default: the capacity).
  std::pair<int32_t, std::vector<float>> ask(int32_t id, int32_t capacity, int32_t size = -1, int32_t m = own,
                                             int32_t f = own) {
    if (m == own) m = c;
    if (f == own) f = c;
    std::vector<float> pairs(2 * static_cast<std::size_t>(size < 0 ? capacity : size), u);
    const int32_t result = GetProcessedDirectStressStrainData(&m, &f, &id, &capacity, pairs.data());
    return {result, pairs};
  }
  void SetUp() override {
    OpenJob::SetUp();
    builder::Job job = new_job();
    // Curve 5 of three points, 8 of one, 5 again, 9 of none, 4 of -2, and 2
    // whose count runs past the end of the table.
    job.model.nonlinear_e_tables = {{.curve = 5, .points = 3, .value_1 = 0.0F, .value_2 = 0.0F},
                                    {.curve = 0, .points = 0, .value_1 = 0.001F, .value_2 = 200.0F},
                                    {.curve = 0, .points = 0, .value_1 = 0.002F, .value_2 = 350.0F},
                                    {.curve = 8, .points = 1, .value_1 = 1.5F, .value_2 = 2.5F},
                                    {.curve = 5, .points = 1, .value_1 = 9.0F, .value_2 = 9.0F},
                                    {.curve = 9, .points = 0, .value_1 = 1.0F, .value_2 = 1.0F},
                                    {.curve = 4, .points = -2, .value_1 = 1.0F, .value_2 = 2.0F},
                                    {.curve = 2, .points = 3, .value_1 = 3.0F, .value_2 = 4.0F}};
    ASSERT_TRUE(open(job));
  }
};

TEST_P(StressStrain, PairsAndResults) {
  EXPECT_EQ(ask(5, 3), std::make_pair(0, std::vector<float>{0.0F, 0.0F, 0.001F, 200.0F, 0.002F, 350.0F}))
      << "the first of two rows, capacity equal to the count";
  EXPECT_EQ(ask(8, 2), std::make_pair(0, std::vector<float>{1.5F, 2.5F, u, u}));
  EXPECT_EQ(ask(2, 3), std::make_pair(0, std::vector<float>{3.0F, 4.0F, u, u, u, u})) << "rows past the table";
  EXPECT_EQ(ask(5, 0, 3), std::make_pair(3, std::vector<float>(6, u))) << "too little room";
  EXPECT_EQ(ask(7, 10).first, -7);
  EXPECT_EQ(ask(9, 10).first, -9) << "a count of 0";
  EXPECT_EQ(ask(-3, 10).first, 3);
  EXPECT_EQ(ask(4, 3), std::make_pair(0, std::vector<float>(6, u))) << "a negative count";
  EXPECT_EQ(ask(4, -5, 3).first, -2) << "a capacity below a negative count";
  EXPECT_EQ(ask(0, 10), std::make_pair(0, std::vector<float>(20, u))) << "curve 0: a row of no points, -0";
  EXPECT_EQ(ask(5, 3, 3, bad_m, bad_f).first, -1);
  EXPECT_EQ(ask(1, 3).first, -1) << "the same as no version";
}

TMRDAR_FOR_EVERY_FORMAT(DistanceAlongRiser);
TMRDAR_FOR_EVERY_FORMAT(NodeProperties);
TMRDAR_FOR_EVERY_FORMAT(StressStrain);
TMRDAR_FOR_EVERY_FORMAT(SinglePrecisionCorners);

}  // namespace
}  // namespace tmrdar::model_queries
