#include "platform/win32/toolkit.h"

#include <windows.h>

#include <windowsx.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>

#include "platform/win32/accessibility.h"

namespace platform {
namespace {

constexpr wchar_t kDrawnClass[] = L"OrvaneControl";

// Sent later to a control: a press by assistive technology, which does not wait for what comes of it.
constexpr UINT kPressLater = WM_APP + 1;

LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* control = reinterpret_cast<Control::Native*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return control->Message(message, wParam, lParam);
}

// The library of the system's controls costs a start as much as the rest of the program does, and the
// launcher has none of them.
void LoadSystemControls() {
    static const HMODULE library = LoadLibraryExW(L"comctl32.dll", nullptr, 0);
    static_cast<void>(library);
}

bool IsFixed(const Font& font) { return font.Family == "Fixedsys"; }

int PixelsOfPoints(const Font& font) { return static_cast<int>(std::lround(font.Points * 96 / 72)); }

HFONT MakeFont(const wchar_t* family, bool fixed, int pixels, int width) {
    const DWORD pitch = fixed ? FIXED_PITCH | FF_MODERN : VARIABLE_PITCH | FF_SWISS;
    return CreateFontW(-pixels, width, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, pitch, family);
}

// The largest size in which a character keeps to the cell that the windows are laid out for.
int PixelsOfFixed() {
    static const int pixels = [] {
        constexpr int kCellWidth = 8, kCellHeight = 15;
        const int width = static_cast<int>(kCellWidth * Density());
        const int height = static_cast<int>(kCellHeight * Density());
        int size = height;
        for (; size > 1; --size) {
            const HFONT font = MakeFont(L"Consolas", true, size, 0);
            const bool fits = WidthOf(font, L"0") <= width && MetricsOf(font).tmHeight <= height;
            DeleteObject(font);
            if (fits) break;
        }
        return size;
    }();
    return pixels;
}

// A canvas for one drawing after the other, at least so large.
HDC CanvasOf(int width, int height) {
    static const HDC canvas = CreateCompatibleDC(nullptr);
    static Bitmap bitmap;
    if (width > bitmap.Width || height > bitmap.Height) {
        bitmap = MakeBitmap(std::max(width, bitmap.Width), std::max(height, bitmap.Height));
        DeleteObject(SelectObject(canvas, bitmap.Handle));
    }
    return canvas;
}

}  // namespace

HANDLE FirstDrawn() {
    static const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return event;
}

ATOM RegisteredClass(const wchar_t* name, WNDPROC procedure, UINT style) {
    WNDCLASSW made{};
    made.style = CS_DBLCLKS | style;
    made.lpfnWndProc = procedure;
    made.hInstance = GetModuleHandleW(nullptr);
    made.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    made.lpszClassName = name;
    return RegisterClassW(&made);
}

