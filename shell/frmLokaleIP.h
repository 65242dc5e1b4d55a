#pragma once

#include "ui/Picture.h"
#include "ui/Window.h"

#include <string>

namespace tarv {

struct Runtime;

/// A small window that tells the user this computer's IP address, to be read out on the telephone.
class frmLokaleIP final : public ui::Window {
public:
    frmLokaleIP(Runtime& rt, const ui::Window& mainWindow);

    /// Reads the address afresh and shows the window until it is closed.
    void showModal();

private:
    void load();
    /// Dotted decimal; "127.0.0.1" when there is none.
    std::wstring GetLocalIPAdress();

    void layout() override;
    void applyDpi() override;
    void onCommand(int id, int notification) override;

    Runtime& rt_;
    const ui::Window& mainWindow_;
    ui::Picture picture_;
    Font addressFont_;
};

} // namespace tarv
