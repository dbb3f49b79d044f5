// What an operation that reports as it goes reports to.
#pragma once

#include "framework/CString.h"
#include "framework/mrApi.h"

class MR_API mrLog {
public:
  // One line of text each, without a line end; borrowed for the call.
  virtual void warning(const CString& text) = 0;
  virtual void error(const CString& text) = 0;
  virtual ~mrLog();
};
