// The points of a nonlinear material curve as pairs.
#include <vector>

#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

constexpr float U = -7.0F;  // a place left untouched

class StressStrain : public OpenJob {
 protected:
  // The result and the array of `size` pairs (default: the capacity).
  std::pair<int32_t, std::vector<float>> ASK(int32_t id, int32_t capacity, int32_t size = -1, int32_t m = 13,
                                             int32_t f = 13) {
    std::vector<float> pairs(2 * static_cast<std::size_t>(size < 0 ? capacity : size), U);
    const int32_t result = GetProcessedDirectStressStrainData(&m, &f, &id, &capacity, pairs.data());
    return {result, pairs};
  }
  void SetUp() override {
    OpenJob::SetUp();
    builder::JOB job;
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

TEST_F(StressStrain, PairsAndResults) {
  EXPECT_EQ(ASK(5, 3), std::make_pair(0, std::vector<float>{0.0F, 0.0F, 0.001F, 200.0F, 0.002F, 350.0F}))
      << "the first of two rows, capacity equal to the count";
  EXPECT_EQ(ASK(8, 2), std::make_pair(0, std::vector<float>{1.5F, 2.5F, U, U}));
  EXPECT_EQ(ASK(2, 3), std::make_pair(0, std::vector<float>{3.0F, 4.0F, U, U, U, U})) << "rows past the table";
  EXPECT_EQ(ASK(5, 0, 3), std::make_pair(3, std::vector<float>(6, U))) << "too little room";
  EXPECT_EQ(ASK(5, -1, 3).first, 3);
  EXPECT_EQ(ASK(7, 10).first, -7);
  EXPECT_EQ(ASK(9, 10).first, -9) << "a count of 0";
  EXPECT_EQ(ASK(-3, 10).first, 3);
  EXPECT_EQ(ASK(4, 3), std::make_pair(0, std::vector<float>(6, U))) << "a negative count";
  EXPECT_EQ(ASK(4, -5, 3).first, -2) << "a capacity below a negative count";
  EXPECT_EQ(ASK(0, 10), std::make_pair(0, std::vector<float>(20, U))) << "curve 0: a row of no points, -0";
  EXPECT_EQ(ASK(5, 3, 3, BAD_M, BAD_F).first, -1);
  EXPECT_EQ(ASK(1, 3).first, -1) << "the same as no version";
}

TEST_F(StressStrain, NumbersAndCountsRoundHalvesAwayFromZero) {
  header::TABLE<float, 2>& table = DB().TABLES.NONLINEAR_E_TABLE;
  table(4, 1) = 2.5F;  // curve 3 ...
  table(4, 2) = 1.5F;  // ... of two points
  table(1, 1) = -2.5F;
  table(6, 1) = 3.0e9F;  // no 32-bit number
  table(6, 2) = 1.0F;
  EXPECT_EQ(ASK(3, 2), std::make_pair(0, std::vector<float>{1.5F, 2.5F, 9.0F, 9.0F}));
  EXPECT_EQ(ASK(-3, 3).first, 0);
  EXPECT_EQ(ASK(2147483647, 3).first, -2147483647);
  table(4, 2) = -0.5F;
  EXPECT_EQ(ASK(3, 2).first, 0) << "-1 point, not 0";
}

}  // namespace
}  // namespace tmrdar::model_queries
