// The ribbon customisation widget: a list of commands of which one is selected.
//
// The widget answers the registered message "MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA": wParam 0 with 165;
// wParam 1 with lParam the address of an scRibbonRequest with the selected entry's text. The grid inside it
// sends BCGM_GRID_SEL_CHANGED to the widget when the user selects another entry.
#pragma once

#include "apps/SampleCad/scReadyFile.h"
#include "apps/SampleCad/scDrawnWindow.h"
#include "apps/SampleCad/scWindow.h"
#include "framework/CString.h"

#include <vector>

struct scRibbonRequest {
  char* text;         // buffer of the asker
  unsigned capacity;  // its size in characters
};

class scRibbonGrid : public scDrawnWindow, private scItemSource {
public:
  bool create_in(HWND widget, std::vector<CString> entries);
  const CString& selected() const { return m_entries[m_current]; }

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void draw(HDC dc) override;

private:
  void list_items(const Add& add) const override;
  void select(size_t entry);
  RECT row_rect(size_t row) const;

  std::vector<CString> m_entries;
  size_t m_current = 0;
};

class scRibbonWidget : public scWindow {
public:
  // Before a dialog whose template names the class is opened.
  static void register_widget();
  static scRibbonWidget& of(HWND window);

  const CString& selected() const { return m_grid.selected(); }

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;

private:
  LRESULT on_request(WPARAM code, LPARAM lparam) const;

  scRibbonGrid m_grid;
};
