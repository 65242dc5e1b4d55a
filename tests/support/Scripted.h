#pragma once

#include "scripted/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {

/// A test over the scripted border.
struct Scripted : testing::Test, World {};

} // namespace tarv
