// Profiles: segment search and the linear and natural cubic interpolants.
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "seabed/library/seabed.h"

namespace tmrdar::seabed {
namespace {

// The node table holds node_count rows of two columns, or is treated as empty.
int32_t rows_held(std::span<const float> nodes, int32_t node_count) {
  if (node_count < 1 || nodes.size() / 2 < static_cast<std::size_t>(node_count)) return 0;
  return node_count;
}

double height_of(std::span<const float> nodes, int32_t i) {
  return nodes[static_cast<std::size_t>(i - 1)];
}

double distance_of(std::span<const float> nodes, int32_t n, int32_t i) {
  return nodes[static_cast<std::size_t>(n) + static_cast<std::size_t>(i - 1)];
}

// Whether segment k, between nodes k - 1 and k, holds the distance.
bool segment_holds(std::span<const float> nodes, int32_t n, int32_t k, double distance) {
  if (k < 1 || k > n + 1) return false;
  const bool above_lower = k == 1 || distance_of(nodes, n, k - 1) <= distance;
  const bool below_upper = k == n + 1 || distance < distance_of(nodes, n, k);
  return above_lower && below_upper;
}

// The segment of a valid table: the hint, a neighbour of it, or a search.
int32_t segment(std::span<const float> nodes, int32_t n, double distance, int32_t hint) {
  if (segment_holds(nodes, n, hint, distance)) return hint;
  if (hint < n + 1 && segment_holds(nodes, n, hint + 1, distance)) return hint + 1;
  if (hint > 1 && segment_holds(nodes, n, hint - 1, distance)) return hint - 1;
  // One more than the count of nodes at or below the distance, in ascending
  // order; on any other order still a segment from 1 to n + 1.
  int32_t low = 0;  // nodes 1..low are at or below
  int32_t high = n;
  while (low < high) {
    const int32_t middle = low + (high - low + 1) / 2;
    if (distance_of(nodes, n, middle) <= distance) {
      low = middle;
    } else {
      high = middle - 1;
    }
  }
  return low + 1;
}

// The interval on which to evaluate segment k: its lower node, or 0 outside
// the profile. The last node itself belongs to the last interval.
int32_t interval(std::span<const float> nodes, int32_t n, int32_t k, double distance) {
  if (k >= 2 && k <= n) return k - 1;
  if (k == n + 1 && n >= 2 && distance == distance_of(nodes, n, n) &&
      distance_of(nodes, n, n - 1) < distance_of(nodes, n, n)) {
    return n - 1;
  }
  return 0;
}

// Height and slope outside the profile: the end node, level.
void end_value(std::span<const float> nodes, int32_t n, int32_t k, double& height, double& slope) {
  height = k <= 1 ? height_of(nodes, 1) : height_of(nodes, n);
  slope = 0.0;
}

}  // namespace

int32_t find_segment(std::span<const float> nodes, int32_t node_count, double distance,
                     int32_t& hint) {
  const int32_t n = rows_held(nodes, node_count);
  hint = n == 0 ? 1 : segment(nodes, n, distance, hint);
  return hint;
}

void fit_spline_2d(std::span<const float> nodes, int32_t node_count,
                   std::vector<double>& second_derivatives) {
  const int32_t n = rows_held(nodes, node_count);
  second_derivatives.assign(static_cast<std::size_t>(n), 0.0);
  // Scratch of the tridiagonal elimination, indexed like the nodes.
  std::vector<double> upper(static_cast<std::size_t>(n), 0.0);
  int32_t first = 1;
  while (first <= n) {
    int32_t last = first;
    while (last < n && distance_of(nodes, n, last) < distance_of(nodes, n, last + 1)) ++last;
    // Natural spline on nodes first..last: the end second derivatives are 0
    // and each inner node i gives
    //   h(i-1) M(i-1) + 2 (h(i-1) + h(i)) M(i) + h(i) M(i+1) = 6 (g(i) - g(i-1)).
    if (last - first >= 2) {
      auto d = [&](int32_t i) { return distance_of(nodes, n, i); };
      auto h = [&](int32_t i) { return d(i + 1) - d(i); };
      auto g = [&](int32_t i) { return (height_of(nodes, i + 1) - height_of(nodes, i)) / h(i); };
      auto& m = second_derivatives;
      double previous_upper = 0.0;
      double previous_rhs = 0.0;
      for (int32_t i = first + 1; i <= last - 1; ++i) {
        const double lower = i == first + 1 ? 0.0 : h(i - 1);
        const double diagonal = 2.0 * (h(i - 1) + h(i)) - lower * previous_upper;
        const double up = i == last - 1 ? 0.0 : h(i);
        const double rhs = 6.0 * (g(i) - g(i - 1)) - lower * previous_rhs;
        previous_upper = up / diagonal;
        previous_rhs = rhs / diagonal;
        upper[static_cast<std::size_t>(i - 1)] = previous_upper;
        m[static_cast<std::size_t>(i - 1)] = previous_rhs;
      }
      for (int32_t i = last - 2; i >= first + 1; --i) {
        m[static_cast<std::size_t>(i - 1)] -= upper[static_cast<std::size_t>(i - 1)] * m[static_cast<std::size_t>(i)];
      }
    }
    first = last + 1;
  }
}

namespace {

// The interval of the profile that holds a distance, with its end nodes.
struct IntervalAt {
  int32_t i;
  double d0, d1, h0, h1, length;
};

// Moves the hint to the distance and finds its interval. Where the answer
// needs no interval (no nodes, beyond the end nodes, a node out of order) it
// is given here in height and slope, and there is no interval.
std::optional<IntervalAt> locate(double distance, int32_t node_count, std::span<const float> nodes,
                                  int32_t& hint, double& height, double& slope) {
  const int32_t n = rows_held(nodes, node_count);
  if (n == 0) {
    height = 0.0;
    slope = 0.0;
    hint = 1;
    return std::nullopt;
  }
  hint = segment(nodes, n, distance, hint);
  const int32_t i = interval(nodes, n, hint, distance);
  if (i == 0) {
    end_value(nodes, n, hint, height, slope);
    return std::nullopt;
  }
  const double d0 = distance_of(nodes, n, i);
  const double d1 = distance_of(nodes, n, i + 1);
  const double h0 = height_of(nodes, i);
  const double h1 = height_of(nodes, i + 1);
  const double length = d1 - d0;
  if (!(length > 0.0)) {  // a node out of order
    height = h1;
    slope = 0.0;
    return std::nullopt;
  }
  return IntervalAt{i, d0, d1, h0, h1, length};
}

}  // namespace

void interpolate_2d_linear(double distance, int32_t node_count, std::span<const float> nodes,
                           int32_t& hint, double& height, double& slope) {
  const std::optional<IntervalAt> at = locate(distance, node_count, nodes, hint, height, slope);
  if (!at) return;
  const auto [i, d0, d1, h0, h1, length] = *at;
  const double b = (distance - d0) / length;
  height = h0 + b * (h1 - h0);
  slope = (h1 - h0) / length;
}

void interpolate_2d_cubic(double distance, int32_t node_count, std::span<const float> nodes,
                          std::span<const double> second_derivatives, int32_t& hint,
                          double& height, double& slope) {
  const std::optional<IntervalAt> at = locate(distance, node_count, nodes, hint, height, slope);
  if (!at) return;
  const auto [i, d0, d1, h0, h1, length] = *at;
  const int32_t n = rows_held(nodes, node_count);
  // Without a derivative for every node the spline is the straight line.
  const bool curved = second_derivatives.size() >= static_cast<std::size_t>(n);
  const double m0 = curved ? second_derivatives[static_cast<std::size_t>(i - 1)] : 0.0;
  const double m1 = curved ? second_derivatives[static_cast<std::size_t>(i)] : 0.0;
  const double a = (d1 - distance) / length;
  const double b = (distance - d0) / length;
  const double l2 = length * length / 6.0;
  height = a * h0 + b * h1 + ((a * a * a - a) * m0 + (b * b * b - b) * m1) * l2;
  slope = (h1 - h0) / length + ((1.0 - 3.0 * a * a) * m0 + (3.0 * b * b - 1.0) * m1) * length / 6.0;
}

}  // namespace tmrdar::seabed
