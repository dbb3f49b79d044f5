// Ids that every module of the program may use, whichever folder it lives in.
#pragma once

#define IDC_STATUS_BAR 3001
#define IDC_LABEL 3002
#define IDC_COMMENT 3003
#define IDC_IN_PLACE_EDIT 3004
