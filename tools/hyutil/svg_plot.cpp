#include "svg_plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace hyutil {
namespace {

constexpr double kWidth = 720, kHeight = 450;
constexpr double kLeft = 80, kRight = 24, kTop = 44, kBottom = 56;

struct Range {
  double lo = std::numeric_limits<double>::infinity();
  double hi = -std::numeric_limits<double>::infinity();
  void Add(double v) {
    lo = std::min(lo, v);
    hi = std::max(hi, v);
  }
  // A usable span: an empty range becomes [0, 1], a single value a unit around it.
  void Settle() {
    if (!(lo <= hi)) lo = 0, hi = 1;
    if (lo == hi) lo -= 0.5, hi += 0.5;
  }
};

// Round tick spacing: 1, 2 or 5 times a power of ten, about five ticks.
double TickStep(const Range& r) {
  const double raw = (r.hi - r.lo) / 5.0;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  for (const double m : {1.0, 2.0, 5.0}) {
    if (raw <= m * power) return m * power;
  }
  return 10.0 * power;
}

std::string Escape(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

std::string Format(const char* format, double a, double b = 0, double c = 0, double d = 0) {
  char text[160];
  std::snprintf(text, sizeof text, format, a, b, c, d);
  return text;
}

std::string TickLabel(double value, double step) {
  if (std::abs(value) < step * 1e-9) value = 0;  // no "-0" or "1e-17" at the origin
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

class Canvas {
 public:
  Canvas(const Range& x, const Range& y) : x_(x), y_(y) {}
  double X(double v) const { return kLeft + (v - x_.lo) / (x_.hi - x_.lo) * (kWidth - kLeft - kRight); }
  double Y(double v) const { return kHeight - kBottom - (v - y_.lo) / (y_.hi - y_.lo) * (kHeight - kTop - kBottom); }

 private:
  Range x_, y_;
};

// Tick positions from lo to hi, at most a dozen whatever rounding does to the step.
std::vector<double> Ticks(const Range& r, double step) {
  std::vector<double> ticks;
  const double first = std::ceil(r.lo / step) * step;
  for (int i = 0; i < 12; ++i) {
    const double v = first + i * step;
    if (!(v <= r.hi + step * 1e-9)) break;
    ticks.push_back(v);
  }
  return ticks;
}

std::string Axes(const Canvas& canvas, const Range& x, const Range& y) {
  std::string svg;
  const double xStep = TickStep(x), yStep = TickStep(y);
  for (const double v : Ticks(x, xStep)) {
    svg += Format("<line x1=\"%.2f\" y1=\"%.2f\" x2=\"%.2f\" y2=\"%.2f\" class=\"grid\"/>\n", canvas.X(v), kTop,
                  canvas.X(v), kHeight - kBottom);
    svg += Format("<text x=\"%.2f\" y=\"%.2f\" text-anchor=\"middle\">", canvas.X(v), kHeight - kBottom + 18) +
           TickLabel(v, xStep) + "</text>\n";
  }
  for (const double v : Ticks(y, yStep)) {
    svg += Format("<line x1=\"%.2f\" y1=\"%.2f\" x2=\"%.2f\" y2=\"%.2f\" class=\"grid\"/>\n", kLeft, canvas.Y(v),
                  kWidth - kRight, canvas.Y(v));
    svg += Format("<text x=\"%.2f\" y=\"%.2f\" text-anchor=\"end\">", kLeft - 6, canvas.Y(v) + 4) +
           TickLabel(v, yStep) + "</text>\n";
  }
  svg += Format("<rect x=\"%.2f\" y=\"%.2f\" width=\"%.2f\" height=\"%.2f\" class=\"frame\"/>\n", kLeft, kTop,
                kWidth - kLeft - kRight, kHeight - kTop - kBottom);
  return svg;
}

std::string Series(const Canvas& canvas, const SvgSeries& s) {
  std::string svg;
  if (s.markers) {
    for (const auto& [x, y] : s.points) {
      if (!std::isfinite(x) || !std::isfinite(y)) continue;
      svg += Format("<circle cx=\"%.2f\" cy=\"%.2f\" r=\"3.5\"", canvas.X(x), canvas.Y(y)) + " fill=\"" +
             Escape(s.colour) + "\"/>\n";
    }
    return svg;
  }
  std::string path;
  bool penDown = false;
  for (const auto& [x, y] : s.points) {
    if (!std::isfinite(x) || !std::isfinite(y)) {
      penDown = false;
      continue;
    }
    path += Format(penDown ? "L%.2f %.2f " : "M%.2f %.2f ", canvas.X(x), canvas.Y(y));
    penDown = true;
  }
  return "<path d=\"" + path + "\" fill=\"none\" stroke-width=\"2\" stroke=\"" + Escape(s.colour) + "\"/>\n";
}

constexpr double kLegendWidth = 190, kLegendRow = 18;

// The legend goes in the upper corner that covers fewer drawn points.
double LegendLeft(const Canvas& canvas, const std::vector<SvgSeries>& series) {
  const double left = kLeft + 8, right = kWidth - kRight - kLegendWidth - 8;
  const double bottom = kTop + 8 + kLegendRow * static_cast<double>(series.size());
  int inLeft = 0, inRight = 0;
  for (const SvgSeries& s : series) {
    for (const auto& [x, y] : s.points) {
      const double px = canvas.X(x), py = canvas.Y(y);
      if (py > bottom) continue;
      if (px >= left && px <= left + kLegendWidth) ++inLeft;
      if (px >= right && px <= right + kLegendWidth) ++inRight;
    }
  }
  return inLeft <= inRight ? left : right;
}

std::string Legend(const Canvas& canvas, const std::vector<SvgSeries>& series) {
  const double x = LegendLeft(canvas, series);
  std::string svg = Format(
      "<rect x=\"%.2f\" y=\"%.2f\" width=\"%.2f\" height=\"%.2f\" fill=\"white\" fill-opacity=\"0.85\" "
      "stroke=\"#bbb\"/>\n",
      x, kTop + 8, kLegendWidth, kLegendRow * static_cast<double>(series.size()) + 8);
  double y = kTop + 26;
  for (const SvgSeries& s : series) {
    svg += s.markers ? Format("<circle cx=\"%.2f\" cy=\"%.2f\" r=\"3.5\"", x + 18, y - 4) + " fill=\"" +
                           Escape(s.colour) + "\"/>"
                     : Format("<line x1=\"%.2f\" y1=\"%.2f\" x2=\"%.2f\" y2=\"%.2f\"", x + 8, y - 4, x + 28, y - 4) +
                           " stroke-width=\"2\" stroke=\"" + Escape(s.colour) + "\"/>";
    svg += Format("<text x=\"%.2f\" y=\"%.2f\">", x + 36, y) + Escape(s.label) + "</text>\n";
    y += kLegendRow;
  }
  return svg;
}

}  // namespace

std::string RenderSvg(const SvgPlot& plot) {
  Range x, y;
  for (const SvgSeries& s : plot.series) {
    for (const auto& [px, py] : s.points) {
      if (std::isfinite(px) && std::isfinite(py)) x.Add(px), y.Add(py);
    }
  }
  x.Settle();
  y.Settle();
  const double xMargin = (x.hi - x.lo) * 0.03, yMargin = (y.hi - y.lo) * 0.05;  // markers off the frame
  x.lo -= xMargin, x.hi += xMargin;
  y.lo -= yMargin, y.hi += yMargin;
  const Canvas canvas(x, y);

  std::string svg = Format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" viewBox=\"0 0 %.0f %.0f\">\n",
      kWidth, kHeight, kWidth, kHeight);
  svg +=
      "<style>text{font-family:sans-serif;font-size:12px;fill:#222}"
      ".grid{stroke:#ddd;stroke-width:1}.frame{fill:none;stroke:#444;stroke-width:1}"
      ".title{font-size:15px;font-weight:bold}</style>\n"
      "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
  svg += Axes(canvas, x, y);
  for (const SvgSeries& s : plot.series) svg += Series(canvas, s);
  svg += Legend(canvas, plot.series);
  svg += Format("<text x=\"%.2f\" y=\"26\" text-anchor=\"middle\" class=\"title\">", kWidth / 2) +
         Escape(plot.title) + "</text>\n";
  svg += Format("<text x=\"%.2f\" y=\"%.2f\" text-anchor=\"middle\">", (kLeft + kWidth - kRight) / 2, kHeight - 14) +
         Escape(plot.xLabel) + "</text>\n";
  svg += Format("<text transform=\"translate(18 %.2f) rotate(-90)\" text-anchor=\"middle\">",
                (kTop + kHeight - kBottom) / 2) +
         Escape(plot.yLabel) + "</text>\n";
  svg += "</svg>\n";
  return svg;
}

}  // namespace hyutil
