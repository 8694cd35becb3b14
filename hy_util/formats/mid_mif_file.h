#pragma once
// CHU_MIDMIFFile: the ordered attribute columns of a MapInfo Interchange pair,
// the part shared by CHU_MIDMIFFileImport (which fills them from a MIF header)
// and CHU_MIDMIFFileExport (which writes them). Column i of the table is value i
// of every MID row.

#include <string>
#include <vector>

#include "hy_util/formats/mid_mif_data.h"

class CHU_MIDMIFFile {
 public:
  CHU_MIDMIFFile() = default;
  virtual ~CHU_MIDMIFFile() = default;

  // Appends a column without units.
  void AddDataItem(const std::string& name, int type, int size);
  void AddDataItem(const CHU_MIDMIFData& column);
  // The column at index, or null when out of range.
  const CHU_MIDMIFData* GetDataItem(int index) const;
  int GetNumDataItems() const { return static_cast<int>(m_columns.size()); }
  // The column as the MIF header declares it, without indent: "NAME Char(50)",
  // "DEPTH Float", "CODE Undefined". False and text untouched when out of range.
  bool GetDataStr(int index, std::string& text) const;
  // Code of a MIF type name: "Integer" 0, "Char" 1, "Float" 2, "Double" 3, letter
  // case ignored; -1 (kUndefined) for any other name.
  static int GetDataType(const std::string& name);
  // The MIF type name of a code: "Integer", "Char", "Float", "Double", or
  // "Undefined".
  static const char* GetDataTypeName(int type);
  void Cleanup() { m_columns.clear(); }

 protected:
  std::vector<CHU_MIDMIFData> m_columns;
};
