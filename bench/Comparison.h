#pragma once

#include "bench/Stopwatch.h"

#include <cstdio>

namespace tarv::bench {

/// What both sides took, in microseconds.
struct Pair {
    double own = 0;
    double yardstick = 0;
};

/// Medians of both works. They take turns and change the first place, so that another pace of the machine
/// meets both and neither always finds the warmer memory.
template <class Own, class Yardstick>
Pair byTurns(int rounds, Own own, Yardstick yardstick) {
    std::vector<double> ownTimes;
    std::vector<double> yardstickTimes;
    const auto time = [](std::vector<double>& times, auto& work) {
        double sum = 0;
        {
            const Lap lap(sum);
            work();
        }
        times.push_back(sum);
    };
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0)
            time(ownTimes, own);
        time(yardstickTimes, yardstick);
        if (round % 2 != 0)
            time(ownTimes, own);
    }
    return {median(ownTimes), median(yardstickTimes)};
}

/// One row of the table that tools/bench collects: what was measured, by how much it differs from the
/// yardstick, and the ratio wanted ("<= 1.05", or "" for none). Fields are separated by tabs.
inline void printRow(const char* what, const char* yardstick, const char* unit, Pair measured,
                     const char* aim) {
    std::printf("row\t%s\t%s\t%s\t%.4g\t%.4g\t%.3f\t%s\n", what, yardstick, unit, measured.own,
                measured.yardstick, measured.own / measured.yardstick, aim);
    std::fflush(stdout);
}

/// Both sides divided by a number of calls.
inline Pair perCall(Pair whole, double calls) {
    return {whole.own / calls, whole.yardstick / calls};
}

} // namespace tarv::bench
