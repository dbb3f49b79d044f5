// Ids of the control gallery: dialogs with every kind of control.
#pragma once

#define IDC_GALLERY_RESULT 2001
