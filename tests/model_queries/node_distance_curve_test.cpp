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

using XYZ = std::array<float, 3>;
constexpr float U = -7.0F;  // a place left untouched
constexpr XYZ UNTOUCHED{U, U, U};

class NodeProperties : public OpenJob {};

TEST_P(NodeProperties, RowsCoordinatesAndCodes) {
  builder::JOB job = NEW_JOB();
  job.FORCE.PRESENT = false;
  // Out of order, 7 twice, a node numbered 0, file numbers that are other
  // nodes' user numbers.
  job.MODEL.NODES = {{.FILE_NUMBER = 3, .X = 1.0F, .Y = 2.0F, .Z = 3.0F, .USER_NUMBER = 30},
                     {.FILE_NUMBER = 1, .X = 4.0F, .Y = 5.0F, .Z = 6.0F, .USER_NUMBER = 7},
                     {.FILE_NUMBER = 2, .X = -1.5F, .USER_NUMBER = 0},
                     {.FILE_NUMBER = 7, .X = 9.0F, .USER_NUMBER = 7}};
  job.MODEL.AUX_NODES = {{.NUMBER = 11, .X = 1.0F, .Y = 2.0F, .Z = 3.0F}, {.NUMBER = 7, .X = 4.0F, .Y = 5.0F, .Z = 6.0F}};
  ASSERT_TRUE(OPEN(job));
  const struct {
    int32_t number, kind, m, f, row;
    XYZ xyz;
    const char* why;
  } cases[] = {
      {7, 0, M, F, 2, {4.0F, 5.0F, 6.0F}, "the lower of two rows, with the codes of a job with no force file"},
      {0, 0, C, C, 3, {-1.5F, 0.0F, 0.0F}, "0 is a number like any other"},
      {7, 1, C, C, 2, {4.0F, 5.0F, 6.0F}, "an auxiliary node's values stand a column apart in their table"},
      {3, 0, C, C, 0, UNTOUCHED, "a file number is no user's number"},
      {30, 1, C, C, 0, UNTOUCHED, "no auxiliary node 30"},
      {7, 2, BAD_M, BAD_F, -2, UNTOUCHED, "a bad kind wins over a bad version"},
      {7, 0, BAD_M, BAD_F, -1, UNTOUCHED, "codes of no format"},
      {7, 1, -1, 0, -1, UNTOUCHED, "an unreadable motion file"},
  };
  for (auto c : cases) {
    XYZ xyz = UNTOUCHED;
    EXPECT_EQ(GetNodeProperties(&c.m, &c.f, &c.number, &c.kind, xyz.data()), c.row) << c.why;
    EXPECT_EQ(xyz, c.xyz) << c.why;
  }
}

TEST(Misc, MembershipPredicates) {
  using namespace MEMBERSHIP;
  // Node table (3, 2) of user numbers 30, 7, 12; pairs of node rows, row 2 only in column 2.
  using LIST = std::vector<int32_t>;
  EXPECT_EQ(IS_NODE_IN_DATABASE(7, 3, 2, 99, LIST{1, 2, 3, 30, 7, 12}, LIST{1, 1, 30, 2}), LOGICAL_TRUE);
  EXPECT_EQ(IS_ELEMENT_IN_DATABASE(50, LIST{4, 5, 6, 40, 50, 60}, 3), LOGICAL_TRUE);
  EXPECT_EQ(ELEM_IN_SET(3, LIST{8, 3, 9, 3}, 4), 2);
}

class DistanceAlongRiser : public OpenJob {
 protected:
  // The result and the distance written.
  std::pair<int32_t, float> ASK(int32_t number, int32_t position, int32_t m = OWN, int32_t f = OWN) {
    if (m == OWN) m = C;
    if (f == OWN) f = C;
    float distance = U;
    return {GetDistanceAlongRiser(&m, &f, &number, &position, &distance), distance};
  }
};

