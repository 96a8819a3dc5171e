#pragma once

#include <cstdint>
#include <string>

#include "weapons/weapon_tables.h"

namespace orvane {

// A finished weapon, every value worked out. A bonus or a level without its flag is not for show.
struct GeneratedWeapon {
    WeaponRecord Base{};  // with the levels and the wear that were drawn; what no level changes is here alone
    std::string FullName;
    std::int32_t DamageMin = 0;
    std::int32_t DamageMax = 0;
    std::int32_t FatigueMin = 0;
    std::int32_t FatigueMax = 0;
    std::int32_t AttackBonus = 0;
    bool HasAttackBonus = false;
    std::int32_t CriticalChance = 0;
    std::int32_t Speed = 0;
    std::int32_t DefenceBonus = 0;
    bool HasDefenceBonus = false;
    double MaxDurability = 0;
    double Weight = 0;
    std::int32_t ReqLevel = 0;
    bool HasReqLevel = false;
    double ShopPrice = 0;
};

// A weapon's value under the percentages of its quality, metal and BUC level, not rounded.
double ScaleValue(std::int32_t Quality, std::int32_t Weapon, std::int32_t Metal, std::int32_t Buc);

// A weapon's value and the additions of its three levels; beyond 32 bits the nearest bound.
std::int32_t SumValue(std::int32_t Quality, std::int32_t Weapon, std::int32_t Metal, std::int32_t Buc);

// A random weapon, in exactly five draws: base weapon, quality, BUC level, one of the first seven metals, and
// current durability from 0 to the full one. Values beyond 32 bits give the nearest bound. Tables must hold
// at least one weapon.
GeneratedWeapon GenerateWeapon(const WeaponTables& Tables);

// The values Low to High as dice, such as "2D6+3", or as a bare number if they are equal. The empty text if
// High lies below Low or no dice fit.
std::string DiceFromRange(std::int32_t Low, std::int32_t High);

}  // namespace orvane
