#include "bench/source_tree.h"

#include <windows.h>

#include <cstdio>
#include <fstream>

namespace {

constexpr int headers_per_module = 8;
constexpr int classes_per_header = 12;
constexpr int dialogs_per_module = 20;
constexpr int controls_per_dialog = 16;

void write(GeneratedSources& sources, const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
  sources.files.push_back(path);
  sources.bytes += text.size();
}

// A header of code: nothing in it is an id.
std::string code_header(int module, int number) {
  std::string text =
      "// Declarations of a part of the module. They stand here for their length.\r\n#pragma once\r\n\r\n"
      "#include \"resource.h\"\r\n#include <vector>\r\n\r\n";
  for (int i = 0; i < classes_per_header; ++i) {
    const std::string name =
        "CModule" + std::to_string(module) + "Part" + std::to_string(number) + "Item" + std::to_string(i);
    text += "#define " + name +
            "_VERSION 3\r\n\r\n/////////////////////////////////////////////////////////////\r\n"
            "// " +
            name + "\r\n\r\nclass " + name +
            " : public CBaseItem\r\n{\r\n"
            "\tDECLARE_DYNAMIC(" +
            name + ")\r\npublic:\r\n\t" + name + "(CWnd* pParent = NULL);\r\n\tvirtual ~" + name +
            "();\r\n\r\n\tBOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);\r\n"
            "\tvoid SetRadius(double dRadius, bool bUpdate = true); // millimetres\r\n"
            "\tdouble GetRadius() const { return m_dRadius; }\r\n\r\nprotected:\r\n\tdouble m_dRadius;\r\n"
            "\tstd::vector<CPoint> m_aPoints;\r\n\r\n\tafx_msg void "
            "OnPaint();\r\n\tDECLARE_MESSAGE_MAP()\r\n};\r\n\r\n";
  }
  return text;
}

std::string control_name(int module, int dialog, int control) {
  return "IDC_M" + std::to_string(module) + "_D" + std::to_string(dialog) + "_CONTROL_" +
         std::to_string(control);
}

// Numbers begin anew in every module, as resource editors give them out.
std::string resource_header(int module) {
  std::string text = "//{{NO_DEPENDENCIES}}\r\n// Used by the module's resource script\r\n\r\n";
  int number = 1000;
  for (int dialog = 0; dialog < dialogs_per_module; ++dialog) {
    text += "#define IDD_M" + std::to_string(module) + "_DIALOG_" + std::to_string(dialog) + "          " +
            std::to_string(101 + dialog) + "\r\n#define IDS_M" + std::to_string(module) + "_TITLE_" +
            std::to_string(dialog) + "         " + std::to_string(5000 + dialog) + "\r\n";
    for (int control = 0; control < controls_per_dialog; ++control)
      text +=
          "#define " + control_name(module, dialog, control) + "      " + std::to_string(number++) + "\r\n";
  }
  for (int command = 0; command < 40; ++command)
    text += "#define IDM_M" + std::to_string(module) + "_COMMAND_" + std::to_string(command) + "    " +
            std::to_string(32771 + command) + "\r\n";
  return text;
}

std::string resource_script(int module) {
  std::string text = "// Resource script\r\n#include \"resource.h\"\r\n";
  for (int header = 0; header < headers_per_module; ++header)
    text += "#include \"part" + std::to_string(header) + ".h\"\r\n";
  text += "\r\nIDR_MENU MENU\r\nBEGIN\r\n";
  for (int command = 0; command < 40; ++command)
    text += "    MENUITEM \"Command " + std::to_string(command) + "\",   IDM_M" + std::to_string(module) +
            "_COMMAND_" + std::to_string(command) + "\r\n";
  text += "END\r\n\r\n";
  for (int dialog = 0; dialog < dialogs_per_module; ++dialog) {
    text += "IDD_M" + std::to_string(module) + "_DIALOG_" + std::to_string(dialog) +
            " DIALOGEX 0, 0, 320, 200\r\nSTYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | "
            "WS_SYSMENU\r\n"
            "CAPTION \"Properties of the part\"\r\nFONT 8, \"MS Shell Dlg\", 400, 0, 0x1\r\nBEGIN\r\n";
    for (int control = 0; control < controls_per_dialog; ++control) {
      const std::string name = control_name(module, dialog, control);
      const std::string place = ",7," + std::to_string(7 + 12 * control) + ",120,14";
      switch (control % 4) {
      case 0:
        text += "    EDITTEXT        " + name + place + ",ES_AUTOHSCROLL\r\n";
        break;
      case 1:
        text += "    LTEXT           \"Radius in \"\"mm\"\":\"," + name + place + "\r\n";
        break;
      case 2:
        text += "    CONTROL         \"Visible\"," + name + ",\"Button\",BS_AUTOCHECKBOX | WS_TABSTOP" +
                place + "\r\n";
        break;
      default:
        text += "    PUSHBUTTON      \"Apply\"," + name + place + "\r\n";
      }
    }
    text += "END\r\n\r\n";
  }
  text += "STRINGTABLE\r\nBEGIN\r\n";
  for (int string = 0; string < 200; ++string)
    text += "    IDS_M" + std::to_string(module) + "_TEXT_" + std::to_string(string) +
            "   \"The radius must be greater than the height of the part, please enter another one\"\r\n";
  return text + "END\r\n";
}

}  // namespace

GeneratedSources generate_sources(const std::string& root, size_t bytes) {
  GeneratedSources sources;
  sources.root = root;
  write(sources, root + "\\winuser.h",
        "#define IDOK 1\r\n#define IDCANCEL 2\r\n#define IDC_STATIC 65535\r\n");
  for (int module = 0; sources.bytes < bytes; ++module) {
    const std::string folder = root + "\\module" + std::to_string(module) + ".dev";
    CreateDirectoryA(folder.c_str(), nullptr);
    write(sources, folder + "\\resource.h", resource_header(module));
    for (int header = 0; header < headers_per_module; ++header)
      write(sources, folder + "\\part" + std::to_string(header) + ".h", code_header(module, header));
    const std::string script = folder + "\\module" + std::to_string(module) + ".rc";
    write(sources, script, resource_script(module));
    sources.scripts.push_back(script);
  }
  return sources;
}

std::string new_temporary_folder(const char* name) {
  char temporary[MAX_PATH];
  GetTempPathA(MAX_PATH, temporary);
  const std::string folder = temporary + std::string(name) + "-" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(folder.c_str(), nullptr);
  return folder;
}

void remove_folder(const std::string& root) {
  WIN32_FIND_DATAA data;
  const HANDLE find = FindFirstFileA((root + "\\*").c_str(), &data);
  if (find == INVALID_HANDLE_VALUE)
    return;
  do {
    const std::string name = data.cFileName;
    if (name == "." || name == "..")
      continue;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
      remove_folder(root + "\\" + name);
    else
      DeleteFileA((root + "\\" + name).c_str());
  } while (FindNextFileA(find, &data));
  FindClose(find);
  RemoveDirectoryA(root.c_str());
}
