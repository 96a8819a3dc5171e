#include <windows.h>

#include <oleacc.h>
#include <uxtheme.h>

#include <utility>

#include "platform/controls.h"
#include "platform/win32/theme_style.h"
#include "platform/win32/toolkit.h"

namespace platform {
namespace {

constexpr int kMostVisible = 20;

// Sent later to the list itself, when the system is through with a choice.
constexpr UINT kChosen = WM_APP + 2;

WNDPROC openListBefore = nullptr;  // the same for all

LRESULT CALLBACK OpenListProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MOUSEMOVE) PointerHasMoved();
    const LRESULT result = CallWindowProcW(openListBefore, window, message, wParam, lParam);
    const Control::Native* list =
        Control::Native::Of(reinterpret_cast<HWND>(GetWindowLongPtrW(window, GWLP_USERDATA)));
    // Printed while the list slides open.
    const bool printed = message == WM_PRINT;
    if ((message != WM_NCPAINT && !printed) || list == nullptr || !list->Themed) return result;
    RECT whole;
    GetWindowRect(window, &whole);
    OffsetRect(&whole, -whole.left, -whole.top);
    const HDC canvas = printed ? reinterpret_cast<HDC>(wParam) : GetWindowDC(window);
    DrawOutline(canvas, whole, list->Line());
    if (!printed) ReleaseDC(window, canvas);
    return 0;
}

HWND OpenWindow(HWND list) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(list, &info);
    return info.hwndList;
}

// The system's drop-down list, drawn by the theme in a frameless window. What is highlighted in the open list
// is no choice before the list closes, so the entry that is chosen is kept here.
struct ListNative : Control::Native {
    ListNative(Form& form, std::string_view name, const Rect& place)
        : Native(form, name, place, L"COMBOBOX",
                 CBS_DROPDOWNLIST | WS_VSCROLL | (IsThemed(form) ? CBS_OWNERDRAWFIXED | CBS_HASSTRINGS : 0),
                 Pointer::System) {
        SendMessageW(Window, CB_SETMINVISIBLE, kMostVisible, 0);
        if (!IsThemed(form)) return;
        SetWindowTheme(Window, L"", L"");
        SetWindowLongPtrW(OpenWindow(Window), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(Window));
        openListBefore = Subclassed(OpenWindow(Window), OpenListProcedure);
    }

    static bool IsThemed(const Form& form) { return form.Toolkit().Frame == FormFrame::None; }
    bool TakesFocus() const override { return true; }
    void Close() const override { SendMessageW(Window, CB_SHOWDROPDOWN, FALSE, 0); }

    int Selected() const { return static_cast<int>(SendMessageW(Window, CB_GETCURSEL, 0, 0)); }
    void Select(int index) { SendMessageW(Window, CB_SETCURSEL, static_cast<WPARAM>(index), 0); }
    std::wstring Entry(int index) const;

    void FontChanged() override;
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Notified(UINT code) override;
    void DrawItem(const DRAWITEMSTRUCT& item) const override;
    Told Tell() const override {
        Told told = Native::Tell();
        told.Role = ROLE_SYSTEM_COMBOBOX;
        told.Value = Entry(Index);
        return told;
    }

    int Index = -1;  // the entry that is chosen

 private:
    const DropDownList& List() const { return *static_cast<const DropDownList*>(Owner); }
    bool IsOpen() const { return SendMessageW(Window, CB_GETDROPPEDSTATE, 0, 0) != 0; }
    bool HighlightNext(wchar_t character) const;
    void Later(bool accepted);

    bool accepted_ = false;
    bool waiting_ = false;  // for the system to be through
};

