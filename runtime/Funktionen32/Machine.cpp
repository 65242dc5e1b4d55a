#include "runtime/Funktionen32/Machine.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Runtime.h"

namespace tarv {

std::wstring GetPCName(Runtime& rt) {
    return rt.platform.facts->computerName().valueOr({});
}

std::wstring GetLoginName(Runtime& rt) {
    return rt.platform.facts->userName().valueOr({});
}

std::wstring GetWinDir(Runtime& rt) {
    return rt.platform.facts->windowsDirectory(256);
}

} // namespace tarv
