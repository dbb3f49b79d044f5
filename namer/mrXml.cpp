// The system's XML document object behind plain operations.
#include "namer/mrXml.h"

#include "namer/mrFiles.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr wchar_t program_id[] = L"MSXML.DOMDocument";
// In the process, through a handler, in a process of its own, on another machine: whatever is registered.
constexpr DWORD any_server =
    CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER | CLSCTX_LOCAL_SERVER | CLSCTX_REMOTE_SERVER;
static_assert(any_server == 23, "as documented");

// IXMLDOMDocument2, which not every import library knows.
constexpr IID document2_interface = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

constexpr HRESULT failed_document = S_FALSE;

// Owns what a variant holds.
class Variant {
public:
  Variant() { VariantInit(&m_value); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&m_value); }
  VARIANT* out() {
    VariantClear(&m_value);
    return &m_value;
  }
  const VARIANT& get() const { return m_value; }
  BSTR text() const { return m_value.vt == VT_BSTR ? V_BSTR(&m_value) : nullptr; }

private:
  VARIANT m_value;
};

// A text lent to a call that takes a variant.
VARIANT lend_text(BSTR text) {
  VARIANT value;
  VariantInit(&value);
  V_VT(&value) = VT_BSTR;
  V_BSTR(&value) = text;
  return value;
}

VARIANT lend_bool(bool flag) {
  VARIANT value;
  VariantInit(&value);
  V_VT(&value) = VT_BOOL;
  V_BOOL(&value) = flag ? VARIANT_TRUE : VARIANT_FALSE;
  return value;
}

CString to_ansi(BSTR text) {
  const int length = static_cast<int>(SysStringLen(text));
  if (length == 0)
    return CString();
  std::string ansi(static_cast<size_t>(length), '\0');
  const auto is_plain = [](wchar_t ch) { return ch < 0x80; };
  if (std::all_of(text, text + length, is_plain)) {
    std::transform(text, text + length, ansi.begin(), [](wchar_t ch) { return static_cast<char>(ch); });
    return CString(std::move(ansi));
  }
  // One byte per character nearly always; then the first call is the only one.
  int written = WideCharToMultiByte(CP_ACP, 0, text, length, &ansi[0], length, nullptr, nullptr);
  if (written == 0) {
    written = WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
    ansi.resize(static_cast<size_t>(written));
    WideCharToMultiByte(CP_ACP, 0, text, length, &ansi[0], written, nullptr, nullptr);
  }
  ansi.resize(static_cast<size_t>(written));
  return CString(std::move(ansi));
}

HRESULT read_attribute(IXMLDOMElement* element, const mrBstr& name, CString& text) {
  if (!name)
    return E_OUTOFMEMORY;
  Variant value;
  const HRESULT hr = element->getAttribute(name.get(), value.out());
  // S_FALSE: there is none.
  text = hr == S_OK ? to_ansi(value.text()) : CString();
  return hr;
}

// A document object that cannot be told to is not trusted with a document.
HRESULT prohibit_document_types(IXMLDOMDocument* document) {
  mrComPtr<IXMLDOMDocument2> properties;
  const HRESULT hr =
      document->QueryInterface(document2_interface, reinterpret_cast<void**>(properties.out()));
  if (FAILED(hr))
    return hr;
  const mrBstr prohibit(L"ProhibitDTD");
  return prohibit ? properties->setProperty(prohibit.get(), lend_bool(true)) : E_OUTOFMEMORY;
}

// An array of bytes as the document object reads them.
HRESULT make_byte_array(const std::string& bytes, VARIANT& array) {
  SAFEARRAY* const safe_array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (!safe_array)
    return E_OUTOFMEMORY;
  V_VT(&array) = VT_ARRAY | VT_UI1;
  V_ARRAY(&array) = safe_array;
  void* data = nullptr;
  const HRESULT hr = SafeArrayAccessData(safe_array, &data);
  if (FAILED(hr))
    return hr;
  std::memcpy(data, bytes.data(), bytes.size());
  return SafeArrayUnaccessData(safe_array);
}

}  // namespace

mrComApartment::mrComApartment() : m_result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}

mrComApartment::~mrComApartment() {
  if (SUCCEEDED(m_result))
    CoUninitialize();
}

HRESULT mrComApartment::result() const {
  return SUCCEEDED(m_result) || m_result == RPC_E_CHANGED_MODE ? S_OK : m_result;
}

mrBstr::mrBstr(const CString& text) {
  const int length = MultiByteToWideChar(CP_ACP, 0, text, text.GetLength(), nullptr, 0);
  m_text = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  if (m_text)
    MultiByteToWideChar(CP_ACP, 0, text, text.GetLength(), m_text, length);
}

