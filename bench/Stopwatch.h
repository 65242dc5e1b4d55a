#pragma once

#include <windows.h>

#include <algorithm>
#include <vector>

namespace tarv::bench {

/// Microseconds of the performance counter.
inline double microseconds() {
    LARGE_INTEGER frequency;
    LARGE_INTEGER now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

/// Adds the time between its construction and its end to a sum, in microseconds.
class Lap {
public:
    explicit Lap(double& sum) : sum_(sum), started_(microseconds()) {}
    ~Lap() { sum_ += microseconds() - started_; }
    Lap(const Lap&) = delete;
    Lap& operator=(const Lap&) = delete;

private:
    double& sum_;
    double started_;
};

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace tarv::bench
