#include "alignment/frmAling.h"
#include "dice/frmDice.h"
#include "dice/frmRange2Dice.h"
#include "frame/frmMain.h"
#include "platform/application.h"
#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"
#include "weapons/frmWeapons.h"

namespace {

template <class Window>
void Open() {
    platform::TheForm<Window>().Show();
}

constexpr orvane::Tool kTools[] = {
    {0, Open<orvane::frmStatsGenerator>}, {1, Open<orvane::frmDice>},
    {5, Open<orvane::frmStatsCounter>},   {6, Open<orvane::frmAling>},
    {7, Open<orvane::frmRange2Dice>},     {8, Open<orvane::frmWeapons>},
};

}  // namespace

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    orvane::frmMain::SetTools(kTools);
    Open<orvane::frmMain>();
    application.Run();
}
