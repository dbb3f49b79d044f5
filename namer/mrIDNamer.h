// Names for numbers: turns the ids of the host's controls, dialogs and commands into the names that its
// programmers gave them, and writes the script of constants in which those names have their numbers.
//
// Runs in the recorder process and in the map tool; knows nothing of windows or of recording. One object is
// used by one thread at a time.
#pragma once

#include "framework/mrApi.h"
#include "namer/mrLexem.h"
#include "namer/mrLog.h"
#include "namer/mrResourceModel.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class cmZip;
class mrMapArchive;
class mrXmlDocument;
class mrXmlElements;

// COM results, for those who do not include COM.
constexpr long mr_result_ok = 0;
constexpr long mr_result_fail = static_cast<int32_t>(0x80004005);  // E_FAIL

class MR_API mrIDNamer : public mrLog {
public:
  mrIDNamer();
  mrIDNamer(const mrIDNamer&) = delete;
  mrIDNamer& operator=(const mrIDNamer&) = delete;

  // Prints "Warning: TEXT" or "Error: TEXT" on standard output and counts it.
  void warning(const CString& text) override;
  void error(const CString& text) override;
  ~mrIDNamer() override;

  // Builds the model from the sources that a resource-map specification lists, adding to what is there.
  // Prints a line per resource script; sources that are missing or broken are reported through error and left
  // out. 0, or the COM result that ended the reading; S_FALSE for a specification that is missing or not
  // well-formed, which changes nothing.
  long process_spec_file(const CString& path);
  // Saves the map, the constants script with it, unless names of the stored map would be lost: then reports
  // each through warning, saves nothing and returns 0x80004005. Else 0, also when saving failed.
  long update_def_map();
  // Saves the map, loads it again, so that the model is what a recorder will see, and writes the constants
  // script. 0, or the negative result of saving.
  long save_def_map();
  // Loads the resource map of get_res_file(), adding to what is there. 0, or a negative COM result
  // (0x80004005 when there is no readable map); the model is then empty or partial and get_definition answers
  // numbers.
  long load_def_map();

  // The folder of the map and of the constants script: ..\..\file\ui_recording, seen from the main
  // application folder. Where there is no such folder, the developers' one,
  // P:\devel\utestsuite\scriptinclude, there or not.
  static CString get_res_path();
  // The resource map "ui_map.rcz" and the constants script "ui_consts.js" in that folder.
  static CString get_res_file();
  static CString get_const_file();

  // What a script writes for a control or command number.
  //   - prefix: kept for the interface; a qualified name begins with its group key, so it rarely matters
  //   - dialog: template number of the dialog that holds the control, 0 when not known
  //   - module: name of the host module that owns the dialog, in any case; empty when not known
  // "group.NAME" of the control; else every name of the number, joined with " | "; else the number in decimal
  // (its low 32 bits, signed). Never fails.
  CString get_definition(int64_t number, const CString& prefix, uint32_t dialog, const CString& module) const;

  // The number of a name: "group.NAME", or a bare NAME, which the first group in key order decides.
  // False, and number untouched, when no header defines it.
  bool find_number(const CString& name, int64_t& number) const;
  // How many names the model holds: the constants of all header groups.
  size_t get_name_count() const;

  // Enters a constant into the named group, which is made if need be (in no module, without a path).
  void add_constant(const CString& group, const CString& name, int64_t value);
  // Declares a control that the host creates at run time: enters the name into the group, the group into the
  // module, and the control into the module's dialog. Names are compared as they stand. 1, or 0 when the
  // module or the dialog is not known (the constant is entered all the same once the module is).
  int add_dynamic_control(const CString& module, const CString& dialog, const CString& group,
                          const CString& control, int number);

  // Sets the error count to 0, and nothing else.
  void clear();

  // Called with the path of every file as it is read or written, on the thread that does so; null for none.
  // For showing progress: it must not call back. The context is borrowed and passed through.
  using progress_function = void (*)(void* context, const CString& path);
  void set_progress(progress_function progress, void* context);

protected:
  // The key of headers that no folder gives one.
  static const CString general_head;

  // ---- the lexer: 1 when it found what it looked for, else 0; pos is advanced in place. All but next_line
  // skip blanks first (space, tab, CR, LF) and do not go back when they fail. A pos outside is the end.

  // Stops at the first character that is no blank; 0 at the end of the text.
  static int skip_blanks(const CString& text, int& pos);
  // Stops at the next line feed, that at pos included; 0 and pos -1 when there is none.
  static int next_line(const CString& text, int& pos);
  // The next token, tried as an integer, identifier, string, separator. 0 and lexNone at the end of the
  // text, at an open string and before a character that begins no token.
  static int next_lexeme(const CString& text, int& pos, mrLexem& lex);
  // A digit or minus sign, then decimal digits, "x" and "X"; a minus sign alone is the integer 0.
  static int parse_int(const CString& text, int& pos, mrLexem& lex);
  // A letter or "_", then letters, digits and "_".
  static int parse_id(const CString& text, int& pos, mrLexem& lex);
  // A text in double quotes, \" and "" standing for a quote. One that is never closed leaves pos at the end.
  static int parse_string(const CString& text, int& pos, mrLexem& lex);
  // A run of separators; a minus sign behind the first one ends it.
  static int parse_separator(const CString& text, int& pos, mrLexem& lex);
  // The number at the beginning: blanks, a sign, then hexadecimal behind "0x", octal behind "0", else
  // decimal. 0 when there is none, the nearest limit when it does not fit; what follows is not looked at.
  static int64_t to_int(const CString& text);

