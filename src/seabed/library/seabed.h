// The seabed library: reads seabed files (docs/seabed-file-format.md) and
// interpolates heights and normals on what they hold.
//
// A profile is a table of nodes along one horizontal direction; a surface is a
// set of nodes in plan with triangles over them. Both keep their nodes in one
// column-major table of 32-bit reals, node i of column c at
// nodes[(c - 1) * node_count + (i - 1)]:
//   profile: column 1 height, column 2 distance along the profile;
//   surface: column 1 height, column 2 x, column 3 y.
// Node and triangle numbers count from 1. Arithmetic is in 64-bit reals.
//
// Nothing here throws or reads outside an array: counts and arrays that do not
// agree, node numbers out of range and hints of any value are all answered.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tmrdar::seabed {

// Statuses of open_seabed_file, load_seabed_2d and load_seabed_3d.
inline constexpr int32_t status_ok = 0;
inline constexpr int32_t status_cannot_read = 11;    // the file does not open or read
inline constexpr int32_t status_not_seabed = 12;     // the first line is not the format's
inline constexpr int32_t status_wrong_form = 13;     // a surface given to the 2d loader, or the reverse
inline constexpr int32_t status_syntax = 14;         // a line that does not read
inline constexpr int32_t status_bad_data = 15;       // reads, but does not describe a seabed
inline constexpr int32_t status_no_memory = 16;

// Interpolation codes that the loaders fill.
inline constexpr int32_t profile_linear = 0;
inline constexpr int32_t profile_cubic = 2;
inline constexpr int32_t surface_linear = 0;
inline constexpr int32_t surface_cubic = 1;

// A normal: (vertical, x, y), of unit length, pointing up.
using NormalVector = std::array<double, 3>;

// Where a load failed: the 1-based line of the file (0 when the failure is not
// tied to a line) and a sentence saying what is wrong.
struct LoadReport {
  int32_t line = 0;
  std::string text;
};

// A uniform grid over the plan extent of a surface: cell (i, j), from 0, is
// the rectangle from (X0 + i * cell_x, Y0 + j * cell_y), and its triangles are
// members[first[k]] to members[first[k + 1] - 1] with k = j * nx + i. A
// triangle stands in every cell that its bounding box touches.
struct TriangleGrid {
  double x0 = 0.0;
  double y0 = 0.0;
  double x1 = 0.0;  // the upper corner of the extent
  double y1 = 0.0;
  double cell_x = 1.0;
  double cell_y = 1.0;
  int32_t nx = 0;
  int32_t ny = 0;
  std::vector<int32_t> first;
  std::vector<int32_t> members;
};

// The arrays of a surface as the interpolators and find_triangle read them.
struct SurfaceView {
  int32_t node_count = 0;
  int32_t triangle_count = 0;
  int32_t cell_count = 0;                // nx * ny of the grid
  std::span<const float> nodes;          // (node_count, 3)
  std::span<const int32_t> triangles;    // (3, triangle_count)
  const TriangleGrid* grid = nullptr;
  std::span<const double> gradients;     // (2, node_count): dh/dx, dh/dy; empty for none
};

// ---- Files ----------------------------------------------------------------

// 0 when the file is a seabed file of either form that loads; otherwise the
// status that loading it would give.
int32_t open_seabed_file(std::string_view path);

// Loads a profile: its interpolation code, node count, node table (2 columns)
// and the second derivatives of its natural cubic spline. The outputs are
// written only on success.
int32_t load_seabed_2d(std::string_view path, int32_t& interpolation, int32_t& node_count,
                       std::vector<float>& nodes, std::vector<double>& second_derivatives,
                       LoadReport* report = nullptr);

// Loads a surface: its interpolation code, node count, triangle count, grid
// cell count, node table (3 columns), triangles (3, triangle count), search
// grid and node gradients. The outputs are written only on success.
int32_t load_seabed_3d(std::string_view path, int32_t& interpolation, int32_t& node_count,
                       int32_t& triangle_count, int32_t& cell_count, std::vector<float>& nodes,
                       std::vector<int32_t>& triangles, TriangleGrid& grid,
                       std::vector<double>& gradients, LoadReport* report = nullptr);

void free_seabed_2d(std::vector<float>& nodes, std::vector<double>& second_derivatives);
void free_seabed_3d(std::vector<float>& nodes, std::vector<int32_t>& triangles,
                    TriangleGrid& grid, std::vector<double>& gradients);

// ---- Profiles -------------------------------------------------------------

// The segment that holds the distance: k when node k - 1 <= distance < node k
// in column 2, 1 before the first node and node_count + 1 from the last node
// on. The hint is the segment of the last call; a distance in it or in a
// neighbour costs constant time, any other a binary search. The hint takes the
// answer. The nodes are expected in ascending order of distance.
int32_t find_segment(std::span<const float> nodes, int32_t node_count, double distance,
                     int32_t& hint);

// The second derivatives of the natural cubic spline through the nodes. Each
// run of strictly ascending distances is a spline of its own, so a vertical
// step or a node out of order starts a new one.
void fit_spline_2d(std::span<const float> nodes, int32_t node_count,
                   std::vector<double>& second_derivatives);

// Height and slope (dh/ds) at a distance. Before the first node and after the
// last the height is that of the end node and the slope 0. The hint is that of
// find_segment. A table that does not hold node_count rows answers 0 and 0.
void interpolate_2d_linear(double distance, int32_t node_count, std::span<const float> nodes,
                           int32_t& hint, double& height, double& slope);
void interpolate_2d_cubic(double distance, int32_t node_count, std::span<const float> nodes,
                          std::span<const double> second_derivatives, int32_t& hint,
                          double& height, double& slope);

// ---- Surfaces -------------------------------------------------------------

// Builds the search grid over the triangles whose node numbers are valid.
void build_triangle_grid(std::span<const float> nodes, int32_t node_count,
                         std::span<const int32_t> triangles, int32_t triangle_count,
                         TriangleGrid& grid);

// Node gradients: at each node the mean of the gradients of the triangles
// that meet there, weighted by their areas. A plane gives its own gradient.
void estimate_gradients(std::span<const float> nodes, int32_t node_count,
                        std::span<const int32_t> triangles, int32_t triangle_count,
                        std::vector<double>& gradients);

// The triangle that holds (x, y): its number, and its three node numbers in
// corners, or 0 and corners (0, 0, 0) when none does. A hint, when given, is
// tried first; the grid answers otherwise.
int32_t find_triangle(double x, double y, const SurfaceView& surface,
                      std::array<int32_t, 3>& corners, const int32_t* hint = nullptr);

// Height and normal on the plane of the triangle that holds (x, y). The flag
// is 0 inside the surface; outside it is 1, the height 0.0 and the normal
// (1, 0, 0). The hint is a triangle number and takes the one found.
void interpolate_3d_linear(double x, double y, const SurfaceView& surface, int32_t& hint,
                           double& height, NormalVector& normal, int32_t& flag);
// The same on the C1 surface: a reduced Clough-Tocher cubic over each
// triangle, split at its centroid, built from the node heights and gradients.
void interpolate_3d_cubic(double x, double y, const SurfaceView& surface, int32_t& hint,
                          double& height, NormalVector& normal, int32_t& flag);

// The upward unit normal of a surface of gradient (gx, gy).
NormalVector normal_of_gradient(double gx, double gy);

}  // namespace tmrdar::seabed
