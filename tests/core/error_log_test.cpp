#include "hy_util/core/error_log.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

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
  // The message boxes shown, one line each, those with the error icon marked.
  std::string Boxes() const {
    std::string texts;
    for (const auto& m : app.messages)
      texts += (m.kind == HU_MessageKind::Error ? "error: " : "") + m.text + "\n";
    return texts;
  }
  // Items reported between "T" as the opening and the closing title.
  template <class Report>
  std::string Lines(Report report) {
    log.ExOpenErrorLog("T");
    report();
    log.ExCloseErrorLog("T");
    const std::string text = Contents();
    return text.substr(3, text.find("\n\n", 2) - 2);
  }

  hytest::RecordingApplication app;
  hytest::TempDir dir;
  TestLog log;
};

TEST_F(ErrorLogTest, RunWithErrorsWritesTitleItemsAndFailureSummary) {
  ASSERT_EQ(log.ExOpenErrorLog("Export to MIF"), 1);
  log.ExError("Line 12", "bad value");
  log.ExSetPrefix("Layer 2");
  log.ExWarning("", "no projection");
  log.ExWarning("Row 3", "blank");
  log.ExNotes("", "a note");  // reported and counted as an error
  EXPECT_EQ(log.ExCloseErrorLog("Export to MIF"), 0);
  EXPECT_EQ(Contents(),
            "Export to MIF\n\nERROR: Line 12: bad value\nWARNING: Layer 2: no projection\n"
            "WARNING: Layer 2: Row 3: blank\nERROR: Layer 2: a note\n"
            "\n2 Error(s) and 2 Warning(s) were encountered\n"
            "Export to MIF Was NOT Completed Successfully\n");
}

TEST_F(ErrorLogTest, WarningsAndNotesAloneEndSuccessfullyUnderTheStartAndEndTitles) {
  ASSERT_EQ(log.ExStartErrorLog(), 1);
  log.ExWarning("a", "w1");
  log.ExErrorGen(-1, "b", "%d cells of %s", 3, "grid");
  EXPECT_EQ(log.ExEndErrorLog(), 1);
  EXPECT_EQ(Contents(),
            "Data Generation Diagnostics\n\nWARNING: a: w1\nNOTE: b: 3 cells of grid\n"
            "\n0 Error(s) and 2 Warning(s) were encountered\nData Export Completed Successfully\n");
}

TEST_F(ErrorLogTest, StoredErrorStringIsWrittenOnceThenUnknownErrorAtErrorLevel) {
  EXPECT_EQ(Lines([&] {
              log.ExSetErrorString("Cannot read header");
              for (const char* id : {"a", "b"}) log.ExOutError(id);
              log.ExSetErrorLevel(0);
              log.ExSetErrorString("Only a warning");
              for (const char* id : {"c", "d"}) log.ExOutError(id);
            }),
            "ERROR: a: Cannot read header\nERROR: b: Unknown Error\n"
            "WARNING: c: Only a warning\nERROR: d: Unknown Error\n");
}

TEST_F(ErrorLogTest, ReportsWhileClosedAreIgnoredButGetErrTypeCountsAndShowsPlainBoxes) {
  log.ExSetFileName(dir.File("missing/ErrorLog.txt"));
  EXPECT_EQ(log.ExOpenErrorLog("T"), 0);
  log.ExError("id", "lost");
  EXPECT_EQ(log.ExShowErrors(), 1);  // nothing counted, nothing to show
  std::string word;
  EXPECT_EQ(log.GetErrType(1, "Row %d", word), 0);
  log.ExSetOutToFile(0);
  log.GetErrType(0, "Row %d", word);
  EXPECT_EQ(Boxes(), "ExOpenErrorLog: file open error\nERROR: Export Error File not opened yet\n"
                     "WARNINGRow %d\n");  // the type word and the raw text, no separator
  EXPECT_EQ(log.ExGetErrorCount() * 10 + log.ExGetWarningCount(), 11);  // one of each
}

TEST_F(ErrorLogTest, ReopeningTruncatesTheFileAndResetsTheCounts) {
  Lines([&] { log.ExError("", "e"); });
  EXPECT_EQ(Lines([] {}), "");
  EXPECT_EQ(log.ExGetErrorCount(), 0);
}

TEST_F(ErrorLogTest, ShowErrorsStartsTheEditorWithTheLogFileLast) {
  const std::string record = dir.File("args.txt");
  const std::string editor =
      dir.Write("editor.sh", "#!/bin/sh\nprintf '%s|' \"$@\" > \"" + record + "\"\n");
  std::filesystem::permissions(editor, std::filesystem::perms::owner_all);
  Lines([&] { log.ExWarning("", "w"); });
  EXPECT_EQ(log.ExShowErrors(), 0);  // no editor set
  app.SetProfileString("main", "editor", editor + "  -n\t+1");
  EXPECT_EQ(log.ExShowErrors(), 1);  // warnings only
  HU_WaitForStartedProcesses();
  EXPECT_EQ(hytest::ReadFileBytes(record), "-n|+1|" + log.ExGetFileName() + "|");
  EXPECT_EQ(Boxes(), "");
}

TEST_F(ErrorLogTest, EditorThatCannotStartIsReportedInAnErrorBox) {
  Lines([&] { log.ExError("", "e"); });
  app.SetProfileString("main", "editor", dir.File("no-such-editor") + " --flag");
  EXPECT_EQ(log.ExShowErrors(), 0);
  EXPECT_EQ(Boxes(), "error: " + CStringManager::GetStr("HYSTR_ED_APP_ERR") + "\n");
}

}  // namespace
