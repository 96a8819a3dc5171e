#pragma once

// The weapons and the three kinds of levels that a generated weapon is made from, as their profile files in
// the program's folder list them.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace orvane {

// The numbers of a base weapon and of a level, in the order in which they are read: each is a key of its file
// and a field of its record, and is named here alone.
#define ORVANE_WEAPON_NUMBERS(KEY) \
    KEY(MinDamage)                 \
    KEY(MaxDamage)                 \
    KEY(AttackBonus)               \
    KEY(MinDamageFatigue)          \
    KEY(MaxDamageFatigue)          \
    KEY(Defence)                   \
    KEY(CriticalBonus)             \
    KEY(DamageType)                \
    KEY(Speed)                     \
    KEY(Weight)                    \
    KEY(Metal)                     \
    KEY(BUC)                       \
    KEY(Quality)                   \
    KEY(MaxDurability)             \
    KEY(CurDurability)             \
    KEY(ReqStr)                    \
    KEY(ReqDex)                    \
    KEY(ReqLev)                    \
    KEY(BasePrice)                 \
    KEY(Hands)
#define ORVANE_LEVEL_NUMBERS(KEY) \
    KEY(MinDamage)                \
    KEY(MaxDamage)                \
    KEY(AttackBonus)              \
    KEY(MinDamageFatigue)         \
    KEY(MaxDamageFatigue)         \
    KEY(Defence)                  \
    KEY(MaxDurability)            \
    KEY(ReqLev)                   \
    KEY(Price)                    \
    KEY(Weight)                   \
    KEY(Speed)                    \
    KEY(CriticalBonus)
#define ORVANE_FIELD(key) std::int32_t key = 0;

// A base weapon. Its four level and wear fields are part of the file's format only: a generated weapon draws
// its own.
struct WeaponRecord {
    std::string Name;
    ORVANE_WEAPON_NUMBERS(ORVANE_FIELD)
};

// A level of quality, of BUC or of metal: percentages of the weapon's values, except CriticalBonus, ReqLev
// and Speed, which are added to them.
struct ModifierRecord {
    std::string Name;
    ORVANE_LEVEL_NUMBERS(ORVANE_FIELD)
};
#undef ORVANE_FIELD

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
