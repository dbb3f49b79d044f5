// How a command looks in menus and toolbars now.
#pragma once

#include <functional>

struct scCommandState {
  bool enabled = true;
  bool checked = false;
  bool radio = false;  // the mark is a dot, one of a group
};

using scCommandStateOf = std::function<scCommandState(int command)>;