bool mrXmlElement::set(IXMLDOMNode* node) {
  if (FAILED(node->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(m_element.out()))))
    return false;
  const HRESULT hr = m_element->get_nodeName(m_name.out());
  if (FAILED(hr))
    m_result = hr;
  return SUCCEEDED(hr);
}

bool mrXmlElement::is(const wchar_t* name) const { return m_name && std::wcscmp(m_name.get(), name) == 0; }

CString mrXmlElement::attribute(const mrBstr& name) {
  CString value;
  const HRESULT hr = read_attribute(m_element.get(), name, value);
  if (FAILED(hr) && SUCCEEDED(m_result))
    m_result = hr;
  return value;
}

HRESULT mrXmlElements::next() {
  mrComPtr<IXMLDOMNode> node;
  HRESULT hr = S_FALSE;
  while (m_list && (hr = m_list->nextNode(node.out())) == S_OK)
    if (SUCCEEDED(node->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(m_element.out()))))
      return S_OK;
  return hr;
}

HRESULT mrXmlElements::attribute(const mrBstr& name, CString& value) const {
  return read_attribute(m_element.get(), name, value);
}

HRESULT mrXmlElements::select(const mrBstr& path, mrXmlElements& selected) const {
  return path ? m_element->selectNodes(path.get(), selected.m_list.out()) : E_OUTOFMEMORY;
}

HRESULT mrXmlDocument::create() {
  CLSID class_id;
  HRESULT hr = CLSIDFromProgID(program_id, &class_id);
  if (FAILED(hr))
    return hr;
  hr = CoCreateInstance(class_id, nullptr, any_server, IID_IXMLDOMDocument,
                        reinterpret_cast<void**>(m_document.out()));
  if (FAILED(hr))
    return hr;
  hr = m_document->put_validateOnParse(VARIANT_FALSE);
  if (SUCCEEDED(hr))
    hr = m_document->put_resolveExternals(VARIANT_FALSE);
  if (SUCCEEDED(hr))
    hr = prohibit_document_types(m_document.get());
  return SUCCEEDED(hr) ? m_document->put_async(VARIANT_FALSE) : hr;
}

HRESULT mrXmlDocument::load_bytes(const std::string& bytes) {
  if (bytes.empty())
    return failed_document;
  Variant array;
  const HRESULT made = make_byte_array(bytes, *array.out());
  if (FAILED(made))
    return made;
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const HRESULT hr = m_document->load(array.get(), &loaded);
  return SUCCEEDED(hr) && !loaded ? failed_document : hr;
}

// Through the bytes and not through the document object, which takes a path for an address: with '#' or '%'
// in the name of a folder it would look elsewhere.
HRESULT mrXmlDocument::load_file(const CString& path) {
  std::string bytes;
  return mrFiles::read(path, bytes) ? load_bytes(bytes) : failed_document;
}

HRESULT mrXmlDocument::select(const mrBstr& path, mrXmlElements& selected) const {
  return path ? m_document->selectNodes(path.get(), selected.m_list.out()) : E_OUTOFMEMORY;
}

HRESULT mrXmlDocument::begin(const mrBstr& root_name, mrComPtr<IXMLDOMElement>& root) {
  const mrBstr target(L"xml"), data(L"version='1.0'");
  if (!target || !data || !root_name)
    return E_OUTOFMEMORY;
  mrComPtr<IXMLDOMProcessingInstruction> instruction;
  HRESULT hr = m_document->createProcessingInstruction(target.get(), data.get(), instruction.out());
  if (SUCCEEDED(hr))
    hr = m_document->appendChild(instruction.get(), nullptr);
  if (SUCCEEDED(hr))
    hr = m_document->createElement(root_name.get(), root.out());
  return SUCCEEDED(hr) ? m_document->appendChild(root.get(), nullptr) : hr;
}

HRESULT mrXmlDocument::append(IXMLDOMElement* parent, const mrBstr& name, mrComPtr<IXMLDOMElement>& element) {
  if (!name)
    return E_OUTOFMEMORY;
  const HRESULT hr = m_document->createElement(name.get(), element.out());
  return SUCCEEDED(hr) ? parent->appendChild(element.get(), nullptr) : hr;
}

HRESULT mrXmlDocument::save_file(const CString& path) {
  const mrBstr text(path);
  return text ? m_document->save(lend_text(text.get())) : E_OUTOFMEMORY;
}

HRESULT mr_set_attribute(IXMLDOMElement* element, const mrBstr& name, const CString& value) {
  const mrBstr text(value);
  return name && text ? element->setAttribute(name.get(), lend_text(text.get())) : E_OUTOFMEMORY;
}
