// "hyutil curve" run as a user runs it: values, table checks with line numbers,
// slopes and the SVG chart.
#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <nlohmann/json.hpp>

#include "hy_util/geometry/cubic_spline.h"
#include "support/run_hyutil.h"

#ifdef HYUTIL_PATH

namespace {

struct CurveToolTest : ::testing::Test {
  hytest::TempDir dir;
  std::string table = dir.Write("rating.csv", "# gauge 12\nstage,flow\n0.5, 0\n1.0, 2.5\n2.0, 9\n3.5, 40\n");
  hytest::ToolRun Run(const std::string& args) { return hytest::RunHyutil(dir, args); }
};

}  // namespace

TEST_F(CurveToolTest, ValuesAreTheLibrarysSplineAtTheGivenOrSampledX) {
  const double xs[] = {0.5, 1.0, 2.0, 3.5}, ys[] = {0, 2.5, 9, 40};
  const CHU_CubicSpline2D natural(4, xs, ys, CHU_CubicSpline2D::ST_NATURAL);
  const auto json = nlohmann::json::parse(Run("curve " + table + " --json --at 1.7 -1 4").out);
  EXPECT_EQ(std::tie(json["x_name"], json["y_name"], json["points"]), std::make_tuple("stage", "flow", 4));
  EXPECT_EQ(json["values"][0]["y"], natural.ComputeY(1.7));
  EXPECT_EQ(json["values"][1]["y"], natural.ComputeY(-1));  // extrapolated
  EXPECT_EQ(Run("curve " + table + " --samples 3 --csv").out, "stage,flow\n0.5,0\n2,9\n3.5,40\n");
  EXPECT_EQ(Run("curve " + table + " --samples 1").out, "stage\tflow\n0.5\t0\n");
}

TEST_F(CurveToolTest, BadTablesNameTheFileAndLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"x y\n1 2\n2 nan\n", "t.txt:3: x and y must be finite numbers, found 2, nan"},
      {"1 2\n2 two\n", "t.txt:2: 'two' is not a number"},
      {"1, 2\n\n# note\n1, 5\n", "t.txt:4: x 1 repeats the x of line 1; x must increase"},
      {"1 2\n3 4\n2 5\n", "t.txt:3: x 2 is below the x of line 2; x must increase"},
      {"1 2 3\n", "t.txt:1: expected two columns (x, y), found 3"},
      {"x,y\n4,4\n", "t.txt: a curve needs at least two points, found 1"},
      {"", "t.txt: a curve needs at least two points, found 0"},
  };
  for (const auto& [content, message] : cases) {
    const std::string path = dir.Write("t.txt", content);
    const hytest::ToolRun run = Run("curve " + path + " --at 1");
    EXPECT_EQ(run.status, 1) << content;
    EXPECT_EQ(run.err, "hyutil: " + dir.File("") + message + "\n") << content;
  }
  EXPECT_EQ(Run("curve " + dir.File("missing.csv") + " --at 1").status, 1);
}

TEST_F(CurveToolTest, SlopesBindTheConstrainedTypesAndAreCheckedAgainstTheTable) {
  const std::string plain = Run("curve " + table + " --type constrained --at 1.5").out;
  const hytest::ToolRun sloped = Run("curve " + table + " --type constrained --slope 1=10 --at 1.5");
  EXPECT_EQ(sloped.status, 0) << sloped.err;
  EXPECT_NE(sloped.out, plain);
  const hytest::ToolRun outside = Run("curve " + table + " --type constrained --slope 4=1 --at 1");
  EXPECT_EQ(outside.status, 2);
  EXPECT_NE(outside.err.find("0 to 3"), std::string::npos);
  EXPECT_EQ(Run("curve " + table + " --slope x=1 --at 1").status, 2);
  EXPECT_NE(Run("curve " + table + " --slope 1=1 --at 1").err.find("natural spline ignores"), std::string::npos);
  EXPECT_EQ(Run("curve " + table).status, 2);  // nothing asked for
}

TEST_F(CurveToolTest, TheChartIsWellFormedSvgWithEveryTablePoint) {
  const std::string svg = dir.File("c.svg");
  const hytest::ToolRun run = Run("curve " + table + " --type monotone --svg " + svg);
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "");
  boost::property_tree::ptree doc;
  ASSERT_NO_THROW(boost::property_tree::read_xml(svg, doc));
  int circles = 0, paths = 0;
  for (const auto& [name, node] : doc.get_child("svg")) circles += name == "circle", paths += name == "path";
  EXPECT_EQ(std::pair(circles, paths), std::pair(4 + 1, 1));  // table points and the legend's marker
  const std::string text = hytest::ReadFileBytes(svg);
  for (const char* label : {">stage<", ">flow<", "rating.csv: monotone cubic spline"})
    EXPECT_NE(text.find(label), std::string::npos) << label;
}

#endif  // HYUTIL_PATH