std::wstring ListNative::Entry(int index) const {
    const LRESULT length = SendMessageW(Window, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    if (index < 0 || length == CB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    SendMessageW(Window, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    return text;
}

// The system makes a closed list as high as its font wants it, and a border.
void ListNative::FontChanged() {
    Native::FontChanged();
    const int line = static_cast<int>(MetricsOf(FontOf(Face)).tmHeight) + Scaled(2);
    SendMessageW(Window, CB_SETITEMHEIGHT, 0, line);
    SendMessageW(Window, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), line);
    RECT now;
    GetWindowRect(Window, &now);
    SendMessageW(Window, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), line + HeightOf(Place) - HeightOf(now));
}

LRESULT ListNative::Message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            if (!Themed) break;
            ValidateRect(Window, nullptr);
            const Drawing drawing(Window);
            SelectObject(drawing.Canvas(), FontOf(Face));
            DrawList(drawing.Canvas(), drawing.Area(), *this, Entry(Index));
            return 0;
        }
        case WM_CTLCOLORLISTBOX:
            if (!Themed) break;
            SetDCBrushColor(reinterpret_cast<HDC>(wParam), Back());
            return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
        case WM_CHAR:
            if (wParam == L'\t') break;
            if (List().KeyPress) List().KeyPress();
            if (IsOpen() && HighlightNext(static_cast<wchar_t>(wParam))) return 0;
            break;
        case WM_SYSKEYDOWN:
            // Some systems' list would keep Alt+F4.
            if (wParam == VK_F4) return DefWindowProcW(Window, message, wParam, lParam);
            break;
        case WM_MOUSEWHEEL:
            // A wheel that passes over the window must not change a list that the focus never was in.
            if (GetFocus() != Window) return 0;
            break;
        case kChosen:
            waiting_ = false;
            if (wParam == FALSE) Select(Index);
            Index = Selected();
            Invalidate();
            if (wParam != FALSE && Owner->Click) Owner->Click();
            return 0;
        default: break;
    }
    const HWND window = Window;
    const LRESULT result = Native::Message(message, wParam, lParam);
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONUP:
        case WM_MOUSEMOVE:
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_CAPTURECHANGED:
            // The system may have drawn some of it by itself.
            InvalidateRect(window, nullptr, FALSE);
            break;
        default: break;
    }
    return result;
}

// The next entry that begins with a character. Left to itself some systems take that for a choice.
bool ListNative::HighlightNext(wchar_t character) const {
    const wchar_t begin[] = {character, L'\0'};
    const LRESULT found = character <= L' '
                              ? CB_ERR
                              : SendMessageW(Window, CB_FINDSTRING, static_cast<WPARAM>(Selected()),
                                             reinterpret_cast<LPARAM>(begin));
    if (found != CB_ERR) SendMessageW(OpenWindow(Window), LB_SETCURSEL, static_cast<WPARAM>(found), 0);
    return character > L' ';
}

void ListNative::Later(bool accepted) {
    if (std::exchange(waiting_, true)) return;
    PostMessageW(Window, kChosen, accepted ? TRUE : FALSE, 0);
}

// In what order the system tells of a choice and of the closing of the list is left to it.
void ListNative::Notified(UINT code) {
    switch (code) {
        case CBN_DROPDOWN:
            accepted_ = false;
            if (List().DropDown) List().DropDown();
            break;
        case CBN_SELENDOK: accepted_ = true; break;
        case CBN_SELENDCANCEL: accepted_ = false; break;
        case CBN_CLOSEUP: Later(accepted_); break;
        case CBN_SELCHANGE:
            if (!IsOpen() && Selected() != Index) Later(true);
            break;
        default: break;
    }
}

void ListNative::DrawItem(const DRAWITEMSTRUCT& item) const {
    if ((item.itemState & ODS_COMBOBOXEDIT) != 0 || static_cast<int>(item.itemID) < 0) return;
    Fill(item.hDC, item.rcItem, (item.itemState & ODS_SELECTED) != 0 ? SelectionOf(*this) : Back());
    RECT room = item.rcItem;
    room.left += Scaled(4);
    SelectObject(item.hDC, FontOf(Face));
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, Ink());
    DrawTextW(item.hDC, Entry(static_cast<int>(item.itemID)).c_str(), -1, &room,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

}  // namespace

DropDownList::DropDownList(Form& form, std::string_view name, const Rect& place)
    : Control(std::make_unique<ListNative>(form, name, place)) {}

void DropDownList::AddItem(std::string_view text) {
    SendMessageW(Toolkit().Window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
}

int DropDownList::ListIndex() const { return static_cast<ListNative&>(Toolkit()).Index; }

void DropDownList::SetListIndex(int index) {
    auto& list = static_cast<ListNative&>(Toolkit());
    list.Select(index);
    list.Index = list.Selected();
    list.Invalidate();
    if (Click) Click();
}

std::string DropDownList::Text() const {
    const auto& list = static_cast<ListNative&>(Toolkit());
    return FromWide(list.Entry(list.Index));
}

}  // namespace platform
