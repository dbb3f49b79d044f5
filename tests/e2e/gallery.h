// A dialog of SampleCad's gallery, recorded while real input works on it.
#pragma once

#include "apps/SampleCad/gallery.dev/gallery.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using Statements = std::vector<std::string>;

// SampleCad with one dialog of the gallery in front.
class GalleryHost : public mrSampleCad {
public:
  // name: of the dialog on the command line; title: its title.
  GalleryHost(const std::string& name, const std::string& title)
      : mrSampleCad("--dialog " + name), dialog(wait_for_dialog(title)) {
    if (!dialog)
      throw std::runtime_error("no dialog " + title);
    // The keyboard works on it from the start, not only after a click.
    SetForegroundWindow(dialog);
    if (!wait_until([this] { return GetForegroundWindow() == dialog; }))
      throw std::runtime_error("the dialog does not come to the front");
  }
  const HWND dialog;
};

class GalleryEndToEnd : public testing::Test {
protected:
  GalleryEndToEnd(const char* name, const char* title) : host(name, title), recording(host) {}

  HWND control(int id) const { return GetDlgItem(host.dialog, id); }
  void click(int id, const std::vector<WORD>& keys = {}) {
    user.click(middle_of(control(id)), mrMouseButton::left, keys);
  }
  // Puts the focus on a control without a click, before the user's next key.
  void focus(int id) {
    PostMessageA(host.dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control(id)), TRUE);
    EXPECT_TRUE(wait_until([this, id] { return has_focus(control(id)); }));
  }
  // Waits for so many statements: the next gesture needs what this one opens or selects.
  void expect_statements(size_t count) { EXPECT_TRUE(recording.wait_for_statements(count)) << count; }

  GalleryHost host;
  mrRecording recording;
  mrUser& user = recording.user;

private:
  // The control itself, or the edit inside a combo box.
  bool has_focus(HWND window) const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(host.thread_id(), &info) &&
           (info.hwndFocus == window || IsChild(window, info.hwndFocus));
  }
};
