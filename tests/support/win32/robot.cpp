#include "support/robot.h"

#include <windows.h>

#include <oleacc.h>
#include <winternl.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

#include "platform/win32/label.h"
#include "platform/win32/theme_style.h"
#include "platform/win32/toolkit.h"

namespace robot {
namespace {

using platform::Density;
using platform::HeightOf;
using platform::WidthOf;

bool ended = false;

// The program does all that there is to do.
void Settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) ended = true;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

platform::Form::Native& FindForm(std::string_view form) {
    const auto& all = platform::Form::Native::All();
    const auto found = std::ranges::find(all, form, &platform::Form::Native::Name);
    if (found == all.end()) throw std::runtime_error("no window " + std::string(form));
    return **found;
}

platform::Control::Native& FindControl(std::string_view form, std::string_view control) {
    const auto& all = FindForm(form).Controls;
    const auto found = std::ranges::find(all, control, &platform::Control::Native::Name);
    if (found == all.end()) throw std::invalid_argument("no control " + std::string(control));
    return **found;
}

HWND WindowOf(std::string_view form) {
    const HWND window = FindForm(form).Window;
    if (!IsWindowVisible(window)) throw std::runtime_error(std::string(form) + " is not on the screen");
    return window;
}

platform::Rect ToLayout(const RECT& rect) {
    const auto pixels = [](LONG value) { return static_cast<int>(std::lround(value / Density())); };
    return {pixels(rect.left), pixels(rect.top), pixels(rect.right - rect.left),
            pixels(rect.bottom - rect.top)};
}

// A window of the program of some class that is on the screen.
HWND ShownOf(const wchar_t* windowClass) {
    HWND window = nullptr;
    do {
        window = FindWindowExW(nullptr, window, windowClass, nullptr);
    } while (window != nullptr && (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId() ||
                                   IsWindowVisible(window) == FALSE));
    return window;
}

HWND OpenPopup() {
    const HWND list = ShownOf(L"ComboLBox");
    return list != nullptr ? list : ShownOf(L"#32768");
}

HWND Message() { return ShownOf(L"#32770"); }

void Mouse(DWORD flags, int wheel = 0) {
    mouse_event(flags, 0, 0, static_cast<DWORD>(wheel), 0);
    Settle();
}

void PointAt(POINT at) {
    SetCursorPos(at.x, at.y);
    Settle();
}

// Other windows of the program do not stand before it, as little as they do in the eyes of a user.
void PointAt(std::string_view form, Point at) {
    const HWND window = WindowOf(form);
    POINT point{platform::Scaled(at.X), platform::Scaled(at.Y)};
    ClientToScreen(window, &point);
    if (OpenPopup() == nullptr && GetCapture() == nullptr && IsWindowEnabled(window) &&
        GetAncestor(WindowFromPoint(point), GA_ROOT) != window) {
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        SetForegroundWindow(window);
    }
    Settle();
    PointAt(point);
}

// The system's name for a release is twice that of the press.
DWORD Flag(Button button, bool down) {
    constexpr DWORD kDown[] = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_RIGHTDOWN};
    return kDown[static_cast<int>(button)] * (down ? 1 : 2);
}

void PressKey(int key, const std::vector<int>& held = {}) {
    const auto send = [](int code, DWORD flags) { keybd_event(static_cast<BYTE>(code), 0, flags, 0); };
    for (const int shift : held) send(shift, 0);
    send(key, 0);
    send(key, KEYEVENTF_KEYUP);
    for (const int shift : held) send(shift, KEYEVENTF_KEYUP);
    Settle();
}

