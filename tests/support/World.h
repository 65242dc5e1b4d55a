#pragma once

#include "runtime/Runtime.h"
#include "scripted/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {

/// The scripted border and a process that runs over it.
struct World {
    FakePlatform fake;
    Runtime rt{fake.border};
};

/// A test over the scripted border.
struct Scripted : testing::Test, World {};

} // namespace tarv
