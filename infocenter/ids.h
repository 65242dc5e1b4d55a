#pragma once

// Ids of the info centre and its resources. Read by the resource compiler too: macros only.

// clang-format off
#define ID_SSTab1               301
#define ID_txtInfo              302
#define ID_treeView             303
#define ID_cmdEnd               304

#define IDI_PROGRAM             1 // the first icon is the one of the file
#define IDI_CLOSEDFOLDER        2
#define IDI_DOCUMENT            3
// clang-format on
