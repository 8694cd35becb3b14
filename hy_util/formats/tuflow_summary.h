#pragma once
// HU_LIB::HU_TuFlowSummary: the run summary that the TUFLOW engine writes, and
// keeps rewriting, while it runs a simulation: status, progress, times, warning
// counts, mass-balance series, 2D domain sizes and map output settings.
//
// Format: text lines "key == value", read through CHU_File with the separator set
// "==" (every '=' separates, so "a = b" is read too) and "!" as comment marker (a
// line whose first non-blank character is '!' is skipped; a '!' further on is part
// of the text). Only lines of exactly two fields count. The key is cleaned of a
// unit annotation: cut before "[", then before "(", then trimmed, so
// "CPU Time [h]" and "Percentage Complete (%)" are "CPU Time" and "Percentage
// Complete". Keys are compared without regard to letter case ("percentage
// complete" is the same key); unknown keys are ignored. Values are trimmed of
// blanks; numbers are read as strtod and a decimal int read them (no number gives
// 0); lists are split at "," with empty pieces dropped. A key met twice keeps its
// last value, lists included. The i-th numbers of "2D Domain Cell Sizes" and
// "2D Domain Timesteps" form the i-th domain record; a domain missing from one of
// the two lists has 0 there.
//
// Load is the only way to make one; the caller owns the result.

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "hy_util/core/text_file.h"
#include "hy_util/platform/copyable_array.h"

namespace HU_LIB {

// The cell size and timestep of one 2D domain.
struct SingleDomainSummary {
  double cellSize = 0;
  double timestep = 0;
};

class HU_TuFlowSummary {
 public:
  ~HU_TuFlowSummary();
  HU_TuFlowSummary(const HU_TuFlowSummary&) = delete;
  HU_TuFlowSummary& operator=(const HU_TuFlowSummary&) = delete;

  // Reads the summary at once; null when the file does not exist, cannot be
  // opened, or a read error stops it.
  static std::unique_ptr<HU_TuFlowSummary> Load(const std::string& path);

  const std::string& GetControlFile() const { return strings_[kControlFile]; }
  const std::string& GetLogFile() const { return strings_[kLogFile]; }
  const std::string& GetBuildVersion() const { return strings_[kBuild]; }
  const std::string& GetSimulationStatus() const { return strings_[kStatus]; }

  double GetSimulationTime() const { return doubles_[kSimulationTime]; }
  double GetPercentComplete() const { return doubles_[kPercentComplete]; }
  double GetSimStartTime() const { return doubles_[kStartTime]; }
  double GetSimEndTime() const { return doubles_[kEndTime]; }
  double GetComputationalSteps() const { return doubles_[kSteps]; }
  double GetCPUTime() const { return doubles_[kCpuTime]; }
  double GetClockTime() const { return doubles_[kClockTime]; }
  double GetRemainingTime() const { return doubles_[kRemaining]; }
  double GetSummaryOutputInterval() const { return doubles_[kSummaryInterval]; }
  double GetStartMapOutput() const { return doubles_[kStartMap]; }
  double GetMapOutputInterval() const { return doubles_[kMapInterval]; }

  int Get1DNegativeDepths() const { return ints_[kNegative1D]; }
  int Get2DNegativeDepths() const { return ints_[kNegative2D]; }
  int GetWarningsPriorToSim() const { return ints_[kWarningsPrior]; }
  int GetWarningsDuringSim() const { return ints_[kWarningsDuring]; }
  int GetChecksPriorToSim() const { return ints_[kChecksPrior]; }
  int GetChecksDuringSim() const { return ints_[kChecksDuring]; }
  int GetNumOfSummaryValues() const { return ints_[kSummaryValues]; }
  int GetNum1DNodes() const { return ints_[kNodes1D]; }
  int GetNum1DChannels() const { return ints_[kChannels1D]; }
  int GetNum2DDomains() const { return ints_[kDomains2D]; }
  int GetNumberOfMapOutputs() const { return ints_[kMapOutputs]; }

  // The list getters clear the array and fill it with a copy of the list.
  void GetFlowInValuesMetric(CHU_CopyableArray<double>& values) const { Copy(kFlowIn, values); }
  void GetFlowOutValuesMetric(CHU_CopyableArray<double>& values) const { Copy(kFlowOut, values); }
  void GetChangeInVolumeValuesMetric(CHU_CopyableArray<double>& values) const { Copy(kVolumeChange, values); }
  void GetCulumativeMassErrorValues(CHU_CopyableArray<double>& values) const { Copy(kMassError, values); }
  void GetDomainSummaries(CHU_CopyableArray<SingleDomainSummary>& domains) const;

 protected:
  // Reads every line of the file; false without a reader.
  bool ParseFile();
  // Splits the text at any of the separator characters into trimmed pieces,
  // dropping empty ones; true when there is at least one piece.
  static bool TokenizeCString(const std::string& text, std::vector<std::string>& pieces,
                              const std::string& separators);

 private:
  enum StringField { kControlFile, kLogFile, kBuild, kStatus, kStringCount };
  enum DoubleField {
    kSimulationTime, kPercentComplete, kStartTime, kEndTime, kSteps, kCpuTime, kClockTime,
    kRemaining, kSummaryInterval, kStartMap, kMapInterval, kDoubleCount
  };
  enum IntField {
    kNegative1D, kNegative2D, kWarningsPrior, kWarningsDuring, kChecksPrior, kChecksDuring,
    kSummaryValues, kNodes1D, kChannels1D, kDomains2D, kMapOutputs, kIntCount
  };
  enum ListField { kFlowIn, kFlowOut, kVolumeChange, kMassError, kCellSizes, kTimesteps, kListCount };
  struct KeyEntry;
  static const KeyEntry kKeys[];

  explicit HU_TuFlowSummary(const std::string& path);
  void Copy(ListField field, CHU_CopyableArray<double>& values) const;
  void TakeValue(const std::string& key, const std::string& value);

  std::unique_ptr<CHU_File> file_;
  std::array<std::string, kStringCount> strings_;
  std::array<double, kDoubleCount> doubles_{};
  std::array<int, kIntCount> ints_{};
  std::array<std::vector<double>, kListCount> lists_;
};

}  // namespace HU_LIB
