// A plastic hardening model made step by step as a header reader makes it.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

#include "plastic_hardening/plastic_hardening.h"

namespace tmrdar::MOD_PLASTIC_HARDENING {
namespace {

TEST(PlasticHardening, PairsAreStoredByColumnAndReadBackByRowAndPair) {
  T_PLASTIC_HARDENING model;
  int32_t status = -1;
  ALLOCATE_DATA_PAIRS(model, 3, status);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(std::pair(model.NUM_PAIRS(), model.DATA_ROWS_UB()), std::pair(3, 2));
  SET_DATA_ISO_SUB(model, 1, 250.0e6, 0.0, status);
  SET_DATA_ISO_SUB(model, 3, 400.0e6, 0.125, status);
  EXPECT_EQ(status, 0);
  // Column-major: pair i is DATA_PAIRS[2i - 2] and [2i - 1]; the room starts at zero.
  EXPECT_EQ(model.DATA_PAIRS, (std::vector<double>{250.0e6, 0.0, 0.0, 0.0, 400.0e6, 0.125}));
  EXPECT_EQ(std::pair(model.DATA(1, 3), model.DATA(2, 3)), std::pair(400.0e6, 0.125));

  // Outside the array nothing is stored, a failure is reported, and reads give 0.
  for (const int32_t index : {0, -1, 4}) {
    status = 0;
    SET_DATA_ISO_SUB(model, index, 9.0, 9.0, status);
    EXPECT_EQ(status, 1) << "index " << index;
  }
  EXPECT_EQ(model.DATA_PAIRS, (std::vector<double>{250.0e6, 0.0, 0.0, 0.0, 400.0e6, 0.125}));
  for (const auto& [row, pair] : {std::pair{0, 1}, {3, 1}, {1, 4}, {1, 0}}) {
    EXPECT_EQ(model.DATA(row, pair), 0.0) << row << ", " << pair;
  }
}

TEST(PlasticHardening, NoPairsReallocationInitAndReleaseStartAfresh) {
  T_PLASTIC_HARDENING model;
  int32_t status = -1;
  for (const int32_t count : {0, -5}) {
    ALLOCATE_DATA_PAIRS(model, count, status);
    EXPECT_EQ(std::tuple(status, model.NUM_PAIRS(), model.DATA_ROWS_UB()), std::tuple(0, 0, 2)) << count;
    SET_DATA_ISO_SUB(model, 1, 1.0, 1.0, status);
    EXPECT_EQ(status, 1);
  }
  ALLOCATE_DATA_PAIRS(model, 2, status);
  SET_DATA_ISO_SUB(model, 2, 5.0, 6.0, status);
  SET_SCALARS_SUB(model, 3, DEFAULT_KINEMATIC_SHARE, DEFAULT_CURVE_TOLERANCE);
  model.NUM_POINTS = 2;
  ALLOCATE_DATA_PAIRS(model, 4, status);  // another size, zeros only
  EXPECT_EQ(model.NUM_PAIRS(), 4);
  EXPECT_EQ(std::pair(model.DATA(1, 2), model.DATA(2, 2)), std::pair(0.0, 0.0));

  PLASTIC_HARDENING_INIT(model);
  EXPECT_EQ(std::tuple(model.RULE, model.NUM_POINTS, model.KINEMATIC_SHARE, model.CURVE_TOLERANCE, model.NUM_PAIRS(),
                       model.DATA_ROWS_UB()),
            std::tuple(0, 0, 0.0, 0.0, 0, 0));
  ALLOCATE_DATA_PAIRS(model, 5, status);
  DEALLOCATE(model);
  DEALLOCATE(model);  // may be repeated
  EXPECT_EQ(std::tuple(model.NUM_PAIRS(), model.DATA_ROWS_UB(), model.DATA_ALLOCATED), std::tuple(0, 0, false));
  SET_DATA_ISO_SUB(model, 1, 1.0, 1.0, status);
  EXPECT_EQ(status, 1);
}

}  // namespace
}  // namespace tmrdar::MOD_PLASTIC_HARDENING
