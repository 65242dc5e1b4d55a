#pragma once

// Read by the resource compiler too: macros only.

// clang-format off
#define IDD_FEHLERMELDUNG   100
#define IDC_HEADING         101
#define IDC_REPORT          102
#define IDC_COPY            103
// clang-format on
