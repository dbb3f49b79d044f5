#include "apps/mrrec/mrIgnoredCommands.h"

#include "apps/mrrec/mrFailure.h"
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

bool mrIgnoredCommands::drops(const COPYDATASTRUCT& upload) const {
  if (upload.dwData != factoryWindow || upload.cbData < sizeof(mrWindowRec))
    return false;
  const mrWindowRec& record = *static_cast<const mrWindowRec*>(upload.lpData);
  return record.kind == windowCommand && contains(static_cast<int>(record.message));
}
