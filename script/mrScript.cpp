// Assembles the script job from the recorded actions. Recorder process, recorder window's thread.
#include "hooks/mrDispatcher.h"
#include "model/mrBaseWindow.h"
#include "model/mrRecorder.h"

#include <algorithm>
#include <vector>

namespace {

// Flags of mrWindowNode::state.
enum mrNodeState {
  nodeReferenced = 1,  // a statement calls the node's function
  nodeWritten = 2,     // the node's function stands in the declarations
};

// The job: constants file, script body, declarations.
constexpr const char job_template[] =
    "<job>\r\n"
    "<reference object=\"MacroPlayer.MacroPlayer\"/>\r\n"
    "<script language=\"JScript\" src=\"%s\" />\r\n"
    "<script language=\"JScript\">\r\n"
    "\r\n"
    "var mpRECURSIVE_SEARCH = 64;\r\n"
    "var macro_player;\r\n"
    "\r\n"
    "// Entry point\r\n"
    "function main()\r\n"
    "{\r\n"
    "  //===========================================================================\r\n"
    "  // Script begin\r\n"
    "%s"
    "  // Script end\r\n"
    "  //===========================================================================\r\n"
    "}\r\n"
    "\r\n"
    "//=============================================================================\r\n"
    "// Windows declarations begin\r\n"
    "%s"
    "// Windows declarations end\r\n"
    "//=============================================================================\r\n"
    "\r\n"
    "// Create Macro Player\r\n"
    "macro_player = new ActiveXObject(\"MacroPlayer.MacroPlayer\");\r\n"
    "main();\r\n"
    "WScript.Echo(\"Script ended\");\r\n"
    "\r\n"
    "</script>\r\n"
    "</job>";

}  // namespace

// ---- one level ------------------------------------------------------------------------------------

mrDeclarationRes mrRecorder::get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                             CString& identifier) {
  for (int type = last_recorded_factory_type; type >= first_factory_type; --type) {
    mrActionFactory* const factory = get_factory(type, true);
    if (!factory)
      continue;
    const mrDeclarationRes result = factory->get_declaration(info, declaration, search, identifier);
    if (result != declaredNot) {
      identifier = make_identifier(identifier);
      return result;
    }
  }
  return declaredNot;
}

// ---- a path: chain of nodes and call ----------------------------------------------------------------

void mrRecorder::get_declaration(mrWindowPath& path, CString& call) {
  mrWindowNodes list;
  collect_declared_levels(path, list);
  mrWindowNode* const node = merge_into_tree(list);
  node->state |= nodeReferenced;
  call.Format("  %s().", node->identifier.GetString());
}

void mrRecorder::collect_declared_levels(mrWindowPath& path, mrWindowNodes& list) {
  int previous = declaredNot;
  CString saved_search;
  const ptrdiff_t top = path.GetSize() - 1;
  for (ptrdiff_t level = 0; level <= top; ++level) {
    CString declaration;
    CString search;
    CString identifier;
    const mrDeclarationRes result = get_declaration(path[level], declaration, search, identifier);
    switch (result) {
    case declaredByControlId:
      if (previous != declaredNot && previous != declaredByControlId && previous != declaredUntitledDialog)
        break;
      add_temp_node(list, path[level], declaration, identifier);
      saved_search = search;
      previous = declaredByControlId;
      break;
    case declaredMainWindow:
    case declaredByName:
      add_temp_node(list, path[level], declaration, identifier);
      previous = result;
      break;
    case declaredActiveDocument:
      add_temp_node(list, path[level], declaration, identifier);
      ++level;  // the MDI client between a document and its frame
      break;
    case declaredActiveDialog:
      if (previous == declaredByName)
        break;
      // Deliberate: in the action's own path, for good. Which dialog is active at play time is not to be told
      // by what it was called when it was recorded.
      path[level]->window = nullptr;
      path[level]->text[0] = '\0';
      add_temp_node(list, path[level], declaration, identifier);
      level = std::max(level, top - 1);  // on with the top-level window
      break;
    case declaredUntitledDialog:
      // The control is searched for at any depth below the next declared window.
      if ((previous == declaredNot || previous == declaredByControlId) && !list.IsEmpty())
        list[list.GetSize() - 1]->declaration = saved_search;
      previous = declaredUntitledDialog;
      break;
    case declaredNot:
      break;
    }
  }
}

