#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace tarv::bench {

/// Microseconds of a clock that only goes forward.
inline double microseconds() {
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
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
