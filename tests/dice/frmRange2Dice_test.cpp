#include "support/window_test.h"

namespace {

constexpr std::string_view kForm = "frmRange2Dice";

class RangeFinder : public WindowTest {
 protected:
    RangeFinder() { Show<orvane::frmRange2Dice>(); }

    static std::string Result() { return robot::Text(kForm, "txtResult"); }
};

TEST_F(RangeFinder, FindsOnRequestUntilItFollowsEachKeystroke) {
    EXPECT_EQ(listener.Heard(), Strings{"theme2.wav"});
    EXPECT_EQ(robot::Text(kForm, "Status"), "");
    Enter(kForm, "Alt+T", "20.5");
    EXPECT_EQ(Result(), "");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "1D20  Chk: 1 - 20");
    robot::Click(kForm, "chkAuto");
    EXPECT_EQ(listener.Heard(), (Strings{"chant.wav", "click.wav"}));
    for (const auto& [text, notation] :
         {std::pair{"", "Err1"}, {"1", "1"}, {"12", "1D12  Chk: 1 - 12"}, {"1e999", "Err2"}}) {
        Enter(kForm, "Alt+T", text);
        EXPECT_EQ(Result(), notation) << text;
    }
    Enter(kForm, "Alt+F", "1000000000");
    EXPECT_EQ(Result(), "127498183D10+872501817 Chk: 1000000000 - 2147483647");
    robot::Paste(kForm, std::string(1000, '9'));
    EXPECT_EQ(Result(), "2147483647");
    EXPECT_TRUE(listener.Heard().empty());
}

TEST_F(RangeFinder, HoldsTheFocusInABoxThatHoldsNoNumber) {
    Enter(kForm, "Alt+F", "12abc");
    for (const char* key : {"Tab", "Alt+T"}) {
        robot::Key(kForm, key);
        EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    }
    for (const char* control : {"txtTo", "chkAuto"}) {
        robot::Click(kForm, control);
        EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    }
    // A label-button takes no focus, so the text counts by the number that it begins with.
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "Err1");
    Enter(kForm, "Alt+F", "-5");
    robot::Key(kForm, "Tab");
    Enter(kForm, "Alt+T", "");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Focus(kForm), "txtTo");
}

}  // namespace
