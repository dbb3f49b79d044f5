// The options dialog, modal: an option tree of the view's settings and some more.
#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scOptionTree.h"

namespace {

class OptionsDialog : public scDialog {
public:
  OptionsDialog() : scDialog(IDD_OPTIONS, "dialog:options") {}

protected:
  void on_init() override {
    scOptionTree& options = scOptionTree::of(item(IDC_OPTION_TREE));
    // Groups inside groups, a label with quotes and a value with a backslash: what scripts must escape.
    scOption* display = options.add(nullptr, optionGroup, "Display");
    m_grid = options.add(display, optionCheck, "Grid");
    m_axes = options.add(display, optionCheck, "Axes");
    scOption* colours = options.add(display, optionGroup, "Colours");
    m_background = options.add(colours, optionText, "Background", "Dark");
    options.add(colours, optionText, "Selection \"hot\"", "Orange");
    scOption* files = options.add(nullptr, optionGroup, "Files");
    options.add(files, optionCheck, "Keep backups", "0");
    options.add(files, optionText, "Folder", "C:\\models");
    options.add(nullptr, optionText, "User name", "Workshop");
    read_view();
  }

  bool on_notify(NMHDR& header, LRESULT& /*result*/) override {
    if (header.code != option_changed)
      return false;
    const auto& change = reinterpret_cast<const scOptionChange&>(header);
    set_text(IDC_COMMENT, change.item->label + ": " + change.item->value);
    return true;
  }

  bool on_command(int id, int /*code*/, HWND /*control*/) override {
    if (id == IDOK)
      write_view();
    return false;
  }

private:
  // The settings of the active view stand in the tree while the dialog is open.
  void read_view() {
    const scDocument* document = main_frame().active_document();
    if (!document)
      return;
    scOptionTree& options = scOptionTree::of(item(IDC_OPTION_TREE));
    const scViewSettings& settings = document->view().settings();
    constexpr const char* names[] = {"Dark", "Slate", "Paper"};
    options.set_value(m_grid, settings.grid ? "1" : "0");
    options.set_value(m_axes, settings.axes ? "1" : "0");
    options.set_value(m_background, names[settings.background]);
  }

  // Only OK takes them over.
  void write_view() {
    scDocument* document = main_frame().active_document();
    if (!document)
      return;
    scViewSettings settings = document->view().settings();
    // Anything that is no background is dark.
    settings.grid = m_grid->value == "1";
    settings.axes = m_axes->value == "1";
    settings.background = m_background->value == "Paper"   ? backgroundPaper
                          : m_background->value == "Slate" ? backgroundSlate
                                                           : backgroundDark;
    document->view().set_settings(settings);
  }

  // Owned by the tree, valid until its window is gone.
  scOption* m_grid = nullptr;
  scOption* m_axes = nullptr;
  scOption* m_background = nullptr;
};

}  // namespace

void show_options_dialog() {
  scOptionTree::register_tree();
  OptionsDialog().run(main_frame().handle());
}
