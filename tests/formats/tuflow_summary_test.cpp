#include <gtest/gtest.h>

#include <filesystem>

#include "hy_util/formats/tuflow_summary.h"
#include "support/temp_dir.h"

namespace {

using HU_LIB::HU_TuFlowSummary;

std::unique_ptr<HU_TuFlowSummary> LoadText(const hytest::TempDir& dir, const std::string& text) {
  return HU_TuFlowSummary::Load(dir.Write("run.tsum", text));
}

std::vector<double> List(const HU_TuFlowSummary& s,
                         void (HU_TuFlowSummary::*getter)(CHU_CopyableArray<double>&) const) {
  CHU_CopyableArray<double> values{99.0};  // the getter clears what was there
  (s.*getter)(values);
  return {values.begin(), values.end()};
}

template <class... T>
std::vector<double> Values(T... values) {
  return {static_cast<double>(values)...};
}

const char* const kFullSummary =
    "! TUFLOW run summary\n"
    "TUFLOW Control File == C:\\models\\runs\\M01_5m_001.tcf\n"
    "TUFLOW Log File == C:\\models\\runs\\log\\M01_5m_001.tlf\n"
    "TUFLOW Build == 2020-10-AB-iSP-w64\n"
    "Simulation Status == Running\n"
    "Simulation Time [h] == 1.25\n"
    "Percentage Complete (%) == 42\n"
    "Simulation Start Time [h] == 0\n"
    "Simulation End Time [h] == 3\n"
    "Computational Steps == 4500\n"
    "CPU Time [h] == 1.5\n"
    "Clock Time [h] == 0.75\n"
    "Approximate Clock Time Remaining [h] == 1.0e0\n"
    "1D Negative Depths == 2\n"
    "2D Negative Depths == 7\n"
    "WARNINGs Prior to Simulation == 3\n"
    "WARNINGs During Simulation == 4\n"
    "CHECKs Prior to Simulation == 5\n"
    "CHECKs During Simulation == 6\n"
    "Summary Output Interval [s] == 300\n"
    "Number Summary Values == 3\n"
    "Flow In Values [m3/s] == 1.0, 2.5,,3\n"
    "Flow Out Values [m3/s] == 0.5,1.5,2.5\n"
    "Change in Volume Values [m3/s] == 0.5, 1, 0.5\n"
    "Cumulative Mass Error Values [%] == -0.1, 0.05, 0.2\n"
    "Number 1D Nodes == 53\n"
    "Number 1D Channels == 54\n"
    "Number 2D Domains == 2\n"
    "2D Domain Cell Sizes [m] == 5, 2.5\n"
    "2D Domain Timesteps [s] == 2, 1, 0.5\n"
    "Start Map Output [h] == 0.5\n"
    "Map Output Interval [s] == 900\n"
    "Number Map Outputs == 11\n";

TEST(TuFlowSummaryTest, EveryKeyReachesItsGetter) {
  hytest::TempDir dir;
  const auto s = LoadText(dir, kFullSummary);
  ASSERT_TRUE(s);
  EXPECT_EQ((std::vector<std::string>{s->GetControlFile(), s->GetLogFile(), s->GetBuildVersion(), s->GetSimulationStatus()}),
            (std::vector<std::string>{"C:\\models\\runs\\M01_5m_001.tcf", "C:\\models\\runs\\log\\M01_5m_001.tlf",
                                      "2020-10-AB-iSP-w64", "Running"}));
  // "(%)" and "[h]" are dropped from the keys.
  EXPECT_EQ(Values(s->GetSimulationTime(), s->GetPercentComplete(), s->GetSimStartTime(), s->GetSimEndTime(),
                   s->GetComputationalSteps(), s->GetCPUTime(), s->GetClockTime(), s->GetRemainingTime(),
                   s->Get1DNegativeDepths(), s->Get2DNegativeDepths(), s->GetWarningsPriorToSim(),
                   s->GetWarningsDuringSim(), s->GetChecksPriorToSim(), s->GetChecksDuringSim(),
                   s->GetSummaryOutputInterval(), s->GetNumOfSummaryValues(), s->GetNum1DNodes(), s->GetNum1DChannels(),
                   s->GetNum2DDomains(), s->GetStartMapOutput(), s->GetMapOutputInterval(), s->GetNumberOfMapOutputs()),
            (std::vector<double>{1.25, 42, 0, 3, 4500, 1.5, 0.75, 1.0, 2, 7, 3, 4, 5, 6, 300, 3, 53, 54, 2, 0.5, 900, 11}));
  EXPECT_EQ(List(*s, &HU_TuFlowSummary::GetFlowInValuesMetric), (std::vector<double>{1.0, 2.5, 3}));  // empty piece dropped
  EXPECT_EQ(List(*s, &HU_TuFlowSummary::GetFlowOutValuesMetric), (std::vector<double>{0.5, 1.5, 2.5}));
  EXPECT_EQ(List(*s, &HU_TuFlowSummary::GetChangeInVolumeValuesMetric), (std::vector<double>{0.5, 1, 0.5}));
  EXPECT_EQ(List(*s, &HU_TuFlowSummary::GetCulumativeMassErrorValues), (std::vector<double>{-0.1, 0.05, 0.2}));
  CHU_CopyableArray<HU_LIB::SingleDomainSummary> domains;
  s->GetDomainSummaries(domains);
  ASSERT_EQ(domains.size(), 3u);  // the longer list decides; the missing cell size is 0
  EXPECT_EQ((std::vector<double>{domains[0].cellSize, domains[1].cellSize, domains[2].cellSize, domains[2].timestep}),
            (std::vector<double>{5, 2.5, 0, 0.5}));
}

TEST(TuFlowSummaryTest, OnlyTwoFieldLinesWithAKnownKeyCount) {
  hytest::TempDir dir;
  const auto s = LoadText(dir,
                          "! Percentage Complete == 10\n"        // a comment
                          "   ! CPU Time == 10\n"                // a comment after blanks
                          "Clock Time == 1 == 2\n"               // three fields
                          "Simulation Time 5\n"                  // no separator
                          "[h] == 6\n"                           // nothing left of the key
                          "Unknown Key == 7\n"
                          "percentage COMPLETE == 12.5%\n"       // letter case is not compared
                          "Simulation Status = Finished ! ok\n"  // one '=' separates too; '!' inside is text
                          "Number Map Outputs == 12.9\n"         // read as a decimal int
                          "Computational Steps == many\n"        // no number: 0
                          "Flow In Values == 4\n"                // one piece
                          "Flow Out Values == , ,\n");           // no piece
  ASSERT_TRUE(s);
  EXPECT_EQ(Values(s->GetCPUTime(), s->GetClockTime(), s->GetSimulationTime(), s->GetPercentComplete(),
                   s->GetNumberOfMapOutputs(), s->GetComputationalSteps()),
            (std::vector<double>{0, 0, 0, 12.5, 12, 0}));
  EXPECT_EQ(s->GetSimulationStatus(), "Finished ! ok");
  EXPECT_EQ(List(*s, &HU_TuFlowSummary::GetFlowInValuesMetric), (std::vector<double>{4}));
  EXPECT_TRUE(List(*s, &HU_TuFlowSummary::GetFlowOutValuesMetric).empty());
}

TEST(TuFlowSummaryTest, TheLastValueOfARepeatedKeyWins) {
  hytest::TempDir dir;
  const auto s = LoadText(dir,
                          "Percentage Complete == 10\nPercentage Complete [%] == 20\n"
                          "Flow In Values == 1,2,3\nFlow In Values == 9\n"
                          "Simulation Status == Running\nSimulation Status == Finished\n");
  ASSERT_TRUE(s);
  EXPECT_EQ(s->GetPercentComplete(), 20);
  EXPECT_EQ(List(*s, &HU_TuFlowSummary::GetFlowInValuesMetric), (std::vector<double>{9}));
  EXPECT_EQ(s->GetSimulationStatus(), "Finished");
}

// The engine rewrites the file while it runs, so a reader may see it cut anywhere.
// Whatever the cut, the complete lines before it give their values, a line cut
// inside its value gives what was written so far, and nothing fails.
TEST(TuFlowSummaryTest, AFileCutAnywhereGivesTheValuesOfItsCompleteLines) {
  hytest::TempDir dir;
  const std::string full =
      "Simulation Status == Running\nPercentage Complete (%) == 42\nFlow In Values == 1.5,2.5\n"
      "Number Map Outputs == 11\n";
  for (std::size_t cut = 0; cut <= full.size(); ++cut) {
    const std::string part = full.substr(0, cut);
    const auto s = LoadText(dir, part);
    ASSERT_TRUE(s) << cut;
    const bool complete = part.find("== 42") != std::string::npos;
    if (complete) EXPECT_EQ(s->GetPercentComplete(), 42) << cut;
    else EXPECT_TRUE(s->GetPercentComplete() == 0 || s->GetPercentComplete() == 4) << cut;
    const auto flows = List(*s, &HU_TuFlowSummary::GetFlowInValuesMetric);
    if (part.find(",2.5") != std::string::npos) {
      EXPECT_EQ(flows, (std::vector<double>{1.5, 2.5}));
    } else {
      EXPECT_LE(flows.size(), 2u) << cut;
    }
  }
}

TEST(TuFlowSummaryTest, MissingFilesGiveNoSummary) {
  hytest::TempDir dir;
  EXPECT_FALSE(HU_TuFlowSummary::Load(dir.File("absent.tsum")));
  EXPECT_FALSE(HU_TuFlowSummary::Load(dir.path().string()));
  EXPECT_FALSE(HU_TuFlowSummary::Load(""));
  const auto empty = LoadText(dir, "");
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->GetSimulationStatus(), "");
}

TEST(TuFlowSummaryTest, CorpusSummariesRead) {
  const std::string tpc = HY_CORPUS_DIR "/runs/pytuflow_EG14_001.tpc";
  if (!std::filesystem::exists(tpc)) GTEST_SKIP() << "no sample summaries in " HY_CORPUS_DIR "/runs";
  const auto s = HU_TuFlowSummary::Load(tpc);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->GetNum1DNodes(), 53);
  EXPECT_EQ(s->GetNum1DChannels(), 54);
  const auto info = HU_TuFlowSummary::Load(HY_CORPUS_DIR "/runs/pytuflow_M04_5m_001_1d.info");
  ASSERT_TRUE(info);
  EXPECT_EQ(info->GetNum1DNodes(), 0);  // "Number Nodes" is another key
}

}  // namespace
