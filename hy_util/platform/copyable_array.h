#pragma once
// CHU_CopyableArray: the library's copyable dynamic array of values, used to return
// intersection points, parameters and similar lists. It is a std::vector with the
// few array verbs the library's interfaces are written in.

#include <cstddef>
#include <vector>

template <class T>
class CHU_CopyableArray : public std::vector<T> {
 public:
  using std::vector<T>::vector;

  int GetSize() const { return static_cast<int>(this->size()); }
  int GetCount() const { return GetSize(); }
  bool IsEmpty() const { return this->empty(); }
  int Add(const T& value) {
    this->push_back(value);
    return GetSize() - 1;
  }
  const T& GetAt(int index) const { return (*this)[static_cast<std::size_t>(index)]; }
  T& GetAt(int index) { return (*this)[static_cast<std::size_t>(index)]; }
  void SetAt(int index, const T& value) { (*this)[static_cast<std::size_t>(index)] = value; }
  void InsertAt(int index, const T& value) { this->insert(this->begin() + index, value); }
  void RemoveAt(int index, int count = 1) {
    this->erase(this->begin() + index, this->begin() + index + count);
  }
  void RemoveAll() { this->clear(); }
  void SetSize(int size) { this->resize(static_cast<std::size_t>(size)); }
};
