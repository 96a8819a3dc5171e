#include "dice/dice_search.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <tuple>

#include "dice/range_text.h"

using namespace orvane;

namespace {

// The search as a countdown of the bonus, in the words of a table-top player: try the highest bonus first.
std::optional<DiceNotation> CountDown(std::int64_t from, std::int64_t to) {
    if (to <= from) return {};
    for (std::int64_t bonus = to - from + 1; bonus >= -100; --bonus) {
        const std::int64_t count = from - bonus;
        const std::int64_t high = to - bonus;
        if (count == 0 || high % count != 0) continue;
        for (const std::int64_t sides : {2, 3, 4, 6, 8, 10, 12, 20, 100}) {
            if (high / count == sides)
                return DiceNotation{static_cast<std::int32_t>(count), static_cast<std::int32_t>(sides),
                                    static_cast<std::int32_t>(bonus)};
        }
    }
    return {};
}

void ExpectSameAsCountDown(std::int32_t from, std::int32_t to) {
    const auto found = SearchDice(from, to);
    const auto counted = CountDown(from, to);
    ASSERT_EQ(found.has_value(), counted.has_value()) << from << " to " << to;
    if (!found) return;
    const auto parts = [](const DiceNotation& dice) {
        return std::tuple(dice.Count, dice.Sides, dice.Bonus);
    };
    ASSERT_EQ(parts(*found), parts(*counted)) << from << " to " << to;
}

TEST(SearchDice, FindsWhatACountdownFinds) {
    for (std::int32_t from = -150; from <= 150; ++from) {
        for (std::int32_t to = -150; to <= 150; ++to) ExpectSameAsCountDown(from, to);
    }
    std::mt19937 random;
    std::uniform_int_distribution<std::int32_t> starts(-200, 40000);
    std::uniform_int_distribution<std::int32_t> spreads(1, 60000);
    for (int i = 0; i < 3000; ++i) {
        const std::int32_t from = starts(random);
        ExpectSameAsCountDown(from, from + spreads(random));
    }
}

TEST(RangeText, TellsNotationAndBounds) {
    const struct {
        std::int32_t From, To;
        const char* Text;
    } cases[] = {
        {1, 6, "1D6  Chk: 1 - 6"},
        {3, 18, "3D6  Chk: 3 - 18"},
        {1, 100, "1D100  Chk: 1 - 100"},
        {5, 10, "1D6+4 Chk: 5 - 10"},
        {10, 20, "2D6+8 Chk: 10 - 20"},
        {1, 7, "2D4-1 Chk: 1 - 7"},
        {0, 100, "20D6-20 Chk: 0 - 100"},
        {1, 14, "13D2-12 Chk: 1 - 14"},
        {-5, -1, "2D3-7 Chk: -5 - -1"},
        {1, 102, "101D2-100 Chk: 1 - 102"},
        {0, 0, "0"},
        {10, 5, "Err1"},
        {100, 105, "Err2"},
        {1, 104, "Err2"},
        {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), "Err2"},
    };
    for (const auto& each : cases) EXPECT_EQ(RangeText(each.From, each.To), each.Text);
}

}  // namespace
