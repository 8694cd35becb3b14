#pragma once
// Run-time class information and creation by class name.
//
// Classes that a host may create from a stored class name derive from CHU_Object,
// declare HU_DECLARE_DYNCREATE in the class and HU_IMPLEMENT_DYNCREATE in a source
// file, and are listed in hy_util/runtime_classes.cpp so that a static link keeps
// them. CHU_RuntimeClassRegistry::Create("CHU_DPoint") then builds a new object.

#include <functional>
#include <memory>
#include <string>
#include <vector>

class CHU_Object {
 public:
  virtual ~CHU_Object() = default;
  virtual const char* GetRuntimeClassName() const = 0;
  bool IsKindOf(const char* className) const;
};

class CHU_RuntimeClassRegistry {
 public:
  using Factory = std::function<std::unique_ptr<CHU_Object>()>;

  // Registers (or replaces) the factory of a class name.
  static void Register(const std::string& className, Factory factory);
  // A new object of the named class, or nullptr when no such class is registered.
  static std::unique_ptr<CHU_Object> Create(const std::string& className);
  static bool IsRegistered(const std::string& className);
  static std::vector<std::string> RegisteredNames();
};

// Registers every dynamically creatable class of the library; called once, lazily,
// by the registry itself (defined in hy_util/runtime_classes.cpp).
void HU_RegisterLibraryClasses();

#define HU_DECLARE_DYNCREATE(cls)                                   \
 public:                                                            \
  static constexpr const char* kRuntimeClassName = #cls;            \
  const char* GetRuntimeClassName() const override { return #cls; } \
  static void RegisterRuntimeClass();

#define HU_IMPLEMENT_DYNCREATE(cls)                                              \
  void cls::RegisterRuntimeClass() {                                             \
    CHU_RuntimeClassRegistry::Register(#cls, [] { return std::unique_ptr<CHU_Object>(new cls); }); \
  }
