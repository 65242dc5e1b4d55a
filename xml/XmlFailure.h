#pragma once

#include "platform/Answer.h"
#include "platform/ErrorRecord.h"
#include "runtime/Funktionen32/Errors.h"

#include <string>
#include <utility>

namespace tarv {

/// The record of a run-time error of the XML wrapper itself.
inline ErrorRecord xmlErrorRecord(std::int32_t number) {
    ErrorRecord record = runtimeErrorRecord(number);
    record.source = L"clsXML";
    return record;
}

[[noreturn]] inline void raiseXmlError(std::int32_t number) {
    throw RuntimeError(xmlErrorRecord(number));
}

/// The value of a call over the border; its failure reaches the caller as it is.
template <class T>
T valueOrRaise(Answer<T, ErrorRecord>&& answer) {
    if (!answer)
        throw RuntimeError(answer.error());
    return std::move(*answer);
}

} // namespace tarv
