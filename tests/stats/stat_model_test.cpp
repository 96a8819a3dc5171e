#include "stats/stat_model.h"

#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <string>
#include <vector>

#include "platform/random.h"
#include "stats/modifier_tables.h"
#include "stats/stat_sheet.h"

namespace orvane {
namespace {

// A source that makes RandomRange(3, 18) give these rolls.
std::vector<float> Rolls(const std::vector<int>& rolls) {
    std::vector<float> values;
    for (const int roll : rolls) values.push_back(static_cast<float>(roll - 3) / 16);
    return values;
}

StatTable Counted(std::int32_t sex, std::int32_t race, std::int32_t cls) {
    StatTable records;
    CountSelection(sex, race, cls, records);
    return records;
}

std::int32_t Total(const StatTable& records) {
    return std::accumulate(records.begin(), records.end(), 0,
                           [](std::int32_t sum, const StatRecord& stat) { return sum + stat.Value; });
}

TEST(StatModel, DrawsInOrderAndRepeatsWhatIsRefused) {
    // Bounds of Male Human Warrior: 11-29, 5-25, 11-29, 1-19, 2-23, 2-23, 8-27, 1-19, 8-27.
    Stats = Counted(0, 0, 0);
    PointsToDistribute = 500;
    const platform::ScriptedRandom random(Rolls({9, 10,        // Strength +2: 11 is its Min
                                                 3, 5, 6,      // Agility: 5 is its Min
                                                 18,           // Constitution +2
                                                 3, 4,         // Wisdom -2: 1 is its Min
                                                 3, 4,         // Inteligence -1: 2 is its Min
                                                 18, 8, 18,    // Magic -1, Charisma +1, Perception -2
                                                 7, 3, 11}));  // Luck +1: 8 is its Min
    DrawStatValues();
    const std::array<std::int32_t, kStatCount> expected = {12, 6, 20, 2, 3, 17, 9, 16, 12};
    for (std::size_t i = 0; i < kStatCount; ++i) EXPECT_EQ(Stats[i].Value, expected[i]) << Stats[i].Name;
    EXPECT_EQ(random.Count(), 16);
    EXPECT_EQ(PointsToDistribute, 81 - 97);
}

TEST(StatModel, InvariantsHoldThroughDrawsAndSteps) {
    platform::SetRandomSource({});
    for (std::int32_t selection = 0; selection < 140; ++selection) {
        StatTable records = Counted(selection / 70, selection / 10 % 7, selection % 10);
        std::int32_t pool = 0;
        DrawStatValues(records, pool);
        EXPECT_EQ(pool, 81 - Total(records));
        for (StatRecord& stat : records) {
            EXPECT_TRUE(stat.Min < stat.Value && stat.Value < stat.Max) << stat.Name << " " << stat.Value;
            const std::int32_t drawn = stat.Value;
            const std::int32_t poolBefore = pool;
            while (StepStatUp(stat, pool)) ASSERT_LE(stat.Value, stat.Max);
            EXPECT_EQ(stat.Value, stat.Max);
            EXPECT_EQ(pool, 81 - Total(records));
            while (StepStatDown(stat, pool)) ASSERT_GE(stat.Value, stat.Min);
            EXPECT_EQ(stat.Value, stat.Min);
            EXPECT_EQ(pool, 81 - Total(records));
            while (stat.Value < drawn) ASSERT_TRUE(StepStatUp(stat, pool));
            EXPECT_EQ(pool, poolBefore);
        }
    }
}

TEST(StatModel, RefusedStepChangesNothingAndThePoolSetsNoLimit) {
    StatRecord stat{11, 13, 2, "Strength", 12};
    std::int32_t pool = -20;
    EXPECT_TRUE(StepStatUp(stat, pool));
    EXPECT_EQ(PoolText(pool), "-21 Below limit");
    EXPECT_FALSE(StepStatUp(stat, pool));
    EXPECT_EQ(stat.Value, 13);
    EXPECT_EQ(pool, -21);

    pool = 0;
    stat.Value = 11;
    EXPECT_FALSE(StepStatDown(stat, pool));
    EXPECT_EQ(stat.Value, 11);
    EXPECT_EQ(pool, 0);
}

TEST(StatModel, GridAndPoolTexts) {
    StatTable records = Counted(0, 0, 0);
    for (std::size_t i = 0; i < kStatCount; ++i) records[i].Value = static_cast<std::int32_t>(i) + 7;
    const StatGrid grid = BuildStatGrid(records, -18);
    const char* const ranges[] = {"11-29", "5-25", "11-29", "1-19", "2-23", "2-23", "8-27", "1-19", "8-27"};
    for (std::size_t i = 0; i < kStatCount; ++i) {
        EXPECT_EQ(grid.Rows[i].Name, records[i].Name);
        EXPECT_EQ(grid.Rows[i].Range, ranges[i]);
        EXPECT_EQ(grid.Rows[i].Value, std::to_string(i + 7));
    }
    EXPECT_EQ(grid.Pool, "-18 Below limit");
    EXPECT_EQ(PoolText(12), "+12 Still left");
    EXPECT_EQ(PoolText(1), "+1 Still left");
    EXPECT_EQ(PoolText(0), "OK");
    EXPECT_EQ(PoolText(-1), "-1 Below limit");
}

TEST(StatModel, SheetToTheLetter) {
    StatTable records = Counted(0, 0, 0);
    const std::array<std::int32_t, kStatCount> values = {12, 6, 29, 2, 3, 17, 9, 16, 12};
    for (std::size_t i = 0; i < kStatCount; ++i) records[i].Value = values[i];
    EXPECT_EQ(BuildStatSheet(records, -25),
              "Strength     12\r\n"
              "Agility       6\r\n"
              "Constitution 29\r\n"
              "Wisdom        2\r\n"
              "Inteligence   3\r\n"
              "Magic        17\r\n"
              "Charisma      9\r\n"
              "Perception   16\r\n"
              "Luck         12\r\n"
              "Total       106\r\n"
              "Left        -25");
}

}  // namespace
}  // namespace orvane
