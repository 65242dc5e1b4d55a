#pragma once

#include <windows.h>

namespace tarv::ui {

/// Shows the wait cursor over the program's windows while it lives, also when waiting messages are handled in
/// between.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

    static bool showing();

private:
    HCURSOR former_;
};

} // namespace tarv::ui
