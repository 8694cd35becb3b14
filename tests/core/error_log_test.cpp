#include "hy_util/core/error_log.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "hy_util/core/string_manager.h"
#include "hy_util/platform/process.h"
#include "support/recording_application.h"
#include "support/temp_dir.h"

namespace {

// Opens the protected reporting interface that derived readers and writers use.
class TestLog : public CHU_ErrorLog {
 public:
  using CHU_ErrorLog::ExOutError;
  using CHU_ErrorLog::ExSetErrorLevel;
  using CHU_ErrorLog::ExSetErrorString;
  using CHU_ErrorLog::ExSetOutToFile;
  using CHU_ErrorLog::ExSetPrefix;
  using CHU_ErrorLog::GetErrType;
};

class ErrorLogTest : public ::testing::Test {
 protected:
  ErrorLogTest() { log.ExSetFileName(dir.File("ErrorLog.txt")); }
  std::string Contents() const { return hytest::ReadFileBytes(log.ExGetFileName()); }

  hytest::RecordingApplication app;
  hytest::TempDir dir;
  TestLog log;
};

}  // namespace

TEST_F(ErrorLogTest, RunWithOneErrorWritesTitleItemsAndFailureSummary) {
  ASSERT_EQ(log.ExOpenErrorLog("Export to MIF"), 1);
  EXPECT_TRUE(log.IsErrorFileOpen());
  log.ExError("Line 12", "bad value");
  log.ExWarning("", "no projection");
  EXPECT_EQ(log.ExCloseErrorLog("Export to MIF"), 0);
  EXPECT_FALSE(log.IsErrorFileOpen());
  EXPECT_EQ(Contents(),
            "Export to MIF\n\n"
            "ERROR: Line 12: bad value\n"
            "WARNING: no projection\n"
            "\n1 Error(s) and 1 Warning(s) were encountered\n"
            "Export to MIF Was NOT Completed Successfully\n");
  EXPECT_TRUE(app.messages.empty());
}

TEST_F(ErrorLogTest, WarningsAloneEndSuccessfullyUnderTheStartAndEndTitles) {
  ASSERT_EQ(log.ExStartErrorLog(), 1);
  log.ExWarning("a", "w1");
  log.ExErrorGen(-1, "b", "%d cells of %s", 3, "grid");
  EXPECT_EQ(log.ExEndErrorLog(), 1);
  EXPECT_EQ(log.ExGetWarningCount(), 2);
  EXPECT_EQ(Contents(),
            "Data Generation Diagnostics\n\n"
            "WARNING: a: w1\n"
            "NOTE: b: 3 cells of grid\n"
            "\n0 Error(s) and 2 Warning(s) were encountered\n"
            "Data Export Completed Successfully\n");
}

TEST_F(ErrorLogTest, NotesAreWrittenAndCountedAsErrors) {
  log.ExOpenErrorLog("T");
  log.ExNotes("n", "just so you know");
  EXPECT_EQ(log.ExGetErrorCount(), 1);
  EXPECT_EQ(log.ExCloseErrorLog("T"), 0);
  EXPECT_NE(Contents().find("ERROR: n: just so you know\n"), std::string::npos);
  EXPECT_NE(Contents().find("T Was NOT Completed Successfully\n"), std::string::npos);
}

TEST_F(ErrorLogTest, PrefixStandsBeforeTheIdentifier) {
  log.ExOpenErrorLog("T");
  log.ExSetPrefix("Layer 2");
  log.ExError("id", "x");
  log.ExError("", "y");
  log.ExCloseErrorLog("T");
  EXPECT_NE(Contents().find("ERROR: Layer 2: id: x\nERROR: Layer 2: y\n"), std::string::npos);
}

TEST_F(ErrorLogTest, StoredErrorStringIsWrittenOnceThenUnknownError) {
  log.ExOpenErrorLog("T");
  log.ExSetErrorString("Cannot read header");
  log.ExOutError("a");
  log.ExOutError("b");
  log.ExSetErrorLevel(0);
  log.ExSetErrorString("Only a warning");
  log.ExOutError("c");
  log.ExOutError("d");
  log.ExCloseErrorLog("T");
  EXPECT_NE(Contents().find("ERROR: a: Cannot read header\n"
                            "ERROR: b: Unknown Error\n"
                            "WARNING: c: Only a warning\n"
                            "ERROR: d: Unknown Error\n"),
            std::string::npos);
  EXPECT_EQ(log.ExGetErrorCount(), 3);
}

