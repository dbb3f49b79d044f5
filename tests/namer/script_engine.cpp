#include "tests/namer/script_engine.h"

// The interface identifiers of the script engine come from these headers alone.
#include <initguid.h>
#include <windows.h>
#include <activscp.h>
#include <oleauto.h>

#include <stdexcept>

// What the engine asks of its host: almost nothing. Lives as long as the engine, so references are not
// counted.
struct ScriptEngine::Site final : IActiveScriptSite {
  IActiveScript* script = nullptr;
  IActiveScriptParse* parse = nullptr;
  std::string error;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IActiveScriptSite)) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD, IUnknown**, ITypeInfo**) override {
    return TYPE_E_ELEMENTNOTFOUND;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* what) override {
    EXCEPINFO info = {};
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    what->GetExceptionInfo(&info);
    what->GetSourcePosition(&context, &line, &column);
    error = "error in line " + std::to_string(line + 1);
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrHelpFile);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

  // The value of an expression, or of nothing when value is null.
  HRESULT run(const std::string& text, VARIANT* value) {
    error.clear();
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                                        &wide[0], static_cast<int>(wide.size()))));
    EXCEPINFO info = {};
    return parse->ParseScriptText(wide.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                  value ? SCRIPTTEXT_ISEXPRESSION : SCRIPTTEXT_ISVISIBLE, value, &info);
  }
};

static void require(HRESULT hr) {
  if (FAILED(hr))
    throw std::runtime_error("no script engine");
}

ScriptEngine::ScriptEngine() : m_site(new Site) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  CLSID id;
  require(CLSIDFromProgID(L"JScript", &id));
  require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                           reinterpret_cast<void**>(&m_site->script)));
  require(m_site->script->QueryInterface(IID_IActiveScriptParse, reinterpret_cast<void**>(&m_site->parse)));
  require(m_site->script->SetScriptSite(m_site));
  require(m_site->parse->InitNew());
  require(m_site->script->SetScriptState(SCRIPTSTATE_STARTED));
}

ScriptEngine::~ScriptEngine() {
  m_site->script->Close();
  m_site->parse->Release();
  m_site->script->Release();
  delete m_site;
  CoUninitialize();
}

std::string ScriptEngine::run(const std::string& script) {
  const HRESULT hr = m_site->run(script, nullptr);
  return FAILED(hr) && m_site->error.empty() ? "error" : m_site->error;
}

std::string ScriptEngine::evaluate(const std::string& expression) {
  VARIANT value;
  VariantInit(&value);
  const HRESULT hr = m_site->run(expression, &value);
  if (FAILED(hr) || !m_site->error.empty())
    return "error";
  VARIANT text;
  VariantInit(&text);
  std::string result = value.vt == VT_I4 || value.vt == VT_R8 ? "number " : "text ";
  if (SUCCEEDED(VariantChangeType(&text, &value, 0, VT_BSTR)))
    for (const wchar_t* ch = V_BSTR(&text); ch && *ch; ++ch)
      result += static_cast<char>(*ch);
  VariantClear(&text);
  VariantClear(&value);
  return result;
}
