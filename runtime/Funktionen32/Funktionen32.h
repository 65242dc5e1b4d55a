#pragma once

// Chief header of the runtime library's general module: one room per concern.
#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/FileOperation.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Starter.h"
#include "runtime/Funktionen32/Texts.h"
