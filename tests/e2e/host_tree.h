// A tree view of the recorded host: its items by their places, and where they are on the screen. Works while
// a recording runs, since rectangles come from the host through remote calls.
#pragma once

#include "hooks/mrChannel.h"
#include "tests/support/e2e.h"

#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

class mrHostTree {
public:
  // 1-based places among the siblings, from the root down.
  using Places = std::vector<int>;

  explicit mrHostTree(HWND tree) : m_tree(tree) {}
  operator HWND() const { return m_tree; }

  HTREEITEM next(UINT direction, HTREEITEM from = nullptr) const {
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(m_tree, TVM_GETNEXTITEM, direction, reinterpret_cast<LPARAM>(from)));
  }
  HTREEITEM selected() const { return next(TVGN_CARET); }
  // Null when there is none.
  HTREEITEM item(const Places& places) const {
    HTREEITEM found = nullptr;
    for (const int place : places) {
      found = next(found ? TVGN_CHILD : TVGN_ROOT, found);
      for (int i = 1; found && i < place; ++i)
        found = next(TVGN_NEXT, found);
    }
    return found;
  }
  // In the tree's client pixels: the item's text, or its whole row.
  RECT rect_of(const Places& places, bool text_only) const {
    const HTREEITEM wanted = item(places);
    EXPECT_NE(nullptr, wanted);
    RECT rect = {};
    memcpy(&rect, &wanted, sizeof wanted);
    EXPECT_NE(0, send_remotely(m_tree, TVM_GETITEMRECT, text_only, &rect, sizeof rect));
    EXPECT_LT(rect.left, rect.right);
    return rect;
  }
  // The middle of an item's text in screen pixels.
  POINT place_of(const Places& places) const {
    const RECT rect = rect_of(places, true);
    return client_place(m_tree, (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
  }
  // Clicks an item's text and waits until it is selected.
  void select(mrUser& user, const Places& places) const {
    user.click(place_of(places));
    EXPECT_TRUE(wait_until([&] { return selected() == item(places); }));
  }
  bool is_editing() const { return SendMessageA(m_tree, TVM_GETEDITCONTROL, 0, 0) != 0; }
  // Opens the selected item's label by the program.
  void edit_label() const {
    PostMessageA(m_tree, TVM_EDITLABELA, 0, reinterpret_cast<LPARAM>(selected()));
    EXPECT_TRUE(wait_until([this] { return is_editing(); }));
  }

private:
  HWND m_tree;
};
