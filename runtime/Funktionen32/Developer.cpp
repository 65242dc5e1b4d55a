#include "runtime/Funktionen32/Developer.h"

#include "platform/Desktop.h"
#include "platform/Platform.h"
#include "runtime/Runtime.h"
#include "runtime/SuiteSwitch.h"

namespace tarv {

bool IsDesign(const Runtime& rt) {
    return rt.developmentEnvironment;
}

bool bIstEntwicklung(Runtime& rt) {
    if (!rt.developerMode)
        rt.developerMode = suiteSwitch(rt, L"Entwicklung");
    return *rt.developerMode;
}

void PumpMessages(Runtime& rt) {
    if (!rt.pumpSuppressed)
        rt.platform.desktop->pumpMessages();
}

} // namespace tarv
