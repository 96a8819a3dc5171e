#pragma once

// The weapons and the three kinds of levels that a generated weapon is made from, as their profile files in
// the program's folder list them.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace orvane {

// A base weapon. Its four level and wear fields are part of the file's format only: a generated weapon draws
// its own.
struct WeaponRecord {
    std::int32_t MinDamage = 0;
    std::int32_t MaxDamage = 0;
    std::int32_t MinDamageFatigue = 0;
    std::int32_t MaxDamageFatigue = 0;
    std::int32_t AttackBonus = 0;
    std::int32_t Defence = 0;
    std::int32_t CriticalBonus = 0;
    std::int32_t DamageType = 0;
    std::int32_t Speed = 0;
    std::int32_t Weight = 0;
    std::int32_t Metal = 0;
    std::int32_t Quality = 0;
    std::int32_t BUC = 0;
    std::int32_t MaxDurability = 0;
    std::int32_t CurDurability = 0;
    std::string Name;
    std::int32_t ReqStr = 0;
    std::int32_t ReqDex = 0;
    std::int32_t ReqLev = 0;
    std::int32_t Hands = 0;
    std::int32_t BasePrice = 0;
};

// A level of quality, of BUC or of metal: percentages of the weapon's values, except CriticalBonus, ReqLev
// and Speed, which are added to them.
struct ModifierRecord {
    std::string Name;
    std::int32_t MinDamage = 0;
    std::int32_t MaxDamage = 0;
    std::int32_t MinDamageFatigue = 0;
    std::int32_t MaxDamageFatigue = 0;
    std::int32_t AttackBonus = 0;
    std::int32_t Defence = 0;
    std::int32_t CriticalBonus = 0;
    std::int32_t MaxDurability = 0;
    std::int32_t ReqLev = 0;
    std::int32_t Price = 0;
    std::int32_t Weight = 0;
    std::int32_t Speed = 0;
};

// Numbered from 1 in the files, so number n stands at index n - 1.
struct WeaponTables {
    std::vector<WeaponRecord> Weapons;
    std::array<ModifierRecord, 5> Qualities;
    std::array<ModifierRecord, 5> BucLevels;
    std::array<ModifierRecord, 8> Metals;
    std::string NoWeaponsReason;  // for the user, two lines; empty as long as there are weapons
};

// The most weapons that a file may list.
inline constexpr std::int32_t kWeaponLimit = 100000;

// Reads weapon.ini into Weapons, as many records as "items" of its section HEAD says; a record without a
// section is all zeros. Without a file that can be read, or with items outside 1 to kWeaponLimit, Weapons is
// left empty and NoWeaponsReason tells what is wrong and which file was looked for.
void LoadWeapons(WeaponTables& Tables);

// Reads quality.ini, buc.ini and metal.ini into the three tables of levels. What is missing reads as 0, and
// as the empty name.
void LoadModifiers(WeaponTables& Tables);

}  // namespace orvane
