#include "results/guide_axes.h"

#include <array>
#include <bit>
#include <cmath>
#include <string_view>

#include "frame/base/error_handling.h"
#include "header/result_frames.h"
#include "results/frame_sections.h"
#include "results/letter_lookup.h"

namespace tmrdar::results {
namespace {

using header::frame_words::add;
using header::frame_words::mul;
using Vector = std::array<float, 3>;

constexpr float small = 1e-20F;

constexpr std::string_view nodal_read_failed = "Unable to read nodal motion results from database.";
constexpr std::string_view flags_differ =
    "The contents of the database files do not match what is requested. You should rerun the analysis.";
constexpr std::string_view element_count_differs =
    "The number of elements in the database files does not match the number requested. You should rerun the "
    "analysis.";
constexpr std::string_view elements_differ =
    "The elements included in the database files do not match those requested. You should rerun the analysis.";

// truncate(single(n) * 0.125): the records that n words fill, in 32-bit
// floating point as the frames are laid out.
int64_t whole_records(int64_t n) { return static_cast<int64_t>(static_cast<float>(n) * 0.125F); }

// Row i of a 3 x 3 matrix.
template <typename Real>
void set_row(Matrix3<Real>& matrix, int i, const std::array<Real, 3>& row) {
  for (int j = 1; j <= 3; ++j) matrix[m3(i, j)] = row[static_cast<std::size_t>(j - 1)];
}

// n, t and b of a zero gap guide; false for a row the table does not hold.
bool zgg_vectors(const header::HeaderTables& t, int32_t row, Vector& n, Vector& tangent, Vector& b) {
  if (!t.zgg_direction.contains(row, 3)) return false;
  n = {t.zgg_direction(row, 1), t.zgg_direction(row, 2), t.zgg_direction(row, 3)};
  if (std::fabs(n[0]) > small) {
    tangent = {n[1] / (0.0F - n[0]), 1.0F, 0.0F};
  } else if (std::fabs(n[1]) > small) {
    tangent = {0.0F, n[2] / (0.0F - n[1]), 1.0F};
  } else {
    tangent = {1.0F, 0.0F, (0.0F - n[0]) / n[2]};
  }
  float length = 0.0F;
  normalise(tangent, length);
  cross_product(n, tangent, b);
  return true;
}

}  // namespace

bool form_axes(const header::FormatReader& db, int32_t row, Matrix3<float>& axes) {
  const header::Table<float, 3>& stored = db.tables.axes_table;
  if (!stored.contains(row, 2, 3)) return false;
  Vector p{};
  Vector q{};
  for (std::size_t k = 0; k < 3; ++k) {
    p[k] = stored(row, 1, static_cast<int64_t>(k) + 1);
    q[k] = stored(row, 2, static_cast<int64_t>(k) + 1);
  }
  Vector w{};
  cross_product(p, q, w);
  set_row(axes, 1, p);
  set_row(axes, 2, q);
  set_row(axes, 3, w);
  return true;
}

bool form_zgg_axes(const header::FormatReader& db, int32_t row, Matrix3<float>& axes) {
  Vector n{};
  Vector t{};
  Vector b{};
  if (!zgg_vectors(db.tables, row, n, t, b)) return false;
  set_row(axes, 1, n);
  set_row(axes, 2, t);
  set_row(axes, 3, b);
  return true;
}

bool transform(const header::FormatReader& db, int32_t row, std::span<float, 3> point) {
  const header::Table<float, 2>& origin = db.tables.origin_table;
  Matrix3<float> axes{};
  if (!origin.contains(row, 3) || !form_axes(db, row, axes)) return false;
  Vector d{};
  for (std::size_t k = 0; k < 3; ++k) d[k] = point[k] - origin(row, static_cast<int64_t>(k) + 1);
  for (int i = 1; i <= 3; ++i) {
    point[static_cast<std::size_t>(i - 1)] = (axes[m3(i, 3)] * d[2] + axes[m3(i, 2)] * d[1]) + axes[m3(i, 1)] * d[0];
  }
  return true;
}

bool transform_zgg(const header::FormatReader& db, int32_t row, std::span<float, 3> point) {
  const header::Table<float, 2>& origin = db.tables.zgg_origin;
  Vector n{};
  Vector t{};
  Vector b{};
  if (!origin.contains(row, 3) || !zgg_vectors(db.tables, row, n, t, b)) return false;
  Vector d{};
  for (std::size_t k = 0; k < 3; ++k) d[k] = point[k] - origin(row, static_cast<int64_t>(k) + 1);
  std::size_t i = 0;
  for (const Vector* axis : {&n, &t, &b}) {
    const Vector& x = *axis;
    point[i++] = (x[0] * d[0] + x[1] * d[1]) + x[2] * d[2];
  }
  return true;
}

void eigvec(double angle, std::span<const double, 3> axis, Matrix3<double>& matrix) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      const double aa = axis[static_cast<std::size_t>(i - 1)] * axis[static_cast<std::size_t>(j - 1)];
      double value = aa + ((i == j ? 1.0 : 0.0) - aa) * c;
      if (i != j) {
        // k is the third index; e_ijk is +1 where (i, j, k) runs as (1, 2, 3) does.
        const int k = 6 - i - j;
        const double sign = (j - i == 1 || j - i == -2) ? 1.0 : -1.0;
        value = value + axis[static_cast<std::size_t>(k - 1)] * s * sign;
      }
      matrix[m3(i, j)] = value;
    }
  }
}

