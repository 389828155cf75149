// Graphs of the tool's results as SVG text: curves against one axis, with
// labelled axes and ticks, and a key when there is more than one curve.
#pragma once

#include <string>
#include <vector>

namespace tmrdar::cli {

struct CurveOfGraph {
  std::string name;
  std::string colour;      // an SVG colour, "#1f77b4"
  std::vector<double> y;   // one a point of the graph's X; a value that is not finite breaks the curve
};

struct Graph {
  std::string title;
  std::string x_label;
  std::string y_label;
  std::vector<double> x;
  std::vector<CurveOfGraph> curves;
};

// The graph as a whole SVG document.
std::string svg_text(const Graph& graph);

// Writes svg_text(graph) to `path`; throws std::runtime_error naming the path
// when it cannot be written.
void write_svg(const std::string& path, const Graph& graph);

}  // namespace tmrdar::cli
