// The sea floor of a model: flat, a plane slope, a profile of nodes along one
// direction, or the contents of a seabed file in two or three dimensions. It
// answers the height under a plan point, the normal there, the length of a
// path on the floor and the distance to the edge of the described area.
//
// Geometry works in 64-bit reals; the node table and the two angles in
// degrees are 32-bit, as the database keeps them. A normal is (vertical, x, y)
// and a plan point (x, y).
//
// Module state, shared by all profiles: the last-segment hint of HEIGHT, the
// hints of NORMAL and of the edge search, and the normal through which
// ARC_LENGTH works. Nothing here is safe to enter from two threads at once.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/strings/data_block.h"
#include "seabed/library/seabed.h"

namespace tmrdar::MOD_SEABED_PROFILE {

inline constexpr int32_t GEOMETRY_FLAT = 1;
inline constexpr int32_t GEOMETRY_SLOPE = 2;
inline constexpr int32_t GEOMETRY_PROFILE = 3;
inline constexpr int32_t GEOMETRY_FILE_2D = 4;
inline constexpr int32_t GEOMETRY_FILE_3D = 5;

// The type of a data block that carries a seabed file.
inline constexpr int32_t SEABED_BLOCK_TYPE = 3;

// Statuses of LOAD_FROM_DATA_BLOCK besides those of the file loaders.
inline constexpr int32_t STATUS_OPEN_FAILED = 3;
inline constexpr int32_t STATUS_CLOSE_FAILED = 4;
inline constexpr int32_t STATUS_WRITE_FAILED = 6;
inline constexpr int32_t STATUS_WRONG_BLOCK_TYPE = 9;

using NORMAL_VECTOR = seabed::NORMAL_VECTOR;
using PLAN_POINT = std::array<double, 2>;

// Degrees, widened from 32 bits, to radians: (degrees x 0.7853981633974483) / 45.
double DEGREES_TO_RADIANS(float degrees);

class T_SEABED_PROFILE {
 public:
  T_SEABED_PROFILE() = default;
  virtual ~T_SEABED_PROFILE() { FINAL_SEABED(); }
  T_SEABED_PROFILE(const T_SEABED_PROFILE&) = default;
  T_SEABED_PROFILE& operator=(const T_SEABED_PROFILE&) = default;
  T_SEABED_PROFILE(T_SEABED_PROFILE&&) = default;
  T_SEABED_PROFILE& operator=(T_SEABED_PROFILE&&) = default;

  // The height under (x, y), and optionally the normal there. The hint is
  // the segment (profiles) or triangle (surfaces) of the last call: given,
  // it is used and takes the new value; left out, the module's last-segment
  // hint does so. The flag is 1 when a surface does not hold the point.
  void HEIGHT(double x, double y, double& height, NORMAL_VECTOR* normal = nullptr,
              int32_t* hint = nullptr, int32_t* flag = nullptr);

  // The normal of the cubic forms of file data: geometry 4 always by the
  // spline, geometry 5 always by the smooth surface. Other geometries leave
  // the output as it was.
  virtual void NORMAL(double x, double y, NORMAL_VECTOR& normal);

  // The length on the floor of the straight plan line from (x1, y1) to
  // (x2, y2), by 10-point Gauss-Legendre quadrature of the slope that NORMAL
  // gives; where NORMAL writes nothing, the module's normal from before is
  // used.
  double ARC_LENGTH(double x1, double y1, double x2, double y2);

  // The plan distance from (x, y) in the direction (radians) to the next
  // node of a file profile or to the edge of the triangle of a file surface;
  // -1.0 when there is none, and always for the other geometries.
  double HORIZONTAL_DISTANCE_TO_EDGE(double x, double y, double direction);

  // Loads the file named by path for geometry 4 (a profile) or 5 (a surface);
  // any other geometry does nothing. The status is 0 or that of the loader;
  // the line and text say where and why a load failed. On failure the object
  // keeps what it held.
  virtual void LOAD_FROM_FILE(int32_t* error_line, std::string_view path, std::string* error_text,
                              int32_t& status);

  // Loads the seabed file that the object's data block carries, through a
  // scratch file that is removed again on every path.
  void LOAD_FROM_DATA_BLOCK(int32_t* error_line, std::string* error_text, int32_t& status);

  // True when two neighbouring nodes stand at the same distance at different
  // heights.
  bool ANY_VERTICAL_SLOPES() const;

  // Puts the nodes of geometry 3 or 4 in ascending order of distance.
  void SORT();