void SendKey(std::string_view name) {
    static const std::map<std::string_view, int> kNamed{
        {"Tab", VK_TAB},      {"Return", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Backspace", VK_BACK},
        {"Home", VK_HOME},    {"End", VK_END},       {"Up", VK_UP},         {"Delete", VK_DELETE},
        {"Down", VK_DOWN},    {"Left", VK_LEFT},     {"Right", VK_RIGHT},   {"Space", VK_SPACE},
        {"PgUp", VK_PRIOR},   {"PgDown", VK_NEXT},   {"Menu", VK_APPS},     {"F4", VK_F4},
        {"Ctrl", VK_CONTROL}, {"Shift", VK_SHIFT},   {"Alt", VK_MENU}};
    std::vector<int> held;
    for (std::size_t plus = name.find('+'); plus < name.size() && plus > 0; plus = name.find('+')) {
        held.push_back(kNamed.at(name.substr(0, plus)));
        name.remove_prefix(plus + 1);
    }
    const auto named = kNamed.find(name);
    PressKey(named != kNamed.end() ? named->second : VkKeyScanW(static_cast<wchar_t>(name.front())) & 0xFF,
             held);
}

// Lets assistive technology act on a control.
void Assist(std::string_view form, std::string_view control, void (*act)(IAccessible&, VARIANT itself)) {
    void* accessible = nullptr;
    AccessibleObjectFromWindow(FindControl(form, control).Window, static_cast<DWORD>(OBJID_CLIENT),
                               __uuidof(IAccessible), &accessible);
    VARIANT itself{};
    itself.vt = VT_I4;
    act(*static_cast<IAccessible*>(accessible), itself);
    static_cast<IAccessible*>(accessible)->Release();
    Settle();
}

}  // namespace

std::vector<char*> Arguments(char* program) { return {program}; }

void TurnTo(std::string_view form) {
    const HWND window = WindowOf(form);
    if (OpenPopup() == nullptr && Message() == nullptr && GetForegroundWindow() != window)
        SetForegroundWindow(window);
    Settle();
}

void Move(std::string_view form, Point at) { PointAt(form, at); }

// Two clicks of a test are two, however fast they come.
void Press(std::string_view form, Point at, Button button) {
    SetDoubleClickTime(1);
    PointAt(form, at);
    Mouse(Flag(button, true));
}

void Release(std::string_view form, Point at, Button button) {
    PointAt(form, at);
    Mouse(Flag(button, false));
}

void DoubleClick(std::string_view form, std::string_view control) {
    PointAt(form, Middle(form, control));
    SetDoubleClickTime(0);  // as it was
    for (const bool down : {true, false, true, false}) Mouse(Flag(Button::Left, down));
}

void Wheel(std::string_view form, std::string_view control, int steps) {
    PointAt(form, Middle(form, control));
    Mouse(MOUSEEVENTF_WHEEL, steps * WHEEL_DELTA);
}

void Hurry() {}

void Key(std::string_view form, std::string_view key) {
    TurnTo(form);
    SendKey(key);
}

void Type(std::string_view form, std::string_view text) {
    TurnTo(form);
    for (const wchar_t c : platform::ToWide(text)) {
        const SHORT key = VkKeyScanW(c);
        if (c < 0x80 && key >= 0 && key <= 0xFF) {
            PressKey(key);
        } else {
            PostMessageW(GetFocus(), WM_CHAR, c, 0);
            Settle();
        }
    }
}

std::string Clipboard() {
    std::string text;
    for (int i = 0; i < 50 && OpenClipboard(nullptr) == FALSE; ++i) Sleep(10);
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        text = platform::FromWide(static_cast<const wchar_t*>(GlobalLock(data)));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

void OpenList(std::string_view form, std::string_view control) { Click(form, control); }

void Choose(std::string_view form, std::string_view control, int index) {
    OpenList(form, control);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(FindControl(form, control).Window, &info);
    RECT entry{};
    SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&entry));
    POINT at{(entry.left + entry.right) / 2, (entry.top + entry.bottom) / 2};
    ClientToScreen(info.hwndList, &at);
    PointAt(at);
    for (const bool down : {true, false}) Mouse(Flag(Button::Left, down));
}

platform::Rect Popup(std::string_view form) {
    const HWND popup = OpenPopup();
    if (popup == nullptr) return {};
    RECT place;
    GetWindowRect(popup, &place);
    MapWindowPoints(nullptr, FindForm(form).Window, reinterpret_cast<POINT*>(&place), 2);
    return ToLayout(place);
}