  // ---- reading sources: 1 on full success, else 0; what could be read stays
  int process_resource_file(const CString& path);
  // Finds the header in the include paths, beside the including file first. parent, the group of the
  // including header, may be null.
  int process_header_in_paths(mrLibraryRes* module, mrHeader* parent, const CString& name,
                              const CString& includer);
  // Reads the header and those that it includes, each into the group of its path. module and parent may be
  // null. A file met before is not read again, its group enters the module. 0 when one of them cannot be
  // read, which is reported through error.
  int process_header_file(mrLibraryRes* module, mrHeader* parent, const CString& path);
  // One line of a header of the group: takes a #define of an id as a plain number, reads the header of an
  // #include "NAME". False when that header could not be read; every other line is a success.
  bool process_line(const CString& line, mrLibraryRes* module, mrHeader* group);
  // Without environment variables, with backslashes, without "." and "..".
  static CString expand_path(const CString& path);
  // Drops every folder; one empty entry stays, for the including file's.
  void clear_include_paths();

  // ---- the model
  // A new, empty module; one of that name is destroyed and replaced. Owned by the namer.
  mrLibraryRes* add_lib(const CString& name);
  // The group under the key, made with the path if there is none; entered into the module's headers unless
  // module is null. Owned by the namer.
  mrHeader* add_header(mrLibraryRes* module, const CString& key, const CString& path);
  // Enters a constant into the group, which is not null. A later value takes the place of an earlier one
  // there; the earlier number keeps the name as well.
  void add_constant(const CString& name, int64_t value, mrHeader* group);
  // Empties the model: every group, module and name is destroyed. Include paths and counts stay.
  void clear_all();

  // ---- the stored map: COM results
  // Compares this model with the map stored at path. 0x80004005 when names of that map are missing here, each
  // reported through warning; 0 when none is, or when there is no map to compare with.
  long check_res_map(const CString& path);
  // From the folders "headers" and "res" beside path when both are there, else from the archive at path.
  long load_res_map(const CString& path);
  // Into these folders, then into the archive. Documents that were in the folders before are archived as
  // well.
  long save_res_map(const CString& path);
  // Replaces the constants script. 1, or 0 when it could not be written.
  int save_all_declarations(const CString& path) const;
  // Adds every document of the folder; 0, or a nonzero result: the zip library's, or -1 for a folder or file
  // that cannot be read.
  static int add_dir_to_zip(cmZip& zip, const CString& folder, const CString& folder_in_zip);
  // Adds one file under its own name and date; the results are those of add_dir_to_zip. folder_in_zip has no
  // final slash.
  static int add_file_to_zip(cmZip& zip, const CString& path, const CString& folder_in_zip);
  // Fills six integers: year, month, day, hour, minute, second, in local time; 1 January 1980, 0:00:00 for a
  // file that is missing or cannot be asked.
  static void file_modified_date(const char* path, int* date);

  // Data, in this order.
  mrNameMap<std::unique_ptr<mrHeader>> m_headers;            // every header group, by key
  std::map<int64_t, std::unique_ptr<mrNameArray>> m_values;  // the qualified names that define a number
  mrNameMap<std::unique_ptr<mrLibraryRes>> m_libraries;      // every module, by name
  CArray<CString, const CString&>
      m_include_paths;  // [0]: folder of the including file; then the target's, the system's
  mrNameMap<mrHeader*> m_processed_files;  // every header file read, by expanded lower-case path
  int32_t m_error_count = 0;
  int32_t m_warning_count = 0;

private:
  struct mrOpenHeader;
  struct mrOpenScript;
  using LoadDocument = long (mrIDNamer::*)(const CString& name, const mrXmlDocument& document);

  // Headers.
  static CString group_key(const CString& path);
  bool find_in_include_paths(const CString& name, const CString& includer, CString& found);
  bool open_header(mrLibraryRes* module, mrHeader* parent, const CString& path,
                   std::vector<mrOpenHeader>& open);
  static void attach_group(mrLibraryRes* module, mrHeader* group);
  bool read_line(std::string_view line, mrHeader* group, CString& included);

  // Resource scripts.
  void read_script(mrOpenScript& script);
  void read_include(mrOpenScript& script);
  void read_dialog(mrOpenScript& script, const CString& name);
  static bool read_control_name(mrOpenScript& script, CString& name);

  // The model.
  static mrDialogRes* add_dialog(mrLibraryRes* module, const CString& name);
  bool record_control(mrDialogRes* dialog, CString name);
  void enter_value(int64_t value, const CString& name, const CString& key);

  // Lookup.
  static const mrHeader* find_definition(const mrNameMap<mrHeader*>& groups, const CString& name,
                                         int64_t& number);
  const mrLibraryRes* find_module(std::string_view module) const;
  const mrDialogRes* find_dialog(uint32_t dialog, const CString& module) const;
  CString names_of_number(int64_t number, const CString& prefix) const;
  void check_names(const mrIDNamer& old);
  void check_module(const mrLibraryRes& module, const mrLibraryRes& old);
  void check_group(const mrHeader& group, const mrHeader& old);

  // The stored map.
  long process_target(const mrXmlElements& target, const std::vector<CString>& system_folders);
  void process_required_script(const CString& path);
  long save_headers(const CString& folder);
  long save_header(const mrHeader& group, const CString& path);
  long save_modules(const CString& folder);
  long save_module(const mrLibraryRes& module, const CString& path);
  static long save_archive(const CString& path, const CString& headers, const CString& modules);
  long load_folder(const CString& folder, LoadDocument load);
  long load_archive(const CString& path);
  long load_entries(mrMapArchive& archive, LoadDocument load);
  long load_header(const CString& key, const mrXmlDocument& document);
  long load_module(const CString& name, const mrXmlDocument& document);

  void report_progress(const CString& path) const;
  progress_function m_progress = nullptr;
  void* m_progress_context = nullptr;
};
