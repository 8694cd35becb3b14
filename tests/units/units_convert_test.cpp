// Unit tables: which row a name finds, what name comes back, both directions, and the
// host settings that switch the reverse direction on.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>

#include "hy_util/geometry/rect.h"
#include "hy_util/units/units_convert.h"
#include "hy_util/units/units_setting.h"
#include "support/recording_application.h"

namespace {

using U = CHU_UnitsConvert;

// A host whose "Units" is set (or left unset when nullopt).
class UnitsHost : public hytest::RecordingApplication {
 public:
  explicit UnitsHost(std::optional<int> units, bool tuflowUnits = false) {
    if (units) SetGlobalInt(HU_UNITS_SETTING, *units);
    if (tuflowUnits) SetGlobalFlag(HU_TUFLOW_UNIT_SELECTED_FLAG, true);
  }
};

struct Reach {
  const char* unit;
  int row;
  const char* outName;
};

// One name per row that finds it first; the names test the position rule of the
// out name as well (third name of "m,metres,m;ft" is "ft").
constexpr Reach kMainReach[] = {
    {"m;ft", 1, "ft"},        {"mm/day", 2, "in/day"},    {"km", 3, "mi"},           {"M/S", 4, "ft/s"},
    {"km/hr", 5, "mph"},      {"mm/hr", 6, "in/hr"},      {"cm/hr", 7, "in/hr"},     {"cm/s", 8, "ft/s"},
    {"m;in", 9, "in"},        {"ha;ac", 10, "acres"},     {"m^2", 11, "ft^2"},       {"1/ha", 12, "1/ac"},
    {"cu.m.", 13, "cu.ft."},  {"cumec", 14, "cusec"},     {"Litres", 15, "USgal"},   {"kg", 17, "pound"},
    {"m^0.5/s", 18, "ft^0.5/s"}, {"mm/hr-c", 20, "in/hr-F"}, {"cm^2/s", 21, "ft^2/s"}, {"m^2/s", 22, "ft^2/s"},
    {"m/m;ft/ft", 23, "ft/ft"},
};

constexpr Reach kSizeReach[] = {
    {"millimetres", 1, "metres"}, {"cm;m", 2, "m"},          {"km", 3, "m"},              {"inches", 4, "feet"},
    {"mi", 5, "ft"},              {"USSurveyFeet", 6, "feet"}, {"hectares", 7, "m^2"},    {"sq.mm", 8, "sq.m."},
    {"squarecentimeter", 9, "m^2"}, {"acres", 10, "ft^2"},   {"in^2", 11, "ft^2"},        {"sq.mi", 12, "sq.ft."},
    {"liters", 13, "cu.m."},      {"hM", 14, "m^3"},         {"USgal", 15, "ft^3"},       {"ukgal", 16, "ft^3"},
    {"in^3", 17, "cu.ft."},       {"cu.yd", 18, "ft^3"},     {"acreFeet", 19, "cu.ft."},  {"hpa", 20, "mmHG"},
    {"milliBars", 21, "mmHG"},    {"millimeterHG", 22, "mmHG"}, {"kph", 24, "mps"},       {"mph", 25, "ftps"},
    {"lps", 26, "m^3/s"},         {"l/min", 27, "cu.mps"},   {"USgal/day", 28, "cu.ftps"}, {"UKgal/day", 29, "cu.ftps"},
    {"ft^3/day", 30, "cu.ftps"},  {"USgal/min", 31, "cu.ftps"}, {"UKgal/min", 32, "cu.ftps"},
    {"ac.ft/day", 33, "cu.ftps"}, {"RADIANS", 34, "decimalDegrees"}, {"grads", 35, "decimalDegrees"},
};

}  // namespace

