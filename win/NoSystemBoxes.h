#pragma once

#include <windows.h>

namespace tarv {

/// While it lives, the calling thread gets an error where Windows would show a box: a drive without a medium,
/// a library that is damaged or made for another kind of processor. The mode is the thread's own (Windows 7
/// and later): other threads, host programs and started programs, which inherit that of the process, keep
/// theirs.
class NoSystemBoxes {
public:
    NoSystemBoxes() { SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &before_); }
    NoSystemBoxes(const NoSystemBoxes&) = delete;
    NoSystemBoxes& operator=(const NoSystemBoxes&) = delete;
    ~NoSystemBoxes() {
        const DWORD lastError = GetLastError(); // read behind the call that was shielded
        SetThreadErrorMode(before_, nullptr);
        SetLastError(lastError);
    }

private:
    DWORD before_ = 0;
};

} // namespace tarv
