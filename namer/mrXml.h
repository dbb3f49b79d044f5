// Reading and writing small XML documents through the system's document object. Windows only.
//
// COM is initialised by mrComApartment, which must outlive every document of its thread. Results are COM's; a
// document that is not well-formed is S_FALSE, as the document object reports it. Nothing outside a document
// is ever read: document types and external entities are refused.
#pragma once

#include "framework/CString.h"

#include <windows.h>
#include <msxml2.h>

#include <cwchar>
#include <string>
#include <utility>
#include <vector>

// COM on this thread. When the thread lives in another kind of apartment already, that one is used.
class mrComApartment {
public:
  mrComApartment();
  mrComApartment(const mrComApartment&) = delete;
  mrComApartment& operator=(const mrComApartment&) = delete;
  ~mrComApartment();
  // Failure of the initialisation, else S_OK.
  HRESULT result() const;

private:
  HRESULT m_result;
};

// Owns one reference.
template <class T>
class mrComPtr {
public:
  mrComPtr() = default;
  mrComPtr(mrComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  mrComPtr& operator=(mrComPtr&& other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }
  ~mrComPtr() { reset(); }

  void reset() {
    if (m_object)
      std::exchange(m_object, nullptr)->Release();
  }
  // Where an operation puts a new reference; what was held is released.
  T** out() {
    reset();
    return &m_object;
  }
  T* get() const { return m_object; }
  T* operator->() const { return m_object; }
  explicit operator bool() const { return m_object != nullptr; }

private:
  T* m_object = nullptr;
};

// Owns a text as COM passes it; made from text in the ANSI code page. Null when memory is out.
class mrBstr {
public:
  mrBstr() = default;
  explicit mrBstr(const CString& text);
  explicit mrBstr(const wchar_t* text) : m_text(SysAllocString(text)) {}
  mrBstr(const mrBstr&) = delete;
  mrBstr& operator=(const mrBstr&) = delete;
  ~mrBstr() { SysFreeString(m_text); }
  BSTR get() const { return m_text; }
  // Where an operation puts a new text; what was held is freed.
  BSTR* out() {
    SysFreeString(std::exchange(m_text, nullptr));
    return &m_text;
  }
  explicit operator bool() const { return m_text != nullptr; }

private:
  BSTR m_text = nullptr;
};

// The elements that a path selects, in document order.
class mrXmlElements {
public:
  // S_FALSE at the end.
  HRESULT next();
  // Of the current element, in the ANSI code page; empty when it is not there.
  HRESULT attribute(const mrBstr& name, CString& value) const;
  // The elements below the current one.
  HRESULT select(const mrBstr& path, mrXmlElements& selected) const;

private:
  friend class mrXmlDocument;
  mrComPtr<IXMLDOMNodeList> m_list;
  mrComPtr<IXMLDOMElement> m_element;
};

// An element while a document is walked over.
class mrXmlElement {
public:
  // False when the node is something else, a text or a comment.
  bool set(IXMLDOMNode* node);
  bool is(const wchar_t* name) const;
  // In the ANSI code page; empty when it is not there, or when reading it fails: then the walk ends.
  CString attribute(const mrBstr& name);
  // The first failure to read this or an earlier element, else S_OK.
  HRESULT result() const { return m_result; }

private:
  mrComPtr<IXMLDOMElement> m_element;
  mrBstr m_name;
  HRESULT m_result = S_OK;
};

class mrXmlDocument {
public:
  // A new document object with nothing in it; the first thing to call.
  HRESULT create();

  HRESULT load_bytes(const std::string& bytes);
  // S_FALSE also when there is no such file.
  HRESULT load_file(const CString& path);
  HRESULT select(const mrBstr& path, mrXmlElements& selected) const;
  // Calls visit(element, state) for every element, in document order. What it returns is the state for the
  // elements below; the root gets 0. One walk costs less than a selection by path, which visits every node
  // as well and then sorts what it found. Ends at the first failure, with its result.
  template <class Visit>
  HRESULT walk(Visit visit) const;

  // Begins a document: the processing instruction and the root element.
  HRESULT begin(const mrBstr& root_name, mrComPtr<IXMLDOMElement>& root);
  // Appends an element to one of this document's.
  HRESULT append(IXMLDOMElement* parent, const mrBstr& name, mrComPtr<IXMLDOMElement>& element);
  HRESULT save_file(const CString& path);

private:
  mrComPtr<IXMLDOMDocument> m_document;
};

template <class Visit>
HRESULT mrXmlDocument::walk(Visit visit) const {
  struct Level {
    mrComPtr<IXMLDOMNode> next;
    int state;
  };
  std::vector<Level> levels(1);
  HRESULT hr = m_document->get_firstChild(levels.back().next.out());
  mrXmlElement element;
  while (SUCCEEDED(hr) && !levels.empty()) {
    const mrComPtr<IXMLDOMNode> node = std::move(levels.back().next);
    if (!node) {
      levels.pop_back();
      continue;
    }
    hr = node->get_nextSibling(levels.back().next.out());
    if (FAILED(hr) || !element.set(node.get()))
      continue;
    const int state = visit(element, levels.back().state);
    mrComPtr<IXMLDOMNode> child;
    hr = element.result();
    if (SUCCEEDED(hr))
      hr = node->get_firstChild(child.out());
    if (hr == S_OK)
      levels.push_back({std::move(child), state});
  }
  return SUCCEEDED(hr) ? element.result() : hr;
}

HRESULT mr_set_attribute(IXMLDOMElement* element, const mrBstr& name, const CString& value);
