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
constexpr double INSIDE_TOLERANCE = 1e-12;
// The grid may hold at most this many cells.
constexpr int64_t MAX_CELLS = int64_t{1} << 22;

struct CORNER {
  double X = 0.0;
  double Y = 0.0;
  double H = 0.0;
};

// A triangle of the table with its corners, when its node numbers are valid.
struct TRIANGLE {
  std::array<int32_t, 3> NODE{};
  std::array<CORNER, 3> P{};
  double D = 0.0;  // twice the signed area
};

bool TABLE_HOLDS(std::span<const float> nodes, int32_t node_count, std::size_t columns) {
  return node_count >= 0 && nodes.size() / columns >= static_cast<std::size_t>(node_count);
}

bool GET_TRIANGLE(std::span<const float> nodes, int32_t node_count, std::span<const int32_t> triangles,
                  int32_t triangle_count, int32_t t, TRIANGLE& tri) {
  if (t < 1 || t > triangle_count || triangles.size() / 3 < static_cast<std::size_t>(t)) return false;
  const auto n = static_cast<std::size_t>(node_count);
  for (std::size_t k = 0; k < 3; ++k) {
    const int32_t node = triangles[3 * static_cast<std::size_t>(t - 1) + k];
    if (node < 1 || node > node_count) return false;
    const auto i = static_cast<std::size_t>(node - 1);
    tri.NODE[k] = node;
    tri.P[k] = CORNER{nodes[n + i], nodes[2 * n + i], nodes[i]};
  }
  const auto& p = tri.P;
  tri.D = (p[1].X - p[0].X) * (p[2].Y - p[0].Y) - (p[1].Y - p[0].Y) * (p[2].X - p[0].X);
  return true;
}

// The barycentric coordinates of (x, y); false outside or for no area.
bool CONTAINS(const TRIANGLE& tri, double x, double y, std::array<double, 3>& lambda) {
  if (!(tri.D != 0.0) || !std::isfinite(tri.D)) return false;
  const auto& p = tri.P;
  const double l1 = ((x - p[0].X) * (p[2].Y - p[0].Y) - (y - p[0].Y) * (p[2].X - p[0].X)) / tri.D;
  const double l2 = ((p[1].X - p[0].X) * (y - p[0].Y) - (p[1].Y - p[0].Y) * (x - p[0].X)) / tri.D;
  lambda = {1.0 - l1 - l2, l1, l2};
  return lambda[0] >= -INSIDE_TOLERANCE && lambda[1] >= -INSIDE_TOLERANCE && lambda[2] >= -INSIDE_TOLERANCE;
}

// The gradient of the plane through the corners.
std::array<double, 2> PLANE_GRADIENT(const TRIANGLE& tri) {
  const auto& p = tri.P;
  const double dh1 = p[1].H - p[0].H;
  const double dh2 = p[2].H - p[0].H;
  return {(dh1 * (p[2].Y - p[0].Y) - dh2 * (p[1].Y - p[0].Y)) / tri.D,
          (dh2 * (p[1].X - p[0].X) - dh1 * (p[2].X - p[0].X)) / tri.D};
}

bool GRID_USABLE(const SURFACE_VIEW& s) {
  const TRIANGLE_GRID* g = s.GRID;
  if (g == nullptr || g->NX < 1 || g->NY < 1) return false;
  const int64_t cells = int64_t{g->NX} * g->NY;
  return cells == s.CELL_COUNT && g->FIRST.size() == static_cast<std::size_t>(cells) + 1 &&
         g->CELL_X > 0.0 && g->CELL_Y > 0.0;
}

int32_t CELL_INDEX(double value, double origin, double size, int32_t count) {
  const double position = std::floor((value - origin) / size);
  if (!(position >= 0.0)) return 0;
  if (position >= count - 1) return count - 1;
  return static_cast<int32_t>(position);
}

struct FOUND {
  int32_t NUMBER = 0;
  TRIANGLE TRI;
  std::array<double, 3> LAMBDA{};
};

bool TRY(const SURFACE_VIEW& s, int32_t t, double x, double y, FOUND& found) {
  if (!GET_TRIANGLE(s.NODES, s.NODE_COUNT, s.TRIANGLES, s.TRIANGLE_COUNT, t, found.TRI)) return false;
  if (!CONTAINS(found.TRI, x, y, found.LAMBDA)) return false;
  found.NUMBER = t;
  return true;
}

