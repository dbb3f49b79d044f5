// Root of recorded actions: one statement of the script. Recorder process only.
#pragma once

#include "framework/CString.h"
#include "framework/mrApi.h"

class mrActionFactory;

class MR_API mrAction {
public:
  explicit mrAction(mrActionFactory* factory) : m_factory(factory) {}

  // Appends this action's script text, without a line end.
  virtual void get_script(CString& script) = 0;

  virtual ~mrAction() = default;

  mrAction(const mrAction&) = delete;
  mrAction& operator=(const mrAction&) = delete;

protected:
  mrActionFactory* m_factory;  // that created the action; not owned
};
