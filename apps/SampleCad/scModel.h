// The objects of one document, with undo, and their file.
#pragma once

#include "apps/SampleCad/scShapes.h"

#include <functional>
#include <vector>

class scModel {
public:
  const std::vector<scShape>& shapes() const { return m_shapes; }
  const scShape* find(int id) const;

  // Every change below is one step of undo and is told to the listener afterwards.
  int add(scShape shape);  // returns the id given to it
  void change(const scShape& shape);
  void remove(const std::vector<int>& ids);
  void insert(const std::vector<scShape>& shapes);
  bool can_undo() const { return !m_undo.empty(); }
  bool can_redo() const { return !m_redo.empty(); }
  void undo();
  void redo();

  bool modified() const { return m_modified; }
  // A text file, one line per object. A file that cannot be read whole leaves the model as it was.
  bool load(const char* path);
  bool save(const char* path);

  void set_listener(std::function<void()> listener) { m_listener = std::move(listener); }

private:
  void keep_for_undo();
  void tell();

  std::vector<scShape> m_shapes;
  std::vector<std::vector<scShape>> m_undo, m_redo;
  std::function<void()> m_listener;
  int m_next_id = 1;
  bool m_modified = false;
};

// Ready-made assemblies for the Insert menu.
std::vector<scShape> gearbox_shapes();
std::vector<scShape> flange_shapes();
std::vector<scShape> bolt_circle_shapes(int bolts);
