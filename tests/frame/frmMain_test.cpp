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

TEST_F(Launcher, GreetsWithItsTheme) {
    EXPECT_EQ(SoundEnabled, kTrue);
    EXPECT_EQ(listener.Heard(), Names{"theme.wav"});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Welcome, Adventurer.");
    EXPECT_FALSE(platform::IsLoaded<frmDice>());
}

TEST_F(Launcher, OpensAToolOnceAndShowsItAsItWasLeft) {
    listener.Heard();
    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Names{"click.wav", "theme2.wav"}));
    const std::string roll = robot::Text("frmDice", "txtResult");

    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), Names{"click.wav"});
    robot::Click("frmDice", "Cmnd(4)");
    robot::Click("frmDice", "Cmnd(3)");
    EXPECT_EQ(listener.Heard(), (Names{"click.wav", "quit.wav"}));
    EXPECT_FALSE(robot::Shown("frmDice"));
    EXPECT_TRUE(robot::Shown("frmMain"));

    robot::Click("frmMain", "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), Names{"click.wav"});
    EXPECT_TRUE(robot::Shown("frmDice"));
    EXPECT_EQ(robot::Bounds("frmDice").Height, 32);
    EXPECT_EQ(robot::Text("frmDice", "txtResult"), roll);
}

TEST_F(Launcher, HasAHintForSomeButtonsAndKeepsTheLastForOthers) {
    const std::pair<const char*, const char*> hints[] = {
        {"Cmnd(0)", "Stats generator counts Max and Min values of stats"},
        {"Cmnd(1)", "Will roll your favourite dice like 3D5-3"},
        {"Cmnd(2)", "Will quit program"},
        {"Cmnd(6)", "Will quit program"},
        {"Image5", "Will quit program"},
        {"Cmnd(5)", "Will count secondary stats"},
        {"Cmnd(3)", "Will quit program"},
        {"Cmnd(4)", "Will minimize window"},
        {"Cmnd(7)", "Will minimize window"},
        {"Cmnd(8)", "Will minimize window"},
        {"Label5", "Little help ..."},
        {"lblTitle", "Drag and move to move window"},
    };
    for (const auto& [control, hint] : hints) {
        robot::Hover("frmMain", control);
        EXPECT_EQ(robot::Text("frmMain", "Status"), hint) << control;
    }
    robot::Move("frmMain", {100, 270});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Tool tip :)");
    robot::Move("frmMain", {4, 100});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Ready!");
}

TEST_F(Launcher, AButtonWithoutAToolOnlyClicks) {
    listener.Heard();
    const Names windows = robot::ShownWindows();
    for (const char* button : {"Cmnd(0)", "Cmnd(5)", "Cmnd(6)", "Cmnd(8)"}) robot::Click("frmMain", button);
    EXPECT_EQ(listener.Heard(), (Names(4, "click.wav")));
    EXPECT_EQ(robot::ShownWindows(), windows);
}

TEST_F(Launcher, EndsWithAllThatIsOpen) {
    for (const char* end : {"Cmnd(2)", "Cmnd(3)"}) {
        TheForm<frmMain>().Show();
        robot::Click("frmMain", "Cmnd(1)");
        robot::Click("frmMain", "Cmnd(7)");
        listener.Heard();
        robot::Click("frmMain", end);
        EXPECT_EQ(listener.Heard(), Names{"quit.wav"});
        EXPECT_TRUE(robot::ShownWindows().empty());
    }
    TheForm<frmMain>().Show();
    robot::DesktopCloses("frmMain");
    EXPECT_EQ(listener.Heard(), Names{"quit.wav"});
    EXPECT_TRUE(robot::ShownWindows().empty());
}

}  // namespace
