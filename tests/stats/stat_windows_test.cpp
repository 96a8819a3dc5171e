#include <gtest/gtest.h>

#include <random>

#include "platform/random.h"
#include "stats/frmStatsCounter.h"
#include "stats/frmStatsGenerator.h"
#include "stats/modifier_tables.h"
#include "stats/stat_model.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

using Names = std::vector<std::string>;

constexpr std::string_view kGenerator = "frmStatsGenerator";
constexpr std::string_view kCounter = "frmStatsCounter";

std::string Cell(std::string_view column, int row) { return robot::Text(kCounter, ElementName(column, row)); }

class StatWindows : public testing::Test {
 protected:
    void SetUp() override {
        SoundEnabled = kTrue;
        platform::SetRandomSource({});
    }
    void TearDown() override {
        platform::UnloadForm<frmStatsGenerator>();
        platform::UnloadForm<frmStatsCounter>();
    }
    // As the launcher does it.
    template <class Window>
    void Open() {
        PlayWave("click.wav");
        TheForm<Window>().Show();
    }
    static void ExpectGridShowsModel() {
        std::int32_t total = 0;
        for (int row = 0; row < 9; ++row) {
            const StatRecord& stat = Stats[static_cast<std::size_t>(row)];
            ASSERT_EQ(Cell("cmndName", row), stat.Name);
            ASSERT_EQ(Cell("cmndRange", row), std::to_string(stat.Min) + "-" + std::to_string(stat.Max));
            ASSERT_EQ(Cell("cmndValue", row), std::to_string(stat.Value));
            ASSERT_LE(stat.Min, stat.Value);
            ASSERT_GE(stat.Max, stat.Value);
            total += stat.Value;
        }
        ASSERT_EQ(PointsToDistribute, 81 - total);
        ASSERT_EQ(robot::Text(kCounter, "cmndToDistribute"), PoolText(PointsToDistribute));
        const std::string sheet = robot::Text(kCounter, "txtTextOut");
        ASSERT_TRUE(sheet.ends_with(std::to_string(PointsToDistribute)));
        ASSERT_NE(sheet.find("Total"), std::string::npos);
    }

    Listener listener;
};

TEST_F(StatWindows, TheGeneratorFirstHidesAFilledCounter) {
    // The counter's load brings the generator to the screen before the first count is heard.
    Names heard;
    platform::SetSoundPlayer([&](std::string_view name) {
        heard.push_back(std::string(name) + (robot::Shown(kGenerator) ? ", generator shown" : ""));
    });
    Open<frmStatsGenerator>();
    EXPECT_EQ(heard, (Names{"click.wav", "theme2.wav", "chant.wav, generator shown"}));
    EXPECT_EQ(robot::ShownWindows(), Names{std::string(kGenerator)});
    EXPECT_TRUE(platform::IsLoaded<frmStatsCounter>());
    ExpectGridShowsModel();
    EXPECT_TRUE(robot::Text(kGenerator, "txtTextOut")
                    .starts_with("Male Human Warrior\r\nStats        Min  Max  Bon\r\n"));
    EXPECT_TRUE(robot::Whole(kGenerator, "txtTextOut"));
    Open<frmStatsCounter>();
    EXPECT_EQ(heard.size(), 4U);
    EXPECT_TRUE(robot::Whole(kCounter, "txtTextOut"));
    for (const std::string_view form : {kGenerator, kCounter})
        EXPECT_EQ(robot::Text(form, "Status"), "Welcome, Adventurer.");
}

TEST_F(StatWindows, TheCounterFirstShowsBothInSilence) {
    Open<frmStatsCounter>();
    EXPECT_EQ(listener.Heard(), (Names{"click.wav", "theme2.wav"}));
    EXPECT_TRUE(robot::Shown(kGenerator));
    EXPECT_TRUE(robot::Shown(kCounter));
    EXPECT_EQ(SoundEnabled, kTrue);
    ExpectGridShowsModel();
    // Once both are loaded each comes and goes alone.
    robot::Click(kGenerator, "Cmnd(2)");
    robot::Click(kCounter, "Cmnd(3)");
    Open<frmStatsCounter>();
    EXPECT_FALSE(robot::Shown(kGenerator));
    EXPECT_EQ(listener.Heard(), (Names{"quit.wav", "quit.wav", "click.wav"}));
}

