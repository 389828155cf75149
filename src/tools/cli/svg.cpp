#include "tools/cli/svg.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace tmrdar::cli {
namespace {

constexpr double width = 800.0;
constexpr double height = 500.0;
constexpr double left = 90.0;
constexpr double right = 160.0;  // room for the key
constexpr double top = 40.0;
constexpr double bottom = 60.0;

std::string escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string number(double value, const char* format = "%.2f") {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// The finite extent of some values; 0 to 1 when there is none, and widened
// about the value when it is a single one.
struct Extent {
  double low = 0.0;
  double high = 1.0;
};
Extent extent_of(const std::vector<const std::vector<double>*>& lists) {
  double low = INFINITY;
  double high = -INFINITY;
  for (const auto* list : lists) {
    for (const double v : *list) {
      if (!std::isfinite(v)) continue;
      low = std::min(low, v);
      high = std::max(high, v);
    }
  }
  if (!(low <= high)) return {};
  if (low == high) {
    const double pad = low == 0.0 ? 1.0 : std::abs(low) * 0.5;
    return {low - pad, high + pad};
  }
  return {low, high};
}

// Ticks at 1, 2 or 5 times a power of ten, four to eight over the extent.
std::vector<double> ticks(const Extent& extent) {
  const double rough = (extent.high - extent.low) / 8.0;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  double step = power;
  for (const double factor : {2.0, 5.0, 10.0}) {
    if (step >= rough) break;
    step = power * factor;
  }
  std::vector<double> ticks;
  for (double t = std::ceil(extent.low / step) * step; t <= extent.high + step * 1e-9; t += step) {
    ticks.push_back(std::abs(t) < step * 1e-9 ? 0.0 : t);
  }
  return ticks;
}

}  // namespace

std::string svg_text(const Graph& graph) {
  std::vector<const std::vector<double>*> ys;
  for (const CurveOfGraph& curve : graph.curves) ys.push_back(&curve.y);
  const Extent x_extent = extent_of({&graph.x});
  const Extent y_extent = extent_of(ys);
  const double plot_width = width - left - right;
  const double plot_height = height - top - bottom;
  const auto x_of = [&](double x) { return left + (x - x_extent.low) / (x_extent.high - x_extent.low) * plot_width; };
  const auto y_of = [&](double y) {
    return top + plot_height - (y - y_extent.low) / (y_extent.high - y_extent.low) * plot_height;
  };

  std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + number(width, "%.0f") + "\" height=\"" +
                    number(height, "%.0f") + "\" font-family=\"sans-serif\" font-size=\"12\">\n";
  svg += "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  svg += "<text x=\"" + number(left + plot_width / 2) + "\" y=\"24\" text-anchor=\"middle\" font-size=\"14\">" +
         escaped(graph.title) + "</text>\n";
  // The axes, their ticks and their labels.
  svg += "<g class=\"axes\" stroke=\"black\" fill=\"none\">\n<rect x=\"" + number(left) + "\" y=\"" + number(top) +
         "\" width=\"" + number(plot_width) + "\" height=\"" + number(plot_height) + "\"/>\n</g>\n";
  for (const double t : ticks(x_extent)) {
    const std::string x = number(x_of(t));
    svg += "<line x1=\"" + x + "\" y1=\"" + number(top + plot_height) + "\" x2=\"" + x + "\" y2=\"" +
           number(top + plot_height + 5) + "\" stroke=\"black\"/>\n";
    svg += "<text class=\"x-tick\" x=\"" + x + "\" y=\"" + number(top + plot_height + 18) +
           "\" text-anchor=\"middle\">" + number(t, "%g") + "</text>\n";
  }
  for (const double t : ticks(y_extent)) {
    const std::string y = number(y_of(t));
    svg += "<line x1=\"" + number(left - 5) + "\" y1=\"" + y + "\" x2=\"" + number(left) + "\" y2=\"" + y +
           "\" stroke=\"black\"/>\n";
    svg += "<text class=\"y-tick\" x=\"" + number(left - 8) + "\" y=\"" + number(y_of(t) + 4) +
           "\" text-anchor=\"end\">" + number(t, "%g") + "</text>\n";
  }
  svg += "<text class=\"x-label\" x=\"" + number(left + plot_width / 2) + "\" y=\"" + number(height - 15) +
         "\" text-anchor=\"middle\">" + escaped(graph.x_label) + "</text>\n";
  svg += "<text class=\"y-label\" x=\"20\" y=\"" + number(top + plot_height / 2) +
         "\" text-anchor=\"middle\" transform=\"rotate(-90 20 " + number(top + plot_height / 2) + ")\">" +
         escaped(graph.y_label) + "</text>\n";

  // The curves: a polyline for each run of finite points, and a key.
  for (std::size_t c = 0; c < graph.curves.size(); ++c) {
    const CurveOfGraph& curve = graph.curves[c];
    std::string points;
    const auto flush = [&] {
      if (points.empty()) return;
      svg += "<polyline class=\"curve\" fill=\"none\" stroke=\"" + escaped(curve.colour) + "\" points=\"" + points +
             "\"/>\n";
      points.clear();
    };
    for (std::size_t i = 0; i < curve.y.size() && i < graph.x.size(); ++i) {
      if (!std::isfinite(curve.y[i]) || !std::isfinite(graph.x[i])) {
        flush();
        continue;
      }
      if (!points.empty()) points += ' ';
      points += number(x_of(graph.x[i])) + "," + number(y_of(curve.y[i]));
    }
    flush();
    const double key_y = top + 10 + 18 * static_cast<double>(c);
    svg += "<line x1=\"" + number(width - right + 10) + "\" y1=\"" + number(key_y) + "\" x2=\"" +
           number(width - right + 30) + "\" y2=\"" + number(key_y) + "\" stroke=\"" + escaped(curve.colour) +
           "\"/>\n<text class=\"key\" x=\"" + number(width - right + 35) + "\" y=\"" + number(key_y + 4) + "\">" +
           escaped(curve.name) + "</text>\n";
  }
  svg += "</svg>\n";
  return svg;
}

void write_svg(const std::string& path, const Graph& graph) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  const std::string text = svg_text(graph);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.close();
  if (!out) throw std::runtime_error("the graph could not be written to " + path);
}

}  // namespace tmrdar::cli
