// Surfaces: the triangle search grid, node gradients, and the linear and
// Clough-Tocher interpolants.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "seabed/library/seabed.h"

namespace tmrdar::seabed {
namespace {

// Barycentric coordinates may fall this far below 0 for a point on an edge.
constexpr double inside_tolerance = 1e-12;
// The grid may hold at most this many cells.
constexpr int64_t max_cells = int64_t{1} << 22;

struct Corner {
  double x = 0.0;
  double y = 0.0;
  double h = 0.0;
};

// A triangle of the table with its corners, when its node numbers are valid.
struct Triangle {
  std::array<int32_t, 3> node{};
  std::array<Corner, 3> p{};
  double d = 0.0;  // twice the signed area
};

bool table_holds(std::span<const float> nodes, int32_t node_count, std::size_t columns) {
  return node_count >= 0 && nodes.size() / columns >= static_cast<std::size_t>(node_count);
}

bool get_triangle(std::span<const float> nodes, int32_t node_count, std::span<const int32_t> triangles,
                  int32_t triangle_count, int32_t t, Triangle& tri) {
  if (t < 1 || t > triangle_count || triangles.size() / 3 < static_cast<std::size_t>(t)) return false;
  const auto n = static_cast<std::size_t>(node_count);
  for (std::size_t k = 0; k < 3; ++k) {
    const int32_t node = triangles[3 * static_cast<std::size_t>(t - 1) + k];
    if (node < 1 || node > node_count) return false;
    const auto i = static_cast<std::size_t>(node - 1);
    tri.node[k] = node;
    tri.p[k] = Corner{nodes[n + i], nodes[2 * n + i], nodes[i]};
  }
  const auto& p = tri.p;
  tri.d = (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[1].y - p[0].y) * (p[2].x - p[0].x);
  return true;
}

// The barycentric coordinates of (x, y); false outside or for no area.
bool contains(const Triangle& tri, double x, double y, std::array<double, 3>& lambda) {
  if (!(tri.d != 0.0) || !std::isfinite(tri.d)) return false;
  const auto& p = tri.p;
  const double l1 = ((x - p[0].x) * (p[2].y - p[0].y) - (y - p[0].y) * (p[2].x - p[0].x)) / tri.d;
  const double l2 = ((p[1].x - p[0].x) * (y - p[0].y) - (p[1].y - p[0].y) * (x - p[0].x)) / tri.d;
  lambda = {1.0 - l1 - l2, l1, l2};
  return lambda[0] >= -inside_tolerance && lambda[1] >= -inside_tolerance && lambda[2] >= -inside_tolerance;
}

// The gradient of the plane through the corners.
std::array<double, 2> plane_gradient(const Triangle& tri) {
  const auto& p = tri.p;
  const double dh1 = p[1].h - p[0].h;
  const double dh2 = p[2].h - p[0].h;
  return {(dh1 * (p[2].y - p[0].y) - dh2 * (p[1].y - p[0].y)) / tri.d,
          (dh2 * (p[1].x - p[0].x) - dh1 * (p[2].x - p[0].x)) / tri.d};
}

bool grid_usable(const SurfaceView& s) {
  const TriangleGrid* g = s.grid;
  if (g == nullptr || g->nx < 1 || g->ny < 1) return false;
  const int64_t cells = int64_t{g->nx} * g->ny;
  return cells == s.cell_count && g->first.size() == static_cast<std::size_t>(cells) + 1 &&
         g->cell_x > 0.0 && g->cell_y > 0.0;
}

int32_t cell_index(double value, double origin, double size, int32_t count) {
  const double position = std::floor((value - origin) / size);
  if (!(position >= 0.0)) return 0;
  if (position >= count - 1) return count - 1;
  return static_cast<int32_t>(position);
}

struct Found {
  int32_t number = 0;
  Triangle tri;
  std::array<double, 3> lambda{};
};

bool attempt(const SurfaceView& s, int32_t t, double x, double y, Found& found) {
  if (!get_triangle(s.nodes, s.node_count, s.triangles, s.triangle_count, t, found.tri)) return false;
  if (!contains(found.tri, x, y, found.lambda)) return false;
  found.number = t;
  return true;
}

bool locate(const SurfaceView& s, double x, double y, const int32_t* hint, Found& found) {
  if (!table_holds(s.nodes, s.node_count, 3) || s.triangle_count < 1) return false;
  if (hint != nullptr && attempt(s, *hint, x, y, found)) return true;
  if (!grid_usable(s)) {
    for (int32_t t = 1; t <= s.triangle_count; ++t) {
      if (attempt(s, t, x, y, found)) return true;
    }
    return false;
  }
  const TriangleGrid& g = *s.grid;
  const double margin = 1e-9 * std::max({g.x1 - g.x0, g.y1 - g.y0, 1.0});
  if (!(x >= g.x0 - margin && x <= g.x1 + margin && y >= g.y0 - margin && y <= g.y1 + margin)) {
    return false;
  }
  const int32_t i = cell_index(x, g.x0, g.cell_x, g.nx);
  const int32_t j = cell_index(y, g.y0, g.cell_y, g.ny);
  const auto k = static_cast<std::size_t>(j) * static_cast<std::size_t>(g.nx) + static_cast<std::size_t>(i);
  const std::size_t first = static_cast<std::size_t>(std::max(g.first[k], 0));
  const std::size_t last = std::min(static_cast<std::size_t>(std::max(g.first[k + 1], 0)), g.members.size());
  for (std::size_t m = first; m < last; ++m) {
    if (attempt(s, g.members[m], x, y, found)) return true;
  }
  return false;
}

void outside(double& height, NormalVector& normal, int32_t& flag) {
  height = 0.0;
  normal = {1.0, 0.0, 0.0};
  flag = 1;
}

// ---- The Clough-Tocher element --------------------------------------------

struct CubicValue {
  double h = 0.0;
  double gx = 0.0;
  double gy = 0.0;
};

// The cubic of the triangle at barycentric coordinates lambda, from corner
// heights and gradients. The triangle is split at its centroid into three
// cubic pieces that join with continuous gradient; across an edge of the
// triangle the derivative normal to it varies linearly, so that neighbours
// sharing the edge's corner data join with continuous gradient as well.
CubicValue clough_tocher(const Triangle& tri, const std::array<std::array<double, 2>, 3>& grad,
                          const std::array<double, 3>& lambda) {
  const auto& p = tri.p;
  const double cx = (p[0].x + p[1].x + p[2].x) / 3.0;
  const double cy = (p[0].y + p[1].y + p[2].y) / 3.0;
  const auto along = [&](int i, double tx, double ty) {  // f_i + g_i . (T - P_i) / 3
    return p[i].h + (grad[i][0] * (tx - p[i].x) + grad[i][1] * (ty - p[i].y)) / 3.0;
  };
  double a[3][3] = {};  // a[i][j]: next to corner i on the edge towards j
  double q[3] = {};     // next to corner i towards the centroid
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      if (i != j) a[i][j] = along(i, p[j].x, p[j].y);
    }
    q[i] = along(i, cx, cy);
  }
  double t[3] = {};  // t[i]: the inner point of the piece on edge i -> i + 1
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3;
    const double ex = p[j].x - p[i].x;
    const double ey = p[j].y - p[i].y;
    const double alpha = ((cx - p[i].x) * ex + (cy - p[i].y) * ey) / (ex * ex + ey * ey);
    // The derivative towards the centroid less alpha times the one along the
    // edge is the normal one; its quadratic Bezier ordinates are made linear.
    const double e0 = (q[i] - p[i].h) - alpha * (a[i][j] - p[i].h);
    const double e2 = (q[j] - a[j][i]) - alpha * (p[j].h - a[j][i]);
    t[i] = a[i][j] + alpha * (a[j][i] - a[i][j]) + 0.5 * (e0 + e2);
  }
  double r[3] = {};
  for (int i = 0; i < 3; ++i) r[i] = (q[i] + t[i] + t[(i + 2) % 3]) / 3.0;
  const double centre = (r[0] + r[1] + r[2]) / 3.0;

  // The piece opposite the corner of smallest coordinate holds the point.
  int k = 0;
  for (int m = 1; m < 3; ++m) {
    if (lambda[static_cast<std::size_t>(m)] < lambda[static_cast<std::size_t>(k)]) k = m;
  }
  const int i = (k + 1) % 3;
  const int j = (k + 2) % 3;
  const auto l = [&](int m) { return lambda[static_cast<std::size_t>(m)]; };
  const double u = l(i) - l(k);
  const double v = l(j) - l(k);
  const double w = 3.0 * l(k);
  // Ordinates b[alpha][beta][gamma] for powers of u, v, w.
  const double b300 = p[i].h, b030 = p[j].h, b003 = centre;
  const double b210 = a[i][j], b120 = a[j][i], b201 = q[i], b021 = q[j];
  const double b102 = r[i], b012 = r[j], b111 = t[i];

  CubicValue out;
  out.h = b300 * u * u * u + b030 * v * v * v + b003 * w * w * w +
          3.0 * (b210 * u * u * v + b120 * u * v * v + b201 * u * u * w + b021 * v * v * w +
                 b102 * u * w * w + b012 * v * w * w) +
          6.0 * b111 * u * v * w;
  // Partial derivatives in u, v, w taken as independent.
  const double du = 3.0 * (b300 * u * u + b120 * v * v + b102 * w * w +
                           2.0 * (b210 * u * v + b201 * u * w + b111 * v * w));
  const double dv = 3.0 * (b210 * u * u + b030 * v * v + b012 * w * w +
                           2.0 * (b120 * u * v + b111 * u * w + b021 * v * w));
  const double dw = 3.0 * (b201 * u * u + b021 * v * v + b003 * w * w +
                           2.0 * (b111 * u * v + b102 * u * w + b012 * v * w));
  // Gradients of the barycentric coordinates of the whole triangle.
  const auto grad_lambda = [&](int m) {
    const auto& p1 = p[static_cast<std::size_t>((m + 1) % 3)];
    const auto& p2 = p[static_cast<std::size_t>((m + 2) % 3)];
    return std::array<double, 2>{(p1.y - p2.y) / tri.d, (p2.x - p1.x) / tri.d};
  };
  const auto gi = grad_lambda(i);
  const auto gj = grad_lambda(j);
  const auto gk = grad_lambda(k);
  for (std::size_t c = 0; c < 2; ++c) {
    const double value = du * (gi[c] - gk[c]) + dv * (gj[c] - gk[c]) + dw * 3.0 * gk[c];
    (c == 0 ? out.gx : out.gy) = value;
  }
  return out;
}

}  // namespace

