#include "weapons/weapon_tables.h"

#include <string_view>
#include <utility>

#include "alignment/modIni.h"
#include "frame/mdlDeclars.h"
#include "platform/places.h"

namespace orvane {
namespace {

template <class Record>
struct KeyedField {
    std::string_view Key;
    std::int32_t Record::*Number = nullptr;  // null for the one key that is text: Name
};

using Weapon = WeaponRecord;
constexpr KeyedField<Weapon> kWeaponKeys[] = {
    {"MinDamage", &Weapon::MinDamage},
    {"MaxDamage", &Weapon::MaxDamage},
    {"AttackBonus", &Weapon::AttackBonus},
    {"MinDamageFatigue", &Weapon::MinDamageFatigue},
    {"MaxDamageFatigue", &Weapon::MaxDamageFatigue},
    {"Defence", &Weapon::Defence},
    {"CriticalBonus", &Weapon::CriticalBonus},
    {"DamageType", &Weapon::DamageType},
    {"Speed", &Weapon::Speed},
    {"Weight", &Weapon::Weight},
    {"Metal", &Weapon::Metal},
    {"BUC", &Weapon::BUC},
    {"Quality", &Weapon::Quality},
    {"MaxDurability", &Weapon::MaxDurability},
    {"CurDurability", &Weapon::CurDurability},
    {"Name"},
    {"ReqStr", &Weapon::ReqStr},
    {"ReqDex", &Weapon::ReqDex},
    {"ReqLev", &Weapon::ReqLev},
    {"BasePrice", &Weapon::BasePrice},
    {"Hands", &Weapon::Hands},
};

using Level = ModifierRecord;
constexpr KeyedField<Level> kLevelKeys[] = {
    {"Name"},
    {"MinDamage", &Level::MinDamage},
    {"MaxDamage", &Level::MaxDamage},
    {"AttackBonus", &Level::AttackBonus},
    {"MinDamageFatigue", &Level::MinDamageFatigue},
    {"MaxDamageFatigue", &Level::MaxDamageFatigue},
    {"Defence", &Level::Defence},
    {"MaxDurability", &Level::MaxDurability},
    {"ReqLev", &Level::ReqLev},
    {"Price", &Level::Price},
    {"Weight", &Level::Weight},
    {"Speed", &Level::Speed},
    {"CriticalBonus", &Level::CriticalBonus},
};

std::string FullName(std::string_view file) { return (platform::CurrentPlaces().Program / file).string(); }

std::int32_t ReadNumber(std::string_view section, std::string_view key, const std::string& fileName) {
    return RoundToLong(LeadingNumber(IniRead(section, key, fileName)));
}

template <class Record, std::size_t kCount>
Record ReadRecord(const KeyedField<Record> (&fields)[kCount], const std::string& section,
                  const std::string& fileName) {
    Record record;
    for (const auto& [key, number] : fields) {
        if (number == nullptr) {
            record.Name = IniRead(section, key, fileName);
        } else {
            record.*number = ReadNumber(section, key, fileName);
        }
    }
    return record;
}

std::string WeaponSection(std::int32_t number) {
    std::string digits = NumberText(number);
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    return "WEAPON" + digits;
}

template <std::size_t kCount>
void LoadLevels(std::array<ModifierRecord, kCount>& levels, std::string_view file) {
    const std::string fileName = FullName(file);
    const IniReadPass pass(fileName);
    std::int32_t number = 0;
    for (ModifierRecord& level : levels) {
        level = ReadRecord(kLevelKeys, "LEVEL" + NumberText(++number), fileName);
    }
}

}  // namespace

void LoadWeapons(WeaponTables& Tables) {
    Tables.Weapons.clear();
    const std::string fileName = FullName("weapon.ini");
    const auto refuse = [&](std::string reason) {
        Tables.NoWeaponsReason = std::move(reason.append(kLineBreak).append(fileName));
    };
    const IniReadPass pass(fileName);
    const std::int32_t items = ReadNumber("HEAD", "items", fileName);
    if (pass.State() == platform::ProfileState::TooLarge) {
        return refuse("The weapon file is too large: it must have at most " +
                      NumberText(std::int32_t{platform::kMaxProfileBytes >> 20}) + " MiB.");
    }
    if (pass.State() != platform::ProfileState::Readable) {
        return refuse("The weapon file is missing or cannot be read.");
    }
    if (items < 1) {
        return refuse(
            "The weapon file lists no weapons: \"items\" in its section [HEAD] must be at least 1.");
    }
    if (items > kWeaponLimit) {
        return refuse(
            "The weapon file lists too many weapons: \"items\" in its section [HEAD] must be at most " +
            NumberText(kWeaponLimit) + ".");
    }
    Tables.NoWeaponsReason.clear();
    Tables.Weapons.reserve(static_cast<std::size_t>(items));
    for (std::int32_t number = 1; number <= items; ++number) {
        Tables.Weapons.push_back(ReadRecord(kWeaponKeys, WeaponSection(number), fileName));
    }
}

void LoadModifiers(WeaponTables& Tables) {
    LoadLevels(Tables.Qualities, "quality.ini");
    LoadLevels(Tables.BucLevels, "buc.ini");
    LoadLevels(Tables.Metals, "metal.ini");
}

}  // namespace orvane
