#pragma once

// The ids of all windows and resources of the program. Read by the resource compiler too: macros only.

#include "infocenter/ids.h"
#include "shell/ids.h"
