#include "tools/cli/svg.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace tmrdar::cli {
namespace {

constexpr double WIDTH = 800.0;
constexpr double HEIGHT = 500.0;
constexpr double LEFT = 90.0;
constexpr double RIGHT = 160.0;  // room for the key
constexpr double TOP = 40.0;
constexpr double BOTTOM = 60.0;

std::string ESCAPED(const std::string& text) {
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

std::string NUMBER(double value, const char* format = "%.2f") {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

// The finite extent of some values; 0 to 1 when there is none, and widened
// about the value when it is a single one.
struct EXTENT {
  double LOW = 0.0;
  double HIGH = 1.0;
};
EXTENT EXTENT_OF(const std::vector<const std::vector<double>*>& lists) {
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
std::vector<double> TICKS(const EXTENT& extent) {
  const double rough = (extent.HIGH - extent.LOW) / 8.0;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  double step = power;
  for (const double factor : {2.0, 5.0, 10.0}) {
    if (step >= rough) break;
    step = power * factor;
  }
  std::vector<double> ticks;
  for (double t = std::ceil(extent.LOW / step) * step; t <= extent.HIGH + step * 1e-9; t += step) {
    ticks.push_back(std::abs(t) < step * 1e-9 ? 0.0 : t);
  }
  return ticks;
}

}  // namespace

std::string SVG_TEXT(const GRAPH& graph) {
  std::vector<const std::vector<double>*> ys;
  for (const CURVE_OF_GRAPH& curve : graph.CURVES) ys.push_back(&curve.Y);
  const EXTENT x_extent = EXTENT_OF({&graph.X});
  const EXTENT y_extent = EXTENT_OF(ys);
  const double plot_width = WIDTH - LEFT - RIGHT;
  const double plot_height = HEIGHT - TOP - BOTTOM;
  const auto x_of = [&](double x) { return LEFT + (x - x_extent.LOW) / (x_extent.HIGH - x_extent.LOW) * plot_width; };
  const auto y_of = [&](double y) {
    return TOP + plot_height - (y - y_extent.LOW) / (y_extent.HIGH - y_extent.LOW) * plot_height;
  };

  std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + NUMBER(WIDTH, "%.0f") + "\" height=\"" +
                    NUMBER(HEIGHT, "%.0f") + "\" font-family=\"sans-serif\" font-size=\"12\">\n";
  svg += "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  svg += "<text x=\"" + NUMBER(LEFT + plot_width / 2) + "\" y=\"24\" text-anchor=\"middle\" font-size=\"14\">" +
         ESCAPED(graph.TITLE) + "</text>\n";
  // The axes, their ticks and their labels.
  svg += "<g class=\"axes\" stroke=\"black\" fill=\"none\">\n<rect x=\"" + NUMBER(LEFT) + "\" y=\"" + NUMBER(TOP) +
         "\" width=\"" + NUMBER(plot_width) + "\" height=\"" + NUMBER(plot_height) + "\"/>\n</g>\n";
  for (const double t : TICKS(x_extent)) {
    const std::string x = NUMBER(x_of(t));
    svg += "<line x1=\"" + x + "\" y1=\"" + NUMBER(TOP + plot_height) + "\" x2=\"" + x + "\" y2=\"" +
           NUMBER(TOP + plot_height + 5) + "\" stroke=\"black\"/>\n";
    svg += "<text class=\"x-tick\" x=\"" + x + "\" y=\"" + NUMBER(TOP + plot_height + 18) +
           "\" text-anchor=\"middle\">" + NUMBER(t, "%g") + "</text>\n";
  }
  for (const double t : TICKS(y_extent)) {
    const std::string y = NUMBER(y_of(t));
    svg += "<line x1=\"" + NUMBER(LEFT - 5) + "\" y1=\"" + y + "\" x2=\"" + NUMBER(LEFT) + "\" y2=\"" + y +
           "\" stroke=\"black\"/>\n";
    svg += "<text class=\"y-tick\" x=\"" + NUMBER(LEFT - 8) + "\" y=\"" + NUMBER(y_of(t) + 4) +
           "\" text-anchor=\"end\">" + NUMBER(t, "%g") + "</text>\n";
  }
  svg += "<text class=\"x-label\" x=\"" + NUMBER(LEFT + plot_width / 2) + "\" y=\"" + NUMBER(HEIGHT - 15) +
         "\" text-anchor=\"middle\">" + ESCAPED(graph.X_LABEL) + "</text>\n";
  svg += "<text class=\"y-label\" x=\"20\" y=\"" + NUMBER(TOP + plot_height / 2) +
         "\" text-anchor=\"middle\" transform=\"rotate(-90 20 " + NUMBER(TOP + plot_height / 2) + ")\">" +
         ESCAPED(graph.Y_LABEL) + "</text>\n";

  // The curves: a polyline for each run of finite points, and a key.
  for (std::size_t c = 0; c < graph.CURVES.size(); ++c) {
    const CURVE_OF_GRAPH& curve = graph.CURVES[c];
    std::string points;
    const auto flush = [&] {
      if (points.empty()) return;
      svg += "<polyline class=\"curve\" fill=\"none\" stroke=\"" + ESCAPED(curve.COLOUR) + "\" points=\"" + points +
             "\"/>\n";
      points.clear();
    };
    for (std::size_t i = 0; i < curve.Y.size() && i < graph.X.size(); ++i) {
      if (!std::isfinite(curve.Y[i]) || !std::isfinite(graph.X[i])) {
        flush();
        continue;
      }
      if (!points.empty()) points += ' ';
      points += NUMBER(x_of(graph.X[i])) + "," + NUMBER(y_of(curve.Y[i]));
    }
    flush();
    const double key_y = TOP + 10 + 18 * static_cast<double>(c);
    svg += "<line x1=\"" + NUMBER(WIDTH - RIGHT + 10) + "\" y1=\"" + NUMBER(key_y) + "\" x2=\"" +
           NUMBER(WIDTH - RIGHT + 30) + "\" y2=\"" + NUMBER(key_y) + "\" stroke=\"" + ESCAPED(curve.COLOUR) +
           "\"/>\n<text class=\"key\" x=\"" + NUMBER(WIDTH - RIGHT + 35) + "\" y=\"" + NUMBER(key_y + 4) + "\">" +
           ESCAPED(curve.NAME) + "</text>\n";
  }
  svg += "</svg>\n";
  return svg;
}

void WRITE_SVG(const std::string& path, const GRAPH& graph) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  const std::string text = SVG_TEXT(graph);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.close();
  if (!out) throw std::runtime_error("the graph could not be written to " + path);
}

}  // namespace tmrdar::cli
