#include "platform/free_place.h"

#include <algorithm>
#include <cstdlib>

namespace platform {
namespace {

int Right(const Rect& place) { return place.Left + place.Width; }
int Bottom(const Rect& place) { return place.Top + place.Height; }

bool Meet(const Rect& a, const Rect& b) {
    return a.Left < Right(b) && b.Left < Right(a) && a.Top < Bottom(b) && b.Top < Bottom(a);
}

// Twice the way from middle to middle, across and down.
int Distance(const Rect& a, const Rect& b) {
    return std::abs(a.Left + Right(a) - b.Left - Right(b)) + std::abs(a.Top + Bottom(a) - b.Top - Bottom(b));
}

}  // namespace

std::optional<Rect> FreePlace(const Rect& area, int width, int height, const std::vector<Rect>& taken,
                              const Rect& near) {
    // At an edge of the area or of another window.
    std::vector<int> lefts{area.Left};
    std::vector<int> tops{area.Top};
    for (const Rect& place : taken) {
        lefts.insert(lefts.end(), {place.Left, Right(place), place.Left - width});
        tops.insert(tops.end(), {place.Top, Bottom(place), place.Top - height});
    }
    std::optional<Rect> nearest;
    for (const int left : lefts) {
        for (const int top : tops) {
            const Rect place{left, top, width, height};
            const bool inside = left >= area.Left && Right(place) <= Right(area) && top >= area.Top &&
                                Bottom(place) <= Bottom(area);
            if (!inside || std::ranges::any_of(taken, [&](const Rect& other) { return Meet(place, other); }))
                continue;
            if (!nearest || Distance(place, near) < Distance(*nearest, near)) nearest = place;
        }
    }
    return nearest;
}

}  // namespace platform
