#include "support/window_test.h"

using namespace orvane;

namespace {

constexpr std::string_view kForm = "frmWeapons";

class WeaponWindow : public WindowTest {
 protected:
    static std::string Result() { return robot::Text(kForm, "txtResult"); }

    const Path Weapons = Folder / "program" / "weapon.ini";
};

TEST_F(WeaponWindow, MakesAWeaponOnRequestFromTheFilesAsTheyWereAtItsLoad) {
    Put(Weapons,
        "[HEAD]\r\nitems=1\r\n[WEAPON001]\r\nName=Club\r\nMinDamage=1\r\nMaxDamage=6\r\nMinDamageFatigue="
        "1\r\n"
        "MaxDamageFatigue=4\r\nDamageType=2\r\nSpeed=9\r\nMaxDurability=50\r\nHands=1\r\nBasePrice=12\r\n");
    for (const char* file : {"quality.ini", "buc.ini", "metal.ini"}) {
        std::string text;
        for (const char i : {'1', '2', '3', '4', '5', '6', '7', '8'})
            text += std::string("[LEVEL") + i + "]\r\nName=n" + i +
                    "\r\nMinDamage=100\r\nMaxDamage=100\r\nMinDamageFatigue=100\r\nMaxDamageFatigue=100\r\n"
                    "MaxDurability=100\r\nPrice=100\r\n";
        Put(Folder / "program" / file, text);
    }
    Show<frmWeapons>();
    EXPECT_EQ(listener.Heard(), Strings{"theme2.wav"});
    EXPECT_EQ(Result(), "");
    std::filesystem::remove(Weapons);

    const ScriptedRandom draws({0.0F, 0.9F, 0.0F, 0.99F, 0.5F});
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(draws.Count(), 5);
    EXPECT_EQ(
        Result(),
        "n1 n5 n7 Club\r\nDamage: 1D6\r\nDamage Fatigue: 1D4\r\nCritical Chance: 0\r\nDamage Type: Blunt\r\n"
        "Speed: 9\r\nDurability: 25 of 50\r\nWeight: 0\r\n1-Handed\r\nShop price: 12");
    EXPECT_EQ(listener.Heard(), Strings{"chant.wav"});

    // The sheet may be changed by hand and is replaced by the next one.
    robot::Key(kForm, "Alt+R");
    robot::Type(kForm, "mine");
    EXPECT_NE(Result().find("mine"), std::string::npos);
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_TRUE(Result().starts_with("n1 n1 n1 Club\r\n"));
}

TEST_F(WeaponWindow, SaysWhyThereIsNoWeapon) {
    Put(Weapons, "[HEAD]\r\nitems=2000000000\r\n");
    Show<frmWeapons>();
    const std::string reason = Result();
    EXPECT_TRUE(reason.ends_with("must be at most 100000.\r\n" + Weapons.string())) << reason;
    const ScriptedRandom draws({});
    Enter(kForm, "Alt+R", "x");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(Result(), reason);
    EXPECT_EQ(draws.Count(), 0);
}

}  // namespace
