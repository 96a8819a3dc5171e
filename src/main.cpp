#include "dice/frmDice.h"
#include "dice/frmRange2Dice.h"
#include "frame/frmMain.h"
#include "platform/application.h"
#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"

namespace {

template <class Window>
void Open() {
    platform::TheForm<Window>().Show();
}

constexpr orvane::Tool kTools[] = {
    {0, Open<orvane::frmStatsGenerator>},
    {1, Open<orvane::frmDice>},
    {5, Open<orvane::frmStatsCounter>},
    {7, Open<orvane::frmRange2Dice>},
};

}  // namespace

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    orvane::frmMain::SetTools(kTools);
    Open<orvane::frmMain>();
    application.Run();
}
