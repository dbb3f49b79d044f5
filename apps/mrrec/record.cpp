// mrrec record: from the host's first hooked message to the script file.
#include "apps/mrrec/mrCommands.h"
#include "apps/mrrec/mrFailure.h"
#include "apps/mrrec/mrHost.h"
#include "apps/mrrec/mrIgnoredCommands.h"
#include "apps/mrrec/mrOutputFile.h"
#include "apps/mrrec/mrPendingLines.h"
#include "apps/mrrec/mrRecorderWindow.h"
#include "apps/mrrec/mrSession.h"
#include "apps/mrrec/mrSessionRecorder.h"

#include <cstdio>

namespace {

void tell_resource_map(const mrIDNamer& namer, bool quiet) {
  const std::string path = mrIDNamer::get_res_file().str();
  const size_t names = namer.get_name_count();
  if (names == 0)
    print_note("warning: no names from " + path + ": ids are written as numbers");
  else if (!quiet)
    print_note(std::to_string(names) + " names from " + path);
}

void set_ignored(mrSessionRecorder& recorder, const mrIgnoredCommands& ignored) {
  recorder.clear_ignore_commands();
  for (const int id : ignored.ids())
    recorder.add_ignore_command(id);
}

void save_script(mrSessionRecorder& recorder, const mrOutputFile& file, bool quiet) {
  CString script;
  recorder.get_script(script);
  file.write(script);
  if (!quiet)
    printf("saved %s (%d actions)\n", file.path().c_str(), static_cast<int>(recorder.action_count()));
}

// From the hooks to the script, when host and file are known.
void record_host(const mrArguments& arguments, const mrHost& host, const mrIgnoredCommands& ignored,
                 mrSessionRecorder& recorder, const mrOutputFile& file) {
  mrPendingLines lines;
  mrRecorderWindow window([&](const COPYDATASTRUCT& upload) {
    if (ignored.drops(upload))
      return;
    recorder.copy_data(upload.dwData, upload.lpData);
    if (!arguments.quiet)
      lines.add(recorder.take_changed_lines());
  });
#ifdef MR_ROUTE_LOGGER
  print_note("warning: this is the diagnostic build, which logs messages and records nothing");
#endif
  mrSession session(recorder, window, host, arguments.raw);
  set_ignored(recorder, ignored);
  const mrConsoleStop console_stop(window);
  tell_start(host);

  const mrStopCause cause = window.wait_for_end(host.process, arguments.limit_ms, [&] { lines.print(); });
  session.stop();
  window.handle_pending();
  lines.print();
  if (cause == stopHostEnded)
    print_note(host.name + " has ended");
  save_script(recorder, file, arguments.quiet);
}

}  // namespace

int record(const mrArguments& arguments) {
  // What can be refused without touching a host comes first.
  require_no_recording();
  const mrOutputFile file(arguments.out);
  mrSessionRecorder recorder;
  tell_resource_map(recorder.get_namer(), arguments.quiet);
  const mrIgnoredCommands ignored(arguments.ignored, recorder.get_namer());
  const mrHost host = find_host(arguments);
  record_host(arguments, host, ignored, recorder, file);
  return exitDone;
}
