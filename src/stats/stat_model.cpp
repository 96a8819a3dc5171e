#include "stats/stat_model.h"

#include "frame/mdlDeclars.h"

namespace orvane {

StatTable Stats;
std::int32_t PointsToDistribute = 0;

void DrawStatValues(StatTable& records, std::int32_t& pool) {
    pool = kPoolPoints;
    for (StatRecord& stat : records) {
        do {
            stat.Value = RandomRange(3, 18) + stat.Bon;
        } while (stat.Value <= stat.Min || stat.Value >= stat.Max);
        pool -= stat.Value;
    }
}

void DrawStatValues() { DrawStatValues(Stats, PointsToDistribute); }

bool StepStatUp(StatRecord& stat, std::int32_t& pool) {
    if (stat.Value == stat.Max) return false;
    ++stat.Value;
    --pool;
    return true;
}

bool StepStatDown(StatRecord& stat, std::int32_t& pool) {
    if (stat.Value == stat.Min) return false;
    --stat.Value;
    ++pool;
    return true;
}

StatGrid BuildStatGrid(const StatTable& records, std::int32_t pool) {
    StatGrid grid;
    for (std::size_t i = 0; i < kStatCount; ++i) {
        const StatRecord& stat = records[i];
        grid.Rows[i] = {stat.Name, NumberText(stat.Min) + "-" + NumberText(stat.Max), NumberText(stat.Value)};
    }
    grid.Pool = PoolText(pool);
    return grid;
}

std::string PoolText(std::int32_t pool) {
    if (pool == 0) return "OK";
    return FormatBonus(pool) + (pool > 0 ? " Still left" : " Below limit");
}

}  // namespace orvane
