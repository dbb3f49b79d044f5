// Registered window messages that the host's windows answer. Each process registers the names at library
// load; equal names get equal numbers in every process.
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

struct mrHostMessages {
  UINT get_dialog_template_id;      // "MSG_ZQ_GetDialogTemplateID"
  UINT get_dialog_res_library;      // "MSG_ZQ_GetDialogResLibrary"
  UINT get_window_idd;              // "MSG_ZQ_GetWindowIDD"
  UINT get_window_name;             // "MSG_ZQ_GetWindowName"
  UINT get_view_position;           // "MSG_ZQ_GetViewPosition"
  UINT request_grid_information;    // "MSG_GX_RequestGridInformation"
  UINT request_option_information;  // "MSG_OT_RequestInformation"
  UINT request_rib_customisation;   // "MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA"
  UINT bcg_change_active_tab;       // "BCGM_ONCHANGE_ACTIVE_TAB"
};

// The numbers, fixed for the life of the process. Any thread.
MR_API const mrHostMessages& host_messages();

// A reply that names a text is a global atom, told from a plain number by these bits.
constexpr LRESULT mr_atom_bits = 0xC000;

// The answer with which the host's own controls identify themselves to their registered request message.
constexpr LRESULT mr_identity_answer = 165;
