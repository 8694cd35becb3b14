#include "run_plot.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace hyutil {
namespace {

using HU_LIB::HU_TuFlowSummary;

struct Series {
  const char* label;
  const char* colour;
  std::vector<double> values;
};

struct Box {
  double left, top, width, height;
};

// An axis range widened to round tick values, and its tick step.
struct Axis {
  double lo = 0, hi = 1, step = 1;
  double Map(double v, double from, double length) const { return from + (v - lo) / (hi - lo) * length; }
};

Axis NiceAxis(double lo, double hi, int ticks) {
  if (!std::isfinite(lo) || !std::isfinite(hi)) lo = 0, hi = 1;
  if (hi <= lo) {
    const double pad = lo == 0 ? 1 : std::fabs(lo) * 0.1;
    lo -= pad, hi += pad;
  }
  const double raw = (hi - lo) / ticks;
  const double magnitude = std::pow(10.0, std::floor(std::log10(raw)));
  double step = magnitude * 10;
  for (const double m : {1.0, 2.0, 2.5, 5.0})
    if (raw <= m * magnitude) {
      step = m * magnitude;
      break;
    }
  return {std::floor(lo / step) * step, std::ceil(hi / step) * step, step};
}

std::string Escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '&') out += "&amp;";
    else if (c == '<') out += "&lt;";
    else if (c == '>') out += "&gt;";
    else if (c == '"') out += "&quot;";
    else out += c;
  }
  return out;
}

std::string Format(const char* format, double a, double b = 0, double c = 0, double d = 0) {
  char text[160];
  std::snprintf(text, sizeof text, format, a, b, c, d);
  return text;
}

std::string Tick(double v) { return Format("%.6g", std::fabs(v) < 1e-12 ? 0.0 : v); }

// Grid lines, tick labels and the axis titles of one panel.
std::string Frame(const Box& b, const Axis& x, const Axis& y, const std::string& yTitle, const std::string& xTitle) {
  std::string svg = Format("<rect x='%.1f' y='%.1f' width='%.1f' height='%.1f' fill='white' stroke='#444'/>\n", b.left,
                           b.top, b.width, b.height);
  for (double v = y.lo; v <= y.hi + y.step * 1e-9; v += y.step) {
    const double py = y.Map(v, b.top + b.height, -b.height);
    svg += Format("<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' stroke='#ddd'/>\n", b.left, py, b.left + b.width, py);
    svg += Format("<text x='%.1f' y='%.1f' text-anchor='end' font-size='12'>", b.left - 6, py + 4) + Tick(v) + "</text>\n";
  }
  for (double v = x.lo; v <= x.hi + x.step * 1e-9; v += x.step) {
    const double px = x.Map(v, b.left, b.width);
    svg += Format("<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' stroke='#ddd'/>\n", px, b.top, px, b.top + b.height);
    svg += Format("<text x='%.1f' y='%.1f' text-anchor='middle' font-size='12'>", px, b.top + b.height + 16) + Tick(v) +
           "</text>\n";
  }
  svg += Format("<text transform='translate(%.1f %.1f) rotate(-90)' text-anchor='middle' font-size='13'>",
                b.left - 52, b.top + b.height / 2) +
         Escaped(yTitle) + "</text>\n";
  if (!xTitle.empty())
    svg += Format("<text x='%.1f' y='%.1f' text-anchor='middle' font-size='13'>", b.left + b.width / 2,
                  b.top + b.height + 36) +
           Escaped(xTitle) + "</text>\n";
  return svg;
}

std::string Line(const Box& b, const Axis& x, const Axis& y, const std::vector<double>& times, const Series& s) {
  std::string points;
  for (std::size_t i = 0; i < s.values.size() && i < times.size(); ++i) {
    if (!std::isfinite(s.values[i])) continue;
    points += Format("%.2f,%.2f ", x.Map(times[i], b.left, b.width), y.Map(s.values[i], b.top + b.height, -b.height));
  }
  return "<polyline fill='none' stroke-width='2' stroke='" + std::string(s.colour) + "' points='" + points + "'/>\n";
}

