#include "components/rk_Runtime/Module.h"

namespace tarv::component {
namespace {

HINSTANCE instanceOfThisDll = nullptr;

} // namespace

HINSTANCE moduleInstance() {
    return instanceOfThisDll;
}

void setModuleInstance(HINSTANCE instance) {
    instanceOfThisDll = instance;
}

void keepModuleLoaded() {
    // Pinned, since CoUninitialize and hosts that load by themselves free a library without asking it.
    HMODULE pinned = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(instanceOfThisDll), &pinned);
}

} // namespace tarv::component