WNDPROC Subclassed(HWND window, WNDPROC procedure) {
    return reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

std::wstring ToWide(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string FromWide(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string narrow(static_cast<std::size_t>(
                           WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), static_cast<int>(narrow.size()),
                        nullptr, nullptr);
    return narrow;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

COLORREF ToColorRef(Color color) { return RGB(color.Red, color.Green, color.Blue); }

double Density() {
    static const double density = GetDpiForSystem() / 96.0;
    return density;
}

int Scaled(double pixels) { return static_cast<int>(std::lround(pixels * Density())); }

RECT ScaledRect(const Rect& place) {
    return {Scaled(place.Left), Scaled(place.Top), Scaled(place.Left + place.Width),
            Scaled(place.Top + place.Height)};
}

int WidthOf(const RECT& rect) { return static_cast<int>(rect.right - rect.left); }
int HeightOf(const RECT& rect) { return static_cast<int>(rect.bottom - rect.top); }

int PixelsOf(const Font& font) { return IsFixed(font) ? PixelsOfFixed() : Scaled(PixelsOfPoints(font)); }

HFONT FontOf(const Font& font, int pixels, int percentOfWidth) {
    static std::map<std::tuple<bool, int, int>, HFONT> made;
    HFONT& kept = made[{IsFixed(font), pixels, percentOfWidth}];
    if (kept != nullptr) return kept;
    const wchar_t* family = IsFixed(font) ? L"Consolas" : L"Microsoft Sans Serif";
    int width = 0;
    if (percentOfWidth != 100) {
        const HFONT natural = FontOf(font, pixels, 100);
        width = std::max(1, static_cast<int>(MetricsOf(natural).tmAveCharWidth) * percentOfWidth / 100);
    }
    return kept = MakeFont(family, IsFixed(font), pixels, width);
}

// The fonts that the windows were laid out for are bitmaps of one density, and not in all sizes everywhere.
HFONT FontOf(const Font& font) {
    static std::map<std::pair<std::string_view, double>, HFONT> made;
    HFONT& kept = made[{font.Family, font.Points}];
    if (kept != nullptr) return kept;
    if (Density() == 1) {
        const int pixels = PixelsOfPoints(font);
        kept = MakeFont(ToWide(font.Family).c_str(), IsFixed(font), pixels, 0);
        const TEXTMETRICW metrics = MetricsOf(kept);
        if ((metrics.tmHeight - metrics.tmInternalLeading) * 100 >= pixels * 85) return kept;
        DeleteObject(kept);
    }
    return kept = FontOf(font, PixelsOf(font), 100);
}

HDC MeasuringIn(HFONT font) {
    static const HDC canvas = CreateCompatibleDC(nullptr);
    SelectObject(canvas, font);
    return canvas;
}

TEXTMETRICW MetricsOf(HFONT font) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(MeasuringIn(font), &metrics);
    return metrics;
}

int WidthOf(HFONT font, std::wstring_view text) {
    SIZE size{};
    GetTextExtentPoint32W(MeasuringIn(font), text.data(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

void Fill(HDC canvas, const RECT& rect, COLORREF color) {
    SetDCBrushColor(canvas, color);
    FillRect(canvas, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void DrawOutline(HDC canvas, const RECT& rect, COLORREF color, int outside) {
    const int line = Scaled(1);
    const int out = line * outside;
    RECT outer = rect;
    InflateRect(&outer, out, out);
    if (!RectVisible(canvas, &outer)) return;
    const int width = std::min(line + out, WidthOf(outer));
    const int height = std::min(line + out, HeightOf(outer));
    Fill(canvas, {outer.left, outer.top, outer.right, outer.top + height}, color);
    Fill(canvas, {outer.left, outer.bottom - height, outer.right, outer.bottom}, color);
    Fill(canvas, {outer.left, outer.top, outer.left + width, outer.bottom}, color);
    Fill(canvas, {outer.right - width, outer.top, outer.right, outer.bottom}, color);
}

BITMAPINFO InfoOf(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

Bitmap MakeBitmap(int width, int height) {
    const BITMAPINFO info = InfoOf(width, height);
    void* pixels = nullptr;
    const HBITMAP handle = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    return {handle, static_cast<std::uint32_t*>(pixels), width, height};
}

Drawing::Drawing(HWND window) : window_(window), screen_(GetDC(window)) {
    GetClientRect(window, &area_);
    canvas_ = CanvasOf(WidthOf(area_), HeightOf(area_));
    SaveDC(canvas_);
    IntersectClipRect(canvas_, 0, 0, area_.right, area_.bottom);
    SetBkMode(canvas_, TRANSPARENT);
}

Drawing::~Drawing() {
    RestoreDC(canvas_, -1);
    BitBlt(screen_, 0, 0, WidthOf(area_), HeightOf(area_), canvas_, 0, 0, SRCCOPY);
    ReleaseDC(window_, screen_);
}

bool PointerHasMoved() {
    static POINT last{-1, -1};
    const DWORD packed = GetMessagePos();
    const POINT now{GET_X_LPARAM(packed), GET_Y_LPARAM(packed)};
    const POINT before = std::exchange(last, now);
    return now.x != before.x || now.y != before.y;
}

bool ParsedCaption::IsKey(wchar_t character) const {
    if (KeyIndex < 0) return false;
    const wchar_t own[] = {Text[static_cast<std::size_t>(KeyIndex)], L'\0'};
    const wchar_t other[] = {character, L'\0'};
    return lstrcmpiW(own, other) == 0;
}

std::wstring ParsedCaption::Marked() const {
    std::wstring marked;
    for (std::size_t i = 0; i < Text.size(); ++i) {
        if (static_cast<int>(i) == KeyIndex || Text[i] == L'&') marked += L'&';
        marked += Text[i];
    }
    return marked;
}

ParsedCaption ParseCaption(std::string_view caption) {
    std::wstring text = ToWide(caption);
    for (std::size_t mark = text.find(L'&'); mark != std::wstring::npos; mark = text.find(L'&', mark + 1)) {
        if (mark + 1 == text.size() || !IsCharAlphaNumericW(text[mark + 1])) continue;
        text.erase(mark, 1);
        return {std::move(text), static_cast<int>(mark)};
    }
    return {std::move(text), -1};
}

Control::Native::Native(Form& form, std::string_view name, const Rect& place, const wchar_t* windowClass,
                        DWORD style, Pointer pointer, DWORD extendedStyle)
    : Parent(&form.Toolkit()), Place(ScaledRect(place)), Name(name), pointer_(pointer) {
    // They draw one after the other, so one canvas of the screen does for all.
    static const ATOM drawnClass = RegisteredClass(kDrawnClass, DefWindowProcW, CS_CLASSDC);
    if (windowClass != nullptr) LoadSystemControls();
    Window = CreateWindowExW(extendedStyle, windowClass == nullptr ? MAKEINTATOM(drawnClass) : windowClass,
                             nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | style, Place.left, Place.top,
                             WidthOf(Place), HeightOf(Place), Parent->Window, nullptr,
                             GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(Window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    before_ = Subclassed(Window, ControlProcedure);
    Order = Parent->Enrol(*this);
}

Control::Native::~Native() {
    Parent->Forget(*this);
    Subclassed(Window, before_);
    SetWindowLongPtrW(Window, GWLP_USERDATA, 0);
    ShowWindow(Window, SW_HIDE);
    PostMessageW(Parent->Window, kDestroyLater, 0, reinterpret_cast<LPARAM>(Window));
}

Control::Native* Control::Native::Of(HWND window) {
    if (window == nullptr || Form::Native::Of(GetParent(window)) == nullptr) return nullptr;
    return reinterpret_cast<Native*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

LRESULT Control::Native::Default(UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(before_, Window, message, wParam, lParam);
}

LRESULT Control::Native::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            if (pointer_ == Pointer::Plain) {
                // All of it is drawn at one go, with no need for a caret and a background to make way.
                ValidateRect(Window, nullptr);
                DrawAllHere();
                return 0;
            }
            break;
        case WM_ERASEBKGND:
            if (pointer_ == Pointer::Plain) return 1;
            break;
        case WM_MOUSEMOVE:
        case WM_NCMOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_XBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDBLCLK:
        case WM_XBUTTONDBLCLK:
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
        case WM_MBUTTONUP:
        case WM_XBUTTONUP: return HandlePointer(message, wParam, lParam);
        case WM_CAPTURECHANGED:
            if (std::exchange(pressed_, 0) != 0 && Owner->MouseUp) {
                Owner->MouseUp(0, 0);
                return 0;
            }
            break;
        case WM_SETFOCUS: {
            const LRESULT result = Default(message, wParam, lParam);
            Parent->FocusCame(*this);
            return result;
        }
        case WM_KEYDOWN:
            if (wParam == VK_TAB) {
                Parent->FocusNext(GetKeyState(VK_SHIFT) >= 0);
                return 0;
            }
            break;
        case WM_CHAR:
            if (wParam == L'\t') return 0;
            break;
        case WM_SYSCHAR:
            if (wParam != L' ') {
                Parent->PressAccessKey(static_cast<wchar_t>(wParam));
                return 0;
            }
            break;
        case WM_GETOBJECT:
            if (static_cast<LONG>(lParam) == OBJID_CLIENT) return AnswerAssistant(Window, wParam);
            break;
        case kPressLater:
            if (IsWindowEnabled(Parent->Window)) Press();
            return 0;
        default: break;
    }
    return Default(message, wParam, lParam);
}

LRESULT Control::Native::HandlePointer(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool moved = PointerHasMoved();
    // In pixels of the screen, from the corner of the whole window: part of it may be its own to draw.
    POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (message != WM_NCMOUSEMOVE) ClientToScreen(Window, &at);
    RECT whole;
    GetWindowRect(Window, &whole);
    const auto call = [&](const std::function<void(float, float)>& handler) {
        if (handler)
            handler(static_cast<float>((at.x - whole.left) / Density()),
                    static_cast<float>((at.y - whole.top) / Density()));
    };
    if (message == WM_MOUSEMOVE || message == WM_NCMOUSEMOVE) {
        if (moved) call(Owner->MouseMove);
        return pointer_ == Pointer::Plain ? 0 : Default(message, wParam, lParam);
    }
    // Down, up and the second down of a quick pair follow each other in the numbers of all buttons.
    const UINT first = message < WM_XBUTTONDOWN ? message - (message - WM_LBUTTONDOWN) % 3 : WM_XBUTTONDOWN;
    const bool up = message == first + 1;
    if (pointer_ == Pointer::System) {
        // The window would take the focus from a control that holds it back.
        if (!up && TakesFocus() && !Parent->MayLeaveTo(this)) return 0;
        return Default(message, wParam, lParam);
    }
    // A second button during a press has no part in it.
    if (!up) {
        if (pressed_ != 0) return 0;
        pressed_ = first;
        SetCapture(Window);
        call(Owner->MouseDown);
    } else if (pressed_ == first) {
        pressed_ = 0;
        ReleaseCapture();
        call(Owner->MouseUp);
        if (Owner->Click && PtInRect(&whole, at)) Owner->Click();
    }
    return 0;
}

void Control::Native::FontChanged() {
    SendMessageW(Window, WM_SETFONT, reinterpret_cast<WPARAM>(FontOf(Face)), TRUE);
}

Told Control::Native::Tell() const {
    Told told;
    told.Name = SpokenName.empty() && TakesFocus() ? Parent->NameFromLabel(*this) : SpokenName;
    told.Description = Description;
    return told;
}

void Control::Native::PressLater() const { PostMessageW(Window, kPressLater, 0, 0); }

void Control::Native::Press() {
    RECT area;
    GetClientRect(Window, &area);
    const auto x = static_cast<float>(area.right / 2 / Density());
    const auto y = static_cast<float>(area.bottom / 2 / Density());
    if (Owner->MouseDown) Owner->MouseDown(x, y);
    if (Owner->MouseUp) Owner->MouseUp(x, y);
    if (Owner->Click) Owner->Click();
}

COLORREF Control::Native::Back() const { return Themed ? ToColorRef(Look.Back) : Parent->Back; }

COLORREF Control::Native::Ink() const { return Themed ? ToColorRef(Look.Text) : GetSysColor(COLOR_BTNTEXT); }

// The order of the windows is that in which assistive technology walks through them, so the first lies on
// top. To the eye and the pointer it is the other way round.
void Control::Native::LeaveToLater() const {
    HRGN left = nullptr;
    for (const Native* later : Parent->Controls) {
        RECT common;
        if (later->Order <= Order || !IntersectRect(&common, &Place, &later->Place)) continue;
        OffsetRect(&common, -Place.left, -Place.top);
        if (left == nullptr) left = CreateRectRgn(0, 0, WidthOf(Place), HeightOf(Place));
        const HRGN taken = CreateRectRgnIndirect(&common);
        CombineRgn(left, left, taken, RGN_DIFF);
        DeleteObject(taken);
    }
    if (left != nullptr) SetWindowRgn(Window, left, FALSE);  // which now is the system's
}

// What lies above is drawn in windows of its own, and what lies below is only seen through what is
// transparent.
void Control::Native::DrawAllHere() {
    const Drawing drawing(Window);
    const HDC canvas = drawing.Canvas();
    SetViewportOrgEx(canvas, -Place.left, -Place.top, nullptr);
    Fill(canvas, Place, Parent->Back);
    int drawn = 0;
    for (Native* control : Parent->Controls) {
        const RECT& place = control->Place;
        RECT common;
        const bool seen = control == this || (Transparent() && control->Order < Order);
        if (!seen || !IntersectRect(&common, &Place, &place)) continue;
        Parent->DrawShapes(canvas, drawn, control->Order);
        drawn = control->Order;
        const int before = SaveDC(canvas);
        OffsetViewportOrgEx(canvas, place.left, place.top, nullptr);
        control->Draw(canvas, {0, 0, WidthOf(place), HeightOf(place)});
        RestoreDC(canvas, before);
    }
    Parent->DrawShapes(canvas, drawn, INT_MAX);
}

void Control::Native::Draw(HDC canvas, const RECT& area) { Fill(canvas, area, Back()); }

// With those above it through which it is seen.
void Control::Native::Invalidate(bool atOnce) {
    if (!IsWindowVisible(Parent->Window)) return;
    for (Native* control : Parent->Controls) {
        RECT common;
        if (control != this && !(control->Order > Order && control->Transparent() &&
                                 IntersectRect(&common, &Place, &control->Place)))
            continue;
        if (atOnce) {
            control->DrawAllHere();
        } else {
            InvalidateRect(control->Window, nullptr, FALSE);
        }
    }
}

Control::Control(std::unique_ptr<Native> native) : native_(std::move(native)) { native_->Owner = this; }

Control::~Control() = default;

void Control::SetColors(const Colors& colors) {
    native_->Look = colors;
    native_->Themed = true;
    native_->Invalidate();
}

void Control::SetFont(const Font& font) {
    native_->Face = font;
    native_->FontChanged();
}

void Control::SetSpokenName(std::string_view name) { native_->SpokenName = ToWide(name); }

void Control::SetDescription(std::string_view text) { native_->Description = ToWide(text); }

}  // namespace platform
