// What assistive technology is told of a program for Windows, in lines of fields: for each line that comes
// in, of the window whose number it holds and of the controls in it, or of all the program's windows for 0.
// An empty line is the end; a window that is not on the screen has nothing before it.

#include <windows.h>

#include <oleacc.h>

#include <cstdio>
#include <string>

#include "platform/win32/toolkit.h"

namespace {

// A field on one line.
std::string Field(const std::wstring& text) {
    std::string field;
    for (const char c : platform::FromWide(text)) {
        if (c == '\n') field += "\\n";
        if (c != '\r' && c != '\n') field += c;
    }
    return field;
}

VARIANT Itself() {
    VARIANT itself{};
    itself.vt = VT_I4;
    return itself;
}

IAccessible* Accessible(HWND window) {
    void* accessible = nullptr;
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &accessible);
    return static_cast<IAccessible*>(accessible);
}

template <class Ask>
std::wstring Told(const Ask& ask) {
    BSTR text = nullptr;
    std::wstring told;
    if (ask(&text) == S_OK && text != nullptr) told.assign(text, SysStringLen(text));
    SysFreeString(text);
    return told;
}

void Tell(HWND window) {
    IAccessible* accessible = IsWindowVisible(window) ? Accessible(window) : nullptr;
    if (accessible == nullptr) return;
    VARIANT role{}, state{};
    accessible->get_accRole(Itself(), &role);
    accessible->get_accState(Itself(), &state);
    const auto text = [&](auto member) {
        return Field(Told([&](BSTR* result) { return (accessible->*member)(Itself(), result); }));
    };
    RECT place{};
    GetWindowRect(window, &place);
    std::printf("%llu\t%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%s\t%s\n",
                static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(window)), role.lVal,
                state.lVal, place.left, place.top, place.right - place.left, place.bottom - place.top,
                text(&IAccessible::get_accName).c_str(), text(&IAccessible::get_accValue).c_str());
    accessible->Release();
}

}  // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    char line[64];
    while (std::fgets(line, sizeof line, stdin) != nullptr) {
        const auto asked = reinterpret_cast<HWND>(std::strtoull(line, nullptr, 10));
        if (asked != nullptr) Tell(asked);
        const wchar_t* wanted = asked == nullptr ? L"OrvaneForm" : nullptr;
        for (HWND window = nullptr; (window = FindWindowExW(asked, window, wanted, nullptr)) != nullptr;)
            Tell(window);
        std::puts("");
        std::fflush(stdout);
    }
}
