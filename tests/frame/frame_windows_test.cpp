#include "frame/theme.h"
#include "support/window_test.h"

using namespace orvane;

constexpr std::string_view kForm = "frmDice";

class Chrome : public WindowTest {
 protected:
    Chrome() {
        Show<frmDice>();
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
        // Far outside the label the pointer still drags; a move to the grab point does nothing. In steps of
        // four, which are whole on a screen of any density.
        robot::Move(kForm, {grip.X + 32, grip.Y});
        robot::Move(kForm, {grip.X, grip.Y + 200});
        robot::Move(kForm, grip);
        for (const int way : {4, 8, 12, 8, 12}) robot::Move(kForm, {grip.X + way, grip.Y});
        EXPECT_EQ(robot::Text(kForm, "Status"), "Result");
        robot::Release(kForm, grip, button);
        robot::Move(kForm, {grip.X + 32, grip.Y});
        EXPECT_FLOAT_EQ(window.Left(), 3076);
        EXPECT_EQ(robot::Bounds(kForm).Left, 205);
        EXPECT_EQ(window.Top(), 3200);
        EXPECT_EQ(InCorner("lblTitle"), kTitleColors.Back);
        EXPECT_NE(robot::Text(kForm, "Status"), "Result");
    }
    robot::DesktopTellsLate(kForm, 202, 200);
    EXPECT_FLOAT_EQ(window.Left(), 3076);
    robot::DesktopMoves(kForm, 80, 52);
    EXPECT_EQ(window.Left(), 80 * 15);
    EXPECT_EQ(window.Top(), 52 * 15);
}

TEST_F(Chrome, RollsUpAndDownAndClosesAsTheDesktopAsks) {
    window.SetLeft(3000);
    window.SetTop(3000);
    robot::Hover(kForm, "Cmnd(4)");
    robot::Move(kForm, {4, 100});
    EXPECT_NE(robot::Text(kForm, "Status"), robot::Description(kForm, "Cmnd(4)"));
    const robot::Point middle = robot::Middle(kForm, "Cmnd(4)");
    for (const auto& [height, glyph] : {std::pair{32, "="}, {305, "_"}}) {
        robot::Press(kForm, middle);
        EXPECT_NE(InCorner("Cmnd(4)"), kControlColors.Back);
        robot::Release(kForm, middle);
        EXPECT_EQ(InCorner("Cmnd(4)"), kControlColors.Back);
        EXPECT_EQ(robot::Bounds(kForm).Height, height);
        EXPECT_EQ(robot::Pixel(kForm, 100, height - 1), kFrameLine);
        EXPECT_EQ(robot::Bounds(kForm).Top, 200);
        EXPECT_EQ(robot::Text(kForm, "Cmnd(4)"), glyph);
    }
    robot::DesktopCloses(kForm);
    EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "click.wav", "quit.wav"}));
    EXPECT_FALSE(robot::Shown(kForm));
    // A window that comes back stands where it stood.
    window.Show();
    EXPECT_EQ(robot::Bounds(kForm).Left, 200);
}

TEST_F(WindowTest, TheLauncherOpensAToolOnceShowsItAsItWasLeftAndEndsWithAll) {
    SoundEnabled = Truth{1};  // which is not the exact True
    PlayWave("click.wav");
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
