#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include "platform/places.h"
#include "platform/profile_fixture.h"
#include "platform/random.h"
#include "weapons/weapon_sheet.h"

namespace orvane {
namespace {

// A profile file from its lines, written with blanks between them.
std::string Lines(std::string_view text) {
    std::string lines;
    for (const char c : text) lines += c == ' ' ? "\r\n" : std::string(1, c);
    return lines + "\r\n";
}

// Percentages that leave values as they are. Of equal keys the first counts, so these may follow others.
const std::string kHundreds = Lines(
    "MinDamage=100 MaxDamage=100 MinDamageFatigue=100 MaxDamageFatigue=100 Defence=100 AttackBonus=100 "
    "MaxDurability=100 Price=100 Weight=100");

// Files of the test's own in the program's folder.
class WeaponFiles : public FolderTest {
 protected:
    WeaponFiles() { platform::SetPlaces({.UserData = Folder / "user", .Program = Folder}); }
    ~WeaponFiles() override { platform::SetPlaces(); }

    const std::vector<WeaponRecord>& Load(const std::string& text) {
        Put(Folder / "weapon.ini", text);
        LoadWeapons(tables_);
        return tables_.Weapons;
    }

    WeaponTables tables_;
};

TEST_F(WeaponFiles, FillEveryLineOfTheSheet) {
    Load(Lines(
        "[WEAPON001] Name=W MinDamage=2 MaxDamage=10 MinDamageFatigue=5 MaxDamageFatigue=50 AttackBonus=40 "
        "Defence=60 CriticalBonus=70 DamageType=-1 Speed=80 Weight=90 Metal=1 BUC=1 Quality=1 ReqStr=11 "
        "CurDurability=1 MaxDurability=100 ReqDex=12 ReqLev=13 Hands=2 BasePrice=110 [HEAD] items=1"));
    Put(Folder / "quality.ini",
        Lines("[LEVEL5] Name=Q MinDamage=100 MaxDamage=110 MinDamageFatigue=120 MaxDamageFatigue=130 "
              "AttackBonus=140 Defence=150 CriticalBonus=1 MaxDurability=160 ReqLev=2 Price=170 Weight=188 "
              "Speed=3"));
    Put(Folder / "buc.ini", Lines("[LEVEL5] Name=B CriticalBonus=100 ReqLev=1") + kHundreds);
    Put(Folder / "metal.ini", Lines("[LEVEL7] Name=M Speed=-90 Defence=-100 Price=50 Weight=25") + kHundreds);
    LoadModifiers(tables_);
    const platform::ScriptedRandom random({0, 0.9999F, 0.9999F, 0.9999F, 0.9999F});
    EXPECT_EQ(BuildWeaponSheet(GenerateWeapon(tables_)),
              "B Q M W\r\n"
              "Damage: 1D10+1\r\n"
              "Damage Fatigue: 59D2-53\r\n"
              "Attack Bonus: +56\r\n"
              "Critical Chance: 171\r\n"
              "Damage Type: Universal\r\n"
              "Speed: -7\r\n"
              "Defence Bonus: -90\r\n"
              "Durability: 160 of 160\r\n"
              "Weight: 42.3\r\n"
              "Required Strength: 11\r\n"
              "Required Dexterity: 12\r\n"
              "Required Level: 16\r\n"
              "2-Handed\r\n"
              "Shop price: 93.5");
}

TEST_F(WeaponFiles, ItemsAloneSayHowManyThereAre) {
    const auto& weapons = Load(Lines(
        "[HEAD] items=1000.6 [WEAPON001] Name=First Speed=12abc Weight=abc Hands=2.5 ReqStr=3.5 ReqDex=-7 "
        "MinDamage=99999999999 [WEAPON003] Name=Third [WEAPON042] Name=Padded [WEAPON1000] Name=Long "
        "[WEAPON1002] Name=Beyond"));
    ASSERT_EQ(weapons.size(), 1001U);
    EXPECT_EQ(weapons[0].Speed, 12);
    EXPECT_EQ(weapons[0].Weight, 0);
    EXPECT_EQ(weapons[0].Hands, 2);
    EXPECT_EQ(weapons[0].ReqStr, 4);
    EXPECT_EQ(weapons[0].ReqDex, -7);
    EXPECT_EQ(weapons[0].MinDamage, 2147483647);
    std::string names;
    for (const std::size_t i : {0U, 1U, 2U, 41U, 999U, 1000U}) names += weapons[i].Name + ".";
    EXPECT_EQ(names, "First..Third.Padded.Long..");
}

TEST_F(WeaponFiles, TellsWhyThereAreNoWeapons) {
    const std::string secondLine = "\r\n" + (Folder / "weapon.ini").string();
    const auto expectReason = [&](const std::string& words) {
        LoadWeapons(tables_);
        EXPECT_TRUE(tables_.Weapons.empty());
        const std::string& reason = tables_.NoWeaponsReason;
        EXPECT_TRUE(reason.ends_with(words + secondLine)) << reason;
        EXPECT_EQ(reason.find("\r\n"), reason.size() - secondLine.size()) << reason;
    };
    expectReason("is missing or cannot be read.");
    EXPECT_EQ(Load(Lines("[HEAD] items=100000")).size(), 100000U);
    EXPECT_EQ(tables_.NoWeaponsReason, "");
    for (const char* items : {"0", "-5", "0.5", "many", "", "100001", "2000000000", "1e300"}) {
        Put(Folder / "weapon.ini", Lines(std::string("[HEAD] items=") + items + " [WEAPON001] Name=Dagger"));
        expectReason(std::atof(items) < 1 ? "must be at least 1." : "must be at most 100000.");
    }
    std::filesystem::remove(Folder / "weapon.ini");
    std::filesystem::create_directory(Folder / "weapon.ini");
    expectReason("is missing or cannot be read.");
}

TEST_F(WeaponFiles, MakeTheSheetOfABlade) {
    Load(
        Lines("[HEAD] items=1 [WEAPON001] Name=Blade MinDamage=2 MaxDamage=12 MinDamageFatigue=1 "
              "MaxDamageFatigue=6 AttackBonus=3 Defence=0 CriticalBonus=5 DamageType=1 Speed=10 Weight=45 "
              "MaxDurability=90 ReqStr=12 ReqDex=0 ReqLev=2 Hands=1 BasePrice=250"));
    Put(Folder / "quality.ini",
        Lines("[LEVEL2] Name=Fine AttackBonus=200 MaxDurability=125 Price=150 CriticalBonus=2 ReqLev=1") +
            kHundreds);
    Put(Folder / "buc.ini", Lines("[LEVEL3] Name=Plain") + kHundreds);
    Put(Folder / "metal.ini", Lines("[LEVEL4] Name=Iron Price=95 Weight=90") + kHundreds);
    LoadModifiers(tables_);
    const platform::ScriptedRandom random({0, 1.5F / 5, 2.5F / 5, 3.5F / 7, 87.5F / 113});
    EXPECT_EQ(BuildWeaponSheet(GenerateWeapon(tables_)),
              "Plain Fine Iron Blade\r\n"
              "Damage: 2D6\r\n"
              "Damage Fatigue: 1D6\r\n"
              "Attack Bonus: +6\r\n"
              "Critical Chance: 7\r\n"
              "Damage Type: Slashing\r\n"
              "Speed: 10\r\n"
              "Durability: 87 of 112.5\r\n"
              "Weight: 40.5\r\n"
              "Required Strength: 12\r\n"
              "Required Level: 3\r\n"
              "1-Handed\r\n"
              "Shop price: 356.25");
}

// The files that come with the program.
class ShippedWeapons : public testing::Test {
 protected:
    ShippedWeapons() {
        platform::SetPlaces({.UserData = data_ / "user", .Program = data_});
        LoadWeapons(tables_);
        LoadModifiers(tables_);
        count_ = static_cast<int>(tables_.Weapons.size());
    }
    ~ShippedWeapons() override { platform::SetPlaces(); }

