// Window paths without windows, and actions on them.
#pragma once

#include "model/mrBaseWindow.h"
#include "model/mrRecorder.h"

#include <windows.h>

#include <cstring>
#include <initializer_list>
#include <string>

// One level, as far as declarations look at it.
struct mrLevel {
  const char* class_name;
  const char* text = "";
  __int64 id = 0;
  __int64 style = WS_CHILD;
  __int64 ex_style = 0;
  const char* name = "";
  unsigned dialog = 0;

  operator mrWindowInfo() const {
    mrWindowInfo info;
    strcpy(info.module, "host");
    strcpy(info.class_name, class_name);
    strcpy(info.text, text);
    strcpy(info.name, name);
    info.id = id;
    info.style = style;
    info.ex_style = ex_style;
    info.dialog_template_id = dialog;
    return info;
  }
};

// The last level of a path: a top-level window of the host.
inline mrWindowInfo main_window(const char* class_name = "Afx:400000:8", const char* module = "host",
                                const char* text = "Host") {
  mrWindowInfo info = mrLevel{class_name, text, 0, WS_OVERLAPPEDWINDOW};
  strcpy(info.module, module);
  info.top_level = 1;
  return info;
}

// An action with a path made by hand. Its levels belong to it.
class mrPathAction : public mrBaseWindow {
public:
  mrPathAction(mrBaseWindowFactory* factory, std::initializer_list<mrWindowInfo> levels,
               const char* statement)
      : mrBaseWindow(nullptr, factory) {
    for (const mrWindowInfo& level : levels)
      m_path.Add(new mrWindowInfo(level));
    set_action_string(statement);
  }
  ~mrPathAction() override {
    for (mrWindowInfo* level : m_path)
      delete level;
  }
  mrWindowPath& path() { return m_path; }
};
