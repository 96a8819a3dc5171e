#include "frame/frmMain.h"

#include <gtest/gtest.h>

#include "dice/frmDice.h"
#include "dice/frmRange2Dice.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

using Names = std::vector<std::string>;

class Launcher : public testing::Test {
 protected:
    void SetUp() override {
        static constexpr Tool kTools[] = {{1, [] { TheForm<frmDice>().Show(); }},
                                          {7, [] { TheForm<frmRange2Dice>().Show(); }}};
        frmMain::SetTools(kTools);
        TheForm<frmMain>().Show();
    }
    void TearDown() override {
        platform::UnloadForm<frmDice>();
        platform::UnloadForm<frmRange2Dice>();
        platform::UnloadForm<frmMain>();
        SoundEnabled = kFalse;
    }

    Listener listener;
};

TEST_F(Launcher, OpensAToolOnceAndShowsItAsItWasLeft) {
    EXPECT_EQ(listener.Heard(), Names{"theme.wav"});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Welcome, Adventurer.");
    EXPECT_FALSE(platform::IsLoaded<frmDice>());
    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Names{"click.wav", "theme2.wav"}));
    const std::string roll = robot::Text("frmDice", "txtResult");
    robot::Click("frmDice", "Cmnd(4)");
    robot::Click("frmDice", "Cmnd(3)");
    EXPECT_EQ(robot::ShownWindows(), Names{"frmMain"});

    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Names{"click.wav", "quit.wav", "click.wav"}));
    EXPECT_EQ(robot::Bounds("frmDice").Height, 32);
    EXPECT_EQ(robot::Text("frmDice", "txtResult"), roll);

    const Names windows = robot::ShownWindows();
    for (const char* withoutTool : {"Cmnd(0)", "Cmnd(5)"}) robot::Click("frmMain", withoutTool);
    EXPECT_EQ(listener.Heard(), (Names(2, "click.wav")));
    EXPECT_EQ(robot::ShownWindows(), windows);
}

TEST_F(Launcher, HasAHintForSomeButtonsAndKeepsTheLastForOthers) {
    robot::Hover("frmMain", "Cmnd(4)");
    robot::Hover("frmMain", "Cmnd(7)");
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Will minimize window");
    robot::Move("frmMain", {100, 270});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Tool tip :)");
    robot::Move("frmMain", {4, 100});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Ready!");
}

TEST_F(Launcher, EndsWithAllThatIsOpen) {
    for (const char* end : {"Cmnd(2)", "Cmnd(3)", "the desktop"}) {
        TheForm<frmMain>().Show();
        robot::Click("frmMain", "Cmnd(1)");
        robot::Click("frmMain", "Cmnd(7)");
        listener.Heard();
        if (std::string_view(end).starts_with("Cmnd")) {
            robot::Click("frmMain", end);
        } else {
            robot::DesktopCloses("frmMain");
        }
        EXPECT_EQ(listener.Heard(), Names{"quit.wav"}) << end;
        EXPECT_TRUE(robot::ShownWindows().empty()) << end;
    }
}

}  // namespace