    // The weapon and levels of these numbers, each from 1, as good as new.
    GeneratedWeapon Make(int weapon, int quality, int buc, int metal) const {
        const auto draw = [](int number, int count) {
            return (static_cast<float>(number) - 0.5F) / static_cast<float>(count);
        };
        const platform::ScriptedRandom random(
            {draw(weapon, count_), draw(quality, 5), draw(buc, 5), draw(metal, 7), 0.9999F});
        return GenerateWeapon(tables_);
    }

    const std::filesystem::path data_ =
        std::filesystem::absolute(__FILE__).parent_path().parent_path().parent_path() / "data";
    WeaponTables tables_;
    int count_ = 0;
};

TEST_F(ShippedWeapons, ReadWellInEveryCombination) {
    const auto isDice = [](const std::string& text) { return !text.empty() && text.find('-') == text.npos; };
    const auto isPlain = [](double value, int scale) {
        return value > 0 && std::abs(value * scale - std::round(value * scale)) < 1e-6;
    };
    constexpr int kLevels = 5 * 5 * 7;
    for (int i = 0; i < count_ * kLevels; ++i) {
        const GeneratedWeapon made = Make(i / kLevels + 1, i / 35 % 5 + 1, i / 7 % 5 + 1, i % 7 + 1);
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

TEST_F(ShippedWeapons, AreBetterForBetterLevels) {
    constexpr int kPlain = 3;
    const auto expectRise = [](const GeneratedWeapon& worse, const GeneratedWeapon& better) {
        EXPECT_LT(worse.DamageMin + worse.DamageMax, better.DamageMin + better.DamageMax) << better.FullName;
        EXPECT_LT(worse.MaxDurability, better.MaxDurability) << better.FullName;
        EXPECT_LT(worse.ShopPrice, better.ShopPrice) << better.FullName;
    };
    for (int weapon = 1; weapon <= count_; ++weapon) {
        expectRise(Make(weapon, 1, kPlain, kPlain), Make(weapon, 5, kPlain, kPlain));
        expectRise(Make(weapon, kPlain, 1, kPlain), Make(weapon, kPlain, 5, kPlain));
        expectRise(Make(weapon, kPlain, kPlain, 1), Make(weapon, kPlain, kPlain, 7));
    }
}

TEST_F(ShippedWeapons, AreWholeFilesOfEveryKind) {
    EXPECT_GE(count_, 60) << tables_.NoWeaponsReason;
    std::set<std::string> names;
    std::set<std::string_view> types;
    for (const WeaponRecord& weapon : tables_.Weapons) {
        EXPECT_TRUE(!weapon.Name.empty() && names.insert(weapon.Name).second) << weapon.Name;
        types.insert(DamageTypeName(weapon.DamageType));
    }
    EXPECT_EQ(types.size(), 4U);
    for (const ModifierRecord& metal : tables_.Metals) EXPECT_TRUE(names.insert(metal.Name).second);

    // "items" counts every weapon, and each level file has all its sections.
    const std::pair<const char*, int> files[] = {
        {"weapon.ini", count_ + 1}, {"quality.ini", 5}, {"buc.ini", 5}, {"metal.ini", 8}};
    for (const auto& [file, expected] : files) {
        std::ifstream stream(data_ / file, std::ios::binary);
        int sections = 0;
        for (std::string line; std::getline(stream, line);) {
            const auto text =
                std::find_if_not(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; });
            EXPECT_EQ(std::string(text, line.end()), "\r") << file << ": " << line;
            if (line.starts_with('[')) ++sections;
        }
        EXPECT_EQ(sections, expected) << file;
    }
}

}  // namespace
}  // namespace orvane
