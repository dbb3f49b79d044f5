// The main window: menu bar, documents, status bar, and where commands go.
#pragma once

#include "apps/SampleCad/scDocument.h"
#include "apps/SampleCad/scModelPane.h"
#include "apps/SampleCad/scToolbars.h"
#include "apps/SampleCad/scWindow.h"

class scFrame : public scWindow {
public:
  // Creates the window with one document: the model at this path, a gearbox when the path is empty.
  bool create_main(const char* path);

  scDocument* active_document() const { return m_active; }
  HWND mdi_client() const { return m_mdi_client; }
  // Text of the status bar's first part.
  void prompt(const char* text);
  scDocument* new_document();

  // Runs a command as the menu does.
  void on_command(int id);
  scCommandState command_state(int id) const;

  // Told by documents.
  void on_document_activated(scDocument* document);
  void on_document_closed(scDocument* document);
  void on_model_changed(scDocument* document);
  void on_selection_changed(scDocument* document);

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  LRESULT default_message(UINT message, WPARAM wparam, LPARAM lparam) override;

private:
  void create_children();
  void layout();
  void update_menu(HMENU menu);
  bool on_window_command(int id);
  void close_all_documents();
  // Status bar and toolbars show the active document.
  void update_looks();
  void show_active();
  void go_home();

  scToolbars m_toolbars;
  scModelPane m_pane;
  HWND m_mdi_client = nullptr;
  HWND m_status_bar = nullptr;
  scDocument* m_active = nullptr;  // deletes itself; null when none is open
  int m_document_count = 0;        // ever opened
};

// The one main window, from its creation to its end.
scFrame& main_frame();
