#include "hy_util/formats/tuflow_summary.h"

#include <algorithm>
#include <filesystem>
#include <new>

#include "hy_util/formats/c_number_scan.h"

namespace HU_LIB {

namespace {

enum class ValueKind { kString, kDouble, kInt, kList };

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string TrimBlanks(const std::string& text) {
  std::size_t first = 0;
  std::size_t last = text.size();
  while (first < last && IsBlank(text[first])) ++first;
  while (last > first && IsBlank(text[last - 1])) --last;
  return text.substr(first, last - first);
}

bool EqualNoCase(const std::string& a, const char* b) {
  std::size_t i = 0;
  for (; i < a.size() && b[i] != '\0'; ++i) {
    const auto x = static_cast<unsigned char>(a[i]);
    const auto y = static_cast<unsigned char>(b[i]);
    if (x != y && !(x >= 'A' && x <= 'Z' && x + 32 == y) && !(y >= 'A' && y <= 'Z' && y + 32 == x)) return false;
  }
  return i == a.size() && b[i] == '\0';
}

// "CPU Time [h]" and "Percentage Complete (%)" without their units.
std::string CleanKey(std::string key) {
  if (const auto at = key.find('['); at != std::string::npos) key.resize(at);
  if (const auto at = key.find('('); at != std::string::npos) key.resize(at);
  return TrimBlanks(key);
}

double ToDouble(const std::string& text) { return hu_cscan::StrToD(text.data(), text.data() + text.size()); }

// A decimal int as atoi reads it: 0 when there is none.
int ToInt(const std::string& text) {
  std::int32_t value = 0;
  hu_cscan::ScanInt(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace

// One key of the file: its text, the kind of value and the field it fills.
struct HU_TuFlowSummary::KeyEntry {
  const char* key;
  ValueKind kind;
  int field;
};

// In the order keys are matched.
const HU_TuFlowSummary::KeyEntry HU_TuFlowSummary::kKeys[] = {
    {"TUFLOW Control File", ValueKind::kString, kControlFile},
    {"TUFLOW Log File", ValueKind::kString, kLogFile},
    {"TUFLOW Build", ValueKind::kString, kBuild},
    {"Simulation Status", ValueKind::kString, kStatus},
    {"Simulation Time", ValueKind::kDouble, kSimulationTime},
    {"Percentage Complete", ValueKind::kDouble, kPercentComplete},
    {"Simulation Start Time", ValueKind::kDouble, kStartTime},
    {"Simulation End Time", ValueKind::kDouble, kEndTime},
    {"Computational Steps", ValueKind::kDouble, kSteps},
    {"CPU Time", ValueKind::kDouble, kCpuTime},
    {"Clock Time", ValueKind::kDouble, kClockTime},
    {"Approximate Clock Time Remaining", ValueKind::kDouble, kRemaining},
    {"1D Negative Depths", ValueKind::kInt, kNegative1D},
    {"2D Negative Depths", ValueKind::kInt, kNegative2D},
    {"WARNINGs Prior to Simulation", ValueKind::kInt, kWarningsPrior},
    {"WARNINGs During Simulation", ValueKind::kInt, kWarningsDuring},
    {"CHECKs Prior to Simulation", ValueKind::kInt, kChecksPrior},
    {"CHECKs During Simulation", ValueKind::kInt, kChecksDuring},
    {"Summary Output Interval", ValueKind::kDouble, kSummaryInterval},
    {"Number Summary Values", ValueKind::kInt, kSummaryValues},
    {"Flow In Values", ValueKind::kList, kFlowIn},
    {"Flow Out Values", ValueKind::kList, kFlowOut},
    {"Change in Volume Values", ValueKind::kList, kVolumeChange},
    {"Cumulative Mass Error Values", ValueKind::kList, kMassError},
    {"Number 1D Nodes", ValueKind::kInt, kNodes1D},
    {"Number 1D Channels", ValueKind::kInt, kChannels1D},
    {"Number 2D Domains", ValueKind::kInt, kDomains2D},
    {"2D Domain Cell Sizes", ValueKind::kList, kCellSizes},
    {"2D Domain Timesteps", ValueKind::kList, kTimesteps},
    {"Start Map Output", ValueKind::kDouble, kStartMap},
    {"Map Output Interval", ValueKind::kDouble, kMapInterval},
    {"Number Map Outputs", ValueKind::kInt, kMapOutputs},
};

HU_TuFlowSummary::HU_TuFlowSummary(const std::string& path)
    : file_(std::make_unique<CHU_File>(path.c_str(), HU_modeRead | HU_shareDenyNone | HU_typeText)) {}

HU_TuFlowSummary::~HU_TuFlowSummary() = default;

std::unique_ptr<HU_TuFlowSummary> HU_TuFlowSummary::Load(const std::string& path) {
  std::error_code ec;
  if (path.empty() || !std::filesystem::exists(path, ec) || std::filesystem::is_directory(path, ec)) return nullptr;
  std::unique_ptr<HU_TuFlowSummary> summary(new HU_TuFlowSummary(path));
  if (!summary->file_->FileOpened()) return nullptr;
  try {
    summary->ParseFile();
  } catch (const CHU_FileException&) {
    return nullptr;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
  summary->file_->Close();
  return summary;
}

bool HU_TuFlowSummary::ParseFile() {
  if (!file_ || !file_->FileOpened()) return false;
  file_->SetSeparators("==");
  const std::string commentMarker = "!";  // through a string: g++ 12 misreads the literal's length here
  file_->SetCommentMarkers(commentMarker.c_str());
  std::vector<std::string> fields;
  int charsRead = 0;
  while (file_->ReadLine(fields, charsRead)) {
    if (fields.size() != 2) continue;
    const std::string key = CleanKey(fields[0]);
    if (!key.empty()) TakeValue(key, TrimBlanks(fields[1]));
  }
  return true;
}

void HU_TuFlowSummary::TakeValue(const std::string& key, const std::string& value) {
  for (const KeyEntry& entry : kKeys) {
    if (!EqualNoCase(key, entry.key)) continue;
    switch (entry.kind) {
      case ValueKind::kString: strings_[static_cast<std::size_t>(entry.field)] = value; break;
      case ValueKind::kDouble: doubles_[static_cast<std::size_t>(entry.field)] = ToDouble(value); break;
      case ValueKind::kInt: ints_[static_cast<std::size_t>(entry.field)] = ToInt(value); break;
      case ValueKind::kList: {
        std::vector<std::string> pieces;
        TokenizeCString(value, pieces, ",");
        std::vector<double>& list = lists_[static_cast<std::size_t>(entry.field)];
        list.clear();
        for (const std::string& piece : pieces) list.push_back(ToDouble(piece));
        break;
      }
    }
    return;
  }
}

bool HU_TuFlowSummary::TokenizeCString(const std::string& text, std::vector<std::string>& pieces,
                                       const std::string& separators) {
  pieces.clear();
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t stop = separators.empty() ? std::string::npos : text.find_first_of(separators, start);
    if (stop == std::string::npos) stop = text.size();
    std::string piece = TrimBlanks(text.substr(start, stop - start));
    if (!piece.empty()) pieces.push_back(std::move(piece));
    start = stop + 1;
  }
  return !pieces.empty();
}

void HU_TuFlowSummary::Copy(ListField field, CHU_CopyableArray<double>& values) const {
  const std::vector<double>& list = lists_[static_cast<std::size_t>(field)];
  values.assign(list.begin(), list.end());
}

void HU_TuFlowSummary::GetDomainSummaries(CHU_CopyableArray<SingleDomainSummary>& domains) const {
  const std::vector<double>& sizes = lists_[kCellSizes];
  const std::vector<double>& steps = lists_[kTimesteps];
  domains.assign(std::max(sizes.size(), steps.size()), SingleDomainSummary{});
  for (std::size_t i = 0; i < sizes.size(); ++i) domains[i].cellSize = sizes[i];
  for (std::size_t i = 0; i < steps.size(); ++i) domains[i].timestep = steps[i];
}

}  // namespace HU_LIB
