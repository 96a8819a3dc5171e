#include "dice/roll.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/mdlDeclars.h"

namespace orvane {
namespace {

// The sums of a roll of 32-bit numbers fit 64 bits.
std::int64_t LowestSum(const DiceRoll& roll) { return roll.Number; }
std::int64_t HighestSum(const DiceRoll& roll) { return std::int64_t{roll.Number} * roll.Sides; }

std::string Average(const DiceRoll& roll) {
    constexpr double kLow = std::numeric_limits<std::int32_t>::min();
    constexpr double kHigh = std::numeric_limits<std::int32_t>::max();
    const std::int64_t twice = LowestSum(roll) + HighestSum(roll) + (2 * std::int64_t{roll.Bonus});
    return NumberText(std::clamp(static_cast<double>(twice) / 2, kLow, kHigh));
}

}  // namespace

std::string CleanBonus(std::string_view Text) {
    return NumberText(std::floor(std::abs(LeadingNumber(Text))));
}

std::string CleanCount(std::string_view Text) {
    const std::string text = CleanBonus(Text);
    return text == "0" ? "1" : text;
}

std::string RollSummary(const DiceRoll& Roll) {
    std::string text = "Dice:    " + NumberText(Roll.Number) + "D" + NumberText(Roll.Sides);
    if (Roll.Bonus != 0) text += " " + FormatBonus(Roll.Bonus);
    text += kLineBreak;
    text += "Range:   " + NumberText(ClampToLong(LowestSum(Roll) + Roll.Bonus)) + " to " +
            NumberText(ClampToLong(HighestSum(Roll) + Roll.Bonus));
    text += kLineBreak;
    text += "Average: " + Average(Roll);
    text += kLineBreak;
    text += kLineBreak;
    return text;
}

std::int32_t DrawRoll(const DiceRoll& Roll) {
    const std::int32_t sum = RandomRange(Roll.Number, ClampToLong(HighestSum(Roll)));
    return ClampToLong(std::int64_t{sum} + Roll.Bonus);
}

}  // namespace orvane
