#pragma once

#include "runtime/Runtime.h"
#include "scripted/FakePlatform.h"

namespace tarv {

/// The scripted border and a process that runs over it.
struct World {
    FakePlatform fake;
    Runtime rt{fake.border};
};

} // namespace tarv
