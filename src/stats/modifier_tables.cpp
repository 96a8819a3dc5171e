#include "stats/modifier_tables.h"

#include <span>
#include <string>

namespace orvane {
namespace {

constexpr std::int32_t kBaseMin = 5;
constexpr std::int32_t kBaseMax = 25;
constexpr std::int32_t kMinPerStep = 3;
constexpr std::int32_t kMaxPerStep = 2;
constexpr std::int32_t kLowestMin = 1;

// Raises the statistics of a row's slots by a step of 1, or lowers them by a step of -1.
void Shift(std::span<const std::int32_t> row, std::int32_t step, StatTable& records) {
    for (const std::int32_t slot : row) {
        if (slot == kNoStat) continue;
        StatRecord& stat = records[static_cast<std::size_t>(slot)];
        stat.Min += kMinPerStep * step;
        stat.Max += kMaxPerStep * step;
        stat.Bon += step;
    }
}

void Apply(std::span<const ModifierEntry> table, std::int32_t index, StatTable& records) {
    const auto row = static_cast<std::size_t>(index);  // a negative index lies behind every table
    if (row >= table.size()) return;
    const StatModifier& modifier = table[row].Modifier;
    Shift(modifier.Raised, 1, records);
    Shift(modifier.Lowered, -1, records);
}

}  // namespace

void CountSelection(std::int32_t sexIndex, std::int32_t raceIndex, std::int32_t classIndex,
                    StatTable& records) {
    for (std::size_t i = 0; i < kStatCount; ++i) {
        records[i] = {kBaseMin, kBaseMax, 0, std::string(kStatNames[i]), records[i].Value};
    }
    Apply(SexModifiers, sexIndex, records);
    Apply(RaceModifiers, raceIndex, records);
    Apply(ClassModifiers, classIndex, records);
    for (StatRecord& stat : records) {
        if (stat.Min >= kLowestMin) continue;
        // What Min lacks is taken off Max.
        stat.Max += stat.Min - kLowestMin;
        stat.Min = kLowestMin;
    }
}

}  // namespace orvane
