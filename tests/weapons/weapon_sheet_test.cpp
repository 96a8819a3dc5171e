#include "weapons/weapon_sheet.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

TEST(WeaponSheet, LeavesOutWhatDoesNotShow) {
    GeneratedWeapon weapon = {.FullName = "   Stick", .DamageMin = 4, .DamageMax = 3, .AttackBonus = 5};
    weapon.ReqStr = -4;
    weapon.ReqLevel = 4;
    weapon.Weight = 44.00000000000001;
    EXPECT_EQ(BuildWeaponSheet(weapon),
              "   Stick\r\nDamage: \r\nDamage Fatigue: 0\r\nCritical Chance: 0\r\nDamage Type: Piercing\r\n"
              "Speed: 0\r\nDurability: 0 of 0\r\nWeight: 44\r\n0-Handed\r\nShop price: 0");
}

}  // namespace
}  // namespace orvane
