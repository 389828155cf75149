// A plastic hardening model made step by step as a header reader makes it.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

#include "plastic_hardening/plastic_hardening.h"

namespace tmrdar::plastic_hardening {
namespace {

TEST(PlasticHardening, PairsAreStoredByColumnAndReadBackByRowAndPair) {
  PlasticHardening model;
  int32_t status = -1;
  allocate_data_pairs(model, 3, status);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(std::pair(model.num_pairs(), model.data_rows_ub()), std::pair(3, 2));
  set_data_iso_sub(model, 1, 250.0e6, 0.0, status);
  set_data_iso_sub(model, 3, 400.0e6, 0.125, status);
  EXPECT_EQ(status, 0);
  // Column-major: pair i is data_pairs[2i - 2] and [2i - 1]; the room starts at zero.
  EXPECT_EQ(model.data_pairs, (std::vector<double>{250.0e6, 0.0, 0.0, 0.0, 400.0e6, 0.125}));
  EXPECT_EQ(std::pair(model.data(1, 3), model.data(2, 3)), std::pair(400.0e6, 0.125));

  // Outside the array nothing is stored, a failure is reported, and reads give 0.
  for (const int32_t index : {0, -1, 4}) {
    status = 0;
    set_data_iso_sub(model, index, 9.0, 9.0, status);
    EXPECT_EQ(status, 1) << "index " << index;
  }
  EXPECT_EQ(model.data_pairs, (std::vector<double>{250.0e6, 0.0, 0.0, 0.0, 400.0e6, 0.125}));
  for (const auto& [row, pair] : {std::pair{0, 1}, {3, 1}, {1, 4}, {1, 0}}) {
    EXPECT_EQ(model.data(row, pair), 0.0) << row << ", " << pair;
  }
}

TEST(PlasticHardening, NoPairsReallocationInitAndReleaseStartAfresh) {
  PlasticHardening model;
  int32_t status = -1;
  for (const int32_t count : {0, -5}) {
    allocate_data_pairs(model, count, status);
    EXPECT_EQ(std::tuple(status, model.num_pairs(), model.data_rows_ub()), std::tuple(0, 0, 2)) << count;
    set_data_iso_sub(model, 1, 1.0, 1.0, status);
    EXPECT_EQ(status, 1);
  }
  allocate_data_pairs(model, 2, status);
  set_data_iso_sub(model, 2, 5.0, 6.0, status);
  set_scalars_sub(model, 3, default_kinematic_share, default_curve_tolerance);
  model.num_points = 2;
  allocate_data_pairs(model, 4, status);  // another size, zeros only
  EXPECT_EQ(model.num_pairs(), 4);
  EXPECT_EQ(std::pair(model.data(1, 2), model.data(2, 2)), std::pair(0.0, 0.0));

  plastic_hardening_init(model);
  EXPECT_EQ(std::tuple(model.rule, model.num_points, model.kinematic_share, model.curve_tolerance, model.num_pairs(),
                       model.data_rows_ub()),
            std::tuple(0, 0, 0.0, 0.0, 0, 0));
  allocate_data_pairs(model, 5, status);
  deallocate(model);
  deallocate(model);  // may be repeated
  EXPECT_EQ(std::tuple(model.num_pairs(), model.data_rows_ub(), model.data_allocated), std::tuple(0, 0, false));
  set_data_iso_sub(model, 1, 1.0, 1.0, status);
  EXPECT_EQ(status, 1);
}

}  // namespace
}  // namespace tmrdar::plastic_hardening