TEST(UnitsConvert, EveryMainRowIsFoundByANameAndConvertsBothWays) {
  UnitsHost host(0);
  for (const Reach& r : kMainReach) {
    SCOPED_TRACE(r.unit);
    std::string name;
    EXPECT_EQ(U::UnitsFind(r.unit, &name), r.row);
    EXPECT_EQ(name, r.outName);
    const double us = U::UnitsConvert(r.unit, 2.0);
    EXPECT_EQ(us, U::MainTable()[r.row].factor * 2.0);
    EXPECT_NEAR(U::UnitsConvert_US_To_Metric(us, r.unit), 2.0, 2e-7);  // row 1: x 0.3048, not / 3.28084
  }
  // Row 16 only by index, row 19 by its temperature rule; both directions.
  EXPECT_DOUBLE_EQ(U::UnitsConvertFind(10.0, 16), 2.19976);
  EXPECT_DOUBLE_EQ(U::UnitsConvertFind_Invert(2.19976, 16), 10.0);
  EXPECT_EQ(U::UnitsConvert("celcius", 100.0), 212.0);
  EXPECT_EQ(U::UnitsConvert_US_To_Metric(212.0, "C"), 100.0);
  EXPECT_EQ(U::MainTable().size(), 24u);
}

TEST(UnitsConvert, EverySizeRowIsFoundByANameOrItsIndex) {
  for (const Reach& r : kSizeReach) {
    SCOPED_TRACE(r.unit);
    std::string name;
    EXPECT_EQ(U::UnitsFind_Size(r.unit, &name), r.row);
    EXPECT_EQ(name, r.outName);
    EXPECT_EQ(U::UnitsConvert_Size(3.0, r.unit), U::SizeTable()[r.row].factor * 3.0);
  }
  EXPECT_EQ(U::UnitsConvertFind_Size(5.0, 23), 5.0);  // "HPA" to "inHG" only by index
  EXPECT_EQ(U::GetFromRow_Size("HPA", nullptr, 21), 23);
  EXPECT_EQ(U::SizeTable().size(), 36u);
}

TEST(UnitsConvert, TheFirstMatchingRowWinsAndExplicitNamesReachTheOthers) {
  std::string ft, feet, in, uk;
  EXPECT_EQ(std::tuple(U::UnitsConvert("M", 1.0, &ft), U::UnitsConvert("metres", 1.0, &feet),
                       U::UnitsConvert("m;in", 1.0, &in)),
            std::tuple(3.28084, 3.28084, 39.370079));
  EXPECT_EQ(std::tuple(ft, feet, in), std::tuple("ft", "feet", "in"));
  EXPECT_EQ(std::tuple(U::UnitsFind("litres"), U::GetFromRow("litres", &uk, 16), U::GetFromRow("litres", nullptr, 17)),
            std::tuple(15, 16, -1));
  EXPECT_EQ(uk, "UKgal");
}

TEST(UnitsConvert, TheDimensionlessRowMatchesOnlyWhenNoNameIsWanted) {
  std::string name = "untouched";
  EXPECT_EQ(std::tuple(U::UnitsFind("-"), U::UnitsFind("-", &name), U::UnitsFind("1/DAY"), U::UnitsFind_Size("hrs"),
                       U::UnitsFind_Size("hrs", &name)),
            std::tuple(0, -1, 0, 0, -1));
  EXPECT_EQ(U::UnitsConvert("%", 7.0, &name), 7.0);
  EXPECT_EQ(name, "untouched");
  EXPECT_EQ(std::pair(U::InFromUnits("sec", nullptr, 0), U::InFromUnits("sec", &name, 0)), std::pair(1, 0));
}

TEST(UnitsConvert, NamesFoldCaseButAreNeitherTrimmedNorCutAtANul) {
  std::string name = "untouched";
  const std::string withNul("m\0ft", 4);
  for (std::string_view unit : {std::string_view(" m"), std::string_view("m "),
                                std::string_view(""), std::string_view(withNul),
                                std::string_view("m,ft"), std::string_view("\xC2\xB5m"),
                                std::string_view("metre")}) {
    EXPECT_EQ(U::UnitsFind(unit, &name), -1) << unit;
    EXPECT_EQ(U::UnitsConvert(unit, 4.5, &name), 4.5);
  }
  const std::string huge(1 << 20, 'm');
  EXPECT_EQ(U::UnitsFind(huge, &name), -1);
  EXPECT_EQ(name, "untouched");
  EXPECT_EQ(U::UnitsFind("CeLcIuS"), 19);
  EXPECT_EQ(U::InStringSet("m", nullptr, "", "ft"), 0);
  EXPECT_EQ(U::StrProcesses("b", &name, "a,,b", "x"), 1);
  EXPECT_EQ(name, "x");  // a to set shorter than the from set gives its last name
}

