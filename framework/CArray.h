// Growable array of the exported interface: std::vector under the framework's names.
// Every access by index is checked and raises CInvalidArgException.
#pragma once

#include "framework/CInvalidArgException.h"

#include <cstddef>
#include <vector>

// TYPE is what is stored, ARG_TYPE how one is passed in.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray {
public:
  ptrdiff_t GetSize() const { return static_cast<ptrdiff_t>(m_items.size()); }
  ptrdiff_t GetCount() const { return GetSize(); }
  bool IsEmpty() const { return m_items.empty(); }

  // Index of the new element.
  ptrdiff_t Add(ARG_TYPE item) {
    m_items.push_back(item);
    return GetSize() - 1;
  }
  void RemoveAt(ptrdiff_t index) { m_items.erase(m_items.begin() + static_cast<ptrdiff_t>(checked(index))); }
  void RemoveAll() { m_items.clear(); }

  TYPE& ElementAt(ptrdiff_t index) { return m_items[checked(index)]; }
  const TYPE& GetAt(ptrdiff_t index) const { return m_items[checked(index)]; }
  void SetAt(ptrdiff_t index, ARG_TYPE item) { m_items[checked(index)] = item; }
  TYPE& operator[](ptrdiff_t index) { return ElementAt(index); }
  const TYPE& operator[](ptrdiff_t index) const { return GetAt(index); }

  // For range-based loops.
  auto begin() { return m_items.begin(); }
  auto end() { return m_items.end(); }
  auto begin() const { return m_items.begin(); }
  auto end() const { return m_items.end(); }

private:
  size_t checked(ptrdiff_t index) const {
    if (index < 0 || index >= GetSize())
      throw CInvalidArgException();
    return static_cast<size_t>(index);
  }

  std::vector<TYPE> m_items;
};
