// The "hyutil mesh" and "hyutil run" commands run as a user runs them.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/run_hyutil.h"

#ifdef HYUTIL_PATH

namespace {

using hytest::ToolRun;
constexpr auto Hyutil = hytest::RunHyutil;

const char* const kMesh =
    "MESH2D 0 0 0 1 1 2 2 0.5\nND 1 0 0 1\nND 2 2 0 2\nND 3 0 2 3\nND 4 2 2 4\n"
    "E4Q 1 1 2 4 3 1\nE3T 2 1 2 3\nNS 1 2 -3\nND 2000000000 0 0 0\n";

TEST(ModelToolTest, MeshCommandsReportTheTablesAndNameRefusedLines) {
  hytest::TempDir dir;
  const std::string mesh = dir.Write("m.2dm", kMesh);
  const ToolRun info = Hyutil(dir, "mesh info --json " + mesh);
  ASSERT_EQ(info.status, 0) << info.err;
  const auto j = nlohmann::json::parse(info.out);
  EXPECT_EQ(j["nodes"], 4);
  EXPECT_EQ(j["cells"]["table"], 2);
  EXPECT_EQ(j["cells"]["used"], 1);
  EXPECT_EQ(j["triangles"], 1);
  EXPECT_EQ(j["skipped_cards"]["NS"], 1);
  EXPECT_EQ(j["elevation"]["min"], 0.5);  // node 1 lowered by the triangle
  EXPECT_NE(info.err.find("line 9: ND id 2000000000"), std::string::npos) << info.err;

  const ToolRun cells = Hyutil(dir, "mesh cells --csv " + mesh);
  EXPECT_EQ(cells.out, "index,id,node1,node2,node3,node4\n1,1,0,1,3,2\n");
  const ToolRun nodes = Hyutil(dir, "mesh nodes --json " + mesh);
  EXPECT_EQ(nlohmann::json::parse(nodes.out)[3]["z"], 4);

  const ToolRun none = Hyutil(dir, "mesh info " + dir.Write("e.2dm", "E4Q 1 1 2 3 4\n"));
  EXPECT_EQ(none.status, 1);
  EXPECT_NE(none.err.find("no MESH2D or ND card"), std::string::npos) << none.err;
  EXPECT_EQ(Hyutil(dir, "mesh info " + dir.File("absent.2dm")).status, 1);
}

TEST(ModelToolTest, RunReportsTheSummaryAndPlotsItsMassBalance) {
  hytest::TempDir dir;
  const std::string run = dir.Write("run.txt",
                                    "Simulation Status == Finished\nPercentage Complete [%] == 100\n"
                                    "Summary Output Interval [s] == 600\n"
                                    "Flow In Values == 1,2,3\nFlow Out Values == 0.5,1.5,2.5\n"
                                    "Cumulative Mass Error Values == 0,0.1,-0.05\n");
  const ToolRun json = Hyutil(dir, "run --json " + run);
  ASSERT_EQ(json.status, 0) << json.err;
  const auto j = nlohmann::json::parse(json.out);
  EXPECT_EQ(j["status"], "Finished");
  EXPECT_EQ(j["summary"]["cumulative_mass_error"], (std::vector<double>{0, 0.1, -0.05}));
  const ToolRun text = Hyutil(dir, "run " + run);
  EXPECT_NE(text.out.find("final cumulative -0.05 %"), std::string::npos) << text.out;
  // A finished run is not watched for long.
  EXPECT_EQ(Hyutil(dir, "run --watch --interval 0.05 " + run).status, 0);

  const ToolRun svg = Hyutil(dir, "run " + run + " --svg " + dir.File("mb.svg"));
  ASSERT_EQ(svg.status, 0) << svg.err;
  const std::string picture = hytest::ReadFileBytes(dir.File("mb.svg"));
  EXPECT_EQ(picture.rfind("<svg", 0), 0u);
  EXPECT_NE(picture.find("Cumulative mass error (%)"), std::string::npos);
  EXPECT_NE(picture.find("Time (h), one value every 600 s"), std::string::npos);
  EXPECT_EQ(Hyutil(dir, "run " + dir.File("absent.txt")).status, 1);
}

}  // namespace

#endif