bool LOCATE(const SURFACE_VIEW& s, double x, double y, const int32_t* hint, FOUND& found) {
  if (!TABLE_HOLDS(s.NODES, s.NODE_COUNT, 3) || s.TRIANGLE_COUNT < 1) return false;
  if (hint != nullptr && TRY(s, *hint, x, y, found)) return true;
  if (!GRID_USABLE(s)) {
    for (int32_t t = 1; t <= s.TRIANGLE_COUNT; ++t) {
      if (TRY(s, t, x, y, found)) return true;
    }
    return false;
  }
  const TRIANGLE_GRID& g = *s.GRID;
  const double margin = 1e-9 * std::max({g.X1 - g.X0, g.Y1 - g.Y0, 1.0});
  if (!(x >= g.X0 - margin && x <= g.X1 + margin && y >= g.Y0 - margin && y <= g.Y1 + margin)) {
    return false;
  }
  const int32_t i = CELL_INDEX(x, g.X0, g.CELL_X, g.NX);
  const int32_t j = CELL_INDEX(y, g.Y0, g.CELL_Y, g.NY);
  const auto k = static_cast<std::size_t>(j) * static_cast<std::size_t>(g.NX) + static_cast<std::size_t>(i);
  const std::size_t first = static_cast<std::size_t>(std::max(g.FIRST[k], 0));
  const std::size_t last = std::min(static_cast<std::size_t>(std::max(g.FIRST[k + 1], 0)), g.MEMBERS.size());
  for (std::size_t m = first; m < last; ++m) {
    if (TRY(s, g.MEMBERS[m], x, y, found)) return true;
  }
  return false;
}

void OUTSIDE(double& height, NORMAL_VECTOR& normal, int32_t& flag) {
  height = 0.0;
  normal = {1.0, 0.0, 0.0};
  flag = 1;
}

// ---- The Clough-Tocher element --------------------------------------------

struct CUBIC_VALUE {
  double H = 0.0;
  double GX = 0.0;
  double GY = 0.0;
};

// The cubic of the triangle at barycentric coordinates lambda, from corner
// heights and gradients. The triangle is split at its centroid into three
// cubic pieces that join with continuous gradient; across an edge of the
// triangle the derivative normal to it varies linearly, so that neighbours
// sharing the edge's corner data join with continuous gradient as well.
CUBIC_VALUE CLOUGH_TOCHER(const TRIANGLE& tri, const std::array<std::array<double, 2>, 3>& grad,
                          const std::array<double, 3>& lambda) {
  const auto& p = tri.P;
  const double cx = (p[0].X + p[1].X + p[2].X) / 3.0;
  const double cy = (p[0].Y + p[1].Y + p[2].Y) / 3.0;
  const auto along = [&](int i, double tx, double ty) {  // f_i + g_i . (T - P_i) / 3
    return p[i].H + (grad[i][0] * (tx - p[i].X) + grad[i][1] * (ty - p[i].Y)) / 3.0;
  };
  double a[3][3] = {};  // a[i][j]: next to corner i on the edge towards j
  double q[3] = {};     // next to corner i towards the centroid
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      if (i != j) a[i][j] = along(i, p[j].X, p[j].Y);
    }
    q[i] = along(i, cx, cy);
  }
  double t[3] = {};  // t[i]: the inner point of the piece on edge i -> i + 1
  for (int i = 0; i < 3; ++i) {
    const int j = (i + 1) % 3;
    const double ex = p[j].X - p[i].X;
    const double ey = p[j].Y - p[i].Y;
    const double alpha = ((cx - p[i].X) * ex + (cy - p[i].Y) * ey) / (ex * ex + ey * ey);
    // The derivative towards the centroid less alpha times the one along the
    // edge is the normal one; its quadratic Bezier ordinates are made linear.
    const double e0 = (q[i] - p[i].H) - alpha * (a[i][j] - p[i].H);
    const double e2 = (q[j] - a[j][i]) - alpha * (p[j].H - a[j][i]);
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
  const auto L = [&](int m) { return lambda[static_cast<std::size_t>(m)]; };
  const double u = L(i) - L(k);
  const double v = L(j) - L(k);
  const double w = 3.0 * L(k);
  // Ordinates b[alpha][beta][gamma] for powers of u, v, w.
  const double b300 = p[i].H, b030 = p[j].H, b003 = centre;
  const double b210 = a[i][j], b120 = a[j][i], b201 = q[i], b021 = q[j];
  const double b102 = r[i], b012 = r[j], b111 = t[i];

  CUBIC_VALUE out;
  out.H = b300 * u * u * u + b030 * v * v * v + b003 * w * w * w +
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
    return std::array<double, 2>{(p1.Y - p2.Y) / tri.D, (p2.X - p1.X) / tri.D};
  };
  const auto gi = grad_lambda(i);
  const auto gj = grad_lambda(j);
  const auto gk = grad_lambda(k);
  for (std::size_t c = 0; c < 2; ++c) {
    const double value = du * (gi[c] - gk[c]) + dv * (gj[c] - gk[c]) + dw * 3.0 * gk[c];
    (c == 0 ? out.GX : out.GY) = value;
  }
  return out;
}

}  // namespace

