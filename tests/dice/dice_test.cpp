#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "dice/dice_search.h"
#include "dice/range_text.h"
#include "dice/roll.h"
#include "support/seams.h"

using namespace orvane;

constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();

using Notation = std::array<std::int64_t, 3>;  // count, sides and bonus; zeros if there is none

// The search as a countdown of the bonus, in the words of a table-top player: try the highest bonus first.
static Notation CountDown(std::int64_t from, std::int64_t to) {
    for (std::int64_t bonus = to - from + 1; to > from && bonus >= -100; --bonus) {
        const std::int64_t count = from - bonus;
        if (count == 0 || (to - bonus) % count != 0) continue;
        for (const std::int64_t sides : {2, 3, 4, 6, 8, 10, 12, 20, 100}) {
            if ((to - bonus) / count == sides) return {count, sides, bonus};
        }
    }
    return {};
}

TEST(SearchDice, FindsWhatACountdownFinds) {
    const auto expectSame = [](std::int32_t from, std::int32_t to) {
        const DiceNotation found = SearchDice(from, to).value_or(DiceNotation{});
        ASSERT_EQ((Notation{found.Count, found.Sides, found.Bonus}), CountDown(from, to))
            << from << " to " << to;
    };
    for (std::int32_t from = -150; from <= 150; ++from) {
        for (std::int32_t to = -150; to <= 150; ++to) expectSame(from, to);
    }
    for (std::int32_t to = 151; to < 60000; to += 17) expectSame(to % 311, to);
}

TEST(RangeText, TellsNotationAndBounds) {
    EXPECT_EQ(RangeText(3, 18), "3D6  Chk: 3 - 18");
    EXPECT_EQ(RangeText(-5, -1), "2D3-7 Chk: -5 - -1");
    EXPECT_EQ(RangeText(0, 0), "0");
    EXPECT_EQ(RangeText(10, 5), "Err1");
    EXPECT_EQ(RangeText(-kHigh, kHigh), "Err2");
}

TEST(Roll, CleansTextsDescribesItselfAndDrawsOnce) {
    EXPECT_EQ(CleanBonus("-002.9x"), "2");
    EXPECT_EQ(CleanCount("9e9"), "9000000000");
    EXPECT_EQ(CleanBonus("-0.9"), "0");
    EXPECT_EQ(CleanCount("-0.9"), "1");
    const std::tuple<DiceRoll, const char*, std::int32_t> cases[] = {
        // what comes of a draw of one half
        {{2, 6, 0}, "Dice:    2D6\r\nRange:   2 to 12\r\nAverage: 7\r\n\r\n", 7},
        {{3, 8, -3}, "Dice:    3D8 -3\r\nRange:   0 to 21\r\nAverage: 10.5\r\n\r\n", 11},
        {{kHigh, kHigh, kHigh},
         "Dice:    2147483647D2147483647 +2147483647\r\nRange:   2147483647 to 2147483647\r\n"
         "Average: 2147483647\r\n\r\n",
         kHigh},
    };
    for (const auto& [roll, summary, drawn] : cases) {
        const ScriptedRandom draws({0.5F});
        EXPECT_EQ(RollSummary(roll), summary);
        EXPECT_EQ(DrawRoll(roll), drawn);
        EXPECT_EQ(draws.Count(), 1);
    }
}
