// The program behind peer.h: one line in, one line out.
#include "hooks/mrChannel.h"
#include "hooks/mrHooks.h"
#include "hooks/mrHostMessages.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>
#include <fcntl.h>
#include <io.h>

#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>

static std::string block_bytes() {
  const unsigned char* const bytes = reinterpret_cast<const unsigned char*>(&shared_block());
  std::ostringstream text;
  text << std::hex << std::setfill('0');
  for (size_t i = 0; i < sizeof(mrSharedBlock); ++i)
    text << std::setw(2) << static_cast<int>(bytes[i]);
  return text.str();
}

static std::string message_numbers() {
  const mrHostMessages& host = host_messages();
  std::ostringstream text;
  for (const UINT number :
       {host.get_dialog_template_id, host.get_dialog_res_library, host.get_window_idd, host.get_window_name,
        host.get_view_position, host.request_grid_information, host.request_option_information,
        host.request_rib_customisation, host.bcg_change_active_tab})
    text << number << ' ';
  return text.str();
}

static std::string obey(std::istringstream& line) {
  std::string command;
  line >> command;
  if (command == "block")
    return block_bytes();
  if (command == "messages")
    return message_numbers();
  if (command == "poke") {
    size_t offset = 0;
    int byte = 0;
    line >> offset >> byte;
    reinterpret_cast<unsigned char*>(&shared_block())[offset] = static_cast<unsigned char>(byte);
    return "";
  }
  if (command == "ignore" || command == "is-ignored") {
    int id = 0;
    line >> id;
    if (command == "is-ignored")
      return mrBaseWindowFactory::is_ignore(id) ? "1" : "0";
    mrBaseWindowFactory::add_ignore_command(id);
    return "";
  }
  if (command == "install") {
    unsigned long long window = 0;
    DWORD thread = 0;
    line >> window >> thread;
    return install_hooks(reinterpret_cast<HWND>(window), thread) ? "1" : "0";
  }
  if (command == "remove") {
    remove_hooks();
    return "";
  }
  if (command == "upload") {
    int type = 0;
    std::string bytes;
    line >> type >> bytes;
    return std::to_string(send_copy_data(static_cast<uint32_t>(bytes.size()), &bytes[0], type));
  }
  return "unknown command";
}

int main() {
  _setmode(_fileno(stdout), _O_BINARY);
  for (std::string text; std::getline(std::cin, text);) {
    std::istringstream line(text);
    std::cout << obey(line) << '\n' << std::flush;
  }
  return 0;
}
