// The naming engine when the system's document object refuses to be set up: no document is trusted to an
// object that might read what lies outside of it.
#include "tests/namer/installation.h"
#include "tests/namer/open_namer.h"

#include <windows.h>
#include <msxml2.h>

#include <cstring>
#include <stdexcept>

namespace {

constexpr long refused = static_cast<int32_t>(0x80040123);

// IXMLDOMDocument2, which not every import library knows.
constexpr IID document2_interface = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// Stands in for any method; the caller removes the arguments.
HRESULT STDMETHODCALLTYPE refuse() { return refused; }

// As long as the object lives, the method of every document object of this process fails.
class RefusedMethod {
public:
  template <class Method>
  RefusedMethod(const char* name, REFIID interface_id, Method method) : m_name(name) {
    CLSID class_id;
    IUnknown* document = nullptr;
    if (FAILED(CLSIDFromProgID(L"MSXML.DOMDocument", &class_id)) ||
        FAILED(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, interface_id,
                                reinterpret_cast<void**>(&document))))
      throw std::runtime_error("no document object");
    m_slot = *reinterpret_cast<void***>(document) + index_of(method);
    m_original = *m_slot;
    put(reinterpret_cast<void*>(refuse));
    document->Release();
  }
  RefusedMethod(const RefusedMethod&) = delete;
  RefusedMethod& operator=(const RefusedMethod&) = delete;
  ~RefusedMethod() { put(m_original); }
  const char* name() const { return m_name; }

private:
  // A pointer to a virtual function is one more than its place in the table of addresses, in bytes.
  template <class Method>
  static size_t index_of(Method method) {
    uintptr_t place = 0;
    std::memcpy(&place, &method, sizeof place);
    return place / sizeof(void*);
  }
  void put(void* address) {
    DWORD protection = 0;
    VirtualProtect(m_slot, sizeof *m_slot, PAGE_READWRITE, &protection);
    *m_slot = address;
    VirtualProtect(m_slot, sizeof *m_slot, protection, &protection);
  }

  const char* m_name;
  void** m_slot = nullptr;
  void* m_original = nullptr;
};

class DocumentObject : public testing::Test {
protected:
  DocumentObject() {
    // Keeps the document object's library loaded.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    m_specification = m_installation.tree.write("spec.xml", "<rc_map/>");
    m_namer.add_constant(CString("g"), CString("IDC_A"), 11);
    EXPECT_EQ(0, m_namer.save_res_map(m_map));
  }
  ~DocumentObject() override { CoUninitialize(); }

  void expect_refusal(const RefusedMethod& method) {
    EXPECT_EQ(refused, m_namer.process_spec_file(m_specification)) << method.name();
    EXPECT_EQ(refused, m_namer.save_res_map(m_map)) << method.name();
    OpenNamer stored;
    EXPECT_EQ(refused, stored.load_res_map(m_map)) << method.name();
    EXPECT_EQ(0u, stored.get_name_count()) << method.name();
  }

  Installation m_installation;
  const CString m_map = m_installation.path("ui_map.rcz");
  CString m_specification;
  OpenNamer m_namer;
};

}  // namespace

TEST_F(DocumentObject, ThatCannotBeSetUpEndsTheOperationWithItsResult) {
  expect_refusal({"put_validateOnParse", IID_IXMLDOMDocument, &IXMLDOMDocument::put_validateOnParse});
  expect_refusal({"put_resolveExternals", IID_IXMLDOMDocument, &IXMLDOMDocument::put_resolveExternals});
  expect_refusal({"put_async", IID_IXMLDOMDocument, &IXMLDOMDocument::put_async});
  expect_refusal({"setProperty", document2_interface, &IXMLDOMDocument2::setProperty});
  EXPECT_EQ(0, m_namer.process_spec_file(m_specification)) << "nothing is refused any more";
  EXPECT_EQ(0, m_namer.save_res_map(m_map));
  OpenNamer stored;
  EXPECT_EQ(0, stored.load_res_map(m_map));
  EXPECT_EQ("g.IDC_A", stored.names(11));
}
