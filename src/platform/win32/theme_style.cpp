#include "platform/win32/theme_style.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>

namespace platform {
namespace {

// A triangle that points down or up, in the middle of a rectangle.
void DrawArrow(HDC canvas, const RECT& rect, COLORREF color, bool down) {
    const int half = Scaled(3);
    const int middle = (rect.left + rect.right) / 2;
    const int top = (rect.top + rect.bottom - half) / 2;
    for (int row = 0; row <= half; ++row) {
        const int reach = down ? half - row : row;
        Fill(canvas, {middle - reach, top + row, middle + reach + 1, top + row + 1}, color);
    }
}

COLORREF Darker(COLORREF color) {
    constexpr int kPercent = 150;
    return RGB(GetRValue(color) * 100 / kPercent, GetGValue(color) * 100 / kPercent,
               GetBValue(color) * 100 / kPercent);
}

}  // namespace

COLORREF SelectionOf(const Control::Native& control) { return Darker(control.Line()); }

void DrawCheckBox(HDC canvas, const RECT& area, const Control::Native& control, const CheckLook& look) {
    constexpr int kSide = 11, kLeft = 4, kText = kSide + 7;
    Fill(canvas, area, control.Back());
    const int side = Scaled(kSide);
    const int left = area.left + Scaled(kLeft);
    const int top = (area.top + area.bottom - side) / 2;
    DrawOutline(canvas, {left, top, left + side, top + side}, look.Active ? control.Ink() : control.Line());
    if (look.Checked) {
        const LOGBRUSH ink{BS_SOLID, control.Ink(), 0};
        const auto width = static_cast<DWORD>(Scaled(2));
        const HPEN pen =
            ExtCreatePen(PS_GEOMETRIC | PS_ENDCAP_ROUND | PS_JOIN_ROUND, width, &ink, 0, nullptr);
        const HGDIOBJ before = SelectObject(canvas, pen);
        const auto at = [&](double x, double y) { return POINT{left + Scaled(x), top + Scaled(y)}; };
        const std::array tick{at(2.7, 5.6), at(4.8, 8.0), at(8.6, 3.0)};
        Polyline(canvas, tick.data(), static_cast<int>(tick.size()));
        SelectObject(canvas, before);
        DeleteObject(pen);
    }
    RECT room = area;
    room.left += Scaled(kText);
    SetBkMode(canvas, TRANSPARENT);
    SetTextColor(canvas, control.Ink());
    DrawTextW(canvas, look.Caption.c_str(), -1, &room, DT_SINGLELINE | DT_VCENTER);
}

void DrawList(HDC canvas, const RECT& area, const Control::Native& control, std::wstring_view text) {
    Fill(canvas, area, control.Back());
    DrawOutline(canvas, area, GetFocus() == control.Window ? control.Ink() : control.Line());
    RECT arrow = area;
    arrow.left = area.right - Scaled(kArrowWidth);
    Fill(canvas, {arrow.left - Scaled(1), area.top + Scaled(1), arrow.left, area.bottom - Scaled(1)},
         control.Line());
    DrawArrow(canvas, arrow, control.Ink(), true);
    RECT room{area.left + Scaled(5), area.top, arrow.left - Scaled(1), area.bottom};
    SetTextColor(canvas, control.Ink());
    DrawTextW(canvas, text.data(), static_cast<int>(text.size()), &room,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

ScrollParts PartsOfScrollBar(const RECT& area, const ScrollRange& range) {
    constexpr int kShortest = 8;
    const int end = std::min(WidthOf(area), HeightOf(area) / 2);
    ScrollParts parts{area, area, area};
    parts.Up.bottom = parts.Slider.top = area.top + end;
    parts.Down.top = parts.Slider.bottom = area.bottom - end;
    const int way = HeightOf(parts.Slider);
    const int length =
        range.Movable() ? std::min(way, std::max(Scaled(kShortest), MulDiv(way, range.Visible, range.Count)))
                        : 0;
    const int steps = std::max(1, range.Count - range.Visible);
    parts.Slider.top += MulDiv(way - length, std::min(range.First, steps), steps);
    parts.Slider.bottom = parts.Slider.top + length;
    return parts;
}

void DrawScrollBar(HDC canvas, const RECT& area, const Control::Native& control, const ScrollRange& range,
                   bool held) {
    Fill(canvas, area, control.Back());
    Fill(canvas, {area.left, area.top, area.left + Scaled(1), area.bottom}, control.Line());
    const ScrollParts parts = PartsOfScrollBar(area, range);
    const COLORREF ink = range.Movable() ? control.Ink() : control.Line();
    DrawArrow(canvas, parts.Up, ink, false);
    DrawArrow(canvas, parts.Down, ink, true);
    if (!range.Movable()) return;
    const RECT& slider = parts.Slider;
    Fill(canvas,
         {slider.left + Scaled(3), slider.top + Scaled(1), slider.right - Scaled(2),
          slider.bottom - Scaled(1)},
         held ? control.Ink() : control.Line());
}

namespace {

struct MenuItem {
    const wchar_t* Text;  // null: a line
    const wchar_t* Key;
    UINT Message;
    WPARAM wParam;
    LPARAM lParam;
};
constexpr std::array kMenu{
    MenuItem{L"&Undo", L"Ctrl+Z", WM_UNDO, 0, 0},
    MenuItem{nullptr, nullptr, 0, 0, 0},
    MenuItem{L"Cu&t", L"Ctrl+X", WM_CUT, 0, 0},
    MenuItem{L"&Copy", L"Ctrl+C", WM_COPY, 0, 0},
    MenuItem{L"&Paste", L"Ctrl+V", WM_PASTE, 0, 0},
    MenuItem{L"&Delete", L"Del", WM_CLEAR, 0, 0},
    MenuItem{nullptr, nullptr, 0, 0, 0},
    MenuItem{L"Select &All", L"Ctrl+A", EM_SETSEL, 0, -1},
};

bool Possible(UINT message, HWND box) {
    const bool readOnly = (GetWindowLongPtrW(box, GWL_STYLE) & ES_READONLY) != 0;
    DWORD from = 0, to = 0;
    SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    switch (message) {
        case WM_UNDO: return !readOnly && SendMessageW(box, EM_CANUNDO, 0, 0) != 0;
        case WM_COPY: return from != to;
        case WM_CUT:
        case WM_CLEAR: return !readOnly && from != to;
        case WM_PASTE: return !readOnly && IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
        default: return GetWindowTextLengthW(box) > 0;
    }
}

constexpr int kMenuMargin = 16, kMenuGap = 24, kMenuLine = 20, kMenuDivider = 5;

}  // namespace

void ShowThemedMenu(const Control::Native& box, POINT at) {
    const HWND window = box.Window;
    const HMENU menu = CreatePopupMenu();
    const HBRUSH back = CreateSolidBrush(box.Back());
    MENUINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIM_BACKGROUND | MIM_STYLE;
    info.dwStyle = MNS_NOCHECK;
    info.hbrBack = back;
    SetMenuInfo(menu, &info);
    for (std::size_t i = 0; i < kMenu.size(); ++i) {
        const MenuItem& row = kMenu[i];
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STATE | MIIM_STRING;
        item.fType = MFT_OWNERDRAW | (row.Text == nullptr ? MFT_SEPARATOR : 0U);
        item.fState = row.Text != nullptr && Possible(row.Message, window) ? MFS_ENABLED : MFS_DISABLED;
        item.wID = static_cast<UINT>(i + 1);
        item.dwTypeData = const_cast<wchar_t*>(row.Text);
        InsertMenuItemW(menu, static_cast<UINT>(i), TRUE, &item);
    }
    const BOOL chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
    DestroyMenu(menu);
    DeleteObject(back);
    if (chosen == 0) return;
    const MenuItem& row = kMenu[static_cast<std::size_t>(chosen - 1)];
    if (Possible(row.Message, window)) SendMessageW(window, row.Message, row.wParam, row.lParam);
}

LRESULT EntryOfKey(wchar_t key) {
    for (std::size_t i = 0; i < kMenu.size(); ++i) {
        const wchar_t* mark = kMenu[i].Text == nullptr ? nullptr : std::wcschr(kMenu[i].Text, L'&');
        if (mark != nullptr && ParsedCaption{mark + 1, 0}.IsKey(key)) return MAKELRESULT(i, MNC_EXECUTE);
    }
    return 0;
}

void MeasureThemedMenu(MEASUREITEMSTRUCT& item) {
    const MenuItem& row = kMenu.at(item.itemID - 1);
    item.itemHeight = static_cast<UINT>(Scaled(row.Text == nullptr ? kMenuDivider : kMenuLine));
    int widest = 0;
    for (const MenuItem& other : kMenu) {
        if (other.Text == nullptr) continue;
        widest = std::max(widest, WidthOf(FontOf(Font{}), other.Text) + WidthOf(FontOf(Font{}), other.Key));
    }
    item.itemWidth = static_cast<UINT>(widest + Scaled(kMenuGap + 2 * kMenuMargin));
}

void DrawThemedMenu(const DRAWITEMSTRUCT& item, const Control::Native& box) {
    const MenuItem& row = kMenu.at(item.itemID - 1);
    const HDC canvas = item.hDC;
    const bool disabled = (item.itemState & (ODS_DISABLED | ODS_GRAYED)) != 0;
    const bool selected = (item.itemState & ODS_SELECTED) != 0 && !disabled;
    Fill(canvas, item.rcItem, selected ? SelectionOf(box) : box.Back());
    if (row.Text == nullptr) {
        const int middle = (item.rcItem.top + item.rcItem.bottom) / 2;
        Fill(canvas, {item.rcItem.left, middle, item.rcItem.right, middle + Scaled(1)}, box.Line());
        return;
    }
    RECT room = item.rcItem;
    InflateRect(&room, -Scaled(kMenuMargin), 0);
    SelectObject(canvas, FontOf(Font{}));
    SetBkMode(canvas, TRANSPARENT);
    SetTextColor(canvas, disabled ? box.Line() : box.Ink());
    DrawTextW(canvas, row.Text, -1, &room, DT_SINGLELINE | DT_VCENTER);
    DrawTextW(canvas, row.Key, -1, &room, DT_SINGLELINE | DT_VCENTER | DT_RIGHT);
}

}  // namespace platform
