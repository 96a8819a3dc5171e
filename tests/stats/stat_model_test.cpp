#include "stats/stat_model.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "stats/modifier_tables.h"
#include "stats/stat_sheet.h"
#include "support/scripted_random.h"

namespace orvane {
namespace {

TEST(StatModel, DrawsInOrderAndRepeatsWhatIsRefused) {
    // Bounds of Female Elf Mage: 1-14, 2-23, 1-14, 11-29, 8-27, 11-29, 11-29, 5-25, 5-25.
    CountSelection(1, 1, 6, Stats);
    PointsToDistribute = 500;
    const int rolls[] = {
        17, 4,  16,        // Strength -3: 14 is its Max, 1 its Min
        3,  18, 5,         // Agility -1: 2 is its Min; Constitution -3
        9,  10, 7,  8,     // Wisdom +2: 11 is its Min; Inteligence +1: 8 is its Min
        18, 10, 5,  6, 18  // Magic +2, Charisma +2, Perception: 5 is its Min, Luck
    };
    std::vector<float> draws;
    for (const int roll : rolls) draws.push_back(static_cast<float>(roll - 3) / 16);
    const ScriptedRandom random(std::move(draws));
    DrawStatValues();
    const std::array<std::int32_t, kStatCount> expected = {13, 17, 2, 12, 9, 20, 12, 6, 18};
    for (std::size_t i = 0; i < kStatCount; ++i) EXPECT_EQ(Stats[i].Value, expected[i]) << Stats[i].Name;
    EXPECT_EQ(random.Count(), 15);
    EXPECT_EQ(PointsToDistribute, 81 - 109);
}

TEST(StatModel, SheetAndPoolToTheLetter) {
    StatTable records;
    CountSelection(0, 0, 0, records);
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
    EXPECT_EQ(PoolText(1), "+1 Still left");
    EXPECT_EQ(PoolText(0), "OK");
    EXPECT_EQ(PoolText(-1), "-1 Below limit");
}

}  // namespace
}  // namespace orvane
