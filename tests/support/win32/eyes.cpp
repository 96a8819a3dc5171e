// What assistive technology is told of a program for Windows. For each line that comes in, all windows of the
// process whose program it was given are told in lines of fields, with an empty line at the end. A line that
// holds the number of a control presses it first.
//
// usage: eyes.exe PROGRAM

#include <windows.h>

#include <oleacc.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

std::wstring wanted;

std::string Narrow(const std::wstring& text) {
    std::string narrow(text.size() * 3, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

// A field on one line.
std::string Field(const std::wstring& text) {
    std::string field;
    for (const char c : Narrow(text)) {
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

void Tell(HWND window, bool top) {
    IAccessible* accessible = Accessible(window);
    if (accessible == nullptr) return;
    VARIANT role{}, state{};
    accessible->get_accRole(Itself(), &role);
    accessible->get_accState(Itself(), &state);
    const auto text = [&](auto member) {
        return Field(Told([&](BSTR* result) { return (accessible->*member)(Itself(), result); }));
    };
    RECT place{};
    GetWindowRect(window, &place);
    std::printf("%d\t%llu\t%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%s\t%s\t%s\t%s\n", top ? 1 : 0,
                static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(window)), role.lVal,
                state.lVal, place.left, place.top, place.right - place.left, place.bottom - place.top,
                text(&IAccessible::get_accName).c_str(), text(&IAccessible::get_accValue).c_str(),
                text(&IAccessible::get_accDescription).c_str(),
                text(&IAccessible::get_accDefaultAction).c_str());
    accessible->Release();
}

BOOL CALLBACK TellChild(HWND window, LPARAM) {
    if (IsWindowVisible(window)) Tell(window, false);
    return TRUE;
}

BOOL CALLBACK TellWindow(HWND window, LPARAM) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const HANDLE opened = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
    wchar_t name[MAX_PATH] = L"";
    DWORD length = MAX_PATH;
    QueryFullProcessImageNameW(opened, 0, name, &length);
    CloseHandle(opened);
    if (!std::wstring(name).ends_with(wanted) || !IsWindowVisible(window)) return TRUE;
    Tell(window, true);
    EnumChildWindows(window, TellChild, 0);
    return TRUE;
}

}  // namespace

int wmain(int count, wchar_t** words) {
    if (count != 2) return 2;
    wanted = words[1];
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    char line[64];
    while (std::fgets(line, sizeof line, stdin) != nullptr) {
        if (const auto number = std::strtoull(line, nullptr, 10); number != 0) {
            if (IAccessible* accessible = Accessible(reinterpret_cast<HWND>(number))) {
                accessible->accDoDefaultAction(Itself());
                accessible->Release();
            }
        }
        EnumWindows(TellWindow, 0);
        std::puts("");
        std::fflush(stdout);
    }
    return 0;
}
