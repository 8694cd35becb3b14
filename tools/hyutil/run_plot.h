#pragma once
// The mass-balance plot of a run summary, as a standalone SVG document.

#include <string>

#include "hy_util/formats/tuflow_summary.h"

namespace hyutil {

// Flow in, flow out and change in volume (upper panel) and the cumulative mass
// error in percent (lower panel) against time, each value one summary output
// interval after the one before; with axes, labels and a legend.
std::string MassBalanceSvg(const HU_LIB::HU_TuFlowSummary& summary, const std::string& title);

}  // namespace hyutil
