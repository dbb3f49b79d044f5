// The list of files inside the program's file dialogs. Its window class is "SHELLDLL_DefView", the name by
// which the file list of the system's own dialogs is known.
//
// The parent is told with WM_COMMAND: LBN_SELCHANGE when an entry is selected, LBN_DBLCLK when it is to be
// opened.
#pragma once

#include "apps/SampleCad/scReadyFile.h"
#include "apps/SampleCad/scDrawnWindow.h"
#include "framework/CString.h"

#include <vector>

class scFolderView : public scDrawnWindow, private scItemSource {
public:
  // Before a dialog whose template names the class is opened.
  static void register_view();
  static scFolderView& of(HWND window);

  // Shows the folders in `folder` and its files with this ending (".scm"; all when empty).
  void show(const CString& folder, const CString& ending);
  // Name of the selected entry, "" when there is none; ".." for the folder above.
  CString selected() const;
  bool selected_is_folder() const;

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void draw(HDC dc) override;

private:
  struct Entry {
    CString name;
    bool is_folder;
  };

  void list_items(const Add& add) const override;
  void tell(int code);
  void select_at(POINT at);
  RECT entry_rect(size_t entry) const;

  std::vector<Entry> m_entries;
  size_t m_selected = static_cast<size_t>(-1);
};
