#include "platform/form.h"

#include <windows.h>

#include <windowsx.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <map>
#include <utility>

#include "platform/free_place.h"
#include "platform/win32/accessibility.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

constexpr wchar_t kFormClass[] = L"OrvaneForm";

constexpr DWORD kDialog = WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kFrameless = WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr DWORD kExtended = WS_EX_APPWINDOW;
constexpr DWORD kDialogExtended = WS_EX_APPWINDOW | WS_EX_DLGMODALFRAME;

int ToPixels(float twips) { return Scaled(twips / kTwipsPerPixel); }
float ToTwips(LONG pixels) { return static_cast<float>(pixels / Density()) * kTwipsPerPixel; }

Rect ToRect(const RECT& rect) {
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), WidthOf(rect), HeightOf(rect)};
}

Rect PlaceOf(HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    return ToRect(place);
}

MONITORINFO PointersScreen() {
    POINT pointer{};
    GetCursorPos(&pointer);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromPoint(pointer, MONITOR_DEFAULTTOPRIMARY), &screen);
    return screen;
}

}  // namespace

std::vector<Form::Native*>& Form::Native::All() {
    static std::vector<Native*> forms;
    return forms;
}

Form::Native::Native(Form& form, std::string_view name, std::string_view caption, int width, int height,
                     FormFrame frame)
    : Owner(&form), Name(name), Frame(frame), Back(GetSysColor(COLOR_BTNFACE)), width_(width) {
    static const ATOM formClass = RegisteredClass(kFormClass, Procedure);
    const bool frameless = frame == FormFrame::None;
    Window = CreateWindowExW(frameless ? kExtended : kDialogExtended, MAKEINTATOM(formClass),
                             ToWide(caption).c_str(), frameless ? kFrameless : kDialog, 0, 0, 0, 0, nullptr,
                             nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(Window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetHeight(static_cast<float>(height) * kTwipsPerPixel);
    All().push_back(this);
}

// The window may be in the middle of a message of its own.
Form::Native::~Native() {
    std::erase(All(), this);
    SetWindowLongPtrW(Window, GWLP_USERDATA, 0);
    ShowWindow(Window, SW_HIDE);
    PostMessageW(Window, kDestroyLater, 0, reinterpret_cast<LPARAM>(Window));
}

Form::Native* Form::Native::Of(HWND window) {
    const auto found = std::ranges::find(All(), window, &Native::Window);
    return found == All().end() ? nullptr : *found;
}

int Form::Native::Enrol(Control::Native& control) {
    Controls.push_back(&control);
    return ++lastOrder_;
}

void Form::Native::Forget(Control::Native& control) {
    std::erase(Controls, &control);
    if (Focused == &control) Focused = nullptr;
    if (letGo_ == &control) letGo_ = nullptr;
}

int Form::Native::Enrol(Outline& shape) {
    Shapes.push_back(&shape);
    return ++lastOrder_;
}

void Form::Native::Forget(Outline& shape) { std::erase(Shapes, &shape); }

void Form::Native::FocusBehind(const Control::Native& label) {
    const auto start = std::ranges::find(Controls, &label);
    const auto next = std::find_if(start, Controls.end(), std::mem_fn(&Control::Native::TakesFocus));
    if (next != Controls.end()) FocusTo(**next);
}

void Form::Native::FocusNext(bool forward) {
    if (!MayLeaveTo(nullptr)) return;
    std::vector<Control::Native*> stops = Controls;
    std::erase_if(
        stops, [this](const Control::Native* control) { return !control->TabStop() && control != Focused; });
    if (!forward) std::ranges::reverse(stops);
    if (stops.empty()) return;
    // Behind the last comes the first, which is also the first behind none.
    const auto current = std::ranges::find(stops, Focused);
    std::ranges::rotate(stops, current == stops.end() ? stops.begin() : current + 1);
    stops.front()->FocusByKey();
}

void Form::Native::FocusTo(Control::Native& control) {
    if (MayLeaveTo(&control)) control.FocusByKey();
}

bool Form::Native::MayLeaveTo(const Control::Native* next) {
    if (Focused == nullptr || Focused == next || !Focused->Owner->Validate) return true;
    if (!Focused->Owner->Validate()) return false;
    letGo_ = Focused;
    return true;
}

// The one that had the focus keeps it in its own eyes while a list is open or the desktop turns to another
// window. Where assistive technology moves the focus nobody has asked that one yet.
void Form::Native::FocusCame(Control::Native& control) {
    Control::Native* left = std::exchange(Focused, &control);
    const bool asked = std::exchange(letGo_, nullptr) == left;
    if (left == nullptr || left == &control) return;
    if (!asked && left->Owner->Validate && !left->Owner->Validate()) {
        Focused = left;
        SetFocus(left->Window);
    } else if (left->Owner->LostFocus) {
        left->Owner->LostFocus();
    }
}

void Form::Native::PressAccessKey(wchar_t character) {
    const auto found = std::ranges::find_if(Controls, [&](const Control::Native* control) {
        return control->Caption() != nullptr && control->Caption()->IsKey(character);
    });
    if (found != Controls.end()) (*found)->AccessKey();
}

// A label with an access key names the next control that takes the focus, and that one alone.
std::wstring Form::Native::NameFromLabel(const Control::Native& control) const {
    std::wstring name;
    for (const Control::Native* other : Controls) {
        if (other == &control) break;
        if (other->TakesFocus()) name.clear();
        if (other->TakesFocus() || other->Caption() == nullptr || other->Caption()->KeyIndex < 0) continue;
        name = other->Caption()->Text;
        std::erase(name, L':');
        name.erase(name.find_last_not_of(L' ') + 1);
    }
    return name;
}

void Form::Native::MoveTo(float left, float top) {
    Left = left;
    Top = top;
    placed_ = placing_ = true;
    SetWindowPos(Window, nullptr, ToPixels(left), ToPixels(top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    placing_ = false;
}

void Form::Native::Centre() {
    RECT own;
    GetWindowRect(Window, &own);
    const RECT area = PointersScreen().rcMonitor;
    MoveTo(ToTwips(area.left + (WidthOf(area) - WidthOf(own)) / 2),
           ToTwips(area.top + (HeightOf(area) - HeightOf(own)) / 2));
}

// Where the window covers none of the program's, as near as can be to the one that the user is in.
void Form::Native::MoveToFreePlace() {
    std::vector<Rect> taken;
    for (const Native* form : All()) {
        if (IsWindowVisible(form->Window) && !IsIconic(form->Window)) taken.push_back(PlaceOf(form->Window));
    }
    const Rect area = ToRect(PointersScreen().rcWork);
    const HWND active = GetActiveWindow();
    const Rect own = PlaceOf(Window);
    const auto place =
        FreePlace(area, own.Width, own.Height, taken, active == nullptr ? area : PlaceOf(active));
    if (place) MoveTo(ToTwips(place->Left), ToTwips(place->Top));
}

// Where the desktop has put the window.
void Form::Native::Moved() {
    if (placing_ || IsIconic(Window)) return;
    RECT own;
    GetWindowRect(Window, &own);
    if (own.left != ToPixels(Left)) Left = ToTwips(own.left);
    if (own.top != ToPixels(Top)) Top = ToTwips(own.top);
}

void Form::Native::SetHeight(float twips) {
    RECT outer{0, 0, Scaled(width_), std::max(1, ToPixels(twips))};
    AdjustWindowRectEx(&outer, static_cast<DWORD>(GetWindowLongPtrW(Window, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(Window, GWL_EXSTYLE)));
    SetWindowPos(Window, nullptr, 0, 0, WidthOf(outer), HeightOf(outer),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void Form::Native::ShowAgain() {
    if (!IsWindowVisible(Window)) {
        // The screen that it stood on may have gone meanwhile.
        if (shownBefore_ && MonitorFromWindow(Window, MONITOR_DEFAULTTONULL) == nullptr) Centre();
        if (!shownBefore_ && !placed_) MoveToFreePlace();
        for (const Control::Native* control : Controls) control->LeaveToLater();
        if (Focused == nullptr) {
            const auto first = std::ranges::find_if(Controls, std::mem_fn(&Control::Native::TabStop));
            if (first != Controls.end()) Focused = *first;
        }
        shownBefore_ = true;
    }
    if (IsIconic(Window)) ShowWindow(Window, SW_RESTORE);
    // Drawn in one go, and not erased ahead of that.
    SetWindowPos(Window, nullptr, 0, 0, 0, 0, SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_DEFERERASE);
    RedrawWindow(Window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    SetForegroundWindow(Window);
}

// What a press or a menu began ends with the window.
void Form::Native::Hidden() {
    if (const HWND held = GetCapture(); held != nullptr && IsChild(Window, held)) ReleaseCapture();
    for (const Control::Native* control : Controls) control->Close();
    EndMenu();
}

void Form::Native::DrawShapes(HDC canvas, int above, int below) const {
    for (const Outline* shape : Shapes) {
        if (shape->Order > above && shape->Order < below) shape->Draw(canvas);
    }
}

LRESULT CALLBACK Form::Native::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kDestroyLater) {
        DestroyWindow(reinterpret_cast<HWND>(lParam));
        return 0;
    }
    auto* form = reinterpret_cast<Native*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (form == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    return form->Message(message, wParam, lParam);
}

LRESULT Form::Native::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE: Owner->CloseFromOutside(); return 0;
        case WM_ENDSESSION:
            if (wParam != 0) EndAtOnce();
            return 0;
        case WM_ERASEBKGND: {
            RECT area;
            GetClientRect(Window, &area);
            const auto canvas = reinterpret_cast<HDC>(wParam);
            Fill(canvas, area, Back);
            DrawShapes(canvas, 0, INT_MAX);
            return 1;
        }
        case WM_MOUSEMOVE:
            if (PointerHasMoved() && Owner->MouseMove)
                Owner->MouseMove(static_cast<float>(GET_X_LPARAM(lParam) / Density()),
                                 static_cast<float>(GET_Y_LPARAM(lParam) / Density()));
            return 0;
        case WM_MOVE: Moved(); return 0;
        case WM_SHOWWINDOW:
            if (wParam == FALSE) Hidden();
            break;
        case WM_SETFOCUS:
            if (Focused != nullptr) SetFocus(Focused->Window);
            return 0;
        case WM_SYSCHAR:
            if (wParam == L' ') break;
            PressAccessKey(static_cast<wchar_t>(wParam));
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_TAB) FocusNext(GetKeyState(VK_SHIFT) >= 0);
            return 0;
        case WM_SYSCOMMAND:
            // Alt alone would go to a menu that a frameless window does not show, and hold all keys there.
            if ((wParam & 0xFFF0) == SC_KEYMENU && lParam == 0 && Frame == FormFrame::None) return 0;
            break;
        case WM_COMMAND:
            if (Control::Native* control = Control::Native::Of(reinterpret_cast<HWND>(lParam)))
                control->Notified(HIWORD(wParam));
            return 0;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (const Control::Native* control = Control::Native::Of(item.hwndItem)) control->DrawItem(item);
            return TRUE;
        }
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORLISTBOX: {
            const Control::Native* control = Control::Native::Of(reinterpret_cast<HWND>(lParam));
            if (control == nullptr || !control->Themed) break;
            const auto canvas = reinterpret_cast<HDC>(wParam);
            SetTextColor(canvas, control->Ink());
            SetBkColor(canvas, control->Back());
            SetDCBrushColor(canvas, control->Back());
            return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
        }
        case WM_GETOBJECT:
            if (static_cast<LONG>(lParam) == OBJID_CLIENT) return AnswerAssistant(Window, wParam);
            break;
        default: break;
    }
    return DefWindowProcW(Window, message, wParam, lParam);
}

Form::Form(std::string_view name, std::string_view caption, int width, int height, FormFrame frame)
    : native_(std::make_unique<Native>(*this, name, caption, width, height, frame)) {}

Form::~Form() = default;

void Form::Show() { native_->ShowAgain(); }
void Form::Hide() { ShowWindow(native_->Window, SW_HIDE); }

void Form::StayOnTop() {
    SetWindowPos(native_->Window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Form::Centre() { native_->Centre(); }

// Kept here, since the system shares an icon by its name, whatever the size.
void Form::SetIcon(std::string_view picture) {
    static std::map<std::pair<std::wstring, int>, HANDLE> loaded;
    const std::wstring name = ToWide(picture);
    for (const auto& [which, side] : {std::pair{ICON_BIG, SM_CXICON}, {ICON_SMALL, SM_CXSMICON}}) {
        const int size = GetSystemMetrics(side);
        HANDLE& icon = loaded[{name, size}];
        if (icon == nullptr)
            icon = LoadImageW(GetModuleHandleW(nullptr), name.c_str(), IMAGE_ICON, size, size, 0);
        SendMessageW(native_->Window, WM_SETICON, static_cast<WPARAM>(which), reinterpret_cast<LPARAM>(icon));
    }
}

void Form::SetBackColor(Color color) {
    native_->Back = ToColorRef(color);
    InvalidateRect(native_->Window, nullptr, TRUE);
}

void Form::SetSpokenName(std::string_view name) { native_->SpokenName = ToWide(name); }

float Form::Left() const { return native_->Left; }
float Form::Top() const { return native_->Top; }
void Form::SetLeft(float twips) { native_->MoveTo(twips, Top()); }
void Form::SetTop(float twips) { native_->MoveTo(Left(), twips); }
void Form::SetHeight(float twips) { native_->SetHeight(twips); }

}  // namespace platform