TEST(UnitsConvert, RowIndicesOutsideTheTablesFindAndConvertNothing) {
  EXPECT_EQ(std::tuple(U::GetFromRow("m", nullptr, 24), U::GetFromRow("m/m", nullptr, 23),
                       U::GetFromRow_Size("grads", nullptr, 36), U::GetFromRow("m", nullptr, -5)),
            std::tuple(-1, 23, -1, 1));
  EXPECT_EQ(U::InFromUnits("m", nullptr, 24) + U::InFromUnits_Size("km", nullptr, -1), 0);
  EXPECT_EQ(std::tuple(U::UnitsConvertFind(8.0, -1), U::UnitsConvertFind(8.0, 24),
                       U::UnitsConvertFind_Invert(8.0, 99), U::UnitsConvertFind_Size(8.0, 36)),
            std::tuple(8.0, 8.0, 8.0, 8.0));
}

TEST(UnitsConvert, ReverseConversionFollowsTheHostSettings) {
  // Only "Units" 0 without the TUFLOW units flag converts back.
  for (const auto& [units, tuflow, factor] : {std::tuple(std::optional<int>(), false, 1.0),
                                              std::tuple(std::optional<int>(0), false, 0.3048),
                                              std::tuple(std::optional<int>(1), false, 1.0),
                                              std::tuple(std::optional<int>(0), true, 1.0)}) {
    UnitsHost host(units, tuflow);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(10.0, "m"), 10.0 * factor) << units.value_or(-1) << tuflow;
  }
  UnitsHost us(0);
  EXPECT_EQ(U::UnitsConvert_US_To_Metric(2.47105, "ha"), 1.0);
  EXPECT_EQ(U::UnitsConvert_US_To_Metric(6.0, "unknown"), 6.0);
}

TEST(UnitsConvert, TheRectangleFormConvertsAllFourSidesOnlyWhenConversionIsOn) {
  const CHU_DRect start(10, 20, 30, -40);
  auto sides = [](const CHU_DRect& r) { return std::array{r.Left(), r.Top(), r.Right(), r.Bottom()}; };
  {
    UnitsHost unset(std::nullopt);
    CHU_DRect r = start;
    EXPECT_TRUE(U::UnitsConvert_US_To_Metric(r, "no such unit"));
    EXPECT_EQ(sides(r), sides(start));
  }
  UnitsHost us(0);
  CHU_DRect r = start;
  std::string name;
  EXPECT_TRUE(U::UnitsConvert_US_To_Metric(r, "m", &name));
  EXPECT_EQ(sides(r), (std::array{10 * 0.3048, 20 * 0.3048, 30 * 0.3048, -40 * 0.3048}));
  EXPECT_EQ(name, "ft");
  r = start;
  EXPECT_FALSE(U::UnitsConvert_US_To_Metric(r, "furlongs"));
  EXPECT_EQ(sides(r), sides(start));
}

TEST(UnitsConvert, GetToUnitsPicksTheUSSideOnlyWhenUnitsIsZero) {
  struct Case {
    std::optional<int> units;
    const char* text;
    const char* expected;
  };
  const Case cases[] = {
      {0, "m;ft", "ft"},       {1, "m;ft", "m"},       {std::nullopt, "m;ft", "m"},
      {0, " m;ft\t", "ft"},    {0, "m", "m"},          {1, "m", "m"},
      {0, ";;m;;ft", "ft"},    {0, ";ft", "ft"},       {1, "m;ft;in", "m"},
      {0, "", ""},             {0, "  ", ""},          {0, "m ; ft", " ft"},
  };
  for (const Case& c : cases) {
    UnitsHost host(c.units);
    std::string out = "stale";
    U::GetToUnits(c.text, out);
    EXPECT_EQ(out, c.expected) << '"' << c.text << "\" with Units " << c.units.value_or(-1);
    U::GetToUnitsNonEmpty(c.text, out);
    EXPECT_EQ(out, c.expected);
  }
}

TEST(UnitsConvert, NonFiniteValuesPassThroughTheArithmetic) {
  UnitsHost us(0);
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(std::isnan(U::UnitsConvert("m", std::nan(""))));
  EXPECT_TRUE(std::isnan(U::UnitsConvert_Size(std::nan(""), "km")));
  EXPECT_EQ(std::pair(U::UnitsConvert("m", -inf), U::UnitsConvert_US_To_Metric(inf, "c")), std::pair(-inf, inf));
}
