#include "weapons/generator.h"

#include <cassert>
#include <optional>

#include "dice/dice_search.h"
#include "frame/mdlDeclars.h"

namespace orvane {
namespace {

// The last metal is a legend: it has its place in the file and is never drawn.
constexpr std::int32_t kDrawnMetals = 7;

template <class Table>
const auto& Numbered(const Table& table, std::int32_t number) {
    return table[static_cast<std::size_t>(number - 1)];
}

template <class Table>
std::int32_t DrawNumber(const Table& table) {
    return RandomRange(1, static_cast<std::int32_t>(table.size()));
}

}  // namespace

double ScaleValue(std::int32_t Quality, std::int32_t Weapon, std::int32_t Metal, std::int32_t Buc) {
    // The order of the steps decides on which side of a half a product falls.
    double x = Quality / 100.0;
    x = x * Weapon;
    x = x * (Metal / 100.0);
    x = x * (Buc / 100.0);
    return x;
}

std::int32_t SumValue(std::int32_t Quality, std::int32_t Weapon, std::int32_t Metal, std::int32_t Buc) {
    return ClampToLong(std::int64_t{Quality} + Weapon + Metal + Buc);
}

GeneratedWeapon GenerateWeapon(const WeaponTables& Tables) {
    assert(!Tables.Weapons.empty());
    WeaponRecord weapon = Numbered(Tables.Weapons, DrawNumber(Tables.Weapons));
    weapon.Quality = DrawNumber(Tables.Qualities);
    weapon.BUC = DrawNumber(Tables.BucLevels);
    weapon.Metal = RandomRange(1, kDrawnMetals);

    const ModifierRecord& quality = Numbered(Tables.Qualities, weapon.Quality);
    const ModifierRecord& buc = Numbered(Tables.BucLevels, weapon.BUC);
    const ModifierRecord& metal = Numbered(Tables.Metals, weapon.Metal);
    using Key = std::int32_t ModifierRecord::*;
    const auto scaled = [&](Key key, std::int32_t value) {
        return ScaleValue(quality.*key, value, metal.*key, buc.*key);
    };
    const auto rounded = [&](Key key, std::int32_t value) { return RoundToLong(scaled(key, value)); };
    const auto sum = [&](Key key, std::int32_t value) {
        return SumValue(quality.*key, value, metal.*key, buc.*key);
    };
    weapon.CurDurability = RandomRange(0, rounded(&ModifierRecord::MaxDurability, weapon.MaxDurability));

    return {
        .Base = weapon,
        .FullName = buc.Name + " " + quality.Name + " " + metal.Name + " " + weapon.Name,
        .DamageMin = rounded(&ModifierRecord::MinDamage, weapon.MinDamage),
        .DamageMax = rounded(&ModifierRecord::MaxDamage, weapon.MaxDamage),
        .FatigueMin = rounded(&ModifierRecord::MinDamageFatigue, weapon.MinDamageFatigue),
        .FatigueMax = rounded(&ModifierRecord::MaxDamageFatigue, weapon.MaxDamageFatigue),
        .AttackBonus = rounded(&ModifierRecord::AttackBonus, weapon.AttackBonus),
        .HasAttackBonus = weapon.AttackBonus != 0,
        .CriticalChance = sum(&ModifierRecord::CriticalBonus, weapon.CriticalBonus),
        .Speed = sum(&ModifierRecord::Speed, weapon.Speed),
        .DefenceBonus = rounded(&ModifierRecord::Defence, weapon.Defence),
        .HasDefenceBonus = weapon.Defence != 0,
        .MaxDurability = scaled(&ModifierRecord::MaxDurability, weapon.MaxDurability),
        .Weight = scaled(&ModifierRecord::Weight, weapon.Weight),
        .ReqLevel = sum(&ModifierRecord::ReqLev, weapon.ReqLev),
        // The BUC level counts in the level required, not in whether it shows.
        .HasReqLevel = std::int64_t{quality.ReqLev} + weapon.ReqLev + metal.ReqLev > 1,
        .ShopPrice = scaled(&ModifierRecord::Price, weapon.BasePrice),
    };
}

std::string DiceFromRange(std::int32_t Low, std::int32_t High) {
    if (Low == High) return NumberText(Low);
    const std::optional<DiceNotation> dice = SearchDice(Low, High);
    if (!dice) return {};
    return NumberText(dice->Count) + "D" + NumberText(dice->Sides) + FormatBonus(dice->Bonus);
}

}  // namespace orvane
