#include "support/robot.h"

#include <algorithm>

#include "platform/application.h"

// What is alike on all desktops.
namespace robot {

Point Middle(std::string_view form, std::string_view control) {
    const platform::Rect place = Bounds(form, control);
    return {place.Left + (place.Width - 1) / 2, place.Top + (place.Height - 1) / 2};
}

// A pointer that is there already does not move.
void Hover(std::string_view form, std::string_view control) {
    const Point middle = Middle(form, control);
    Move(form, {middle.X + 1, middle.Y});
    Move(form, middle);
}

void Click(std::string_view form, std::string_view control, Button button) {
    Press(form, Middle(form, control), button);
    Release(form, Middle(form, control), button);
}

void Paste(std::string_view form, std::string_view text) {
    platform::SetClipboardText(text);
    Key(form, "Ctrl+V");
}

bool Shown(std::string_view form) { return std::ranges::count(ShownWindows(), form) > 0; }

platform::Color Pixel(std::string_view form, int x, int y) { return Pixels(form, {x, y, 1, 1}).front(); }

}  // namespace robot
