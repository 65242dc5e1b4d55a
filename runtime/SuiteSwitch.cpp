#include "runtime/SuiteSwitch.h"

#include "platform/Platform.h"
#include "platform/ProfileFiles.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

namespace tarv {

bool suiteSwitch(Runtime& rt, std::wstring_view entry) {
    const std::wstring read =
        rt.platform.profiles->getString(L"Debug", entry, entryNotFound, 2000, suiteIniName);
    if (read == entryNotFound)
        return false;
    const std::wstring_view value = trim(read);
    return value == L"-1" || value == L"1" || upperCase(value) == L"TRUE";
}

} // namespace tarv
