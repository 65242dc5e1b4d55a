#pragma once

#include "tests/support/World.h"

#include <gtest/gtest.h>

namespace tarv {

/// A test over the scripted border.
struct Scripted : testing::Test, World {};

} // namespace tarv
