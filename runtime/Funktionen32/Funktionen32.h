#pragma once

// Chief header of the runtime library's general module: one room per concern.
#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Developer.h"
#include "runtime/Funktionen32/ErrorReport.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/ExternalProgram.h"
#include "runtime/Funktionen32/FileOperation.h"
#include "runtime/Funktionen32/Machine.h"
#include "runtime/Funktionen32/NumberReader.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Numbers.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/ShellStart.h"
#include "runtime/Funktionen32/Starter.h"
#include "runtime/Funktionen32/SuitePrograms.h"
#include "runtime/Funktionen32/Texts.h"
