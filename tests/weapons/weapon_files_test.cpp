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

// Percentages that leave values as they are. Of equal keys the first counts, so these may follow others.
const std::string kHundreds =
    "MinDamage=100\r\nMaxDamage=100\r\nMinDamageFatigue=100\r\nMaxDamageFatigue=100\r\nDefence=100\r\n"
    "AttackBonus=100\r\nMaxDurability=100\r\nPrice=100\r\nWeight=100\r\n";

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
    Load(
        "[WEAPON001]\r\nName=W\r\nMinDamage=2\r\nMaxDamage=10\r\nMinDamageFatigue=5\r\nMaxDamageFatigue="
        "50\r\n"
        "AttackBonus=40\r\nDefence=60\r\nCriticalBonus=70\r\nDamageType=-1\r\nSpeed=80\r\nWeight=90\r\n"
        "Metal=1\r\nBUC=1\r\nQuality=1\r\nCurDurability=1\r\nMaxDurability=100\r\nReqStr=11\r\nReqDex=12\r\n"
        "ReqLev=13\r\nHands=2\r\nBasePrice=110\r\n[HEAD]\r\nitems=1\r\n");
    Write(
        "quality.ini",
        "[LEVEL5]\r\nName=Q\r\nMinDamage=100\r\nMaxDamage=110\r\nMinDamageFatigue=120\r\nMaxDamageFatigue="
        "130\r\n"
        "AttackBonus=140\r\nDefence=150\r\nCriticalBonus=1\r\nMaxDurability=160\r\nReqLev=2\r\nPrice=170\r\n"
        "Weight=188\r\nSpeed=3\r\n");
    Put(Folder / "buc.ini", "[LEVEL5]\r\nName=B\r\nCriticalBonus=100\r\nReqLev=1\r\n" + kHundreds);
    Put(Folder / "metal.ini",
        "[LEVEL7]\r\nName=M\r\nSpeed=-90\r\nDefence=-100\r\nPrice=50\r\nWeight=25\r\n" + kHundreds);
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
    const auto& weapons = Load(
        "[HEAD]\r\nitems=1000.6\r\n[WEAPON001]\r\nName=First\r\nSpeed=12abc\r\nWeight=abc\r\nHands=2.5\r\n"
        "ReqStr=3.5\r\nReqDex=-7\r\nMinDamage=99999999999\r\n[WEAPON003]\r\nName=Third\r\n"
        "[WEAPON042]\r\nName=Padded\r\n[WEAPON1000]\r\nName=Long\r\n[WEAPON1002]\r\nName=Beyond\r\n");
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
    EXPECT_EQ(Load("[HEAD]\r\nitems=100000\r\n").size(), 100000U);
    EXPECT_EQ(tables_.NoWeaponsReason, "");
    for (const char* items : {"0", "-5", "0.5", "many", "", "100001", "2000000000", "1e300"}) {
        Put(Folder / "weapon.ini",
            std::string("[HEAD]\r\nitems=") + items + "\r\n[WEAPON001]\r\nName=Dagger\r\n");
        expectReason(std::atof(items) < 1 ? "must be at least 1." : "must be at most 100000.");
    }
    std::filesystem::remove(Folder / "weapon.ini");
    std::filesystem::create_directory(Folder / "weapon.ini");
    expectReason("is missing or cannot be read.");
}

TEST_F(WeaponFiles, MakeTheSheetOfABlade) {
    Load(
        "[HEAD]\r\nitems=1\r\n[WEAPON001]\r\nName=Blade\r\nMinDamage=2\r\nMaxDamage=12\r\nMinDamageFatigue="
        "1\r\n"
        "MaxDamageFatigue=6\r\nAttackBonus=3\r\nDefence=0\r\nCriticalBonus=5\r\nDamageType=1\r\nSpeed=10\r\n"
        "Weight=45\r\nMaxDurability=90\r\nReqStr=12\r\nReqDex=0\r\nReqLev=2\r\nHands=1\r\nBasePrice=250\r\n");
    Put(Folder / "quality.ini",
        "[LEVEL2]\r\nName=Fine\r\nAttackBonus=200\r\nMaxDurability=125\r\nPrice=150\r\nCriticalBonus=2\r\n"
        "ReqLev=1\r\n" +
            kHundreds);
    Put(Folder / "buc.ini", "[LEVEL3]\r\nName=Plain\r\n" + kHundreds);
    Put(Folder / "metal.ini", "[LEVEL4]\r\nName=Iron\r\nPrice=95\r\nWeight=90\r\n" + kHundreds);
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
            EXPECT_TRUE(line.ends_with('\r')) << file << ": " << line;
            EXPECT_TRUE(
                std::all_of(line.begin(), line.end() - 1, [](char c) { return c >= ' ' && c <= '~'; }));
            if (line.starts_with('[')) ++sections;
        }
        EXPECT_EQ(sections, expected) << file;
    }
}

}  // namespace
}  // namespace orvane
