#include "dice/dice_search.h"

namespace orvane {
namespace {

constexpr std::int64_t kSides[] = {100, 20, 12, 10, 8, 6, 4, 3, 2};
constexpr std::int64_t kLowestBonus = -100;

}  // namespace

std::optional<DiceNotation> SearchDice(std::int32_t From, std::int32_t To) {
    const std::int64_t spread = std::int64_t{To} - From;
    if (spread <= 0) return {};
    // n dice of s sides spread over n * (s - 1), so each number of sides leaves one candidate. Larger dice
    // mean fewer of them and a higher bonus: the first candidate within the bounds is the one with the
    // highest.
    for (const std::int64_t sides : kSides) {
        if (spread % (sides - 1) != 0) continue;
        const std::int64_t count = spread / (sides - 1);
        const std::int64_t bonus = From - count;
        if (bonus < kLowestBonus) break;
        if (bonus > spread + 1) continue;
        // Within the bounds of the bonus, count is at most 100 above From and fits 32 bits.
        return DiceNotation{static_cast<std::int32_t>(count), static_cast<std::int32_t>(sides),
                            static_cast<std::int32_t>(bonus)};
    }
    return {};
}

}  // namespace orvane
