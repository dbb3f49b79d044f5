#include "hooks/mrHostMessages.h"

static mrHostMessages register_host_messages() {
  mrHostMessages messages;
  messages.get_dialog_template_id = RegisterWindowMessageA("MSG_ZQ_GetDialogTemplateID");
  messages.get_dialog_res_library = RegisterWindowMessageA("MSG_ZQ_GetDialogResLibrary");
  messages.get_window_idd = RegisterWindowMessageA("MSG_ZQ_GetWindowIDD");
  messages.get_window_name = RegisterWindowMessageA("MSG_ZQ_GetWindowName");
  messages.get_view_position = RegisterWindowMessageA("MSG_ZQ_GetViewPosition");
  messages.request_grid_information = RegisterWindowMessageA("MSG_GX_RequestGridInformation");
  messages.request_option_information = RegisterWindowMessageA("MSG_OT_RequestInformation");
  messages.request_rib_customisation = RegisterWindowMessageA("MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA");
  messages.bcg_change_active_tab = RegisterWindowMessageA("BCGM_ONCHANGE_ACTIVE_TAB");
  return messages;
}

// Registered while the library is loaded: a hook procedure must not find a number missing.
static const mrHostMessages messages = register_host_messages();

const mrHostMessages& host_messages() { return messages; }
