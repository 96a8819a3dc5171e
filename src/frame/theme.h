#pragma once

#include "platform/look.h"

namespace orvane {

// The colours of the themed windows.
inline constexpr platform::Color kWindowBack{16, 16, 0};
inline constexpr platform::Color kFrameLine{134, 134, 118};
inline constexpr platform::Color kTitleLine{144, 128, 112};
inline constexpr platform::Color kControlLine{112, 128, 144};

inline constexpr platform::Colors kTitleColors{{32, 16, 0}, {255, 239, 223}, kTitleLine};
inline constexpr platform::Colors kControlColors{{0, 16, 32}, {223, 239, 255}, kControlLine};
inline constexpr platform::Colors kLabelColors{kWindowBack, {255, 255, 239}, kControlLine};

// Widths of outlines, in pixels.
inline constexpr int kThinLine = 1;
inline constexpr int kBoxLine = 3;

}  // namespace orvane
