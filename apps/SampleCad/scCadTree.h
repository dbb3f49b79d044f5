// The CAD tree: a tree view that lists the objects of a model, with icons to check, show, colour and star
// them.
//
// The tree view answers kvtWM_REQUEST_CAD_TREE_INFORMATION with 165. A change that the user makes with an
// icon is told to the parent by kvtWM_CAD_TREE_CHANGED, with the address of a kvtCADTreeChange; the parent
// then changes the model.
#pragma once

#include "apps/SampleCad/scModel.h"
#include "apps/SampleCad/scReadyFile.h"
#include "framework/CString.h"

#include <windows.h>
#include <commctrl.h>

#include <vector>

class scCadTree : private scItemSource {
public:
  // Makes this tree view a CAD tree. The object must live as long as the window.
  void attach(HWND tree);

  // Brings the tree up to date with a model; null empties it. document: tells models apart.
  void sync(const scModel* model, int document, const CString& title);

  // Shape of an item, 0 for the model and for groups.
  int shape_of(HTREEITEM item) const;
  // Shapes at and below the selected item.
  std::vector<int> selected_shapes() const;
  // Applies a change of the tree to a shape.
  static void apply(scShape& shape, unsigned change, int value);

private:
  // One item. Items with equal keys are the same object.
  struct Row {
    CString key;
    CString parent_key;  // empty: the root
    CString text;
    int shape = 0;
    HTREEITEM item = nullptr;
  };
  enum Icon { iconsCheck, iconsEye, iconsColour, iconsStar, icons };

  void list_items(const Add& add) const override;
  static LRESULT CALLBACK procedure(HWND tree, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                    DWORD_PTR self);
  bool on_click(POINT at);
  void tell(HTREEITEM item, const scShape& shape, Icon icon);
  void draw_icons();
  void draw_icon(HDC dc, const scShape& shape, Icon icon, const RECT& at) const;

  std::vector<Row> wanted_rows(const scModel& model, int document, const CString& title) const;
  bool is_in(const std::vector<Row>& wanted, const Row& row) const;
  void remove_missing(const std::vector<Row>& wanted);
  void insert_or_rename(std::vector<Row>& wanted);
  Row* find(const CString& key);
  const Row* row_of(HTREEITEM item) const;
  bool item_row(HTREEITEM item, RECT& rect) const;
  RECT icon_rect(const RECT& row, Icon icon) const;

  HWND m_tree = nullptr;
  const scModel* m_model = nullptr;
  std::vector<Row> m_rows;
};
