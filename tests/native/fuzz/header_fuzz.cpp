// Any bytes as a header that a module includes, among headers that include it and each other.
#include "tests/namer/source_tree.h"
#include "tests/native/fuzz/check.h"
#include "tests/native/fuzz/model_checks.h"

#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The engine's own lines would only slow the search down.
  std::freopen("/dev/null", "w", stdout);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  SourceTree tree;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const CString path = tree.write("foo.dev/x.h", bytes);
  tree.write("foo.dev/y.h", "#include \"x.h\"\n#include \"../food.dev/z.h\"\n#define IDC_Y 1\n");
  tree.write("food.dev/z.h", "#include \"../foo.dev/x.h\"\n#define IDC_A 1\n#define IDM_B 2\n");
  OpenNamer namer;
  mrLibraryRes* const module = namer.add_lib("m");
  const int result = namer.process_header_file(module, nullptr, path);
  MUST_HOLD((result == 1) == (namer.m_error_count == 0));
  check_model(namer);
  // Once more, now that it is known.
  MUST_HOLD(namer.process_header_file(namer.add_lib("again"), nullptr, path) == 1);
  check_model(namer);
  return 0;
}