TEST_P(DistanceAlongRiser, RowsEndToEndInRowOrderAndTheCodes) {
  builder::JOB job = NEW_JOB();
  // Numbered out of order; row 2 stored negative, row 3 of length zero.
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 4, .LENGTH = 2.0F},
                        {.FILE_NUMBER = 2, .USER_NUMBER = 1, .LENGTH = -4.0F},
                        {.FILE_NUMBER = 3, .USER_NUMBER = 3, .LENGTH = 0.0F},
                        {.FILE_NUMBER = 4, .USER_NUMBER = 2, .LENGTH = 3.0F}};
  job.MODEL.AUX_ELEMENTS = {{.NUMBER = 1}};
  ASSERT_TRUE(OPEN(job));
  const float tiny = std::bit_cast<float>(0x322BCC77U);  // a negative length counts as 1.0e-8
  const struct {
    int32_t number, position, m, f;
    std::pair<int32_t, float> answer;
  } cases[] = {
      {4, 3, C, C, {0, 2.0F}},
      {1, 1, C, C, {0, 2.0F}},  // the end of row 1 is the start of row 2
      {1, 3, C, C, {0, 2.0F + tiny}},
      {2, 2, C, C, {0, 2.0F + tiny + 1.5F}},
      // The position before the version, nothing written; -3 and -1 write 0.
      {1, 0, BAD_M, BAD_F, {-2, U}},
      {1, 4, C, C, {-2, U}},
      {1, 3, BAD_M, BAD_F, {-3, 0.0F}},
      {0, 3, C, C, {-1, 0.0F}},
      {-1, 3, C, C, {-1, 0.0F}},  // auxiliary element 1, which has no distance
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ASK(c.number, c.position, c.m, c.f), c.answer) << c.number << " at " << c.position;
  }
}

class SinglePrecisionCorners : public OpenJob {};

// Corners of single precision and rounding that no request reaches, a row each.
TEST_P(SinglePrecisionCorners, OneRowEach) {
  builder::JOB job = NEW_JOB();
  job.RUN.NUM_TIME_STEPS = 1;
  job.RUN.OUTPUT_FLAGS[0] = 1;
  for (const float length : {1.0e7F, 0.6F, 0.6F, 1.0F}) {
    const auto e = static_cast<int32_t>(job.MODEL.ELEMENTS.size()) + 1;
    job.MODEL.ELEMENTS.push_back({.FILE_NUMBER = e, .USER_NUMBER = e, .LENGTH = length});
  }
  job.MODEL.NODES = {{.FILE_NUMBER = 1, .USER_NUMBER = 1}, {.FILE_NUMBER = 2, .USER_NUMBER = 2}};
  const float at[2][3] = {{10, 20, 30}, {4107, 21, 89}};
  for (int32_t n = 1; n <= 2; ++n) {
    for (int32_t c = 1; c <= 3; ++c) job.RESULTS.SET(builder::SECTION_KIND::DISPLACEMENT, 1, n, c, at[n - 1][c - 1]);
  }
  ASSERT_TRUE(OPEN(job));
  DB().TABLES.ELEMENT_SECTION_TABLE(1, 2) = -2.5F;
  int32_t m = C, f = C;
  const auto MASK_ERROR = [](int32_t mask, int32_t n) {
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
         results::RETRIEVE_DISTANCE_TWO_NODES(DB(), 1, 1, 2, value, status);
         return status == 0 ? value : -1.0F;
       }, 4097.42432F},
      // The bit count of 32768 is one short: room for 15 flags is enough.
      {"error mask bit count", [&] { return MASK_ERROR(32768, 15); }, 0.0},
      {"a negative error mask", [&] { return MASK_ERROR(-4, 15); }, -1.0},
      {"too little room for the error flags", [&] { return MASK_ERROR(1024, 5); }, 11.0},
  };
  for (const auto& row : rows) EXPECT_EQ(row.got(), row.want) << row.what;
}

