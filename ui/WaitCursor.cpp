#include "ui/WaitCursor.h"

namespace tarv::ui {
namespace {
int depth = 0;
}

WaitCursor::WaitCursor() : former_(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {
    ++depth;
}

WaitCursor::~WaitCursor() {
    --depth;
    SetCursor(former_);
}

bool WaitCursor::showing() {
    return depth > 0;
}

} // namespace tarv::ui
