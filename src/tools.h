#pragma once

// The tools of the launcher, from the top.

#include "alignment/frmAling.h"
#include "dice/frmDice.h"
#include "dice/frmRange2Dice.h"
#include "frame/frmMain.h"
#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"
#include "weapons/frmWeapons.h"

namespace orvane {

template <class Form>
void Open() {
    platform::TheForm<Form>().Show();
}

inline constexpr Tool kTools[] = {
    {0, "Stats Min/Max Generator", "Stats generator counts Max and Min values of stats",
     Open<frmStatsGenerator>},
    {1, "Dice Roller", "Will roll your favourite dice like 3D5-3", Open<frmDice>},
    {5, "Stats Counter", "Will count secondary stats", Open<frmStatsCounter>},
    {6, "Alingments", "", Open<frmAling>},
    {7, "Dice Reverse", "", Open<frmRange2Dice>},
    {8, "Weapons", "", Open<frmWeapons>},
};

}  // namespace orvane
