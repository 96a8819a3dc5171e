#include "support/robot.h"

#include <windows.h>

#include <oleacc.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

#include "platform/application.h"
#include "platform/win32/label.h"
#include "platform/win32/theme_style.h"
#include "platform/win32/toolkit.h"

namespace robot {
namespace {

using platform::Density;
using platform::HeightOf;
using platform::WidthOf;

// The program does all that there is to do.
void Settle() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) return PostQuitMessage(0);  // is for Live
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

template <class Widget>
Widget& Find(std::string_view form, std::string_view control) {
    return dynamic_cast<Widget&>(*FindControl(form, control).Owner);
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

POINT OnScreen(std::string_view form, Point at) {
    POINT point{platform::Scaled(at.X), platform::Scaled(at.Y)};
    ClientToScreen(FindForm(form).Window, &point);
    return point;
}

// The windows of the program of some class that are on the screen.
std::vector<HWND> ShownOf(std::wstring_view windowClass) {
    struct Search {
        std::wstring_view Class;
        std::vector<HWND> Found;
    } search{windowClass, {}};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM data) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(data);
            wchar_t name[64] = L"";
            GetClassNameW(window, name, static_cast<int>(std::size(name)));
            if (wanted.Class == name && IsWindowVisible(window)) wanted.Found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

HWND OpenPopup() {
    for (const wchar_t* popup : {L"ComboLBox", L"#32768"}) {
        if (const auto open = ShownOf(popup); !open.empty()) return open.front();
    }
    return nullptr;
}

HWND Message() {
    const auto boxes = ShownOf(L"#32770");
    return boxes.empty() ? nullptr : boxes.front();
}

void Send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    Settle();
}

INPUT MouseInput(DWORD flags, DWORD data = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    return input;
}

INPUT KeyInput(WORD key, WORD character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = character;
    input.ki.dwFlags = flags;
    return input;
}

// A pointer that is there already does not move.
void PointAt(POINT at) {
    POINT now{};
    GetCursorPos(&now);
    if (now.x == at.x && now.y == at.y) return;
    INPUT move = MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    // In parts of the screen, of which there are 65536; the least that gives the pixel.
    move.mi.dx = at.x * 65536 / GetSystemMetrics(SM_CXSCREEN) + 1;
    move.mi.dy = at.y * 65536 / GetSystemMetrics(SM_CYSCREEN) + 1;
    Send({move});
}

// Other windows of the program do not stand before it, as little as they do in the eyes of a user.
void PointAt(std::string_view form, Point at) {
    const HWND window = WindowOf(form);
    const POINT point = OnScreen(form, at);
    if (OpenPopup() == nullptr && GetCapture() == nullptr && IsWindowEnabled(window) &&
        GetAncestor(WindowFromPoint(point), GA_ROOT) != window) {
        SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        SetForegroundWindow(window);
    }
    Settle();
    PointAt(point);
}

DWORD Flag(Button button, bool down) {
    switch (button) {
        case Button::Middle: return down ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_MIDDLEUP;
        case Button::Right: return down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP;
        case Button::Left: break;
    }
    return down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
}

void PressKey(WORD key, std::vector<WORD> held) {
    std::vector<INPUT> inputs;
    for (const WORD shift : held) inputs.push_back(KeyInput(shift, 0, 0));
    inputs.push_back(KeyInput(key, 0, 0));
    inputs.push_back(KeyInput(key, 0, KEYEVENTF_KEYUP));
    std::ranges::reverse(held);
    for (const WORD shift : held) inputs.push_back(KeyInput(shift, 0, KEYEVENTF_KEYUP));
    Send(inputs);
}

void SendKey(std::string_view name) {
    static const std::map<std::string_view, WORD> kNamed{
        {"Tab", VK_TAB},       {"Return", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Backspace", VK_BACK},
        {"Delete", VK_DELETE}, {"Home", VK_HOME},     {"End", VK_END},       {"Up", VK_UP},
        {"Down", VK_DOWN},     {"Left", VK_LEFT},     {"Right", VK_RIGHT},   {"Space", VK_SPACE},
        {"PgUp", VK_PRIOR},    {"PgDown", VK_NEXT},   {"Insert", VK_INSERT}, {"Menu", VK_APPS},
        {"F4", VK_F4},         {"Ins", VK_INSERT},    {"Del", VK_DELETE}};
    static const std::map<std::string_view, WORD> kHeld{
        {"Alt", VK_MENU}, {"Ctrl", VK_CONTROL}, {"Shift", VK_SHIFT}};
    std::vector<WORD> held;
    std::string_view key = name;
    for (std::size_t plus = key.find('+'); plus != std::string_view::npos && plus > 0; plus = key.find('+')) {
        held.push_back(kHeld.at(key.substr(0, plus)));
        key.remove_prefix(plus + 1);
    }
    if (const auto named = kNamed.find(key); named != kNamed.end()) return PressKey(named->second, held);
    if (key.size() != 1) throw std::invalid_argument("no key " + std::string(name));
    PressKey(static_cast<WORD>(VkKeyScanW(static_cast<wchar_t>(key.front())) & 0xFF), held);
}

IAccessible* Accessible(std::string_view form, std::string_view control) {
    IAccessible* accessible = nullptr;
    AccessibleObjectFromWindow(FindControl(form, control).Window, static_cast<DWORD>(OBJID_CLIENT),
                               __uuidof(IAccessible), reinterpret_cast<void**>(&accessible));
    return accessible;
}

VARIANT Itself() {
    VARIANT itself{};
    itself.vt = VT_I4;
    return itself;
}

}  // namespace

static bool doubleClicks = false;

std::vector<char*> Arguments(char* program) { return {program}; }

void TurnTo(std::string_view form) {
    const HWND window = WindowOf(form);
    if (OpenPopup() == nullptr && GetForegroundWindow() != window) SetForegroundWindow(window);
    Settle();
}

void Move(std::string_view form, Point at) { PointAt(form, at); }

// Two clicks of a test are two, however fast they come.
void Press(std::string_view form, Point at, Button button) {
    if (!doubleClicks) SetDoubleClickTime(1);
    PointAt(form, at);
    Send({MouseInput(Flag(button, true))});
}

void Release(std::string_view form, Point at, Button button) {
    PointAt(form, at);
    Send({MouseInput(Flag(button, false))});
}

Point Middle(std::string_view form, std::string_view control) {
    const platform::Rect place = Bounds(form, control);
    return {static_cast<double>(place.Left + (place.Width - 1) / 2),
            static_cast<double>(place.Top + (place.Height - 1) / 2)};
}

void Hover(std::string_view form, std::string_view control) {
    const Point middle = Middle(form, control);
    Move(form, {middle.X + 1, middle.Y});
    Move(form, middle);
}

void Click(std::string_view form, std::string_view control, Button button) {
    Press(form, Middle(form, control), button);
    Release(form, Middle(form, control), button);
}

void DoubleClick(std::string_view form, std::string_view control) {
    doubleClicks = true;
    SetDoubleClickTime(0);  // as it was
    Click(form, control);
    Click(form, control);
    doubleClicks = false;
}

void Wheel(std::string_view form, std::string_view control, int steps) {
    PointAt(form, Middle(form, control));
    Send({MouseInput(MOUSEEVENTF_WHEEL, static_cast<DWORD>(steps * WHEEL_DELTA))});
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
        if (c < 0x80 && key != -1) {
            PressKey(static_cast<WORD>(key & 0xFF),
                     (key & 0x100) != 0 ? std::vector<WORD>{VK_SHIFT} : std::vector<WORD>());
        } else {
            Send({KeyInput(0, c, KEYEVENTF_UNICODE), KeyInput(0, c, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP)});
        }
    }
}

