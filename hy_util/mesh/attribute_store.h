#pragma once
// IHU_ElementAttributeStore: the host application's per-element attribute records,
// as the boundary mesh sees them. The mesh keeps the flow-constriction data lists
// of type-11 lines in such a store (keyed by element ID and field name) and never
// owns it. CHU_MemoryAttributeStore keeps records in memory for hosts without a
// store of their own, and for tests.

#include <map>
#include <string>
#include <utility>
#include <vector>

class IHU_ElementAttributeStore {
 public:
  virtual ~IHU_ElementAttributeStore() = default;
  // The stored list; empty when the record or field does not exist.
  virtual std::vector<std::string> GetStringList(int elementId, const std::string& key) const = 0;
  // Stores the first count entries of values (all of them when count is larger).
  virtual void SetStringList(int elementId, const std::string& key, const std::vector<std::string>& values,
                             int count) = 0;
  // Sets the field to a plain value; its list reads back empty afterwards.
  virtual void ResetField(int elementId, const std::string& key, int value) = 0;
};

class CHU_MemoryAttributeStore : public IHU_ElementAttributeStore {
 public:
  std::vector<std::string> GetStringList(int elementId, const std::string& key) const override;
  void SetStringList(int elementId, const std::string& key, const std::vector<std::string>& values,
                     int count) override;
  void ResetField(int elementId, const std::string& key, int value) override;
  // The value the last reset gave the field; 0 when it was never reset.
  int GetFieldValue(int elementId, const std::string& key) const;
  // True when the field was ever written or reset.
  bool HasField(int elementId, const std::string& key) const;

 private:
  struct Field {
    std::vector<std::string> list;
    int value = 0;
  };
  std::map<std::pair<int, std::string>, Field> m_fields;
};
