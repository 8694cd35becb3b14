#pragma once
// CStringManagerHelper: messages whose wording depends on more than one key.
//
// ApplySemantics puts the parts of a message in the word order of the current
// language (the application setting "LANGUAGE"/"DefaultLanguage", "en-US" when
// unset). ConvertNameListRefTitle gives the localized title of a reference list
// from its numeric identifier.

#include <string>

class CStringManagerHelper {
 public:
  CStringManagerHelper() = delete;

  // For "HYSTR_GRID_FILE_DELETE_CONTENTS_DLOG_MESSAGE" builds the "n polygons will
  // be deleted" message for `count` in the language's word order and stores it in
  // out; any other key leaves out unchanged. Returns out's characters.
  static const char* ApplySemantics(const std::string& key, std::string& out, int count);

  // The localized title of a reference list identifier (10000-10016 except 10006,
  // and 2041), or the given title for any other identifier. Stored in out and
  // returned.
  static std::string ConvertNameListRefTitle(const std::string& title, int referenceId,
                                             std::string& out);
};
