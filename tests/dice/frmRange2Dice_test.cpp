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

TEST_F(RangeFinder, FindsOnRequestUntilItFollowsEachKeystroke) {
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"theme2.wav"});
    EXPECT_EQ(robot::Text(kForm, "Status"), "");
    Replace("Alt+T", "20.5");
    EXPECT_EQ(Result(), "");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "1D20  Chk: 1 - 20");
    robot::Click(kForm, "chkAuto");
    EXPECT_EQ(listener.Heard(), (std::vector<std::string>{"chant.wav", "click.wav"}));
    const std::pair<std::string, const char*> cases[] = {
        {"", "Err1"},
        {"1", "1"},
        {"12", "1D12  Chk: 1 - 12"},
        {"1e999", "Err2"},
    };
    for (const auto& [text, notation] : cases) {
        Replace("Alt+T", text);
        EXPECT_EQ(Result(), notation) << text;
    }
    Replace("Alt+F", "1000000000");
    EXPECT_EQ(Result(), "127498183D10+872501817 Chk: 1000000000 - 2147483647");
    robot::Paste(kForm, std::string(1000000, '9'));
    EXPECT_EQ(robot::Text(kForm, "txtFrom").size(), 1000010U);
    EXPECT_EQ(Result(), "2147483647");
    EXPECT_TRUE(listener.Heard().empty());
}

TEST_F(RangeFinder, HoldsTheFocusInABoxThatHoldsNoNumber) {
    Replace("Alt+F", "12abc");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    robot::Key(kForm, "Alt+T");
    EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    for (const char* control : {"txtTo", "chkAuto"}) {
        robot::Click(kForm, control);
        EXPECT_EQ(robot::Focus(kForm), "txtFrom");
    }
    // A label-button takes no focus, so the text counts by the number that it begins with.
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "Err1");
    Replace("Alt+F", "-5");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Focus(kForm), "txtTo");
}

}  // namespace
