// Recorder process.
#include "model/mrBaseWindow.h"

#include "model/mrBaseWindowFactory.h"
#include "model/mrRecorder.h"

mrBaseWindow::mrBaseWindow(HWND window, mrBaseWindowFactory* factory) : mrAction(factory), m_window(window) {
  fill_hierarchy(window);
}

mrBaseWindow::~mrBaseWindow() = default;

void mrBaseWindow::get_script(CString& script) {
  CString call;
  m_factory->get_recorder()->get_declaration(m_path, call);
  script += call;
  script += m_action_string;
}
