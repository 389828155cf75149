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

using header::frame_words::ADD;
using header::frame_words::MUL;
using VECTOR = std::array<float, 3>;

constexpr float SMALL = 1e-20F;

constexpr std::string_view NODAL_READ_FAILED = "Unable to read nodal motion results from database.";
constexpr std::string_view FLAGS_DIFFER =
    "The contents of the database files do not match what is requested. You should rerun the analysis.";
constexpr std::string_view ELEMENT_COUNT_DIFFERS =
    "The number of elements in the database files does not match the number requested. You should rerun the "
    "analysis.";
constexpr std::string_view ELEMENTS_DIFFER =
    "The elements included in the database files do not match those requested. You should rerun the analysis.";

// truncate(single(n) * 0.125): the records that n words fill, in 32-bit
// floating point as the frames are laid out.
int64_t WHOLE_RECORDS(int64_t n) { return static_cast<int64_t>(static_cast<float>(n) * 0.125F); }

// Row i of a 3 x 3 matrix.
template <typename REAL>
void SET_ROW(MATRIX3<REAL>& matrix, int i, const std::array<REAL, 3>& row) {
  for (int j = 1; j <= 3; ++j) matrix[M3(i, j)] = row[static_cast<std::size_t>(j - 1)];
}

// n, t and b of a zero gap guide; false for a row the table does not hold.
bool ZGG_VECTORS(const header::HEADER_TABLES& t, int32_t row, VECTOR& n, VECTOR& tangent, VECTOR& b) {
  if (!t.ZGG_DIRECTION.CONTAINS(row, 3)) return false;
  n = {t.ZGG_DIRECTION(row, 1), t.ZGG_DIRECTION(row, 2), t.ZGG_DIRECTION(row, 3)};
  if (std::fabs(n[0]) > SMALL) {
    tangent = {n[1] / (0.0F - n[0]), 1.0F, 0.0F};
  } else if (std::fabs(n[1]) > SMALL) {
    tangent = {0.0F, n[2] / (0.0F - n[1]), 1.0F};
  } else {
    tangent = {1.0F, 0.0F, (0.0F - n[0]) / n[2]};
  }
  float length = 0.0F;
  NORMALISE(tangent, length);
  CROSS_PRODUCT(n, tangent, b);
  return true;
}

}  // namespace

bool FORM_AXES(const header::TIDE3_DATABASE_FILES& db, int32_t row, MATRIX3<float>& axes) {
  const header::TABLE<float, 3>& stored = db.TABLES.AXES_TABLE;
  if (!stored.CONTAINS(row, 2, 3)) return false;
  VECTOR p{};
  VECTOR q{};
  for (std::size_t k = 0; k < 3; ++k) {
    p[k] = stored(row, 1, static_cast<int64_t>(k) + 1);
    q[k] = stored(row, 2, static_cast<int64_t>(k) + 1);
  }
  VECTOR w{};
  CROSS_PRODUCT(p, q, w);
  SET_ROW(axes, 1, p);
  SET_ROW(axes, 2, q);
  SET_ROW(axes, 3, w);
  return true;
}

bool FORM_ZGG_AXES(const header::TIDE3_DATABASE_FILES& db, int32_t row, MATRIX3<float>& axes) {
  VECTOR n{};
  VECTOR t{};
  VECTOR b{};
  if (!ZGG_VECTORS(db.TABLES, row, n, t, b)) return false;
  SET_ROW(axes, 1, n);
  SET_ROW(axes, 2, t);
  SET_ROW(axes, 3, b);
  return true;
}

bool TRANSFORM(const header::TIDE3_DATABASE_FILES& db, int32_t row, std::span<float, 3> point) {
  const header::TABLE<float, 2>& origin = db.TABLES.ORIGIN_TABLE;
  MATRIX3<float> axes{};
  if (!origin.CONTAINS(row, 3) || !FORM_AXES(db, row, axes)) return false;
  VECTOR d{};
  for (std::size_t k = 0; k < 3; ++k) d[k] = point[k] - origin(row, static_cast<int64_t>(k) + 1);
  for (int i = 1; i <= 3; ++i) {
    point[static_cast<std::size_t>(i - 1)] = (axes[M3(i, 3)] * d[2] + axes[M3(i, 2)] * d[1]) + axes[M3(i, 1)] * d[0];
  }
  return true;
}

bool TRANSFORM_ZGG(const header::TIDE3_DATABASE_FILES& db, int32_t row, std::span<float, 3> point) {
  const header::TABLE<float, 2>& origin = db.TABLES.ZGG_ORIGIN;
  VECTOR n{};
  VECTOR t{};
  VECTOR b{};
  if (!origin.CONTAINS(row, 3) || !ZGG_VECTORS(db.TABLES, row, n, t, b)) return false;
  VECTOR d{};
  for (std::size_t k = 0; k < 3; ++k) d[k] = point[k] - origin(row, static_cast<int64_t>(k) + 1);
  std::size_t i = 0;
  for (const VECTOR* axis : {&n, &t, &b}) {
    const VECTOR& x = *axis;
    point[i++] = (x[0] * d[0] + x[1] * d[1]) + x[2] * d[2];
  }
  return true;
}