NormalVector normal_of_gradient(double gx, double gy) {
  const double k = 1.0 / std::sqrt(gx * gx + gy * gy + 1.0);
  return {k, 0.0 - gx * k, 0.0 - gy * k};
}

void build_triangle_grid(std::span<const float> nodes, int32_t node_count,
                         std::span<const int32_t> triangles, int32_t triangle_count,
                         TriangleGrid& grid) {
  grid = TriangleGrid{};
  grid.first.assign(1, 0);
  if (!table_holds(nodes, node_count, 3) || triangle_count < 1) return;
  const int32_t count = static_cast<int32_t>(
      std::min<std::size_t>(static_cast<std::size_t>(triangle_count), triangles.size() / 3));
  // Bounding boxes of the triangles, and the extent of all of them.
  struct Box {
    double x0, y0, x1, y1;
  };
  std::vector<Box> boxes(static_cast<std::size_t>(count));
  std::vector<char> valid(static_cast<std::size_t>(count), 0);
  bool any = false;
  Triangle tri;
  for (int32_t t = 1; t <= count; ++t) {
    if (!get_triangle(nodes, node_count, triangles, count, t, tri)) continue;
    Box b{tri.p[0].x, tri.p[0].y, tri.p[0].x, tri.p[0].y};
    for (const auto& c : tri.p) {
      b.x0 = std::min(b.x0, c.x);
      b.y0 = std::min(b.y0, c.y);
      b.x1 = std::max(b.x1, c.x);
      b.y1 = std::max(b.y1, c.y);
    }
    boxes[static_cast<std::size_t>(t - 1)] = b;
    valid[static_cast<std::size_t>(t - 1)] = 1;
    if (!any) {
      grid.x0 = b.x0, grid.y0 = b.y0, grid.x1 = b.x1, grid.y1 = b.y1;
      any = true;
    }
    grid.x0 = std::min(grid.x0, b.x0);
    grid.y0 = std::min(grid.y0, b.y0);
    grid.x1 = std::max(grid.x1, b.x1);
    grid.y1 = std::max(grid.y1, b.y1);
  }
  if (!any) return;
  const double width = grid.x1 - grid.x0;
  const double height = grid.y1 - grid.y0;
  // About one cell a triangle, shaped like the extent.
  const int64_t target = std::min<int64_t>(count, max_cells);
  const double aspect = width > 0.0 && height > 0.0 ? width / height : 1.0;
  int64_t nx = std::clamp<int64_t>(std::llround(std::sqrt(static_cast<double>(target) * aspect)), 1, target);
  int64_t ny = std::clamp<int64_t>(target / nx, 1, target);
  if (!(width > 0.0)) nx = 1;
  if (!(height > 0.0)) ny = 1;
  // A mesh of long thin triangles would fill many cells each: coarsen the
  // grid until the entries stay within a bound linear in the triangles.
  const auto span_of = [](double lo, double hi, double origin, double size, int32_t n) {
    return cell_index(hi, origin, size, n) - cell_index(lo, origin, size, n) + 1;
  };
  int64_t entries = 0;
  for (;;) {
    grid.nx = static_cast<int32_t>(nx);
    grid.ny = static_cast<int32_t>(ny);
    grid.cell_x = width > 0.0 ? width / static_cast<double>(nx) : 1.0;
    grid.cell_y = height > 0.0 ? height / static_cast<double>(ny) : 1.0;
    entries = 0;
    for (int32_t t = 0; t < count; ++t) {
      if (valid[static_cast<std::size_t>(t)] == 0) continue;
      const Box& b = boxes[static_cast<std::size_t>(t)];
      entries += int64_t{span_of(b.x0, b.x1, grid.x0, grid.cell_x, grid.nx)} *
                 span_of(b.y0, b.y1, grid.y0, grid.cell_y, grid.ny);
    }
    if (entries <= 16 * int64_t{count} + nx * ny || (nx == 1 && ny == 1)) break;
    nx = std::max<int64_t>(1, nx / 2);
    ny = std::max<int64_t>(1, ny / 2);
  }
  const auto cells = static_cast<std::size_t>(nx * ny);
  grid.first.assign(cells + 1, 0);
  grid.members.assign(static_cast<std::size_t>(entries), 0);
  const auto each_cell = [&](const Box& b, auto&& visit) {
    const int32_t i0 = cell_index(b.x0, grid.x0, grid.cell_x, grid.nx);
    const int32_t i1 = cell_index(b.x1, grid.x0, grid.cell_x, grid.nx);
    const int32_t j0 = cell_index(b.y0, grid.y0, grid.cell_y, grid.ny);
    const int32_t j1 = cell_index(b.y1, grid.y0, grid.cell_y, grid.ny);
    for (int32_t j = j0; j <= j1; ++j) {
      for (int32_t i = i0; i <= i1; ++i) visit(static_cast<std::size_t>(j) * static_cast<std::size_t>(nx) + static_cast<std::size_t>(i));
    }
  };
  for (int32_t t = 0; t < count; ++t) {
    if (valid[static_cast<std::size_t>(t)] == 0) continue;
    each_cell(boxes[static_cast<std::size_t>(t)], [&](std::size_t k) { ++grid.first[k + 1]; });
  }
  for (std::size_t k = 0; k < cells; ++k) grid.first[k + 1] += grid.first[k];
  std::vector<int32_t> fill(grid.first.begin(), grid.first.end() - 1);
  for (int32_t t = 0; t < count; ++t) {
    if (valid[static_cast<std::size_t>(t)] == 0) continue;
    each_cell(boxes[static_cast<std::size_t>(t)], [&](std::size_t k) {
      grid.members[static_cast<std::size_t>(fill[k]++)] = t + 1;
    });
  }
}

