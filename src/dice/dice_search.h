#pragma once

#include <cstdint>
#include <optional>

namespace orvane {

// Count dice of Sides sides each, and Bonus added once.
struct DiceNotation {
    std::int32_t Count = 0;
    std::int32_t Sides = 0;
    std::int32_t Bonus = 0;
};

// The notation with the fewest dice whose lowest value is From and whose highest is To, with a bonus from
// -100 to To - From + 1 and dice of 2, 3, 4, 6, 8, 10, 12, 20 or 100 sides. Nothing if there is none within
// 32 bits, as for every To that does not lie above From.
std::optional<DiceNotation> SearchDice(std::int32_t From, std::int32_t To);

}  // namespace orvane
