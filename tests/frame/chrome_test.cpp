#include "frame/chrome.h"

#include "frame/theme.h"
#include "support/window_test.h"

using namespace orvane;

namespace {

constexpr std::string_view kForm = "frmDice";

class Chrome : public WindowTest {
 protected:
    Chrome() {
        Show<frmDice>();
        window.SetLeft(3000);
        window.SetTop(3000);
        listener.Heard();
    }

    // Where the line of a press shows.
    static platform::Color InCorner(std::string_view control) {
        const platform::Rect at = robot::Bounds(kForm, control);
        return robot::Pixel(kForm, at.Left + 1, at.Top + 1);
    }

    frmDice& window = platform::TheForm<frmDice>();
};

TEST_F(Chrome, MovesByTwipsForPixels) {
    const robot::Point grip = robot::Middle(kForm, "lblTitle");
    for (const robot::Button button : {robot::Button::Left, robot::Button::Right}) {
        window.SetLeft(3000);
        window.SetTop(3000);
        robot::Press(kForm, grip, button);
        EXPECT_NE(InCorner("lblTitle"), kTitleColors.Back);
        robot::PressByAssistant(kForm, "Cmnd(1)");
        robot::Move(kForm, {grip.X + 30, grip.Y});
        EXPECT_EQ(robot::Text(kForm, "Status"), "Result");
        EXPECT_EQ(robot::Bounds(kForm).Left, 202);
        // Far outside the label the pointer still drags; a move to the grab point does nothing.
        robot::Move(kForm, {grip.X, grip.Y + 200});
        robot::Move(kForm, grip);
        for (int i = 1; i <= 9; ++i) robot::Move(kForm, {grip.X + i, grip.Y});
        robot::Release(kForm, {grip.X, grip.Y + 200}, button);
        robot::Move(kForm, {grip.X + 30, grip.Y});
        EXPECT_EQ(window.Left(), 3075);
        EXPECT_EQ(window.Top(), 3400);
        EXPECT_EQ(InCorner("lblTitle"), kTitleColors.Back);
    }
    robot::DesktopMoves(kForm, 70, 50);
    EXPECT_EQ(window.Left(), 70 * 15);
    EXPECT_EQ(window.Top(), 50 * 15);
}

TEST_F(Chrome, AButtonIsPressedWhereThePointerIs) {
    const robot::Point middle = robot::Middle(kForm, "Cmnd(1)");
    robot::Press(kForm, middle);
    EXPECT_NE(InCorner("Cmnd(1)"), kControlColors.Back);
    EXPECT_TRUE(listener.Heard().empty());
    robot::Release(kForm, {middle.X, middle.Y + 60});
    EXPECT_EQ(InCorner("Cmnd(1)"), kControlColors.Back);
    EXPECT_TRUE(listener.Heard().empty());
    robot::Click(kForm, "Cmnd(1)", robot::Button::Right);
    robot::DoubleClick(kForm, "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Strings(3, "chant.wav")));
}

TEST_F(Chrome, RollsUpAndDownAndClosesAsTheDesktopAsks) {
    for (const auto& [height, glyph] : {std::pair{32, "="}, {robot::Bounds(kForm).Height, "_"}}) {
        robot::Click(kForm, "Cmnd(4)");
        EXPECT_EQ(robot::Bounds(kForm).Height, height);
        EXPECT_EQ(robot::Bounds(kForm, "shpFrame").Height, height);
        EXPECT_EQ(robot::Bounds(kForm).Top, 200);
        EXPECT_EQ(robot::Text(kForm, "Cmnd(4)"), glyph);
    }
    robot::DesktopCloses(kForm);
    EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "click.wav", "quit.wav"}));
    EXPECT_FALSE(window.Visible());
    // A window that comes back stands where it stood.
    window.SetLeft(1500);
    window.Show();
    EXPECT_EQ(robot::Bounds(kForm).Left, 100);
}

}  // namespace
