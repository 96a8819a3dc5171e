#include <windows.h>

#include <usp10.h>
#include <windowsx.h>

#include <algorithm>
#include <climits>
#include <utility>

#include "platform/controls.h"
#include "platform/win32/pasted_text.h"
#include "platform/win32/theme_style.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

constexpr UINT_PTR kScrollTimer = 100;                 // not one of the system's own
constexpr UINT kFirstRepeat = 300, kNextRepeat = 50;   // in milliseconds
constexpr wchar_t kSelectAll = 1, kDeleteWord = 0x7F;  // the characters of Ctrl+A and Ctrl+Backspace

DWORD WindowStyle(const TextBox::Style& style) {
    DWORD flags = style.MultiLine ? ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL : ES_AUTOHSCROLL;
    if (style.ReadOnly) flags |= ES_READONLY;
    if (style.ScrollBar && style.Framed) flags |= WS_VSCROLL;
    if (style.Align == Alignment::Centre) flags |= ES_CENTER;
    if (style.Align == Alignment::Right) flags |= ES_RIGHT;
    return flags;
}

// The most that a paste makes of a text, in the system's characters. The system takes a time to lay a text
// out that grows with the square of a line's length.
constexpr std::size_t kMostInLine = 8 << 10, kMostInLines = 128 << 10;
constexpr std::size_t kMostWork = 16 << 20;  // that many characters, each as often as stand before it

// Where a text ends that can be laid out in a moment, put into a line of so many characters.
std::size_t EndOfWork(std::wstring_view text, std::size_t line) {
    std::size_t work = line * line / 2;
    for (std::size_t i = 0; i < text.size(); ++i) {
        line = text[i] == L'\n' ? 0 : line + 1;
        work += line;
        if (work > kMostWork) return i;
    }
    return text.size();
}

// CR LF for every line break of several lines, a blank for each character of one in one line.
std::wstring WithLineBreaks(std::wstring_view text, bool several) {
    constexpr wchar_t kLineSeparator = 0x2028, kParagraphSeparator = 0x2029;
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (several && (c == L'\r' || c == L'\n')) {
            result += L"\r\n";
            if (c == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') ++i;
        } else if (!several &&
                   (c == L'\r' || c == L'\n' || c == kLineSeparator || c == kParagraphSeparator)) {
            result += L' ';
        } else {
            result += c;
        }
    }
    return result;
}

// The system's text box. In a themed window it has its own frame, scroll bar and menu, in the part of the
// window that the system leaves to it, and its selection is drawn over the system's.
struct TextBoxNative : Control::Native {
    TextBoxNative(Form& form, std::string_view name, const Rect& place, const TextBox::Style& style)
        : Native(form, name, place, L"EDIT", WindowStyle(style), Pointer::System,
                 style.Framed ? WS_EX_CLIENTEDGE : 0),
          Style(style) {
        LimitLength();
    }

