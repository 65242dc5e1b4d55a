#pragma once

#include "platform/Platform.h"

#include <memory>

struct tagMSG;

namespace tarv {

/// Sees each message before it is translated and dispatched; true: it is done with. For keyboard handling of
/// dialogs and accelerators.
using MessageFilter = bool (*)(tagMSG& message);

/// The border's implementation over the running Windows. COM has to be initialised by the program.
class WindowsPlatform {
public:
    WindowsPlatform();
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    Platform& border();

    /// Filter of the message pump; null for none.
    void setMessageFilter(MessageFilter filter);

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace tarv
