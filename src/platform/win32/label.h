#pragma once

#include "platform/win32/toolkit.h"

namespace platform {

// Draws a label; what happens on it is its control's business.
struct LabelNative : Control::Native {
    LabelNative(Form& form, std::string_view name, const Rect& place, const Label::Style& style);

    void Draw(HDC canvas, const RECT& area) override;
    bool Transparent() const override { return Style.Transparent; }
    void FontChanged() override;
    const ParsedCaption* Caption() const override { return &Parsed; }
    void AccessKey() override { Parent->FocusBehind(*this); }
    Told Tell() const override;

    void SetCaption(std::string_view caption);
    // The font that the caption is drawn in to stay whole.
    HFONT DrawnFont();
    bool Fits(HFONT font) const;

    Label::Style Style;
    std::string Text;  // as it was set
    ParsedCaption Parsed;
    bool Bordered = false;

 private:
    RECT Room() const;

    HFONT fitted_ = nullptr;  // worked out at the first drawing of a caption
};

}  // namespace platform
