#include "components/rk_Runtime/Module.h"

#include <atomic>

namespace tarv::component {
namespace {

HINSTANCE instanceOfThisDll = nullptr;
std::atomic<long> reasonsToStay{0};

} // namespace

HINSTANCE moduleInstance() {
    return instanceOfThisDll;
}

void setModuleInstance(HINSTANCE instance) {
    instanceOfThisDll = instance;
}

InUse::InUse() {
    ++reasonsToStay;
}

InUse::~InUse() {
    --reasonsToStay;
}

void lockModule(bool lock) {
    reasonsToStay += lock ? 1 : -1;
}

bool moduleIdle() {
    return reasonsToStay == 0;
}

} // namespace tarv::component
