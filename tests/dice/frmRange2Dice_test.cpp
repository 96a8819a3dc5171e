#include "dice/frmRange2Dice.h"

#include <gtest/gtest.h>

#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

constexpr std::string_view kForm = "frmRange2Dice";

class RangeFinder : public testing::Test {
 protected:
    void SetUp() override {
        SoundEnabled = kTrue;
        TheForm<frmRange2Dice>().Show();
    }
    void TearDown() override { platform::UnloadForm<frmRange2Dice>(); }

    static std::string Result() { return robot::Text(kForm, "txtResult"); }
    static void Replace(const char* accessKey, std::string_view text) {
        robot::Key(kForm, accessKey);
        robot::Key(kForm, "Ctrl+A");
        robot::Key(kForm, "Backspace");
        robot::Type(kForm, text);
    }

    Listener listener;
};

TEST_F(RangeFinder, OpensWithoutAResultAndFindsOneOnRequest) {
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"theme2.wav"});
    EXPECT_EQ(Result(), "");
    EXPECT_EQ(robot::Text(kForm, "Status"), "");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "1D6  Chk: 1 - 6");
    Replace("Alt+T", "20.5");
    EXPECT_EQ(Result(), "1D6  Chk: 1 - 6");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "1D20  Chk: 1 - 20");
    Replace("Alt+F", "21");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "Err1");
    EXPECT_EQ(listener.Heard(), (std::vector<std::string>(3, "chant.wav")));
}

TEST_F(RangeFinder, FollowsEachKeystrokeInAutoMode) {
    listener.Heard();
    robot::Click(kForm, "chkAuto");
    EXPECT_EQ(Result(), "1D6  Chk: 1 - 6");
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"click.wav"});
    Replace("Alt+T", "");
    EXPECT_EQ(Result(), "Err1");
    robot::Type(kForm, "1");
    EXPECT_EQ(Result(), "1");
    robot::Type(kForm, "2");
    EXPECT_EQ(Result(), "1D12  Chk: 1 - 12");
    Replace("Alt+T", "2000000000");
    EXPECT_EQ(Result(), "Err2");
    Replace("Alt+F", "1000000000");
    EXPECT_EQ(Result(), "200000000D6+800000000 Chk: 1000000000 - 2000000000");
    Replace("Alt+T", "1e999");
    EXPECT_EQ(Result(), "127498183D10+872501817 Chk: 1000000000 - 2147483647");
    EXPECT_TRUE(listener.Heard().empty());
    robot::Click(kForm, "chkAuto");
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"click.wav"});
    const std::string last = Result();
    Replace("Alt+F", "7");
    EXPECT_EQ(Result(), last);
}

TEST_F(RangeFinder, HoldsTheFocusInABoxThatHoldsNoNumber) {
    Replace("Alt+F", "12abc");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    robot::Click(kForm, "txtTo");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    robot::Key(kForm, "Alt+T");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    robot::Click(kForm, "chkAuto");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    // A label-button takes no focus, so the text counts by the number that it begins with.
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "Err1");
    Replace("Alt+F", "");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    robot::Type(kForm, "-5");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Focus(kForm), "txtTo");
    robot::Key(kForm, "Ctrl+A");
    robot::Type(kForm, "-1");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "2D3-7 Chk: -5 - -1");
}

TEST_F(RangeFinder, TakesAMegabyteInAutoMode) {
    robot::Click(kForm, "chkAuto");
    robot::Key(kForm, "Alt+T");
    robot::Key(kForm, "Ctrl+A");
    robot::Paste(kForm, std::string(1000000, '9'));
    EXPECT_EQ(robot::Text(kForm, "txtTo").size(), 1000000U);
    EXPECT_EQ(Result(), "Err2");
}

TEST_F(RangeFinder, KeepsItsStateWhenItIsHidden) {
    Replace("Alt+T", "100");
    robot::Click(kForm, "chkAuto");
    robot::Click(kForm, "Cmnd(3)");
    EXPECT_FALSE(robot::Shown(kForm));
    TheForm<frmRange2Dice>().Show();
    EXPECT_EQ(Result(), "1D100  Chk: 1 - 100");
    for (const auto& [control, hint] :
         {std::pair{"Cmnd(1)", "Rolls dice and will show its maximum and minimum values"},
          std::pair{"txtTo", "Rolls dice and will show its maximum and minimum values"},
          std::pair{"Label5", "Help"}, std::pair{"chkAuto", "Help"}, std::pair{"Status", "Cool Tootip"}}) {
        robot::Hover(kForm, control);
        EXPECT_EQ(robot::Text(kForm, "Status"), hint) << control;
    }
}

}  // namespace