NORMAL_VECTOR NORMAL_OF_GRADIENT(double gx, double gy) {
  const double k = 1.0 / std::sqrt(gx * gx + gy * gy + 1.0);
  return {k, 0.0 - gx * k, 0.0 - gy * k};
}

void build_triangle_grid(std::span<const float> nodes, int32_t node_count,
                         std::span<const int32_t> triangles, int32_t triangle_count,
                         TRIANGLE_GRID& grid) {
  grid = TRIANGLE_GRID{};
  grid.FIRST.assign(1, 0);
  if (!TABLE_HOLDS(nodes, node_count, 3) || triangle_count < 1) return;
  const int32_t count = static_cast<int32_t>(
      std::min<std::size_t>(static_cast<std::size_t>(triangle_count), triangles.size() / 3));
  // Bounding boxes of the triangles, and the extent of all of them.
  struct BOX {
    double X0, Y0, X1, Y1;
  };
  std::vector<BOX> boxes(static_cast<std::size_t>(count));
  std::vector<char> valid(static_cast<std::size_t>(count), 0);
  bool any = false;
  TRIANGLE tri;
  for (int32_t t = 1; t <= count; ++t) {
    if (!GET_TRIANGLE(nodes, node_count, triangles, count, t, tri)) continue;
    BOX b{tri.P[0].X, tri.P[0].Y, tri.P[0].X, tri.P[0].Y};
    for (const auto& c : tri.P) {
      b.X0 = std::min(b.X0, c.X);
      b.Y0 = std::min(b.Y0, c.Y);
      b.X1 = std::max(b.X1, c.X);
      b.Y1 = std::max(b.Y1, c.Y);
    }
    boxes[static_cast<std::size_t>(t - 1)] = b;
    valid[static_cast<std::size_t>(t - 1)] = 1;
    if (!any) {
      grid.X0 = b.X0, grid.Y0 = b.Y0, grid.X1 = b.X1, grid.Y1 = b.Y1;
      any = true;
    }
    grid.X0 = std::min(grid.X0, b.X0);
    grid.Y0 = std::min(grid.Y0, b.Y0);
    grid.X1 = std::max(grid.X1, b.X1);
    grid.Y1 = std::max(grid.Y1, b.Y1);
  }
  if (!any) return;
  const double width = grid.X1 - grid.X0;
  const double height = grid.Y1 - grid.Y0;
  // About one cell a triangle, shaped like the extent.
  const int64_t target = std::min<int64_t>(count, MAX_CELLS);
  const double aspect = width > 0.0 && height > 0.0 ? width / height : 1.0;
  int64_t nx = std::clamp<int64_t>(std::llround(std::sqrt(static_cast<double>(target) * aspect)), 1, target);
  int64_t ny = std::clamp<int64_t>(target / nx, 1, target);
  if (!(width > 0.0)) nx = 1;
  if (!(height > 0.0)) ny = 1;
  // A mesh of long thin triangles would fill many cells each: coarsen the
  // grid until the entries stay within a bound linear in the triangles.
  const auto span_of = [](double lo, double hi, double origin, double size, int32_t n) {
    return CELL_INDEX(hi, origin, size, n) - CELL_INDEX(lo, origin, size, n) + 1;
  };
  int64_t entries = 0;
  for (;;) {
    grid.NX = static_cast<int32_t>(nx);
    grid.NY = static_cast<int32_t>(ny);
    grid.CELL_X = width > 0.0 ? width / static_cast<double>(nx) : 1.0;
    grid.CELL_Y = height > 0.0 ? height / static_cast<double>(ny) : 1.0;
    entries = 0;
    for (int32_t t = 0; t < count; ++t) {
      if (valid[static_cast<std::size_t>(t)] == 0) continue;
      const BOX& b = boxes[static_cast<std::size_t>(t)];
      entries += int64_t{span_of(b.X0, b.X1, grid.X0, grid.CELL_X, grid.NX)} *
                 span_of(b.Y0, b.Y1, grid.Y0, grid.CELL_Y, grid.NY);
    }
    if (entries <= 16 * int64_t{count} + nx * ny || (nx == 1 && ny == 1)) break;
    nx = std::max<int64_t>(1, nx / 2);
    ny = std::max<int64_t>(1, ny / 2);
  }
  const auto cells = static_cast<std::size_t>(nx * ny);
  grid.FIRST.assign(cells + 1, 0);
  grid.MEMBERS.assign(static_cast<std::size_t>(entries), 0);
  const auto each_cell = [&](const BOX& b, auto&& visit) {
    const int32_t i0 = CELL_INDEX(b.X0, grid.X0, grid.CELL_X, grid.NX);
    const int32_t i1 = CELL_INDEX(b.X1, grid.X0, grid.CELL_X, grid.NX);
    const int32_t j0 = CELL_INDEX(b.Y0, grid.Y0, grid.CELL_Y, grid.NY);
    const int32_t j1 = CELL_INDEX(b.Y1, grid.Y0, grid.CELL_Y, grid.NY);
    for (int32_t j = j0; j <= j1; ++j) {
      for (int32_t i = i0; i <= i1; ++i) visit(static_cast<std::size_t>(j) * static_cast<std::size_t>(nx) + static_cast<std::size_t>(i));
    }
  };
  for (int32_t t = 0; t < count; ++t) {
    if (valid[static_cast<std::size_t>(t)] == 0) continue;
    each_cell(boxes[static_cast<std::size_t>(t)], [&](std::size_t k) { ++grid.FIRST[k + 1]; });
  }
  for (std::size_t k = 0; k < cells; ++k) grid.FIRST[k + 1] += grid.FIRST[k];
  std::vector<int32_t> fill(grid.FIRST.begin(), grid.FIRST.end() - 1);
  for (int32_t t = 0; t < count; ++t) {
    if (valid[static_cast<std::size_t>(t)] == 0) continue;
    each_cell(boxes[static_cast<std::size_t>(t)], [&](std::size_t k) {
      grid.MEMBERS[static_cast<std::size_t>(fill[k]++)] = t + 1;
    });
  }
}

