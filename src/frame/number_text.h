#pragma once

// The conversions between the text of a control and a number.

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

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
