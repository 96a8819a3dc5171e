#include "support/window_test.h"

using namespace orvane;

TEST_F(WindowTest, TheRollerRollsWhenItOpensAndCleansItsBoxes) {
    const ScriptedRandom draws({0.8F, 0.5F});
    const auto text = [](std::string_view control) { return robot::Text("frmDice", control); };
    Show<frmDice>();
    EXPECT_EQ(text("txtResult"),
              "Dice:    1D6 +1\r\nRange:   2 to 7\r\nAverage: 4.5\r\n\r\nResult of roll: 6");
    EXPECT_EQ(text("Status"), "Result");
    for (const auto& [accessKey, box] : {std::pair{"Alt+N", "txtN"}, {"Alt+S", "txtS"}, {"Alt+B", "txtB"}}) {
        Enter("frmDice", accessKey, "-0x038");
        EXPECT_EQ(text(box), "003");
        robot::Click("frmDice", "txtResult");
        EXPECT_EQ(text(box), "3");
    }
    robot::Choose("frmDice", "cmbPM", 1);
    Enter("frmDice", "Alt+B", "02");
    robot::Click("frmDice", "Cmnd(1)");
    EXPECT_EQ(text("txtB"), "2");
    EXPECT_TRUE(text("txtResult").starts_with("Dice:    3D3 -2\r\n")) << text("txtResult");
    EXPECT_EQ(draws.Count(), 2);
    robot::Click("frmDice", "Cmnd(0)");
    robot::Click("frmDice", "txtResult");
    robot::Type("frmDice", "x");
    EXPECT_EQ(robot::Clipboard(), text("txtResult"));
    EXPECT_EQ(listener.Heard(), (Strings{"theme2.wav", "chant.wav", "click.wav"}));
}

TEST_F(WindowTest, TheFinderCountsAsSoonAsAutoIsCheckedAndWantsNumbers) {
    const std::string_view form = "frmRange2Dice";
    const auto result = [form] { return robot::Text(form, "txtResult"); };
    Show<frmRange2Dice>();
    for (const auto& [accessKey, box] : {std::pair{"Alt+T", "txtTo"}, {"Alt+F", "txtFrom"}}) {
        Enter(form, accessKey, "2.5abc");
        robot::Key(form, "Tab");
        EXPECT_EQ(robot::Focus(form), box);
        Enter(form, accessKey, "20.5");
    }
    EXPECT_EQ(result(), "");
    robot::Click(form, "chkAuto");
    EXPECT_EQ(result(), "20");
    Enter(form, "Alt+F", "1");
    EXPECT_EQ(result(), "1D20  Chk: 1 - 20");
    Enter(form, "Alt+T", "");
    EXPECT_EQ(result(), "Err1");
    robot::Click(form, "Cmnd(1)");
    EXPECT_EQ(listener.Heard(), (Strings{"theme2.wav", "click.wav", "chant.wav"}));
}
