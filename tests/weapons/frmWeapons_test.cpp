#include "weapons/frmWeapons.h"

#include "platform/places.h"
#include "platform/profile_fixture.h"
#include "platform/random.h"
#include "support/robot.h"
#include "support/sounds.h"

using namespace orvane;
using platform::TheForm;

namespace {

constexpr std::string_view kForm = "frmWeapons";

class WeaponWindow : public FolderTest {
 protected:
    WeaponWindow() {
        SoundEnabled = kTrue;
        platform::SetPlaces({Folder / "user", Folder});
    }
    ~WeaponWindow() override {
        platform::UnloadForm<frmWeapons>();
        platform::SetPlaces();
    }

    static std::string Result() { return robot::Text(kForm, "txtResult"); }

    Listener listener;
};

TEST_F(WeaponWindow, MakesAWeaponOnRequestFromTheFilesAsTheyWereAtItsLoad) {
    const std::string levels =
        "MinDamage=100\r\nMaxDamage=100\r\nMinDamageFatigue=100\r\nMaxDamageFatigue=100\r\n"
        "MaxDurability=100\r\nPrice=100\r\nWeight=100\r\n";
    Put(Folder / "weapon.ini",
        "[HEAD]\r\nitems=1\r\n[WEAPON001]\r\nName=Club\r\nMinDamage=1\r\nMaxDamage=6\r\nMinDamageFatigue="
        "1\r\n"
        "MaxDamageFatigue=4\r\nDamageType=2\r\nSpeed=9\r\nWeight=30\r\nMaxDurability=50\r\nHands="
        "1\r\nBasePrice=12\r\n");
    for (const char* file : {"quality.ini", "buc.ini", "metal.ini"}) {
        std::string text;
        for (int i = 1; i <= 8; ++i)
            text += "[LEVEL" + std::to_string(i) + "]\r\nName=n" + std::to_string(i) + "\r\n" + levels;
        Put(Folder / file, text);
    }
    TheForm<frmWeapons>().Show();
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"theme2.wav"});
    EXPECT_EQ(Result(), "");
    std::filesystem::remove(Folder / "weapon.ini");

    const platform::ScriptedRandom draws({0.0F, 0.9F, 0.0F, 0.99F, 0.5F});
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(draws.Count(), 5);
    EXPECT_EQ(
        Result(),
        "n1 n5 n7 Club\r\nDamage: 1D6\r\nDamage Fatigue: 1D4\r\nCritical Chance: 0\r\nDamage Type: Blunt\r\n"
        "Speed: 9\r\nDurability: 25 of 50\r\nWeight: 30\r\n1-Handed\r\nShop price: 12");
    EXPECT_EQ(listener.Heard(), std::vector<std::string>{"chant.wav"});

    // The sheet may be changed by hand and is replaced by the next one.
    robot::Key(kForm, "Alt+R");
    robot::Type(kForm, "mine");
    EXPECT_NE(Result().find("mine"), std::string::npos);
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_TRUE(Result().starts_with("n1 n1 n1 Club\r\n"));
    robot::Click(kForm, "Cmnd(3)");
    EXPECT_FALSE(robot::Shown(kForm));
}

TEST_F(WeaponWindow, SaysWhyThereIsNoWeapon) {
    Put(Folder / "weapon.ini", "[HEAD]\r\nitems=2000000000\r\n");
    TheForm<frmWeapons>().Show();
    const std::string reason = Result();
    EXPECT_NE(reason.find("100000"), std::string::npos) << reason;
    EXPECT_TRUE(reason.ends_with("\r\n" + (Folder / "weapon.ini").string())) << reason;
    const platform::ScriptedRandom draws({});
    robot::Key(kForm, "Alt+R");
    robot::Type(kForm, "x");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), reason);
    EXPECT_EQ(draws.Count(), 0);
}

TEST_F(WeaponWindow, HasItsHints) {
    TheForm<frmWeapons>().Show();
    for (const auto& [control, hint] :
         {std::pair{"Cmnd(1)", "Rolls dice and will show its maximum and minimum values"},
          std::pair{"Cmnd(4)", "Will minimize window"}, std::pair{"txtResult", "Will minimize window"},
          std::pair{"Label5", "Help"}, std::pair{"Status", "Cool Tootip"}}) {
        robot::Hover(kForm, control);
        EXPECT_EQ(robot::Text(kForm, "Status"), hint) << control;
    }
}

}  // namespace
