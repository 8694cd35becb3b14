// Every "HYSTR_" key that the library and the tool ask for must have an English
// text in lang/en-US.xml, and that file must load.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <gtest/gtest.h>

#include "hy_util/core/string_manager.h"
#include "support/recording_application.h"

namespace {

namespace fs = std::filesystem;

const std::string kSourceDir = HY_SOURCE_DIR;

// Key -> one source file that uses it, for every quoted "HYSTR_..." literal.
std::map<std::string, std::string> KeysUsedInSources() {
  const std::regex literal("\"(HYSTR_[A-Z0-9_]+)\"");
  std::map<std::string, std::string> keys;
  for (const char* root : {"hy_util", "tools"}) {
    for (const auto& entry : fs::recursive_directory_iterator(kSourceDir + "/" + root)) {
      const std::string extension = entry.path().extension().string();
      if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp")) continue;
      std::ifstream in(entry.path());
      const std::string source{std::istreambuf_iterator<char>(in), {}};
      for (std::sregex_iterator m(source.begin(), source.end(), literal), end; m != end; ++m) {
        keys.emplace((*m)[1].str(), entry.path().string());
      }
    }
  }
  return keys;
}

std::set<std::string> KeysInEnglishFile() {
  boost::property_tree::ptree document;
  boost::property_tree::read_xml(kSourceDir + "/lang/en-US.xml", document);
  std::set<std::string> ids;
  for (const auto& [name, element] : document.get_child("hystrings")) {
    if (name == "string") ids.insert(element.get<std::string>("<xmlattr>.id"));
  }
  return ids;
}

TEST(LanguageKeysTest, EveryKeyUsedInTheSourcesHasAnEnglishText) {
  const std::map<std::string, std::string> used = KeysUsedInSources();
  const std::set<std::string> english = KeysInEnglishFile();
  EXPECT_FALSE(used.empty());
  for (const auto& [key, file] : used) {
    EXPECT_TRUE(english.count(key)) << key << " (used in " << file << ") is missing from lang/en-US.xml";
  }
}

TEST(LanguageKeysTest, EnglishFileLoadsWithATextForEveryKey) {
  hytest::RecordingApplication app;
  app.SetAppDirectory(kSourceDir + "/lang");
  CStringManager& manager = CStringManager::Instance();
  ASSERT_NO_THROW(manager.LoadStrings("en-US.xml"));
  EXPECT_TRUE(manager.IsLoaded());
  for (const std::string& key : KeysInEnglishFile()) {
    const std::string text = CStringManager::GetStr(key);
    EXPECT_FALSE(text.empty() || text == key) << key << " has no text";
  }
  manager.UnloadStrings();
}

}  // namespace
