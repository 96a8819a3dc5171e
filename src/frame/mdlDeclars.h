#pragma once

// What every tool leans on: the gate of all sound, the grab point of a title drag and the random numbers;
// and, from a header of their own, the conversions between the text of a control and a number.

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/number_text.h"

namespace platform {
class Form;
class TextBox;
}  // namespace platform

namespace orvane {

using Truth = std::int16_t;
inline constexpr Truth kTrue = -1;
inline constexpr Truth kFalse = 0;

inline constexpr std::string_view kLineBreak = "\r\n";

// Gate of all sound: only kTrue lets one pass.
extern Truth SoundEnabled;

// Where the pointer took hold of a title, in pixels from the label's corner.
extern std::int32_t DragX;
extern std::int32_t DragY;

// A whole number from Low to High, both included, each about equally likely. Always takes exactly one draw of
// the random source. Low must not lie above High.
std::int32_t RandomRange(std::int32_t Low, std::int32_t High);

// "+n" above 0, "-n" below, and the empty text for 0.
std::string FormatBonus(std::int32_t Value);

// Plays a sound file in the background, if SoundEnabled lets it.
void PlayWave(std::string_view FileName);

// Keeps the form in front of all other windows.
void MakeTopMost(platform::Form& Form);

// Makes a text box refuse every typed character but digits. What is pasted or set still goes in.
void SetNumberOnly(platform::TextBox& Box);

}  // namespace orvane
