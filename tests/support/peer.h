// A second process that has the library loaded: what is common to the processes, seen from the other side.
#pragma once

#include <windows.h>

#include <string>

// The program test_peer.exe, driven by lines of text. Ended with the object.
//
//   block                    the shared block, as hexadecimal bytes
//   poke OFFSET BYTE         writes one byte of it
//   messages                 the registered numbers of host_messages(), with blanks between
//   ignore ID                add_ignore_command
//   is-ignored ID            1 or 0
//   install WINDOW THREAD    install_hooks: 1 or 0
//   remove                   remove_hooks
//   upload TYPE TEXT         send_copy_data with the bytes of the text: the recorder window's answer
class mrPeer {
public:
  mrPeer();
  ~mrPeer();
  mrPeer(const mrPeer&) = delete;
  mrPeer& operator=(const mrPeer&) = delete;

  // Sends a line and waits for the answer, while the windows of this process go on working.
  std::string ask(const std::string& line);
  void send(const std::string& line);
  bool has_answer() const;
  std::string answer();

private:
  PROCESS_INFORMATION m_process = {};
  HANDLE m_to_peer = nullptr;
  HANDLE m_from_peer = nullptr;
};