    bool TakesFocus() const override { return true; }
    bool TabStop() const override { return Style.TabStop; }
    void FocusByKey() override {
        Native::FocusByKey();
        if (!Style.MultiLine && Parent->Focused == this) SendMessageW(Window, EM_SETSEL, 0, -1);
    }
    void FontChanged() override {
        Native::FontChanged();
        if (Style.Framed) return;
        SetWindowPos(Window, nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
        SendMessageW(Window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(Scaled(1), 0));
    }
    void Notified(UINT code) override {
        if (code == EN_CHANGE && !setting_) Changed();
    }

    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;

    void SetText(std::string_view text);

    const TextBox::Style Style;

 private:
    void Changed() const;
    void Paste();
    void DeleteWord() const;
    void LimitLength() const {
        const int most = Style.MaxLength > 0 ? Style.MaxLength : INT_MAX;
        SendMessageW(Window, EM_SETLIMITTEXT, static_cast<WPARAM>(most), 0);
    }
    std::pair<int, int> Selection() const;
    int LineHeight() const { return static_cast<int>(MetricsOf(FontOf(Face)).tmHeight); }
    RECT BarOnScreen() const;
    ScrollRange Range() const;
    void DrawFrame();
    void DrawSelection() const;
    bool HasBar() const { return Style.ScrollBar && !Style.Framed; }
    bool Held() const { return heldStep_ != 0 || heldGrip_ >= 0; }
    bool HoldBar(POINT at);
    void MoveBar(POINT at);
    // To the last page at most; the system by itself goes on until the last line is at the top.
    void Scroll(int lines) const {
        const ScrollRange range = Range();
        const int rest = std::max(0, range.Count - range.Visible - range.First);
        SendMessageW(Window, EM_LINESCROLL, 0, std::min(lines, rest));
    }

    bool setting_ = false;
    // What is held of the scroll bar: lines that each step moves, or the slider by a grip below its top.
    int heldStep_ = 0;
    int heldGrip_ = -1;
    int wheel_ = 0;  // turned, and not yet a line
    ScrollRange drawn_{};
};

LRESULT TextBoxNative::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCALCSIZE: {
            if (Style.Framed) break;
            // One line stands in the middle of the height; a scroll bar stands at the right.
            RECT& area = *reinterpret_cast<RECT*>(lParam);
            if (!Style.MultiLine) {
                const int spare = std::max(0, HeightOf(area) - LineHeight());
                area.top += spare / 2;
                area.bottom -= spare - spare / 2;
            }
            if (HasBar()) area.right -= Scaled(kScrollBarWidth);
            return 0;
        }
        case WM_NCPAINT:
            if (Style.Framed) break;
            DrawFrame();
            return 0;
        case WM_NCHITTEST: {
            if (Style.Framed) break;
            const RECT place = BarOnScreen();
            return HasBar() && PtInRect(&place, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}) ? HTVSCROLL
                                                                                              : HTCLIENT;
        }
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
            if (!HasBar() || !HoldBar({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)})) break;
            return 0;
        case WM_MOUSEMOVE:
            if (!Held()) break;
            if (heldGrip_ >= 0) {
                POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
                ClientToScreen(Window, &at);
                MoveBar(at);
            }
            return 0;
        case WM_LBUTTONUP:
            if (!Held()) break;
            ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            if (!Held()) break;
            KillTimer(Window, kScrollTimer);
            heldStep_ = 0;
            heldGrip_ = -1;
            DrawFrame();
            return 0;
        case WM_TIMER:
            if (wParam != kScrollTimer || heldStep_ == 0) break;
            Scroll(heldStep_);
            SetTimer(Window, kScrollTimer, kNextRepeat, nullptr);
            break;
        case WM_MOUSEWHEEL: {
            if (!HasBar()) break;
            UINT lines = 3;
            SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
            wheel_ += GET_WHEEL_DELTA_WPARAM(wParam) * static_cast<int>(std::min(lines, 100U));
            Scroll(-wheel_ / WHEEL_DELTA);
            wheel_ %= WHEEL_DELTA;
            DrawFrame();
            return 0;
        }
        case WM_KEYDOWN:
            // With a character behind it that is not the same everywhere.
            if (wParam != VK_BACK || GetKeyState(VK_CONTROL) >= 0) break;
            DeleteWord();
            return 0;
        case WM_CHAR:
            if (wParam == kSelectAll) {
                SendMessageW(Window, EM_SETSEL, 0, -1);
                return 0;
            }
            // The system would put in the character, or complain.
            if (wParam == kDeleteWord || (!Style.MultiLine && (wParam == L'\r' || wParam == L'\x1B')))
                return 0;
            break;
        case WM_PASTE: Paste(); return 0;
        case WM_CONTEXTMENU: {
            if (Style.Framed) break;
            POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
            if (lParam == -1) {
                at = {0, LineHeight()};
                ClientToScreen(Window, &at);
            }
            if (Parent->MayLeaveTo(this)) SetFocus(Window);
            ShowThemedMenu(*this, at);
            return 0;
        }
        case WM_MEASUREITEM: MeasureThemedMenu(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)); return TRUE;
        case WM_MENUCHAR: return EntryOfKey(static_cast<wchar_t>(LOWORD(wParam)));
        case WM_DRAWITEM: DrawThemedMenu(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam), *this); return TRUE;
        default: break;
    }
    const HWND window = Window;
    const LRESULT result = Native::Message(message, wParam, lParam);
    // What a handler did may have taken the box away.
    if (Of(window) != this || Style.Framed) return result;
    switch (message) {
        case WM_PAINT:
        case WM_TIMER:
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_KEYDOWN:
        case WM_CHAR:
        case WM_SETFOCUS:
        case EM_SETSEL:
        case EM_REPLACESEL:
        case EM_LINESCROLL:
        case WM_SETTEXT:
        case WM_UNDO:
            DrawSelection();
            if (HasBar() && Range() != drawn_) DrawFrame();
            break;
        default: break;
    }
    return result;
}