// A row of legend entries just above a panel, clear of the curves.
std::string Legend(const Box& b, const std::vector<const Series*>& series) {
  std::string svg;
  double x = b.left;
  const double y = b.top - 10;
  for (const Series* s : series) {
    svg += Format("<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' stroke-width='3' stroke='", x, y - 4, x + 26, y - 4) +
           s->colour + "'/>\n";
    svg += Format("<text x='%.1f' y='%.1f' font-size='13'>", x + 32, y) + s->label + "</text>\n";
    x += 60 + 7.2 * static_cast<double>(std::string(s->label).size());
  }
  return svg;
}

Axis RangeOf(const std::vector<const Series*>& series) {
  double lo = INFINITY, hi = -INFINITY;
  for (const Series* s : series)
    for (const double v : s->values)
      if (std::isfinite(v)) lo = std::min(lo, v), hi = std::max(hi, v);
  if (lo > hi) lo = 0, hi = 1;
  return NiceAxis(std::min(lo, 0.0), std::max(hi, 0.0), 5);
}

std::vector<double> Get(const HU_TuFlowSummary& s, void (HU_TuFlowSummary::*getter)(CHU_CopyableArray<double>&) const) {
  CHU_CopyableArray<double> values;
  (s.*getter)(values);
  return {values.begin(), values.end()};
}

}  // namespace

std::string MassBalanceSvg(const HU_TuFlowSummary& summary, const std::string& title) {
  const Series in{"Flow in (m³/s)", "#1f77b4", Get(summary, &HU_TuFlowSummary::GetFlowInValuesMetric)};
  const Series out{"Flow out (m³/s)", "#d62728", Get(summary, &HU_TuFlowSummary::GetFlowOutValuesMetric)};
  const Series dv{"Change in volume (m³/s)", "#2ca02c", Get(summary, &HU_TuFlowSummary::GetChangeInVolumeValuesMetric)};
  const Series cme{"Cumulative mass error (%)", "#9467bd", Get(summary, &HU_TuFlowSummary::GetCulumativeMassErrorValues)};
  const std::size_t count = std::max({in.values.size(), out.values.size(), dv.values.size(), cme.values.size()});
  // Times in hours when the output interval (seconds) is known, else the value's number.
  const double interval = summary.GetSummaryOutputInterval();
  std::vector<double> times(count);
  for (std::size_t i = 0; i < count; ++i) times[i] = interval > 0 ? static_cast<double>(i) * interval / 3600.0 : static_cast<double>(i);
  const std::string xTitle = interval > 0 ? "Time (h), one value every " + Tick(interval) + " s" : "Summary value";
  const Axis x = NiceAxis(0, count > 1 ? times.back() : 1, 8);

  const double width = 960, height = 660;
  const Box top{90, 80, 820, 290}, bottom{90, 440, 820, 160};
  std::string svg = Format("<svg xmlns='http://www.w3.org/2000/svg' width='%.0f' height='%.0f' viewBox='0 0 %.0f %.0f' "
                           "font-family='sans-serif'>\n",
                           width, height, width, height);
  svg += Format("<rect width='%.0f' height='%.0f' fill='#fafafa'/>\n", width, height);
  std::string heading = "Mass balance: " + title;
  if (!summary.GetSimulationStatus().empty())
    heading += " (" + summary.GetSimulationStatus() + ", " + Format("%.1f", summary.GetPercentComplete()) + "% complete)";
  svg += "<text x='90' y='34' font-size='18' font-weight='bold'>" + Escaped(heading) + "</text>\n";

  const std::vector<const Series*> flows{&in, &out, &dv};
  const Axis yFlow = RangeOf(flows);
  svg += Frame(top, x, yFlow, "Flow (m³/s)", "");
  for (const Series* s : flows) svg += Line(top, x, yFlow, times, *s);
  svg += Legend(top, flows);

  const Axis yCme = RangeOf({&cme});
  svg += Frame(bottom, x, yCme, "Mass error (%)", xTitle);
  const double zero = yCme.Map(0, bottom.top + bottom.height, -bottom.height);
  svg += Format("<line x1='%.1f' y1='%.1f' x2='%.1f' y2='%.1f' stroke='#444' stroke-dasharray='5 4'/>\n", bottom.left,
                zero, bottom.left + bottom.width, zero);
  svg += Line(bottom, x, yCme, times, cme);
  svg += Legend(bottom, {&cme});
  if (count == 0)
    svg += "<text x='480' y='220' text-anchor='middle' font-size='16' fill='#666'>no mass-balance values yet</text>\n";
  svg += "</svg>\n";
  return svg;
}

}  // namespace hyutil
