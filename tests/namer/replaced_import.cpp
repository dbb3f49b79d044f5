#include "tests/namer/replaced_import.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

template <class T>
T* at(HMODULE library, DWORD offset) {
  return reinterpret_cast<T*>(reinterpret_cast<char*>(library) + offset);
}

void** find_slot(HMODULE library, const char* function) {
  const auto* const dos = at<IMAGE_DOS_HEADER>(library, 0);
  const auto* const headers = at<IMAGE_NT_HEADERS>(library, static_cast<DWORD>(dos->e_lfanew));
  const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (const auto* from = at<IMAGE_IMPORT_DESCRIPTOR>(library, imports); from->Name != 0; ++from) {
    const auto* name = at<IMAGE_THUNK_DATA>(library, from->OriginalFirstThunk);
    auto* slot = at<IMAGE_THUNK_DATA>(library, from->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
        continue;
      const auto* const import =
          at<IMAGE_IMPORT_BY_NAME>(library, static_cast<DWORD>(name->u1.AddressOfData));
      if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) == 0)
        return reinterpret_cast<void**>(&slot->u1.Function);
    }
  }
  throw std::runtime_error(std::string("nobody imports ") + function);
}

void put(void** slot, void* address) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = address;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace

ReplacedImport::ReplacedImport(const char* library, const char* function, void* replacement)
    : m_slot(find_slot(GetModuleHandleA(library), function)), m_original(*m_slot) {
  put(m_slot, replacement);
}

ReplacedImport::~ReplacedImport() { put(m_slot, m_original); }
