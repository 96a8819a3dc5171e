#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/random.h"
#include "stats/modifier_tables.h"
#include "stats/stat_sheet.h"

namespace orvane {
namespace {

// The statistics by one letter each, in the order of the table: H is Charisma, the others are initials.
constexpr std::string_view kLetters = "SACWIMHPL";

struct Choice {
    std::string Text;
    std::string Raised;
    std::string Lowered;
};

const std::vector<Choice> kSexes = {{"Male", "SC", "AP"}, {"Female", "HW", "SC"}};
const std::vector<Choice> kRaces = {{"Human", "LH", "WP"},    {"Elf", "HM", "SC"},   {"Dwarf", "SC", "AM"},
                                    {"Halfling", "AL", "SW"}, {"Troll", "SC", "HI"}, {"Orc", "CI", "HL"},
                                    {"Drakeling", "IM", "HA"}};
const std::vector<Choice> kClasses = {{"Warrior", "SAC", "WIM"},   {"Ranger", "PAC", "LIM"},
                                      {"Paladin", "SHC", "PIM"},   {"Thief", "IAP", "SCM"},
                                      {"Bard", "WHA", "SCP"},      {"Assassin", "ALP", "WHM"},
                                      {"Mage", "WIM", "SAC"},      {"Priest", "WHM", "IAS"},
                                      {"Alchemist", "CIM", "SHP"}, {"Mentant", "PIM", "SCA"}};

// What a statistic raised more often than lowered, by the net count -3 to +3, ends with, and the values that
// a draw may give it.
struct NetRow {
    int Min, Max, Bon, Lowest, Highest;
};
constexpr NetRow kNetRows[] = {{1, 14, -3, 2, 13}, {1, 19, -2, 2, 16},  {2, 23, -1, 3, 17}, {5, 25, 0, 6, 18},
                               {8, 27, 1, 9, 19},  {11, 29, 2, 12, 20}, {14, 31, 3, 15, 21}};

bool Holds(const std::string& letters, char letter) { return letters.find(letter) != std::string::npos; }

TEST(StatCount, AllSelectionsFollowTheNetCounts) {
    ASSERT_EQ(SexModifiers.size(), kSexes.size());
    ASSERT_EQ(RaceModifiers.size(), kRaces.size());
    ASSERT_EQ(ClassModifiers.size(), kClasses.size());
    StatTable records;
    records.fill({-99, 99, 7, "stale", 1234});
    for (std::size_t s = 0; s < kSexes.size(); ++s) {
        for (std::size_t r = 0; r < kRaces.size(); ++r) {
            for (std::size_t c = 0; c < kClasses.size(); ++c) {
                std::string expected = kSexes[s].Text + " " + kRaces[r].Text + " " + kClasses[c].Text +
                                       "\r\nStats        Min  Max  Bon";
                SCOPED_TRACE(expected);
                CountSelection(static_cast<int>(s), static_cast<int>(r), static_cast<int>(c), records);
                int bonuses = 0;
                for (std::size_t i = 0; i < kStatCount; ++i) {
                    std::size_t net = 3;
                    for (const Choice& choice : {kSexes[s], kRaces[r], kClasses[c]}) {
                        net += Holds(choice.Raised, kLetters[i]) ? 1U : 0U;
                        net -= Holds(choice.Lowered, kLetters[i]) ? 1U : 0U;
                    }
                    const NetRow& row = kNetRows[net];
                    EXPECT_EQ(records[i].Min, row.Min) << i;
                    EXPECT_EQ(records[i].Max, row.Max) << i;
                    EXPECT_EQ(records[i].Bon, row.Bon) << i;
                    EXPECT_EQ(records[i].Value, 1234) << i;
                    bonuses += records[i].Bon;

                    char bonus[8] = "", line[64];
                    if (row.Bon != 0) std::snprintf(bonus, sizeof bonus, "%+d", row.Bon);
                    std::snprintf(line, sizeof line, "\r\n%-12s%4d%5d%5s", records[i].Name.c_str(), row.Min,
                                  row.Max, bonus);
                    expected += line;
                }
                EXPECT_EQ(bonuses, 0);
                EXPECT_EQ(BuildResultText(SexModifiers[s].Entry, RaceModifiers[r].Entry,
                                          ClassModifiers[c].Entry, records),
                          expected);
            }
        }
    }
}

TEST(StatCount, FirstSelectionToTheLetter) {
    StatTable records;
    CountSelection(0, 0, 0, records);
    EXPECT_EQ(BuildResultText("Male", "Human", "Warrior", records),
              "Male Human Warrior\r\n"
              "Stats        Min  Max  Bon\r\n"
              "Strength      11   29   +2\r\n"
              "Agility        5   25     \r\n"
              "Constitution  11   29   +2\r\n"
              "Wisdom         1   19   -2\r\n"
              "Inteligence    2   23   -1\r\n"
              "Magic          2   23   -1\r\n"
              "Charisma       8   27   +1\r\n"
              "Perception     1   19   -2\r\n"
              "Luck           8   27   +1");
}

TEST(StatCount, IndexOutsideItsTableSelectsNoRow) {
    StatTable records;
    for (const auto& [sex, race, cls] : {std::array{-1, -1, -1}, std::array{2, 7, 10}}) {
        CountSelection(sex, race, cls, records);
        for (const StatRecord& stat : records) EXPECT_EQ(stat.Min * 1000 + stat.Max * 10 + stat.Bon, 5250);
    }
}

TEST(StatCount, EveryNetCountTakesItsOwnDraws) {
    for (const NetRow& row : kNetRows) {
        for (int roll = 3; roll <= 18; ++roll) {
            StatTable records;
            records.fill({-100, 100, 0, "", 0});
            records[kStrength] = {row.Min, row.Max, row.Bon, "", 0};
            // A refused first roll is followed by a 12, which every net count takes.
            const platform::ScriptedRandom random(
                {static_cast<float>(roll - 3) / 16, static_cast<float>(12 - 3) / 16});
            std::int32_t pool = 0;
            DrawStatValues(records, pool);
            const int value = roll + row.Bon;
            const bool taken = value >= row.Lowest && value <= row.Highest;
            EXPECT_EQ(records[kStrength].Value, taken ? value : 12 + row.Bon) << roll << " " << row.Bon;
            EXPECT_EQ(random.Count(), taken ? 9 : 10) << roll << " " << row.Bon;
        }
    }
}

}  // namespace
}  // namespace orvane
