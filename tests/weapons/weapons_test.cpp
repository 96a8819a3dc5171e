#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "frame/number_text.h"
#include "platform/profile_fixture.h"
#include "support/seams.h"
#include "weapons/weapon_sheet.h"

using namespace orvane;

// Files of the test's own in the program's folder.
class WeaponFiles : public FolderTest {
 protected:
    // A file from its lines, written with blanks between them.
    void Write(const char* file, std::string_view text) {
        std::string lines;
        for (const char c : text) lines += c == ' ' ? "\r\n" : std::string(1, c);
        Put(Program / file, lines + "\r\n");
    }
    // A level whose percentages are 100 where the text gives none: of equal keys the first counts.
    void WriteLevel(const char* file, const std::string& text) {
        Write(file, text +
                        " MinDamage=100 MaxDamage=100 MinDamageFatigue=100 MaxDamageFatigue=100 Defence=100 "
                        "AttackBonus=100 MaxDurability=100 Price=100 Weight=100");
    }
    // Of a weapon that is made of the files with these draws.
    std::string Sheet(const std::vector<float>& draws) {
        LoadWeapons(tables_);
        LoadModifiers(tables_);
        const ScriptedRandom random(draws);
        return BuildWeaponSheet(GenerateWeapon(tables_));
    }

    WeaponTables tables_;
};

// Without level files all percentages are 0.
TEST_F(WeaponFiles, ShowBonusesByTheBaseWeaponAndTheLevelWithoutTheBucLevel) {
    const auto sheet = [this](const std::string& keys) {
        Write("weapon.ini",
              "[HEAD] items=1 [WEAPON001] Name=Stick MaxDurability=90 ReqStr=-2 ReqLev=1 " + keys);
        return Sheet({0, 0, 0, 0, 0.9999999F});
    };
    Write("buc.ini", "[LEVEL1] ReqLev=3");
    EXPECT_EQ(sheet("AttackBonus=90 Defence=-2 DamageType=2"),
              "   Stick\r\nDamage: 0\r\nDamage Fatigue: 0\r\nAttack Bonus: \r\nCritical Chance: 0\r\n"
              "Damage Type: Blunt\r\nSpeed: 0\r\nDefence Bonus: \r\nDurability: 0 of 0\r\nWeight: 0\r\n"
              "0-Handed\r\nShop price: 0");
    Write("quality.ini", "[LEVEL1] MinDamage=100");
    Write("metal.ini", "[LEVEL1] MinDamage=100 ReqLev=1");
    Write("buc.ini", "[LEVEL1] MinDamage=100 ReqLev=-1");
    EXPECT_EQ(sheet("MinDamage=1 DamageType=2"),
              "   Stick\r\nDamage: \r\nDamage Fatigue: 0\r\nCritical Chance: 0\r\nDamage Type: Blunt\r\n"
              "Speed: 0\r\nDurability: 0 of 0\r\nWeight: 0\r\nRequired Level: 1\r\n0-Handed\r\n"
              "Shop price: 0");
    EXPECT_EQ(std::string(DamageTypeName(0)).append(DamageTypeName(1)), "PiercingSlashing");
}

TEST_F(WeaponFiles, FillEveryLineOfTheSheet) {
    Write("weapon.ini",
          "[WEAPON001] Name=W MinDamage=2 MaxDamage=10 MinDamageFatigue=5 MaxDamageFatigue=50 AttackBonus=50 "
          "Defence=60 CriticalBonus=70 DamageType=-1 Speed=80 Weight=90 Metal=1 BUC=1 Quality=1 ReqStr=11 "
          "CurDurability=1 MaxDurability=90 ReqDex=12 ReqLev=13 Hands=2 BasePrice=110 [HEAD] items=1");
    WriteLevel("quality.ini",
               "[LEVEL5] Name=Q MaxDamage=110 MinDamageFatigue=120 MaxDamageFatigue=130 AttackBonus=110 "
               "Defence=150 CriticalBonus=1 MaxDurability=125 ReqLev=2 Price=170 Weight=188 Speed=3");
    WriteLevel("buc.ini", "[LEVEL5] Name=B AttackBonus=120 CriticalBonus=100 ReqLev=1");
    WriteLevel("metal.ini", "[LEVEL7] Name=M AttackBonus=125 Speed=-90 Defence=-100 Price=50 Weight=25");
    // The bonus is 82.5 or just below in any other order of the steps, and just above in theirs.
    EXPECT_EQ(Sheet({0, 0.9999F, 0.9999F, 0.9999F, 0.9999F}),
              "B Q M W\r\nDamage: 1D10+1\r\nDamage Fatigue: 59D2-53\r\nAttack Bonus: +83\r\n"
              "Critical Chance: 171\r\nDamage Type: Universal\r\nSpeed: -7\r\nDefence Bonus: -90\r\n"
              "Durability: 112 of 112.5\r\nWeight: 42.3\r\nRequired Strength: 11\r\n"
              "Required Dexterity: 12\r\nRequired Level: 16\r\n2-Handed\r\nShop price: 93.5");
}

TEST_F(WeaponFiles, ItemsAloneSayHowManyThereAre) {
    Write(
        "weapon.ini",
        "[HEAD] items=1000.6 [WEAPON001] Name=First Speed=12abc Weight=abc Hands=2.5 [WEAPON003] Name=Third "
        "[WEAPON042] Name=Padded [WEAPON1000] Name=Long [WEAPON1002] Name=Beyond");
    LoadWeapons(tables_);
    const auto& weapons = tables_.Weapons;
    ASSERT_EQ(weapons.size(), 1001U);
    EXPECT_EQ((std::array{weapons[0].Speed, weapons[0].Weight, weapons[0].Hands}), (std::array{12, 0, 2}));
    std::string names;
    for (const std::size_t i : {0U, 1U, 2U, 41U, 999U, 1000U}) names += weapons[i].Name + ".";
    EXPECT_EQ(names, "First..Third.Padded.Long..");
}

