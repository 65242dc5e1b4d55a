#pragma once

// Ids of the info centre and its resources. Read by the resource compiler too: macros only.

// clang-format off
#define ID_SSTab1               301
#define ID_txtInfo              302
#define ID_treeView             303
#define ID_cmdEnd               304

// frmInfo4Prg: find line and what names the report to screen readers
#define ID_lblFind              305
#define ID_txtFind              306
#define ID_cmdFind              307
#define ID_lblFound             308
#define ID_lblInfo              309

// frmInfo4Prg: context menu
#define ID_mnuCopy              311
#define ID_mnuCopyGroup         312
#define ID_mnuCopyAll           313
#define ID_mnuOpenAll           314
#define ID_mnuCloseAll          315
#define ID_mnuFind              316
#define ID_mnuSave              317
#define ID_mnuRefresh           318

#define IDI_PROGRAM             1 // the first icon is the one of the file
#define IDI_CLOSEDFOLDER        2
#define IDI_DOCUMENT            3
// clang-format on
