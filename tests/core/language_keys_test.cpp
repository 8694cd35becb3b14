// Every "HYSTR_" key that the library and the tool ask for must have an English
// text in lang/en-US.xml, and that file must load.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <gtest/gtest.h>

#include "hy_util/core/string_manager.h"
#include "support/recording_application.h"

namespace {

std::set<std::string> EnglishKeys() {
  boost::property_tree::ptree document;
  boost::property_tree::read_xml(HY_SOURCE_DIR "/lang/en-US.xml", document);
  std::set<std::string> ids;
  for (const auto& [name, element] : document.get_child("hystrings")) {
    if (name == "string") ids.insert(element.get<std::string>("<xmlattr>.id"));
  }
  return ids;
}

TEST(LanguageKeysTest, EveryKeyUsedInTheSourcesHasAnEnglishText) {
  const std::set<std::string> english = EnglishKeys();
  const std::regex literal("\"(HYSTR_[A-Z0-9_]+)\"");
  int found = 0;
  for (const char* root : {HY_SOURCE_DIR "/hy_util", HY_SOURCE_DIR "/tools"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      const std::string extension = entry.path().extension().string();
      if (extension != ".h" && extension != ".cpp") continue;
      std::ifstream in(entry.path());
      const std::string source{std::istreambuf_iterator<char>(in), {}};
      for (std::sregex_iterator m(source.begin(), source.end(), literal), end; m != end; ++m, ++found) {
        EXPECT_TRUE(english.count((*m)[1].str()))
            << (*m)[1] << " (used in " << entry.path().string() << ") is missing from lang/en-US.xml";
      }
    }
  }
  EXPECT_GT(found, 0);
}

TEST(LanguageKeysTest, EnglishFileLoadsWithATextForEveryKey) {
  hytest::RecordingApplication app;
  app.SetAppDirectory(HY_SOURCE_DIR "/lang");
  CStringManager& manager = CStringManager::Instance();
  ASSERT_NO_THROW(manager.LoadStrings("en-US.xml"));
  EXPECT_TRUE(manager.IsLoaded());
  for (const std::string& key : EnglishKeys()) {
    const std::string text = CStringManager::GetStr(key);
    EXPECT_FALSE(text.empty() || text == key) << key << " has no text";
  }
  manager.UnloadStrings();
}

}  // namespace
