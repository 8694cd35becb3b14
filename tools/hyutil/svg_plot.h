#pragma once
// A small x-y chart as a standalone SVG document: axes with round-numbered ticks
// and grid lines, axis labels, a title, and series drawn as lines or as point
// markers, with a legend. Non-finite values are skipped (a line breaks there).

#include <string>
#include <utility>
#include <vector>

namespace hyutil {

struct SvgSeries {
  std::string label;
  std::string colour;  // any SVG colour
  bool markers = false;  // points as circles instead of a connected line
  std::vector<std::pair<double, double>> points;
};

struct SvgPlot {
  std::string title;
  std::string xLabel;
  std::string yLabel;
  std::vector<SvgSeries> series;
};

std::string RenderSvg(const SvgPlot& plot);

}  // namespace hyutil
