// Factories that note what they are asked, in the dispatcher's table in place of the library's own.
#pragma once

#include "hooks/mrFactoryType.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

// One factory of any type. Its answers are those of a factory that claims and declares nothing, until a test
// says otherwise.
class mrSpyFactory : public mrBaseWindowFactory {
public:
  using Declare = std::function<mrDeclarationRes(const mrWindowInfo& info, CString& declaration,
                                                 CString& search, CString& identifier)>;

  explicit mrSpyFactory(int type) : mrBaseWindowFactory("Spy", "Spy"), m_type(type) {}

  mrFactoryType get_factory_type() override { return static_cast<mrFactoryType>(m_type); }
  void on_start_record() override;
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  void copy_data(void* data) override;
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

  bool claims = false;                   // answer of handle_message
  std::function<void()> during_message;  // runs inside handle_message
  std::function<void(int kind, int code, WPARAM wparam, LPARAM lparam)> on_message;  // the same
  std::function<void()> on_start;  // runs inside on_start_record
  Declare declare;                 // null: declaredNot
  std::vector<std::string>* log = nullptr;

private:
  void note(const std::string& what);

  int m_type;
};

// Eighteen spies as long as it exists; afterwards the library's factories are back.
class mrSpies {
public:
  mrSpies();
  ~mrSpies();
  mrSpies(const mrSpies&) = delete;
  mrSpies& operator=(const mrSpies&) = delete;

  mrSpyFactory& operator[](int type);

  // What the spies were asked, in order: "TYPE start", "TYPE message KIND CODE WPARAM", "TYPE data",
  // "TYPE declare".
  std::vector<std::string> log;

private:
  mrActionFactory* m_originals[last_factory_type + 1] = {};
};
