// The pane beside the documents: the CAD tree and, below it, the properties of what is selected.
//
// The pane is a dialog that does not tell its template itself: the frame answers for it.
#pragma once

#include "apps/SampleCad/scCadTree.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scShapes.h"

class scDocument;
class scGrid;

class scModelPane : public scDialog {
public:
  scModelPane();

  bool create_in(HWND frame);
  void move(const RECT& place);
  // Shows this document, which is then the one that the pane changes; null: none.
  void show(scDocument* document);
  // The selection in the document's view is another one.
  void show_properties();

protected:
  void on_init() override;
  bool on_command(int id, int code, HWND control) override;
  bool on_notify(NMHDR& header, LRESULT& result) override;
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;
  bool answers_identity() const override { return false; }

private:
  void layout();
  scGrid& grid() const;
  const scShape* shown_shape() const;
  void take_tree_change(LPARAM lparam);
  void take_cell(int row);
  bool rename(int id, const char* name);
  void on_tree_command(int id);
  void show_tree_menu(LPARAM point);

  scDocument* m_document = nullptr;
  scCadTree m_tree;
  bool m_showing = false;  // the program fills the tree; its notifications mean nothing
};
