// Resource scripts: the dialogs of a module and the names of their controls.
#include "namer/mrIDNamer.h"

#include "namer/mrFiles.h"

#include <algorithm>
#include <iterator>
#include <cstdio>
#include <string_view>

namespace {

// Statements that declare a control; all others are skipped. In byte order.
constexpr std::string_view control_keywords[] = {
    "AUTO3STATE",    "AUTOCHECKBOX", "AUTORADIOBUTTON", "CHECKBOX",  "COMBOBOX", "CONTROL", "CTEXT",
    "DEFPUSHBUTTON", "EDITTEXT",     "GROUPBOX",        "ICON",      "LISTBOX",  "LTEXT",   "PUSHBOX",
    "PUSHBUTTON",    "RADIOBUTTON",  "RTEXT",           "SCROLLBAR", "STATE3",
};

// The platform's own header comes before a script's includes, in every module.
constexpr char platform_header[] = "winuser.h";
constexpr char static_control[] = "IDC_STATIC";

constexpr int end_of_script = -1;  // where next_line leaves the position when there is no further line

bool is_identifier(const mrLexem& lex, std::string_view text) {
  return lex.kind == lexIdentifier && lex.text.str() == text;
}

bool is_identifier_from(const mrLexem& lex, std::string_view beginning) {
  return lex.kind == lexIdentifier && lex.text.str().compare(0, beginning.size(), beginning) == 0;
}

bool is_control_keyword(const mrLexem& lex) {
  return lex.kind == lexIdentifier &&
         std::binary_search(std::begin(control_keywords), std::end(control_keywords),
                            std::string_view(lex.text.str()));
}

// File name without folder and extension.
CString module_name(const CString& path) {
  const std::string& text = path.str();
  const size_t separator = text.rfind('\\');
  const std::string name = separator == std::string::npos ? text : text.substr(separator + 1);
  return CString(name.substr(0, name.rfind('.')));
}

CString lower_case(const CString& text) {
  std::string lower = text.str();
  mrFiles::lower_case(&lower[0], lower.size());
  return CString(std::move(lower));
}

}  // namespace

// A script that is being read.
struct mrIDNamer::mrOpenScript {
  CString path;  // expanded
  CString text;
  int position = 0;  // end_of_script once there is no further line
  mrLibraryRes* module = nullptr;
  bool ok = true;        // the result so far
  bool stopped = false;  // a statement that cannot be read has ended the reading
};

int mrIDNamer::process_resource_file(const CString& path) {
  mrOpenScript script;
  script.path = expand_path(path);
  std::string text;
  if (!mrFiles::read(script.path, text))
    return 0;
  script.text = CString(std::move(text));
  const CString name = module_name(script.path);
  std::printf("Processing '%s.rc'...\n", name.GetString());
  report_progress(script.path);
  script.module = add_lib(lower_case(name));
  script.ok = process_header_in_paths(script.module, nullptr, platform_header, script.path) != 0;
  read_script(script);
  return script.ok && !script.stopped;
}

void mrIDNamer::read_script(mrOpenScript& script) {
  mrLexem lex;
  // A first token of a line that cannot be formed ends the reading with the result so far.
  while (!script.stopped && next_lexeme(script.text, script.position, lex)) {
    if (is_identifier_from(lex, "IDD_"))
      read_dialog(script, lex.text);
    else if (lex.kind == lexSeparator && lex.text == "#")
      read_include(script);
    next_line(script.text, script.position);
  }
}

// Behind "#".
void mrIDNamer::read_include(mrOpenScript& script) {
  mrLexem lex;
  if (!next_lexeme(script.text, script.position, lex) || !is_identifier(lex, "include"))
    return;
  if (!next_lexeme(script.text, script.position, lex) || lex.kind != lexString)
    return;
  if (!process_header_in_paths(script.module, nullptr, lex.text, script.path))
    script.ok = false;
}

// Behind a name that may be a dialog's. Leaves the position inside the line that ends the dialog.
void mrIDNamer::read_dialog(mrOpenScript& script, const CString& name) {
  mrLexem lex;
  if (!next_lexeme(script.text, script.position, lex) || !is_identifier_from(lex, "DIALOG"))
    return;
  do {
    next_line(script.text, script.position);
    if (!next_lexeme(script.text, script.position, lex)) {
      script.position = end_of_script;
      return;
    }
  } while (!is_identifier(lex, "BEGIN"));
  // Null for a dialog whose name has no number: its statements are read, and nothing is kept of them.
  mrDialogRes* const dialog = add_dialog(script.module, name);
  for (;;) {
    next_line(script.text, script.position);
    if (!next_lexeme(script.text, script.position, lex)) {
      script.position = end_of_script;
      return;
    }
    if (is_identifier(lex, "END"))
      return;
    if (!is_control_keyword(lex))
      continue;
    CString control;
    if (!read_control_name(script, control)) {
      script.stopped = true;
      return;
    }
    if (dialog && !control.IsEmpty() && !record_control(dialog, control))
      script.ok = false;
  }
}

// Behind a control keyword. The name is empty when the statement declares none. False when the statement
// breaks off behind its caption. Deliberate: that ends the reading of the whole script instead of skipping
// the statement, and -1 means IDC_STATIC behind an image's name, but nothing behind a caption.
bool mrIDNamer::read_control_name(mrOpenScript& script, CString& name) {
  mrLexem first, separator, second;
  next_lexeme(script.text, script.position, first);
  const bool separated = parse_separator(script.text, script.position, separator) != 0;
  const bool found = separated && next_lexeme(script.text, script.position, second);
  if (first.kind != lexIdentifier) {
    if (found && second.kind == lexIdentifier)
      name = second.text;
    return found;
  }
  if (found && second.kind == lexIdentifier)
    name = second.text;
  else if (found && second.kind == lexInteger && second.value == -1)
    name = static_control;
  else
    name = first.text;
  return true;
}
