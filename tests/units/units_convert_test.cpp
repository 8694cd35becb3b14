// Unit tables: which row a name finds, what name comes back, both directions, and the
// host settings that switch the reverse direction on.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

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
  double factor;  // forward factor of that row, as the table prints it
};

// One name per row that finds it first; the names test the position rule of the
// out name as well (third name of "m,metres,m;ft" is "ft").
constexpr Reach kMainReach[] = {
    {"m;ft", 1, "ft", 3.28084},          {"mm/day", 2, "in/day", 0.03937},
    {"km", 3, "mi", 0.62137},            {"M/S", 4, "ft/s", 3.28084},
    {"km/hr", 5, "mph", 0.62137},        {"mm/hr", 6, "in/hr", 0.03937},
    {"cm/hr", 7, "in/hr", 0.3937},       {"cm/s", 8, "ft/s", 0.0328084},
    {"m;in", 9, "in", 39.370079},        {"ha;ac", 10, "acres", 2.47105},
    {"m^2", 11, "ft^2", 10.763915},      {"1/ha", 12, "1/ac", 0.4046862669715303},
    {"cu.m.", 13, "cu.ft.", 35.3147},    {"cumec", 14, "cusec", 35.3147},
    {"Litres", 15, "USgal", 0.264178},   {"kg", 17, "pound", 2.2046},
    {"m^0.5/s", 18, "ft^0.5/s", 1.81131}, {"mm/hr-c", 20, "in/hr-F", 0.021872265},
    {"cm^2/s", 21, "ft^2/s", 0.001076391}, {"m^2/s", 22, "ft^2/s", 10.763915},
    {"m/m;ft/ft", 23, "ft/ft", 1},
};

constexpr Reach kSizeReach[] = {
    {"millimetres", 1, "metres", 0.001},   {"cm;m", 2, "m", 0.01},
    {"km", 3, "m", 1000},                  {"inches", 4, "feet", 0.08333333333333333},
    {"mi", 5, "ft", 5280},                 {"USSurveyFeet", 6, "feet", 1.000002},
    {"hectares", 7, "m^2", 10000},         {"sq.mm", 8, "sq.m.", 1e-06},
    {"squarecentimeter", 9, "m^2", 0.0001}, {"acres", 10, "ft^2", 43560},
    {"in^2", 11, "ft^2", 0.006944444444444444}, {"sq.mi", 12, "sq.ft.", 27878400},
    {"liters", 13, "cu.m.", 0.001},        {"hM", 14, "m^3", 10000},
    {"USgal", 15, "ft^3", 0.13368055555555555}, {"ukgal", 16, "ft^3", 0.160544},
    {"in^3", 17, "cu.ft.", 0.000579},      {"cu.yd", 18, "ft^3", 27},
    {"acreFeet", 19, "cu.ft.", 43560},     {"hpa", 20, "mmHG", 0.750061561303},
    {"milliBars", 21, "mmHG", 0.750061561303}, {"millimeterHG", 22, "mmHG", 1},
    {"kph", 24, "mps", 0.2777777777777778}, {"mph", 25, "ftps", 1.4666666666666666},
    {"lps", 26, "m^3/s", 0.001},           {"l/min", 27, "cu.mps", 1.6666666666666667e-05},
    {"USgal/day", 28, "cu.ftps", 1.5472286522633745e-06},
    {"UKgal/day", 29, "cu.ftps", 1.858148148148148e-06},
    {"ft^3/day", 30, "cu.ftps", 1.1574074074074073e-05},
    {"USgal/min", 31, "cu.ftps", 0.0022280092592592594},
    {"UKgal/min", 32, "cu.ftps", 4.6453703703703706e-06},
    {"ac.ft/day", 33, "cu.ftps", 0.5041666666666667},
    {"RADIANS", 34, "decimalDegrees", 57.29577951308232}, {"grads", 35, "decimalDegrees", 0.9},
};

}  // namespace

TEST(UnitsConvert, EveryMainRowIsFoundByANameAndConvertsBothWays) {
  UnitsHost host(0);
  for (const Reach& r : kMainReach) {
    SCOPED_TRACE(r.unit);
    std::string name;
    EXPECT_EQ(U::UnitsFind(r.unit, &name), r.row);
    EXPECT_EQ(name, r.outName);
    EXPECT_EQ(U::UnitsConvert(r.unit, 2.0), r.factor * 2.0);
    const double back = U::UnitsConvert_US_To_Metric(r.factor * 2.0, r.unit);
    EXPECT_NEAR(back, 2.0, 2e-7);  // row 1 multiplies by 0.3048, not 1/3.28084
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
    EXPECT_EQ(U::UnitsConvert_Size(3.0, r.unit), r.factor * 3.0);
  }
  EXPECT_EQ(U::UnitsConvertFind_Size(5.0, 23), 5.0);  // "HPA" to "inHG" only by index
  EXPECT_EQ(U::GetFromRow_Size("HPA", nullptr, 21), 23);
  EXPECT_EQ(U::SizeTable().size(), 36u);
}

