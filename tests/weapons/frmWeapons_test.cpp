#include "support/window_test.h"

using namespace orvane;

constexpr std::string_view kForm = "frmWeapons";

TEST_F(WindowTest, WeaponsAreMadeOnRequestFromTheFilesAsTheyWereAtTheLoad) {
    const auto result = [] { return robot::Text(kForm, "txtResult"); };
    const Path weapons = Program / "weapon.ini";
    Show<frmWeapons>();
    for (int press = 0; press < 2; ++press) {
        EXPECT_TRUE(result().ends_with(weapons.string())) << result();
        robot::Click(kForm, "Cmnd(1)");
    }
    platform::UnloadForm<frmWeapons>();
    listener.Heard();

    Put(weapons, "[HEAD]\r\nitems=1\r\n[WEAPON001]\r\nName=Club\r\n");
    Put(Program / "metal.ini", "[LEVEL7]\r\nName=Tin\r\n");
    Show<frmWeapons>();
    EXPECT_EQ(result(), "");
    std::filesystem::remove(weapons);
    const ScriptedRandom draws({0.0F, 0.0F, 0.0F, 0.99F});
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_EQ(draws.Count(), 5);
    EXPECT_TRUE(result().starts_with("  Tin Club\r\n")) << result();
    EXPECT_EQ(listener.Heard(), (Strings{"theme2.wav", "chant.wav"}));
    // The sheet may be changed by hand and is replaced by the next one.
    Enter(kForm, "Alt+R", "mine");
    EXPECT_EQ(result(), "mine");
    robot::Click(kForm, "Cmnd(1)");
    EXPECT_TRUE(result().starts_with("   Club\r\n"));
}
