// The program's command line; see the header.
#include "apps/SampleCad/scOptions.h"

#include "apps/SampleCad/scDialogs.h"

#include <cstring>

CString usage() {
  CString text = "SampleCad [FILE] [--dialog NAME]... [--ready FILE]\n"
                 "SampleCad --version | --help\n"
                 "\n"
                 "  FILE           opens this model\n"
                 "  --dialog NAME  opens a dialog at the start\n"
                 "  --ready FILE   keeps FILE up to date with the places of all windows\n"
                 "\n"
                 "Dialogs: ";
  return text + dialog_names() + "\n";
}

bool read_options(int count, char** arguments, scOptions& options, CString& error) {
  for (int i = 1; i < count; ++i) {
    // Every option is looked at, also after --help: a mistake is told in any case.
    const CString name = arguments[i];
    const char* value = i + 1 < count ? arguments[i + 1] : nullptr;
    const bool takes_value = name == "--ready" || name == "--dialog";
    // An option as value is let through: files may be called anything.
    if (takes_value && (!value || !*value)) {
      error = "option '" + name + "' needs a value";
      return false;
    }
    if (name == "--version") {
      options.version = true;
    } else if (name == "--help") {
      options.help = true;
    } else if (name == "--ready") {
      options.ready_file = value;
    } else if (name == "--dialog") {
      // Told now, not by a window that never opens.
      if (!dialog_command(value)) {
        error = CString("no dialog is named '") + value + "'; there are: " + dialog_names();
        return false;
      }
      options.dialogs.push_back(value);
    } else if (name.Left(1) == "-" || !options.document.IsEmpty()) {
      error = CString(name.Left(1) == "-" ? "unknown option '" : "more than one file: '") + name +
              "'; SampleCad --help lists the options";
      return false;
    } else {
      options.document = name;
    }
    i += takes_value;  // the value is used up
  }
  return true;
}
