#include "hy_util/mesh/flow_constriction_list.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <optional>

namespace {

// The whole text as a finite number, or nothing.
std::optional<double> ReadWholeNumber(const std::string& text) {
  double value = 0.0;
  const char* end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  if (ec != std::errc() || ptr != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace

std::string HU_FlowConstrictionList::FormatG(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
  return std::string(buffer, result.ptr);
}

int HU_FlowConstrictionList::ReadInt(const std::string& text) {
  std::size_t start = text.find_first_not_of(" \t");
  if (start == std::string::npos) return 0;
  if (text[start] == '+') ++start;
  double value = 0.0;
  const auto [ptr, ec] = std::from_chars(text.data() + start, text.data() + text.size(), value);
  if (ptr == text.data() + start || std::isnan(value)) return 0;
  if (ec == std::errc::result_out_of_range && value == 0.0) return 0;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(value);
}

HU_FlowConstrictionList HU_FlowConstrictionList::Parse(const std::vector<std::string>& list) {
  HU_FlowConstrictionList result;
  if (list.size() < 3) return result;
  const int n = ReadInt(list[0]);
  if (n <= 0) {
    result.m_current = 1;
    return result;
  }
  result.m_blockCount = n;
  result.m_current = ReadInt(list[1]);
  result.m_vertexCount = std::max(ReadInt(list[2]), 0);
  if (result.m_current < 0 || result.m_current >= n) {
    result.m_current = 1;
    result.m_vertexCount = 0;
  }
  // Blocks are kept as far as the list goes; those it announces but never reaches
  // are not made up.
  std::size_t pos = 3;
  for (int b = 0; b < n && pos < list.size(); ++b) {
    CHU_FlowConstrictionElevationSet& block = result.m_blocks.emplace_back();
    block.presence = ReadInt(list[pos++]);
    if (block.presence == 0) continue;
    const int code = pos < list.size() ? ReadInt(list[pos++]) : 0;
    block.mode = code >> 1;
    block.constant = (code & 1) != 0;
    std::vector<std::string>* values = ValuesOf(block);
    if (values == nullptr) continue;
    const std::size_t wanted = block.constant ? 1 : static_cast<std::size_t>(result.m_vertexCount);
    const std::size_t take = std::min(wanted, list.size() - pos);
    values->assign(list.begin() + static_cast<std::ptrdiff_t>(pos),
                   list.begin() + static_cast<std::ptrdiff_t>(pos + take));
    pos += take;
  }
  return result;
}

std::vector<std::string>* HU_FlowConstrictionList::ValuesOf(CHU_FlowConstrictionElevationSet& block) {
  if (block.presence == 0) return nullptr;
  if (block.mode == 1) return &block.firstValues;
  if (block.mode == 0) return &block.secondValues;
  return nullptr;
}

std::vector<std::string> HU_FlowConstrictionList::Write() const {
  std::vector<std::string> out{FormatG(m_blockCount), FormatG(m_current), FormatG(m_vertexCount)};
  for (const CHU_FlowConstrictionElevationSet& block : m_blocks) {
    out.push_back(FormatG(block.presence));
    if (block.presence == 0) continue;
    out.push_back(FormatG(static_cast<double>(block.mode) * 2 + (block.constant ? 1 : 0)));
    const std::vector<std::string>* values =
        block.mode == 1 ? &block.firstValues : block.mode == 0 ? &block.secondValues : nullptr;
    if (values != nullptr) out.insert(out.end(), values->begin(), values->end());
  }
  return out;
}

void HU_FlowConstrictionList::EnsureDefaultBlocks() {
  if (m_blockCount != 0) return;
  m_blockCount = 3;
  m_blocks.resize(3);
}

void HU_FlowConstrictionList::InsertVertex(int index, bool interpolate) {
  EnsureDefaultBlocks();
  if (m_vertexCount < INT_MAX) ++m_vertexCount;
  for (CHU_FlowConstrictionElevationSet& block : m_blocks) {
    std::vector<std::string>* values = ValuesOf(block);
    if (values == nullptr || block.constant) continue;
    // A list cut short has no place for the entry: it stays as it is, just as a
    // deletion past its end leaves it.
    if (index < 0 || static_cast<std::size_t>(index) > values->size()) continue;
    const std::size_t at = static_cast<std::size_t>(index);
    std::string value = "0";
    if (interpolate && at > 0 && at < values->size()) {
      const auto before = ReadWholeNumber((*values)[at - 1]);
      const auto after = ReadWholeNumber((*values)[at]);
      if (before && after) value = FormatG((*before + *after) / 2);
    }
    values->insert(values->begin() + static_cast<std::ptrdiff_t>(at), value);
  }
}

void HU_FlowConstrictionList::DeleteVertex(int index) {
  EnsureDefaultBlocks();
  m_vertexCount = std::max(m_vertexCount - 1, 0);
  for (CHU_FlowConstrictionElevationSet& block : m_blocks) {
    std::vector<std::string>* values = ValuesOf(block);
    if (values == nullptr || block.constant || index < 0) continue;
    if (static_cast<std::size_t>(index) < values->size()) values->erase(values->begin() + index);
  }
}