void find_active_node_flag(header::FormatReader& db, int32_t node_row, int32_t step, int32_t& flag,
                           bool& error) {
  flag = 0;
  error = false;
  const header::HeaderVariables& h = db;
  const int64_t q = whole_records(int64_t{node_row} - 1);
  int64_t record = header::start_records(h, h.motion_start_offset);
  record = add(record, -int64_t{h.num_vessels});
  record = add(record, -whole_records(h.num_nodes));
  record = add(record, mul(step, h.motion_frame_records));
  record = add(add(record, q), 1);
  const int64_t word = add(add(mul(8, record), int64_t{node_row} - (8 * q + 8)), -16);
  float value = 0.0F;
  db.readin(motion, word, value, error);
  if (!error) flag = std::bit_cast<int32_t>(value);
}

void update_guide_coords_axes(header::FormatReader& db, int32_t step, bool& error) {
  error = false;
  header::HeaderTables& t = db.tables;
  for (int32_t i = 1; i <= db.num_guide_surfaces; ++i) {
    if (!t.origin_table.contains(i, 3) || !t.axes_table.contains(i, 2, 3)) {
      error = true;
      return;
    }
    for (int32_t word = 1; word <= 9; ++word) {
      float& place = word <= 3 ? t.origin_table(i, word) : t.axes_table(i, word <= 6 ? 1 : 2, (word - 1) % 3 + 1);
      dabfnd(db, step, 0, i, word, 'G', place, error);
      if (error) return;
    }
  }
  for (int32_t i = 1; i <= db.num_zero_gap_guides; ++i) {
    if (!t.zgg_origin.contains(i, 3) || !t.zgg_direction.contains(i, 3)) {
      error = true;
      return;
    }
    for (int32_t word = 1; word <= 6; ++word) {
      float& place = word <= 3 ? t.zgg_origin(i, word) : t.zgg_direction(i, word - 3);
      dabfnd(db, step, 0, i, word, 'H', place, error);
      if (error) return;
    }
  }
}

void read_node_dofs(header::FormatReader& db, int32_t step, int32_t node, std::span<float, 6> dofs,
                    bool& error) {
  error = false;
  const header::HeaderVariables& h = db;
  const int64_t frame =
      add(header::start_records(h, h.motion_start_offset), mul(int64_t{step} - 1, h.motion_frame_records));
  const int64_t first = 6 * int64_t{node} - 5;
  for (std::size_t k = 0; k < 6; ++k) {
    const int64_t w = first + static_cast<int64_t>(k);
    const int64_t q = whole_records(w - 1);
    const int64_t record = add(add(frame, 1), q);
    // Place w - 8q of the record; where the single-precision q rounds, that
    // place lies outside 1 to 8 and names a word of a neighbouring record.
    const int64_t word = add(mul(8, add(record, -1)), w - 8 * q);
    db.readin(motion, word, dofs[k], error);
    if (error) {
      error_handling::error3(true, error_handling::database_postprocessing, nodal_read_failed);
      return;
    }
  }
}

bool do_database_files_match_keyword_file(const header::FormatReader& db,
                                          std::span<const int32_t> requested_flags, int32_t requested_elements,
                                          std::span<const int32_t> element_numbers) {
  const auto differ = [](std::string_view text) {
    error_handling::error3(true, error_handling::database_postprocessing, text);
    return false;
  };
  if (requested_flags.size() > db.output_flags.size()) return differ(flags_differ);
  for (std::size_t i = 0; i < requested_flags.size(); ++i) {
    if (requested_flags[i] != db.output_flags[i]) return differ(flags_differ);
  }
  if (requested_elements != db.num_elements) return differ(element_count_differs);
  const header::Table<int32_t, 2>& numbers = db.tables.element_numbers;
  for (int64_t e = 1; e <= requested_elements; ++e) {
    if (static_cast<std::size_t>(e) > element_numbers.size() || !numbers.contains(e, 2) ||
        numbers(e, 2) != element_numbers[static_cast<std::size_t>(e - 1)]) {
      return differ(elements_differ);
    }
  }
  return true;
}

}  // namespace tmrdar::results
