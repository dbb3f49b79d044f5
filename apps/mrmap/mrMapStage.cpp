// Making the next resource map beside the one in use.
#include "apps/mrmap/mrMapStage.h"

#include "apps/mrmap/mrMapNamer.h"
#include "apps/mrmap/mrPaths.h"

#include <windows.h>

#include <stdexcept>

namespace {

constexpr char stage_name[] = "mrmap.new";
constexpr char lock_name[] = "mrmap.lock";
constexpr char application_variable[] = "ZQ_APPLICATION_FOLDER";
constexpr char map_name[] = "ui_map.rcz";
constexpr char constants_name[] = "ui_consts.js";
constexpr char headers_name[] = "headers";
constexpr char modules_name[] = "res";
constexpr char old_name[] = "old";      // what was replaced, until everything is in place
constexpr char aside_name[] = "aside";  // the new archive, without documents beside it
// Of the stage: what the engine takes for the folder of the programs, and how it goes on from there.
constexpr char application_name[] = "bin\\x64";
constexpr char way_of_engine[] = "..\\..\\file\\ui_recording";

constexpr int max_path = MAX_PATH - 1;  // characters

// Held by the system as long as the process lives, so a killed build locks nobody out.
HANDLE lock(const CString& path) {
  const HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file != INVALID_HANDLE_VALUE)
    return file;
  if (GetLastError() == ERROR_SHARING_VIOLATION)
    throw std::runtime_error("another mrmap builds this map");
  throw_system_error(path, "written");
}

CString environment(const char* name) {
  std::string value(32768, '\0');
  value.resize(GetEnvironmentVariableA(name, &value[0], static_cast<DWORD>(value.size())));
  return CString(value);
}

[[noreturn]] void throw_too_long(const CString& resource_folder, const CString& path) {
  CString text;
  text.Format(
      "the resource folder %s is too long: a build needs %s, which has %d characters, and %d is the most",
      resource_folder.GetString(), path.GetString(), path.GetLength(), max_path);
  throw std::runtime_error(text.GetString());
}

}  // namespace

mrMapStage::mrMapStage(const CString& resource_folder)
    : m_target(resource_folder), m_root(join(resource_folder, stage_name)),
      m_folder(join(m_root, "file\\ui_recording")), m_application_folder(environment(application_variable)),
      m_lock(lock(join(resource_folder, lock_name))) {
  try {
    expect_room_for_stage();
    copy_map();
    // The engine looks two folders up; these two need not be there.
    lead_engine_to(join(m_root, application_name));
    expect_reached();
  } catch (...) {
    leave();
    throw;
  }
}

// A folder that it does not find the engine replaces by the developers' one, without a word: the map would be
// written there.
void mrMapStage::expect_reached() const {
  const CString reached = mrIDNamer::get_res_path();
  if (reached != m_folder)
    throw std::runtime_error(
        ("the map would be written to " + reached + " instead of " + m_folder).GetString());
}

void mrMapStage::expect_room(const CString& document) const {
  const CString path = join(m_folder, document);
  if (path.GetLength() > max_path)
    throw_too_long(m_target, path);
}

void mrMapStage::expect_room_for_stage() const {
  const CString way = join(join(m_root, application_name), way_of_engine);
  if (way.GetLength() > max_path)
    throw_too_long(m_target, way);
  for (const char* folder : {headers_name, modules_name})
    for (const CString& name : names_in(join(m_target, folder), true))
      expect_room(join(folder, name));
}

void mrMapStage::copy_map() {
  remove_folder(m_root);
  // A document that stayed would be packed into this map.
  if (is_folder(m_root))
    throw std::runtime_error(
        ("what an earlier build left in " + m_root + " could not be removed; remove it by hand").GetString());
  for (const char* folder : {"", "\\file", "\\file\\ui_recording", "\\old", "\\aside"})
    make_folder(m_root + folder);
  copy_folder(join(m_target, headers_name), join(m_folder, headers_name));
  copy_folder(join(m_target, modules_name), join(m_folder, modules_name));
  if (is_file(join(m_target, map_name)))
    copy_file(join(m_target, map_name), map_file());
}

mrMapStage::~mrMapStage() { leave(); }

void mrMapStage::leave() {
  lead_engine_to(m_application_folder);
  remove_folder(m_root);
  CloseHandle(m_lock);
}

void mrMapStage::lead_engine_to(const CString& application_folder) {
  SetEnvironmentVariableA(application_variable,
                          application_folder.IsEmpty() ? nullptr : application_folder.GetString());
}

CString mrMapStage::map_file() const { return join(m_folder, map_name); }

CString mrMapStage::constants_file() const { return join(m_folder, constants_name); }

CString mrMapStage::aside(const CString& name) const { return join(join(m_root, aside_name), name); }

CString mrMapStage::take_archive_aside() {
  move(map_file(), aside(map_name));
  return aside(map_name);
}

// Whoever kills this between two renames leaves a map that is whole, the old one or the new one, beside a
// script that knows every name of it.
void mrMapStage::put_in_place(const mrMapNamer& model) {
  try {
    replace_file(save_constants_of_both(model), constants_name);
    // As long as both folders of documents are beside it nobody reads the archive.
    replace_file(aside(map_name), map_name);
    exchange_folders();
    // The last step: nothing is left that could fail and want it undone.
    move(constants_file(), join(m_target, constants_name), true);
  } catch (...) {
    undo();
    throw;
  }
}

// The script for the time in which either map may be the one that is read: the new map need not have all
// names of the old one, when it was forced or cleaned, or when groups are gone. A name of both has the new
// number.
CString mrMapStage::save_constants_of_both(const mrMapNamer& model) const {
  mrQuietNamer both;
  // Without an old map, or with what can be read of a damaged one.
  both.load_res_map(join(m_target, map_name));
  for (const auto& [key, group] : model.headers())
    for (const auto& [name, value] : group->constants)
      both.add_constant(key, name, value);
  const CString path = aside("both.js");
  if (both.save_all_declarations(path) != 1)
    throw_system_error(path, "written");
  return path;
}

// From the first rename until the last one the archive, new by now, is what is read: it needs both folders to
// be there to be passed over.
void mrMapStage::exchange_folders() {
  const CString old = join(m_root, old_name);
  for (const char* name : {headers_name, modules_name})
    if (is_folder(join(m_target, name)))
      move_and_remember(join(m_target, name), join(old, name));
  for (const char* name : {modules_name, headers_name})
    move_and_remember(join(m_folder, name), join(m_target, name));
}

void mrMapStage::replace_file(const CString& from, const char* name) {
  const CString target = join(m_target, name);
  const CString old = join(join(m_root, old_name), name);
  if (is_file(target))
    copy_file(target, old);
  move(from, target, true);
  // Undone by putting the copy back; without one the file was not there and goes.
  m_done.push_back({old, target});
}

void mrMapStage::move_and_remember(const CString& from, const CString& to) {
  move(from, to);
  m_done.push_back({to, from});
}

// Best effort, in reverse order: what fails here has failed for the same reason before.
void mrMapStage::undo() {
  for (; !m_done.empty(); m_done.pop_back()) {
    const Move& back = m_done.back();
    if (is_file(back.from) || is_folder(back.from))
      MoveFileExA(back.from, back.to, MOVEFILE_REPLACE_EXISTING);
    else
      DeleteFileA(back.to);
  }
}
