#include "seabed/seabed_profile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <new>
#include <optional>
#include <utility>

#include "core/platform/platform.h"

namespace tmrdar::seabed_profile {
namespace {

// Module state.
int32_t last_segment_hint = 1;
int32_t normal_hint = 1;
int32_t segment_hint = 1;
// The normal through which arc_length works; normal writes it only for file
// data, so other geometries integrate whatever it last held.
NormalVector arc_normal = {1.0, 0.0, 0.0};
// The vertical component of the path direction, which stays 0.0.
constexpr double arc_vertical = 0.0;

// 10-point Gauss-Legendre rule on [-1, 1], in five symmetric pairs.
constexpr double gauss_abscissa[5] = {0.14887433898163122, 0.43339539412924716, 0.67940956829902440,
                                      0.86506336668898451, 0.97390652851717172};
constexpr double gauss_weight[5] = {0.29552422471475287, 0.26926671930999636, 0.21908636251598204,
                                    0.14945134915058059, 0.06667134430868814};

// The normal of a profile of slope m along the direction d.
NormalVector profile_normal(double m, double d) {
  const double k = 1.0 / std::sqrt(m * m + 1.0);
  return {k, 0.0 - std::cos(d) * m * k, 0.0 - m * k * std::sin(d)};
}

// Removes a file when it goes out of scope.
class RemoveLater {
 public:
  RemoveLater() = default;
  ~RemoveLater() {
    if (!path_.empty()) platform::delete_file(path_);
  }
  RemoveLater(const RemoveLater&) = delete;
  RemoveLater& operator=(const RemoveLater&) = delete;
  void set(std::string path) { path_ = std::move(path); }

