// Graphs of the tool's results as SVG text: curves against one axis, with
// labelled axes and ticks, and a key when there is more than one curve.
#pragma once

#include <string>
#include <vector>

namespace tmrdar::cli {

struct CURVE_OF_GRAPH {
  std::string NAME;
  std::string COLOUR;      // an SVG colour, "#1f77b4"
  std::vector<double> Y;   // one a point of the graph's X; a value that is not finite breaks the curve
};

struct GRAPH {
  std::string TITLE;
  std::string X_LABEL;
  std::string Y_LABEL;
  std::vector<double> X;
  std::vector<CURVE_OF_GRAPH> CURVES;
};

// The graph as a whole SVG document.
std::string SVG_TEXT(const GRAPH& graph);

// Writes SVG_TEXT(graph) to `path`; throws std::runtime_error naming the path
// when it cannot be written.
void WRITE_SVG(const std::string& path, const GRAPH& graph);

}  // namespace tmrdar::cli
