#include "hy_util/core/error_log.h"

#include <cstdarg>

#include "hy_util/core/string_manager.h"
#include "hy_util/platform/application.h"
#include "hy_util/platform/process.h"

namespace {

constexpr const char* kUnknownError = "Unknown Error";

void Show(const std::string& text, HU_MessageKind kind) {
  HU_GetApplication().ShowMessage(text, kind);
}

}  // namespace

CHU_ErrorLog::~CHU_ErrorLog() {
  if (file_ != nullptr) std::fclose(file_);
}

int CHU_ErrorLog::ExOpenErrorLog(const std::string& title) {
  std::FILE* file = std::fopen(fileName_.c_str(), "w");
  if (file == nullptr) {
    Show("ExOpenErrorLog: file open error", HU_MessageKind::Ok);
    return 0;
  }
  if (file_ != nullptr) std::fclose(file_);
  file_ = file;
  errorCount_ = 0;
  warningCount_ = 0;
  errorString_ = kUnknownError;
  open_ = true;
  std::fprintf(file_, "%s\n\n", title.c_str());
  return 1;
}

int CHU_ErrorLog::ExCloseErrorLog(const std::string& title) {
  if (file_ != nullptr) {
    std::fprintf(file_, "\n%d Error(s) and %d Warning(s) were encountered\n", errorCount_,
                 warningCount_);
    if (errorCount_ == 0) {
      std::fprintf(file_, "%s Completed Successfully\n", title.c_str());
    } else {
      std::fprintf(file_, "%s Was NOT Completed Successfully\n", title.c_str());
    }
    if (std::fclose(file_) != 0) Show("ExEndErrorLog: file close error", HU_MessageKind::Ok);
  }
  file_ = nullptr;
  open_ = false;
  return errorCount_ == 0 ? 1 : 0;
}

int CHU_ErrorLog::ExStartErrorLog() { return ExOpenErrorLog("Data Generation Diagnostics"); }

int CHU_ErrorLog::ExEndErrorLog() { return ExCloseErrorLog("Data Export"); }

void CHU_ErrorLog::ExErrorGen(int severity, const std::string& identifier, const char* format,
                              ...) {
  if (!open_) return;
  std::string typeWord;
  if (GetErrType(severity, format ? format : "", typeWord) != 1) return;
  ExErrorIdent(typeWord.c_str(), identifier);
  if (format != nullptr) {
    va_list args;
    va_start(args, format);
    std::vfprintf(file_, format, args);
    va_end(args);
  }
  std::fputs("\n", file_);
}

void CHU_ErrorLog::ExError(const std::string& identifier, const std::string& text) {
  ExErrorGen(1, identifier, "%s", text.c_str());
}

void CHU_ErrorLog::ExWarning(const std::string& identifier, const std::string& text) {
  ExErrorGen(0, identifier, "%s", text.c_str());
}

void CHU_ErrorLog::ExNotes(const std::string& identifier, const std::string& text) {
  ExErrorGen(2, identifier, "%s", text.c_str());
}

void CHU_ErrorLog::ExOutError(const std::string& identifier) {
  ExErrorGen(errorLevel_ > 0 ? 1 : 0, identifier, "%s", errorString_.c_str());
  errorString_ = kUnknownError;
  errorLevel_ = 1;
}

void CHU_ErrorLog::ExErrorIdent(const char* typeWord, const std::string& identifier) {
  if (file_ == nullptr) return;
  std::fprintf(file_, "%s: ", typeWord);
  if (!prefix_.empty()) std::fprintf(file_, "%s: ", prefix_.c_str());
  if (!identifier.empty()) std::fprintf(file_, "%s: ", identifier.c_str());
}

int CHU_ErrorLog::GetErrType(int severity, const std::string& text, std::string& typeWord) {
  if (severity < 0) {
    ++warningCount_;
    typeWord = "NOTE";
  } else if (severity == 0) {
    ++warningCount_;
    typeWord = "WARNING";
  } else {
    ++errorCount_;
    typeWord = "ERROR";
  }
  if (file_ != nullptr) return 1;
  Show(outToFile_ != 0 ? "ERROR: Export Error File not opened yet" : typeWord + text,
       HU_MessageKind::Ok);
  return 0;
}

int CHU_ErrorLog::ExShowErrors() {
  if (errorCount_ == 0 && warningCount_ == 0) return 1;
  std::vector<std::string> command =
      HU_SplitCommandLine(HU_GetApplication().GetProfileString("main", "editor", ""));
  if (command.empty()) return 0;
  command.push_back(fileName_);
  if (HU_StartProcess(command) < 0) Show(CStringManager::GetStr("HYSTR_ED_APP_ERR"), HU_MessageKind::Error);
  return errorCount_ == 0 ? 1 : 0;
}
