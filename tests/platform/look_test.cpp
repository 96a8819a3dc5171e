// What every window must look like whatever the desktop's fonts, densities and languages are; a long check
// runs these under many.

#include <algorithm>

#include "frame/theme.h"
#include "support/window_test.h"

class Look : public WindowTest {
 protected:
    Look() {
        Each([]<class Form>() { Show<Form>(); });
    }
};

// Of every hint of the status line, too, which is what assistive technology says of the control.
TEST_F(Look, EveryTextIsWhole) {
    for (const std::string& form : robot::ShownWindows()) {
        for (const std::string& control : robot::Controls(form)) {
            robot::Hover(form, control);
            EXPECT_EQ(robot::CutTexts(form), Strings()) << control << " of " << form;
            // A cell of the grid is described by its row and has no hint.
            const std::string hint = control.starts_with("cmnd") ? "" : robot::Description(form, control);
            EXPECT_TRUE(hint.empty() || robot::Text(form, "Status") == hint) << control << " of " << form;
        }
    }
    std::string sheet = std::string(31, '0');
    for (int line = 2; line <= 14; ++line) sheet += "\n" + std::string(31, '0');
    robot::Key("frmWeapons", "Alt+R");
    robot::Key("frmWeapons", "Ctrl+A");
    robot::Paste("frmWeapons", sheet);
    EXPECT_TRUE(robot::Whole("frmWeapons", "txtResult"));
    EXPECT_TRUE(robot::Whole("frmDice", "txtResult"));
}

// A look at a few spots: what is drawn in colours of the theme, from left to right in every language.
TEST_F(Look, TheThemeIsDrawn) {
    for (const std::string& form : robot::ShownWindows()) {
        const bool themed = form != "frmEditQuestions";
        EXPECT_EQ(robot::OnTop(form), themed) << form;
        EXPECT_EQ(robot::Pixel(form, 4, 28) == orvane::kWindowBack, themed) << form;
    }
    const auto underline = robot::Pixels("frmRange2Dice", {8, 45, 33, 2});
    EXPECT_LE(std::ranges::count(underline, orvane::kWindowBack), 61);
    constexpr platform::Rect kMark{13, 60, 9, 9};
    const auto unchecked = robot::Pixels("frmRange2Dice", kMark);
    robot::TurnTo("frmRange2Dice");
    // Behind the last letter, which is the box's as well.
    robot::Press("frmRange2Dice", {55, 64});
    robot::Release("frmRange2Dice", {55, 64});
    EXPECT_TRUE(robot::Pixels("frmRange2Dice", kMark) != unchecked);
    EXPECT_EQ(robot::Pixel("frmWeapons", 260, 150), orvane::kControlLine);  // the scroll bar's left edge
    robot::OpenList("frmStatsGenerator", "cmbClass");
    EXPECT_EQ(robot::PopupPixel(0, 30), orvane::kControlLine);
    EXPECT_EQ(robot::PopupPixel(100, 60), orvane::kControlColors.Back);
}