 private:
  std::string path_;
};

}  // namespace

double degrees_to_radians(float degrees) {
  return (static_cast<double>(degrees) * 0.7853981633974483) / 45.0;
}

// ---- Heights and normals --------------------------------------------------

double SeabedProfile::along(double x, double y) const {
  return x * std::cos(direction_rad_) + y * std::sin(direction_rad_);
}

void SeabedProfile::prepare_spline() {
  if (!spline_stale_) return;
  try {
    seabed::fit_spline_2d(nodes_, node_count_, second_derivatives_);
  } catch (const std::bad_alloc&) {
    second_derivatives_.clear();  // the interpolant then runs straight
  }
  spline_stale_ = false;
}

void SeabedProfile::prepare_surface() {
  if (!surface_stale_) return;
  try {
    seabed::build_triangle_grid(nodes_, node_count_, triangles_, triangle_count_, grid_);
    seabed::estimate_gradients(nodes_, node_count_, triangles_, triangle_count_, gradients_);
  } catch (const std::bad_alloc&) {
    grid_ = seabed::TriangleGrid{};  // the search then scans
    gradients_.clear();
  }
  cell_count_ = grid_.nx * grid_.ny;
  surface_stale_ = false;
}

seabed::SurfaceView SeabedProfile::surface() const {
  seabed::SurfaceView view;
  view.node_count = columns_ == 3 ? node_count_ : 0;
  view.triangle_count = triangle_count_;
  view.cell_count = cell_count_;
  view.nodes = nodes_;
  view.triangles = triangles_;
  view.grid = &grid_;
  view.gradients = gradients_;
  return view;
}

void SeabedProfile::height(double x, double y, double& height, NormalVector* normal,
                              int32_t* hint, int32_t* flag) {
  int32_t segment = hint != nullptr ? *hint : last_segment_hint;
  double h = 0.0;
  NormalVector n = {1.0, 0.0, 0.0};
  int32_t outside = 0;
  switch (geometry_) {
    case geometry_profile:
    case geometry_file_2d: {
      const double s = along(x, y);
      double m = 0.0;
      if (interpolation_ == 0) {
        seabed::interpolate_2d_linear(s, node_count_, nodes_, segment, h, m);
      } else if (interpolation_ == 2 || interpolation_ == 3) {
        prepare_spline();
        seabed::interpolate_2d_cubic(s, node_count_, nodes_, second_derivatives_, segment, h, m);
      }
      n = profile_normal(m, direction_rad_);
      break;
    }
    case geometry_file_3d: {
      outside = 0;
      segment = std::min(std::max(segment, 1), triangle_count_);
      prepare_surface();
      if (interpolation_ == 0) {
        seabed::interpolate_3d_linear(x, y, surface(), segment, h, n, outside);
      } else if (interpolation_ == 1) {
        seabed::interpolate_3d_cubic(x, y, surface(), segment, h, n, outside);
      }
      break;
    }
    case geometry_slope:
      h = along(x, y) * slope_tangent_;
      n = {std::cos(slope_rad_), 0.0 - std::cos(direction_rad_) * std::sin(slope_rad_),
           0.0 - std::sin(slope_rad_) * std::sin(direction_rad_)};
      segment = 1;
      break;
    case geometry_flat:
      segment = 1;
      break;
    default:
      break;
  }
  height = h;
  if (hint != nullptr) {
    *hint = segment;
  } else {
    last_segment_hint = segment;
  }
  if (normal != nullptr) *normal = n;
  if (flag != nullptr) *flag = outside;
}

void SeabedProfile::normal(double x, double y, NormalVector& normal) {
  if (geometry_ == geometry_file_2d) {
    prepare_spline();
    double h = 0.0;
    double m = 0.0;
    seabed::interpolate_2d_cubic(along(x, y), node_count_, nodes_, second_derivatives_, normal_hint, h, m);
    normal = profile_normal(m, direction_rad_);
  } else if (geometry_ == geometry_file_3d) {
    prepare_surface();
    double h = 0.0;
    int32_t flag = 0;
    seabed::interpolate_3d_cubic(x, y, surface(), normal_hint, h, normal, flag);
  }
}

double SeabedProfile::arc_length(double x1, double y1, double x2, double y2) {
  const double a = y1 - y2;
  const double b = x2 - x1;
  const double mx = (x1 + x2) * 0.5;
  const double my = (y1 + y2) * 0.5;
  const double hx = b * 0.5;
  const double hy = 0.0 - a * 0.5;
  const double c = arc_vertical;
  // The slope of the floor along the path at a point: the normal's tilt
  // towards the path direction over its tilt across it.
  const auto slope_at = [&](double px, double py) {
    normal(px, py, arc_normal);
    const NormalVector& n = arc_normal;
    const double p1 = a * n[2] - b * n[1];
    const double p2 = b * n[0] - n[2] * c;
    const double p3 = n[1] * c - n[0] * a;
    const double across = std::sqrt(p2 * p2 + p3 * p3);
    return across > 0.0 ? p1 / across : 0.0;  // no path, or a wall: no slope
  };
  double sum = 0.0;
  for (int i = 0; i < 5; ++i) {
    const double dx = gauss_abscissa[i] * hx;
    const double dy = gauss_abscissa[i] * hy;
    const double g_plus = slope_at(mx + dx, my + dy);
    const double g_minus = slope_at(mx - dx, my - dy);
    sum += (std::sqrt(g_plus * g_plus + 1.0) + std::sqrt(g_minus * g_minus + 1.0)) * gauss_weight[i];
  }
  return sum * std::sqrt(hy * hy + hx * hx);
}

double SeabedProfile::horizontal_distance_to_edge(double x, double y, double direction) {
  const double xt = x + 0.001 * std::cos(direction);
  const double yt = y + 0.001 * std::sin(direction);
  if (geometry_ == geometry_file_2d) {
    if (node_count_ < 1 || nodes_.size() / 2 < static_cast<std::size_t>(node_count_)) return -1.0;
    const double d = direction_rad_;
    const double c = std::cos(direction - d);
    if (std::fabs(c) < 1e-05) return -1.0;  // across the profile
    const double s = along(xt, yt);
    int32_t k = seabed::find_segment(nodes_, node_count_, s, segment_hint);
    const auto distance_of = [&](int32_t i) {
      return static_cast<double>(nodes_[static_cast<std::size_t>(node_count_) + static_cast<std::size_t>(i - 1)]);
    };
    if (k == 1 && s < distance_of(1)) return -1.0;
    if (k == node_count_ + 1 && s > distance_of(node_count_)) return -1.0;
    if (c < 0.0) --k;
    if (k < 1 || k > node_count_) return -1.0;  // no node beyond in that direction
    return std::fabs((distance_of(k) - x * std::cos(d) - y * std::sin(d)) / c);
  }
  if (geometry_ == geometry_file_3d) {
    prepare_surface();
    std::array<int32_t, 3> corners{};
    seabed::find_triangle(xt, yt, surface(), corners);
    if (corners[2] == 0) return -1.0;
    const auto plan = [&](int32_t node) {
      const auto n = static_cast<std::size_t>(node_count_);
      const auto i = static_cast<std::size_t>(node - 1);
      return PlanPoint{nodes_[n + i], nodes_[2 * n + i]};
    };
    const PlanPoint p = {x, y};
    double distance[3] = {};
    bool any = false;
    for (int e = 0; e < 3; ++e) {
      distance[e] = distance_to_line(p, direction, plan(corners[static_cast<std::size_t>(e)]),
                                     plan(corners[static_cast<std::size_t>((e + 1) % 3)]));
      any = any || distance[e] > 0.0;
    }
    if (!any) return -1.0;
    double nearest = 1e10;
    for (const double value : distance) {
      if (value > 0.001 && value < nearest) nearest = value;
    }
    return nearest;
  }
  return -1.0;
}

// ---- Loading --------------------------------------------------------------

void SeabedProfile::load_from_file(int32_t* error_line, std::string_view path, std::string* error_text,
                                      int32_t& status) {
  status = 0;
  seabed::LoadReport report;
  if (geometry_ == geometry_file_2d) {
    std::vector<float> nodes;
    std::vector<double> derivatives;
    int32_t interpolation = interpolation_;
    int32_t count = 0;
    status = seabed::load_seabed_2d(path, interpolation, count, nodes, derivatives, &report);
    if (status == 0) {
      release_arrays();
      interpolation_ = interpolation;
      node_count_ = count;
      columns_ = 2;
      nodes_ = std::move(nodes);
      second_derivatives_ = std::move(derivatives);
      spline_stale_ = false;
    }
  } else if (geometry_ == geometry_file_3d) {
    seabed::TriangleGrid grid;
    std::vector<float> nodes;
    std::vector<int32_t> triangles;
    std::vector<double> gradients;
    int32_t interpolation = interpolation_;
    int32_t count = 0;
    int32_t triangle_count = 0;
    int32_t cell_count = 0;
    status = seabed::load_seabed_3d(path, interpolation, count, triangle_count, cell_count, nodes, triangles,
                                    grid, gradients, &report);
    if (status == 0) {
      release_arrays();
      interpolation_ = interpolation;
      node_count_ = count;
      triangle_count_ = triangle_count;
      cell_count_ = cell_count;
      columns_ = 3;
      nodes_ = std::move(nodes);
      triangles_ = std::move(triangles);
      grid_ = std::move(grid);
      gradients_ = std::move(gradients);
      surface_stale_ = false;
    }
  } else {
    return;
  }
  if (error_line != nullptr) *error_line = report.line;
  if (error_text != nullptr) *error_text = report.text;
}

void SeabedProfile::load_from_data_block(int32_t* error_line, std::string* error_text, int32_t& status) {
  if (data_block_.get_type() != seabed_block_type) {
    status = status_wrong_block_type;
    return;
  }
  // A unique name from the platform; the file of that name is only a claim
  // on the name and goes again at the end, like the copy beside it.
  RemoveLater claim;
  RemoveLater copy;
  const std::optional<std::string> scratch = platform::create_temporary_file("tmrdar_seabed_");
  if (!scratch) {
    status = status_open_failed;
    return;
  }
  claim.set(*scratch);
  const std::string name = *scratch + "_tmp";
  // "x": never through a file or link that someone else put there.
  std::FILE* stream = std::fopen(name.c_str(), "wbx");
  if (stream == nullptr) {
    status = status_open_failed;
    return;
  }
  copy.set(name);
  const std::string_view bytes = data_block_.view();
  const bool written = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size();
  const bool closed = std::fclose(stream) == 0;
  if (!written || !closed) {
    status = status_write_failed;
    return;
  }
  load_from_file(error_line, name, error_text, status);
}

// ---- Nodes ----------------------------------------------------------------

bool SeabedProfile::any_vertical_slopes() const {
  if (nodes_.size() / 2 < static_cast<std::size_t>(std::max(node_count_, 0))) return false;
  const auto n = static_cast<std::size_t>(std::max(node_count_, 0));
  for (std::size_t i = 0; i + 1 < n; ++i) {
    const float d_height = nodes_[i + 1] - nodes_[i];
    const float d_distance = nodes_[n + i + 1] - nodes_[n + i];
    if (std::fabs(d_distance) < 1.0e-10F && std::fabs(d_height) > 1.0e-10F) return true;
  }
  return false;
}

void SeabedProfile::sort() {
  if (geometry_ != geometry_profile && geometry_ != geometry_file_2d) return;
  if (node_count_ < 2 || nodes_.size() / 2 < static_cast<std::size_t>(node_count_)) return;
  const auto n = static_cast<std::size_t>(node_count_);
  for (std::size_t i = 0; i + 1 < n; ++i) {
    for (std::size_t j = i + 1; j < n; ++j) {
      if (nodes_[n + j] < nodes_[n + i]) {
        for (std::size_t c = 0; c < static_cast<std::size_t>(columns_); ++c) {
          std::swap(nodes_[c * n + i], nodes_[c * n + j]);
        }
      }
    }
  }
  spline_stale_ = true;
}

void SeabedProfile::allocate_nodes(int32_t count, int32_t* status) {
  release_arrays();
  const int32_t rows = std::max(count, 0);
  try {
    nodes_.assign(2 * static_cast<std::size_t>(rows), 0.0F);
  } catch (const std::bad_alloc&) {
    if (status != nullptr) *status = 1;
    return;
  } catch (const std::length_error&) {
    if (status != nullptr) *status = 1;
    return;
  }
  node_count_ = rows;
  if (status != nullptr) *status = 0;
}

void SeabedProfile::set_node(int32_t row, int32_t column, float value) {
  if (row < 1 || row > node_count_ || column < 1 || column > columns_) return;
  const std::size_t at = static_cast<std::size_t>(column - 1) * static_cast<std::size_t>(node_count_) +
                         static_cast<std::size_t>(row - 1);
  if (at >= nodes_.size()) return;
  nodes_[at] = value;
  spline_stale_ = true;
  surface_stale_ = true;
}

float SeabedProfile::node(int32_t row, int32_t column) const {
  if (row < 1 || row > node_count_ || column < 1 || column > columns_) return 0.0F;
  const std::size_t at = static_cast<std::size_t>(column - 1) * static_cast<std::size_t>(node_count_) +
                         static_cast<std::size_t>(row - 1);
  return at < nodes_.size() ? nodes_[at] : 0.0F;
}

// ---- Codes and angles -----------------------------------------------------

void SeabedProfile::set_geometry_and_interpolation(int32_t code) {
  switch (code) {
    case 4: geometry_ = geometry_file_2d, interpolation_ = 0; break;
    case 5: geometry_ = geometry_file_2d, interpolation_ = 2; break;
    case 6: geometry_ = geometry_file_2d, interpolation_ = 3; break;
    case 7: geometry_ = geometry_file_3d, interpolation_ = 0; break;
    case 8: geometry_ = geometry_file_3d, interpolation_ = 1; break;
    default:
      if (code < 4) geometry_ = code;
      break;
  }
}

int32_t SeabedProfile::geometry_and_interpolation() const {
  if (geometry_ < geometry_file_2d) return geometry_;
  if (geometry_ == geometry_file_2d) {
    if (interpolation_ == 0) return 4;
    if (interpolation_ == 2) return 5;
    if (interpolation_ == 3) return 6;
  } else if (geometry_ == geometry_file_3d) {
    if (interpolation_ == 0) return 7;
    if (interpolation_ == 1) return 8;
  }
  return -1;
}

void SeabedProfile::set_slope(float degrees) {
  slope_deg_ = degrees;
  slope_rad_ = degrees_to_radians(degrees);
  slope_tangent_ = std::tan(slope_rad_);
}

void SeabedProfile::set_direction(float degrees) {
  direction_deg_ = degrees;
  direction_rad_ = degrees_to_radians(degrees);
}

// ---- Data block and release -----------------------------------------------

void SeabedProfile::set_data_block(const data_blocks::DataBlock& block) { data_block_ = block; }

void SeabedProfile::set_data_block(std::string_view bytes, int32_t type, int32_t key) {
  data_block_ = bytes;
  data_block_.set_type(type);
  data_block_.set_key(key);
}

void SeabedProfile::release_arrays() {
  seabed::free_seabed_3d(nodes_, triangles_, grid_, gradients_);
  seabed::free_seabed_2d(nodes_, second_derivatives_);
  node_count_ = 0;
  triangle_count_ = 0;
  cell_count_ = 0;
  columns_ = 2;
  spline_stale_ = true;
  surface_stale_ = true;
}

void SeabedProfile::destroy() {
  release_arrays();
  data_block_.destroy_string();
}

// ---- Free procedures ------------------------------------------------------

bool is_tidemar_seabed_file(std::string_view path) { return seabed::open_seabed_file(path) == 0; }

void intersection(const PlanPoint& p1, const PlanPoint& p2, const PlanPoint& p3, const PlanPoint& p4,
                  PlanPoint& point) {
  const double dx12 = p1[0] - p2[0];
  const double dy12 = p1[1] - p2[1];
  const double dx34 = p3[0] - p4[0];
  const double dy34 = p3[1] - p4[1];
  const double determinant = dx12 * dy34 - dy12 * dx34;
  if (std::fabs(determinant) < 1e-10) {
    point = {1e10, 1e10};
    return;
  }
  const double c12 = p1[0] * p2[1] - p1[1] * p2[0];
  const double c34 = p3[0] * p4[1] - p3[1] * p4[0];
  point = {(c12 * dx34 - dx12 * c34) / determinant, (c12 * dy34 - dy12 * c34) / determinant};
}

double distance_to_line(const PlanPoint& p, double angle, const PlanPoint& e1, const PlanPoint& e2) {
  const double ca = std::cos(angle);
  const double sa = std::sin(angle);
  const PlanPoint q = {p[0] + ca, p[1] + sa};
  PlanPoint crossing{};
  intersection(p, q, e1, e2, crossing);
  const double dx = crossing[0] - p[0];
  const double dy = crossing[1] - p[1];
  const double length = std::sqrt(dx * dx + dy * dy);
  return dx * ca <= 0.0 && dy * sa <= 0.0 ? -length : length;
}

}  // namespace tmrdar::seabed_profile
