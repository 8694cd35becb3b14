#pragma once
// CStringManager: the process-wide table of localized texts.
//
// Every text the library shows to a user is looked up by a key such as
// "HYSTR_ERROR_LOADING_LANGUAGE_XML". The table is filled from one UTF-8 XML
// language file in the application directory:
//
//   <hystrings language="en-US">
//     <string id="HYSTR_..." dlg="">text</string>
//   </hystrings>
//
// An unknown key is never an error: it is added to the table with itself as text,
// so a missing entry shows as its key. Until a file is loaded every key shows as
// itself. The table is not locked; use it from one thread (the user interface's).
//
// Texts and ids are checked to be valid UTF-8 (the library's narrow text); an
// entry whose id or text is not is left out of the table, so that its key shows as
// itself rather than as broken characters.

#include <map>
#include <string>
#include <vector>

class CStringManager {
 public:
  // The one instance, created on first use and never destroyed.
  static CStringManager& Instance();

  // Copy of the text for the key (the key itself when unknown).
  static std::string GetStr(const std::string& key);

  // The stored text for the key, trimmed of white space at both ends first. The
  // buffer belongs to the table and stays valid until the table is unloaded or
  // reloaded; an unknown key asked for twice gives the same buffer.
  char* GetString(const std::string& key);

  // Fills the table from <application directory>/<fileName>. A file that cannot be
  // opened leaves the table as it was. Malformed XML, or a missing "language", "id"
  // or "dlg" attribute, throws the XML reader's error
  // (boost::property_tree::ptree_error): the table has then been cleared, holds the
  // entries read before the fault, and IsLoaded() is false. A language tag of
  // "ja", "ch" or "ko" also switches the process locale to that language.
  void LoadStrings(const std::string& fileName);
  void UnloadStrings();
  // True after a language file was read to its end.
  bool IsLoaded() const { return loaded_; }

  // Language tags of the "*.xml" files of the application directory (any case of
  // the extension), in file-name order. A file that cannot be parsed is reported in
  // a message box ("HYSTR_ERROR_LOADING_LANGUAGE_XML") and skipped; one that cannot
  // be opened is skipped silently. The array is rebuilt on every call.
  std::vector<std::string>& GetAvailableLanguages();

  int GetCharSet() const { return charSet_; }
  void SetCharSet(int charSet) { charSet_ = charSet; }
  int GetBtnInsetHt() const { return btnInsetHt_; }
  void SetBtnInsetHt(int height) { btnInsetHt_ = height; }

  CStringManager(const CStringManager&) = delete;
  CStringManager& operator=(const CStringManager&) = delete;

 private:
  CStringManager() = default;

  static bool Utf8ToCString(std::string& out, const std::string& utf8);
  void ReportBadLanguageFile(const std::string& path);

  int charSet_ = 0;
  int btnInsetHt_ = 0;
  std::vector<std::string> languages_;
  std::map<std::string, std::string> table_;
  bool loaded_ = false;
};
