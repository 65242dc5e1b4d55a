#pragma once

#include "platform/ErrorRecord.h"
#include "win/Variant.h"

#include <string>

namespace tarv::component {

/// The arguments of one late-bound call, by position or by name.
class CallArguments {
public:
    explicit CallArguments(const DISPPARAMS& parameters) : parameters_(parameters) {}

    /// S_OK when there are at most `most` arguments and every name is one of 0 .. most-1.
    HRESULT check(unsigned most) const;

    /// The argument at a position from 0 up; null when it is missing.
    VARIANT* at(unsigned position) const;

    /// The value that is assigned to a property; null when there is not exactly one.
    VARIANT* assigned() const;

private:
    const DISPPARAMS& parameters_;
};

/// An argument as text by the user's regional settings; empty when it is missing or no text.
std::wstring textOf(VARIANT* argument);

/// Number, Description and Source of the error object that an argument holds, by reference or not. A property
/// that fails stays 0 or empty, and so does everything without an object.
ErrorRecord errorRecordOf(VARIANT* argument);

} // namespace tarv::component
