#include "support/robot.h"

#include <windows.h>

#include <oleacc.h>
#include <winternl.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <ranges>
#include <stdexcept>
#include <utility>

#include "platform/win32/label.h"
#include "platform/win32/pasted_text.h"
#include "platform/win32/theme_style.h"
#include "platform/win32/toolkit.h"

namespace robot {
namespace {

using namespace platform;

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

Form::Native& FindForm(std::string_view form) {
    const auto& all = Form::Native::All();
    const auto found = std::ranges::find(all, form, &Form::Native::Name);
    if (found == all.end()) throw std::runtime_error("no window " + std::string(form));
    return **found;
}

Control::Native& FindControl(std::string_view form, std::string_view control) {
    const auto& all = FindForm(form).Controls;
    const auto found = std::ranges::find(all, control, &Control::Native::Name);
    if (found == all.end()) throw std::invalid_argument("no control " + std::string(control));
    return **found;
}

// The controls of which something holds.
template <class Holds>
std::vector<std::string> Named(std::string_view form, const Holds& holds) {
    std::vector<std::string> names;
    for (Control::Native* control : FindForm(form).Controls) {
        if (holds(*control)) names.push_back(control->Name);
    }
    return names;
}

HWND WindowOf(std::string_view form) {
    const HWND window = FindForm(form).Window;
    if (!IsWindowVisible(window)) throw std::runtime_error(std::string(form) + " is not on the screen");
    return window;
}

Rect ToLayout(const RECT& rect) {
    const auto pixels = [](LONG value) { return static_cast<int>(std::lround(value / Density())); };
    return {pixels(rect.left), pixels(rect.top), pixels(rect.right - rect.left),
            pixels(rect.bottom - rect.top)};
}

Color ColorAt(HDC canvas, int x, int y) {
    const COLORREF pixel = GetPixel(canvas, x, y);
    return {GetRValue(pixel), GetGValue(pixel), GetBValue(pixel)};
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
    POINT point{Scaled(at.X), Scaled(at.Y)};
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

// Whether the pointer is on what the system sees to by itself, a title or a list's scroll bar for instance.
// That lets nobody do a thing from the press to the release.
bool OnSystemFrame() {
    POINT at;
    GetCursorPos(&at);
    const HWND window = WindowFromPoint(at);
    const Control::Native* control = Control::Native::Of(window);
    return (control == nullptr || !control->Themed) &&
           SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(at.x, at.y)) != HTCLIENT;
}

void SendKey(std::string_view name) {
    static const std::map<std::string_view, BYTE> kNamed{
        {"Tab", VK_TAB},      {"Return", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Backspace", VK_BACK},
        {"Home", VK_HOME},    {"End", VK_END},       {"Up", VK_UP},         {"Delete", VK_DELETE},
        {"Down", VK_DOWN},    {"Left", VK_LEFT},     {"Right", VK_RIGHT},   {"Space", VK_SPACE},
        {"PgUp", VK_PRIOR},   {"PgDown", VK_NEXT},   {"Menu", VK_APPS},     {"F4", VK_F4},
        {"Ctrl", VK_CONTROL}, {"Shift", VK_SHIFT},   {"Alt", VK_MENU}};
    std::vector<BYTE> held;
    for (std::size_t plus = name.find('+'); plus < name.size() && plus > 0; plus = name.find('+')) {
        held.push_back(kNamed.at(name.substr(0, plus)));
        name.remove_prefix(plus + 1);
    }
    const auto named = kNamed.find(name);
    held.push_back(named != kNamed.end() ? named->second
                                         : LOBYTE(VkKeyScanW(static_cast<wchar_t>(name.front()))));
    for (const BYTE key : held) keybd_event(key, 0, 0, 0);
    for (const BYTE key : held | std::views::reverse) keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    Settle();
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
    Mouse(Flag(button, true) | (OnSystemFrame() ? Flag(button, false) : 0));
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

// As an input method does; Key presses keys.
void Type(std::string_view form, std::string_view text) {
    TurnTo(form);
    for (const wchar_t c : ToWide(text)) {
        PostMessageW(GetFocus(), WM_CHAR, c, 0);
        Settle();
    }
}

std::string Clipboard() { return FromWide(ClipboardText(SIZE_MAX)); }

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

Rect Popup(std::string_view form) {
    const HWND popup = OpenPopup();
    if (popup == nullptr) return {};
    RECT place;
    GetWindowRect(popup, &place);
    MapWindowPoints(nullptr, FindForm(form).Window, reinterpret_cast<POINT*>(&place), 2);
    return ToLayout(place);
}

void DesktopMoves(std::string_view form, int left, int top) {
    SetWindowPos(WindowOf(form), nullptr, Scaled(left), Scaled(top), 0, 0,
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
    for (const Form::Native* form : Form::Native::All()) {
        if (IsWindowVisible(form->Window)) names.push_back(form->Name);
    }
    if (const HWND box = Message()) names.push_back(FromWide(TextOf(box)));
    return names;
}

Rect Bounds(std::string_view form) {
    RECT area;
    const HWND window = FindForm(form).Window;
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return ToLayout(area);
}

Rect Bounds(std::string_view form, std::string_view control) {
    return ToLayout(FindControl(form, control).Place);
}

bool OnTop(std::string_view form) {
    return (GetWindowLongPtrW(WindowOf(form), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

std::string Text(std::string_view form, std::string_view control) {
    const auto& found = FindControl(form, control);
    if (found.Caption() != nullptr) return FromWide(found.Caption()->Text);
    if (const auto* list = dynamic_cast<const DropDownList*>(found.Owner)) return list->Text();
    return dynamic_cast<const TextBox&>(*found.Owner).Text();
}

bool Whole(std::string_view form, std::string_view control) {
    const auto& found = FindControl(form, control);
    const std::string text = Text(form, control);
    RECT room;
    SendMessageW(found.Window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
    const auto lines = SendMessageW(found.Window, EM_GETLINECOUNT, 0, 0);
    return lines == 1 + std::ranges::count(text, '\n') &&
           lines * MetricsOf(FontOf(found.Face)).tmHeight <= HeightOf(room);
}

std::vector<std::string> CutTexts(std::string_view form) {
    constexpr int kSmallest = 8;
    return Named(form, [](Control::Native& control) {
        if (auto* label = dynamic_cast<LabelNative*>(&control)) {
            const TEXTMETRICW metrics = MetricsOf(label->DrawnFont());
            return !label->Fits(label->DrawnFont()) ||
                   metrics.tmHeight - metrics.tmInternalLeading < Scaled(kSmallest);
        }
        const HFONT font = FontOf(control.Face);
        int margin = dynamic_cast<CheckBox*>(control.Owner) != nullptr ? 18 : 2, widest = 0;
        if (dynamic_cast<DropDownList*>(control.Owner) != nullptr) {
            margin = kArrowWidth + 6;
            wchar_t entry[256] = L"";
            const auto read = reinterpret_cast<LPARAM>(entry);
            for (WPARAM i = 0; SendMessageW(control.Window, CB_GETLBTEXT, i, read) != CB_ERR; ++i)
                widest = std::max(widest, WidthOf(font, entry));
        } else if (control.Caption() != nullptr) {
            widest = WidthOf(font, control.Caption()->Text);
        } else if ((GetWindowLongPtrW(control.Window, GWL_STYLE) & ES_MULTILINE) == 0) {
            widest = WidthOf(font, TextOf(control.Window));
        }
        RECT area;
        GetWindowRect(control.Window, &area);
        return widest > 0 &&
               (widest + Scaled(margin) > WidthOf(area) || MetricsOf(font).tmHeight > HeightOf(area));
    });
}

std::vector<std::string> Controls(std::string_view form) {
    RECT area;
    GetClientRect(FindForm(form).Window, &area);
    return Named(form, [&area](const Control::Native& control) {
        const RECT& place = control.Place;
        return PtInRect(&area, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}) != FALSE;
    });
}

std::vector<std::string> Pressed(std::string_view form) {
    return Named(form, [](const Control::Native& control) {
        const auto* label = dynamic_cast<const LabelNative*>(&control);
        return label != nullptr && label->Bordered;
    });
}

std::string Focus(std::string_view form) {
    const auto* focused = FindForm(form).Focused;
    return focused == nullptr ? std::string() : focused->Name;
}

std::vector<Color> Pixels(std::string_view form, const Rect& part) {
    const HWND window = WindowOf(form);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const RECT area = ScaledRect(part);
    const HDC screen = GetDC(window);
    std::vector<Color> colors;
    for (int y = 0; y < part.Height; ++y) {
        for (int x = 0; x < part.Width; ++x)
            colors.push_back(ColorAt(screen, area.left + Scaled(x), area.top + Scaled(y)));
    }
    ReleaseDC(window, screen);
    return colors;
}

Color PopupPixel(int x, int y) {
    const HWND popup = OpenPopup();
    UpdateWindow(popup);
    const HDC screen = GetWindowDC(popup);
    const Color color = ColorAt(screen, x, y);
    ReleaseDC(popup, screen);
    return color;
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
    return box == nullptr ? std::string() : FromWide(TextOf(GetDlgItem(box, 0xFFFF)));
}

// The system complains to nobody.
void WhenToolkitWarns(void (*)(const std::string&)) {}

const std::size_t kLateCaches = 5;

// The system's own counts are 0 in Wine. What serves drawing stands in a table of the process, in Wine where
// Windows has it; the numbers of all else are short.
std::size_t HeldResources() {
    constexpr std::size_t kTable = 0xF8, kEntry = 24, kType = 14, kEntries = 0x4000, kNumbers = 0x4000;
    const auto* process = reinterpret_cast<const BYTE*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const BYTE* table = *reinterpret_cast<const BYTE* const*>(process + kTable);
    std::size_t held = 0;
    for (std::size_t entry = 0; entry < kEntries; ++entry) {
        if (table[entry * kEntry + kType] != 0) ++held;
    }
    for (std::size_t number = 4; number < kNumbers; number += 2) {
        void* const object = reinterpret_cast<void*>(number);
        DWORD told = 0;
        if (number % 4 == 0 && GetHandleInformation(object, &told) != FALSE) ++held;
        if (IsMenu(static_cast<HMENU>(object)) != FALSE) ++held;
        if (GetWindowThreadProcessId(static_cast<HWND>(object), nullptr) == GetCurrentThreadId()) ++held;
    }
    return held;
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
    return FromWide(FindControl(form, control).Description);
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
