#include "stats/modifier_tables.h"
#include "stats/stat_model.h"
#include "stats/stat_sheet.h"
#include "support/window_test.h"

using namespace orvane;

namespace {

constexpr std::string_view kGenerator = "frmStatsGenerator";
constexpr std::string_view kCounter = "frmStatsCounter";

class StatWindows : public WindowTest {
 protected:
    // As the launcher does it.
    template <class Window>
    void Open() {
        PlayWave("click.wav");
        Show<Window>();
    }
    static std::string Result() { return robot::Text(kGenerator, "txtTextOut"); }
    static void ExpectGridShowsModel() {
        for (int row = 0; row < 9; ++row) {
            const auto cell = [&](std::string_view column) {
                return robot::Text(kCounter, ControlName(column, row).Text());
            };
            const StatRecord& stat = Stats[static_cast<std::size_t>(row)];
            EXPECT_EQ(cell("cmndName"), stat.Name);
            EXPECT_EQ(cell("cmndRange"), std::to_string(stat.Min) + "-" + std::to_string(stat.Max));
            EXPECT_EQ(cell("cmndValue"), std::to_string(stat.Value));
        }
        EXPECT_EQ(robot::Text(kCounter, "cmndToDistribute"), PoolText(PointsToDistribute));
        EXPECT_EQ(robot::Text(kCounter, "txtTextOut"), BuildStatSheet(Stats, PointsToDistribute));
    }
};

TEST_F(StatWindows, TheGeneratorFirstHidesAFilledCounter) {
    // The counter's load brings the generator to the screen before the first count is heard.
    Strings heard;
    platform::SetSoundPlayer([&](std::string_view name) {
        heard.push_back(std::string(name) + (robot::Shown(kGenerator) ? ", generator shown" : ""));
    });
    Open<frmStatsGenerator>();
    EXPECT_EQ(heard, (Strings{"click.wav", "theme2.wav", "chant.wav, generator shown"}));
    EXPECT_EQ(robot::ShownWindows(), Strings{std::string(kGenerator)});
    EXPECT_TRUE(platform::IsLoaded<frmStatsCounter>());
    ExpectGridShowsModel();
    EXPECT_TRUE(Result().starts_with("Male Human Warrior\r\nStats        Min  Max  Bon\r\n"));
    Open<frmStatsCounter>();
    EXPECT_EQ(heard.size(), 4U);
    for (const std::string_view form : {kGenerator, kCounter}) {
        EXPECT_TRUE(robot::Whole(form, "txtTextOut"));
        EXPECT_EQ(robot::Text(form, "Status"), "Welcome, Adventurer.");
    }
}

TEST_F(StatWindows, TheCounterFirstShowsBothInSilence) {
    Open<frmStatsCounter>();
    EXPECT_EQ(listener.Heard(), (Strings{"click.wav", "theme2.wav"}));
    EXPECT_EQ(robot::ShownWindows().size(), 2U);
    EXPECT_EQ(SoundEnabled, kTrue);
    ExpectGridShowsModel();
    // Once both are loaded each comes and goes alone.
    robot::Click(kGenerator, "Cmnd(2)");
    robot::Click(kCounter, "Cmnd(3)");
    Open<frmStatsCounter>();
    EXPECT_FALSE(robot::Shown(kGenerator));
    EXPECT_EQ(listener.Heard(), (Strings{"quit.wav", "quit.wav", "click.wav"}));
}

TEST_F(StatWindows, EveryChoiceAndEveryKeyCountsAnew) {
    Open<frmStatsGenerator>();
    listener.Heard();
    ScriptedRandom draws(std::vector<float>(1000, 0.6F));
    const auto expectCounts = [&](std::size_t counts, const std::string& selection) {
        EXPECT_EQ(listener.Heard(), Strings(counts, "chant.wav"));
        EXPECT_TRUE(Result().starts_with(selection + "\r\n")) << Result();
    };
    robot::Choose(kGenerator, "cmbRace", 6);
    EXPECT_EQ(robot::Text(kGenerator, "Status"), "Choose your race here.");
    expectCounts(1, "Male Drakeling Warrior");
    EXPECT_EQ(draws.Count(), 9);
    robot::Key(kGenerator, "X");
    expectCounts(1, "Male Drakeling Warrior");
    EXPECT_EQ(draws.Count(), 18);
    robot::Key(kGenerator, "Up");
    expectCounts(1, "Male Orc Warrior");
    robot::OpenList(kGenerator, "cmbClass");
    EXPECT_EQ(robot::Text(kGenerator, "Status"), "Choose your class here.");
    robot::KeyInOpenList(kGenerator, "cmbClass", "M");
    expectCounts(1, "Male Orc Warrior");
    robot::KeyInOpenList(kGenerator, "cmbClass", "Return");
    expectCounts(2, "Male Orc Mage");
    ExpectGridShowsModel();
}

TEST_F(StatWindows, RandomizeInEitherWindowIsOneCount) {
    Open<frmStatsCounter>();
    for (const std::string_view form : {kGenerator, kCounter}) {
        listener.Heard();
        std::vector<float> values(12, 0.6F);
        std::fill_n(values.begin(), 3, 0.95F);
        ScriptedRandom draws(std::move(values));
        robot::Click(form, "Cmnd(1)");
        EXPECT_EQ(listener.Heard(), Strings{"chant.wav"});
        EXPECT_EQ(draws.Count(), 12);
        EXPECT_TRUE(Result().starts_with("Female Drakeling Mentant\r\n"));
        EXPECT_EQ(Stats[0].Value, 3 + 9 - 2);
        ExpectGridShowsModel();
    }
    // From the clock, not from the state that every start has.
    const auto seeded = [] {
        platform::SetRandomSource({});
        robot::Click(kCounter, "Cmnd(1)");
        return platform::NextRandom();
    };
    EXPECT_NE(seeded(), seeded());
}

TEST_F(StatWindows, StepsMoveOnePointEachUpToTheBounds) {
    Open<frmStatsCounter>();
    const struct {
        const char* Button;
        std::int32_t Bound, Step;
    } ways[] = {{"cmndPlus(3)", Stats[3].Max, 1}, {"cmndMinus(3)", Stats[3].Min, -1}};
    for (const auto& [button, bound, step] : ways) {
        while (Stats[3].Value != bound && !HasFailure()) {
            const std::int32_t value = Stats[3].Value, pool = PointsToDistribute;
            listener.Heard();
            robot::Click(kCounter, button);
            EXPECT_EQ(listener.Heard(), Strings{"click.wav"});
            EXPECT_EQ(Stats[3].Value, value + step);
            EXPECT_EQ(PointsToDistribute, pool - step);
            ExpectGridShowsModel();
        }
        robot::Click(kCounter, button);
        EXPECT_EQ(listener.Heard(), Strings{"quit.wav"});
        EXPECT_EQ(Stats[3].Value, bound);
    }
}

}  // namespace
