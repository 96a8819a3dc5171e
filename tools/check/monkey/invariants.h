#pragma once

// What holds between any two events, whatever the user does.

#include <array>
#include <string>
#include <string_view>

#include "platform/form.h"

namespace monkey {

// A window of the program; its size is that of the client area, in pixels.
struct WindowRow {
    std::string_view Name;
    int Width;
    int Height;
    int Restored;              // the height after a roll down
    platform::Form* (*Get)();  // empty until the window is loaded
    void (*Open)();
    void (*Unload)();
};
extern const std::array<WindowRow, 8> kWindows;  // the launcher is the first

// To be told before an event, and when the program has started anew.
void BeforeEvent();
void ForgetProgram();

// Throws std::logic_error with what does not hold.
void CheckAll();
void Require(bool holds, const std::string& what);

}  // namespace monkey
