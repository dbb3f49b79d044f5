// The library as a file: it is loaded into other people's processes.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

// The modules that a loaded module imports from, by name.
static std::vector<std::string> imports_of(HMODULE module) {
  const BYTE* const base = reinterpret_cast<const BYTE*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  std::vector<std::string> names;
  for (auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
       import->Name; ++import)
    names.push_back(reinterpret_cast<const char*>(base + import->Name));
  return names;
}

static std::string folder_of(const std::string& module) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(GetModuleHandleA(module.c_str()), path, MAX_PATH);
  CharLowerBuffA(path, MAX_PATH);
  const std::string text = path;
  return text.substr(0, text.find_last_of('\\'));
}

TEST(Library, BringsNothingAlong) {
  char system[MAX_PATH] = "";
  GetSystemDirectoryA(system, MAX_PATH);
  CharLowerBuffA(system, MAX_PATH);
  const HMODULE library = LoadLibraryA("RecorderHooks.dll");
  ASSERT_NE(nullptr, library);
  const std::vector<std::string> imports = imports_of(library);
  EXPECT_FALSE(imports.empty());
  for (const std::string& name : imports)
    EXPECT_EQ(system, folder_of(name)) << name << " is none of the system's own";
}

TEST(Library, SaysItsVersion) {
  std::vector<BYTE> version(GetFileVersionInfoSizeA("RecorderHooks.dll", nullptr));
  ASSERT_FALSE(version.empty());
  ASSERT_TRUE(
      GetFileVersionInfoA("RecorderHooks.dll", 0, static_cast<DWORD>(version.size()), version.data()));
  const auto text = [&](const char* name) {
    void* value = nullptr;
    UINT length = 0;
    const std::string block = std::string("\\StringFileInfo\\040904E4\\") + name;
    return VerQueryValueA(version.data(), block.c_str(), &value, &length)
               ? std::string(static_cast<const char*>(value))
               : "";
  };
  EXPECT_EQ("RecorderHooks", text("ProductName"));
  EXPECT_EQ("RecorderHooks.dll", text("OriginalFilename"));
  EXPECT_EQ(MR_VERSION, text("ProductVersion"));
  EXPECT_EQ(MR_VERSION, text("FileVersion"));

  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueA(version.data(), "\\", &value, &length));
  const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(value);
  const std::string number = std::to_string(HIWORD(fixed.dwFileVersionMS)) + "." +
                             std::to_string(LOWORD(fixed.dwFileVersionMS)) + "." +
                             std::to_string(HIWORD(fixed.dwFileVersionLS));
  EXPECT_EQ(MR_VERSION, number);
}
