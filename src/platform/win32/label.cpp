#include "platform/win32/label.h"

#include <windows.h>

#include <oleacc.h>

#include <algorithm>

namespace platform {
namespace {

UINT DrawingFormat(const Label::Style& style) {
    UINT format = style.Wrapped ? DT_WORDBREAK : DT_SINGLELINE;
    if (style.Align == Alignment::Centre) format |= DT_CENTER;
    if (style.Align == Alignment::Right) format |= DT_RIGHT;
    return format;
}

}  // namespace

LabelNative::LabelNative(Form& form, std::string_view name, const Rect& place, const Label::Style& style)
    : Native(form, name, place, nullptr, 0, Pointer::Plain), Style(style) {}

void LabelNative::SetCaption(std::string_view caption) {
    if (caption == Text) return;
    Text = caption;
    Parsed = ParseCaption(caption);
    fitted_ = nullptr;
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, Window, OBJID_CLIENT, CHILDID_SELF);
    // A press may change many, and each that is drawn later costs the system four times as much.
    Invalidate(true);
}

void LabelNative::FontChanged() {
    fitted_ = nullptr;
    Invalidate();
}

RECT LabelNative::Room() const {
    RECT room;
    GetClientRect(Window, &room);
    if (!Style.Transparent) InflateRect(&room, -Scaled(2), 0);
    return room;
}

bool LabelNative::Fits(HFONT font) const {
    const RECT room = Room();
    RECT taken{0, 0, WidthOf(room), 0};
    DrawTextW(MeasuringIn(font), Parsed.Marked().c_str(), -1, &taken, DrawingFormat(Style) | DT_CALCRECT);
    return WidthOf(taken) <= WidthOf(room) && (!Style.Wrapped || HeightOf(taken) <= HeightOf(room));
}

// The font in which the text stays whole: narrower first, then smaller. What a user cannot read at three
// quarters of the width would not be helped by going on.
HFONT LabelNative::DrawnFont() {
    if (fitted_ != nullptr) return fitted_;
    fitted_ = FontOf(Face);
    constexpr int kNarrowest = 72, kSmallest = 7;
    for (int pixels = PixelsOf(Face); !Fits(fitted_) && pixels >= Scaled(kSmallest); --pixels) {
        for (int percent = 100; percent >= kNarrowest; percent -= 4) {
            fitted_ = FontOf(Face, pixels, percent);
            if (Fits(fitted_)) break;
        }
    }
    return fitted_;
}

void LabelNative::Draw(HDC canvas, const RECT& area) {
    if (!Style.Transparent) Fill(canvas, area, Back());
    if (Bordered) {
        // One pixel inside the edge, where no outline of the window hides it.
        RECT inside = area;
        InflateRect(&inside, -Scaled(1), -Scaled(1));
        DrawOutline(canvas, inside, Ink());
    }
    RECT room = Room();
    SelectObject(canvas, DrawnFont());
    SetTextColor(canvas, Ink());
    DrawTextW(canvas, Parsed.Marked().c_str(), -1, &room,
              DrawingFormat(Style) | (Style.Wrapped ? 0 : DT_VCENTER));
}

Told LabelNative::Tell() const {
    Told told = Native::Tell();
    told.Name = Parsed.Text;
    told.Role = Style.Button   ? ROLE_SYSTEM_PUSHBUTTON
                : Style.Status ? ROLE_SYSTEM_STATUSBAR
                               : ROLE_SYSTEM_STATICTEXT;
    if (Style.Button) told.Action = L"Press";
    return told;
}

Label::Label(Form& form, std::string_view name, const Rect& place, const Style& style)
    : Control(std::make_unique<LabelNative>(form, name, place, style)) {}

std::string Label::Caption() const { return static_cast<LabelNative&>(Toolkit()).Text; }

void Label::SetCaption(std::string_view caption) { static_cast<LabelNative&>(Toolkit()).SetCaption(caption); }

int Label::BorderStyle() const { return static_cast<LabelNative&>(Toolkit()).Bordered ? 1 : 0; }

void Label::SetBorderStyle(int style) {
    auto& label = static_cast<LabelNative&>(Toolkit());
    if (label.Bordered == (style == 1)) return;
    label.Bordered = style == 1;
    label.Invalidate();
}

}  // namespace platform
