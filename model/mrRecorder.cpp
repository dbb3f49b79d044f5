// Recorder process, recorder window's thread.
#include "model/mrRecorder.h"

#include "hooks/mrDispatcher.h"
#include "hooks/mrHooks.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrBaseWindowFactory.h"

mrRecorder::mrRecorder() {
  for (int type = first_factory_type; type <= last_recorded_factory_type; ++type) {
    if (mrActionFactory* factory = get_factory(type, true))
      factory->set_recorder(this);
  }
  m_namer.load_def_map();
}

mrRecorder::~mrRecorder() {
  clear_actions();
  clear_windows();
  for (int type = first_factory_type; type <= last_recorded_factory_type; ++type) {
    mrActionFactory* const factory = get_factory(type, true);
    if (factory && factory->get_recorder() == this)
      factory->set_recorder(nullptr);
  }
}

// ---- session ------------------------------------------------------------------------------------

bool mrRecorder::start_recording(HWND recorder, unsigned long thread_id) {
  if (!install_hooks(recorder, thread_id))
    return false;
  clear_actions();
  clear_windows();
  m_namer.clear();
  return true;
}

void mrRecorder::stop_recording() { remove_hooks(); }

bool mrRecorder::get_raw_mode() const { return shared_block().raw_mode != 0; }

void mrRecorder::set_raw_mode(bool raw) { shared_block().raw_mode = raw; }

void mrRecorder::add_ignore_command(int id) { mrBaseWindowFactory::add_ignore_command(id); }

void mrRecorder::clear_ignore_commands() { mrBaseWindowFactory::clear_ignore_commands(); }

void mrRecorder::copy_data(unsigned __int64 type, void* data) {
  // The dwData of a foreign upload may have any of its 64 bits set.
  if (type > last_factory_type)
    return;
  // Raw mode limits what the host offers, not what is understood here.
  if (mrActionFactory* factory = get_factory(static_cast<int>(type), true))
    factory->copy_data(data);
}

// ---- actions and windows --------------------------------------------------------------------------

void mrRecorder::clear_actions() {
  while (!m_actions.IsEmpty())
    delete m_actions.RemoveHead();
}

void mrRecorder::clear_windows() {
  for (mrWindowNode* node : m_windows)
    delete node;
  m_windows.RemoveAll();
  m_root.children.RemoveAll();
  m_root.children_by_declaration.clear();
  m_identifier_counts.clear();
}

mrRecorder::mrWindowNode* mrRecorder::add_temp_node(mrWindowNodes& list, const mrWindowInfo* info,
                                                    const CString& declaration,
                                                    const CString& base_identifier) {
  mrWindowNode* const node = new mrWindowNode;
  node->info = *info;
  node->declaration = declaration;
  node->base_identifier = base_identifier;
  list.Add(node);
  return node;
}

void mrRecorder::add_window(mrWindowNode* parent, mrWindowNode* node) {
  node->parent = parent;
  parent->children.Add(node);
  parent->children_by_declaration.emplace(node->declaration.str(), node);

  const int same = m_identifier_counts[node->base_identifier.str()]++;
  if (same > 0)
    node->identifier.Format("%s_%d", node->base_identifier.GetString(), same);
  else
    node->identifier = node->base_identifier;
  m_windows.Add(node);
}
