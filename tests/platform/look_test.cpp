// What every window must look like whatever the desktop's fonts, densities and languages are;
// tools/check/looks.sh runs these under many.

#include "support/window_test.h"

namespace {

class Look : public WindowTest {
 protected:
    Look() {
        Each([]<class Form>() { Show<Form>(); });
    }
};

// The layout and its English texts run from left to right for every user; what a user enters stays as
// entered.
TEST_F(Look, NothingIsMirrored) {
    for (const std::string& form : robot::ShownWindows()) {
        for (const std::string& control : robot::Controls(form))
            EXPECT_TRUE(robot::LeftToRight(form, control)) << control << " of " << form;
    }
    const std::string hebrew = "שלום 12 עולם abc";
    for (const std::string_view box : {"txtAnsver(1)", "txtQuestion"}) {
        robot::Click("frmEditQuestions", box);
        robot::Paste("frmEditQuestions", hebrew);
        EXPECT_EQ(robot::Text("frmEditQuestions", box), hebrew);
    }
}

TEST_F(Look, EveryTextIsWhole) {
    for (const std::string& form : robot::ShownWindows()) {
        EXPECT_EQ(robot::CutTexts(form), Strings()) << form;
        // Every hint of the status line.
        for (const std::string& control : robot::Controls(form)) {
            if (form == "frmEditQuestions") continue;
            robot::Hover(form, control);
            EXPECT_EQ(robot::CutTexts(form), Strings()) << control << " of " << form;
        }
    }
    EXPECT_TRUE(robot::RoomFor("frmStatsGenerator", "txtTextOut", 26, 11));
    EXPECT_TRUE(robot::RoomFor("frmDice", "txtResult", 24, 5));
    std::string sheet = std::string(31, '0');
    for (int line = 2; line <= 14; ++line) sheet += "\n" + std::string(31, '0');
    robot::Key("frmWeapons", "Alt+R");
    robot::Key("frmWeapons", "Ctrl+A");
    robot::Paste("frmWeapons", sheet);
    EXPECT_TRUE(robot::Whole("frmWeapons", "txtResult"));
}

// A control without a hint leaves the last one.
TEST_F(Look, HintsFollowThePointer) {
    const struct {
        const char *Form, *Control, *Hint;
    } rows[] = {
        {"frmMain", "Cmnd(4)", "Will minimize window"},
        {"frmMain", "Cmnd(7)", "Will minimize window"},
        {"frmMain", "Status", "Tool tip :)"},
        {"frmDice", "lblTitle", "Drag and move to move window"},
        {"frmDice", "txtB", "Bonus/penalty to roll"},
        {"frmDice", "txtResult", "Bonus/penalty to roll"},
        {"frmDice", "Label5", "Help"},
        {"frmDice", "Status", "Cool Tootip"},
        {"frmWeapons", "Cmnd(1)", "Rolls dice and will show its maximum and minimum values"},
        {"frmWeapons", "Cmnd(4)", "Will minimize window"},
        {"frmWeapons", "txtResult", "Will minimize window"},
        {"frmWeapons", "Label5", "Help"},
        {"frmAling", "lblInput(3)", "Answer number 3."},
        {"frmAling", "Label1", "Answer number 3."},
        {"frmAling", "picOutPut", "Alingment visual display"},
        {"frmAling", "Status", "Alingment visual display"},
        {"frmAling", "txtQuestion", "Question"},
    };
    for (const auto& [form, control, hint] : rows) {
        robot::Hover(form, control);
        EXPECT_EQ(robot::Text(form, "Status"), hint) << control << " of " << form;
    }
    robot::Move("frmMain", {4, 100});
    EXPECT_EQ(robot::Text("frmMain", "Status"), "Ready!");
}

}  // namespace
