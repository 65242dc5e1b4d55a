#pragma once

#include "platform/ErrorRecord.h"
#include "win/ComPtr.h"

#include <memory>

#include <windows.h>

#include <oaidl.h>

namespace tarv {

/// Automation object over an error record: the properties Number (also the default one), Description and
/// Source, each to be read and written, and the method Clear.
ComPtr<IDispatch> makeErrorDispatch(std::shared_ptr<ErrorRecord> record);

} // namespace tarv
