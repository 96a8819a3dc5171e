#pragma once

#include "platform/win32/toolkit.h"

namespace platform {

// Small dark controls with one-pixel lines, in the colours of a control.

inline constexpr int kArrowWidth = 15;  // of a list, in the layout's pixels
inline constexpr int kScrollBarWidth = 13;

struct CheckLook {
    std::wstring Caption;
    bool Checked;
    bool Active;
};
void DrawCheckBox(HDC canvas, const RECT& area, const Control::Native& control, const CheckLook& look);

// A closed drop-down list with the text of its entry.
void DrawList(HDC canvas, const RECT& area, const Control::Native& control, std::wstring_view text);

struct ScrollRange {
    int First = 0;    // the line at the top
    int Visible = 1;  // lines that can be seen
    int Count = 1;

    bool Movable() const { return Count > Visible; }
    friend bool operator==(const ScrollRange&, const ScrollRange&) = default;
};
// The parts of a scroll bar from top to bottom; without a slider where there is nothing to scroll.
struct ScrollParts {
    RECT Up, Slider, Down;
};
ScrollParts PartsOfScrollBar(const RECT& area, const ScrollRange& range);
void DrawScrollBar(HDC canvas, const RECT& area, const Control::Native& control, const ScrollRange& range,
                   bool held);

COLORREF SelectionOf(const Control::Native& control);

// Shows a text box's menu and does what is chosen. The box is told to measure and draw the entries, and of
// keys, since the system does not look for one in what it does not draw.
void ShowThemedMenu(const Control::Native& box, POINT at);
LRESULT EntryOfKey(wchar_t key);
void MeasureThemedMenu(MEASUREITEMSTRUCT& item);
void DrawThemedMenu(const DRAWITEMSTRUCT& item, const Control::Native& box);

}  // namespace platform
