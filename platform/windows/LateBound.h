#pragma once

#include "platform/Automation.h"
#include "win/ComPtr.h"

#include <windows.h>

#include <oleauto.h>

namespace tarv {

/// The border's late-bound object over a component's. Used in the apartment that created it only; null for
/// null.
ObjectRef wrapped(ComPtr<IDispatch> object);

/// Stores a copy of `value` in the empty `out`. False, leaving it empty, for an object that is not ours
/// or when memory runs out. By-reference objects become plain ones: a call makes the reference.
bool store(VARIANT& out, const Value& value);

/// The nearest of our kinds: wider and fractional numbers become a double, small integers an int32. False
/// for an array and whatever else a Value cannot hold.
bool load(Value& out, const VARIANT& value);

} // namespace tarv
