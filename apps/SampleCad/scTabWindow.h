// Look-alikes of two tab windows of other libraries, told by their class names: "BCGTabWnd" and "GXTabBeam".
//
// Both answer the common tab messages TCM_INSERTITEMA, TCM_GETITEMCOUNT, TCM_GETITEMA, TCM_GETITEMRECT,
// TCM_GETCURSEL and TCM_SETCURSEL. A tab chosen by the user is told to the parent: by the first by the
// registered message "BCGM_ONCHANGE_ACTIVE_TAB", by the second by message 1925, which is posted; lParam is
// the tab window.
#pragma once

#include "apps/SampleCad/scDrawnWindow.h"
#include "framework/CString.h"

#include <vector>

constexpr UINT gx_tab_changed = WM_USER + 901;
UINT bcg_tab_changed();

// Before a dialog whose template names the classes is opened.
void register_tab_windows();

class scTabWindow : public scDrawnWindow {
protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void draw(HDC dc) override;
  int background() const override { return COLOR_BTNFACE; }
  // The user chose another tab.
  virtual void tell_parent() = 0;
  // How the two differ when they are asked for a tab.
  virtual bool get_item(int index, struct tagTCITEMA& item) = 0;
  virtual COLORREF accent() const = 0;

  const CString& caption(int index) const { return m_captions[static_cast<size_t>(index)]; }
  bool exists(int index) const { return index >= 0 && index < static_cast<int>(m_captions.size()); }
  int current() const { return m_current; }

private:
  RECT tab_rect(int index) const;
  void choose(int index);
  void on_click(POINT at);
  bool on_key(WPARAM key);

  std::vector<CString> m_captions;
  int m_current = 0;
};
