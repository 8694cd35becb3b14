// Feeds arbitrary bytes to the language table as a language file: loading either
// fills the table or throws the XML reader's error, and lookups, unloading and the
// language list must then work whatever the file held.

#include <stdlib.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include <boost/property_tree/exceptions.hpp>

#include "hy_util/core/string_manager.h"

#include "fuzz_support.h"

namespace {

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!hyfuzz::WriteFile(hyfuzz::ScratchDirectory() + "/fuzz.xml", data, size)) return 0;
  CStringManager& manager = CStringManager::Instance();
  try {
    manager.LoadStrings("fuzz.xml");
  } catch (const boost::property_tree::ptree_error&) {
    // Malformed files are reported by this exception; the table stays usable.
  }
  for (const char* key : {"HYSTR_A", " HYSTR_B ", "PFX_NAME", "", "HYSTR_ERROR_LOADING_LANGUAGE_XML"}) {
    const std::string text = CStringManager::GetStr(key);
    if (manager.GetString(key) == nullptr) __builtin_trap();
    (void)text;
  }
  manager.GetAvailableLanguages();
  manager.UnloadStrings();
  return 0;
}
