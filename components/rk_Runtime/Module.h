#pragma once

#include <windows.h>

namespace tarv::component {

/// The DLL itself, for its resources and its own path.
HINSTANCE moduleInstance();
void setModuleInstance(HINSTANCE instance);

/// Keeps the DLL loaded while it lives: every COM object holds one.
class InUse {
public:
    InUse();
    ~InUse();
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
};

/// Further reasons to stay loaded (IClassFactory::LockServer): add one or take one away.
void lockModule(bool lock);

/// Nobody holds an object or a lock.
bool moduleIdle();

} // namespace tarv::component
