// What every window must look like whatever the desktop's fonts, densities and languages are;
// tools/check/looks.sh runs these under many.

#include <gtest/gtest.h>

#include "alignment/frmAling.h"
#include "alignment/frmEditQuestions.h"
#include "dice/frmDice.h"
#include "dice/frmRange2Dice.h"
#include "frame/frmMain.h"
#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"
#include "support/robot.h"
#include "weapons/frmWeapons.h"

using namespace orvane;
using platform::TheForm;

namespace {

const std::vector<std::string> kNothing;

class Look : public testing::Test {
 protected:
    void SetUp() override {
        TheForm<frmMain>().Show();
        TheForm<frmDice>().Show();
        TheForm<frmRange2Dice>().Show();
        TheForm<frmStatsGenerator>().Show();
        TheForm<frmStatsCounter>().Show();
        TheForm<frmWeapons>().Show();
        TheForm<frmAling>().Show();
        TheForm<frmEditQuestions>().Show();
    }
    void TearDown() override {
        platform::UnloadForm<frmMain>();
        platform::UnloadForm<frmDice>();
        platform::UnloadForm<frmRange2Dice>();
        platform::UnloadForm<frmStatsGenerator>();
        platform::UnloadForm<frmStatsCounter>();
        platform::UnloadForm<frmWeapons>();
        platform::UnloadForm<frmAling>();
        platform::UnloadForm<frmEditQuestions>();
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
        EXPECT_EQ(robot::CutTexts(form), kNothing) << form;
        // Every hint of the status line.
        for (const std::string& control : robot::Controls(form)) {
            if (form == "frmEditQuestions") continue;
            robot::Hover(form, control);
            EXPECT_EQ(robot::CutTexts(form), kNothing) << control << " of " << form;
        }
    }
    EXPECT_TRUE(robot::RoomFor("frmStatsGenerator", "txtTextOut", 26, 11));
    EXPECT_TRUE(robot::RoomFor("frmDice", "txtResult", 24, 5));
}

}  // namespace
