#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <set>

#include "platform/places.h"
#include "platform/profile_fixture.h"
#include "support/scripted_random.h"
#include "weapons/weapon_sheet.h"

namespace orvane {
namespace {

// Files of the test's own in the program's folder.
class WeaponFiles : public FolderTest {
 protected:
    WeaponFiles() { platform::SetPlaces({.UserData = Folder / "user", .Program = Folder}); }
    ~WeaponFiles() override { platform::SetPlaces(); }

    // A file from its lines, written with blanks between them.
    void Write(const char* file, std::string_view text) {
        std::string lines;
        for (const char c : text) lines += c == ' ' ? "\r\n" : std::string(1, c);
        Put(Folder / file, lines + "\r\n");
    }
    // A level of which percentages that are not given leave values as they are: of equal keys the first
    // counts.
    void WriteLevel(const char* file, const std::string& text) {
        Write(file, text +
                        " MinDamage=100 MaxDamage=100 MinDamageFatigue=100 MaxDamageFatigue=100 Defence=100 "
                        "AttackBonus=100 MaxDurability=100 Price=100 Weight=100");
    }
    std::string Sheet(std::vector<float> draws) {
        LoadWeapons(tables_);
        LoadModifiers(tables_);
        const ScriptedRandom random(std::move(draws));
        return BuildWeaponSheet(GenerateWeapon(tables_));
    }

