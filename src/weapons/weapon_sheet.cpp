#include "weapons/weapon_sheet.h"

#include "frame/mdlDeclars.h"

namespace orvane {

std::string_view DamageTypeName(std::int32_t Code) {
    switch (Code) {
        case 0: return "Piercing";
        case 1: return "Slashing";
        case 2: return "Blunt";
        default: return "Universal";
    }
}

std::string BuildWeaponSheet(const GeneratedWeapon& Weapon) {
    std::string sheet = Weapon.FullName;
    const auto line = [&sheet](std::string_view label, std::string_view value) {
        sheet.append(kLineBreak).append(label).append(value);
    };
    line("Damage: ", DiceFromRange(Weapon.DamageMin, Weapon.DamageMax));
    line("Damage Fatigue: ", DiceFromRange(Weapon.FatigueMin, Weapon.FatigueMax));
    if (Weapon.HasAttackBonus) line("Attack Bonus: ", FormatBonus(Weapon.AttackBonus));
    line("Critical Chance: ", NumberText(Weapon.CriticalChance));
    line("Damage Type: ", DamageTypeName(Weapon.Base.DamageType));
    line("Speed: ", NumberText(Weapon.Speed));
    if (Weapon.HasDefenceBonus) line("Defence Bonus: ", FormatBonus(Weapon.DefenceBonus));
    line("Durability: ", NumberText(Weapon.Base.CurDurability) + " of " + NumberText(Weapon.MaxDurability));
    line("Weight: ", NumberText(Weapon.Weight));
    if (Weapon.Base.ReqStr > 0) line("Required Strength: ", NumberText(Weapon.Base.ReqStr));
    if (Weapon.Base.ReqDex > 0) line("Required Dexterity: ", NumberText(Weapon.Base.ReqDex));
    if (Weapon.HasReqLevel) line("Required Level: ", NumberText(Weapon.ReqLevel));
    line(NumberText(Weapon.Base.Hands), "-Handed");
    line("Shop price: ", NumberText(Weapon.ShopPrice));
    return sheet;
}

}  // namespace orvane