mrRecorder::mrWindowNode* mrRecorder::merge_into_tree(const mrWindowNodes& list) {
  mrWindowNode* current = &m_root;
  for (ptrdiff_t i = list.GetSize() - 1; i >= 0; --i) {
    const auto known = current->children_by_declaration.find(list[i]->declaration.str());
    if (known != current->children_by_declaration.end()) {
      delete list[i];
      current = known->second;
    } else {
      add_window(current, list[i]);
      current = list[i];
    }
  }
  return current;
}

// ---- the job ----------------------------------------------------------------------------------------

// A statement on another top-level window than the last one's gives that window the focus first.
void mrRecorder::append_set_focus(const mrAction* action, const mrWindowNode*& focused, CString& body) {
  const auto* const window_action = dynamic_cast<const mrBaseWindow*>(action);
  if (!window_action || window_action->get_path().IsEmpty())
    return;
  const mrWindowPath& path = window_action->get_path();
  CString declaration;
  CString search;
  CString identifier;
  get_declaration(path[path.GetSize() - 1], declaration, search, identifier);
  if (focused && focused->declaration == declaration)
    return;
  const auto known = m_root.children_by_declaration.find(declaration.str());
  focused = known != m_root.children_by_declaration.end() ? known->second : nullptr;
  if (focused)
    body.AppendFormat("  %s().SetFocus();\r\n", focused->identifier.GetString());
}

void mrRecorder::get_script(CString& script) {
  CString body;
  const mrWindowNode* focused = nullptr;
  for (POSITION position = m_actions.GetHeadPosition(); position;) {
    mrAction* const action = m_actions.GetNext(position);
    if (!action)
      continue;  // an action that could not be made
    CString line;
    action->get_script(line);
    line += "\r\n";
    append_set_focus(action, focused, body);
    body += line;
  }

  CString declarations;
  if (m_root.state & nodeReferenced)
    create_declaration_int(&m_root, declarations);
  for (mrWindowNode* child : m_root.children)
    create_declarations(child, declarations);

  script.Format(job_template, mrIDNamer::get_const_file().GetString(), body.GetString(),
                declarations.GetString());
}

// ---- window functions -------------------------------------------------------------------------------

void mrRecorder::create_declarations(mrWindowNode* node, CString& script) {
  const bool shared_by_others = node != &m_root && (node->info.top_level || node->children.GetSize() >= 2);
  if ((node->state & nodeReferenced) || shared_by_others)
    create_declaration_int(node, script);
  for (mrWindowNode* child : node->children)
    create_declarations(child, script);
}

void mrRecorder::create_declaration_int(mrWindowNode* node, CString& script) {
  script.AppendFormat("function %s()\r\n{\r\n  return ", node->identifier.GetString());
  if (!node->parent) {
    script += "null;\r\n}\r\n\r\n";
    node->state |= nodeWritten;
    return;
  }

  std::vector<const mrWindowNode*> chain;  // from the node upward
  const mrWindowNode* base = node;
  do {
    chain.push_back(base);
    base = base->parent;
  } while (base != &m_root && !(base->state & nodeWritten));

  if (base != &m_root)
    script.AppendFormat("%s()", base->identifier.GetString());
  else
    script += "macro_player";
  CString separator = ".\r\n    ";
  for (auto part = chain.rbegin(); part != chain.rend(); ++part) {
    script += separator;
    script += (*part)->declaration;
    separator += "  ";
  }
  script += ";\r\n}\r\n\r\n";
  node->state |= nodeWritten;
}
