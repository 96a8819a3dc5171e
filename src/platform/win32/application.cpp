#include "platform/application.h"

#include <windows.h>

#include <cstdlib>

#include "platform/win32/toolkit.h"

namespace platform {
namespace {

constexpr wchar_t kProgramTitle[] = L"Orvane Utilities";

// Gives whether the clipboard has taken the text. The system keeps it; nobody needs to answer for it later.
bool Copied(const std::wstring& text, HWND owner) {
    // Another program may just be looking.
    for (int i = 0; OpenClipboard(owner) == FALSE; ++i) {
        if (i == 20) return false;
        Sleep(10);
    }
    EmptyClipboard();
    bool taken = false;
    const std::size_t size = (text.size() + 1) * sizeof text[0];
    const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, size);
    if (void* place = data == nullptr ? nullptr : GlobalLock(data)) {
        CopyMemory(place, text.c_str(), size);
        GlobalUnlock(data);
        taken = SetClipboardData(CF_UNICODETEXT, data) != nullptr;
        if (!taken) GlobalFree(data);
    }
    CloseClipboard();
    return taken;
}

}  // namespace

Application::Application(int&, char**) {}

void Application::Run() {
    SetEvent(FirstDrawn());
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    EndAtOnce();
}

// Nothing is asked of the libraries, one of which may be waiting for a sound device.
void EndAtOnce() {
    TerminateProcess(GetCurrentProcess(), EXIT_SUCCESS);
    std::abort();
}

void EndProgram() {
    for (const Form::Native* form : Form::Native::All()) ShowWindow(form->Window, SW_HIDE);
    PostQuitMessage(EXIT_SUCCESS);
}

// In no window's name, since in Wine the text goes with that window; a system may refuse it.
void SetClipboardText(std::string_view text) {
    const std::wstring wide = ToWide(text);
    if (!Copied(wide, nullptr)) Copied(wide, GetActiveWindow());
}

void ShowMessage(std::string_view text) {
    MessageBoxW(nullptr, ToWide(text).c_str(), kProgramTitle,
                MB_OK | MB_TASKMODAL | MB_TOPMOST | MB_SETFOREGROUND);
}

}  // namespace platform
