#pragma once
// CHU_UnitsConvert: engineering unit conversion by unit name, over two constant
// tables of rows (UnitsRec).
//
// The main table turns metric model values into the US customary units shown to
// users (forward) and back (reverse); the size table turns a size in an assorted
// unit into a base unit (forward only). A caller passes the unit as it is written in
// a file or a column heading ("cms", "m", "ha"); the first row whose from set lists
// that name wins, so row order matters: "m" always means metres to feet, "litres"
// US gallons, "HPA" millimetres of mercury. The other rows with a shared name are
// reachable by their index only (or, for "m", by the explicit names "m;ft" and
// "m;in": a semicolon is part of a name, only commas separate names).
//
// Names compare ignoring ASCII letter case and are not trimmed (" m" matches
// nothing). Unit texts may hold any bytes, embedded NULs included.
//
// The reverse (US-to-metric) conversions are conditional: they convert only while
// the host's global "Units" is 0 and its flag "F_TUFLOW_UNIT_SELECTED" is false.
// A host that never set "Units" (HU_UNITS_NOT_SET) gets no conversion.
//
// Out names are optional (nullptr when not wanted) and are written only when a row
// matches. Every operation is static; the class holds no state.

#include <span>
#include <string>
#include <string_view>

class CHU_DRect;

// One table row. A target value is factor x source value, except for the
// temperature row (special "TempConvert"). The reverse conversion multiplies by
// inverse when one is given and divides by the factor when inverse is -1.
struct UnitsRec {
  const char* fromSet;  // comma-separated names of the source unit
  const char* toSet;    // names of the target unit, position by position
  double factor;
  const char* special;  // "" or "TempConvert"
  double inverse;       // -1: none given
};

class CHU_UnitsConvert {
 public:
  CHU_UnitsConvert() = delete;

  // The tables themselves (24 main rows, 36 size rows), for listing.
  static std::span<const UnitsRec> MainTable();
  static std::span<const UnitsRec> SizeTable();

  // Main table, forward: the converted value, or the value unchanged when no row
  // matches. The two names are the same operation.
  static double UnitsConvert(std::string_view unit, double value, std::string* outName = nullptr);
  static double UnitsConvert_Metric_To_US(double value, std::string_view unit,
                                          std::string* outName = nullptr);

  // Main table, reverse, only while US-to-metric conversion is on (see above);
  // otherwise the value unchanged.
  static double UnitsConvert_US_To_Metric(double value, std::string_view unit,
                                          std::string* outName = nullptr);
  // Converts the rectangle's four coordinates in place, reverse, while conversion is
  // on. False only when conversion is on and no row matches (rect untouched then).
  static bool UnitsConvert_US_To_Metric(CHU_DRect& rect, std::string_view unit,
                                        std::string* outName = nullptr);

  // Size table, forward.
  static double UnitsConvert_Size(double value, std::string_view unit,
                                  std::string* outName = nullptr);

  // True while the reverse conversions convert: "Units" is 0 and
  // "F_TUFLOW_UNIT_SELECTED" is false (or absent).
  static bool IsUSToMetricOn();

  // Index of the first matching row, or -1.
  static int UnitsFind(std::string_view unit, std::string* outName = nullptr);
  static int UnitsFind_Size(std::string_view unit, std::string* outName = nullptr);

  // Index of the first matching row at or after firstRow, or -1 (also for a first
  // row outside the table; a negative one starts at row 0).
  static int GetFromRow(std::string_view unit, std::string* outName, int firstRow);
  static int GetFromRow_Size(std::string_view unit, std::string* outName, int firstRow);

  // 1 when that one row matches, else 0 (also for a row outside the table).
  static int InFromUnits(std::string_view unit, std::string* outName, int row);
  static int InFromUnits_Size(std::string_view unit, std::string* outName, int row);

  // Conversion by row index; an index outside the table returns the value unchanged.
  static double UnitsConvertFind(double value, int row);
  static double UnitsConvertFind_Size(double value, int row);
  static double UnitsConvertFind_Invert(double value, int row);

  // Conversion by row record.
  static double Convert(double value, const UnitsRec& rec);
  static double Convert_Invert(double value, const UnitsRec& rec);

  // Degrees Celsius to Fahrenheit and back.
  static double TempConvert(double value) { return value * 1.8 + 32.0; }
  static double TempConvert_Invert(double value) { return (value - 32.0) / 1.8; }

  // 0 when the unit or the from set is empty, else StrProcesses.
  static int InStringSet(std::string_view unit, std::string* outName, std::string_view fromSet,
                         std::string_view toSet);
  // The name rule: 1 when the unit equals a name of the from set. With an out name
  // wanted, an empty to set gives 0 (so the dimensionless row never supplies a name),
  // otherwise the out name becomes the to set's name at the same position, or its
  // last name when the to set is shorter.
  static int StrProcesses(std::string_view unit, std::string* outName, std::string_view fromSet,
                          std::string_view toSet);

  // Picks one side of a unit pair written "metric;US" (the text is trimmed first,
  // then split at ';' skipping empty tokens): the US side while "Units" is 0 (or the
  // first side when there is no second one), otherwise the metric side. A text
  // without ';' gives itself. The two names are the same operation.
  static void GetToUnits(std::string_view unitPair, std::string& toUnits);
  static void GetToUnitsNonEmpty(std::string_view unitPair, std::string& toUnits);

  // Hooks for the hydraulic model's own unit handling; they return the value unchanged.
  static double HandleTuflowUnitsConversion(double value, std::string_view unit,
                                            std::string* outName = nullptr);
  static double HandleRainflowUnitsInTuflowConversion(int kind, double value,
                                                      std::string_view unit,
                                                      std::string* outName = nullptr);
};
