// Uploads and remote calls. The host end of remote calls from another process is in hooked_host_test.cpp.
#include "hooks/mrChannel.h"
#include "hooks/mrHooks.h"
#include "tests/support/clean_block.h"
#include "tests/support/peer.h"
#include "tests/support/test_window.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

// What a recorder window received with one WM_COPYDATA, and the busy flag meanwhile.
struct Received {
  int count = 0;
  WPARAM wparam = 1;
  ULONG_PTR type = 0;
  std::string bytes;
  int busy = -1;
};

class Upload : public testing::Test {
protected:
  Upload() : window((register_test_class("ChannelTest"), "ChannelTest"), "", WS_OVERLAPPEDWINDOW) {
    window.set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      if (message != WM_COPYDATA)
        return false;
      const COPYDATASTRUCT& data = *reinterpret_cast<const COPYDATASTRUCT*>(lparam);
      received = {received.count + 1, wparam, data.dwData,
                  std::string(static_cast<const char*>(data.lpData), data.cbData), shared_block().busy};
      result = 1234;
      return true;
    });
    shared_block().recorder_window = window;
  }

  mrCleanBlock clean;
  mrTestWindow window;
  Received received;
};

TEST_F(Upload, CarriesTypeSizeAndBytesAndNoSender) {
  char record[] = "abc\0def";
  EXPECT_EQ(1234, send_copy_data(7, record, 14));
  EXPECT_EQ(1, received.count);
  EXPECT_EQ(0u, received.wparam);
  EXPECT_EQ(14u, received.type);
  EXPECT_EQ(std::string("abc\0def", 7), received.bytes);
}

TEST_F(Upload, ExtendsTheSignOfTheType) {
  char record[] = "x";
  send_copy_data(1, record, -2);
  EXPECT_EQ(0xFFFFFFFFFFFFFFFEULL, received.type);
}

TEST_F(Upload, RaisesTheBusyFlagWhileTheRecorderWorks) {
  char record[] = "x";
  send_copy_data(1, record, 1);
  EXPECT_EQ(1, received.busy);
  EXPECT_EQ(0, shared_block().busy);
}

TEST_F(Upload, IsLostWithoutARecorderWindow) {
  shared_block().recorder_window = nullptr;
  char record[] = "x";
  EXPECT_EQ(0, send_copy_data(1, record, 1));
  EXPECT_EQ(0, received.count);
  EXPECT_EQ(0, shared_block().busy);
}

TEST_F(Upload, WaitsWhileAnotherOneIsInFlight) {
  shared_block().busy = 1;
  std::atomic<bool> started = false;
  std::thread second([&] {
    char record[] = "second";
    started = true;
    send_copy_data(6, record, 7);
  });
  ASSERT_TRUE(wait_until([&] { return started.load(); }));
  EXPECT_FALSE(wait_until([&] { return received.count > 0; }, 60)) << "went through while the flag was set";
  EXPECT_EQ(1, shared_block().busy);

  shared_block().busy = 0;
  EXPECT_TRUE(wait_until([&] { return received.count > 0; }));
  second.join();
  EXPECT_EQ("second", received.bytes);
  EXPECT_EQ(0, shared_block().busy);
}

TEST_F(Upload, OfAnotherProcessWaitsForTheSameFlag) {
  mrPeer peer;
  peer.ask("block");  // it is running
  shared_block().busy = 1;
  peer.send("upload 9 record-of-the-peer");
  EXPECT_FALSE(wait_until([&] { return received.count > 0 || peer.has_answer(); }, 60));

  shared_block().busy = 0;
  EXPECT_EQ("1234", peer.answer());
  EXPECT_EQ(1, received.count);
  EXPECT_EQ(9u, received.type);
  EXPECT_EQ("record-of-the-peer", received.bytes);
  EXPECT_EQ(0, shared_block().busy);
}

// ---- remote calls: the recorder's half, without a hook at the other end ---------------------------

