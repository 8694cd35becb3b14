#include "hy_util/core/string_manager.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include "hy_util/platform/application.h"
#include "hy_util/platform/locale.h"
#include "hy_util/platform/utf8.h"

namespace {

using boost::property_tree::ptree;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

std::string Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return std::string(text);
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
    at += to.size();
  }
}

// The replacements run one after the other over the whole text, in this order, so
// that "&amp;lt;" comes out as "&lt;": language files written for the older reader
// depend on it.
std::string Unescaped(std::string text) {
  static const std::pair<std::string_view, std::string_view> kReplacements[] = {
      {"&lt;", "<"},     {"&gt;", ">"},   {"&apos;", "'"}, {"&quot;", "\""},
      {"&amp;", "&"},    {"&nbsp;", " "}, {"\\r", "\r"},   {"\\n", "\n"},
      {"\\t", "\t"},     {"\\\"", "\""},
  };
  for (const auto& [from, to] : kReplacements) ReplaceAll(text, from, to);
  return text;
}

// A "dlg" of "IDD_DIALOG,PREFIX_" puts "PREFIX_" in front of the id.
std::string KeyPrefix(const std::string& dlg) {
  const std::size_t comma = dlg.find(',');
  return comma == std::string::npos ? std::string() : dlg.substr(comma + 1);
}

// Substitutes the first "%s" and turns "%%" into "%"; any other "%" sequence is
// copied as it stands, since the format comes from a language file.
std::string FormatWithText(const std::string& format, const std::string& argument) {
  std::string result;
  bool substituted = false;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const char next = i + 1 < format.size() ? format[i + 1] : '\0';
    if (format[i] == '%' && next == '%') {
      result += '%';
      ++i;
    } else if (format[i] == '%' && next == 's' && !substituted) {
      result += argument;
      substituted = true;
      ++i;
    } else {
      result += format[i];
    }
  }
  return result;
}

// The first top-level "hystrings" element; later ones are never looked at.
const ptree& LanguageRoot(const ptree& document) {
  for (const auto& [name, child] : document) {
    if (name == "hystrings") return child;
  }
  throw boost::property_tree::ptree_bad_path("no hystrings element", ptree::path_type("hystrings"));
}

bool OpenForReading(const std::string& path, std::ifstream& in) {
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec)) return false;
  in.open(path, std::ios::binary);
  return in.is_open();
}

void SwitchLocaleFor(const std::string& language) {
  if (language == "ja") {
    HU_SetProcessLocale("Japanese_Japan.932");
  } else if (language == "ch") {
    HU_SetProcessLocale("Chinese-Simplified_China.936");
  } else if (language == "ko") {
    HU_SetProcessLocale("Korean_Korea.949");
  }
}

bool HasXmlExtension(const std::filesystem::path& path) {
  std::string extension = path.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(c | 0x20); });
  return extension == ".xml";
}

// Names of the "*.xml" entries that are not directories, sorted, so that the list
// does not depend on the order the file system happens to keep.
std::vector<std::string> XmlFileNames(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code ec;
  for (std::filesystem::directory_iterator it(directory, ec), end; !ec && it != end;
       it.increment(ec)) {
    std::error_code kindError;
    if (it->is_directory(kindError) || !HasXmlExtension(it->path())) continue;
    names.push_back(it->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

CStringManager& CStringManager::Instance() {
  // Deliberately never destroyed: pointers into the table may be held until exit.
  static CStringManager* const instance = new CStringManager();
  return *instance;
}

std::string CStringManager::GetStr(const std::string& key) {
  return Instance().GetString(key);
}

char* CStringManager::GetString(const std::string& key) {
  std::string trimmed = Trimmed(key);
  const auto it = table_.try_emplace(trimmed, trimmed).first;
  return it->second.data();
}

bool CStringManager::Utf8ToCString(std::string& out, const std::string& utf8) {
  return HU_Utf8ToNarrow(utf8, out);
}

void CStringManager::LoadStrings(const std::string& fileName) {
  const std::string path = HU_GetApplication().GetAppDirectory() + "/" + fileName;
  std::ifstream in;
  if (!OpenForReading(path, in)) return;
  table_.clear();
  loaded_ = false;

  ptree document;
  boost::property_tree::read_xml(in, document);
  const ptree& root = LanguageRoot(document);
  SwitchLocaleFor(root.get<std::string>("<xmlattr>.language"));
  for (const auto& [name, element] : root) {
    if (name != "string") continue;
    const std::string& rawValue = element.data();
    const std::string dlg = element.get<std::string>("<xmlattr>.dlg");
    const std::string rawId = element.get<std::string>("<xmlattr>.id");
    std::string value;
    std::string id;
    if (!Utf8ToCString(value, rawValue) || !Utf8ToCString(id, rawId)) continue;
    table_[Trimmed(KeyPrefix(dlg) + Unescaped(id))] = Unescaped(value);
  }
  loaded_ = true;
}

void CStringManager::UnloadStrings() {
  table_.clear();
  loaded_ = false;
}

std::vector<std::string>& CStringManager::GetAvailableLanguages() {
  languages_.clear();
  const std::string directory = HU_GetApplication().GetAppDirectory();
  for (const std::string& name : XmlFileNames(directory)) {
    const std::string path = directory + "/" + name;
    std::ifstream in;
    if (!OpenForReading(path, in)) continue;
    try {
      ptree document;
      boost::property_tree::read_xml(in, document);
      languages_.push_back(LanguageRoot(document).get<std::string>("<xmlattr>.language"));
    } catch (const boost::property_tree::ptree_error&) {
      ReportBadLanguageFile(path);
    }
  }
  return languages_;
}

void CStringManager::ReportBadLanguageFile(const std::string& path) {
  const std::string format = GetStr("HYSTR_ERROR_LOADING_LANGUAGE_XML");
  HU_GetApplication().ShowMessage(FormatWithText(format, path), HU_MessageKind::Error);
}
