// Plastic hardening models of a material: a hardening rule with its scalars,
// and the curve of the isotropic hardening as pairs of 64-bit values.
//
// A model is made in steps, as a header reader finds its parts:
//
//   plastic_hardening_init(model);                 // the default state
//   allocate_data_pairs(model, n, status);         // room for n pairs
//   set_scalars_sub(model, rule, default_kinematic_share, default_curve_tolerance);
//   set_data_iso_sub(model, i, first, second);     // pair i, from 1 to n
//
// The pairs are held as an array of 2 rows and n columns: data_pairs(1, i) is
// the first value of pair i and data_pairs(2, i) the second. Its first extent,
// 2, is what sizes a model's records in the database.
#pragma once

#include <cstdint>
#include <vector>

namespace tmrdar::plastic_hardening {

// The constants that a database reader passes to set_scalars_sub, since the
// file holds only the rule: the hardening is wholly isotropic (no kinematic
// share), and two consecutive curve points closer than the tolerance in their
// first value count as one.
inline constexpr double default_kinematic_share = 0.0;
inline constexpr double default_curve_tolerance = 1.0e-12;

struct PlasticHardening {
  // The hardening rule, as the file codes it.
  int32_t rule = 0;
  double kinematic_share = 0.0;
  double curve_tolerance = 0.0;
  // Points of the curve, as the file states them.
  int32_t num_points = 0;

  // The pairs: 2 rows, num_pairs() columns, column-major.
  std::vector<double> data_pairs;
  bool data_allocated = false;

  int32_t num_pairs() const { return static_cast<int32_t>(data_pairs.size() / 2); }
  // Upper bound of the first dimension of the pair array: 2 once it is
  // allocated, 0 before.
  int32_t data_rows_ub() const { return data_allocated ? 2 : 0; }
  // Value (row, pair), both from 1; 0 outside the array.
  double data(int32_t row, int32_t pair) const;
};

// The default state: rule 0, no pairs, nothing allocated.
void plastic_hardening_init(PlasticHardening& model);
// Room for `count` pairs (none below 1), all zero. Status 0, or 1 when the
// memory cannot be had, with the array then released.
void allocate_data_pairs(PlasticHardening& model, int32_t count, int32_t& status);
void set_scalars_sub(PlasticHardening& model, int32_t rule, double kinematic_share, double curve_tolerance);
// Stores pair `index` (from 1). Status 0, or 1 for an index outside the
// array, which stores nothing.
void set_data_iso_sub(PlasticHardening& model, int32_t index, double first, double second, int32_t& status);
// Releases the arrays of a model.
void deallocate(PlasticHardening& model);

}  // namespace tmrdar::plastic_hardening
