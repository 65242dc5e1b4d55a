#pragma once

// Ids of the shell's windows and their resources. Read by the resource compiler too: macros only.

// clang-format off
// frmMain: menu
#define ID_mnuFileExit          101
#define ID_mnuInfo              111
#define ID_mnuSupportSep1       112
#define ID_mnuSupportIPAdresse  113
#define ID_mnuSupportSep2       114
#define ID_mnuSupportDienst     115
#define ID_mnuSupportSep3       116
#define ID_mnuSupportView       117

// frmMain: controls
#define ID_imgStartPic          201
#define ID_lblVersion           202

// frmLokaleIP: controls
#define ID_Frame1               401
#define ID_Label1               402
#define ID_cmdClose             403
#define ID_Image1               404

#define IDR_START_PICTURE       11
#define IDR_START_PICTURE_200   12
#define IDR_IP_PICTURE          13
// clang-format on
