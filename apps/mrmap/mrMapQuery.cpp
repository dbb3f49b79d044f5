// mrmap lookup, list and path: what the stored resource map holds.
#include "apps/mrmap/mrMapCommands.h"

#include "apps/mrmap/mrMapNamer.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// Decimal, or hexadecimal with 0x; a minus sign may stand before. False when the text is no such number.
bool read_number(const CString& text, int64_t& number) {
  const bool negative = text.Left(1) == "-";
  const CString digits = text.Mid(negative ? 1 : 0);
  const bool hexadecimal = digits.Left(2) == "0x" || digits.Left(2) == "0X";
  const CString rest = digits.Mid(hexadecimal ? 2 : 0);
  // The C library would take a sign, blanks and a second "0x" there.
  const char* const members = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
  if (rest.IsEmpty() || rest.str().find_first_not_of(members) != std::string::npos)
    return false;
  errno = 0;
  const unsigned long long value = std::strtoull(rest, nullptr, hexadecimal ? 16 : 10);
  if (errno == ERANGE)
    return false;
  number = static_cast<int64_t>(negative ? 0 - value : value);
  return true;
}

// Without a map the model stays empty; a map that is damaged gives what could be read of it.
bool load(mrMapNamer& namer) {
  if (namer.load_def_map() >= 0)
    return true;
  std::fprintf(stderr, "mrmap: there is no readable resource map %s (mrmap build makes one)\n",
               mrIDNamer::get_res_file().GetString());
  return false;
}

[[noreturn]] void throw_not_found(const char* what, const CString& name) {
  CString text;
  text.Format("the resource map holds no %s %s", what, name.GetString());
  throw std::runtime_error(text.GetString());
}

// The modules that an option selects: one, or all when it was not given.
std::vector<const mrLibraryRes*> selected_modules(const mrMapNamer& namer, const CString& name) {
  std::vector<const mrLibraryRes*> modules;
  if (name.IsEmpty()) {
    for (const auto& [key, module] : namer.modules())
      modules.push_back(module.get());
    return modules;
  }
  const mrLibraryRes* const module = namer.find_module(name);
  if (!module)
    throw_not_found("module", name);
  modules.push_back(module);
  return modules;
}

uint32_t dialog_number(const mrMapNamer& namer, const CString& text, const CString& module_name) {
  int64_t number = 0;
  if (text.IsEmpty() || read_number(text, number))
    return static_cast<uint32_t>(number);
  for (const mrLibraryRes* module : selected_modules(namer, module_name))
    for (const auto& [dialog_number, dialog] : module->dialogs)
      if (dialog->name == text)
        return dialog_number;
  throw_not_found("dialog", text);
}

// What "list" was asked for.
struct Selection {
  CString module, dialog, header;  // empty: all
};

void list_modules(const mrMapNamer& namer, const Selection& selection) {
  for (const mrLibraryRes* module : selected_modules(namer, selection.module))
    std::printf("%s\n", module->name.GetString());
}

// Calls print for every selected dialog.
template <class Print>
void list_selected_dialogs(const mrMapNamer& namer, const Selection& selection, Print print) {
  bool found = false;
  for (const mrLibraryRes* module : selected_modules(namer, selection.module)) {
    for (const auto& [number, dialog] : module->dialogs) {
      if (!selection.dialog.IsEmpty() && dialog->name != selection.dialog)
        continue;
      found = true;
      print(*module, number, *dialog);
    }
  }
  if (!found && !selection.dialog.IsEmpty())
    throw_not_found("dialog", selection.dialog);
}

void list_dialogs(const mrMapNamer& namer, const Selection& selection) {
  list_selected_dialogs(
      namer, selection, [](const mrLibraryRes& module, uint32_t number, const mrDialogRes& dialog) {
        std::printf("%s\t%s\t%u\n", module.name.GetString(), dialog.name.GetString(), number);
      });
}

void list_controls(const mrMapNamer& namer, const Selection& selection) {
  list_selected_dialogs(
      namer, selection, [](const mrLibraryRes& module, uint32_t, const mrDialogRes& dialog) {
        for (const auto& [number, name] : dialog.controls)
          std::printf("%s\t%s\t%s\t%lld\n", module.name.GetString(), dialog.name.GetString(),
                      name.GetString(), static_cast<long long>(number));
      });
}