void Paste(std::string_view form, std::string_view text) {
    platform::SetClipboardText(text);
    Key(form, "Ctrl+V");
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
    PointAt({at.x - 1, at.y});
    PointAt(at);
    Send({MouseInput(MOUSEEVENTF_LEFTDOWN)});
    Send({MouseInput(MOUSEEVENTF_LEFTUP)});
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

bool Shown(std::string_view form) {
    const auto& all = platform::Form::Native::All();
    const auto found = std::ranges::find(all, form, &platform::Form::Native::Name);
    return found != all.end() && IsWindowVisible((*found)->Window);
}

std::vector<std::string> ShownWindows() {
    std::vector<std::string> names;
    for (const platform::Form::Native* form : platform::Form::Native::All()) {
        if (IsWindowVisible(form->Window)) names.push_back(form->Name);
    }
    for (const HWND box : ShownOf(L"#32770")) names.push_back(platform::FromWide(platform::TextOf(box)));
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
    for (const platform::Outline* shape : FindForm(form).Shapes) {
        if (shape->Name == control) return shape->Place;
    }
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
        RECT area;
        GetWindowRect(control->Window, &area);
        const auto fits = [&](const std::wstring& text, int margin) {
            if (WidthOf(font, text) > WidthOf(area) - platform::Scaled(margin) ||
                platform::MetricsOf(font).tmHeight > HeightOf(area))
                cut.push_back(control->Name + ": " + platform::FromWide(text));
        };
        if (auto* label = dynamic_cast<platform::LabelNative*>(control)) {
            const TEXTMETRICW metrics = platform::MetricsOf(label->DrawnFont());
            if (!label->Fits(label->DrawnFont()) ||
                metrics.tmHeight - metrics.tmInternalLeading < platform::Scaled(kSmallest))
                cut.push_back(label->Name + ": " + label->Text);
        } else if (dynamic_cast<platform::DropDownList*>(control->Owner) != nullptr) {
            const LRESULT count = SendMessageW(control->Window, CB_GETCOUNT, 0, 0);
            for (int i = 0; i < count; ++i) {
                wchar_t text[256] = L"";
                SendMessageW(control->Window, CB_GETLBTEXT, static_cast<WPARAM>(i),
                             reinterpret_cast<LPARAM>(text));
                fits(text, platform::kArrowWidth + 6);
            }
        } else if (control->Caption() != nullptr) {
            const bool check = dynamic_cast<platform::CheckBox*>(control->Owner) != nullptr;
            fits(control->Caption()->Text, check ? 18 : 2);
        } else if (dynamic_cast<platform::TextBox*>(control->Owner) != nullptr &&
                   (GetWindowLongPtrW(control->Window, GWL_STYLE) & ES_MULTILINE) == 0) {
            fits(platform::TextOf(control->Window), 2);
        }
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

bool Checked(std::string_view form, std::string_view control) {
    return Find<platform::CheckBox>(form, control).Checked();
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

// What stands in a part of a window, in the screen's pixels; from the corner of its frame, if it has one.
static std::vector<RGBQUAD> Copied(HWND window, const RECT& part, bool framed = false) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const int width = WidthOf(part), height = HeightOf(part);
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HDC canvas = CreateCompatibleDC(nullptr);
    const HDC screen = framed ? GetWindowDC(window) : GetDC(window);
    const HGDIOBJ before = SelectObject(canvas, bitmap);
    BitBlt(canvas, 0, 0, width, height, screen, part.left, part.top, SRCCOPY);
    GdiFlush();
    const auto* first = static_cast<const RGBQUAD*>(pixels);
    const std::vector<RGBQUAD> copied(first, first + width * height);
    SelectObject(canvas, before);
    ReleaseDC(window, screen);
    DeleteDC(canvas);
    DeleteObject(bitmap);
    return copied;
}

std::vector<platform::Color> Pixels(std::string_view form, const platform::Rect& part) {
    const RECT area = platform::ScaledRect(part);
    const auto copied = Copied(WindowOf(form), area);
    std::vector<platform::Color> colors;
    for (int y = 0; y < part.Height; ++y) {
        for (int x = 0; x < part.Width; ++x) {
            const int row = platform::Scaled(y + 0.5) - platform::Scaled(0.5);
            const int column = platform::Scaled(x + 0.5) - platform::Scaled(0.5);
            const RGBQUAD& pixel = copied[static_cast<std::size_t>(row * WidthOf(area) + column)];
            colors.push_back({pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue});
        }
    }
    return colors;
}

platform::Color Pixel(std::string_view form, int x, int y) { return Pixels(form, {x, y, 1, 1}).front(); }

platform::Color PopupPixel(int x, int y) {
    const RGBQUAD pixel = Copied(OpenPopup(), {x, y, x + 1, y + 1}, true).front();
    return {pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue};
}

static int messagesSeen = 0;
static std::function<void()> messageLook;

void WhenMessageComes(std::function<void()> look) {
    static UINT_PTR timer = 0;
    static HWND seen = nullptr;
    messagesSeen = 0;
    seen = nullptr;
    messageLook = std::move(look);
    if (timer != 0) return;
    timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) {
        const HWND box = Message();
        if (box == seen) return;
        seen = box;
        if (box == nullptr) return;
        ++messagesSeen;
        messageLook();
        if (IsWindowVisible(box))
            SendMessageW(FindWindowExW(box, nullptr, L"Button", nullptr), BM_CLICK, 0, 0);
    });
}

std::string MessageText() {
    const HWND box = Message();
    return box == nullptr ? std::string() : platform::FromWide(platform::TextOf(GetDlgItem(box, 0xFFFF)));
}

void KeyInMessage(std::string_view key) { SendKey(key); }

int MessagesSeen() { return messagesSeen; }

// The system complains to nobody.
void WhenToolkitWarns(void (*)(const std::string&)) {}

// A menu does not let its step end.
bool Live(const std::function<bool()>& step) {
    static const UINT_PTR waiting =
        SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) { EndMenu(); });
    static_cast<void>(waiting);
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) return true;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (!step()) return false;
    }
}

void PressByAssistant(std::string_view form, std::string_view control) {
    IAccessible* accessible = Accessible(form, control);
    accessible->accDoDefaultAction(Itself());
    accessible->Release();
    Settle();
}

void FocusByAssistant(std::string_view form, std::string_view control) {
    IAccessible* accessible = Accessible(form, control);
    accessible->accSelect(SELFLAG_TAKEFOCUS, Itself());
    accessible->Release();
    Settle();
}

}  // namespace robot
