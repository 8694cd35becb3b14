#include "hy_util/platform/object.h"

#include <cstring>
#include <map>

namespace {

using FactoryMap = std::map<std::string, CHU_RuntimeClassRegistry::Factory>;

FactoryMap& RawFactories() {
  static FactoryMap factories;
  return factories;
}

// The map with the library's own classes in it; they are registered on first use.
FactoryMap& Factories() {
  static const bool registered = [] {
    HU_RegisterLibraryClasses();
    return true;
  }();
  (void)registered;
  return RawFactories();
}

}  // namespace

bool CHU_Object::IsKindOf(const char* className) const {
  return className != nullptr && std::strcmp(GetRuntimeClassName(), className) == 0;
}

void CHU_RuntimeClassRegistry::Register(const std::string& className, Factory factory) {
  RawFactories()[className] = std::move(factory);
}

std::unique_ptr<CHU_Object> CHU_RuntimeClassRegistry::Create(const std::string& className) {
  const auto& factories = Factories();
  const auto it = factories.find(className);
  return it == factories.end() ? nullptr : it->second();
}

bool CHU_RuntimeClassRegistry::IsRegistered(const std::string& className) {
  return Factories().count(className) != 0;
}

std::vector<std::string> CHU_RuntimeClassRegistry::RegisteredNames() {
  std::vector<std::string> names;
  for (const auto& entry : Factories()) names.push_back(entry.first);
  return names;
}
