// mrrec log: the messages of one window of the host, as the message logger tells them.
#include "apps/mrrec/mrCommands.h"
#include "apps/mrrec/mrFailure.h"
#include "apps/mrrec/mrHost.h"
#include "apps/mrrec/mrOutputFile.h"
#include "apps/mrrec/mrPendingLines.h"
#include "apps/mrrec/mrRecorderWindow.h"
#include "apps/mrrec/mrSession.h"
#include "apps/mrrec/mrSessionRecorder.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrFactoryType.h"
#include "model/mrActionFactory.h"

#include <memory>

// The start of a recording and the recorder's constructor leave the logger out; a log is what it is there
// for.
static void prepare_logger(mrRecorder& recorder) {
  mrActionFactory* const logger = get_factory(factoryLogger, true);
  if (!logger)
    throw mrFailure{exitFailed, "this library has no message logger"};
  logger->set_recorder(&recorder);
  logger->on_start_record();
}

static CString joined(const std::vector<CString>& lines) {
  CString text;
  for (const CString& line : lines)
    text += line + "\r\n";
  return text;
}

int log_messages(const mrArguments& arguments) {
  require_no_recording();
  std::unique_ptr<mrOutputFile> file;
  if (!arguments.out.empty())
    file = std::make_unique<mrOutputFile>(arguments.out);
  mrSessionRecorder recorder;
  const mrHost host = find_host(arguments);

  mrPendingLines lines;
  mrRecorderWindow window([&](const COPYDATASTRUCT& upload) {
    recorder.copy_data(upload.dwData, upload.lpData);
    lines.add(recorder.take_changed_lines());
  });
  prepare_logger(recorder);
  mrSession session(recorder, window, host, false);
  const mrConsoleStop console_stop(window);
  tell_start(host);
  window.wait_for_end(host.process, 0, [&] { lines.print(); });
  session.stop();
  window.handle_pending();
  lines.print();
  if (file)
    file->write(joined(lines.all()));
  return exitDone;
}
