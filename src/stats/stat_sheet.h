#pragma once

// The fixed-column texts of the statistics windows. Lines are joined by CR LF, with nothing behind the last.

#include <cstdint>
#include <string>
#include <string_view>

#include "stats/stat_model.h"

namespace orvane {

// The generator's result, eleven lines: the three choices as their lists show them, a header, and the bounds
// and bonus of every statistic in 26 columns. A bonus of 0 leaves its columns blank, on the last line too.
std::string BuildResultText(std::string_view sexText, std::string_view raceText, std::string_view classText,
                            const StatTable& records);

// The character's sheet, eleven lines of 15 columns: the value of every statistic, their total, and the pool.
std::string BuildStatSheet(const StatTable& records, std::int32_t pool);

}  // namespace orvane
