// The factory objects, one per kind of control and process, in the order of their types, and their entry into
// the dispatcher's table. Constructed while the library is loaded, in both processes.
#include "controls/mrButton.h"
#include "controls/mrComboBox.h"
#include "controls/mrEdit.h"
#include "controls/mrGroupCombo.h"
#include "controls/mrListBox.h"
#include "controls/mrListView.h"
#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"

#include <initializer_list>

// clang-format off
static mrWindowFactory window_factory;           // 1
static mrComboBoxFactory combo_box_factory;      // 2
static mrListBoxFactory list_box_factory;        // 3
static mrListViewFactory list_view_factory;      // 4
static mrButtonFactory button_factory;           // 7
static mrEditFactory edit_factory;               // 8
static mrGroupComboFactory group_combo_factory;  // 16
// clang-format on

[[maybe_unused]] static const bool registered = [] {
  for (mrActionFactory* factory : std::initializer_list<mrActionFactory*>{
           &window_factory,
           &combo_box_factory,
           &list_box_factory,
           &list_view_factory,
           &button_factory,
           &edit_factory,
           &group_combo_factory,
       })
    register_factory(*factory);
  return true;
}();
