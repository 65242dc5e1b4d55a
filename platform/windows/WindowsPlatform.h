#pragma once

#include "platform/Platform.h"

#include <memory>

namespace tarv {

/// The border's implementation over the running Windows. COM has to be initialised by the program.
class WindowsPlatform {
public:
    WindowsPlatform();
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    Platform& border();

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace tarv
