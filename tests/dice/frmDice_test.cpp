#include "dice/frmDice.h"

#include <gtest/gtest.h>

#include "platform/random.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

constexpr std::string_view kForm = "frmDice";

class DiceRoller : public testing::Test {
 protected:
    void SetUp() override {
        SoundEnabled = kTrue;
        TheForm<frmDice>().Show();
    }
    void TearDown() override { platform::UnloadForm<frmDice>(); }

    static std::string Result() { return robot::Text(kForm, "txtResult"); }
    static void Focus(const char* accessKey) { robot::Key(kForm, accessKey); }

    platform::ScriptedRandom draws{{0.8F, 0.5F, 0.0F}};
    Listener listener;
};

TEST_F(DiceRoller, OpensWithARollAndASound) {
    EXPECT_EQ(Result(), "Dice:    1D6 +1\r\nRange:   2 to 7\r\nAverage: 4.5\r\n\r\nResult of roll: 6");
    EXPECT_EQ(robot::Text(kForm, "Status"), "Result");
    EXPECT_EQ(robot::Text(kForm, "cmbPM"), "+");
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"theme2.wav"});
    EXPECT_EQ(SoundEnabled, kTrue);
    EXPECT_EQ(draws.Count(), 1);
    EXPECT_EQ(robot::Focus(kForm), "txtN");
}

TEST_F(DiceRoller, RollsWhatIsTypedAndCopiesIt) {
    Focus("Alt+N");
    robot::Key(kForm, "Ctrl+A");
    robot::Type(kForm, "3");
    Focus("Alt+S");
    EXPECT_EQ(robot::Focus(kForm), "txtS");
    robot::Key(kForm, "Ctrl+A");
    robot::Type(kForm, "8");
    robot::Choose(kForm, "cmbPM", 1);
    EXPECT_EQ(robot::Text(kForm, "cmbPM"), "-");
    Focus("Alt+B");
    robot::Key(kForm, "Ctrl+A");
    robot::Type(kForm, "3");
    listener.Heard();
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "Dice:    3D8 -3\r\nRange:   0 to 21\r\nAverage: 10.5\r\n\r\nResult of roll: 11");
    EXPECT_EQ(robot::Focus(kForm), "txtB");
    robot::Click(kForm, "Cmnd(0)");
    EXPECT_EQ(robot::Clipboard(), Result());
    robot::Click(kForm, "Cmnd(2)");
    EXPECT_EQ(listener.Heard(), (std::vector<std::string>{"chant.wav", "click.wav", "quit.wav"}));
    EXPECT_FALSE(robot::Shown(kForm));
}

TEST_F(DiceRoller, CleansABoxThatIsLeftAndAllBoxesOnARoll) {
    Focus("Alt+N");
    robot::Key(kForm, "Ctrl+A");
    robot::Key(kForm, "Backspace");
    robot::Key(kForm, "Tab");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "1");
    EXPECT_EQ(robot::Focus(kForm), "txtS");
    robot::Key(kForm, "Ctrl+A");
    robot::Paste(kForm, "-07");
    EXPECT_EQ(robot::Text(kForm, "txtS"), "-07");
    Focus("Alt+B");
    EXPECT_EQ(robot::Text(kForm, "txtS"), "7");
    robot::Key(kForm, "Ctrl+A");
    robot::Key(kForm, "Backspace");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(robot::Text(kForm, "txtB"), "0");
    EXPECT_TRUE(Result().starts_with("Dice:    1D7\r\n"));
}

TEST_F(DiceRoller, TypesDigitsOnlyAndAtMostThree) {
    Focus("Alt+N");
    robot::Key(kForm, "Ctrl+A");
    robot::Type(kForm, "-1.2e x34");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "123");
    robot::Key(kForm, "Ctrl+A");
    robot::Paste(kForm, std::string(1000000, '7'));
    EXPECT_EQ(robot::Text(kForm, "txtN"), "777");
}

TEST_F(DiceRoller, AnswersSanelyToAPastedExponent) {
    Focus("Alt+N");
    robot::Key(kForm, "Ctrl+A");
    robot::Paste(kForm, "9e9");
    Focus("Alt+S");
    robot::Key(kForm, "Ctrl+A");
    robot::Paste(kForm, "1e9");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "9000000000");
    EXPECT_EQ(Result(),
              "Dice:    2147483647D1000000000 +1\r\nRange:   2147483647 to 2147483647\r\nAverage: "
              "2147483647\r\n\r\n"
              "Result of roll: 2147483647");
    // What the program made longer than the limit can be edited, but does not grow.
    Focus("Alt+N");
    robot::Key(kForm, "End");
    robot::Type(kForm, "5");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "9000000000");
    robot::Key(kForm, "Backspace");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "900000000");
}

TEST_F(DiceRoller, ShowsAHintForWhatHasOne) {
    const std::pair<const char*, const char*> hints[] = {
        {"Cmnd(0)", "Will copy result to clipboard"},
        {"Cmnd(1)", "Rolls dice and will show its maximum and minimum values"},
        {"Cmnd(2)", "Will close this window"},
        {"txtN", "Number of dices to be rolled"},
        {"txtS", "Number of sides of dice(s)"},
        {"cmbPM", "Number of sides of dice(s)"},
        {"txtB", "Bonus/penalty to roll"},
        {"txtResult", "Bonus/penalty to roll"},
        {"Label4", "Bonus/penalty to roll"},
        {"Cmnd(3)", "Will close this window"},
        {"Label5", "Help"},
        {"Status", "Cool Tootip"},
    };
    for (const auto& [control, hint] : hints) {
        robot::Hover(kForm, control);
        EXPECT_EQ(robot::Text(kForm, "Status"), hint) << control;
    }
}

TEST_F(DiceRoller, KeepsItsTabOrder) {
    Focus("Alt+N");
    for (const char* next : {"txtS", "cmbPM", "txtB", "txtResult", "txtN"}) {
        robot::Key(kForm, "Tab");
        EXPECT_EQ(robot::Focus(kForm), next);
    }
    Focus("Alt+P");
    EXPECT_EQ(robot::Focus(kForm), "cmbPM");
    Focus("Alt+R");
    EXPECT_EQ(robot::Focus(kForm), "txtResult");
    robot::Type(kForm, "x");
    EXPECT_EQ(Result().find('x'), std::string::npos);
}

}  // namespace
