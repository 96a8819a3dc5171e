#pragma once

// The nine statistics of a character and the pool of points they draw on: the one state that the statistics
// windows share.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

// Places in the table of statistics. Every loop, text and grid keeps this order.
enum StatIndex : std::int8_t {
    kNoStat = -1,
    kStrength,
    kAgility,
    kConstitution,
    kWisdom,
    kInteligence,
    kMagic,
    kCharisma,
    kPerception,
    kLuck,
    kStatEnd
};

inline constexpr std::size_t kStatCount = kStatEnd;
inline constexpr auto kStatNames =
    std::to_array<std::string_view>({"Strength", "Agility", "Constitution", "Wisdom", "Inteligence", "Magic",
                                     "Charisma", "Perception", "Luck"});
static_assert(kStatNames.size() == kStatCount, "each statistic has a name");

// What all values may add up to before the pool falls below 0.
inline constexpr std::int32_t kPoolPoints = 81;
static_assert(kPoolPoints == 9 * kStatCount, "the pool holds nine points for each statistic");

// A draw lies strictly between Min and Max, a step may reach them. Bon is added to every draw.
struct StatRecord {
    std::int32_t Min = 0;
    std::int32_t Max = 0;
    std::int32_t Bon = 0;
    std::string Name;
    std::int32_t Value = 0;
};

using StatTable = std::array<StatRecord, kStatCount>;

// All zeros and empty names until the first count; from the first draw on, PointsToDistribute is kPoolPoints
// minus the nine values.
extern StatTable Stats;
extern std::int32_t PointsToDistribute;

// Gives every record a random value, 3 to 18 plus its Bon, and sets the pool to what they leave of
// kPoolPoints. A draw outside the record's bounds is repeated without limit: some value must fit, as it does
// after a count.
void DrawStatValues(StatTable& records, std::int32_t& pool);

// The same for Stats and PointsToDistribute.
void DrawStatValues();

// Moves one point from the pool into the statistic, or back. False if the value stands at its Max, or at its
// Min: then nothing changes. The pool sets no limit and may fall below 0.
bool StepStatUp(StatRecord& stat, std::int32_t& pool);
bool StepStatDown(StatRecord& stat, std::int32_t& pool);

struct StatGridRow {
    std::string Name;
    std::string Range;  // such as "11-29"
    std::string Value;
};

struct StatGrid {
    std::array<StatGridRow, kStatCount> Rows;
    std::string Pool;
};

// All texts of the grid, the row of a statistic at its index.
StatGrid BuildStatGrid(const StatTable& records, std::int32_t pool);

// "+12 Still left", "-7 Below limit", or "OK" for a pool of 0.
std::string PoolText(std::int32_t pool);

}  // namespace orvane
