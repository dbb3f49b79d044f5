// A concrete factory with nothing of its own, whose inherited services tests call.
#pragma once

#include "model/mrBaseWindowFactory.h"

class mrProbeFactory : public mrBaseWindowFactory {
public:
  explicit mrProbeFactory(const char* script_name = "Probe", const char* class_name = "Probe")
      : mrBaseWindowFactory(script_name, class_name) {}

  mrFactoryType get_factory_type() override { return factoryButton; }
  bool handle_message(int, int, unsigned __int64, __int64) override { return false; }
  void copy_data(void*) override {}
  mrContextMenuRes context_menu_invoke(HWND, const char*, const CPoint&) override {
    return contextMenuNotClaimed;
  }

  using mrBaseWindowFactory::add_run_command;
  using mrBaseWindowFactory::append_action;
  using mrBaseWindowFactory::filter_class_name;
  using mrBaseWindowFactory::get_named_declaration;
  using mrBaseWindowFactory::get_script_name;
  using mrBaseWindowFactory::m_ignore_commands;
  using mrBaseWindowFactory::m_ignore_commands_count;
  using mrBaseWindowFactory::mr_commands_stack;
};
