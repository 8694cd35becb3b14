// "hyutil units" run as a user runs it.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/run_hyutil.h"

#ifdef HYUTIL_PATH

namespace {

struct UnitsToolTest : ::testing::Test {
  hytest::TempDir dir;
  hytest::ToolRun Run(const std::string& args) { return hytest::RunHyutil(dir, args); }
};

}  // namespace

TEST_F(UnitsToolTest, ConvertStatesTheResultTheUnitAndTheDirection) {
  const hytest::ToolRun forward = Run("units convert 1 M");
  EXPECT_EQ(forward.status, 0) << forward.err;
  EXPECT_EQ(forward.out, "3.28084 ft\n(metric to US, main table row 1)\n");
  EXPECT_EQ(Run("units convert 5 hrs").out, "5\n(metric to US, main table row 0, dimensionless: unchanged)\n");
  EXPECT_EQ(Run("units convert 1 HPA --size").out, "0.750061561303 mmHG\n(size to base unit, size table row 20)\n");

  const auto reverse = nlohmann::json::parse(Run("units convert --reverse --json 10 'm;ft'").out);
  EXPECT_EQ(reverse["result"], 3.048);  // row 1's own inverse, so exactly 10 x 0.3048
  EXPECT_EQ(std::tie(reverse["unit"], reverse["result_unit"], reverse["direction"], reverse["row"]),
            std::make_tuple("ft", "m;ft", "US to metric", 1));
}

TEST_F(UnitsToolTest, UnknownUnitsAndBadValuesAreReportedWhateverTheirBytes) {
  const hytest::ToolRun unknown = Run("units convert 1 ' m'");
  EXPECT_EQ(unknown.status, 1);
  EXPECT_EQ(unknown.err, "hyutil: unknown unit ' m'\n");
  EXPECT_EQ(Run("units convert 1 \"$(printf '\\302\\265m\\t')\"").err, "hyutil: unknown unit '\\xC2\\xB5m\\x09'\n");
  const hytest::ToolRun huge = Run("units convert 1 " + std::string(100000, 'q'));
  EXPECT_EQ(huge.status, 1);
  EXPECT_EQ(huge.err, "hyutil: unknown unit '" + std::string(80, 'q') + "...'\n");
  const hytest::ToolRun bad = Run("units convert 1x m");
  EXPECT_EQ(bad.status, 2);
  EXPECT_EQ(bad.err, "hyutil: '1x' is not a number\n");
  EXPECT_EQ(Run("units convert -- -inf km").out, "-inf mi\n(metric to US, main table row 3)\n");
}

TEST_F(UnitsToolTest, ListShowsEveryRowWithItsFactorAndInverse) {
  const auto main = nlohmann::json::parse(Run("units list --json").out);
  const auto size = nlohmann::json::parse(Run("units list --size --json").out);
  ASSERT_EQ(std::pair(main.size(), size.size()), std::pair(std::size_t{24}, std::size_t{36}));
  EXPECT_EQ(std::tie(main[1]["from"], main[1]["inverse"]), std::make_tuple("m,metres,m;ft", 0.3048));
  EXPECT_TRUE(main[2]["inverse"].is_null());
  EXPECT_EQ(main[19]["special"], "TempConvert");
  EXPECT_EQ(size[23]["to"], "inHG");
  const std::string text = Run("units list").out;
  EXPECT_NE(text.find("\n16   litres"), std::string::npos);
}

#endif  // HYUTIL_PATH
