// How far along the riser an element lies: rows end to end in row order, in
// a 32-bit sum.
#include <bit>
#include <vector>

#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

constexpr float UNTOUCHED = -7.0F;

class DistanceAlongRiser : public OpenJob {
 protected:
  int32_t ASK(int32_t number, int32_t position, float& distance, int32_t m = 13, int32_t f = 13) {
    return GetDistanceAlongRiser(&m, &f, &number, &position, &distance);
  }
  float AT(int32_t number, int32_t position) {
    float d = UNTOUCHED;
    EXPECT_EQ(ASK(number, position, d), 0) << number << " at " << position;
    return d;
  }
};

TEST_F(DistanceAlongRiser, RowsEndToEndInRowOrder) {
  builder::JOB job;
  // Numbered out of order; row 2 stored negative, row 3 of length zero.
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 4, .LENGTH = 2.0F},
                        {.FILE_NUMBER = 2, .USER_NUMBER = 1, .LENGTH = -4.0F},
                        {.FILE_NUMBER = 3, .USER_NUMBER = 3, .LENGTH = 0.0F},
                        {.FILE_NUMBER = 4, .USER_NUMBER = 2, .LENGTH = 3.0F}};
  ASSERT_TRUE(OPEN(job));
  const float tiny = std::bit_cast<float>(0x322BCC77U);
  EXPECT_EQ(AT(4, 1), 0.0F);
  EXPECT_EQ(AT(4, 2), 1.0F);
  EXPECT_EQ(AT(4, 3), 2.0F);
  EXPECT_EQ(AT(1, 1), 2.0F) << "the end of a row is the start of the next";
  EXPECT_EQ(AT(1, 3), 2.0F + tiny) << "a negative length counts as 1.0e-8";
  EXPECT_EQ(AT(3, 3), AT(3, 1));
  EXPECT_EQ(AT(2, 2), 2.0F + tiny + 1.5F);
}

TEST_F(DistanceAlongRiser, PositionBeforeVersionAndZeroForEveryOtherFailure) {
  builder::JOB job;
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .LENGTH = 2.0F}};
  job.MODEL.AUX_ELEMENTS = {{.NUMBER = 1}};
  ASSERT_TRUE(OPEN(job));
  float d = UNTOUCHED;
  EXPECT_EQ(ASK(1, 0, d, BAD_M, BAD_F), -2);
  EXPECT_EQ(ASK(1, 4, d), -2);
  EXPECT_EQ(d, UNTOUCHED);
  EXPECT_EQ(ASK(1, 3, d, BAD_M, BAD_F), -3);
  EXPECT_EQ(d, 0.0F);
  for (const int32_t number : {0, 2, -1}) {
    d = UNTOUCHED;
    EXPECT_EQ(ASK(number, 3, d), -1) << number << " (-1 names an auxiliary element, which has no distance)";
    EXPECT_EQ(d, 0.0F);
  }
}

TEST_F(DistanceAlongRiser, TheSumIsTheSequential32BitSumBitForBit) {
  builder::JOB job;
  std::vector<float> lengths;
  for (int32_t i = 1; i <= 3000; ++i) {
    lengths.push_back(i == 10 ? 1.0e7F : 0.1F + static_cast<float>(i % 7) * 0.013F);
    job.MODEL.ELEMENTS.push_back({.FILE_NUMBER = i, .USER_NUMBER = i, .LENGTH = lengths.back()});
  }
  ASSERT_TRUE(OPEN(job));
  float sum = 0.0F;
  double wide = 0.0;
  bool differs = false;
  for (int32_t r = 1; r <= 3000; ++r) {
    const float length = lengths[static_cast<std::size_t>(r - 1)];
    ASSERT_EQ(std::bit_cast<uint32_t>(AT(r, 1)), std::bit_cast<uint32_t>(sum)) << r;
    ASSERT_EQ(std::bit_cast<uint32_t>(AT(r, 2)), std::bit_cast<uint32_t>(length * 0.5F + sum)) << r;
    ASSERT_EQ(std::bit_cast<uint32_t>(AT(r, 3)), std::bit_cast<uint32_t>(sum + length)) << r;
    differs = differs || static_cast<float>(wide) != sum;
    sum = sum + length;
    wide += length;
  }
  EXPECT_TRUE(differs) << "the lengths must tell a 32-bit sum from a wider one";
}

}  // namespace
}  // namespace tmrdar::model_queries
