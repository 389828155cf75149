// Where a node lies, and the membership predicates over node and element
// tables.
#include <vector>

#include "model_queries/membership.h"
#include "model_queries/open_job.h"

namespace tmrdar::model_queries {
namespace {

using XYZ = std::array<float, 3>;
constexpr XYZ UNTOUCHED{-7.0F, -7.0F, -7.0F};

class NodeProperties : public OpenJob {
 protected:
  int32_t ASK(int32_t number, int32_t kind, XYZ& xyz, int32_t m = 13, int32_t f = 13) {
    return GetNodeProperties(&m, &f, &number, &kind, xyz.data());
  }
};

TEST_F(NodeProperties, RowsAndCoordinatesOfNodesAndAuxiliaryNodes) {
  builder::JOB job;
  // Out of order, 7 twice, a node numbered 0, file numbers that are other
  // nodes' user numbers.
  job.MODEL.NODES = {{.FILE_NUMBER = 3, .X = 1.0F, .Y = 2.0F, .Z = 3.0F, .USER_NUMBER = 30},
                     {.FILE_NUMBER = 1, .X = 4.0F, .Y = 5.0F, .Z = 6.0F, .USER_NUMBER = 7},
                     {.FILE_NUMBER = 2, .X = -1.5F, .USER_NUMBER = 0},
                     {.FILE_NUMBER = 7, .X = 9.0F, .USER_NUMBER = 7}};
  job.MODEL.AUX_NODES = {{.NUMBER = 11, .X = 1.0F, .Y = 2.0F, .Z = 3.0F}, {.NUMBER = 7, .X = 4.0F, .Y = 5.0F, .Z = 6.0F}};
  ASSERT_TRUE(OPEN(job));
  XYZ xyz = UNTOUCHED;
  EXPECT_EQ(ASK(7, 0, xyz), 2) << "the lower of two rows";
  EXPECT_EQ(xyz, (XYZ{4.0F, 5.0F, 6.0F}));
  EXPECT_EQ(ASK(0, 0, xyz), 3) << "0 is a number like any other";
  EXPECT_EQ(xyz, (XYZ{-1.5F, 0.0F, 0.0F}));
  // An auxiliary node's values stand a column apart in their table.
  EXPECT_EQ(ASK(7, 1, xyz), 2);
  EXPECT_EQ(xyz, (XYZ{4.0F, 5.0F, 6.0F}));

  xyz = UNTOUCHED;
  EXPECT_EQ(ASK(3, 0, xyz), 0) << "a file number is no user's number";
  EXPECT_EQ(ASK(30, 1, xyz), 0);
  EXPECT_EQ(xyz, UNTOUCHED);
}

TEST_F(NodeProperties, KindBeforeVersionAndTheirOwnCodes) {
  builder::JOB job;
  job.FORCE.PRESENT = false;
  job.MODEL.NODES = {{.FILE_NUMBER = 1, .X = 1.0F, .USER_NUMBER = 5}};
  ASSERT_TRUE(OPEN(job));
  XYZ xyz = UNTOUCHED;
  EXPECT_EQ(ASK(5, 2, xyz, BAD_M, BAD_F), -2) << "a bad kind wins over a bad version";
  EXPECT_EQ(ASK(5, 0, xyz, BAD_M, BAD_F), -1);
  EXPECT_EQ(ASK(5, 1, xyz, -1, 0), -1);
  EXPECT_EQ(xyz, UNTOUCHED);
  EXPECT_EQ(ASK(5, 0, xyz, M, F), 1) << "the codes of a job with no force file";
  EXPECT_EQ(xyz, (XYZ{1.0F, 0.0F, 0.0F}));
}

TEST(Misc, MembershipPredicates) {
  // Node table (3, 2), user numbers 30, 7, 12; pairs (2, 2) of node rows,
  // with row 2 only in column 2 and the number 30 standing in the table too.
  const std::vector<int32_t> nodes{1, 2, 3, 30, 7, 12};
  const std::vector<int32_t> pairs{1, 1, 30, 2};
  EXPECT_EQ(MEMBERSHIP::IS_NODE_IN_DATABASE(7, 3, 2, 99, nodes, pairs), MEMBERSHIP::LOGICAL_TRUE);
  EXPECT_EQ(MEMBERSHIP::IS_NODE_IN_DATABASE(12, 3, 2, 0, nodes, pairs), MEMBERSHIP::LOGICAL_FALSE) << "row 3 is in no pair";
  EXPECT_EQ(MEMBERSHIP::IS_NODE_IN_DATABASE(2, 3, 2, 0, nodes, pairs), MEMBERSHIP::LOGICAL_FALSE) << "a file number";
  EXPECT_EQ(MEMBERSHIP::IS_NODE_IN_DATABASE(7, 3, 0, 0, nodes, pairs), MEMBERSHIP::LOGICAL_FALSE) << "no pairs";

  const std::vector<int32_t> elements{4, 5, 6, 40, 50, 60};
  EXPECT_EQ(MEMBERSHIP::IS_ELEMENT_IN_DATABASE(50, elements, 3), MEMBERSHIP::LOGICAL_TRUE);
  EXPECT_EQ(MEMBERSHIP::IS_ELEMENT_IN_DATABASE(5, elements, 3), MEMBERSHIP::LOGICAL_FALSE) << "column 1 is not looked at";
  EXPECT_EQ(MEMBERSHIP::IS_ELEMENT_IN_DATABASE(50, elements, 0), MEMBERSHIP::LOGICAL_FALSE);

  const std::vector<int32_t> set{8, 3, 9, 3};
  EXPECT_EQ(MEMBERSHIP::ELEM_IN_SET(3, set, 4), 2);
  EXPECT_EQ(MEMBERSHIP::ELEM_IN_SET(9, set, 2), 0) << "beyond the length given";
  EXPECT_EQ(MEMBERSHIP::ELEM_IN_SET(3, {}, 5), 0) << "nothing read past the list";
}

}  // namespace
}  // namespace tmrdar::model_queries
