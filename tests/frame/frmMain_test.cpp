#include "support/window_test.h"

using namespace orvane;

namespace {

class Launcher : public WindowTest {
 protected:
    Launcher() {
        SoundEnabled = kFalse;
        Show<frmMain>();
    }
};

TEST_F(Launcher, OpensAToolOnceAndShowsItAsItWasLeft) {
    EXPECT_EQ(listener.Heard(), Strings{"theme.wav"});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Welcome, Adventurer.");
    EXPECT_FALSE(platform::IsLoaded<frmDice>());
    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "theme2.wav"}));
    const std::string roll = robot::Text("frmDice", "txtResult");
    robot::Click("frmDice", "Cmnd(4)");
    robot::Click("frmDice", "Cmnd(3)");
    EXPECT_EQ(robot::ShownWindows(), Strings{"frmMain"});

    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "quit.wav", "click.wav"}));
    EXPECT_EQ(robot::Bounds("frmDice").Height, 32);
    EXPECT_EQ(robot::Text("frmDice", "txtResult"), roll);
}

TEST_F(Launcher, EndsWithAllThatIsOpen) {
    const std::function<void()> ends[] = {[] { robot::Click("frmMain", "Cmnd(2)"); },
                                          [] { robot::Click("frmMain", "Cmnd(3)"); },
                                          [] { robot::DesktopCloses("frmMain"); }};
    for (const auto& end : ends) {
        Show<frmMain>();
        robot::Click("frmMain", "Cmnd(1)");
        robot::Click("frmMain", "Cmnd(7)");
        listener.Heard();
        end();
        EXPECT_EQ(listener.Heard(), Strings{"quit.wav"});
        EXPECT_TRUE(robot::ShownWindows().empty());
    }
}

}  // namespace
