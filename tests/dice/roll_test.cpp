#include "dice/roll.h"

#include <gtest/gtest.h>

#include <limits>

#include "frame/mdlDeclars.h"
#include "support/scripted_random.h"

using namespace orvane;

namespace {

constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();

TEST(CleanText, KeepsTheWholeMagnitudeOfTheLeadingNumber) {
    const std::pair<const char*, const char*> cases[] = {
        {"007", "7"},  {"-5", "5"},    {"2.9", "2"},         {"", "0"}, {"abc", "0"}, {"12a", "12"},
        {"-0.9", "0"}, {"999", "999"}, {"9e9", "9000000000"}};
    for (const auto& [text, clean] : cases) {
        EXPECT_EQ(CleanBonus(text), clean) << text;
        EXPECT_EQ(CleanCount(text), std::string(clean) == "0" ? "1" : clean) << text;
    }
}

TEST(RollSummary, TellsNotationRangeAndAverage) {
    const struct {
        DiceRoll Roll;
        const char* Summary;
        std::int32_t Drawn;  // with a draw of one half
    } cases[] = {
        {{2, 6, 0}, "Dice:    2D6\r\nRange:   2 to 12\r\nAverage: 7\r\n\r\n", 7},
        {{3, 8, -3}, "Dice:    3D8 -3\r\nRange:   0 to 21\r\nAverage: 10.5\r\n\r\n", 11},
        {{1, 1, -5}, "Dice:    1D1 -5\r\nRange:   -4 to -4\r\nAverage: -4\r\n\r\n", -4},
        {{999, 999, 999},
         "Dice:    999D999 +999\r\nRange:   1998 to 999000\r\nAverage: 500499\r\n\r\n",
         500499},
        {{kHigh, kHigh, kHigh},
         "Dice:    2147483647D2147483647 +2147483647\r\nRange:   2147483647 to 2147483647\r\n"
         "Average: 2147483647\r\n\r\n",
         kHigh},
    };
    for (const auto& each : cases) {
        ScriptedRandom draws({0.5F});
        EXPECT_EQ(RollSummary(each.Roll), each.Summary);
        EXPECT_EQ(DrawRoll(each.Roll), each.Drawn);
        EXPECT_EQ(draws.Count(), 1);
    }
}

}  // namespace