void estimate_gradients(std::span<const float> nodes, int32_t node_count,
                        std::span<const int32_t> triangles, int32_t triangle_count,
                        std::vector<double>& gradients) {
  if (!TABLE_HOLDS(nodes, node_count, 3)) node_count = 0;
  const auto n = static_cast<std::size_t>(std::max(node_count, 0));
  gradients.assign(2 * n, 0.0);
  std::vector<double> weight(n, 0.0);
  TRIANGLE tri;
  for (int32_t t = 1; t <= triangle_count; ++t) {
    if (!GET_TRIANGLE(nodes, node_count, triangles, triangle_count, t, tri)) continue;
    if (!(tri.D != 0.0) || !std::isfinite(tri.D)) continue;
    const auto g = PLANE_GRADIENT(tri);
    const double area = 0.5 * std::fabs(tri.D);
    for (const int32_t node : tri.NODE) {
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

int32_t find_triangle(double x, double y, const SURFACE_VIEW& surface, std::array<int32_t, 3>& corners,
                      const int32_t* hint) {
  FOUND found;
  if (!LOCATE(surface, x, y, hint, found)) {
    corners = {0, 0, 0};
    return 0;
  }
  corners = found.TRI.NODE;
  return found.NUMBER;
}

void interpolate_3d_linear(double x, double y, const SURFACE_VIEW& surface, int32_t& hint,
                           double& height, NORMAL_VECTOR& normal, int32_t& flag) {
  FOUND found;
  if (!LOCATE(surface, x, y, &hint, found)) {
    OUTSIDE(height, normal, flag);
    return;
  }
  const auto& p = found.TRI.P;
  const auto& l = found.LAMBDA;
  height = l[0] * p[0].H + l[1] * p[1].H + l[2] * p[2].H;
  const auto g = PLANE_GRADIENT(found.TRI);
  normal = NORMAL_OF_GRADIENT(g[0], g[1]);
  flag = 0;
  hint = found.NUMBER;
}

void interpolate_3d_cubic(double x, double y, const SURFACE_VIEW& surface, int32_t& hint,
                          double& height, NORMAL_VECTOR& normal, int32_t& flag) {
  FOUND found;
  if (!LOCATE(surface, x, y, &hint, found)) {
    OUTSIDE(height, normal, flag);
    return;
  }
  // Without node gradients each corner takes the triangle's own plane.
  std::array<std::array<double, 2>, 3> grad{};
  const bool have = surface.GRADIENTS.size() / 2 >= static_cast<std::size_t>(surface.NODE_COUNT);
  for (std::size_t k = 0; k < 3; ++k) {
    if (have) {
      const auto i = static_cast<std::size_t>(found.TRI.NODE[k] - 1);
      grad[k] = {surface.GRADIENTS[2 * i], surface.GRADIENTS[2 * i + 1]};
    } else {
      grad[k] = PLANE_GRADIENT(found.TRI);
    }
  }
  const CUBIC_VALUE value = CLOUGH_TOCHER(found.TRI, grad, found.LAMBDA);
  height = value.H;
  normal = NORMAL_OF_GRADIENT(value.GX, value.GY);
  flag = 0;
  hint = found.NUMBER;
}

}  // namespace tmrdar::seabed
