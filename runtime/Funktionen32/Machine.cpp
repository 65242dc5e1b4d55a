#include "runtime/Funktionen32/Machine.h"

#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Runtime.h"

namespace tarv {

std::wstring GetPCName(Runtime& rt) {
    return rt.platform.facts->computerName().valueOr({});
}

std::wstring GetLocalIP(Runtime& rt) {
    return rt.platform.facts->localAddress().valueOr(L"127.0.0.1");
}

std::wstring GetLoginName(Runtime& rt) {
    return rt.platform.facts->userName().valueOr({});
}

std::wstring GetWinDir(Runtime& rt) {
    return rt.platform.facts->windowsDirectory(256);
}

} // namespace tarv
