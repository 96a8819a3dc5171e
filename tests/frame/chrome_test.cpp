#include "frame/chrome.h"

#include <gtest/gtest.h>

#include "dice/frmDice.h"
#include "frame/theme.h"
#include "platform/random.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

constexpr std::string_view kForm = "frmDice";

class Chrome : public testing::Test {
 protected:
    void SetUp() override {
        SoundEnabled = kTrue;
        TheForm<frmDice>().Show();
        window.SetLeft(3000);
        window.SetTop(3000);
        listener.Heard();
    }
    void TearDown() override { platform::UnloadForm<frmDice>(); }

    platform::ScriptedRandom draws{{0.0F, 0.9F}};
    Listener listener;
    frmDice& window = TheForm<frmDice>();
};

TEST_F(Chrome, MovesByTwipsForPixels) {
    const robot::Point grip = robot::Middle(kForm, "lblTitle");
    for (const robot::Button button : {robot::Button::Left, robot::Button::Right}) {
        window.SetLeft(3000);
        window.SetTop(3000);
        robot::Press(kForm, grip, button);
        robot::Move(kForm, {grip.X + 30, grip.Y});
        EXPECT_EQ(window.Left(), 3030);
        EXPECT_EQ(window.Top(), 3000);
        EXPECT_EQ(robot::Bounds(kForm).Left, 202);
        // Far outside the label the pointer still drags; a move to the grab point does nothing.
        robot::Move(kForm, {grip.X, grip.Y + 200});
        robot::Move(kForm, grip);
        EXPECT_EQ(window.Left(), 3030);
        EXPECT_EQ(window.Top(), 3200);
        robot::Release(kForm, {grip.X, grip.Y + 200}, button);
        robot::Move(kForm, {grip.X + 30, grip.Y});
        EXPECT_EQ(window.Left(), 3030);
    }
}

TEST_F(Chrome, AddsUpFractionsOfAPixelAndFollowsTheDesktop) {
    const robot::Point grip = robot::Middle(kForm, "lblTitle");
    robot::Press(kForm, grip);
    for (int i = 1; i <= 9; ++i) robot::Move(kForm, {grip.X + i, grip.Y});
    robot::Release(kForm, grip);
    EXPECT_EQ(window.Left(), 3045);
    EXPECT_EQ(robot::Bounds(kForm).Left, 203);
    robot::DesktopMoves(kForm, 70, 50);
    EXPECT_EQ(window.Left(), 70 * 15);
    EXPECT_EQ(window.Top(), 50 * 15);
}

TEST_F(Chrome, ShowsADragRoundTheTitleAndLeavesTheStatusAlone) {
    robot::Hover(kForm, "lblTitle");
    EXPECT_EQ(robot::Text(kForm, "Status"), "Drag and move to move window");
    const robot::Point grip = robot::Middle(kForm, "lblTitle");
    EXPECT_EQ(robot::Pixel(kForm, 49, 9), kTitleColors.Back);
    robot::Press(kForm, grip);
    EXPECT_NE(robot::Pixel(kForm, 49, 9), kTitleColors.Back);
    robot::PressByAssistant(kForm, "Cmnd(1)");
    EXPECT_EQ(robot::Text(kForm, "Status"), "Result");
    robot::Move(kForm, {grip.X + 5, grip.Y});
    EXPECT_EQ(robot::Text(kForm, "Status"), "Result");
    robot::Release(kForm, grip);
    EXPECT_EQ(robot::Pixel(kForm, 49, 9), kTitleColors.Back);
}

TEST_F(Chrome, AButtonIsPressedWhereThePointerIs) {
    const robot::Point middle = robot::Middle(kForm, "Cmnd(1)");
    robot::Press(kForm, middle);
    EXPECT_NE(robot::Pixel(kForm, 81, 193), kControlColors.Back);
    EXPECT_TRUE(listener.Heard().empty());
    robot::Release(kForm, {middle.X, middle.Y + 60});
    EXPECT_EQ(robot::Pixel(kForm, 81, 193), kControlColors.Back);
    EXPECT_TRUE(listener.Heard().empty());
    robot::Click(kForm, "Cmnd(1)", robot::Button::Right);
    robot::DoubleClick(kForm, "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (std::vector<std::string>(3, "chant.wav")));
}

TEST_F(Chrome, RollsUpAndDown) {
    window.SetHeight(4575);
    const std::string text = robot::Text(kForm, "txtResult");
    robot::Click(kForm, "Cmnd(4)");
    EXPECT_EQ(robot::Bounds(kForm).Height, 32);
    EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, 32);
    EXPECT_EQ(robot::Bounds(kForm).Top, 200);
    EXPECT_EQ(robot::Text(kForm, "Cmnd(4)"), "=");
    robot::Hover(kForm, "Cmnd(4)");
    EXPECT_EQ(robot::Text(kForm, "Status"), "Will minimize window");
    robot::Click(kForm, "Cmnd(4)");
    EXPECT_EQ(window.Height(), 4575);
    EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, 305);
    EXPECT_EQ(robot::Text(kForm, "Cmnd(4)"), "_");
    EXPECT_EQ(robot::Text(kForm, "txtResult"), text);
    EXPECT_EQ(listener.Heard(), (std::vector<std::string>(2, "click.wav")));
}

TEST_F(Chrome, ClosesAsTheDesktopAsks) {
    robot::DesktopCloses(kForm);
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"quit.wav"});
    EXPECT_FALSE(window.Visible());
    // A window that comes back stands where it stood.
    window.SetLeft(1500);
    window.Show();
    EXPECT_EQ(robot::Bounds(kForm).Left, 100);
}

TEST_F(Chrome, IsDrawnInTheColoursOfTheTheme) {
    EXPECT_EQ(robot::Pixel(kForm, 0, 0), kFrameLine);
    EXPECT_EQ(robot::Pixel(kForm, 208, 304), kFrameLine);
    EXPECT_EQ(robot::Pixel(kForm, 4, 100), kWindowBack);
    EXPECT_EQ(robot::Pixel(kForm, 48, 8), kTitleLine);
    EXPECT_EQ(robot::Pixel(kForm, 8, 192), kControlLine);
    EXPECT_EQ(robot::Pixel(kForm, 7, 103), kControlLine);
    EXPECT_EQ(robot::Pixel(kForm, 10, 194), kControlColors.Back);
    EXPECT_EQ(robot::Pixel(kForm, 190, 180), kControlColors.Back);
}

TEST_F(Chrome, TellsAssistiveTechnologyWhatAUserSees) {
    const robot::Told button = robot::Describe(kForm, "Cmnd(1)");
    EXPECT_EQ(button.Name, "Roll Dice !");
    EXPECT_EQ(button.Role, "button");
    EXPECT_EQ(robot::Describe(kForm, "txtN").Name, "Number");
    EXPECT_EQ(robot::Describe(kForm, "cmbPM").Name, "Plus");
    EXPECT_EQ(robot::Describe(kForm, "Status").Name, "Result");
    EXPECT_EQ(robot::Describe(kForm, "Status").Role, "text");
    robot::PressByAssistant(kForm, "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"chant.wav"});
}

}  // namespace
