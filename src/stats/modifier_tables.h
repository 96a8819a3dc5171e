#pragma once

// What sex, race and class do to the statistics, and the count that works a selection of the three out.

#include <array>
#include <cstdint>
#include <string_view>

#include "stats/stat_model.h"

namespace orvane {

// The statistics that a choice raises and lowers. A slot without one holds kNoStat.
struct StatModifier {
    std::array<std::int32_t, 3> Raised;
    std::array<std::int32_t, 3> Lowered;
};

// One entry of a drop-down list and what choosing it does. Its place in the table is its list index.
struct ModifierEntry {
    std::string_view Entry;
    StatModifier Modifier;
};

inline constexpr auto SexModifiers = std::to_array<ModifierEntry>({
    {"Male", {{kStrength, kConstitution, kNoStat}, {kAgility, kPerception, kNoStat}}},
    {"Female", {{kCharisma, kWisdom, kNoStat}, {kStrength, kConstitution, kNoStat}}},
});

inline constexpr auto RaceModifiers = std::to_array<ModifierEntry>({
    {"Human", {{kLuck, kCharisma, kNoStat}, {kWisdom, kPerception, kNoStat}}},
    {"Elf", {{kCharisma, kMagic, kNoStat}, {kStrength, kConstitution, kNoStat}}},
    {"Dwarf", {{kStrength, kConstitution, kNoStat}, {kAgility, kMagic, kNoStat}}},
    {"Halfling", {{kAgility, kLuck, kNoStat}, {kStrength, kWisdom, kNoStat}}},
    {"Troll", {{kStrength, kConstitution, kNoStat}, {kCharisma, kInteligence, kNoStat}}},
    {"Orc", {{kConstitution, kInteligence, kNoStat}, {kCharisma, kLuck, kNoStat}}},
    {"Drakeling", {{kInteligence, kMagic, kNoStat}, {kCharisma, kAgility, kNoStat}}},
});

inline constexpr auto ClassModifiers = std::to_array<ModifierEntry>({
    {"Warrior", {{kStrength, kAgility, kConstitution}, {kWisdom, kInteligence, kMagic}}},
    {"Ranger", {{kPerception, kAgility, kConstitution}, {kLuck, kInteligence, kMagic}}},
    {"Paladin", {{kStrength, kCharisma, kConstitution}, {kPerception, kInteligence, kMagic}}},
    {"Thief", {{kInteligence, kAgility, kPerception}, {kStrength, kConstitution, kMagic}}},
    {"Bard", {{kWisdom, kCharisma, kAgility}, {kStrength, kConstitution, kPerception}}},
    {"Assassin", {{kAgility, kLuck, kPerception}, {kWisdom, kCharisma, kMagic}}},
    {"Mage", {{kWisdom, kInteligence, kMagic}, {kStrength, kAgility, kConstitution}}},
    {"Priest", {{kWisdom, kCharisma, kMagic}, {kInteligence, kAgility, kStrength}}},
    {"Alchemist", {{kConstitution, kInteligence, kMagic}, {kStrength, kCharisma, kPerception}}},
    {"Mentant", {{kPerception, kInteligence, kMagic}, {kStrength, kConstitution, kAgility}}},
});

// Writes Min, Max, Bon and Name of every record for the chosen entries, each given by its list index from 0.
// Value stays. An index outside its table, such as the -1 of a list without a selection, moves no statistic.
void CountSelection(std::int32_t sexIndex, std::int32_t raceIndex, std::int32_t classIndex,
                    StatTable& records);

}  // namespace orvane
