// The naming engine when memory for a text of COM runs out, at every place where it makes one.
#include "tests/namer/installation.h"
#include "tests/namer/open_namer.h"
#include "tests/namer/replaced_import.h"

#include <windows.h>
#include <oleauto.h>

#include <functional>

namespace {

constexpr long out_of_memory = static_cast<int32_t>(0x8007000E);

int calls_until_failure = 0;  // 0: the next one fails; below: it has failed

BSTR WINAPI allocate(const OLECHAR* text) {
  return calls_until_failure-- == 0 ? nullptr : SysAllocString(text);
}

BSTR WINAPI allocate_length(const OLECHAR* text, UINT length) {
  return calls_until_failure-- == 0 ? nullptr : SysAllocStringLen(text, length);
}

SAFEARRAY* WINAPI allocate_bytes(VARTYPE type, LONG lower_bound, ULONG length) {
  return calls_until_failure-- == 0 ? nullptr : SafeArrayCreateVector(type, lower_bound, length);
}

class OutOfMemory : public testing::Test {
protected:
  OutOfMemory() {
    m_installation.tree.write("sdk/winuser.h", "#define IDOK 1\n");
    m_installation.tree.write("m.dev/ids.h", "#define IDD_A 101\n#define IDC_A 11\n");
    m_installation.tree.write("m.dev/M.rc",
                              "#include \"ids.h\"\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_A, 5\nEND\n");
    const std::string root = m_installation.tree.root().str();
    m_specification = m_installation.tree.write(
        "spec.xml", "<rc_map><system_includes><include_dir path='" + root +
                        "/sdk'/></system_includes><targets><target><include_dirs><include_dir path='" + root +
                        "'/></include_dirs><rc_files><rc_file path='" + root +
                        "/m.dev/M.rc'/></rc_files></target></targets></rc_map>");
  }
  // Runs the operation with the first allocation failing, then with the second, until none is left to fail.
  // The operation answers its result; what it did in spite of a failure is its own to check.
  int fail_one_after_the_other(const std::function<long()>& operation) {
    const ReplacedImport text("RecorderHooks.dll", "SysAllocString", reinterpret_cast<void*>(allocate));
    const ReplacedImport counted("RecorderHooks.dll", "SysAllocStringLen",
                                 reinterpret_cast<void*>(allocate_length));
    const ReplacedImport bytes("RecorderHooks.dll", "SafeArrayCreateVector",
                               reinterpret_cast<void*>(allocate_bytes));
    for (int failing = 0;; ++failing) {
      calls_until_failure = failing;
      const long result = operation();
      if (calls_until_failure >= 0) {
        EXPECT_EQ(0, result) << "with memory for everything";
        return failing;
      }
      EXPECT_EQ(out_of_memory, result) << "allocation " << failing;
    }
  }

  Installation m_installation;
  CString m_specification;
};

}  // namespace

TEST_F(OutOfMemory, EndsTheReadingOfASpecification) {
  const int allocations = fail_one_after_the_other([&] {
    OpenNamer namer;
    return namer.process_spec_file(m_specification);
  });
  EXPECT_LT(8, allocations) << "every selection and every name of an attribute";
}

TEST_F(OutOfMemory, EndsTheSavingOfAMap) {
  OpenNamer namer;
  ASSERT_EQ(0, namer.process_spec_file(m_specification));
  const CString map = m_installation.path("ui_map.rcz");
  const int allocations = fail_one_after_the_other([&] {
    const long result = namer.save_res_map(map);
    if (result != 0 || calls_until_failure >= 0)
      return result;
    // A text that a document does not need may be missing: then everything is there all the same.
    OpenNamer stored;
    const bool whole = stored.load_res_map(map) == 0 && stored.dialogs("m") == "101 IDD_A: 11=IDC_A" &&
                       stored.names(1) == "general.IDOK";
    return whole ? out_of_memory : result;
  });
  EXPECT_LT(20, allocations);
}

TEST_F(OutOfMemory, EndsTheLoadingOfAMap) {
  OpenNamer namer;
  ASSERT_EQ(0, namer.process_spec_file(m_specification));
  const CString map = m_installation.path("ui_map.rcz");
  ASSERT_EQ(0, namer.save_res_map(map));
  for (const char* from : {"folders", "archive"}) {
    const int allocations = fail_one_after_the_other([&] {
      OpenNamer stored;
      const long result = stored.load_res_map(map);
      const bool whole =
          result == 0 && stored.dialogs("m") == "101 IDD_A: 11=IDC_A" && stored.names(1) == "general.IDOK";
      return whole && calls_until_failure < 0 ? out_of_memory : result;
    });
    EXPECT_LT(10, allocations) << from;
    m_installation.remove_documents();
  }
}
