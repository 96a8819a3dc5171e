#include "stats/modifier_tables.h"
#include "stats/stat_model.h"
#include "stats/stat_sheet.h"
#include "support/window_test.h"

using namespace orvane;

constexpr std::string_view kGenerator = "frmStatsGenerator";
constexpr std::string_view kCounter = "frmStatsCounter";

class StatWindows : public WindowTest {
 protected:
    static std::string Result() { return robot::Text(kGenerator, "txtTextOut"); }
    static void ExpectCounterShowsModel() {
        const auto text = [](std::string_view control) { return robot::Text(kCounter, control); };
        EXPECT_EQ(text("cmndName(8)"), "Luck");
        EXPECT_EQ(text("cmndRange(8)"), NumberText(Stats[8].Min) + "-" + NumberText(Stats[8].Max));
        EXPECT_EQ(text("cmndValue(8)"), NumberText(Stats[8].Value));
        EXPECT_EQ(text("cmndToDistribute"), PoolText(PointsToDistribute));
        EXPECT_EQ(text("txtTextOut"), BuildStatSheet(Stats, PointsToDistribute));
    }
};

TEST_F(StatWindows, TheGeneratorFirstHidesAFilledCounter) {
    // The counter's load brings the generator to the screen before the first count is heard.
    Strings heard;
    platform::SetSoundPlayer([&heard](std::string_view name) {
        heard.push_back(std::string(name) + (robot::Shown(kGenerator) ? ", generator shown" : ""));
    });
    Show<frmStatsGenerator>();
    EXPECT_EQ(heard, (Strings{"theme2.wav", "chant.wav, generator shown"}));
    EXPECT_EQ(robot::ShownWindows(), Strings{std::string(kGenerator)});
    EXPECT_TRUE(Result().starts_with("Male Human Warrior\r\n"));
    EXPECT_EQ(robot::Text(kGenerator, "Status"), "Welcome, Adventurer.");
    ExpectCounterShowsModel();
}

TEST_F(StatWindows, TheCounterFirstShowsBothInSilenceAndThenComesAlone) {
    Show<frmStatsCounter>();
    EXPECT_EQ(listener.Heard(), Strings{"theme2.wav"});
    EXPECT_EQ(robot::Text(kCounter, "Status"), "Welcome, Adventurer.");
    ExpectCounterShowsModel();
    robot::Click(kGenerator, "Cmnd(2)");
    robot::Click(kCounter, "Cmnd(3)");
    Show<frmStatsCounter>();
    EXPECT_FALSE(robot::Shown(kGenerator));
    EXPECT_EQ(listener.Heard(), (Strings{"quit.wav", "quit.wav"}));
}

TEST_F(StatWindows, AChoiceAKeyAndRandomizeAreOneCountEach) {
    Show<frmStatsCounter>();
    listener.Heard();
    robot::Choose(kGenerator, "cmbClass", 6);
    EXPECT_EQ(robot::Text(kGenerator, "Status"), "Choose your class here.");
    robot::Key(kGenerator, "X");
    EXPECT_TRUE(Result().starts_with("Male Human Mage\r\n")) << Result();
    ExpectCounterShowsModel();
    {
        const ScriptedRandom draws(
            {0.99F, 0.99F, 0.99F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F});
        robot::Click(kCounter, "Cmnd(1)");
        EXPECT_EQ(draws.Count(), 12);
    }
    EXPECT_EQ(listener.Heard(), Strings(3, "chant.wav"));
    const std::string race(RaceModifiers.back().Entry), cls(ClassModifiers.back().Entry);
    EXPECT_TRUE(Result().starts_with("Female " + race + " " + cls + "\r\n")) << Result();
    ExpectCounterShowsModel();
    const auto seeded = [] {
        platform::SetRandomSource({});
        robot::Click(kGenerator, "Cmnd(1)");
        return platform::NextRandom();
    };
    EXPECT_NE(seeded(), seeded());
}

TEST_F(StatWindows, StepsMoveOnePointEachUpToTheBounds) {
    Show<frmStatsCounter>();
    StatRecord& luck = Stats.back();
    for (const auto& [button, bound, step] :
         {std::tuple("cmndPlus(8)", luck.Max, 1), {"cmndMinus(8)", luck.Min, -1}}) {
        luck.Value = bound - step;
        const std::int32_t pool = PointsToDistribute;
        listener.Heard();
        for (int press = 0; press < 2; ++press) robot::Click(kCounter, button);
        EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "quit.wav"}));
        EXPECT_EQ(luck.Value, bound);
        EXPECT_EQ(PointsToDistribute, pool - step);
        ExpectCounterShowsModel();
    }
}
