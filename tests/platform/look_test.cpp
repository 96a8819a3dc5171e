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
    const std::string form = "frmRange2Dice";
    const platform::Rect from = robot::Bounds(form, "Label1"), box = robot::Bounds(form, "chkAuto");
    const auto underline = robot::Pixels(form, {from.Left, from.Top + 13, from.Width, 2});
    EXPECT_LE(std::ranges::count(underline, orvane::kWindowBack), 61);
    const platform::Rect mark{box.Left + 5, box.Top + 4, 9, 9};
    const auto unchecked = robot::Pixels(form, mark);
    robot::TurnTo(form);
    // Behind the last letter, which is the box's as well.
    robot::Press(form, {box.Left + 47, box.Top + 8});
    robot::Release(form, {box.Left + 47, box.Top + 8});
    EXPECT_TRUE(robot::Pixels(form, mark) != unchecked);
    const platform::Rect sheet = robot::Bounds("frmWeapons", "txtResult");  // the scroll bar's left edge
    EXPECT_EQ(robot::Pixel("frmWeapons", sheet.Left + sheet.Width - 13, sheet.Top + 78),
              orvane::kControlLine);
    const auto entry = robot::Pixels("frmStatsGenerator", {12, 131, 80, 15});
    robot::OpenList("frmStatsGenerator", "cmbClass");
    EXPECT_EQ(robot::PopupPixel(0, 30), orvane::kControlLine);
    EXPECT_EQ(robot::PopupPixel(100, 60), orvane::kControlColors.Back);
    robot::Press("frmStatsGenerator", {4, 28});
    EXPECT_TRUE(robot::Pixels("frmStatsGenerator", {12, 131, 80, 15}) == entry) << "nothing was chosen";
}