    WeaponTables tables_;
};

TEST_F(WeaponFiles, FillEveryLineOfTheSheet) {
    Write("weapon.ini",
          "[WEAPON001] Name=W MinDamage=2 MaxDamage=10 MinDamageFatigue=5 MaxDamageFatigue=50 AttackBonus=40 "
          "Defence=60 CriticalBonus=70 DamageType=-1 Speed=80 Weight=90 Metal=1 BUC=1 Quality=1 ReqStr=11 "
          "CurDurability=1 MaxDurability=100 ReqDex=12 ReqLev=13 Hands=2 BasePrice=110 [HEAD] items=1");
    WriteLevel("quality.ini",
               "[LEVEL5] Name=Q MaxDamage=110 MinDamageFatigue=120 MaxDamageFatigue=130 AttackBonus=140 "
               "Defence=150 CriticalBonus=1 MaxDurability=160 ReqLev=2 Price=170 Weight=188 Speed=3");
    WriteLevel("buc.ini", "[LEVEL5] Name=B CriticalBonus=100 ReqLev=1");
    WriteLevel("metal.ini", "[LEVEL7] Name=M Speed=-90 Defence=-100 Price=50 Weight=25");
    EXPECT_EQ(Sheet({0, 0.9999F, 0.9999F, 0.9999F, 0.9999F}),
              "B Q M W\r\nDamage: 1D10+1\r\nDamage Fatigue: 59D2-53\r\nAttack Bonus: +56\r\n"
              "Critical Chance: 171\r\nDamage Type: Universal\r\nSpeed: -7\r\nDefence Bonus: -90\r\n"
              "Durability: 160 of 160\r\nWeight: 42.3\r\nRequired Strength: 11\r\n"
              "Required Dexterity: 12\r\nRequired Level: 16\r\n2-Handed\r\nShop price: 93.5");
}

TEST_F(WeaponFiles, MakeTheSheetOfABlade) {
    Write("weapon.ini",
          "[HEAD] items=1 [WEAPON001] Name=Blade MinDamage=2 MaxDamage=12 MinDamageFatigue=1 "
          "MaxDamageFatigue=6 AttackBonus=3 Defence=0 CriticalBonus=5 DamageType=1 Speed=10 Weight=45 "
          "MaxDurability=90 ReqStr=12 ReqDex=0 ReqLev=2 Hands=1 BasePrice=250");
    WriteLevel("quality.ini",
               "[LEVEL2] Name=Fine AttackBonus=200 MaxDurability=125 Price=150 CriticalBonus=2 ReqLev=1");
    WriteLevel("buc.ini", "[LEVEL3] Name=Plain");
    WriteLevel("metal.ini", "[LEVEL4] Name=Iron Price=95 Weight=90");
    EXPECT_EQ(Sheet({0, 1.5F / 5, 2.5F / 5, 3.5F / 7, 87.5F / 113}),
              "Plain Fine Iron Blade\r\nDamage: 2D6\r\nDamage Fatigue: 1D6\r\nAttack Bonus: +6\r\n"
              "Critical Chance: 7\r\nDamage Type: Slashing\r\nSpeed: 10\r\nDurability: 87 of 112.5\r\n"
              "Weight: 40.5\r\nRequired Strength: 12\r\nRequired Level: 3\r\n1-Handed\r\n"
              "Shop price: 356.25");
}

TEST_F(WeaponFiles, ItemsAloneSayHowManyThereAre) {
    Write(
        "weapon.ini",
        "[HEAD] items=1000.6 [WEAPON001] Name=First Speed=12abc Weight=abc Hands=2.5 [WEAPON003] Name=Third "
        "[WEAPON042] Name=Padded [WEAPON1000] Name=Long [WEAPON1002] Name=Beyond");
    LoadWeapons(tables_);
    const auto& weapons = tables_.Weapons;
    ASSERT_EQ(weapons.size(), 1001U);
    EXPECT_EQ(weapons[0].Speed, 12);
    EXPECT_EQ(weapons[0].Weight, 0);
    EXPECT_EQ(weapons[0].Hands, 2);
    std::string names;
    for (const std::size_t i : {0U, 1U, 2U, 41U, 999U, 1000U}) names += weapons[i].Name + ".";
    EXPECT_EQ(names, "First..Third.Padded.Long..");
}

TEST_F(WeaponFiles, TellsWhyThereAreNoWeapons) {
    const auto expectReason = [&](const std::string& words) {
        LoadWeapons(tables_);
        EXPECT_TRUE(tables_.Weapons.empty());
        const std::string reason = words + "\r\n" + (Folder / "weapon.ini").string();
        EXPECT_TRUE(tables_.NoWeaponsReason.ends_with(reason)) << tables_.NoWeaponsReason;
    };
    expectReason("is missing or cannot be read.");
    for (const char* items : {"0", "-5", "0.5", "many", "", "100001", "1e300"}) {
        Write("weapon.ini", std::string("[HEAD] items=") + items + " [WEAPON001] Name=Dagger");
        expectReason(std::atof(items) < 1 ? "must be at least 1." : "must be at most 100000.");
    }
    std::filesystem::resize_file(Folder / "weapon.ini", (std::uintmax_t{64} << 20) + 1);
    expectReason("is too large: it must have at most 64 MiB.");
    Write("weapon.ini", "[HEAD] items=100000");
    LoadWeapons(tables_);
    EXPECT_EQ(tables_.Weapons.size(), 100000U);
    EXPECT_EQ(tables_.NoWeaponsReason, "");
}

TEST(ShippedWeapons, ReadWellInEveryCombination) {
    const auto data = std::filesystem::path(ORVANE_SOURCE_FOLDER) / "data";
    platform::SetPlaces({.UserData = data / "user", .Program = data});
    WeaponTables tables;
    LoadWeapons(tables);
    LoadModifiers(tables);
    platform::SetPlaces();

    const int count = static_cast<int>(tables.Weapons.size());
    EXPECT_GE(count, 60) << tables.NoWeaponsReason;
    std::set<std::string> names = {""};
    for (const WeaponRecord& weapon : tables.Weapons)
        EXPECT_TRUE(names.insert(weapon.Name).second) << weapon.Name;
    for (const ModifierRecord& metal : tables.Metals)
        EXPECT_TRUE(names.insert(metal.Name).second) << metal.Name;

    const auto draw = [](int index, int of) {
        return (static_cast<float>(index % of) + 0.5F) / static_cast<float>(of);
    };
    const auto isDice = [](const std::string& text) { return !text.empty() && text.find('-') == text.npos; };
    const auto isPlain = [](double value, int scale) {
        return value > 0 && std::abs(value * scale - std::round(value * scale)) < 1e-6;
    };
    for (int i = 0; i < count * 5 * 5 * 7; ++i) {
        const ScriptedRandom random(
            {draw(i / 175, count), draw(i / 35, 5), draw(i / 7, 5), draw(i, 7), 0.9999F});
        const GeneratedWeapon made = GenerateWeapon(tables);
        SCOPED_TRACE(BuildWeaponSheet(made));
        EXPECT_TRUE(made.DamageMin > 0 && isDice(DiceFromRange(made.DamageMin, made.DamageMax)));
        EXPECT_TRUE(made.FatigueMin > 0 && isDice(DiceFromRange(made.FatigueMin, made.FatigueMax)));
        EXPECT_TRUE(made.CriticalChance > 0 && made.Speed > 0);
        EXPECT_EQ(made.HasAttackBonus, made.AttackBonus > 0);
        EXPECT_EQ(made.HasDefenceBonus, made.DefenceBonus > 0);
        EXPECT_EQ(made.HasReqLevel, made.ReqLevel > 1);
        EXPECT_TRUE(made.ReqStr >= 0 && made.ReqDex >= 0 && made.ReqLevel >= 0 && made.Hands >= 0);
        EXPECT_TRUE(isPlain(made.MaxDurability, 1) && isPlain(made.Weight, 100) &&
                    isPlain(made.ShopPrice, 100));
    }
}

}  // namespace
}  // namespace orvane