TEST(UnitsConvert, TheFirstMatchingRowWinsAndExplicitNamesReachTheOthers) {
  std::string name;
  EXPECT_EQ(U::UnitsConvert("M", 1.0, &name), 3.28084);
  EXPECT_EQ(name, "ft");
  EXPECT_EQ(U::UnitsConvert("metres", 1.0, &name), 3.28084);
  EXPECT_EQ(name, "feet");
  EXPECT_EQ(U::UnitsConvert("m;in", 1.0, &name), 39.370079);
  EXPECT_EQ(name, "in");
  EXPECT_EQ(U::UnitsFind("litres"), 15);
  EXPECT_EQ(U::GetFromRow("litres", &name, 16), 16);
  EXPECT_EQ(name, "UKgal");
  EXPECT_EQ(U::GetFromRow("litres", nullptr, 17), -1);
  EXPECT_EQ(U::UnitsFind("km/h", &name), 5);
  EXPECT_EQ(name, "mph");  // the to set repeats its one name
  EXPECT_EQ(U::UnitsFind("cm", &name), 7);
  EXPECT_EQ(name, "in");
}

TEST(UnitsConvert, TheDimensionlessRowMatchesOnlyWhenNoNameIsWanted) {
  std::string name = "untouched";
  EXPECT_EQ(U::UnitsFind("-"), 0);
  EXPECT_EQ(U::UnitsFind("-", &name), -1);
  EXPECT_EQ(U::UnitsFind("1/DAY"), 0);
  EXPECT_EQ(U::UnitsFind_Size("hrs"), 0);
  EXPECT_EQ(U::UnitsFind_Size("hrs", &name), -1);
  EXPECT_EQ(U::UnitsConvert("%", 7.0, &name), 7.0);
  EXPECT_EQ(name, "untouched");
  EXPECT_EQ(U::InFromUnits("sec", nullptr, 0), 1);
  EXPECT_EQ(U::InFromUnits("sec", &name, 0), 0);
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
  EXPECT_EQ(U::GetFromRow("m", nullptr, 24), -1);
  EXPECT_EQ(U::GetFromRow("m/m", nullptr, 23), 23);
  EXPECT_EQ(U::GetFromRow_Size("grads", nullptr, 36), -1);
  EXPECT_EQ(U::GetFromRow("m", nullptr, -5), 1);
  EXPECT_EQ(U::InFromUnits("m", nullptr, 24), 0);
  EXPECT_EQ(U::InFromUnits_Size("km", nullptr, -1), 0);
  EXPECT_EQ(U::UnitsConvertFind(8.0, -1), 8.0);
  EXPECT_EQ(U::UnitsConvertFind(8.0, 24), 8.0);
  EXPECT_EQ(U::UnitsConvertFind_Invert(8.0, 99), 8.0);
  EXPECT_EQ(U::UnitsConvertFind_Size(8.0, 36), 8.0);
}

TEST(UnitsConvert, ReverseConversionFollowsTheHostSettings) {
  {
    UnitsHost unset(std::nullopt);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(10.0, "m"), 10.0);
  }
  {
    UnitsHost us(0);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(10.0, "m"), 10.0 * 0.3048);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(2.47105, "ha"), 1.0);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(6.0, "unknown"), 6.0);
  }
  {
    UnitsHost metric(1);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(10.0, "m"), 10.0);
  }
  {
    UnitsHost tuflow(0, true);
    EXPECT_EQ(U::UnitsConvert_US_To_Metric(10.0, "m"), 10.0);
  }
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
  EXPECT_EQ(U::UnitsConvert("m", -inf), -inf);
  EXPECT_EQ(U::UnitsConvert_US_To_Metric(inf, "c"), inf);
  EXPECT_TRUE(std::isnan(U::UnitsConvert_Size(std::nan(""), "km")));
  EXPECT_EQ(U::HandleTuflowUnitsConversion(inf, "m"), inf);
  EXPECT_EQ(U::HandleRainflowUnitsInTuflowConversion(3, 1.5, "mm"), 1.5);
}
