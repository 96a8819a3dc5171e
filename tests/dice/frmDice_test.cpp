#include "support/window_test.h"

namespace {

constexpr std::string_view kForm = "frmDice";

class DiceRoller : public WindowTest {
 protected:
    DiceRoller() { Show<orvane::frmDice>(); }

    static std::string Result() { return robot::Text(kForm, "txtResult"); }
    // Replaces what the box with the access key holds.
    static void Paste(const char* accessKey, std::string_view text) {
        Enter(kForm, accessKey, "");
        robot::Paste(kForm, text);
    }

    ScriptedRandom draws{{0.8F, 0.5F, 0.0F}};
};

TEST_F(DiceRoller, RollsWhenItOpensAndOnRequest) {
    EXPECT_EQ(Result(), "Dice:    1D6 +1\r\nRange:   2 to 7\r\nAverage: 4.5\r\n\r\nResult of roll: 6");
    EXPECT_EQ(robot::Text(kForm, "Status"), "Result");
    EXPECT_EQ(listener.Heard(), Strings{"theme2.wav"});
    EXPECT_EQ(robot::Focus(kForm), "txtN");
    Paste("Alt+N", "3");
    Paste("Alt+S", "-08");
    robot::Choose(kForm, "cmbPM", 1);
    EXPECT_EQ(robot::Text(kForm, "txtS"), "8");
    Paste("Alt+B", "3");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), "Dice:    3D8 -3\r\nRange:   0 to 21\r\nAverage: 10.5\r\n\r\nResult of roll: 11");
    EXPECT_EQ(draws.Count(), 2);
    EXPECT_EQ(robot::Focus(kForm), "txtB");
    robot::Click(kForm, "Cmnd(0)");
    EXPECT_EQ(robot::Clipboard(), Result());
    EXPECT_EQ(listener.Heard(), (Strings{"chant.wav", "click.wav"}));
}

TEST_F(DiceRoller, HoldsBoxesToThreeDigitsAndCleansThem) {
    Paste("Alt+N", std::string(1000000, '7'));
    EXPECT_EQ(robot::Text(kForm, "txtN"), "777");
    for (const auto& [accessKey, box] : {std::pair{"Alt+N", "txtN"}, {"Alt+S", "txtS"}, {"Alt+B", "txtB"}}) {
        Enter(kForm, accessKey, "-1.2e x34");
        EXPECT_EQ(robot::Text(kForm, box), "123");
    }
    Paste("Alt+B", "x");
    Paste("Alt+S", "1e9");
    Paste("Alt+N", "9e9");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(robot::Text(kForm, "txtB"), "0");
    EXPECT_TRUE(Result().starts_with("Dice:    2147483647D1000000000\r\n")) << Result();
    // What the program made longer than the limit can be edited, but does not grow.
    robot::Key(kForm, "End");
    robot::Type(kForm, "5");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "9000000000");
    robot::Key(kForm, "Backspace");
    EXPECT_EQ(robot::Text(kForm, "txtN"), "900000000");
}

}  // namespace