class RemoteCall : public testing::Test {
protected:
  RemoteCall() : window((register_test_class("ChannelTest"), "ChannelTest"), "", WS_OVERLAPPEDWINDOW) {
    window.set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT&) {
      if (message == shared_block().remote_message_id && message != WM_NULL) {
        ++count;
        last_wparam = wparam;
        last_lparam = lparam;
        sent_bytes.assign(reinterpret_cast<const char*>(shared_block().remote_buffer), mr_remote_buffer_size);
        memset(shared_block().remote_buffer, 'r', mr_remote_buffer_size);
      }
      return false;
    });
    memset(shared_block().remote_buffer, '-', mr_remote_buffer_size);
  }

  mrCleanBlock clean;
  mrTestWindow window;
  int count = 0;
  WPARAM last_wparam = 0;
  LPARAM last_lparam = -1;
  std::string sent_bytes;
};

TEST_F(RemoteCall, RegistersItsMessageOnceAndKeepsTheNumber) {
  ASSERT_EQ(0u, shared_block().remote_message_id);
  send_remotely(window, WM_USER, 5, nullptr, 0);
  EXPECT_EQ(RegisterWindowMessageA("MSG_MR_SEND_REMOTELY"), shared_block().remote_message_id);
  EXPECT_EQ(1, count);
  EXPECT_EQ(5u, last_wparam);
  EXPECT_EQ(0, last_lparam);
  EXPECT_EQ(static_cast<uint32_t>(WM_USER), shared_block().remote_message);

  const UINT other = RegisterWindowMessageA("MSG_MR_TEST_OTHER");
  shared_block().remote_message_id = other;
  send_remotely(window, WM_USER, 5, nullptr, 0);
  EXPECT_EQ(other, shared_block().remote_message_id) << "a stored number is not registered again";
  EXPECT_EQ(2, count);
}

TEST_F(RemoteCall, CopiesJustItsBytesThereAndBack) {
  char buffer[] = "1234after";
  send_remotely(window, WM_USER, 0, buffer, 4);
  EXPECT_EQ("1234--", sent_bytes.substr(0, 6));
  EXPECT_STREQ("rrrrafter", buffer);
}

TEST_F(RemoteCall, CopiesAFullBuffer) {
  std::string buffer(1024, 'f');
  buffer += "end";
  send_remotely(window, WM_USER, 0, &buffer[0], 1024);
  EXPECT_EQ(std::string(1024, 'f'), sent_bytes);
  EXPECT_EQ(std::string(1024, 'r') + "end", buffer);
}

TEST_F(RemoteCall, RefusesMoreThanTheBufferHoldsAndChangesNothing) {
  shared_block().remote_result = 55;
  const std::string before(reinterpret_cast<const char*>(&shared_block()), sizeof(mrSharedBlock));
  std::string buffer(1025, 'f');
  EXPECT_EQ(0, send_remotely(window, WM_USER, 0, &buffer[0], 1025));
  EXPECT_EQ(0, send_remotely(window, WM_USER, 0, nullptr, 1025));
  EXPECT_EQ(0, count);
  EXPECT_EQ(std::string(1025, 'f'), buffer);
  EXPECT_EQ(before, std::string(reinterpret_cast<const char*>(&shared_block()), sizeof(mrSharedBlock)));
}

TEST_F(RemoteCall, CopiesNothingForANullBufferOrNoBytes) {
  send_remotely(window, WM_USER, 0, nullptr, 16);
  EXPECT_EQ(std::string(1024, '-'), sent_bytes);
  memset(shared_block().remote_buffer, '-', mr_remote_buffer_size);
  char buffer[] = "kept";
  send_remotely(window, WM_USER, 0, buffer, 0);
  EXPECT_EQ(std::string(1024, '-'), sent_bytes);
  EXPECT_STREQ("kept", buffer);
  EXPECT_EQ(2, count);
}

TEST_F(RemoteCall, AnswersTheSharedResult) {
  shared_block().remote_result = -5000000000;
  EXPECT_EQ(-5000000000, send_remotely(window, WM_USER, 0, nullptr, 0));
}