  // Node table. ALLOCATE_NODES makes a table of `count` rows of 2 columns,
  // zero-filled, in place of the node table and any file arrays; a negative
  // count gives an empty table. The status is 0, or 1 when the memory could
  // not be had. SET_NODE and NODE ignore a row or column outside the table
  // (NODE gives 0.0 there).
  void ALLOCATE_NODES(int32_t count, int32_t* status = nullptr);
  void SET_NODE(int32_t row, int32_t column, float value);
  float NODE(int32_t row, int32_t column) const;
  int32_t NUM_NODES() const { return node_count_; }
  int32_t NUM_COLUMNS() const { return columns_; }
  int32_t NUM_TRIANGLES() const { return triangle_count_; }

  // The two codes. The combined code of the database header: below 4 the
  // geometry alone; 4, 5, 6 a file profile, linear, cubic, cubic; 7, 8 a file
  // surface, linear, cubic. A code above 8 changes nothing.
  void SET_GEOMETRY(int32_t geometry) { geometry_ = geometry; }
  int32_t GEOMETRY() const { return geometry_; }
  void SET_INTERPOLATION(int32_t interpolation) { interpolation_ = interpolation; }
  int32_t INTERPOLATION() const { return interpolation_; }
  void SET_GEOMETRY_AND_INTERPOLATION(int32_t code);
  // The combined code of the present pair; -1 for a pair that has none.
  int32_t GEOMETRY_AND_INTERPOLATION() const;

  // Angles. SET_SLOPE keeps the degrees, the radians and their tangent;
  // SLOPE is the tangent. SET_DIRECTION keeps the degrees and the radians.
  void SET_SLOPE(float degrees);
  double SLOPE() const { return slope_tangent_; }
  float SLOPE_DEG() const { return slope_deg_; }
  double SLOPE_RAD() const { return slope_rad_; }
  void SET_DIRECTION(float degrees);
  float DIRECTION_DEG() const { return direction_deg_; }
  double DIRECTION_RAD() const { return direction_rad_; }

  // The data block that carries a seabed file: a copy goes in and out.
  void SET_DATA_BLOCK(const MOD_DATA_BLOCK::T_DATA_BLOCK& block);
  // The same from the bytes of a block, its type and its key.
  void SET_DATA_BLOCK(std::string_view bytes, int32_t type, int32_t key);
  const MOD_DATA_BLOCK::T_DATA_BLOCK& DATA_BLOCK() const { return data_block_; }

  // Releases the node table, the file arrays and the data block; the codes
  // and angles stay.
  void DESTROY();

 private:
  void FINAL_SEABED() { DESTROY(); }
  void RELEASE_ARRAYS();
  // Brings the derived arrays up to date with the node table.
  void PREPARE_SPLINE();
  void PREPARE_SURFACE();
  seabed::SURFACE_VIEW SURFACE() const;
  // Profile distance of a plan point.
  double ALONG(double x, double y) const;

  int32_t geometry_ = 0;
  int32_t interpolation_ = 0;
  float direction_deg_ = 0.0F;
  double direction_rad_ = 0.0;
  double slope_tangent_ = 0.0;
  float slope_deg_ = 0.0F;
  double slope_rad_ = 0.0;
  int32_t node_count_ = 0;
  int32_t triangle_count_ = 0;
  // The cell count of the surface's search grid.
  int32_t cell_count_ = 0;
  int32_t columns_ = 2;
  // (node_count_, columns_), column-major: column 1 height, column 2 the
  // distance of a profile or the x of a surface, column 3 the y.
  std::vector<float> nodes_;
  // The library's arrays: the spline's second derivatives of a profile; the
  // triangles, search grid and node gradients of a surface.
  std::vector<double> second_derivatives_;
  std::vector<int32_t> triangles_;
  seabed::TRIANGLE_GRID grid_;
  std::vector<double> gradients_;
  // Set when the node table changed after the arrays above were made.
  bool spline_stale_ = true;
  bool surface_stale_ = true;
  MOD_DATA_BLOCK::T_DATA_BLOCK data_block_;
};

// True when the seabed library accepts the file; no message is composed.
bool IS_TIDEMAR_SEABED_FILE(std::string_view path);

// The signed plan distance from P along the angle (radians) to the line
// through E1 and E2: negative when the crossing lies behind P, about
// 1.4e10 when the lines are parallel.
double DISTANCE_TO_LINE(const PLAN_POINT& p, double angle, const PLAN_POINT& e1, const PLAN_POINT& e2);

// The crossing of the lines P1-P2 and P3-P4; (1e10, 1e10) for parallel lines.
void INTERSECTION(const PLAN_POINT& p1, const PLAN_POINT& p2, const PLAN_POINT& p3,
                  const PLAN_POINT& p4, PLAN_POINT& point);

}  // namespace tmrdar::MOD_SEABED_PROFILE