TEST_F(ErrorLogTest, ReportsWhileClosedAreIgnored) {
  log.ExError("id", "lost");
  log.ExErrorGen(-1, "id", "lost");
  EXPECT_EQ(log.ExGetErrorCount() + log.ExGetWarningCount(), 0);
  EXPECT_FALSE(std::filesystem::exists(log.ExGetFileName()));
  EXPECT_TRUE(app.messages.empty());
  EXPECT_EQ(log.ExShowErrors(), 1);  // nothing to show
}

TEST_F(ErrorLogTest, ItemsWithoutAFileAreCountedAndShownInABox) {
  std::string word;
  EXPECT_EQ(log.GetErrType(1, "Row %d", word), 0);
  EXPECT_EQ(word, "ERROR");
  log.ExSetOutToFile(0);
  EXPECT_EQ(log.GetErrType(0, "Row %d", word), 0);
  ASSERT_EQ(app.messages.size(), 2u);
  EXPECT_EQ(app.messages[0].text, "ERROR: Export Error File not opened yet");
  EXPECT_EQ(app.messages[1].text, "WARNINGRow %d");
  EXPECT_EQ(log.ExGetErrorCount() * 10 + log.ExGetWarningCount(), 11);
}

TEST_F(ErrorLogTest, OpenFailureShowsAPlainBoxAndKeepsTheLogClosed) {
  log.ExSetFileName(dir.File("missing/ErrorLog.txt"));
  EXPECT_EQ(log.ExOpenErrorLog("T"), 0);
  EXPECT_FALSE(log.IsErrorFileOpen());
  ASSERT_EQ(app.messages.size(), 1u);
  EXPECT_EQ(app.messages[0].text, "ExOpenErrorLog: file open error");
  EXPECT_EQ(app.messages[0].kind, HU_MessageKind::Ok);
}

TEST_F(ErrorLogTest, ReopeningTruncatesTheFileAndResetsCounts) {
  log.ExOpenErrorLog("First");
  log.ExError("", "e");
  log.ExCloseErrorLog("First");
  log.ExOpenErrorLog("Second");
  EXPECT_EQ(log.ExGetErrorCount(), 0);
  log.ExCloseErrorLog("Second");
  EXPECT_EQ(Contents().rfind("Second\n\n", 0), 0u);
  EXPECT_EQ(Contents().find("First"), std::string::npos);
}

TEST_F(ErrorLogTest, ShowErrorsNeedsAnEditorSetting) {
  log.ExOpenErrorLog("T");
  log.ExWarning("", "w");
  log.ExCloseErrorLog("T");
  EXPECT_EQ(log.ExShowErrors(), 0);
  app.SetProfileString("main", "editor", "   ");
  EXPECT_EQ(log.ExShowErrors(), 0);
  EXPECT_TRUE(app.messages.empty());
}

TEST_F(ErrorLogTest, MissingEditorIsReportedInAnErrorBox) {
  log.ExOpenErrorLog("T");
  log.ExError("", "e");
  log.ExCloseErrorLog("T");
  app.SetProfileString("main", "editor", dir.File("no-such-editor") + " --flag");
  EXPECT_EQ(log.ExShowErrors(), 0);
  ASSERT_EQ(app.messages.size(), 1u);
  EXPECT_EQ(app.messages[0].text, CStringManager::GetStr("HYSTR_ED_APP_ERR"));
  EXPECT_EQ(app.messages[0].kind, HU_MessageKind::Error);
}

TEST_F(ErrorLogTest, EditorIsStartedWithItsArgumentsAndTheLogFileLast) {
  const std::string record = dir.File("args.txt");
  const std::string editor = dir.Write("editor.sh", "#!/bin/sh\nprintf '%s|' \"$@\" > \"" + record + "\"\n");
  std::filesystem::permissions(editor, std::filesystem::perms::owner_all);
  log.ExOpenErrorLog("T");
  log.ExWarning("", "w");
  log.ExCloseErrorLog("T");
  app.SetProfileString("main", "editor", editor + "  -n\t+1");
  EXPECT_EQ(log.ExShowErrors(), 1);
  HU_WaitForStartedProcesses();
  EXPECT_EQ(hytest::ReadFileBytes(record), "-n|+1|" + log.ExGetFileName() + "|");

  app.SetProfileString("main", "editor", "true");
  EXPECT_EQ(log.ExShowErrors(), 1);
  HU_WaitForStartedProcesses();
  EXPECT_TRUE(app.messages.empty());
}
