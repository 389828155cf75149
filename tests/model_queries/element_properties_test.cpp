// What an element is made of: the slots of main and auxiliary elements, the
// size rules, the marks of unset slots and the order of the argument tests.
#include <bit>
#include <vector>

#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

// One call's result and arrays, of `size` slots that held 99 before.
struct ANSWER {
  int32_t result = 0;
  std::vector<int32_t> ints;
  std::vector<float> reals;
};

class ElementProperties : public OpenJob {
 protected:
  ANSWER ASK(int32_t number, int32_t kind, int32_t n, int32_t size = -1, int32_t m = 13, int32_t f = 13) {
    ANSWER a{0, std::vector<int32_t>(static_cast<std::size_t>(size < 0 ? n : size), 99),
             std::vector<float>(static_cast<std::size_t>(size < 0 ? n : size), 99.0F)};
    a.result = GetElementProperties(&m, &f, &number, &kind, &n, a.ints.data(), a.reals.data());
    return a;
  }
};

std::vector<int32_t> MARKS(std::size_t n, std::vector<int32_t> head = {}) {
  head.resize(n, -1);
  return head;
}

builder::JOB MODEL() {
  builder::JOB job;
  job.RUN.EXTERNAL_FLUID_DEFAULT_A = 1025.0F;
  job.RUN.EXTERNAL_FLUID_DEFAULT_B = 0.5F;
  job.MODEL.NODES = {{.FILE_NUMBER = 3, .USER_NUMBER = 100}, {.FILE_NUMBER = 1, .USER_NUMBER = 200},
                     {.FILE_NUMBER = 40, .USER_NUMBER = 300}};
  // Numbered out of order: row 2 holds 3, so 2 is found by the scan in row 3.
  // Row 2's ends both read 2 once translated: the first is node row 2, the
  // second the file number 2, which no node has. Row 3's second end lies
  // beyond the node table.
  job.MODEL.ELEMENTS = {{.FILE_NUMBER = 1, .USER_NUMBER = 1, .NODES = {3, 40}, .LENGTH = 5.0F, .A6 = 6.5F,
                         .A7 = 7.5F, .A8 = 8, .B1 = 1.25F, .B2 = 2.25F, .B3 = 3.25F, .B4 = 4.25F, .B5 = 55,
                         .B6 = 6.25F, .B7 = 7.25F, .B8 = 8.25F, .C1 = 9.5F, .MATERIAL_1 = 11, .MATERIAL_2 = -12,
                         .MATERIAL_3 = 13.5F, .MATERIAL_4 = 14},
                        {.FILE_NUMBER = 2, .USER_NUMBER = 3, .NODES = {1, 2}, .LENGTH = -0.5F},
                        {.FILE_NUMBER = 3, .USER_NUMBER = 2, .NODES = {40, 99}}};
  job.MODEL.AUX_NODES = {{.NUMBER = 11}, {.NUMBER = 12}, {.NUMBER = 13}};
  job.MODEL.AUX_ELEMENTS = {{.NUMBER = 5, .NODES = {3, 1}, .W8 = 77}, {.NUMBER = 6, .NODES = {2, 4}, .W8 = 78}};
  return job;
}

TEST_F(ElementProperties, SlotsOfMainElements) {
  ASSERT_TRUE(OPEN(MODEL()));
  ANSWER a = ASK(1, 0, 17);
  EXPECT_EQ(a.result, 0);
  EXPECT_EQ(a.ints, MARKS(17, {1, 100, 300, 8, 55, -12, 14}));
  EXPECT_EQ(a.reals, (std::vector<float>{5.0F, 1025.0F, 0.5F, 0.0F, 1.25F, 2.25F, 3.25F, 4.25F, 13.5F, 6.5F, 7.5F,
                                         6.25F, 7.25F, 8.25F, 9.5F, -1.0F, -1.0F}));
  a = ASK(3, 0, 15);
  EXPECT_EQ(a.ints, MARKS(15, {2, 200, -1, 0, 0, 0, 0})) << "an end left as a file number has no node";
  EXPECT_EQ(std::bit_cast<uint32_t>(a.reals[0]), 0x322BCC77U) << "a negative length reads 1.0e-8";
  a = ASK(2, 0, 15);
  EXPECT_EQ(a.ints, MARKS(15, {3, 300, -1, 0, 0, 0, 0}));
}

