#pragma once
// HU_OrderedIdMap: a hash map from a signed 32-bit ID to an object that visits its
// entries in insertion order. The boundary mesh keeps its vertices, elements and
// sets in such maps, so "the first vertex in map order" is the earliest one still
// present and every walk over the mesh is deterministic. Lookup, insertion and
// erasure are constant time; erasing an entry leaves positions on other entries
// valid.
//
// An owning map deletes its objects when they are erased, when the map is cleared
// and when it is destroyed; a non-owning map (an element set's members) never does.

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>

#include <cstddef>
#include <memory>

template <class T>
class HU_OrderedIdMap {
 public:
  struct Entry {
    int id;
    T* object;
  };

 private:
  using Container = boost::multi_index::multi_index_container<
      Entry, boost::multi_index::indexed_by<
                 boost::multi_index::sequenced<>,
                 boost::multi_index::hashed_unique<boost::multi_index::member<Entry, int, &Entry::id>>>>;

 public:
  using const_iterator = typename Container::template nth_index<0>::type::const_iterator;

  explicit HU_OrderedIdMap(bool owning) : m_owning(owning) {}
  HU_OrderedIdMap(const HU_OrderedIdMap&) = delete;
  HU_OrderedIdMap& operator=(const HU_OrderedIdMap&) = delete;
  ~HU_OrderedIdMap() { Clear(); }

  // Stores object under id; false (and the object untouched) when id is taken.
  bool Insert(int id, T* object) {
    return object != nullptr && m_entries.template get<0>().push_back(Entry{id, object}).second;
  }
  // For owning maps: stores the object, or deletes it when id is taken.
  bool Adopt(int id, std::unique_ptr<T> object) {
    if (!Insert(id, object.get())) return false;
    object.release();
    return true;
  }
  T* Find(int id) const {
    const auto& byId = m_entries.template get<1>();
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : found->object;
  }
  bool Contains(int id) const { return m_entries.template get<1>().count(id) != 0; }
  // Removes the entry (deleting its object when owning); false when absent.
  bool Erase(int id) {
    auto& byId = m_entries.template get<1>();
    const auto found = byId.find(id);
    if (found == byId.end()) return false;
    T* object = found->object;
    byId.erase(found);
    if (m_owning) delete object;
    return true;
  }
  void Clear() {
    if (m_owning) {
      for (const Entry& entry : m_entries) delete entry.object;
    }
    m_entries.clear();
  }
  // Sizes the hash table for n entries.
  void Reserve(std::size_t n) { m_entries.template get<1>().reserve(n); }

  std::size_t Size() const { return m_entries.size(); }
  bool Empty() const { return m_entries.empty(); }
  const_iterator begin() const { return m_entries.template get<0>().begin(); }
  const_iterator end() const { return m_entries.template get<0>().end(); }

 private:
  Container m_entries;
  bool m_owning;
};
