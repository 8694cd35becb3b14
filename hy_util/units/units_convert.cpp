#include "hy_util/units/units_convert.h"

#include <cstddef>

#include "hy_util/geometry/rect.h"
#include "hy_util/units/units_setting.h"

namespace {

constexpr const char* kTempConvert = "TempConvert";
constexpr const char* kDimensionless = "-,non,hr,hrs,min,sec,real,%,yr,yrs,days,1/sec,1/day";

// Metric model units to US customary units. The order decides which row a shared
// name finds; the odd names ("celcius", "mph,mph,mph") are what callers pass.
constexpr UnitsRec kMainTable[] = {
    {kDimensionless, "", 1, "", 1},
    {"m,metres,m;ft", "ft,feet,ft", 3.28084, "", 0.3048},
    {"mm,mm/day,mm;in", "in,in/day,in", 0.03937, "", -1},
    {"km", "mi,miles", 0.62137, "", -1},
    {"m/s", "ft/s,fps", 3.28084, "", -1},
    {"km/h,kph,km/hr", "mph,mph,mph", 0.62137, "", -1},
    {"mm/hr", "in/hr", 0.03937, "", -1},
    {"cm,cm/hr", "in,in/hr", 0.3937, "", -1},
    {"cm/sec,cm/s", "ft/sec,ft/s", 0.0328084, "", -1},
    {"m,metres,m;in", "in,inches,in", 39.370079, "", -1},
    {"ha,hectares,ha;ac", "ac,acres", 2.47105, "", -1},
    {"sq.m.,m^2", "sq.ft.,ft^2", 10.763915, "", -1},
    {"1/ha", "1/ac", 0.4046862669715303, "", -1},
    {"m^3,cu.m.", "ft^3,cu.ft.", 35.3147, "", -1},
    {"cms,cumec,m^3/s", "cfs,cusec,ft^3/s", 35.3147, "", -1},
    {"litres", "USgal", 0.264178, "", -1},
    {"litres", "UKgal", 0.219976, "", -1},
    {"kg", "pound", 2.2046, "", -1},
    {"m^0.5/s", "ft^0.5/s", 1.81131, "", -1},
    {"c,celcius", "f", 1, kTempConvert, -1},
    {"mm/hr-C", "in/hr-F", 0.021872265, "", -1},
    {"cm^2/s", "ft^2/s", 0.001076391, "", -1},
    {"m^2/s", "ft^2/s", 10.763915, "", -1},
    {"m/m,m/m;ft/ft", "ft/ft", 1, "", -1},
};

// Sizes in assorted units to a base unit. "sc,acres" and "hectarMeter" are the
// names callers pass.
constexpr UnitsRec kSizeTable[] = {
    {kDimensionless, "", 1, "", 1},
    {"mm,millimetres,mm;m", "m,metres,m", 0.001, "", -1},
    {"cm,centimetres,cm;m", "m,metres,m", 0.01, "", -1},
    {"km,kilometres,km;m", "m,metres,m", 1000, "", -1},
    {"in,inches,in;ft", "ft,feet,ft", 0.08333333333333333, "", -1},
    {"mi,miles,mi;ft", "ft,feet,ft", 5280, "", -1},
    {"usft,USSurveyFeet,usft;ft", "ft,feet,ft", 1.000002, "", -1},
    {"ha,hectares", "sq.m.,m^2", 10000, "", -1},
    {"sq.mm,squareMillimeter", "sq.m.,m^2", 1e-06, "", -1},
    {"sq.cm,squareCentimeter", "sq.m.,m^2", 0.0001, "", -1},
    {"sc,acres", "sq.ft.,ft^2", 43560, "", -1},
    {"sq.in,in^2", "sq.ft.,ft^2", 0.006944444444444444, "", -1},
    {"sq.mi,mi^2", "sq.ft.,ft^2", 27878400, "", -1},
    {"l,liters", "m^3,cu.m.", 0.001, "", -1},
    {"hM,hectarMeter", "m^3,cu.m.", 10000, "", -1},
    {"USgal", "ft^3,cu.ft.", 0.13368055555555555, "", -1},
    {"UKgal", "ft^3,cu.ft.", 0.160544, "", -1},
    {"cu.in,in^3", "ft^3,cu.ft.", 0.000579, "", -1},
    {"cu.yd,yd^3", "ft^3,cu.ft.", 27, "", -1},
    {"ac.ft,acreFeet", "ft^3,cu.ft.", 43560, "", -1},
    {"HPA", "mmHG", 0.750061561303, "", -1},
    {"mB,milliBars", "mmHG", 0.750061561303, "", -1},
    {"millimeterHG", "mmHG", 1, "", -1},
    {"HPA", "inHG", 1, "", -1},
    {"km/h,kph", "m/s,mps", 0.2777777777777778, "", -1},
    {"mi/h,mph", "ft/s,ftps", 1.4666666666666666, "", -1},
    {"l/s,lps", "cu.mps,m^3/s", 0.001, "", -1},
    {"l/min,lpm", "cu.mps,m^3/s", 1.6666666666666667e-05, "", -1},
    {"USgal/day", "cu.ftps,ft^3/s", 1.5472286522633745e-06, "", -1},
    {"UKgal/day", "cu.ftps,ft^3/s", 1.858148148148148e-06, "", -1},
    {"ft^3/day", "cu.ftps,ft^3/s", 1.1574074074074073e-05, "", -1},
    {"USgal/min", "cu.ftps,ft^3/s", 0.0022280092592592594, "", -1},
    {"UKgal/min", "cu.ftps,ft^3/s", 4.6453703703703706e-06, "", -1},
    {"ac.ft/day", "cu.ftps,ft^3/s", 0.5041666666666667, "", -1},
    {"radians", "decimalDegrees", 57.29577951308232, "", -1},
    {"grads", "decimalDegrees", 0.9, "", -1},
};

char FoldCase(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (FoldCase(a[i]) != FoldCase(b[i])) return false;
  }
  return true;
}

