// Doubly linked list of the exported interface: std::list under the framework's names.
// A POSITION stays valid until its own element is removed. Reading from an empty list or at a null position
// raises CInvalidArgException.
#pragma once

#include "framework/CInvalidArgException.h"

#include <cstddef>
#include <list>

// Names one element of a list; null is "no element".
using POSITION = void*;

template <class TYPE, class ARG_TYPE = const TYPE&>
class CList {
public:
  // The block size is the framework's allocation hint; std::list has no use for it.
  explicit CList(ptrdiff_t /*block_size*/ = 10) {}

  CList(const CList&) = delete;
  CList& operator=(const CList&) = delete;

  ptrdiff_t GetCount() const { return static_cast<ptrdiff_t>(m_nodes.size()); }
  bool IsEmpty() const { return m_nodes.empty(); }

  POSITION AddTail(ARG_TYPE item) {
    m_nodes.push_back({item, {}});
    m_nodes.back().self = std::prev(m_nodes.end());
    return &m_nodes.back();
  }
  TYPE RemoveHead() { return remove(m_nodes.empty() ? nullptr : &m_nodes.front()); }
  TYPE RemoveTail() { return remove(m_nodes.empty() ? nullptr : &m_nodes.back()); }
  void RemoveAt(POSITION position) { remove(position); }
  void RemoveAll() { m_nodes.clear(); }

  POSITION GetHeadPosition() const { return m_nodes.empty() ? nullptr : as_position(m_nodes.front()); }
  POSITION GetTailPosition() const { return m_nodes.empty() ? nullptr : as_position(m_nodes.back()); }
  TYPE& GetHead() { return at(GetHeadPosition()).value; }
  TYPE& GetTail() { return at(GetTailPosition()).value; }
  TYPE& GetAt(POSITION position) { return at(position).value; }
  // The element at position, which then moves on to the next one (null behind the last).
  TYPE& GetNext(POSITION& position) {
    Node& node = at(position);
    const auto next = std::next(node.self);
    position = next == m_nodes.end() ? nullptr : &*next;
    return node.value;
  }
  // The element at position, which then moves back to the one before (null before the first).
  TYPE& GetPrev(POSITION& position) {
    Node& node = at(position);
    position = node.self == m_nodes.begin() ? nullptr : &*std::prev(node.self);
    return node.value;
  }

private:
  struct Node {
    TYPE value;
    typename std::list<Node>::iterator self;
  };

  static POSITION as_position(const Node& node) { return const_cast<Node*>(&node); }
  static Node& at(POSITION position) {
    if (!position)
      throw CInvalidArgException();
    return *static_cast<Node*>(position);
  }
  TYPE remove(POSITION position) {
    Node& node = at(position);
    TYPE value = node.value;
    m_nodes.erase(node.self);
    return value;
  }

  std::list<Node> m_nodes;
};
