#include "run_plot.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "svg_plot.h"

namespace hyutil {
namespace {

using HU_LIB::HU_TuFlowSummary;

std::vector<double> Get(const HU_TuFlowSummary& s, void (HU_TuFlowSummary::*getter)(CHU_CopyableArray<double>&) const) {
  CHU_CopyableArray<double> values;
  (s.*getter)(values);
  return {values.begin(), values.end()};
}

SvgSeries Line(const char* label, const char* colour, const std::vector<double>& times,
               const std::vector<double>& values) {
  SvgSeries series{label, colour, false, {}};
  for (std::size_t i = 0; i < values.size() && i < times.size(); ++i) series.points.emplace_back(times[i], values[i]);
  return series;
}

}  // namespace

std::string MassBalanceSvg(const HU_TuFlowSummary& summary, const std::string& title) {
  const std::vector<double> in = Get(summary, &HU_TuFlowSummary::GetFlowInValuesMetric);
  const std::vector<double> out = Get(summary, &HU_TuFlowSummary::GetFlowOutValuesMetric);
  const std::vector<double> dv = Get(summary, &HU_TuFlowSummary::GetChangeInVolumeValuesMetric);
  const std::vector<double> cme = Get(summary, &HU_TuFlowSummary::GetCulumativeMassErrorValues);
  const std::size_t count = std::max({in.size(), out.size(), dv.size(), cme.size()});

  // Times in hours when the output interval (seconds) is known, else the value's number.
  const double interval = summary.GetSummaryOutputInterval();
  std::vector<double> times(count);
  for (std::size_t i = 0; i < count; ++i) {
    times[i] = interval > 0 ? static_cast<double>(i) * interval / 3600.0 : static_cast<double>(i);
  }
  char every[64];
  std::snprintf(every, sizeof every, "Time (h), one value every %g s", interval);
  const std::string xLabel = interval > 0 ? every : "Summary value";

  std::string heading = "Mass balance: " + title;
  if (!summary.GetSimulationStatus().empty()) {
    char percent[32];
    std::snprintf(percent, sizeof percent, "%.1f", summary.GetPercentComplete());
    heading += " (" + summary.GetSimulationStatus() + ", " + percent + "% complete)";
  }
  if (count == 0) heading += ": no mass-balance values yet";

  SvgPlot flows{heading, xLabel, "Flow (m³/s)",
                {Line("Flow in (m³/s)", "#1f77b4", times, in), Line("Flow out (m³/s)", "#d62728", times, out),
                 Line("Change in volume (m³/s)", "#2ca02c", times, dv)}};
  flows.includeZero = true;
  SvgPlot error{"Cumulative mass error", xLabel, "Mass error (%)",
                {Line("Cumulative mass error (%)", "#9467bd", times, cme)}};
  error.includeZero = true;
  return RenderSvg({flows, error});
}

}  // namespace hyutil