// The header groups of the selected module, or all.
std::vector<const mrHeader*> selected_headers(const mrMapNamer& namer, const Selection& selection) {
  std::vector<const mrHeader*> headers;
  const auto select = [&](const mrHeader* header) {
    if (selection.header.IsEmpty() || header->key == selection.header)
      headers.push_back(header);
  };
  if (selection.module.IsEmpty())
    for (const auto& [key, header] : namer.headers())
      select(header.get());
  else
    for (const auto& [key, header] : selected_modules(namer, selection.module)[0]->headers)
      select(header);
  if (headers.empty() && !selection.header.IsEmpty())
    throw_not_found("header group", selection.header);
  return headers;
}

void list_headers(const mrMapNamer& namer, const Selection& selection) {
  for (const mrHeader* header : selected_headers(namer, selection))
    std::printf("%s\n", header->key.GetString());
}

void list_constants(const mrMapNamer& namer, const Selection& selection) {
  for (const mrHeader* header : selected_headers(namer, selection))
    for (const auto& [name, value] : header->constants)
      std::printf("%s.%s\t%lld\n", header->key.GetString(), name.GetString(), static_cast<long long>(value));
}

struct Listing {
  const char* name;
  void (*print)(const mrMapNamer& namer, const Selection& selection);
  bool by_dialog, by_header;  // which options select in it; --module does in every list
};

constexpr Listing listings[] = {
    // clang-format off
    {"modules",   list_modules,   false, false},
    {"dialogs",   list_dialogs,   true,  false},
    {"controls",  list_controls,  true,  false},
    {"headers",   list_headers,   false, true},
    {"constants", list_constants, false, true},
    // clang-format on
};

// Takes the option off; given tells whether it was there, also with an empty value.
CString take_selection(mrArguments& arguments, const char* name, bool& given) {
  const size_t before = arguments.size();
  const CString value = take_option(arguments, name);
  given = arguments.size() != before;
  return value;
}

[[noreturn]] void refuse_option(const Listing& listing, const char* option) {
  throw mrUsageError(std::string("list ") + listing.name + " does not select by " + option);
}

}  // namespace

int run_lookup(const mrArguments& given) {
  mrArguments arguments = given;
  const CString prefix = take_option(arguments, "--prefix", "IDC_");
  const CString dialog = take_option(arguments, "--dialog");
  const CString module = take_option(arguments, "--module");
  expect_words(arguments, 1, "the number");
  int64_t number = 0;
  if (!read_number(arguments[0], number))
    throw mrUsageError((arguments[0] + " is no number").GetString());

  mrQuietNamer namer;
  const bool loaded = load(namer);
  const CString name = namer.get_definition(number, prefix, dialog_number(namer, dialog, module), module);
  std::printf("%s\n", name.GetString());
  return loaded ? exitDone : exitFailed;
}

int run_list(const mrArguments& given) {
  mrArguments arguments = given;
  Selection selection;
  selection.module = take_option(arguments, "--module");
  bool dialog_given = false, header_given = false;
  selection.dialog = take_selection(arguments, "--dialog", dialog_given);
  selection.header = take_selection(arguments, "--header", header_given);
  expect_words(arguments, 1, "what to list");
  for (const Listing& listing : listings) {
    if (arguments[0] != listing.name)
      continue;
    if (dialog_given && !listing.by_dialog)
      refuse_option(listing, "--dialog");
    if (header_given && !listing.by_header)
      refuse_option(listing, "--header");
    mrQuietNamer namer;
    const bool loaded = load(namer);
    listing.print(namer, selection);
    return loaded ? exitDone : exitFailed;
  }
  throw mrUsageError(("there is no list of " + arguments[0]).GetString());
}

int run_path(const mrArguments& arguments) {
  expect_words(arguments, 0, "");
  std::printf("%s\n", mrIDNamer::get_res_path().GetString());
  return exitDone;
}
