// The host's ribbon customisation widget: the user selects an entry of its list.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

// What the host uploads; 272 bytes, little-endian.
struct mrRibCustomiserRec {
  HWND widget;
  char selected[mr_max_text];  // text of the selected entry, zero-terminated
  uint32_t padding_268;
};
static_assert(sizeof(mrRibCustomiserRec) == 272 && offsetof(mrRibCustomiserRec, selected) == 8,
              "travels between processes");

// wParam of "MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA".
enum mrRibCustomiserRequest : WPARAM {
  ribIdentity = 0,  // lParam 0; a widget answers 165
  ribSelected =
      1,  // lParam: an mrRibTextRequest, whose buffer the widget fills with the selected entry's text
};

// Lies in the host's memory, as the widget does.
struct mrRibTextRequest {
  char* buffer;
  uint32_t size;  // bytes of the buffer, 260
};

class MR_API mrRibCustomiser : public mrBaseWindow {
public:
  // Raises CInvalidArgException for a null widget: there is no window to name.
  mrRibCustomiser(HWND widget, mrBaseWindowFactory* factory);
};

class MR_API mrRibCustomiserFactory : public mrBaseWindowFactory {
public:
  mrRibCustomiserFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to a widget or to a child of one. At a widget's BCGM_GRID_SEL_CHANGED the widget is
  // asked for the selected entry's text, which is uploaded.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Selections of one widget in a row end as the last one. The text travels in the record.
  void copy_data(void* data) override;
  // Declares a widget by its host-given name, else by its text and control id.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // 0: widgets offer no context menu action.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

private:
  void upload_selected(HWND widget);
};
