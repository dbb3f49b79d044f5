// Where the resource map lives, and how it is loaded.
#include "namer/mrIDNamer.h"

#include "host/ZQUtils.h"
#include "namer/mrFiles.h"

namespace {

constexpr char resource_folder[] = "..\\..\\file\\ui_recording";  // seen from the main application folder
// Used when the installation has no resource folder: the one of the developers' network drive.
constexpr char development_folder[] = "P:\\devel\\utestsuite\\scriptinclude";
constexpr char map_file[] = "ui_map.rcz";
constexpr char constants_file[] = "ui_consts.js";

constexpr long result_fail = static_cast<long>(0x80004005);  // E_FAIL

}  // namespace

CString mrIDNamer::get_res_path() {
  const CString folder = mrFiles::combine(zqu_get_main_application_folder(), resource_folder);
  return mrFiles::folder_exists(folder) ? folder : CString(development_folder);
}

CString mrIDNamer::get_res_file() { return mrFiles::combine(get_res_path(), map_file); }

CString mrIDNamer::get_const_file() { return mrFiles::combine(get_res_path(), constants_file); }

long mrIDNamer::load_def_map() { return result_fail; }
