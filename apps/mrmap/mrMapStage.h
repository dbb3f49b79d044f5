// A place beside the resource map where the next one is made, so that the map in use is whole at every
// moment: it is the old one until everything of the new one is written and read back, and the new one from a
// single rename on. While the two are exchanged the constants script knows the names of both.
//
// The place is a folder in the resource folder, laid out like an installation; the environment variable
// ZQ_APPLICATION_FOLDER leads the naming engine there. What a killed build left behind is removed by the next
// one.
#pragma once

#include "framework/CString.h"

#include <vector>

class mrMapNamer;

class mrMapStage {
public:
  // Copies the map of the resource folder and leads the engine to the copy. Only one build of a map at a
  // time.
  explicit mrMapStage(const CString& resource_folder);
  mrMapStage(const mrMapStage&) = delete;
  mrMapStage& operator=(const mrMapStage&) = delete;
  // Removes what was not put in place and leads the engine back.
  ~mrMapStage();

  const CString& folder() const { return m_folder; }
  CString map_file() const;
  CString constants_file() const;
  // A place for a file of this name that is looked at and never put in place.
  CString aside(const CString& name) const;
  // Throws when the document, named from the resource folder on, would have too long a path in the stage.
  void expect_room(const CString& document) const;
  // Moves the archive to where no folder of documents is beside it, for reading it back; returns its path.
  CString take_archive_aside();

  // Puts the new map, which holds this model, in place of the old one, all or nothing.
  void put_in_place(const mrMapNamer& model);

private:
  // What undoes a step: this rename; or, when nothing is there to rename, removing the file.
  struct Move {
    CString from, to;
  };

  void expect_reached() const;
  void expect_room_for_stage() const;
  void copy_map();
  void leave();
  void lead_engine_to(const CString& application_folder);
  CString save_constants_of_both(const mrMapNamer& model) const;
  void replace_file(const CString& from, const char* name);
  void exchange_folders();
  void move_and_remember(const CString& from, const CString& to);
  void undo();

  CString m_target;              // the resource folder in use
  CString m_root;                // of the stage
  CString m_folder;              // the resource folder of the stage
  CString m_application_folder;  // ZQ_APPLICATION_FOLDER as it was
  void* m_lock = nullptr;        // open as long as this build works
  std::vector<Move> m_done;
};
