// The factory objects, one per kind of control and process, in the order of their types, and their entry into
// the dispatcher's table. Constructed while the library is loaded, in both processes.
#include "controls/mrCADView.h"
#include "controls/mrGXGrid.h"
#include "controls/mrLogger.h"
#include "controls/mrOpenSaveDialog.h"
#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"

// clang-format off
static mrWindowFactory window_factory;                     //  1
static mrGXGridFactory gx_grid_factory;                    // 12
static mrCADViewFactory cad_view_factory;                  // 13
static mrOpenSaveDialogFactory open_save_dialog_factory;   // 15
static mrLoggerFactory logger_factory;                     // 18

static mrActionFactory* const all_factories[] = {
    &window_factory,
    &gx_grid_factory,
    &cad_view_factory,
    &open_save_dialog_factory,
    &logger_factory,
};
// clang-format on

[[maybe_unused]] static const bool registered = [] {
  for (mrActionFactory* factory : all_factories)
    register_factory(*factory);
  return true;
}();