TEST_F(StatWindows, EveryChoiceAndEveryKeyCountsAnew) {
    Open<frmStatsGenerator>();
    listener.Heard();
    platform::ScriptedRandom draws(std::vector<float>(1000, 0.6F));
    robot::Choose(kGenerator, "cmbRace", 6);
    EXPECT_EQ(robot::Text(kGenerator, "Status"), "Choose your race here.");
    EXPECT_EQ(listener.Heard(), Names{"chant.wav"});
    EXPECT_TRUE(robot::Text(kGenerator, "txtTextOut").starts_with("Male Drakeling Warrior\r\n"));
    const int drawn = draws.Count();
    EXPECT_EQ(drawn, 9);
    robot::Key(kGenerator, "X");
    EXPECT_EQ(listener.Heard(), Names{"chant.wav"});
    EXPECT_EQ(draws.Count(), 18);
    robot::Key(kGenerator, "Up");
    EXPECT_EQ(listener.Heard(), Names{"chant.wav"});
    EXPECT_TRUE(robot::Text(kGenerator, "txtTextOut").starts_with("Male Orc Warrior\r\n"));
    robot::OpenList(kGenerator, "cmbClass");
    EXPECT_EQ(robot::Text(kGenerator, "Status"), "Choose your class here.");
    robot::KeyInOpenList(kGenerator, "cmbClass", "M");
    EXPECT_EQ(listener.Heard(), Names{"chant.wav"});
    robot::KeyInOpenList(kGenerator, "cmbClass", "Return");
    EXPECT_EQ(listener.Heard(), (Names{"chant.wav", "chant.wav"}));
    EXPECT_TRUE(robot::Text(kGenerator, "txtTextOut").starts_with("Male Orc Mage\r\n"));
    robot::Click(kGenerator, "Cmnd(0)");
    EXPECT_EQ(robot::Clipboard(), robot::Text(kGenerator, "txtTextOut"));
    ExpectGridShowsModel();
}

TEST_F(StatWindows, RandomizeInEitherWindowIsOneCount) {
    Open<frmStatsCounter>();
    for (const std::string_view form : {kGenerator, kCounter}) {
        listener.Heard();
        platform::ScriptedRandom draws(
            std::vector<float>{0.95F, 0.95F, 0.95F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F, 0.6F});
        robot::Click(form, "Cmnd(1)");
        EXPECT_EQ(listener.Heard(), Names{"chant.wav"});
        EXPECT_EQ(draws.Count(), 12);
        EXPECT_TRUE(robot::Text(kGenerator, "txtTextOut").starts_with("Female Drakeling Mentant\r\n"));
        EXPECT_EQ(Stats[0].Value, 3 + 9 - 2);
        ExpectGridShowsModel();
    }
    // From the clock, not from the state that every start has.
    robot::Click(kCounter, "Cmnd(1)");
    const float reseeded = platform::NextRandom();
    robot::Click(kCounter, "Cmnd(1)");
    EXPECT_NE(platform::NextRandom(), reseeded);
}

TEST_F(StatWindows, StepsMoveOnePointEachUpToTheBounds) {
    Open<frmStatsCounter>();
    listener.Heard();
    const std::int32_t value = Stats[3].Value;
    const std::int32_t toMax = Stats[3].Max - value;
    const std::int32_t pool = PointsToDistribute;
    for (int i = 1; i < toMax; ++i) {
        robot::DoubleClick(kCounter, "cmndPlus(3)");
        robot::Click(kCounter, "cmndMinus(3)");
    }
    EXPECT_EQ(Cell("cmndValue", 3), std::to_string(Stats[3].Max - 1));
    listener.Heard();
    robot::Click(kCounter, "cmndPlus(3)");
    robot::Click(kCounter, "cmndPlus(3)");
    EXPECT_EQ(listener.Heard(), (Names{"click.wav", "quit.wav"}));
    EXPECT_EQ(Stats[3].Value, Stats[3].Max);
    EXPECT_EQ(PointsToDistribute, pool - toMax);
    ExpectGridShowsModel();
    for (int i = 0; i < toMax; ++i) robot::Click(kCounter, "cmndMinus(3)");
    EXPECT_EQ(Stats[3].Value, value);
    EXPECT_EQ(PointsToDistribute, pool);
    robot::Click(kCounter, "Cmnd(0)");
    EXPECT_EQ(robot::Clipboard(), robot::Text(kCounter, "txtTextOut"));
}

TEST_F(StatWindows, TenThousandRandomStepsAndSelectionsKeepTheInvariants) {
    Open<frmStatsCounter>();
    std::mt19937 dice(20);
    const auto any = [&](int sides) { return static_cast<int>(dice() % static_cast<unsigned>(sides)); };
    const char* const lists[] = {"Alt+S", "Alt+R", "Alt+C"};
    for (int i = 0; i < 10000; ++i) {
        switch (any(8)) {
            case 0:
                robot::Key(kGenerator, lists[any(3)]);
                robot::Key(kGenerator, any(2) == 0 ? "Up" : "Down");
                robot::Key(kGenerator, "X");  // counts also where the list has come to its end
                for (const StatRecord& stat : Stats)
                    ASSERT_TRUE(stat.Min < stat.Value && stat.Value < stat.Max);
                break;
            case 1: robot::Click(any(2) == 0 ? kGenerator : kCounter, "Cmnd(1)"); break;
            default: robot::Click(kCounter, ElementName(any(2) == 0 ? "cmndPlus" : "cmndMinus", any(9)));
        }
        if (i % 10 == 0) ExpectGridShowsModel();
        std::int32_t total = 0;
        for (const StatRecord& stat : Stats) {
            ASSERT_TRUE(stat.Min <= stat.Value && stat.Value <= stat.Max);
            total += stat.Value;
        }
        ASSERT_EQ(PointsToDistribute, 81 - total);
    }
}

}  // namespace
