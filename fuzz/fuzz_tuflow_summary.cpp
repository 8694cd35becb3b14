// Feeds arbitrary bytes to the TUFLOW run summary reader as a file: loading must
// end without a crash or a hang, and every getter must answer.

#include <cstddef>
#include <cstdint>
#include <string>

#include "hy_util/formats/tuflow_summary.h"

#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = hyfuzz::ScratchDirectory() + "/run.txt";
  if (!hyfuzz::WriteFile(path, data, size)) return 0;
  const auto summary = HU_LIB::HU_TuFlowSummary::Load(path);
  if (!summary) return 0;
  CHU_CopyableArray<double> values;
  summary->GetFlowInValuesMetric(values);
  summary->GetCulumativeMassErrorValues(values);
  CHU_CopyableArray<HU_LIB::SingleDomainSummary> domains;
  summary->GetDomainSummaries(domains);
  if (summary->GetSimulationStatus().size() > size) __builtin_trap();
  return 0;
}