TEST_F(WeaponFiles, TellsWhyThereAreNoWeapons) {
    const auto reason = [&] {
        LoadWeapons(tables_);
        EXPECT_EQ(tables_.Weapons.empty(), !tables_.NoWeaponsReason.empty());
        return tables_.NoWeaponsReason;
    };
    const std::string behind = "\r\n" + (Program / "weapon.ini").string();
    EXPECT_TRUE(reason().ends_with("is missing or cannot be read." + behind));
    for (const char* items : {"0.5", "-5", "many", "100001", "1e300"}) {
        Write("weapon.ini", std::string("[HEAD] items=") + items + " [WEAPON001] Name=Dagger");
        EXPECT_TRUE(reason().ends_with((*items == '1' ? "at most 100000." : "at least 1.") + behind))
            << items;
    }
    std::filesystem::resize_file(Program / "weapon.ini", (std::uintmax_t{64} << 20) + 1);
    EXPECT_TRUE(reason().ends_with("is too large: it must have at most 64 MiB." + behind));
    Write("weapon.ini", "[HEAD] items=100000");
    EXPECT_EQ(reason(), "");
    EXPECT_EQ(tables_.Weapons.size(), 100000U);
}

static bool Outdoes(const WeaponRecord& a, const WeaponRecord& b) {
    using W = WeaponRecord;
    const auto atLeast = [&](auto... keys) { return (... && (a.*keys >= b.*keys)); };
    const auto atMost = [&](auto... keys) { return (... && (a.*keys <= b.*keys)); };
    return a.DamageType == b.DamageType && a.Hands == b.Hands &&
           a.MinDamage + a.MaxDamage >= b.MinDamage + b.MaxDamage &&
           atLeast(&W::Speed, &W::AttackBonus, &W::Defence, &W::CriticalBonus) &&
           atMost(&W::Weight, &W::ReqStr, &W::ReqDex, &W::ReqLev, &W::BasePrice);
}

using ShippedWeapons = WeaponFiles;

TEST_F(ShippedWeapons, PlayWellInEveryCombination) {
    platform::SetPlaces({User, Path(ORVANE_SOURCE_FOLDER) / "data"});
    LoadWeapons(tables_);
    LoadModifiers(tables_);
    const int count = static_cast<int>(tables_.Weapons.size());
    ASSERT_GE(count, 110) << tables_.NoWeaponsReason;
    for (const WeaponRecord& weapon : tables_.Weapons) {
        for (const WeaponRecord& other : tables_.Weapons) {
            EXPECT_FALSE(&weapon != &other && (weapon.Name == other.Name || Outdoes(weapon, other)))
                << weapon.Name << ", " << other.Name;
        }
    }
    for (const int type : {0, 1, 2, 3})
        EXPECT_GE(std::ranges::count(tables_.Weapons, type, &WeaponRecord::DamageType), 0.15 * count) << type;
    const auto growDearer = [](const auto& levels) {
        return std::ranges::is_sorted(levels, std::less_equal(), &ModifierRecord::Price);
    };
    EXPECT_TRUE(growDearer(tables_.Qualities) && growDearer(tables_.BucLevels) && growDearer(tables_.Metals));

    int large = 0;
    const auto isDice = [&large](int low, int high) {
        int dice = 0, sides = 0;
        std::sscanf(DiceFromRange(low, high).c_str(), "%dD%d", &dice, &sides);
        if (sides >= 4) ++large;
        return low > 0 && sides > 0 && dice <= 6;
    };
    const auto isPlain = [](double x) { return x > 0 && std::abs(std::remainder(x * 100, 1)) < 1e-6; };
    const auto draw = [](int index, int of) {
        return (static_cast<float>(index % of) + 0.5F) / static_cast<float>(of);
    };
    std::vector<double> factors;
    for (int i = 0; i < count * 5 * 5 * 7; ++i) {
        const ScriptedRandom random({draw(i / 175, count), draw(i / 35, 5), draw(i / 7, 5), draw(i, 7), 0});
        const GeneratedWeapon made = GenerateWeapon(tables_);
        const WeaponRecord& base = tables_.Weapons.at(static_cast<std::size_t>(i / 175));
        SCOPED_TRACE(BuildWeaponSheet(made));
        EXPECT_TRUE(isDice(made.DamageMin, made.DamageMax) && isDice(made.FatigueMin, made.FatigueMax));
        EXPECT_TRUE(made.CriticalChance > 0 && made.Speed > 0);
        EXPECT_TRUE(made.AttackBonus >= made.HasAttackBonus && made.DefenceBonus >= made.HasDefenceBonus);
        // Weight and price have two decimals at most, durability none.
        EXPECT_TRUE(isPlain(made.MaxDurability / 100) && isPlain(made.Weight) && isPlain(made.ShopPrice));
        // Two lines of the sheet: its box is 31 columns wide.
        EXPECT_TRUE(base.Name.size() <= 31 && made.FullName.size() - base.Name.size() <= 32);
        factors.push_back(made.ShopPrice / base.BasePrice);
    }
    EXPECT_GE(large, 0.75 * 2 * count * 5 * 5 * 7);
    std::ranges::sort(factors);
    const double middle = factors[factors.size() / 2];
    EXPECT_TRUE(middle >= 1.5 && middle <= 2.5) << middle;
    EXPECT_LT(factors[factors.size() * 9 / 10], 8);
    EXPECT_LE(factors.back(), 25);
}
