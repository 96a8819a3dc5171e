#include "weapons/weapon_tables.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include "alignment/modIni.h"
#include "frame/mdlDeclars.h"
#include "platform/places.h"

namespace orvane {
namespace {

template <class Record>
struct KeyedNumber {
    using Member = std::int32_t Record::*;
    std::string_view Key;
    Member Number;
};

#define ORVANE_WEAPON_ROW(key) {#key, &WeaponRecord::key},
#define ORVANE_LEVEL_ROW(key) {#key, &ModifierRecord::key},
constexpr KeyedNumber<WeaponRecord> kWeaponNumbers[] = {ORVANE_WEAPON_NUMBERS(ORVANE_WEAPON_ROW)};
constexpr KeyedNumber<ModifierRecord> kLevelNumbers[] = {ORVANE_LEVEL_NUMBERS(ORVANE_LEVEL_ROW)};

std::filesystem::path InProgramFolder(std::string_view name) {
    return platform::CurrentPlaces().Program / name;
}

std::int32_t ReadNumber(IniFile& file, std::string_view section, std::string_view key) {
    return RoundToLong(LeadingNumber(file.Read(section, key)));
}

template <class Record, std::size_t kCount>
Record ReadRecord(IniFile& file, const std::string& section, const KeyedNumber<Record> (&numbers)[kCount]) {
    Record record;
    record.Name = file.Read(section, "Name");
    for (const auto& [key, number] : numbers) record.*number = ReadNumber(file, section, key);
    return record;
}

std::string WeaponSection(std::int32_t number) {
    std::string digits = NumberText(number);
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    return "WEAPON" + digits;
}

template <std::size_t kCount>
void LoadLevels(std::array<ModifierRecord, kCount>& levels, std::string_view name) {
    IniFile file(InProgramFolder(name));
    std::int32_t number = 0;
    for (ModifierRecord& level : levels) {
        level = ReadRecord(file, "LEVEL" + NumberText(++number), kLevelNumbers);
    }
}

// Empty for a file that can be used.
std::string WhyRefused(platform::ProfileState state, std::int32_t items) {
    if (state == platform::ProfileState::TooLarge)
        return "The weapon file is too large: it must have at most " +
               NumberText(std::int32_t{platform::kMaxProfileBytes >> 20}) + " MiB.";
    if (state != platform::ProfileState::Readable) return "The weapon file is missing or cannot be read.";
    if (items < 1)
        return "The weapon file lists no weapons: \"items\" in its section [HEAD] must be at least 1.";
    if (items > kWeaponLimit)
        return "The weapon file lists too many weapons: \"items\" in its section [HEAD] must be at most " +
               NumberText(kWeaponLimit) + ".";
    return {};
}

}  // namespace

void LoadWeapons(WeaponTables& Tables) {
    Tables.Weapons.clear();
    const std::filesystem::path path = InProgramFolder("weapon.ini");
    IniFile file(path);
    const std::int32_t items = ReadNumber(file, "HEAD", "items");
    Tables.NoWeaponsReason = WhyRefused(file.State(), items);
    if (!Tables.NoWeaponsReason.empty()) {
        Tables.NoWeaponsReason.append(kLineBreak).append(platform::Utf8OfPath(path));
        return;
    }
    Tables.Weapons.reserve(static_cast<std::size_t>(items));
    for (std::int32_t number = 1; number <= items; ++number) {
        Tables.Weapons.push_back(ReadRecord(file, WeaponSection(number), kWeaponNumbers));
    }
}

void LoadModifiers(WeaponTables& Tables) {
    LoadLevels(Tables.Qualities, "quality.ini");
    LoadLevels(Tables.BucLevels, "buc.ini");
    LoadLevels(Tables.Metals, "metal.ini");
}

}  // namespace orvane
