#pragma once

#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace tarv {

/// Random numbers of one test. A failing check prints the start value; entered here as a constant it repeats
/// the run.
class RandomStart {
public:
    std::int64_t between(std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>(low, high)(engine_);
    }

    std::uint64_t bits() { return engine_(); }

private:
    std::uint32_t start_ = std::random_device()();
    std::mt19937_64 engine_{start_};
    testing::ScopedTrace trace_{__FILE__, __LINE__, "random start value " + std::to_string(start_)};
};

} // namespace tarv
