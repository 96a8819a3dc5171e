#pragma once

#include <optional>
#include <vector>

#include "platform/look.h"

namespace platform {

// Where in an area a window of a size covers none of the places that are taken, as near as can be to the
// middle of another place. Nothing if there is no such place. All in the same pixels.
std::optional<Rect> FreePlace(const Rect& area, int width, int height, const std::vector<Rect>& taken,
                              const Rect& near);

}  // namespace platform
