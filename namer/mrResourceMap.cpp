// The life of a resource map: built from a resource-map specification, compared with the stored one, saved,
// loaded. Windows only; the documents themselves are mrMapDocuments.cpp.
#include "namer/mrIDNamer.h"

#include "host/ZQUtils.h"
#include "namer/mrFiles.h"
#include "namer/mrXml.h"

#include <cstdio>

namespace {

constexpr char resource_folder[] = "..\\..\\file\\ui_recording";  // seen from the main application folder
// Used when the installation has no resource folder: the one of the developers' network drive.
constexpr char development_folder[] = "P:\\devel\\utestsuite\\scriptinclude";
constexpr char map_file[] = "ui_map.rcz";
constexpr char constants_file[] = "ui_consts.js";

// The "path" of every selected element, in document order; elements without one are left out.
HRESULT read_paths(mrXmlElements& elements, std::vector<CString>& paths) {
  const mrBstr path(L"path");
  HRESULT hr = S_OK;
  while ((hr = elements.next()) == S_OK) {
    CString value;
    hr = elements.attribute(path, value);
    if (FAILED(hr))
      return hr;
    if (!value.IsEmpty())
      paths.push_back(value);
  }
  return FAILED(hr) ? hr : S_OK;
}

HRESULT select_paths(const mrXmlElements& parent, const wchar_t* selection, std::vector<CString>& paths) {
  mrXmlElements elements;
  const HRESULT hr = parent.select(mrBstr(selection), elements);
  return SUCCEEDED(hr) ? read_paths(elements, paths) : hr;
}

}  // namespace

CString mrIDNamer::get_res_path() {
  const CString folder = mrFiles::combine(zqu_get_main_application_folder(), resource_folder);
  return mrFiles::folder_exists(folder) ? folder : CString(development_folder);
}

CString mrIDNamer::get_res_file() { return mrFiles::combine(get_res_path(), map_file); }

CString mrIDNamer::get_const_file() { return mrFiles::combine(get_res_path(), constants_file); }

long mrIDNamer::process_spec_file(const CString& path) {
  const mrComApartment com;
  mrXmlDocument document;
  HRESULT hr = com.result();
  if (SUCCEEDED(hr))
    hr = document.create();
  if (SUCCEEDED(hr))
    hr = document.load_file(path);
  if (hr != S_OK)
    return hr;

  mrXmlElements system_includes, targets;
  hr = document.select(mrBstr(L"/rc_map/system_includes/include_dir"), system_includes);
  std::vector<CString> system_folders;
  if (SUCCEEDED(hr))
    hr = read_paths(system_includes, system_folders);
  if (SUCCEEDED(hr))
    hr = document.select(mrBstr(L"/rc_map/targets/target"), targets);
  while (SUCCEEDED(hr) && (hr = targets.next()) == S_OK)
    hr = process_target(targets, system_folders);
  return FAILED(hr) ? hr : S_OK;
}

long mrIDNamer::process_target(const mrXmlElements& target, const std::vector<CString>& system_folders) {
  std::vector<CString> folders, scripts;
  HRESULT hr = select_paths(target, L"include_dirs/include_dir", folders);
  if (SUCCEEDED(hr))
    hr = select_paths(target, L"rc_files/rc_file", scripts);
  if (FAILED(hr))
    return hr;
  clear_include_paths();
  for (const CString& folder : folders)
    m_include_paths.Add(expand_path(folder));
  for (const CString& folder : system_folders)
    m_include_paths.Add(expand_path(folder));
  for (const CString& script : scripts)
    process_required_script(expand_path(script));
  return hr;
}

void mrIDNamer::process_required_script(const CString& path) {
  CString text;
  if (!mrFiles::file_exists(path)) {
    text.Format("Cannot find required rc file '%s'", path.GetString());
    error(text);
  } else if (!process_resource_file(path)) {
    text.Format("Failed to process required rc file '%s'", path.GetString());
    error(text);
  }
}

long mrIDNamer::load_def_map() { return load_res_map(get_res_file()); }

// Deliberate: the result of saving is not looked at, names that would be lost are all that stops an update.
long mrIDNamer::update_def_map() {
  if (check_res_map(get_res_file()) < 0)
    return mr_result_fail;
  save_def_map();
  return mr_result_ok;
}

long mrIDNamer::save_def_map() {
  std::printf("Saving new map...\n");
  const long result = save_res_map(get_res_file());
  // From here on the model is what the stored map yields, for better or worse.
  clear_all();
  std::printf("Reloading map...\n");
  load_def_map();
  std::printf("Saving constants...\n");
  save_all_declarations(get_const_file());
  return result;
}

long mrIDNamer::check_res_map(const CString& path) {
  m_warning_count = 0;
  mrIDNamer old;
  old.set_progress(m_progress, m_progress_context);
  std::printf("Loading current resource map...\n");
  // A map that is missing or cannot be read has no names to lose.
  if (old.load_res_map(path) >= 0)
    check_names(old);
  return m_warning_count != 0 ? mr_result_fail : mr_result_ok;
}
