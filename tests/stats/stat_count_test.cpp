#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

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

// Min, Max and Bon of a statistic by how much more often it is raised than lowered, -3 to +3.
constexpr struct {
    int Min, Max, Bon;
} kNetRows[] = {{1, 14, -3}, {1, 19, -2}, {2, 23, -1}, {5, 25, 0}, {8, 27, 1}, {11, 29, 2}, {14, 31, 3}};

TEST(StatCount, AllSelectionsFollowTheNetCounts) {
    StatTable records;
    records.fill({-99, 99, 7, "stale", 1234});
    for (std::size_t s = 0; s < kSexes.size(); ++s) {
        for (std::size_t r = 0; r < kRaces.size(); ++r) {
            for (std::size_t c = 0; c < kClasses.size(); ++c) {
                std::string expected = kSexes[s].Text + " " + kRaces[r].Text + " " + kClasses[c].Text +
                                       "\r\nStats        Min  Max  Bon";
                SCOPED_TRACE(expected);
                CountSelection(static_cast<int>(s), static_cast<int>(r), static_cast<int>(c), records);
                for (std::size_t i = 0; i < kStatCount; ++i) {
                    std::size_t net = 3;
                    for (const Choice& choice : {kSexes[s], kRaces[r], kClasses[c]}) {
                        net += choice.Raised.find(kLetters[i]) != std::string::npos ? 1U : 0U;
                        net -= choice.Lowered.find(kLetters[i]) != std::string::npos ? 1U : 0U;
                    }
                    const auto& row = kNetRows[net];
                    EXPECT_EQ(records[i].Min, row.Min) << i;
                    EXPECT_EQ(records[i].Max, row.Max) << i;
                    EXPECT_EQ(records[i].Bon, row.Bon) << i;
                    EXPECT_EQ(records[i].Value, 1234) << i;
                    char bonus[8] = "", line[64];
                    if (row.Bon != 0) std::snprintf(bonus, sizeof bonus, "%+d", row.Bon);
                    std::snprintf(line, sizeof line, "\r\n%-12s%4d%5d%5s", records[i].Name.c_str(), row.Min,
                                  row.Max, bonus);
                    expected += line;
                }
                EXPECT_EQ(BuildResultText(SexModifiers[s].Entry, RaceModifiers[r].Entry,
                                          ClassModifiers[c].Entry, records),
                          expected);
            }
        }
    }
}

TEST(StatCount, IndexOutsideItsTableSelectsNoRow) {
    StatTable records;
    for (const auto& [sex, race, cls] : {std::array{-1, -1, -1}, std::array{2, 7, 10}}) {
        CountSelection(sex, race, cls, records);
        for (const StatRecord& stat : records) EXPECT_EQ(stat.Min * 1000 + stat.Max * 10 + stat.Bon, 5250);
    }
}

}  // namespace
}  // namespace orvane
