// The yardstick for the program's start: the least that a program with the same manifest needs to show a
// window. With an argument it ends at once: what loading it takes.
#include <windows.h>

namespace {

LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR arguments, int show) {
    if (*arguments)
        return 0;
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = answer;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    windowClass.lpszClassName = L"BareWindow";
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowW(L"BareWindow", L"BareWindow", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                      CW_USEDEFAULT, 640, 480, nullptr, nullptr, instance, nullptr);
    ShowWindow(window, show);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