std::pair<int, int> TextBoxNative::Selection() const {
    DWORD from = 0, to = 0;
    SendMessageW(Window, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    return {static_cast<int>(from), static_cast<int>(to)};
}

RECT TextBoxNative::BarOnScreen() const {
    RECT place;
    GetWindowRect(Window, &place);
    place.left = place.right - Scaled(kScrollBarWidth);
    return place;
}

ScrollRange TextBoxNative::Range() const {
    RECT room;
    SendMessageW(Window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
    return {static_cast<int>(SendMessageW(Window, EM_GETFIRSTVISIBLELINE, 0, 0)),
            std::max(1, HeightOf(room) / LineHeight()),
            static_cast<int>(SendMessageW(Window, EM_GETLINECOUNT, 0, 0))};
}

bool TextBoxNative::HoldBar(POINT at) {
    const ScrollRange range = Range();
    if (!range.Movable()) return false;
    const ScrollParts parts = PartsOfScrollBar(BarOnScreen(), range);
    const int page = std::max(1, range.Visible - 1);
    if (PtInRect(&parts.Slider, at)) {
        heldGrip_ = static_cast<int>(at.y - parts.Slider.top);
    } else if (at.y < parts.Slider.top) {
        heldStep_ = at.y < parts.Up.bottom ? -1 : -page;
    } else {
        heldStep_ = at.y >= parts.Down.top ? 1 : page;
    }
    SetCapture(Window);
    Scroll(heldStep_);
    if (heldStep_ != 0) SetTimer(Window, kScrollTimer, kFirstRepeat, nullptr);
    DrawFrame();
    return true;
}

void TextBoxNative::MoveBar(POINT at) {
    const ScrollRange range = Range();
    const ScrollParts parts = PartsOfScrollBar(BarOnScreen(), range);
    const int way = static_cast<int>(parts.Down.top - parts.Up.bottom) - HeightOf(parts.Slider);
    const int top = static_cast<int>(at.y - parts.Up.bottom) - heldGrip_;
    const int line =
        MulDiv(std::clamp(top, 0, std::max(0, way)), range.Count - range.Visible, std::max(1, way));
    Scroll(line - range.First);
}

// All of the window that the system leaves to the box.
void TextBoxNative::DrawFrame() {
    RECT whole, inside;
    GetWindowRect(Window, &whole);
    GetClientRect(Window, &inside);
    MapWindowPoints(Window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
    OffsetRect(&inside, -whole.left, -whole.top);
    OffsetRect(&whole, -whole.left, -whole.top);
    const HDC canvas = GetWindowDC(Window);
    ExcludeClipRect(canvas, inside.left, inside.top, inside.right, inside.bottom);
    Fill(canvas, whole, Back());
    if (HasBar()) {
        drawn_ = Range();
        whole.left = whole.right - Scaled(kScrollBarWidth);
        DrawScrollBar(canvas, whole, *this, drawn_, heldGrip_ >= 0);
    }
    ReleaseDC(Window, canvas);
}

// The system draws a selection in colours of its own.
void TextBoxNative::DrawSelection() const {
    const auto [from, to] = Selection();
    if (from == to || GetFocus() != Window) return;
    const HDC canvas = GetDC(Window);
    HideCaret(Window);
    RECT room;
    SendMessageW(Window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&room));
    IntersectClipRect(canvas, room.left, room.top, room.right, room.bottom);
    SelectObject(canvas, FontOf(Face));
    SetTextColor(canvas, Ink());
    SetBkMode(canvas, TRANSPARENT);
    const ScrollRange range = Range();
    const auto lineOf = [this](int at) {
        return static_cast<int>(SendMessageW(Window, EM_LINEFROMCHAR, static_cast<WPARAM>(at), 0));
    };
    const int last = std::min(lineOf(to), range.First + range.Visible);
    for (int line = std::max(lineOf(from), Style.MultiLine ? range.First : 0); line <= last; ++line) {
        const auto begin = static_cast<int>(SendMessageW(Window, EM_LINEINDEX, static_cast<WPARAM>(line), 0));
        const auto length =
            static_cast<int>(SendMessageW(Window, EM_LINELENGTH, static_cast<WPARAM>(begin), 0));
        const int first = std::max(from, begin), end = std::min(to, begin + length);
        if (first >= end) continue;
        std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
        text[0] = static_cast<wchar_t>(std::min<int>(length, 0xFFFF));  // the room, where the text will be
        SendMessageW(Window, EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data()));
        const auto at =
            static_cast<DWORD>(SendMessageW(Window, EM_POSFROMCHAR, static_cast<WPARAM>(begin), 0));
        const int x = GET_X_LPARAM(at), y = GET_Y_LPARAM(at);
        // By the means of the box itself, which takes what the font does not have from other fonts.
        const DWORD flags = SSA_GLYPHS | SSA_FALLBACK | SSA_LINK | (Style.MultiLine ? SSA_TAB : 0);
        SCRIPT_STRING_ANALYSIS laidOut = nullptr;
        SCRIPT_TABDEF tabs{};
        if (ScriptStringAnalyse(canvas, text.data(), length, length * 3 / 2 + 16, -1, flags, 0, nullptr,
                                nullptr, nullptr, &tabs, nullptr, &laidOut) != S_OK)
            continue;
        int left = 0, right = 0;
        ScriptStringCPtoX(laidOut, first - begin, FALSE, &left);
        ScriptStringCPtoX(laidOut, end - begin - 1, TRUE, &right);
        const int saved = SaveDC(canvas);
        const RECT part{x + std::min(left, right), y, x + std::max(left, right), y + LineHeight()};
        IntersectClipRect(canvas, part.left, part.top, part.right, part.bottom);
        Fill(canvas, part, SelectionOf(*this));
        ScriptStringOut(laidOut, x, y, 0, nullptr, 0, 0, FALSE);
        ScriptStringFree(&laidOut);
        RestoreDC(canvas, saved);
    }
    ShowCaret(Window);
    ReleaseDC(Window, canvas);
}

void TextBoxNative::Paste() {
    if (Style.ReadOnly) return;
    const std::size_t most = Style.MaxLength > 0 ? static_cast<std::size_t>(Style.MaxLength)
                             : Style.MultiLine   ? kMostInLines
                                                 : kMostInLine;
    std::wstring text = WithLineBreaks(ClipboardText(most), Style.MultiLine);
    const std::wstring before = TextOf(Window);
    const auto [from, to] = Selection();
    // A text that is longer already may be edited, but not grow.
    const std::size_t rest = before.size() - static_cast<std::size_t>(to - from);
    text.resize(std::min(text.size(), std::max(most, before.size()) - rest));
    if (Style.MultiLine) {
        const std::wstring_view line = before;
        const auto begin = line.substr(0, static_cast<std::size_t>(from)).rfind(L'\n') + 1;
        const auto end = std::min(line.find(L'\r', static_cast<std::size_t>(to)), line.size());
        text.resize(EndOfWork(text, end - begin - static_cast<std::size_t>(to - from)));
    }
    // Not half of a character or line break.
    if (!text.empty() && (IS_HIGH_SURROGATE(text.back()) || text.back() == L'\r')) text.pop_back();
    SendMessageW(Window, EM_SETLIMITTEXT, INT_MAX, 0);
    SendMessageW(Window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    LimitLength();
}

// What is selected, or the word ahead, or the line break ahead.
void TextBoxNative::DeleteWord() const {
    if (Style.ReadOnly) return;
    auto [from, to] = Selection();
    if (from == to) {
        std::wstring text = TextOf(Window).substr(0, static_cast<std::size_t>(to));
        text.erase(text.find_last_not_of(L" \t") + 1);
        from = static_cast<int>(text.size());
        if (!text.ends_with(L'\n')) {
            from = static_cast<int>(text.find_last_of(L" \t\n") + 1);
        } else if (from == to) {
            from -= 2;
        }
    }
    if (from == to) return;
    SendMessageW(Window, EM_SETSEL, static_cast<WPARAM>(from), to);
    SendMessageW(Window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L""));
}

// What is set cannot be undone, and a text that is there already is no change.
void TextBoxNative::SetText(std::string_view text) {
    const std::wstring wanted = WithLineBreaks(ToWide(text), Style.MultiLine);
    const bool changes = TextOf(Window) != wanted;
    if (changes) {
        setting_ = true;
        SetWindowTextW(Window, wanted.c_str());
        setting_ = false;
    }
    SendMessageW(Window, EM_EMPTYUNDOBUFFER, 0, 0);
    if (changes) Changed();
}

void TextBoxNative::Changed() const {
    const TextBox& box = *static_cast<const TextBox*>(Owner);
    if (box.Change) box.Change();
}

}  // namespace

TextBox::TextBox(Form& form, std::string_view name, const Rect& place, const Style& style)
    : Control(std::make_unique<TextBoxNative>(form, name, place, style)) {}

std::string TextBox::Text() const { return FromWide(TextOf(Toolkit().Window)); }

void TextBox::SetText(std::string_view text) { static_cast<TextBoxNative&>(Toolkit()).SetText(text); }

void TextBox::SetDigitsOnly() {
    const HWND box = Toolkit().Window;
    SetWindowLongPtrW(box, GWL_STYLE, GetWindowLongPtrW(box, GWL_STYLE) | ES_NUMBER);
}

}  // namespace platform
