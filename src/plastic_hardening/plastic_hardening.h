// Plastic hardening models of a material: a hardening rule with its scalars,
// and the curve of the isotropic hardening as pairs of 64-bit values.
//
// A model is made in steps, as a header reader finds its parts:
//
//   PLASTIC_HARDENING_INIT(model);                 // the default state
//   ALLOCATE_DATA_PAIRS(model, n, status);         // room for n pairs
//   SET_SCALARS_SUB(model, rule, DEFAULT_KINEMATIC_SHARE, DEFAULT_CURVE_TOLERANCE);
//   SET_DATA_ISO_SUB(model, i, first, second);     // pair i, from 1 to n
//
// The pairs are held as an array of 2 rows and n columns: DATA_PAIRS(1, i) is
// the first value of pair i and DATA_PAIRS(2, i) the second. Its first extent,
// 2, is what sizes a model's records in the database.
#pragma once

#include <cstdint>
#include <vector>

namespace tmrdar::MOD_PLASTIC_HARDENING {

// The constants that a database reader passes to SET_SCALARS_SUB, since the
// file holds only the rule: the hardening is wholly isotropic (no kinematic
// share), and two consecutive curve points closer than the tolerance in their
// first value count as one.
inline constexpr double DEFAULT_KINEMATIC_SHARE = 0.0;
inline constexpr double DEFAULT_CURVE_TOLERANCE = 1.0e-12;

struct T_PLASTIC_HARDENING {
  // The hardening rule, as the file codes it.
  int32_t RULE = 0;
  double KINEMATIC_SHARE = 0.0;
  double CURVE_TOLERANCE = 0.0;
  // Points of the curve, as the file states them.
  int32_t NUM_POINTS = 0;

  // The pairs: 2 rows, NUM_PAIRS() columns, column-major.
  std::vector<double> DATA_PAIRS;
  bool DATA_ALLOCATED = false;

  int32_t NUM_PAIRS() const { return static_cast<int32_t>(DATA_PAIRS.size() / 2); }
  // Upper bound of the first dimension of the pair array: 2 once it is
  // allocated, 0 before.
  int32_t DATA_ROWS_UB() const { return DATA_ALLOCATED ? 2 : 0; }
  // Value (row, pair), both from 1; 0 outside the array.
  double DATA(int32_t row, int32_t pair) const;
};

// The default state: rule 0, no pairs, nothing allocated.
void PLASTIC_HARDENING_INIT(T_PLASTIC_HARDENING& model);
// Room for `count` pairs (none below 1), all zero. Status 0, or 1 when the
// memory cannot be had, with the array then released.
void ALLOCATE_DATA_PAIRS(T_PLASTIC_HARDENING& model, int32_t count, int32_t& status);
void SET_SCALARS_SUB(T_PLASTIC_HARDENING& model, int32_t rule, double kinematic_share, double curve_tolerance);
// Stores pair `index` (from 1). Status 0, or 1 for an index outside the
// array, which stores nothing.
void SET_DATA_ISO_SUB(T_PLASTIC_HARDENING& model, int32_t index, double first, double second, int32_t& status);
// Releases the arrays of a model.
void DEALLOCATE(T_PLASTIC_HARDENING& model);

}  // namespace tmrdar::MOD_PLASTIC_HARDENING
