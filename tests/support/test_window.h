// Windows that tests create in their own process.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Answers a message of a test window; false hands it on to DefWindowProcA.
using mrTestAnswer = std::function<bool(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result)>;

// Registers a window class of any name whose windows do nothing but answer; a second call is harmless.
void register_test_class(const char* class_name);

// A window, destroyed with the object.
class mrTestWindow {
public:
  mrTestWindow(const char* class_name, const char* text, DWORD style, HWND parent = nullptr, int id = 0,
               DWORD ex_style = 0, RECT place = {10, 10, 210, 110});
  ~mrTestWindow();
  mrTestWindow(const mrTestWindow&) = delete;
  mrTestWindow& operator=(const mrTestWindow&) = delete;

  operator HWND() const { return m_window; }
  HWND get() const { return m_window; }
  void destroy();
  // What the window answers from now on; only for windows of register_test_class.
  void set_answer(mrTestAnswer answer);

private:
  HWND m_window;
};

// A visible top-level window of a test class.
class mrTestFrame : public mrTestWindow {
public:
  explicit mrTestFrame(const char* class_name = "TestFrame", const char* text = "Test frame");
};

// A second top-level ancestor of everything: stands for the recorder application's window. Takes the uploads
// of factories in this process and keeps their bytes.
class mrUploadCatcher {
public:
  struct Upload {
    unsigned type;  // dwData
    std::string bytes;
  };

  // Makes itself the recorder window of the shared block, without hooks.
  mrUploadCatcher();
  ~mrUploadCatcher();

  HWND window() const { return m_window; }
  size_t count() const { return m_uploads.size(); }
  const Upload& last() const { return m_uploads.back(); }
  const std::vector<Upload>& all() const { return m_uploads; }
  void clear() { m_uploads.clear(); }
  // Bytes, read as a record.
  template <class RECORD>
  RECORD last_as() const {
    RECORD record;
    memcpy(&record, last().bytes.data(), sizeof record);
    return record;
  }

  // Sees every other message of the window.
  std::function<void(UINT message, WPARAM wparam, LPARAM lparam)> on_message;

private:
  std::vector<Upload> m_uploads;
  mrTestWindow m_window;
};

// Handles the messages that are waiting in this thread's queue.
void pump_messages();

// Handles messages until the condition holds; false after the limit.
bool wait_until(const std::function<bool()>& condition, DWORD limit_ms = 10000);
