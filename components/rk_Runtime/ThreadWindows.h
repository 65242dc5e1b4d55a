#pragma once

#include <windows.h>

#include <vector>

namespace tarv::component {

/// Disables the top-level windows of this thread while it lives.
class ThreadWindowsDisabled {
public:
    ThreadWindowsDisabled();
    ~ThreadWindowsDisabled();
    ThreadWindowsDisabled(const ThreadWindowsDisabled&) = delete;
    ThreadWindowsDisabled& operator=(const ThreadWindowsDisabled&) = delete;

private:
    std::vector<HWND> windows_;
};

} // namespace tarv::component
