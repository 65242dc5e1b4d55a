#include "runtime/Funktionen32/Machine.h"

#include "platform/MachineFacts.h"
#include "platform/Platform.h"
#include "runtime/Runtime.h"

namespace tarv {

std::wstring GetPCName(Runtime& rt) {
    return rt.platform.machine.computerName().valueOr({});
}

std::wstring GetLoginName(Runtime& rt) {
    return rt.platform.machine.userName().valueOr({});
}

std::wstring GetWinDir(Runtime& rt) {
    return rt.platform.machine.windowsDirectory(256);
}

} // namespace tarv
