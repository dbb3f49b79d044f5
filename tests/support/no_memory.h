// The library's heap refuses requests of one size as long as the object exists: what becomes of an object
// that cannot be made. The test program's own heap goes on.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <cstring>

class mrNoMemoryFor {
public:
  explicit mrNoMemoryFor(size_t size) {
    refused_size() = size;
    set_import(refuse);
  }
  ~mrNoMemoryFor() { set_import(malloc); }
  mrNoMemoryFor(const mrNoMemoryFor&) = delete;
  mrNoMemoryFor& operator=(const mrNoMemoryFor&) = delete;

private:
  using Malloc = void*(size_t);

  static size_t& refused_size() {
    static size_t size = 0;
    return size;
  }
  static void* refuse(size_t size) { return size == refused_size() ? nullptr : malloc(size); }

  // What the library's "new" gets its memory from is a function that it imports: another one takes its place.
  static void set_import(Malloc* function) {
    DWORD protection = 0;
    Malloc** const place = import_of_malloc();
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
    *place = function;
    VirtualProtect(place, sizeof *place, protection, &protection);
  }
  static Malloc** import_of_malloc() {
    char* const module = reinterpret_cast<char*>(GetModuleHandleA("RecorderHooks.dll"));
    const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
    const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(module + dos.e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(module + imports.VirtualAddress);
    for (; library->Name; ++library) {
      const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(module + library->OriginalFirstThunk);
      auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(module + library->FirstThunk);
      for (; name->u1.AddressOfData; ++name, ++address) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
          continue;
        const char* const imported = module + name->u1.AddressOfData + offsetof(IMAGE_IMPORT_BY_NAME, Name);
        if (strcmp(imported, "malloc") == 0)
          return reinterpret_cast<Malloc**>(&address->u1.Function);
      }
    }
    abort();  // a library that allocates in another way needs another test
  }
};
