#include "weapons/generator.h"

#include <gtest/gtest.h>

#include "frame/mdlDeclars.h"
#include "support/scripted_random.h"
#include "weapons/weapon_sheet.h"

namespace orvane {
namespace {

// The first of everything, as good as new. Without level files all its percentages are 0.
GeneratedWeapon MakeFirst(const WeaponTables& tables) {
    const ScriptedRandom random({0, 0, 0, 0, 0.9999999F});
    return GenerateWeapon(tables);
}

TEST(DiceFromRange, FindsTheFewestDiceOrNothing) {
    const struct {
        std::int32_t Low, High;
        const char* Dice;
    } rows[] = {{3, 18, "3D6"}, {1, 7, "2D4-1"}, {7, 10, "3D2+4"}, {-7, -7, "-7"}, {6, 5, ""}, {9, 12, ""}};
    for (const auto& row : rows) EXPECT_EQ(DiceFromRange(row.Low, row.High), row.Dice) << row.Low;
}

TEST(ScaleValue, KeepsItsOrder) {
    // 82.5 or just below in any other order of the steps, and just above in this one.
    EXPECT_EQ(RoundToLong(ScaleValue(110, 50, 125, 120)), 83);
}

TEST(GenerateWeapon, ShowsBonusesByTheBaseWeaponAndTheLevelWithoutTheBucLevel) {
    WeaponTables tables;
    WeaponRecord& base = tables.Weapons.emplace_back();
    base.Name = "Blade";
    base.AttackBonus = base.MaxDurability = 90;
    base.Defence = -2;
    base.ReqLev = 1;
    tables.BucLevels[0].ReqLev = 3;
    GeneratedWeapon made = MakeFirst(tables);
    EXPECT_EQ(made.FullName, "   Blade");
    EXPECT_TRUE(made.HasAttackBonus && made.HasDefenceBonus);
    EXPECT_EQ(made.AttackBonus + made.DefenceBonus + made.Base.CurDurability, 0);
    EXPECT_EQ(made.ReqLevel, 4);
    EXPECT_FALSE(made.HasReqLevel);

    tables.Metals[0].ReqLev = 1;
    tables.BucLevels[0].ReqLev = -1;
    made = MakeFirst(tables);
    EXPECT_EQ(made.ReqLevel, 1);
    EXPECT_TRUE(made.HasReqLevel);
}

TEST(WeaponSheet, LeavesOutWhatDoesNotShow) {
    GeneratedWeapon weapon = {.FullName = "   Stick", .DamageMin = 4, .DamageMax = 3, .AttackBonus = 5};
    weapon.Base.ReqStr = -4;
    weapon.ReqLevel = 4;
    weapon.Weight = 44.00000000000001;
    EXPECT_EQ(BuildWeaponSheet(weapon),
              "   Stick\r\nDamage: \r\nDamage Fatigue: 0\r\nCritical Chance: 0\r\nDamage Type: Piercing\r\n"
              "Speed: 0\r\nDurability: 0 of 0\r\nWeight: 44\r\n0-Handed\r\nShop price: 0");
}

}  // namespace
}  // namespace orvane
