// "hyutil lang ...": the language files of an application directory.
//
//   hyutil lang list DIR                   language tags of DIR's *.xml files
//   hyutil lang get DIR FILE KEY... [--json]  texts of the keys from DIR/FILE

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <boost/property_tree/exceptions.hpp>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "hy_util/core/string_manager.h"
#include "hy_util/platform/application.h"

namespace hyutil {

namespace {

struct LangGetOptions {
  std::string directory;
  std::string file;
  std::vector<std::string> keys;
  bool json = false;
};

// Control characters and backslashes written as escapes, so one text is one line.
std::string Escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\n': result += "\\n"; break;
      case '\r': result += "\\r"; break;
      case '\t': result += "\\t"; break;
      case '\\': result += "\\\\"; break;
      default: result += c;
    }
  }
  return result;
}

int ListLanguages(const std::string& directory) {
  std::error_code ec;
  if (!std::filesystem::is_directory(directory, ec)) {
    std::fprintf(stderr, "hyutil: %s is not a directory\n", directory.c_str());
    return kExitInputError;
  }
  HU_GetDefaultApplication().SetAppDirectory(directory);
  for (const std::string& language : CStringManager::Instance().GetAvailableLanguages()) {
    std::printf("%s\n", language.c_str());
  }
  return kExitOk;
}

// LoadStrings keeps the old table when the file cannot be opened, so that case is
// checked here first to be reported.
bool LoadLanguageFile(const LangGetOptions& options) {
  const std::string path = options.directory + "/" + options.file;
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec) || !std::ifstream(path).is_open()) {
    std::fprintf(stderr, "hyutil: cannot open language file %s\n", path.c_str());
    return false;
  }
  HU_GetDefaultApplication().SetAppDirectory(options.directory);
  try {
    CStringManager::Instance().LoadStrings(options.file);
  } catch (const boost::property_tree::ptree_error& e) {
    std::fprintf(stderr, "hyutil: cannot read language file %s: %s\n", path.c_str(), e.what());
    return false;
  }
  return true;
}

void PrintTexts(const LangGetOptions& options) {
  if (options.json) {
    nlohmann::ordered_json texts = nlohmann::ordered_json::object();
    for (const std::string& key : options.keys) texts[key] = CStringManager::GetStr(key);
    std::cout << texts.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    return;
  }
  for (const std::string& key : options.keys) {
    std::cout << key << '\t' << Escaped(CStringManager::GetStr(key)) << '\n';
  }
}

int GetTexts(const LangGetOptions& options) {
  if (!LoadLanguageFile(options)) return kExitInputError;
  PrintTexts(options);
  return kExitOk;
}

}  // namespace

void AddLangCommands(CLI::App& app, int& exitCode) {
  CLI::App* lang = app.add_subcommand("lang", "List language files and look up their texts");
  lang->require_subcommand(1);

  auto directory = std::make_shared<std::string>();
  CLI::App* list = lang->add_subcommand("list", "Print the language tag of each *.xml file in DIR");
  list->add_option("DIR", *directory, "Application directory holding the language files")
      ->required();
  list->callback([directory, &exitCode] { exitCode = ListLanguages(*directory); });

  auto options = std::make_shared<LangGetOptions>();
  CLI::App* get = lang->add_subcommand("get", "Print the texts of KEYs from the language file");
  get->add_option("DIR", options->directory, "Application directory")->required();
  get->add_option("FILE", options->file, "Language file in DIR, e.g. en-US.xml")->required();
  get->add_option("KEY", options->keys, "Keys to look up")->required();
  get->add_flag("--json", options->json, "Print one JSON object mapping each key to its text");
  get->callback([options, &exitCode] { exitCode = GetTexts(*options); });
}

}  // namespace hyutil
