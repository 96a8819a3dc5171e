#include "support/window_test.h"

using namespace orvane;

namespace {

TEST_F(WindowTest, TheLauncherOpensAToolOnceShowsItAsItWasLeftAndEndsWithAll) {
    SoundEnabled = kFalse;
    Show<frmMain>();
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Welcome, Adventurer.");
    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Strings{"theme.wav", "click.wav", "theme2.wav"}));
    const std::string roll = robot::Text("frmDice", "txtResult");
    robot::Click("frmDice", "Cmnd(4)");
    robot::Click("frmDice", "Cmnd(3)");
    EXPECT_EQ(robot::ShownWindows(), Strings{"frmMain"});
    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "quit.wav", "click.wav"}));
    EXPECT_EQ(robot::Bounds("frmDice").Height, 32);
    EXPECT_EQ(robot::Text("frmDice", "txtResult"), roll);
    for (const std::string_view end : {"Cmnd(2)", "Cmnd(3)", ""}) {
        Show<frmMain>();
        end.empty() ? robot::DesktopCloses("frmMain") : robot::Click("frmMain", end);
        EXPECT_EQ(listener.Heard(), Strings{"quit.wav"});
        EXPECT_TRUE(robot::ShownWindows().empty());
    }
}

}  // namespace