void estimate_gradients(std::span<const float> nodes, int32_t node_count,
                        std::span<const int32_t> triangles, int32_t triangle_count,
                        std::vector<double>& gradients) {
  if (!table_holds(nodes, node_count, 3)) node_count = 0;
  const auto n = static_cast<std::size_t>(std::max(node_count, 0));
  gradients.assign(2 * n, 0.0);
  std::vector<double> weight(n, 0.0);
  Triangle tri;
  for (int32_t t = 1; t <= triangle_count; ++t) {
    if (!get_triangle(nodes, node_count, triangles, triangle_count, t, tri)) continue;
    if (!(tri.d != 0.0) || !std::isfinite(tri.d)) continue;
    const auto g = plane_gradient(tri);
    const double area = 0.5 * std::fabs(tri.d);
    for (const int32_t node : tri.node) {
      const auto i = static_cast<std::size_t>(node - 1);
      gradients[2 * i] += area * g[0];
      gradients[2 * i + 1] += area * g[1];
      weight[i] += area;
    }
  }
  for (std::size_t i = 0; i < n; ++i) {
    if (weight[i] > 0.0) {
      gradients[2 * i] /= weight[i];
      gradients[2 * i + 1] /= weight[i];
    }
  }
}

int32_t find_triangle(double x, double y, const SurfaceView& surface, std::array<int32_t, 3>& corners,
                      const int32_t* hint) {
  Found found;
  if (!locate(surface, x, y, hint, found)) {
    corners = {0, 0, 0};
    return 0;
  }
  corners = found.tri.node;
  return found.number;
}

