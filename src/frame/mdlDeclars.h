#pragma once

// What every tool leans on: the gate of all sound, the grab point of a title drag, the random numbers and the
// conversions between the text of a control and a number.

#include <cstdint>
#include <string>
#include <string_view>

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
void MakeTopMost(platform::Form& Window);

// Makes a text box refuse every typed character but digits. What is pasted or set still goes in.
void SetNumberOnly(platform::TextBox& Box);

// The longest decimal number at the start of the text (sign, digits, fraction, exponent), blanks ahead of it
// skipped; 0 if there is none. Beyond the range of a double it gives the nearest finite one. The decimal
// separator is a point in every locale.
double LeadingNumber(std::string_view Text);

// Whether the whole text, blanks around it aside, is a number that LeadingNumber reads.
bool IsNumberText(std::string_view Text);

// The nearest whole number, a half to the even neighbour; the greatest whole number not above the value.
// Outside 32 bits both give the nearest bound.
std::int32_t RoundToLong(double Value);
std::int32_t FloorToLong(double Value);

// A whole number of 64 bits brought into 32: the nearest bound if it does not fit.
std::int32_t ClampToLong(std::int64_t Value);

// Plain decimal text without thousands separator. A double shows at most 15 significant digits, no trailing
// zeros, the user's decimal separator, and neither an exponent nor a "-0" at any magnitude.
std::string NumberText(std::int32_t Value);
std::string NumberText(double Value);

}  // namespace orvane
