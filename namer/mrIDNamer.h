// Names for numbers: turns the ids of the host's controls, dialogs and commands into the names that its
// programmers gave them, and writes the script of constants in which those names have their numbers.
//
// Runs in the recorder process and in the map tool; knows nothing of windows or of recording. One object is
// used by one thread at a time.
#pragma once

#include "framework/mrApi.h"
#include "namer/mrLog.h"
#include "namer/mrResourceModel.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

class MR_API mrIDNamer : public mrLog {
public:
  mrIDNamer();
  mrIDNamer(const mrIDNamer&) = delete;
  mrIDNamer& operator=(const mrIDNamer&) = delete;

  // Prints "Warning: TEXT" or "Error: TEXT" on standard output and counts it.
  void warning(const CString& text) override;
  void error(const CString& text) override;
  ~mrIDNamer() override;

  // Loads the resource map of get_res_file(). 0, or a negative COM result (0x80004005 when there is no
  // readable map); the model is then empty or partial and get_definition answers numbers.
  long load_def_map();

  // The folder of the map and of the constants script: ..\..\file\ui_recording beside the main application
  // folder.
  static CString get_res_path();
  // The resource map "ui_map.rcz" and the constants script "ui_consts.js" in that folder.
  static CString get_res_file();
  static CString get_const_file();

  // What a script writes for a control or command number.
  //   prefix   kept for the interface's sake; a qualified name begins with its group key, so it rarely
  //   matters dialog   template number of the dialog that holds the control, 0 when not known module   name
  //   of the host module that owns the dialog, in any case; empty when not known
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

  // Sets the error count to 0, and nothing else.
  void clear();

protected:
  // The key of headers that no folder gives one.
  static const CString general_head;

  // A new, empty module; one of that name is destroyed and replaced. Owned by the namer.
  mrLibraryRes* add_lib(const CString& name);
  // The group under the key, made with the path if there is none; entered into the module's headers unless
  // module is null. Owned by the namer.
  mrHeader* add_header(mrLibraryRes* module, const CString& key, const CString& path);
  void add_constant(const CString& name, int64_t value, mrHeader* group);

  void clear_include_paths();
  void clear_all();

  // Data, in this order.
  mrNameMap<std::unique_ptr<mrHeader>> m_headers;            // every header group, by key
  std::map<int64_t, std::unique_ptr<mrNameArray>> m_values;  // the qualified names that define a number
  mrNameMap<std::unique_ptr<mrLibraryRes>> m_libraries;      // every module, by name
  mrNameArray m_include_paths;  // [0]: folder of the including file; then the target's, the system's
  mrNameMap<mrHeader*> m_processed_files;  // every header file read, by expanded lower-case path
  int32_t m_error_count = 0;
  int32_t m_warning_count = 0;

private:
  void enter_value(int64_t value, const CString& name, const CString& key);
  static const mrHeader* find_definition(const mrNameMap<mrHeader*>& groups, const CString& name);
  const mrLibraryRes* find_module(std::string_view module) const;
  const mrDialogRes* find_dialog(uint32_t dialog, const CString& module) const;
  CString names_of_number(int64_t number, const CString& prefix) const;
};