void interpolate_3d_linear(double x, double y, const SurfaceView& surface, int32_t& hint,
                           double& height, NormalVector& normal, int32_t& flag) {
  Found found;
  if (!locate(surface, x, y, &hint, found)) {
    outside(height, normal, flag);
    return;
  }
  const auto& p = found.tri.p;
  const auto& l = found.lambda;
  height = l[0] * p[0].h + l[1] * p[1].h + l[2] * p[2].h;
  const auto g = plane_gradient(found.tri);
  normal = normal_of_gradient(g[0], g[1]);
  flag = 0;
  hint = found.number;
}

void interpolate_3d_cubic(double x, double y, const SurfaceView& surface, int32_t& hint,
                          double& height, NormalVector& normal, int32_t& flag) {
  Found found;
  if (!locate(surface, x, y, &hint, found)) {
    outside(height, normal, flag);
    return;
  }
  // Without node gradients each corner takes the triangle's own plane.
  std::array<std::array<double, 2>, 3> grad{};
  const bool have = surface.gradients.size() / 2 >= static_cast<std::size_t>(surface.node_count);
  for (std::size_t k = 0; k < 3; ++k) {
    if (have) {
      const auto i = static_cast<std::size_t>(found.tri.node[k] - 1);
      grad[k] = {surface.gradients[2 * i], surface.gradients[2 * i + 1]};
    } else {
      grad[k] = plane_gradient(found.tri);
    }
  }
  const CubicValue value = clough_tocher(found.tri, grad, found.lambda);
  height = value.h;
  normal = normal_of_gradient(value.gx, value.gy);
  flag = 0;
  hint = found.number;
}

}  // namespace tmrdar::seabed
