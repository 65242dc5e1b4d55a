#pragma once

#include "platform/Platform.h"

#include <memory>
#include <vector>

struct tagMSG;

namespace tarv {

/// Sees each message of the pump before it is translated and dispatched; true: it is done with. For keyboard
/// handling of dialogs and accelerators.
using MessageFilter = bool (*)(tagMSG& message);

/// The border's implementation over the running Windows. COM has to be initialised by the program. A copy of
/// its Platform is good as long as it lives.
class WindowsPlatform : public Platform {
public:
    explicit WindowsPlatform(MessageFilter filter = nullptr);
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

private:
    std::vector<std::shared_ptr<void>> parts_;
};

} // namespace tarv
