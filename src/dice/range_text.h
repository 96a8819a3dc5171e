#pragma once

#include <cstdint>
#include <string>

namespace orvane {

// The dice notation for the values From to To with a check of its bounds behind it, the bare number if both
// are the same, "Err1" if To is below From, and "Err2" if there is no such notation.
std::string RangeText(std::int32_t From, std::int32_t To);

}  // namespace orvane
