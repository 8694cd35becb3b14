#include "hy_util/mesh/attribute_store.h"

#include <algorithm>
#include <cstddef>

std::vector<std::string> CHU_MemoryAttributeStore::GetStringList(int elementId, const std::string& key) const {
  const auto found = m_fields.find({elementId, key});
  return found == m_fields.end() ? std::vector<std::string>{} : found->second.list;
}

void CHU_MemoryAttributeStore::SetStringList(int elementId, const std::string& key,
                                             const std::vector<std::string>& values, int count) {
  const std::size_t n = std::min(values.size(), static_cast<std::size_t>(std::max(count, 0)));
  Field& field = m_fields[{elementId, key}];
  field.list.assign(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(n));
}

void CHU_MemoryAttributeStore::ResetField(int elementId, const std::string& key, int value) {
  Field& field = m_fields[{elementId, key}];
  field.list.clear();
  field.value = value;
}

int CHU_MemoryAttributeStore::GetFieldValue(int elementId, const std::string& key) const {
  const auto found = m_fields.find({elementId, key});
  return found == m_fields.end() ? 0 : found->second.value;
}

bool CHU_MemoryAttributeStore::HasField(int elementId, const std::string& key) const {
  return m_fields.count({elementId, key}) != 0;
}
