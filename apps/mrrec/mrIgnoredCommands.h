// The commands of --ignore.
#pragma once

#include "apps/mrrec/mrArguments.h"
#include "namer/mrIDNamer.h"

#include <windows.h>

#include <vector>

// The library's list lets each process consult its own ids only, and holds 16. So the records of ignored
// commands are also dropped here, on arrival.
class mrIgnoredCommands {
public:
  // Throws mrFailure (exitWrongUsage) for a name that the resource map does not know.
  mrIgnoredCommands(const std::vector<mrIgnoredId>& ids, const mrIDNamer& namer);

  const std::vector<int>& ids() const { return m_ids; }

  // Whether an upload records one of the commands.
  bool drops(const COPYDATASTRUCT& upload) const;

private:
  bool contains(int id) const;

  std::vector<int> m_ids;
};
