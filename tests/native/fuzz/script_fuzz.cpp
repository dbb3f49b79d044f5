// Any bytes as a resource script and the headers around it. Zero bytes part the files; missing ones are
// empty.
#include "tests/namer/source_tree.h"
#include "tests/native/fuzz/check.h"
#include "tests/native/fuzz/model_checks.h"

#include <cstdint>

namespace {

constexpr const char* file_names[] = {"app.dev/App.rc", "app.dev/ids.h", "appd.dev/ids.h", "sdk/winuser.h",
                                      "more.h"};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::freopen("/dev/null", "w", stdout);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  SourceTree tree;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  for (const char* name : file_names) {
    const std::string_view contents = rest.substr(0, rest.find('\0'));
    tree.write(name, contents);
    rest.remove_prefix(std::min(contents.size() + 1, rest.size()));
  }
  OpenNamer namer;
  namer.m_include_paths.Add(tree.path("sdk"));
  namer.m_include_paths.Add(tree.root());
  const int result = namer.process_resource_file(tree.path("app.dev/App.rc"));
  MUST_HOLD(result == 0 || result == 1);
  MUST_HOLD(result == 0 || namer.m_error_count == 0);
  MUST_HOLD(namer.m_libraries.size() == 1);
  check_model(namer);
  namer.process_resource_file(tree.path("app.dev/App.rc"));
  MUST_HOLD(namer.m_libraries.size() == 1);
  check_model(namer);
  return 0;
}