// The name at `position` in a comma-separated set; the last name when the set is
// shorter.
std::string_view NameAt(std::string_view set, std::size_t position) {
  std::size_t start = 0;
  for (std::size_t i = 0; i < position; ++i) {
    const std::size_t comma = set.find(',', start);
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  const std::size_t end = set.find(',', start);
  return set.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

bool IsSpecial(const UnitsRec& rec) { return std::string_view(rec.special) == kTempConvert; }

int FindFrom(std::span<const UnitsRec> table, std::string_view unit, std::string* outName,
             int firstRow) {
  const int count = static_cast<int>(table.size());
  for (int row = firstRow < 0 ? 0 : firstRow; row < count; ++row) {
    const UnitsRec& rec = table[static_cast<std::size_t>(row)];
    if (CHU_UnitsConvert::InStringSet(unit, outName, rec.fromSet, rec.toSet) == 1) return row;
  }
  return -1;
}

const UnitsRec* RowAt(std::span<const UnitsRec> table, int row) {
  if (row < 0 || static_cast<std::size_t>(row) >= table.size()) return nullptr;
  return &table[static_cast<std::size_t>(row)];
}

bool IsTrimmed(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f'; }

// The next ';'-separated token from `position`, skipping empty ones.
std::string_view NextToken(std::string_view text, std::size_t& position) {
  while (position < text.size() && text[position] == ';') ++position;
  const std::size_t start = position;
  while (position < text.size() && text[position] != ';') ++position;
  return text.substr(start, position - start);
}

}  // namespace

std::span<const UnitsRec> CHU_UnitsConvert::MainTable() { return kMainTable; }
std::span<const UnitsRec> CHU_UnitsConvert::SizeTable() { return kSizeTable; }

double CHU_UnitsConvert::UnitsConvert(std::string_view unit, double value, std::string* outName) {
  return UnitsConvertFind(value, UnitsFind(unit, outName));
}

double CHU_UnitsConvert::UnitsConvert_Metric_To_US(double value, std::string_view unit,
                                                   std::string* outName) {
  return UnitsConvert(unit, value, outName);
}

bool CHU_UnitsConvert::IsUSToMetricOn() {
  return HU_GetUnitsSetting() == 0 &&
         !HU_GetApplication().GetGlobalFlag(HU_TUFLOW_UNIT_SELECTED_FLAG, false);
}

double CHU_UnitsConvert::UnitsConvert_US_To_Metric(double value, std::string_view unit,
                                                   std::string* outName) {
  if (!IsUSToMetricOn()) return value;
  return UnitsConvertFind_Invert(value, UnitsFind(unit, outName));
}

bool CHU_UnitsConvert::UnitsConvert_US_To_Metric(CHU_DRect& rect, std::string_view unit,
                                                 std::string* outName) {
  if (!IsUSToMetricOn()) return true;
  const int row = UnitsFind(unit, outName);
  if (row < 0) return false;
  rect.SetRect(UnitsConvertFind_Invert(rect.Left(), row), UnitsConvertFind_Invert(rect.Top(), row),
               UnitsConvertFind_Invert(rect.Right(), row),
               UnitsConvertFind_Invert(rect.Bottom(), row));
  return true;
}

double CHU_UnitsConvert::UnitsConvert_Size(double value, std::string_view unit,
                                           std::string* outName) {
  return UnitsConvertFind_Size(value, UnitsFind_Size(unit, outName));
}

int CHU_UnitsConvert::UnitsFind(std::string_view unit, std::string* outName) {
  return GetFromRow(unit, outName, 0);
}

int CHU_UnitsConvert::UnitsFind_Size(std::string_view unit, std::string* outName) {
  return GetFromRow_Size(unit, outName, 0);
}

int CHU_UnitsConvert::GetFromRow(std::string_view unit, std::string* outName, int firstRow) {
  return FindFrom(kMainTable, unit, outName, firstRow);
}

int CHU_UnitsConvert::GetFromRow_Size(std::string_view unit, std::string* outName, int firstRow) {
  return FindFrom(kSizeTable, unit, outName, firstRow);
}

int CHU_UnitsConvert::InFromUnits(std::string_view unit, std::string* outName, int row) {
  const UnitsRec* rec = RowAt(kMainTable, row);
  return rec ? InStringSet(unit, outName, rec->fromSet, rec->toSet) : 0;
}

int CHU_UnitsConvert::InFromUnits_Size(std::string_view unit, std::string* outName, int row) {
  const UnitsRec* rec = RowAt(kSizeTable, row);
  return rec ? InStringSet(unit, outName, rec->fromSet, rec->toSet) : 0;
}

double CHU_UnitsConvert::UnitsConvertFind(double value, int row) {
  const UnitsRec* rec = RowAt(kMainTable, row);
  return rec ? Convert(value, *rec) : value;
}

double CHU_UnitsConvert::UnitsConvertFind_Size(double value, int row) {
  const UnitsRec* rec = RowAt(kSizeTable, row);
  return rec ? Convert(value, *rec) : value;
}

double CHU_UnitsConvert::UnitsConvertFind_Invert(double value, int row) {
  const UnitsRec* rec = RowAt(kMainTable, row);
  return rec ? Convert_Invert(value, *rec) : value;
}

double CHU_UnitsConvert::Convert(double value, const UnitsRec& rec) {
  return IsSpecial(rec) ? TempConvert(value) : rec.factor * value;
}

double CHU_UnitsConvert::Convert_Invert(double value, const UnitsRec& rec) {
  if (IsSpecial(rec)) return TempConvert_Invert(value);
  if (rec.inverse != -1) return rec.inverse * value;
  return value / rec.factor;
}

int CHU_UnitsConvert::InStringSet(std::string_view unit, std::string* outName,
                                  std::string_view fromSet, std::string_view toSet) {
  if (unit.empty() || fromSet.empty()) return 0;
  return StrProcesses(unit, outName, fromSet, toSet);
}

int CHU_UnitsConvert::StrProcesses(std::string_view unit, std::string* outName,
                                   std::string_view fromSet, std::string_view toSet) {
  std::size_t position = 0;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = fromSet.find(',', start);
    const std::string_view name =
        fromSet.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start);
    if (EqualNoCase(unit, name)) break;
    if (comma == std::string_view::npos) return 0;
    start = comma + 1;
    ++position;
  }
  if (outName == nullptr) return 1;
  if (toSet.empty()) return 0;
  *outName = NameAt(toSet, position);
  return 1;
}

void CHU_UnitsConvert::GetToUnits(std::string_view unitPair, std::string& toUnits) {
  while (!unitPair.empty() && IsTrimmed(unitPair.front())) unitPair.remove_prefix(1);
  while (!unitPair.empty() && IsTrimmed(unitPair.back())) unitPair.remove_suffix(1);
  std::size_t position = 0;
  const std::string_view first = NextToken(unitPair, position);
  const std::string_view second = NextToken(unitPair, position);
  const bool wantUS = HU_GetUnitsSetting() == 0 && (!second.empty() || first.empty());
  toUnits = wantUS ? second : first;
}

void CHU_UnitsConvert::GetToUnitsNonEmpty(std::string_view unitPair, std::string& toUnits) {
  GetToUnits(unitPair, toUnits);
}

double CHU_UnitsConvert::HandleTuflowUnitsConversion(double value, std::string_view,
                                                     std::string*) {
  return value;
}

double CHU_UnitsConvert::HandleRainflowUnitsInTuflowConversion(int, double value,
                                                               std::string_view, std::string*) {
  return value;
}