void DesktopMoves(std::string_view form, int left, int top) {
    SetWindowPos(WindowOf(form), nullptr, platform::Scaled(left), platform::Scaled(top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Settle();
}

// Moves are told at once here.
void DesktopTellsLate(std::string_view, int, int) {}

void DesktopCloses(std::string_view form) {
    PostMessageW(WindowOf(form), WM_SYSCOMMAND, SC_CLOSE, 0);
    Settle();
}

std::vector<std::string> ShownWindows() {
    std::vector<std::string> names;
    for (const platform::Form::Native* form : platform::Form::Native::All()) {
        if (IsWindowVisible(form->Window)) names.push_back(form->Name);
    }
    if (const HWND box = Message()) names.push_back(platform::FromWide(platform::TextOf(box)));
    return names;
}

platform::Rect Bounds(std::string_view form) {
    RECT area;
    const HWND window = FindForm(form).Window;
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return ToLayout(area);
}

platform::Rect Bounds(std::string_view form, std::string_view control) {
    return ToLayout(FindControl(form, control).Place);
}

bool OnTop(std::string_view form) {
    return (GetWindowLongPtrW(WindowOf(form), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

std::string Text(std::string_view form, std::string_view control) {
    const auto& found = FindControl(form, control);
    if (found.Caption() != nullptr) return platform::FromWide(found.Caption()->Text);
    if (const auto* list = dynamic_cast<const platform::DropDownList*>(found.Owner)) return list->Text();
    return dynamic_cast<const platform::TextBox&>(*found.Owner).Text();
}

bool Whole(std::string_view form, std::string_view control) {
    const auto& found = FindControl(form, control);
    const std::string text = Text(form, control);
    RECT room;
    SendMessageW(found.Window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
    const auto lines = SendMessageW(found.Window, EM_GETLINECOUNT, 0, 0);
    return lines == 1 + std::ranges::count(text, '\n') &&
           lines * platform::MetricsOf(platform::FontOf(found.Face)).tmHeight <= HeightOf(room);
}

std::vector<std::string> CutTexts(std::string_view form) {
    constexpr int kSmallest = 8;
    std::vector<std::string> cut;
    for (platform::Control::Native* control : FindForm(form).Controls) {
        const HFONT font = platform::FontOf(control->Face);
        std::vector<std::wstring> texts;
        int margin = 2;
        bool whole = true;
        if (auto* label = dynamic_cast<platform::LabelNative*>(control)) {
            const TEXTMETRICW metrics = platform::MetricsOf(label->DrawnFont());
            whole = label->Fits(label->DrawnFont()) &&
                    metrics.tmHeight - metrics.tmInternalLeading >= platform::Scaled(kSmallest);
        } else if (dynamic_cast<platform::DropDownList*>(control->Owner) != nullptr) {
            margin = platform::kArrowWidth + 6;
            const LRESULT count = SendMessageW(control->Window, CB_GETCOUNT, 0, 0);
            for (int i = 0; i < count; ++i) {
                wchar_t text[256] = L"";
                SendMessageW(control->Window, CB_GETLBTEXT, static_cast<WPARAM>(i),
                             reinterpret_cast<LPARAM>(text));
                texts.emplace_back(text);
            }
        } else if (control->Caption() != nullptr) {
            if (dynamic_cast<platform::CheckBox*>(control->Owner) != nullptr) margin = 18;
            texts.push_back(control->Caption()->Text);
        } else if (dynamic_cast<platform::TextBox*>(control->Owner) != nullptr &&
                   (GetWindowLongPtrW(control->Window, GWL_STYLE) & ES_MULTILINE) == 0) {
            texts.push_back(platform::TextOf(control->Window));
        }
        RECT area;
        GetWindowRect(control->Window, &area);
        for (const std::wstring& text : texts) {
            whole = whole && platform::WidthOf(font, text) + platform::Scaled(margin) <= WidthOf(area) &&
                    platform::MetricsOf(font).tmHeight <= HeightOf(area);
        }
        if (!whole) cut.push_back(control->Name);
    }
    return cut;
}

std::vector<std::string> Controls(std::string_view form) {
    const auto& found = FindForm(form);
    RECT area;
    GetClientRect(found.Window, &area);
    std::vector<std::string> names;
    for (const platform::Control::Native* control : found.Controls) {
        const RECT& place = control->Place;
        if (PtInRect(&area, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}))
            names.push_back(control->Name);
    }
    return names;
}

std::vector<std::string> Pressed(std::string_view form) {
    std::vector<std::string> names;
    for (const platform::Control::Native* control : FindForm(form).Controls) {
        const auto* label = dynamic_cast<const platform::LabelNative*>(control);
        if (label != nullptr && label->Bordered) names.push_back(label->Name);
    }
    return names;
}

std::string Focus(std::string_view form) {
    const auto* focused = FindForm(form).Focused;
    return focused == nullptr ? std::string() : focused->Name;
}

std::vector<platform::Color> Pixels(std::string_view form, const platform::Rect& part) {
    const HWND window = WindowOf(form);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const RECT area = platform::ScaledRect(part);
    const int width = WidthOf(area), height = HeightOf(area);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HDC canvas = CreateCompatibleDC(nullptr);
    const HDC screen = GetDC(window);
    const HGDIOBJ before = SelectObject(canvas, bitmap);
    BitBlt(canvas, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    std::vector<platform::Color> colors;
    for (int y = 0; y < part.Height; ++y) {
        for (int x = 0; x < part.Width; ++x) {
            const int row = platform::Scaled(y), column = platform::Scaled(x);
            const RGBQUAD& pixel = static_cast<const RGBQUAD*>(pixels)[row * width + column];
            colors.push_back({pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue});
        }
    }
    SelectObject(canvas, before);
    ReleaseDC(window, screen);
    DeleteDC(canvas);
    DeleteObject(bitmap);
    return colors;
}

platform::Color PopupPixel(int x, int y) {
    const HWND popup = OpenPopup();
    UpdateWindow(popup);
    const HDC screen = GetWindowDC(popup);
    const COLORREF pixel = GetPixel(screen, x, y);
    ReleaseDC(popup, screen);
    return {GetRValue(pixel), GetGValue(pixel), GetBValue(pixel)};
}

void WhenMessageComes(std::function<void()> look) {
    static std::function<void()> take;
    static HWND seen;
    take = std::move(look);
    static const auto watch = [](HWND, UINT, UINT_PTR, DWORD) {
        if (Message() == std::exchange(seen, Message()) || seen == nullptr) return;
        take();
        if (IsWindowVisible(seen))
            SendMessageW(FindWindowExW(seen, nullptr, L"Button", nullptr), BM_CLICK, 0, 0);
    };
    static const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, watch);
    static_cast<void>(timer);
}

std::string MessageText() {
    const HWND box = Message();
    return box == nullptr ? std::string() : platform::FromWide(platform::TextOf(GetDlgItem(box, 0xFFFF)));
}

// The system complains to nobody.
void WhenToolkitWarns(void (*)(const std::string&)) {}

const std::size_t kLateCaches = 5;

// The system's own counts are 0 in Wine. What serves drawing stands in a table of the process, in Wine where
// Windows has it; the numbers of all else are short.
std::size_t HeldResources() {
    struct Entry {
        void* Object;
        WORD Process, Uses, Unique;
        BYTE Type, Flags;
        void* OwnData;
    };
    constexpr std::size_t kTable = 0xF8, kEntries = 0x4000, kNumbers = 0x4000;
    const auto* process = reinterpret_cast<const std::byte*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const auto* table = *reinterpret_cast<const Entry* const*>(process + kTable);
    auto held = std::count_if(table, table + kEntries, [](const Entry& entry) { return entry.Type != 0; });
    for (std::size_t number = 4; number < kNumbers; number += 2) {
        void* const object = reinterpret_cast<void*>(number);
        DWORD told = 0;
        if (number % 4 == 0 && GetHandleInformation(object, &told) != FALSE) ++held;
        if (IsMenu(static_cast<HMENU>(object)) != FALSE) ++held;
        if (GetWindowThreadProcessId(static_cast<HWND>(object), nullptr) == GetCurrentThreadId()) ++held;
    }
    return static_cast<std::size_t>(held);
}

// A menu does not let its step end.
bool Live(const std::function<bool()>& step) {
    static const UINT_PTR waiting =
        SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) { EndMenu(); });
    static_cast<void>(waiting);
    for (ended = false;;) {
        Settle();
        if (ended || !step()) return ended;
    }
}

std::string Description(std::string_view form, std::string_view control) {
    return platform::FromWide(FindControl(form, control).Description);
}

void PressByAssistant(std::string_view form, std::string_view control) {
    Assist(form, control,
           [](IAccessible& accessible, VARIANT itself) { accessible.accDoDefaultAction(itself); });
}

void FocusByAssistant(std::string_view form, std::string_view control) {
    Assist(form, control,
           [](IAccessible& accessible, VARIANT itself) { accessible.accSelect(SELFLAG_TAKEFOCUS, itself); });
}

}  // namespace robot
