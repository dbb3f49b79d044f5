// Answers to the identity messages; see the header.
#include "apps/SampleCad/scIdentity.h"

namespace {

// Kept on the windows themselves: they go when the windows go.
constexpr char name_property[] = "SampleCad.Name";
constexpr char idd_property[] = "SampleCad.Dialog";

struct IdentityMessages {
  UINT template_id = RegisterWindowMessageA("MSG_ZQ_GetDialogTemplateID");
  UINT resource_library = RegisterWindowMessageA("MSG_ZQ_GetDialogResLibrary");
  UINT window_idd = RegisterWindowMessageA("MSG_ZQ_GetWindowIDD");
  UINT window_name = RegisterWindowMessageA("MSG_ZQ_GetWindowName");
};

// Registered at the first question; the numbers hold for the session.
const IdentityMessages& messages() {
  static const IdentityMessages registered;
  return registered;
}

// The asker deletes the atom. 0 when there is no text.
LRESULT as_atom(const char* text) { return text ? GlobalAddAtomA(text) : 0; }

}  // namespace

void set_window_name(HWND window, const char* name) {
  SetPropA(window, name_property, const_cast<char*>(name));
}

void set_window_idd(HWND window, int dialog_id) {
  SetPropA(window, idd_property, reinterpret_cast<HANDLE>(static_cast<INT_PTR>(dialog_id)));
}

bool answer_identity(UINT message, LPARAM lparam, LRESULT& answer) {
  // Any window of the program, also inside a dialog; another program's has no such property.
  const HWND window = reinterpret_cast<HWND>(lparam);
  if (message == messages().window_name)
    answer = as_atom(static_cast<const char*>(GetPropA(window, name_property)));
  else if (message == messages().window_idd)
    answer = reinterpret_cast<LRESULT>(GetPropA(window, idd_property));
  else
    return false;
  return true;
}

bool answer_dialog_identity(UINT message, int template_id, LRESULT& answer) {
  if (message == messages().template_id)
    answer = template_id;
  else if (message == messages().resource_library)
    answer = as_atom(sc_resource_library);
  else
    return false;
  return true;
}
