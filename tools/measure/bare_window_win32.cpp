// The floor that start-up is measured against on Windows: a frameless window with twenty labels, nothing
// else.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE program, HINSTANCE, LPWSTR, int) {
    WNDCLASSW plain{};
    plain.lpfnWndProc = DefWindowProcW;
    plain.hInstance = program;
    plain.lpszClassName = L"Bare";
    plain.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    RegisterClassW(&plain);
    const HWND window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_APPWINDOW, L"Bare", L"Bare", WS_POPUP, 400, 300,
                                        209, 273, nullptr, nullptr, program, nullptr);
    for (int i = 0; i < 20; ++i)
        CreateWindowExW(0, L"STATIC", L"Stats Min/Max", WS_CHILD | WS_VISIBLE, 8, 13 * i, 100, 13, window,
                        nullptr, program, nullptr);
    ShowWindow(window, SW_SHOW);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}
