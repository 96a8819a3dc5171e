#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <vector>

#include "stats/modifier_tables.h"
#include "stats/stat_sheet.h"
#include "support/seams.h"

using namespace orvane;

// Every sex, race and class once more, for the count to be held against: what it raises and what it lowers,
// by the first two letters.
constexpr struct Choice {
    std::string_view Entry, Raised, Lowered;
} kChoices[] = {
    {"Male", "St Co", "Ag Pe"},           {"Female", "Ch Wi", "St Co"},
    {"Human", "Lu Ch", "Wi Pe"},          {"Elf", "Ch Ma", "St Co"},
    {"Dwarf", "St Co", "Ag Ma"},          {"Halfling", "Ag Lu", "St Wi"},
    {"Troll", "St Co", "Ch In"},          {"Orc", "Co In", "Ch Lu"},
    {"Drakeling", "In Ma", "Ch Ag"},      {"Warrior", "St Ag Co", "Wi In Ma"},
    {"Ranger", "Pe Ag Co", "Lu In Ma"},   {"Paladin", "St Ch Co", "Pe In Ma"},
    {"Thief", "In Ag Pe", "St Co Ma"},    {"Bard", "Wi Ch Ag", "St Co Pe"},
    {"Assassin", "Ag Lu Pe", "Wi Ch Ma"}, {"Mage", "Wi In Ma", "St Ag Co"},
    {"Priest", "Wi Ch Ma", "In Ag St"},   {"Alchemist", "Co In Ma", "St Ch Pe"},
    {"Mentant", "Pe In Ma", "St Co Ag"},
};

// Min, Max and Bon of a statistic by how much more often it is raised than lowered, -3 to +3.
constexpr std::array<std::int32_t, 3> kNetRows[] = {{1, 14, -3}, {1, 19, -2}, {2, 23, -1}, {5, 25, 0},
                                                    {8, 27, 1},  {11, 29, 2}, {14, 31, 3}};

TEST(StatCount, AllSelectionsFollowTheNetCounts) {
    std::vector<std::string_view> entries;
    for (const auto& entry : SexModifiers) entries.push_back(entry.Entry);
    for (const auto& entry : RaceModifiers) entries.push_back(entry.Entry);
    for (const auto& entry : ClassModifiers) entries.push_back(entry.Entry);
    ASSERT_TRUE(std::ranges::equal(entries, kChoices, {}, {}, &Choice::Entry)) << "kChoices and the lists";
    std::ifstream file(ORVANE_SOURCE_FOLDER "/docs/stats-generator.md");
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    for (const auto entry : entries)
        EXPECT_TRUE(page.find("| " + std::string(entry) + " |") != page.npos) << entry << ": documentation";
    const auto net = [](const Choice& choice, std::string_view stat) {
        const auto in = [stat](std::string_view list) {
            return list.find(stat.substr(0, 2)) != list.npos ? 1 : 0;
        };
        return in(choice.Raised) - in(choice.Lowered);
    };
    StatTable records;
    records.fill({-99, 99, 7, "stale", 1234});
    const Choice *races = kChoices + SexModifiers.size(), *classes = races + RaceModifiers.size();
    for (const Choice* sex = kChoices; sex != races; ++sex) {
        for (const Choice* race = races; race != classes; ++race) {
            for (const Choice* cls = classes; cls != std::end(kChoices); ++cls) {
                CountSelection(static_cast<int>(sex - kChoices), static_cast<int>(race - races),
                               static_cast<int>(cls - classes), records);
                for (const StatRecord& stat : records) {
                    const int sum = net(*sex, stat.Name) + net(*race, stat.Name) + net(*cls, stat.Name);
                    EXPECT_EQ((std::array{stat.Min, stat.Max, stat.Bon}), kNetRows[3 + sum])
                        << sex->Entry << race->Entry << cls->Entry;
                }
            }
        }
    }
    EXPECT_EQ(records[8].Value, 1234);
    // No selection, and none that there is.
    CountSelection(-1, 99, -1, records);
    for (const StatRecord& stat : records) EXPECT_EQ(stat.Min * 1000 + stat.Max * 10 + stat.Bon, 5250);
    CountSelection(0, 0, 0, records);
    EXPECT_EQ(BuildResultText("Male", "Human", "Warrior", records),
              "Male Human Warrior\r\nStats        Min  Max  Bon\r\n"
              "Strength      11   29   +2\r\nAgility        5   25     \r\nConstitution  11   29   +2\r\n"
              "Wisdom         1   19   -2\r\nInteligence    2   23   -1\r\nMagic          2   23   -1\r\n"
              "Charisma       8   27   +1\r\nPerception     1   19   -2\r\nLuck           8   27   +1");
}

TEST(StatModel, DrawsInOrderAndRepeatsWhatIsRefused) {
    // Bounds of Female Elf Mage: 1-14, 2-23, 1-14, 11-29, 8-27, 11-29, 11-29, 5-25, 5-25.
    CountSelection(1, 1, 6, Stats);
    PointsToDistribute = 500;
    std::vector<float> draws = {
        17, 4,  16,        // Strength -3: 14 is its Max, 1 its Min
        3,  18, 5,         // Agility -1: 2 is its Min; Constitution -3
        9,  10, 7,  8,     // Wisdom +2: 11 is its Min; Inteligence +1: 8 is its Min
        18, 10, 5,  6, 18  // Magic +2, Charisma +2, Perception: 5 is its Min, Luck
    };
    for (float& draw : draws) draw = (draw - 3) / 16;
    const ScriptedRandom random(draws);
    DrawStatValues();
    EXPECT_EQ(random.Count(), 15);
    EXPECT_EQ(
        BuildStatSheet(Stats, PointsToDistribute),
        "Strength     13\r\nAgility      17\r\nConstitution  2\r\nWisdom       12\r\nInteligence   9\r\n"
        "Magic        20\r\nCharisma     12\r\nPerception    6\r\nLuck         18\r\nTotal       109\r\n"
        "Left        -28");
    EXPECT_EQ(PoolText(-28), "-28 Below limit");
    EXPECT_EQ(PoolText(0), "OK");
    EXPECT_EQ(PoolText(1), "+1 Still left");
}
