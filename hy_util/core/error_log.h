#pragma once
// CHU_ErrorLog: the log of the errors, warnings and notes met by one long data
// operation (a data generation run, an export), written to a plain text file.
//
// The file ("ErrorLog.txt" in the current directory unless another name is set)
// holds the title and a blank line, then one line per item, then a summary:
//
//   <title>
//
//   ERROR: <prefix>: <identifier>: <message>
//   WARNING: <identifier>: <message>
//
//   1 Error(s) and 1 Warning(s) were encountered
//   <title> Was NOT Completed Successfully
//
// The prefix and identifier pieces are left out when empty. Severity above 0 is an
// ERROR, 0 a WARNING and below 0 a NOTE; notes count as warnings. ExNotes reports
// at error severity: its lines read "ERROR" and count as errors, which callers rely
// on. Items reported while the log is closed are ignored.
//
// Failures are shown to the user through the application's message boxes, never
// thrown: opening and closing failures and the "not opened" texts in plain boxes,
// an editor that cannot be started in an error box ("HYSTR_ED_APP_ERR").
// ExShowErrors starts the editor of the "main"/"editor" setting, without a shell,
// with the log file name as its last argument, and does not wait for it.
//
// The destructor writes no summary; it only releases a file still open.

#include <cstdio>
#include <string>

class CHU_ErrorLog {
 public:
  CHU_ErrorLog() = default;
  virtual ~CHU_ErrorLog();
  CHU_ErrorLog(const CHU_ErrorLog&) = delete;
  CHU_ErrorLog& operator=(const CHU_ErrorLog&) = delete;

  // 1 when the file was created (or truncated) and the title written, else 0.
  int ExOpenErrorLog(const std::string& title);
  // Writes the summary and closes; 1 when no error was reported, else 0.
  int ExCloseErrorLog(const std::string& title);
  int ExStartErrorLog();  // opens with "Data Generation Diagnostics"
  int ExEndErrorLog();    // closes with "Data Export"
  bool IsErrorFileOpen() const { return open_; }

  void ExErrorGen(int severity, const std::string& identifier, const char* format, ...)
      __attribute__((format(printf, 4, 5)));
  void ExError(const std::string& identifier, const std::string& text);
  void ExWarning(const std::string& identifier, const std::string& text);
  void ExNotes(const std::string& identifier, const std::string& text);

  // Opens the log in the user's editor when anything was reported. 1 when there
  // were no errors, 0 when there were errors or no editor is set.
  int ExShowErrors();
  int ExDispErrors() { return ExShowErrors(); }

  int ExGetErrorCount() const { return errorCount_; }
  int ExGetWarningCount() const { return warningCount_; }
  const std::string& ExGetFileName() const { return fileName_; }
  void ExSetFileName(const std::string& fileName) { fileName_ = fileName; }

 protected:
  // Reports the stored error string at error severity (warning when the level is
  // 0 or below), then resets the string to "Unknown Error" and the level to 1.
  void ExOutError(const std::string& identifier);
  void ExSetErrorLevel(int level) { errorLevel_ = level; }
  void ExSetErrorString(const std::string& text) { errorString_ = text; }
  void ExSetPrefix(const std::string& prefix) { prefix_ = prefix; }
  void ExSetOutToFile(int outToFile) { outToFile_ = outToFile; }
  int ExGetOutToFile() const { return outToFile_; }

  // Writes the type word, the prefix and the identifier, each followed by ": ".
  void ExErrorIdent(const char* typeWord, const std::string& identifier);
  // Counts the item and sets its type word; 1 when the file is there to write to,
  // else 0 after a message box.
  int GetErrType(int severity, const std::string& text, std::string& typeWord);

 private:
  std::FILE* file_ = nullptr;
  std::string fileName_ = "ErrorLog.txt";
  int errorCount_ = 0;
  int warningCount_ = 0;
  bool open_ = false;
  int errorLevel_ = 1;
  std::string errorString_;
  int outToFile_ = 1;
  std::string prefix_;
};
