#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

// A place in pixels, from the top left corner of the form.
struct Rect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

struct Color {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;

    friend bool operator==(const Color&, const Color&) = default;
};

// What a control is drawn with; Line is for what surrounds or divides it.
struct Colors {
    Color Back;
    Color Text;
    Color Line;
};

// A family and a size in points, 72 to the inch of 96 pixels: 8 points are 11 pixels.
// "MS Sans Serif" and "Fixedsys" stand for the desktop's nearest fonts; Fixedsys keeps 8 pixels a character.
struct Font {
    std::string_view Family = "MS Sans Serif";
    double Points = 8;
};

enum class Alignment : std::uint8_t { Left, Centre, Right };

}  // namespace platform
