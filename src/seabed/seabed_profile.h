// The sea floor of a model: flat, a plane slope, a profile of nodes along one
// direction, or the contents of a seabed file in two or three dimensions. It
// answers the height under a plan point, the normal there, the length of a
// path on the floor and the distance to the edge of the described area.
//
// Geometry works in 64-bit reals; the node table and the two angles in
// degrees are 32-bit, as the database keeps them. A normal is (vertical, x, y)
// and a plan point (x, y).
//
// Module state, shared by all profiles: the last-segment hint of height, the
// hints of normal and of the edge search, and the normal through which
// arc_length works. Nothing here is safe to enter from two threads at once.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/strings/data_block.h"
#include "seabed/library/seabed.h"

namespace tmrdar::seabed_profile {

inline constexpr int32_t geometry_flat = 1;
inline constexpr int32_t geometry_slope = 2;
inline constexpr int32_t geometry_profile = 3;
inline constexpr int32_t geometry_file_2d = 4;
inline constexpr int32_t geometry_file_3d = 5;

// The type of a data block that carries a seabed file.
inline constexpr int32_t seabed_block_type = 3;

// Statuses of load_from_data_block besides those of the file loaders.
inline constexpr int32_t status_open_failed = 3;
inline constexpr int32_t status_close_failed = 4;
inline constexpr int32_t status_write_failed = 6;
inline constexpr int32_t status_wrong_block_type = 9;

using NormalVector = seabed::NormalVector;
using PlanPoint = std::array<double, 2>;

// Degrees, widened from 32 bits, to radians: (degrees x 0.7853981633974483) / 45.
double degrees_to_radians(float degrees);

class SeabedProfile {
 public:
  SeabedProfile() = default;
  virtual ~SeabedProfile() { final_seabed(); }
  SeabedProfile(const SeabedProfile&) = default;
  SeabedProfile& operator=(const SeabedProfile&) = default;
  SeabedProfile(SeabedProfile&&) = default;
  SeabedProfile& operator=(SeabedProfile&&) = default;

  // The height under (x, y), and optionally the normal there. The hint is
  // the segment (profiles) or triangle (surfaces) of the last call: given,
  // it is used and takes the new value; left out, the module's last-segment
  // hint does so. The flag is 1 when a surface does not hold the point.
  void height(double x, double y, double& height, NormalVector* normal = nullptr,
              int32_t* hint = nullptr, int32_t* flag = nullptr);

  // The normal of the cubic forms of file data: geometry 4 always by the
  // spline, geometry 5 always by the smooth surface. Other geometries leave
  // the output as it was.
  virtual void normal(double x, double y, NormalVector& normal);

  // The length on the floor of the straight plan line from (x1, y1) to
  // (x2, y2), by 10-point Gauss-Legendre quadrature of the slope that normal
  // gives; where normal writes nothing, the module's normal from before is
  // used.
  double arc_length(double x1, double y1, double x2, double y2);

  // The plan distance from (x, y) in the direction (radians) to the next
  // node of a file profile or to the edge of the triangle of a file surface;
  // -1.0 when there is none, and always for the other geometries.
  double horizontal_distance_to_edge(double x, double y, double direction);

  // Loads the file named by path for geometry 4 (a profile) or 5 (a surface);
  // any other geometry does nothing. The status is 0 or that of the loader;
  // the line and text say where and why a load failed. On failure the object
  // keeps what it held.
  virtual void load_from_file(int32_t* error_line, std::string_view path, std::string* error_text,
                              int32_t& status);

  // Loads the seabed file that the object's data block carries, through a
  // scratch file that is removed again on every path.
  void load_from_data_block(int32_t* error_line, std::string* error_text, int32_t& status);

  // True when two neighbouring nodes stand at the same distance at different
  // heights.
  bool any_vertical_slopes() const;

  // Puts the nodes of geometry 3 or 4 in ascending order of distance.
  void sort();

  // Node table. allocate_nodes makes a table of `count` rows of 2 columns,
  // zero-filled, in place of the node table and any file arrays; a negative
  // count gives an empty table. The status is 0, or 1 when the memory could
  // not be had. set_node and node ignore a row or column outside the table
  // (node gives 0.0 there).
  void allocate_nodes(int32_t count, int32_t* status = nullptr);
  void set_node(int32_t row, int32_t column, float value);
  float node(int32_t row, int32_t column) const;
  int32_t num_nodes() const { return node_count_; }
  int32_t num_columns() const { return columns_; }
  int32_t num_triangles() const { return triangle_count_; }

  // The two codes. The combined code of the database header: below 4 the
  // geometry alone; 4, 5, 6 a file profile, linear, cubic, cubic; 7, 8 a file
  // surface, linear, cubic. A code above 8 changes nothing.
  void set_geometry(int32_t geometry) { geometry_ = geometry; }
  int32_t geometry() const { return geometry_; }
  void set_interpolation(int32_t interpolation) { interpolation_ = interpolation; }
  int32_t interpolation() const { return interpolation_; }
  void set_geometry_and_interpolation(int32_t code);
  // The combined code of the present pair; -1 for a pair that has none.
  int32_t geometry_and_interpolation() const;

  // Angles. set_slope keeps the degrees, the radians and their tangent;
  // slope is the tangent. set_direction keeps the degrees and the radians.
  void set_slope(float degrees);
  double slope() const { return slope_tangent_; }
  float slope_deg() const { return slope_deg_; }
  double slope_rad() const { return slope_rad_; }
  void set_direction(float degrees);
  float direction_deg() const { return direction_deg_; }
  double direction_rad() const { return direction_rad_; }

  // The data block that carries a seabed file: a copy goes in and out.
  void set_data_block(const data_blocks::DataBlock& block);
  // The same from the bytes of a block, its type and its key.
  void set_data_block(std::string_view bytes, int32_t type, int32_t key);
  const data_blocks::DataBlock& data_block() const { return data_block_; }

  // Releases the node table, the file arrays and the data block; the codes
  // and angles stay.
  void destroy();

 private:
  void final_seabed() { destroy(); }
  void release_arrays();
  // Brings the derived arrays up to date with the node table.
  void prepare_spline();
  void prepare_surface();
  seabed::SurfaceView surface() const;
  // Profile distance of a plan point.
  double along(double x, double y) const;

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
  seabed::TriangleGrid grid_;
  std::vector<double> gradients_;
  // Set when the node table changed after the arrays above were made.
  bool spline_stale_ = true;
  bool surface_stale_ = true;
  data_blocks::DataBlock data_block_;
};

// True when the seabed library accepts the file; no message is composed.
bool is_tidemar_seabed_file(std::string_view path);

// The signed plan distance from P along the angle (radians) to the line
// through E1 and E2: negative when the crossing lies behind P, about
// 1.4e10 when the lines are parallel.
double distance_to_line(const PlanPoint& p, double angle, const PlanPoint& e1, const PlanPoint& e2);

// The crossing of the lines P1-P2 and P3-P4; (1e10, 1e10) for parallel lines.
void intersection(const PlanPoint& p1, const PlanPoint& p2, const PlanPoint& p3,
                  const PlanPoint& p4, PlanPoint& point);

}  // namespace tmrdar::seabed_profile
