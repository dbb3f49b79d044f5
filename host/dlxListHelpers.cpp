// Stand-in for the host's dialog-framework library; see the header.
#include "host/dlxListHelpers.h"

#include <vector>

namespace {

// What differs between the two kinds of control when one asks for an item's text.
struct ItemMessages {
  UINT get_length;
  UINT get_text;
  LONG_PTR owner_drawn;  // style bits
  LONG_PTR has_strings;
};
constexpr ItemMessages combo_messages = {CB_GETLBTEXTLEN, CB_GETLBTEXT,
                                         CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE, CBS_HASSTRINGS};
constexpr ItemMessages list_messages = {LB_GETTEXTLEN, LB_GETTEXT, LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE,
                                        LBS_HASSTRINGS};

// An item's text never comes near this; a control that claims more is not believed.
constexpr LRESULT max_item_length = 1 << 20;

bool keeps_strings(HWND window, const ItemMessages& messages) {
  const LONG_PTR style = GetWindowLongPtrA(window, GWL_STYLE);
  return !(style & messages.owner_drawn) || (style & messages.has_strings);
}

CString to_ansi(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
  if (size <= 1)
    return CString();
  std::vector<char> buffer(static_cast<size_t>(size));
  WideCharToMultiByte(CP_ACP, 0, text, -1, buffer.data(), size, nullptr, nullptr);
  return CString(buffer.data());
}

CString read_item(HWND window, int index, const ItemMessages& messages) {
  if (index < 0 || !keeps_strings(window, messages))
    return CString();
  const WPARAM item = static_cast<WPARAM>(index);
  const LRESULT length = SendMessageW(window, messages.get_length, item, 0);
  if (length <= 0 || length > max_item_length)
    return CString();
  // The wide message whatever the window is: not every system converts the text of another process's control,
  // and the wide form is what they all agree on. Twice the room, because the length may have been counted in
  // bytes of the code page and the item may be replaced between the two messages.
  std::vector<wchar_t> text(static_cast<size_t>(length) * 2 + 2, L'\0');
  if (SendMessageW(window, messages.get_text, item, reinterpret_cast<LPARAM>(text.data())) <= 0)
    return CString();
  text.back() = L'\0';
  return to_ansi(text.data());
}

bool is_class(HWND window, const char* name) {
  char class_name[64];
  return GetClassNameA(window, class_name, sizeof(class_name)) && lstrcmpiA(class_name, name) == 0;
}

// The combo box that holds the items: an extended combo box keeps them in its own structures and lets the box
// inside it draw them, so the box's style says nothing about strings.
bool is_extended_combo(HWND window) { return is_class(window, "ComboBoxEx32"); }

}  // namespace

CString dlxListHelpers::get_combo_item(HWND combo, int index, bool /*from_list*/) {
  if (is_extended_combo(combo)) {
    ItemMessages messages = combo_messages;
    messages.owner_drawn = 0;
    return read_item(combo, index, messages);
  }
  return read_item(combo, index, combo_messages);
}

CString dlxListHelpers::get_list_item(HWND list, int index, bool /*from_list*/) {
  return read_item(list, index, list_messages);
}
