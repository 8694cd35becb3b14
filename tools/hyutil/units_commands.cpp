// "hyutil units convert" and "hyutil units list": the unit tables from the command
// line. convert looks a unit up as a file or column heading names it and converts
// one value, metric to US (main table) or to the base unit (--size); --reverse goes
// US to metric whatever the host's "Units" says.

#include <nlohmann/json.hpp>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

#include "commands.h"
#include "hy_util/units/units_convert.h"
#include "number_text.h"

namespace hyutil {
namespace {

struct ConvertOptions {
  std::string value;
  std::string unit;
  bool reverse = false;
  bool size = false;
  bool json = false;
};

struct Conversion {
  int row = -1;
  double result = 0.0;
  std::string fromUnit;  // unit of the value given
  std::string toUnit;    // unit of the result
};

std::span<const UnitsRec> Table(bool size) {
  return size ? CHU_UnitsConvert::SizeTable() : CHU_UnitsConvert::MainTable();
}

int Find(const std::string& unit, bool size, std::string* toName) {
  return size ? CHU_UnitsConvert::UnitsFind_Size(unit, toName)
              : CHU_UnitsConvert::UnitsFind(unit, toName);
}

// The row and both unit names. A dimensionless name (row 0) matches only when no
// target name is asked for, so it is looked up a second time without one.
Conversion Convert(const ConvertOptions& o, double value) {
  Conversion c;
  std::string toName;
  c.row = Find(o.unit, o.size, &toName);
  if (c.row < 0) c.row = Find(o.unit, o.size, nullptr);
  if (c.row < 0) throw InputError{"unknown unit '" + Printable(o.unit) + "'"};
  const UnitsRec& rec = Table(o.size)[static_cast<std::size_t>(c.row)];
  c.result = o.reverse ? CHU_UnitsConvert::Convert_Invert(value, rec)
                       : CHU_UnitsConvert::Convert(value, rec);
  c.fromUnit = o.reverse ? toName : o.unit;
  c.toUnit = o.reverse ? o.unit : toName;
  return c;
}

const char* Direction(const ConvertOptions& o) {
  if (o.size) return o.reverse ? "base unit to size" : "size to base unit";
  return o.reverse ? "US to metric" : "metric to US";
}

int RunConvert(const ConvertOptions& o) {
  double value = 0.0;
  if (!ParseDouble(o.value, value)) {
    std::fprintf(stderr, "hyutil: '%s' is not a number\n", Printable(o.value).c_str());
    return kExitUsage;
  }
  const Conversion c = Convert(o, value);
  const char* table = o.size ? "size" : "main";
  if (o.json) {
    nlohmann::ordered_json out = {{"value", value},          {"unit", c.fromUnit},
                                  {"result", c.result},      {"result_unit", c.toUnit},
                                  {"direction", Direction(o)}, {"table", table},
                                  {"row", c.row}};
    std::cout << out.dump(2) << '\n';
    return kExitOk;
  }
  std::string line = ShortestText(c.result);
  if (!c.toUnit.empty()) line += " " + c.toUnit;
  std::printf("%s\n", line.c_str());
  std::printf("(%s, %s table row %d%s)\n", Direction(o), table, c.row,
              c.row == 0 ? ", dimensionless: unchanged" : "");
  return kExitOk;
}

int RunList(bool size, bool json) {
  const std::span<const UnitsRec> rows = Table(size);
  if (json) {
    nlohmann::ordered_json out = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const UnitsRec& r = rows[i];
      out.push_back({{"row", i},
                     {"from", r.fromSet},
                     {"to", r.toSet},
                     {"factor", r.factor},
                     {"inverse", r.inverse == -1 ? nlohmann::ordered_json(nullptr) : nlohmann::ordered_json(r.inverse)},
                     {"special", r.special}});
    }
    std::cout << out.dump(2) << '\n';
    return kExitOk;
  }
  std::printf("%-4s %-52s %-18s %-20s %s\n", "row", "from", "to", "factor", "inverse");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const UnitsRec& r = rows[i];
    const std::string factor = *r.special ? r.special : ShortestText(r.factor);
    const std::string inverse = r.inverse == -1 ? "1/factor" : ShortestText(r.inverse);
    std::printf("%-4zu %-52s %-18s %-20s %s\n", i, r.fromSet, r.toSet, factor.c_str(), inverse.c_str());
  }
  return kExitOk;
}

}  // namespace

void AddUnitsCommands(CLI::App& app, int& exitCode) {
  CLI::App* units = app.add_subcommand("units", "Convert values between metric, US and base units");
  units->require_subcommand(1);

  auto convert = std::make_shared<ConvertOptions>();
  CLI::App* c = units->add_subcommand("convert", "Convert one value by unit name");
  c->add_option("VALUE", convert->value, "The value")->required();
  c->add_option("UNIT", convert->unit, "Unit name as a file or column heading writes it (m, cms, ha, ...)")
      ->required();
  c->add_flag("--reverse", convert->reverse, "US to metric (or base unit back to the size unit)");
  c->add_flag("--size", convert->size, "Use the size table (sizes in assorted units to a base unit)");
  c->add_flag("--json", convert->json, "JSON output");
  c->callback([convert, &exitCode] {
    exitCode = RunReportingInputErrors([&] { return RunConvert(*convert); });
  });

  struct ListOptions {
    bool size = false, json = false;
  };
  auto list = std::make_shared<ListOptions>();
  CLI::App* l = units->add_subcommand("list", "The rows of a unit table with their factors");
  l->add_flag("--size", list->size, "The size table instead of the metric-to-US table");
  l->add_flag("--json", list->json, "JSON output");
  l->callback([list, &exitCode] { exitCode = RunList(list->size, list->json); });
}

}  // namespace hyutil