TEST_F(ElementProperties, KindThenMarksThenVersionThenNumberThenSize) {
  ASSERT_TRUE(OPEN(MODEL()));
  ANSWER a = ASK(1, 7, 20, 20, BAD_M, BAD_F);
  EXPECT_EQ(a.result, -3);
  EXPECT_EQ(a.ints, std::vector<int32_t>(20, 99)) << "a bad kind touches nothing";
  a = ASK(1, 0, 20, 20, BAD_M, BAD_F);
  EXPECT_EQ(a.result, -2) << "where the node query's -2 is a bad kind";
  EXPECT_EQ(a.ints, MARKS(20));
  EXPECT_EQ(a.reals, std::vector<float>(20, -1.0F));
  for (const int32_t number : {0, 4, -7}) EXPECT_EQ(ASK(number, 0, 20).ints, MARKS(20)) << number;
  EXPECT_EQ(ASK(0, 0, 20).result, -1);
  EXPECT_EQ(ASK(-7, 0, 20).result, -1) << "in no auxiliary row";

  a = ASK(1, 0, 14);
  EXPECT_EQ(a.result, 15);
  EXPECT_EQ(a.ints, MARKS(14));
  EXPECT_EQ(ASK(1, 0, 15).reals[14], 9.5F);
  a = ASK(1, 0, 0, 15);
  EXPECT_EQ(a.result, 15);
  EXPECT_EQ(a.ints, std::vector<int32_t>(15, 99)) << "no slots, nothing marked";
  EXPECT_EQ(ASK(1, 0, 3, 5).ints, (std::vector<int32_t>{-1, -1, -1, 99, 99}));
}

TEST_F(ElementProperties, AuxiliaryElementsByTheirNumberOrItsNegative) {
  ASSERT_TRUE(OPEN(MODEL()));
  ANSWER a = ASK(5, 1, 6);
  EXPECT_EQ(a.result, 0);
  EXPECT_EQ(a.ints, MARKS(6, {1, 13, 11, 77}));
  EXPECT_EQ(a.reals, std::vector<float>(6, -1.0F));
  EXPECT_EQ(ASK(6, 1, 4).ints, MARKS(4, {2, 12, -1, 78})) << "node row 4 of a table of 3";
  a = ASK(5, 1, 3);
  EXPECT_EQ(a.result, 4);
  EXPECT_EQ(a.ints, MARKS(3));
  EXPECT_EQ(ASK(-5, 1, 4).result, -1) << "kind 1 takes the number as given";

  // Kind 0 and a negative number: that auxiliary element, with its size rule.
  a = ASK(-6, 0, 4);
  EXPECT_EQ(a.result, 0);
  EXPECT_EQ(a.ints, MARKS(4, {2, 12, -1, 78}));
  EXPECT_EQ(a.reals, std::vector<float>(4, -1.0F));
  EXPECT_EQ(ASK(-5, 0, 3).result, 4);
}

TEST_F(ElementProperties, SlotsSixAndSevenRoundHalvesAwayFromZero) {
  ASSERT_TRUE(OPEN(MODEL()));
  header::TABLE<float, 2>& section = DB().TABLES.ELEMENT_SECTION_TABLE;
  const std::vector<std::pair<float, int32_t>> cases{
      {2.5F, 3}, {-2.5F, -3}, {0.5F, 1}, {-0.5F, -1}, {2.4999998F, 2}, {3.0e9F, 2147483647}};
  for (const auto& [value, rounded] : cases) {
    section(1, 2) = value;
    section(1, 4) = -value;
    const ANSWER a = ASK(1, 0, 15);
    EXPECT_EQ(a.ints[5], rounded) << value;
    EXPECT_EQ(a.ints[6], value > 1e9F ? -2147483647 - 1 : -rounded) << value;
  }
}

}  // namespace
}  // namespace tmrdar::model_queries
