#pragma once
// CHU_MIDMIFData: one attribute column of a MapInfo Interchange table, as both the
// reader and the writer keep it. Type codes: 0 Integer, 1 Char (size is its
// width), 2 Float, 3 Double (size is the number of decimals written, a negative
// size meaning three); any other code is a type this library does not convert,
// written as "Undefined" and its values as text.

#include <string>
#include <utility>

class CHU_MIDMIFData {
 public:
  static constexpr int kInteger = 0;
  static constexpr int kChar = 1;
  static constexpr int kFloat = 2;
  static constexpr int kDouble = 3;
  static constexpr int kUndefined = -1;

  CHU_MIDMIFData() = default;
  CHU_MIDMIFData(std::string name, std::string units, int type, int size)
      : m_name(std::move(name)), m_units(std::move(units)), m_type(type), m_size(size) {}

  const std::string& GetName() const { return m_name; }
  const std::string& GetUnits() const { return m_units; }
  int GetType() const { return m_type; }
  int GetSize() const { return m_size; }
  void SetUnits(std::string units) { m_units = std::move(units); }

 private:
  std::string m_name;
  std::string m_units;
  int m_type = kUndefined;
  int m_size = 0;
};
