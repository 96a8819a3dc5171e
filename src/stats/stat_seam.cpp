#include "stats/stat_seam.h"

#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"
#include "stats/stat_model.h"
#include "stats/stat_sheet.h"

namespace orvane {

void ShowStatGrid() {
    // The counter may load on its first mention and then shows the grid itself; what follows writes it once
    // more.
    platform::TheForm<frmStatsCounter>().ShowGrid(BuildStatGrid(Stats, PointsToDistribute),
                                                  BuildStatSheet(Stats, PointsToDistribute));
}

void ShowStatsGenerator() { platform::TheForm<frmStatsGenerator>().Show(); }

void RandomizeSelection() { platform::TheForm<frmStatsGenerator>().Randomize(); }

}  // namespace orvane
