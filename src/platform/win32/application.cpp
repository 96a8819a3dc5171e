#include "platform/application.h"

#include <windows.h>

#include <cstdlib>

#include "platform/win32/toolkit.h"

namespace platform {
namespace {

constexpr wchar_t kProgramTitle[] = L"Orvane Utilities";

}  // namespace

Application::Application(int&, char**) {}

void Application::Run() {
    for (const Form::Native* form : Form::Native::All())
        RedrawWindow(form->Window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    SetEvent(LauncherDrawn());
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

// The system keeps the text; no program needs to answer for it later.
void SetClipboardText(std::string_view text) {
    const std::wstring wide = ToWide(text);
    const std::size_t size = (wide.size() + 1) * sizeof wide[0];
    // Another program may just be looking.
    for (int i = 0; OpenClipboard(nullptr) == FALSE; ++i) {
        if (i == 20) return;
        Sleep(10);
    }
    EmptyClipboard();
    const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, size);
    if (void* place = data == nullptr ? nullptr : GlobalLock(data)) {
        CopyMemory(place, wide.c_str(), size);
        GlobalUnlock(data);
        if (SetClipboardData(CF_UNICODETEXT, data) == nullptr) GlobalFree(data);
    }
    CloseClipboard();
}

void ShowMessage(std::string_view text) {
    MessageBoxW(nullptr, ToWide(text).c_str(), kProgramTitle,
                MB_OK | MB_TASKMODAL | MB_TOPMOST | MB_SETFOREGROUND);
}

}  // namespace platform
