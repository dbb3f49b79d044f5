// Making the next resource map beside the one in use.
#include "apps/mrmap/mrMapStage.h"

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
constexpr char aside_name[] = "aside";  // the new archive, alone

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

}  // namespace

mrMapStage::mrMapStage(const CString& resource_folder)
    : m_target(resource_folder), m_root(join(resource_folder, stage_name)),
      m_folder(join(m_root, "file\\ui_recording")), m_application_folder(environment(application_variable)),
      m_lock(lock(join(resource_folder, lock_name))) {
  try {
    copy_map();
  } catch (...) {
    remove_folder(m_root);
    CloseHandle(m_lock);
    throw;
  }
  // The engine looks two folders up; these two need not be there.
  lead_engine_to(join(m_root, "bin\\x64"));
}

void mrMapStage::copy_map() {
  remove_folder(m_root);
  for (const char* folder : {"", "\\file", "\\file\\ui_recording", "\\old", "\\aside"})
    make_folder(m_root + folder);
  copy_folder(join(m_target, headers_name), join(m_folder, headers_name));
  copy_folder(join(m_target, modules_name), join(m_folder, modules_name));
  if (is_file(join(m_target, map_name)))
    copy_file(join(m_target, map_name), map_file());
}

mrMapStage::~mrMapStage() {
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

CString mrMapStage::take_archive_aside() {
  const CString aside = join(join(m_root, aside_name), map_name);
  move(map_file(), aside);
  return aside;
}

void mrMapStage::put_in_place() {
  try {
    // The constants first: they know every name of both maps, as long as nothing was forced.
    replace_file(constants_file(), constants_name);
    // As long as both folders of documents are beside it nobody reads the archive.
    replace_file(join(join(m_root, aside_name), map_name), map_name);
    exchange_folders();
  } catch (...) {
    undo();
    throw;
  }
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
