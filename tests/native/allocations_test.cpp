// What a lookup takes from the heap: its answer and nothing else.
#include "tests/namer/open_namer.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> allocations{0};

}  // namespace

void* operator new(size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size))
    return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace {

class Allocations : public testing::Test {
protected:
  Allocations() {
    mrLibraryRes* const module = m_namer.add_lib("a_module_with_a_long_name");
    mrHeader* const group = m_namer.add_header(module, "a_group_with_a_long_name", "");
    m_namer.add_constant("IDC_A_LONG_CONTROL_NAME", 11, group);
    m_namer.add_constant(CString("another_group"), CString("IDC_ANOTHER_CONTROL"), 11);
    module->dialogs[101] = std::make_unique<mrDialogRes>();
    module->dialogs[101]->library = module;
    module->dialogs[101]->controls[11] = "IDC_A_LONG_CONTROL_NAME";
  }

  int allocations_of(int64_t number, uint32_t dialog, const CString& module) {
    const int before = allocations;
    const CString answer = m_namer.get_definition(number, m_prefix, dialog, module);
    const int after = allocations;
    EXPECT_LT(15, answer.GetLength()) << "short answers would need no memory at all: " << answer.str();
    return after - before;
  }

  OpenNamer m_namer;
  const CString m_prefix = "IDC_";
};

}  // namespace

TEST_F(Allocations, OfALookupAreItsAnswer) {
  const CString none, module = "A_MODULE_WITH_A_LONG_NAME", debug_build = "A_Module_With_A_Long_NameD";
  EXPECT_EQ(1, allocations_of(11, 101, module));
  EXPECT_EQ(1, allocations_of(11, 101, debug_build));
  EXPECT_EQ(1, allocations_of(11, 101, none));
  EXPECT_EQ(1, allocations_of(11, 0, none)) << "an ambiguous number";
}