class StressStrain : public OpenJob {
 protected:
  // The result and the array of `size` pairs (default: the capacity).
  std::pair<int32_t, std::vector<float>> ASK(int32_t id, int32_t capacity, int32_t size = -1, int32_t m = OWN,
                                             int32_t f = OWN) {
    if (m == OWN) m = C;
    if (f == OWN) f = C;
    std::vector<float> pairs(2 * static_cast<std::size_t>(size < 0 ? capacity : size), U);
    const int32_t result = GetProcessedDirectStressStrainData(&m, &f, &id, &capacity, pairs.data());
    return {result, pairs};
  }
  void SetUp() override {
    OpenJob::SetUp();
    builder::JOB job = NEW_JOB();
    // Curve 5 of three points, 8 of one, 5 again, 9 of none, 4 of -2, and 2
    // whose count runs past the end of the table.
    job.MODEL.NONLINEAR_E_TABLES = {{.CURVE = 5, .POINTS = 3, .VALUE_1 = 0.0F, .VALUE_2 = 0.0F},
                                    {.CURVE = 0, .POINTS = 0, .VALUE_1 = 0.001F, .VALUE_2 = 200.0F},
                                    {.CURVE = 0, .POINTS = 0, .VALUE_1 = 0.002F, .VALUE_2 = 350.0F},
                                    {.CURVE = 8, .POINTS = 1, .VALUE_1 = 1.5F, .VALUE_2 = 2.5F},
                                    {.CURVE = 5, .POINTS = 1, .VALUE_1 = 9.0F, .VALUE_2 = 9.0F},
                                    {.CURVE = 9, .POINTS = 0, .VALUE_1 = 1.0F, .VALUE_2 = 1.0F},
                                    {.CURVE = 4, .POINTS = -2, .VALUE_1 = 1.0F, .VALUE_2 = 2.0F},
                                    {.CURVE = 2, .POINTS = 3, .VALUE_1 = 3.0F, .VALUE_2 = 4.0F}};
    ASSERT_TRUE(OPEN(job));
  }
};

TEST_P(StressStrain, PairsAndResults) {
  EXPECT_EQ(ASK(5, 3), std::make_pair(0, std::vector<float>{0.0F, 0.0F, 0.001F, 200.0F, 0.002F, 350.0F}))
      << "the first of two rows, capacity equal to the count";
  EXPECT_EQ(ASK(8, 2), std::make_pair(0, std::vector<float>{1.5F, 2.5F, U, U}));
  EXPECT_EQ(ASK(2, 3), std::make_pair(0, std::vector<float>{3.0F, 4.0F, U, U, U, U})) << "rows past the table";
  EXPECT_EQ(ASK(5, 0, 3), std::make_pair(3, std::vector<float>(6, U))) << "too little room";
  EXPECT_EQ(ASK(7, 10).first, -7);
  EXPECT_EQ(ASK(9, 10).first, -9) << "a count of 0";
  EXPECT_EQ(ASK(-3, 10).first, 3);
  EXPECT_EQ(ASK(4, 3), std::make_pair(0, std::vector<float>(6, U))) << "a negative count";
  EXPECT_EQ(ASK(4, -5, 3).first, -2) << "a capacity below a negative count";
  EXPECT_EQ(ASK(0, 10), std::make_pair(0, std::vector<float>(20, U))) << "curve 0: a row of no points, -0";
  EXPECT_EQ(ASK(5, 3, 3, BAD_M, BAD_F).first, -1);
  EXPECT_EQ(ASK(1, 3).first, -1) << "the same as no version";
}

TMRDAR_FOR_EVERY_FORMAT(DistanceAlongRiser);
TMRDAR_FOR_EVERY_FORMAT(NodeProperties);
TMRDAR_FOR_EVERY_FORMAT(StressStrain);
TMRDAR_FOR_EVERY_FORMAT(SinglePrecisionCorners);

}  // namespace
}  // namespace tmrdar::model_queries
