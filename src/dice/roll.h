#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

// Number dice of Sides sides, and Bonus added once. Number and Sides are at least 1.
struct DiceRoll {
    std::int32_t Number = 1;
    std::int32_t Sides = 6;
    std::int32_t Bonus = 0;
};

// What a box for Number or Sides must hold: the whole magnitude of the number that the text begins with, at
// least "1".
std::string CleanCount(std::string_view Text);

// The same for the bonus, at least "0".
std::string CleanBonus(std::string_view Text);

// The lines that describe a roll: notation, range and average, and an empty line. What leaves 32 bits shows
// as the nearest bound.
std::string RollSummary(const DiceRoll& Roll);

// A roll: one uniform draw between the lowest and the highest sum of the dice, plus Bonus.
std::int32_t DrawRoll(const DiceRoll& Roll);

}  // namespace orvane
