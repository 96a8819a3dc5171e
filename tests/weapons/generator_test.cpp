#include "weapons/generator.h"

#include <gtest/gtest.h>

#include "frame/mdlDeclars.h"
#include "support/scripted_random.h"
#include "weapons/weapon_sheet.h"

using namespace orvane;

namespace {

TEST(ScaleValue, KeepsItsOrder) {
    // 82.5 or just below in any other order of the steps, and just above in this one.
    EXPECT_EQ(RoundToLong(ScaleValue(110, 50, 125, 120)), 83);
}

// Without level files all percentages are 0.
TEST(WeaponSheet, ShowsBonusesByTheBaseWeaponAndTheLevelWithoutTheBucLevel) {
    WeaponTables tables;
    WeaponRecord& base = tables.Weapons.emplace_back();
    base.Name = "Stick";
    base.AttackBonus = base.MaxDurability = 90;
    base.Defence = base.ReqStr = -2;
    base.ReqLev = 1;
    base.DamageType = 2;
    tables.BucLevels[0].ReqLev = 3;
    const auto sheet = [&tables] {
        const ScriptedRandom random({0, 0, 0, 0, 0.9999999F});
        return BuildWeaponSheet(GenerateWeapon(tables));
    };
    EXPECT_EQ(sheet(),
              "   Stick\r\nDamage: 0\r\nDamage Fatigue: 0\r\nAttack Bonus: \r\nCritical Chance: 0\r\n"
              "Damage Type: Blunt\r\nSpeed: 0\r\nDefence Bonus: \r\nDurability: 0 of 0\r\nWeight: 0\r\n"
              "0-Handed\r\nShop price: 0");
    base.AttackBonus = base.Defence = 0;
    base.MinDamage = 1;
    tables.Qualities[0].MinDamage = tables.Metals[0].MinDamage = tables.BucLevels[0].MinDamage = 100;
    tables.Metals[0].ReqLev = 1;
    tables.BucLevels[0].ReqLev = -1;
    EXPECT_EQ(sheet(),
              "   Stick\r\nDamage: \r\nDamage Fatigue: 0\r\nCritical Chance: 0\r\nDamage Type: Blunt\r\n"
              "Speed: 0\r\nDurability: 0 of 0\r\nWeight: 0\r\nRequired Level: 1\r\n0-Handed\r\n"
              "Shop price: 0");
    EXPECT_EQ(std::string(DamageTypeName(0)).append(DamageTypeName(1)), "PiercingSlashing");
}

}  // namespace
