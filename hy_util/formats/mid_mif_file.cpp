#include "hy_util/formats/mid_mif_file.h"

#include "hy_util/formats/mid_mif_text.h"

void CHU_MIDMIFFile::AddDataItem(const std::string& name, int type, int size) {
  m_columns.emplace_back(name, std::string(), type, size);
}

void CHU_MIDMIFFile::AddDataItem(const CHU_MIDMIFData& column) { m_columns.push_back(column); }

const CHU_MIDMIFData* CHU_MIDMIFFile::GetDataItem(int index) const {
  if (index < 0 || index >= GetNumDataItems()) return nullptr;
  return &m_columns[static_cast<std::size_t>(index)];
}

bool CHU_MIDMIFFile::GetDataStr(int index, std::string& text) const {
  const CHU_MIDMIFData* column = GetDataItem(index);
  if (column == nullptr) return false;
  text = column->GetName() + " " + GetDataTypeName(column->GetType());
  if (column->GetType() == CHU_MIDMIFData::kChar) text += "(" + std::to_string(column->GetSize()) + ")";
  return true;
}

int CHU_MIDMIFFile::GetDataType(const std::string& name) {
  for (int type = CHU_MIDMIFData::kInteger; type <= CHU_MIDMIFData::kDouble; ++type) {
    if (hu_mif::EqualsNoCase(name, GetDataTypeName(type))) return type;
  }
  return CHU_MIDMIFData::kUndefined;
}

const char* CHU_MIDMIFFile::GetDataTypeName(int type) {
  switch (type) {
    case CHU_MIDMIFData::kInteger: return "Integer";
    case CHU_MIDMIFData::kChar: return "Char";
    case CHU_MIDMIFData::kFloat: return "Float";
    case CHU_MIDMIFData::kDouble: return "Double";
    default: return "Undefined";
  }
}
