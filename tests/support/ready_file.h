// Where things are in SampleCad, told by the file that it keeps up to date: toolbar buttons, the menu bar and
// the items of open menus, which nobody can ask for from another process.
//
//   mrReadyFile places;
//   mrSampleCad host(places.argument());
//   user.click(places.middle("menubar", "View"));
//   user.click(places.middle("menu", "IDM_VIEW_GRID"));
#pragma once

#include "tests/support/files.h"

#include <windows.h>

#include <string>

class mrReadyFile {
public:
  // What SampleCad is started with.
  std::string argument() const { return "--ready \"" + path() + "\""; }

  // Waits until the file lists this part of a place and answers its rectangle in screen pixels. Fails the
  // test after a limit; the rectangle is empty then.
  RECT rect(const std::string& place, const std::string& name) const;
  POINT middle(const std::string& place, const std::string& name) const;
  // The middle of a toolbar's button: its command, or its number from 0 where that has no name.
  POINT button(const std::string& toolbar, const std::string& button) const;

  bool lists(const std::string& place, const std::string& name) const;
  // Waits until nothing of a place is listed any more: the menu is closed. Fails the test after a limit.
  void wait_until_gone(const std::string& place) const;

private:
  std::string path() const { return m_folder.path("ready.txt"); }
  bool find(const std::string& place, const std::string& name, RECT& rect) const;

  mrTestFolder m_folder;
};
