// Checks of a map that has been built.
#include "apps/mrmap/mrMapChecks.h"

#include "apps/mrmap/mrMapNamer.h"
#include "apps/mrmap/mrMapStage.h"
#include "apps/mrmap/mrPaths.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace {

// What JScript reserves, for now or for later versions. In byte order.
constexpr std::string_view reserved_words[] = {
    "abstract",  "boolean",  "break",     "byte",       "case",   "catch",   "char",         "class",
    "const",     "continue", "debugger",  "default",    "delete", "do",      "double",       "else",
    "enum",      "export",   "extends",   "false",      "final",  "finally", "float",        "for",
    "function",  "goto",     "if",        "implements", "import", "in",      "instanceof",   "int",
    "interface", "long",     "native",    "new",        "null",   "package", "private",      "protected",
    "public",    "return",   "short",     "static",     "super",  "switch",  "synchronized", "this",
    "throw",     "throws",   "transient", "true",       "try",    "typeof",  "var",          "void",
    "volatile",  "while",    "with",
};

// What every line of the constants script needs itself: a group of this name would take its place.
constexpr std::string_view script_variables[] = {"Object", "o"};

template <size_t count>
bool is_one_of(const std::string_view (&words)[count], std::string_view text) {
  return std::binary_search(std::begin(words), std::end(words), text);
}

// The script is text in the ANSI code page, and so is what counts as a letter.
bool is_letter(char ch) { return ch == '_' || ch == '$' || IsCharAlphaA(ch); }

bool is_digit(char ch) { return ch >= '0' && ch <= '9'; }

// Why the text is no identifier; null when it is one.
const char* flaw_of(std::string_view text) {
  if (text.empty())
    return "is empty, which is";
  if (is_one_of(reserved_words, text))
    return "is a reserved word,";
  const bool formed = !is_digit(text[0]) && std::all_of(text.begin(), text.end(), [](char ch) {
    return is_letter(ch) || is_digit(ch);
  });
  return formed ? nullptr : "is";
}

CString flawed(const char* what, const CString& name, const char* flaw) {
  CString text;
  text.Format("the %s '%s' %s no JScript identifier: scripts cannot use ui_consts.js", what, name.GetString(),
              flaw);
  return text;
}

}  // namespace

void expect_room(const mrMapStage& stage, const mrMapNamer& namer) {
  for (const auto& [key, group] : namer.headers())
    stage.expect_room("headers\\" + key + ".xml");
  for (const auto& [name, module] : namer.modules())
    stage.expect_room("res\\" + name + ".xml");
}

void expect_readable(const mrMapStage& stage, const std::vector<CString>& stale) {
  // Each alone, in folders of its own: the engine does not tell at which document it stopped.
  const CString probe = stage.aside("probe");
  for (const CString& document : stale) {
    const CString name = document.Mid(stage.folder().GetLength() + 1);  // "headers\gone.xml"
    for (const CString& folder : {probe, join(probe, "headers"), join(probe, "res")})
      make_folder(folder);
    copy_file(document, join(probe, name));
    mrQuietNamer reader;
    const bool readable = reader.load_res_map(join(probe, "ui_map.rcz")) >= 0;
    remove_folder(probe);
    if (!readable)
      throw std::runtime_error(
          ("the document " + name + ", which an earlier build left, cannot be read (--clean removes it)")
              .GetString());
  }
}

// A result of saving that says "done" is not taken for it: what counts is what can be read back.
void expect_whole(mrMapStage& stage, const mrMapNamer& namer, const CString& target) {
  mrQuietNamer stored;
  if (!is_file(stage.map_file()) || stored.load_res_map(stage.take_archive_aside()) < 0 ||
      !stored.same_model(namer))
    throw std::runtime_error(("the map " + join(target, "ui_map.rcz") + " could not be written").GetString());
  // The archive's model gives the same script once more: the one to be used may have been cut short, or be
  // missing.
  const CString again = stage.aside("ui_consts.js");
  if (stored.save_all_declarations(again) != 1 || !is_file(stage.constants_file()) ||
      contents_of(stage.constants_file()) != contents_of(again))
    throw std::runtime_error(
        ("the constants script " + join(target, "ui_consts.js") + " could not be written").GetString());
}

std::vector<CString> script_warnings(const mrMapNamer& namer) {
  std::vector<CString> warnings;
  for (const auto& [key, group] : namer.headers()) {
    if (const char* const flaw = flaw_of(key.str()))
      warnings.push_back(flawed("group key", key, flaw));
    else if (is_one_of(script_variables, key.str()))
      warnings.push_back("the group key '" + key +
                         "' hides what ui_consts.js itself uses: scripts cannot use its names");
    for (const auto& [name, value] : group->constants)
      if (const char* const flaw = flaw_of(name.str()))
        warnings.push_back(flawed("name", key + "." + name, flaw));
  }
  return warnings;
}
