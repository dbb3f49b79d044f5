// A real tree view in the test process, and what it tells its parent.
#pragma once

#include "tests/support/test_window.h"

#include <windows.h>
#include <commctrl.h>

#include <deque>
#include <string>

class mrTestTree : public mrTestWindow {
public:
  explicit mrTestTree(HWND parent, int id = 7)
      : mrTestWindow((InitCommonControls(), WC_TREEVIEWA), "", WS_CHILD | WS_VISIBLE | TVS_EDITLABELS, parent,
                     id) {}

  HTREEITEM add(const std::string& label, HTREEITEM parent = TVI_ROOT) {
    TVINSERTSTRUCTA added = {};
    added.hParent = parent;
    added.hInsertAfter = TVI_LAST;
    added.item.mask = TVIF_TEXT;
    added.item.pszText = const_cast<char*>(label.c_str());
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(get(), TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&added)));
  }
  void select(HTREEITEM item) {
    SendMessageA(get(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
  }
  // The item's whole row in the tree's client pixels.
  RECT row(HTREEITEM item) {
    RECT rect = {};
    TreeView_GetItemRect(get(), item, &rect, FALSE);
    return rect;
  }
};

// The lParams of a tree's WM_NOTIFY; they live as long as this object.
class mrTreeNotifications {
public:
  LPARAM plain(HWND tree, UINT code) {
    m_headers.push_back({tree, 7, code});
    return reinterpret_cast<LPARAM>(&m_headers.back());
  }
  LPARAM selection(HWND tree, HTREEITEM item, UINT code = TVN_SELCHANGEDA) {
    NMTREEVIEWA told = {};
    told.hdr = {tree, 7, code};
    told.itemNew.hItem = item;
    m_selections.push_back(told);
    return reinterpret_cast<LPARAM>(&m_selections.back());
  }
  // Without a label the user gave the edit up.
  LPARAM label(HWND tree, HTREEITEM item, const std::string& text, UINT mask = TVIF_TEXT) {
    m_texts.push_back(text);
    NMTVDISPINFOA told = {};
    told.hdr = {tree, 7, TVN_ENDLABELEDITA};
    told.item.mask = mask;
    told.item.hItem = item;
    told.item.pszText = &m_texts.back()[0];
    m_labels.push_back(told);
    return reinterpret_cast<LPARAM>(&m_labels.back());
  }
  LPARAM cancelled_label(HWND tree, HTREEITEM item) {
    const LPARAM told = label(tree, item, "");
    m_labels.back().item.pszText = nullptr;
    return told;
  }

private:
  std::deque<NMHDR> m_headers;
  std::deque<NMTREEVIEWA> m_selections;
  std::deque<NMTVDISPINFOA> m_labels;
  std::deque<std::string> m_texts;
};
