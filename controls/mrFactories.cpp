// The factory objects, one per kind of control and process, in the order of their types, and their entry into
// the dispatcher's table. Constructed while the library is loaded, in both processes.
#include "controls/mrButton.h"
#include "controls/mrCADTree.h"
#include "controls/mrCADView.h"
#include "controls/mrComboBox.h"
#include "controls/mrEdit.h"
#include "controls/mrGXGrid.h"
#include "controls/mrGroupCombo.h"
#include "controls/mrListBox.h"
#include "controls/mrListView.h"
#include "controls/mrLogger.h"
#include "controls/mrOpenSaveDialog.h"
#include "controls/mrOptionTree.h"
#include "controls/mrRibCustomiser.h"
#include "controls/mrTabCtrl.h"
#include "controls/mrToolBar.h"
#include "controls/mrTrackBar.h"
#include "controls/mrTreeView.h"
#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"

// clang-format off
static mrWindowFactory window_factory;                    //  1
static mrComboBoxFactory combo_box_factory;               //  2
static mrListBoxFactory list_box_factory;                 //  3
static mrListViewFactory list_view_factory;               //  4
static mrTabCtrlFactory tab_ctrl_factory;                 //  5
static mrTrackBarFactory track_bar_factory;               //  6
static mrButtonFactory button_factory;                    //  7
static mrEditFactory edit_factory;                        //  8
static mrTreeViewFactory tree_view_factory;               //  9
static mrCADTreeFactory cad_tree_factory;                 // 10
static mrOptionTreeFactory option_tree_factory;           // 11
static mrGXGridFactory gx_grid_factory;                   // 12
static mrCADViewFactory cad_view_factory;                 // 13
static mrToolBarFactory tool_bar_factory;                 // 14
static mrOpenSaveDialogFactory open_save_dialog_factory;  // 15
static mrGroupComboFactory group_combo_factory;           // 16
static mrRibCustomiserFactory rib_customiser_factory;     // 17
static mrLoggerFactory logger_factory;                    // 18

static mrActionFactory* const all_factories[] = {
    &window_factory,
    &combo_box_factory,
    &list_box_factory,
    &list_view_factory,
    &tab_ctrl_factory,
    &track_bar_factory,
    &button_factory,
    &edit_factory,
    &tree_view_factory,
    &cad_tree_factory,
    &option_tree_factory,
    &gx_grid_factory,
    &cad_view_factory,
    &tool_bar_factory,
    &open_save_dialog_factory,
    &group_combo_factory,
    &rib_customiser_factory,
    &logger_factory,
};
// clang-format on

[[maybe_unused]] static const bool registered = [] {
  for (mrActionFactory* factory : all_factories)
    register_factory(*factory);
  return true;
}();
