// A document: an MDI child window with one model and one view of it.
#pragma once

#include "apps/SampleCad/scCommandState.h"
#include "apps/SampleCad/scModel.h"
#include "apps/SampleCad/scView.h"
#include "apps/SampleCad/scWindow.h"

class scFrame;

class scDocument : public scWindow {
public:
  scDocument(scFrame& frame, int number);

  // Creates the window; the document deletes itself when it is closed.
  bool create_in(HWND mdi_client);

  scModel& model() { return m_model; }
  const scModel& model() const { return m_model; }
  scView& view() { return m_view; }
  const scView& view() const { return m_view; }
  int number() const { return m_number; }
  CString title() const;
  const CString& path() const { return m_path; }
  bool load(const char* path);
  bool save(const char* path);

  // False: not a command of documents.
  bool on_command(int id);
  bool command_state(int id, scCommandState& state) const;

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  LRESULT default_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void on_gone() override;

private:
  void on_model_changed();
  void update_title();
  void add_shape(scShapeKind kind);
  void select_all();
  bool on_view_command(int id);
  bool on_edit_command(int id);
  bool on_insert_command(int id);

  scFrame& m_frame;
  int m_number;  // of "Model 1", from 1
  CString m_place;
  CString m_path;  // empty: never saved
  scModel m_model;
  scView m_view;
};
