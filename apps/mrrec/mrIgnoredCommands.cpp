#include "apps/mrrec/mrIgnoredCommands.h"

#include "apps/mrrec/mrFailure.h"
#include "controls/mrToolBar.h"
#include "controls/mrWindow.h"

#include <algorithm>

static int number_of(const mrIgnoredId& id, const mrIDNamer& namer) {
  int64_t number = id.number;
  if (!id.name.empty() && !namer.find_number(id.name, number))
    throw mrFailure{exitWrongUsage, "--ignore: the resource map knows no name \"" + id.name + "\""};
  return static_cast<int>(number);
}

mrIgnoredCommands::mrIgnoredCommands(const std::vector<mrIgnoredId>& ids, const mrIDNamer& namer) {
  for (const mrIgnoredId& id : ids)
    m_ids.push_back(number_of(id, namer));
}

bool mrIgnoredCommands::contains(int id) const {
  return std::find(m_ids.begin(), m_ids.end(), id) != m_ids.end();
}

// The command that a record of the generic recorder stands for; false when it is none.
static bool is_window_command(const COPYDATASTRUCT& upload, int& command) {
  if (upload.cbData < sizeof(mrWindowRec))
    return false;
  const mrWindowRec& record = *static_cast<const mrWindowRec*>(upload.lpData);
  command = static_cast<int>(record.message);
  return record.kind == windowCommand;
}

// The command of the item that was chosen at the end of a path through toolbars and menus.
static bool is_toolbar_command(const COPYDATASTRUCT& upload, int& command) {
  if (upload.cbData < sizeof(mrToolbarHeader))
    return false;
  const mrToolbarHeader& header = *static_cast<const mrToolbarHeader*>(upload.lpData);
  const size_t sent = (upload.cbData - sizeof header) / sizeof(mrToolbarRec);
  if (header.count == 0 || header.count > sent)
    return false;
  command = levels_of(header)[header.count - 1].item_id;
  return true;
}

bool mrIgnoredCommands::drops(const COPYDATASTRUCT& upload) const {
  int command = 0;
  if (upload.dwData == factoryWindow)
    return is_window_command(upload, command) && contains(command);
  return upload.dwData == factoryToolBar && is_toolbar_command(upload, command) && contains(command);
}
