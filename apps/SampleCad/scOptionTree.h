// A tree of settings: groups, check boxes and texts. Its window class is "zqpOptionTree".
//
// Answers the registered message "MSG_OT_RequestInformation"; wParam says what is wanted:
//   1  lParam an scOptionRequest: the item's label     5  lParam the item: its parent, 0 at the root
//   6  lParam the item: its kind, 2 for a check box     8  lParam an scOptionRequest: the item's value as
//   text
// A value that the user changed is told to the parent with WM_NOTIFY, code -1105, as an scOptionChange.
#pragma once

#include "apps/SampleCad/scInPlaceEdit.h"
#include "apps/SampleCad/scReadyFile.h"
#include "apps/SampleCad/scDrawnWindow.h"
#include "framework/CString.h"

#include <memory>
#include <cstddef>
#include <vector>

constexpr UINT option_changed = static_cast<UINT>(-1105);

enum scOptionKind { optionGroup = 0, optionText = 1, optionCheck = 2 };

struct scOption {
  scOptionKind kind = optionGroup;
  CString label;
  CString value;  // "1" and "0" for check boxes
  scOption* parent = nullptr;
  bool open = true;  // of a group
};

struct scOptionRequest {
  const scOption* item;
  char* text;         // buffer of the asker
  unsigned capacity;  // its size in characters
};

struct scOptionChange {
  NMHDR header;
  const scOption* item;
};
static_assert(offsetof(scOptionChange, item) == sizeof(NMHDR), "the item follows the header");

class scOptionTree : public scDrawnWindow, private scItemSource {
public:
  // Before a dialog whose template names the class is opened.
  static void register_tree();
  static scOptionTree& of(HWND window);

  // Appends an item below its parent; the tree keeps it.
  scOption* add(scOption* parent, scOptionKind kind, const char* label, const char* value = "");
  // By the program: the parent is not told.
  void set_value(scOption* option, const CString& value);

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void draw(HDC dc) override;

private:
  void list_items(const Add& add) const override;
  static LRESULT on_information(WPARAM code, LPARAM lparam);
  void on_click(POINT at);
  bool on_key(WPARAM key);
  void act_on(scOption& option);
  void change(scOption& option, const CString& value);

  std::vector<scOption*> shown() const;
  static int depth(const scOption& option);
  RECT row_rect(size_t row) const;
  RECT value_rect(size_t row) const;
  void draw_row(HDC dc, const scOption& option, size_t row) const;

  std::vector<std::unique_ptr<scOption>> m_options;  // every item after its parent
  size_t m_current = 0;                              // row on the screen
  scInPlaceEdit m_edit;
};
