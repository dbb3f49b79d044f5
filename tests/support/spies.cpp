#include "tests/support/spies.h"

#include "hooks/mrDispatcher.h"

// Never destroyed: a type that the library has no factory for keeps its spy in the table.
static mrSpyFactory& spy(int type) {
  static mrSpyFactory* spies[last_factory_type + 1];
  if (!spies[type])
    spies[type] = new mrSpyFactory(type);
  return *spies[type];
}

void mrSpyFactory::note(const std::string& what) {
  if (log)
    log->push_back(std::to_string(m_type) + " " + what);
}

void mrSpyFactory::on_start_record() {
  note("start");
  if (on_start)
    on_start();
}

bool mrSpyFactory::handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) {
  note("message " + std::to_string(kind) + " " + std::to_string(code) + " " + std::to_string(wparam));
  if (during_message)
    during_message();
  if (on_message)
    on_message(kind, code, wparam, lparam);
  return claims;
}

void mrSpyFactory::copy_data(void* data) { note("data " + std::to_string(*static_cast<int*>(data))); }

mrDeclarationRes mrSpyFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                               CString& search, CString& identifier) {
  note("declare");
  return declare ? declare(*info, declaration, search, identifier) : declaredNot;
}

mrContextMenuRes mrSpyFactory::context_menu_invoke(HWND /*window*/, const char* /*name*/,
                                                   const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}

mrSpies::mrSpies() {
  for (int type = first_factory_type; type <= last_factory_type; ++type) {
    m_originals[type] = get_factory(type, true);
    spy(type).log = &log;
    register_factory(spy(type));
  }
}

mrSpies::~mrSpies() {
  for (int type = first_factory_type; type <= last_factory_type; ++type) {
    spy(type).claims = false;
    spy(type).during_message = nullptr;
    spy(type).on_message = nullptr;
    spy(type).on_start = nullptr;
    spy(type).declare = nullptr;
    spy(type).log = nullptr;
    if (m_originals[type])
      register_factory(*m_originals[type]);
  }
}

mrSpyFactory& mrSpies::operator[](int type) { return spy(type); }
