// The shared hook block and what goes with it, seen from two processes.
#include "hooks/mrHostMessages.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrBaseWindowFactory.h"
#include "tests/support/clean_block.h"
#include "tests/support/peer.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <string>

static std::string hexadecimal(const void* data, size_t size) {
  std::string text;
  for (size_t i = 0; i < size; ++i) {
    char byte[3];
    snprintf(byte, sizeof byte, "%02x", static_cast<const unsigned char*>(data)[i]);
    text += byte;
  }
  return text;
}

static std::string own_view() { return hexadecimal(&shared_block(), sizeof(mrSharedBlock)); }

TEST(SharedBlock, IsOneBlockInTwoProcesses) {
  const mrCleanBlock clean;
  mrPeer peer;
  EXPECT_EQ(own_view(), peer.ask("block"));

  memset(shared_block().remote_buffer, 0xA5, mr_remote_buffer_size);
  shared_block().recorder_window = reinterpret_cast<HWND>(0x123456789ABCLL);
  shared_block().remote_result = -2;
  EXPECT_EQ(own_view(), peer.ask("block"));

  peer.ask("poke 33 7");
  EXPECT_EQ(7, shared_block().raw_mode);
  peer.ask("poke 1119 200");
  EXPECT_EQ(200, shared_block().remote_buffer[1023]);
}

TEST(SharedBlock, FieldsLieAtTheOffsetsThatAllProcessesUse) {
  const mrCleanBlock clean;
  mrSharedBlock& shared = shared_block();
  shared.ignore_commands_count = 0x01020304;
  shared.logger_window = reinterpret_cast<HWND>(0x1112131415161718LL);
  shared.logger_latch = 1;
  shared.logger_candidate_window = reinterpret_cast<HWND>(0x2122232425262728LL);
  shared.busy = 0x31;
  shared.raw_mode = 0x32;
  shared.remote_message_id = 0x41424344;
  shared.recorder_window = reinterpret_cast<HWND>(0x5152535455565758LL);
  shared.remote_message = 0x61626364;
  shared.cbt_hook = reinterpret_cast<HHOOK>(0x7172737475767778LL);
  shared.call_wnd_ret_hook = reinterpret_cast<HHOOK>(0x0102030405060708LL);
  shared.call_wnd_hook = reinterpret_cast<HHOOK>(0x0202030405060708LL);
  shared.get_message_hook = reinterpret_cast<HHOOK>(0x0302030405060708LL);
  shared.remote_result = -1;
  shared.remote_buffer[0] = 0xEE;
  EXPECT_EQ("04030201"
            "00000000"
            "1817161514131211"
            "01000000"
            "00000000"
            "2827262524232221"
            "31"
            "32"
            "0000"
            "44434241"
            "5857565554535251"
            "64636261"
            "00000000"
            "7877767574737271"
            "0807060504030201"
            "0807060504030202"
            "0807060504030203"
            "ffffffffffffffff"
            "ee",
            own_view().substr(0, 2 * 97));
}

// A copy of the library under another name has a block of its own, which nobody has written to.
TEST(SharedBlock, IsAllZeroAtFirstLoad) {
  char library[MAX_PATH] = "";
  GetModuleFileNameA(GetModuleHandleA("RecorderHooks.dll"), library, MAX_PATH);
  char folder[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  const std::string copy =
      folder + std::string("FreshHooks") + std::to_string(GetCurrentProcessId()) + ".dll";
  ASSERT_TRUE(CopyFileA(library, copy.c_str(), FALSE));

  const HMODULE fresh = LoadLibraryA(copy.c_str());
  ASSERT_NE(nullptr, fresh);
  using Block = mrSharedBlock& (*)();
  const FARPROC block = GetProcAddress(fresh, "_Z12shared_blockv");
  ASSERT_NE(nullptr, block);
  const mrSharedBlock& shared = reinterpret_cast<Block>(reinterpret_cast<void*>(block))();
  EXPECT_NE(&shared, &shared_block());
  EXPECT_EQ(std::string(2 * sizeof shared, '0'), hexadecimal(&shared, sizeof shared));

  FreeLibrary(fresh);
  DeleteFileA(copy.c_str());
}

// Deliberate split: the count is common, the ids are not.
TEST(IgnoreList, SharesItsCountButNotItsIds) {
  const mrCleanBlock clean;
  mrPeer peer;
  mrBaseWindowFactory::clear_ignore_commands();
  mrBaseWindowFactory::add_ignore_command(4001);
  EXPECT_TRUE(mrBaseWindowFactory::is_ignore(4001));
  EXPECT_EQ("0", peer.ask("is-ignored 4001"));
  EXPECT_EQ("1", peer.ask("is-ignored 0")) << "the other process sees the count and its own, empty entry";

  peer.ask("ignore 4002");
  EXPECT_EQ(2, shared_block().ignore_commands_count);
  EXPECT_FALSE(mrBaseWindowFactory::is_ignore(4002));
  EXPECT_EQ("1", peer.ask("is-ignored 4002"));
}

TEST(HostMessages, HaveTheRegisteredNumbersOfTheirNamesInEveryProcess) {
  const mrHostMessages& host = host_messages();
  EXPECT_EQ(RegisterWindowMessageA("MSG_ZQ_GetDialogTemplateID"), host.get_dialog_template_id);
  EXPECT_EQ(RegisterWindowMessageA("MSG_ZQ_GetDialogResLibrary"), host.get_dialog_res_library);
  EXPECT_EQ(RegisterWindowMessageA("MSG_ZQ_GetWindowIDD"), host.get_window_idd);
  EXPECT_EQ(RegisterWindowMessageA("MSG_ZQ_GetWindowName"), host.get_window_name);
  EXPECT_EQ(RegisterWindowMessageA("MSG_ZQ_GetViewPosition"), host.get_view_position);
  EXPECT_EQ(RegisterWindowMessageA("MSG_GX_RequestGridInformation"), host.request_grid_information);
  EXPECT_EQ(RegisterWindowMessageA("MSG_OT_RequestInformation"), host.request_option_information);
  EXPECT_EQ(RegisterWindowMessageA("MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA"),
            host.request_rib_customisation);
  EXPECT_EQ(RegisterWindowMessageA("BCGM_ONCHANGE_ACTIVE_TAB"), host.bcg_change_active_tab);

  std::string numbers;
  for (const UINT number :
       {host.get_dialog_template_id, host.get_dialog_res_library, host.get_window_idd, host.get_window_name,
        host.get_view_position, host.request_grid_information, host.request_option_information,
        host.request_rib_customisation, host.bcg_change_active_tab})
    numbers += std::to_string(number) + " ";
  EXPECT_EQ(numbers, mrPeer().ask("messages"));
}
