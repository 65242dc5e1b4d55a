// One start of the program stage by stage, or with the argument "bare" that of a bare window; "nothing" ends
// at once, which leaves what loading the program's libraries takes. tools/bench takes medians over many
// starts.
#include "bench/Stopwatch.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"
#include "runtime/modSkinOnly.h"
#include "shell/frmMain.h"
#include "shell/ids.h"
#include "ui/MessageLoop.h"
#include "ui/Picture.h"

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

using namespace tarv;

/// Prints "stage", the side, the stage's name and its time in microseconds.
template <class Work>
auto stage(const char* side, const char* name, Work work) {
    const double started = bench::microseconds();
    auto result = work();
    std::printf("stage\t%s\t%s\t%.1f\n", side, name, bench::microseconds() - started);
    return result;
}

/// The first call costs the connection to the desktop and the display driver.
HCURSOR connect(const char* side) {
    return stage(side, "window system", [] { return LoadCursorW(nullptr, IDC_ARROW); });
}

void startOwn() {
    const char* const side = "own";
    connect(side);
    stage(side, "COM", [] { return CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); });
    {
        WindowsPlatform platform{ui::filterMessage};
        Runtime rt{platform};
        stage(side, "asking for the skin control",
              [&] { return static_cast<bool>(platform.automation->create(skinControlProgId)); });
        const auto window = stage(side, "making the window", [&] { return std::make_unique<frmMain>(rt); });
        stage(side, "skin, place and version", [&] { return window->load(), 0; });
        stage(side, "showing and painting", [&] { return window->show(SW_SHOWNORMAL), 0; });
        stage(side, "(in it the picture, as read once more)", [&] {
            RECT size{};
            GetClientRect(window->control(ID_imgStartPic), &size);
            return ui::Picture({{IDR_START_PICTURE, 800}}).bitmap(size.right, size.bottom);
        });
        window->close();
    }
    CoUninitialize();
}

void startBare() {
    const char* const side = "bare";
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.hCursor = connect(side);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = L"BareWindow";
    const HWND window = stage(side, "making the window", [&] {
        RegisterClassW(&windowClass);
        return CreateWindowW(L"BareWindow", L"BareWindow", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                             640, 480, nullptr, nullptr, nullptr, nullptr);
    });
    stage(side, "showing and painting", [&] {
        ShowWindow(window, SW_SHOWNORMAL);
        return UpdateWindow(window);
    });
    DestroyWindow(window);
}

} // namespace

int main(int count, char** arguments) {
    const std::string what = count > 1 ? arguments[1] : "";
    if (what == "own")
        startOwn();
    else if (what == "bare")
        startBare();
    else if (what != "nothing")
        return 2;
    return 0;
}