void EIGVEC(double angle, std::span<const double, 3> axis, MATRIX3<double>& matrix) {
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
      matrix[M3(i, j)] = value;
    }
  }
}

void FIND_ACTIVE_NODE_FLAG(header::TIDE3_DATABASE_FILES& db, int32_t node_row, int32_t step, int32_t& flag,
                           bool& error) {
  flag = 0;
  error = false;
  const header::HEADER_VARIABLES& h = db;
  const int64_t q = WHOLE_RECORDS(int64_t{node_row} - 1);
  int64_t record = header::START_RECORDS(h, h.MOTION_START_OFFSET);
  record = ADD(record, -int64_t{h.NUM_VESSELS});
  record = ADD(record, -WHOLE_RECORDS(h.NUM_NODES));
  record = ADD(record, MUL(step, h.MOTION_FRAME_RECORDS));
  record = ADD(ADD(record, q), 1);
  const int64_t word = ADD(ADD(MUL(8, record), int64_t{node_row} - (8 * q + 8)), -16);
  float value = 0.0F;
  db.READIN(MOTION, word, value, error);
  if (!error) flag = std::bit_cast<int32_t>(value);
}

void UPDATE_GUIDE_COORDS_AXES(header::TIDE3_DATABASE_FILES& db, int32_t step, bool& error) {
  error = false;
  header::HEADER_TABLES& t = db.TABLES;
  for (int32_t i = 1; i <= db.NUM_GUIDE_SURFACES; ++i) {
    if (!t.ORIGIN_TABLE.CONTAINS(i, 3) || !t.AXES_TABLE.CONTAINS(i, 2, 3)) {
      error = true;
      return;
    }
    for (int32_t word = 1; word <= 9; ++word) {
      float& place = word <= 3 ? t.ORIGIN_TABLE(i, word) : t.AXES_TABLE(i, word <= 6 ? 1 : 2, (word - 1) % 3 + 1);
      DABFND(db, step, 0, i, word, 'G', place, error);
      if (error) return;
    }
  }
  for (int32_t i = 1; i <= db.NUM_ZERO_GAP_GUIDES; ++i) {
    if (!t.ZGG_ORIGIN.CONTAINS(i, 3) || !t.ZGG_DIRECTION.CONTAINS(i, 3)) {
      error = true;
      return;
    }
    for (int32_t word = 1; word <= 6; ++word) {
      float& place = word <= 3 ? t.ZGG_ORIGIN(i, word) : t.ZGG_DIRECTION(i, word - 3);
      DABFND(db, step, 0, i, word, 'H', place, error);
      if (error) return;
    }
  }
}

void READ_NODE_DOFS(header::TIDE3_DATABASE_FILES& db, int32_t step, int32_t node, std::span<float, 6> dofs,
                    bool& error) {
  error = false;
  const header::HEADER_VARIABLES& h = db;
  const int64_t frame =
      ADD(header::START_RECORDS(h, h.MOTION_START_OFFSET), MUL(int64_t{step} - 1, h.MOTION_FRAME_RECORDS));
  const int64_t first = 6 * int64_t{node} - 5;
  for (std::size_t k = 0; k < 6; ++k) {
    const int64_t w = first + static_cast<int64_t>(k);
    const int64_t q = WHOLE_RECORDS(w - 1);
    const int64_t record = ADD(ADD(frame, 1), q);
    // Place w - 8q of the record; where the single-precision q rounds, that
    // place lies outside 1 to 8 and names a word of a neighbouring record.
    const int64_t word = ADD(MUL(8, ADD(record, -1)), w - 8 * q);
    db.READIN(MOTION, word, dofs[k], error);
    if (error) {
      ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, NODAL_READ_FAILED);
      return;
    }
  }
}

bool DO_DATABASE_FILES_MATCH_KEYWORD_FILE(const header::TIDE3_DATABASE_FILES& db,
                                          std::span<const int32_t> requested_flags, int32_t requested_elements,
                                          std::span<const int32_t> element_numbers) {
  const auto DIFFER = [](std::string_view text) {
    ERROR_HANDLING::ERROR3(true, ERROR_HANDLING::DATABASE_POSTPROCESSING, text);
    return false;
  };
  if (requested_flags.size() > db.OUTPUT_FLAGS.size()) return DIFFER(FLAGS_DIFFER);
  for (std::size_t i = 0; i < requested_flags.size(); ++i) {
    if (requested_flags[i] != db.OUTPUT_FLAGS[i]) return DIFFER(FLAGS_DIFFER);
  }
  if (requested_elements != db.NUM_ELEMENTS) return DIFFER(ELEMENT_COUNT_DIFFERS);
  const header::TABLE<int32_t, 2>& numbers = db.TABLES.ELEMENT_NUMBERS;
  for (int64_t e = 1; e <= requested_elements; ++e) {
    if (static_cast<std::size_t>(e) > element_numbers.size() || !numbers.CONTAINS(e, 2) ||
        numbers(e, 2) != element_numbers[static_cast<std::size_t>(e - 1)]) {
      return DIFFER(ELEMENTS_DIFFER);
    }
  }
  return true;
}

}  // namespace tmrdar::results
