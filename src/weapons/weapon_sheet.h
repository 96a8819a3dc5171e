#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "weapons/generator.h"

namespace orvane {

// "Piercing", "Slashing" or "Blunt" for the codes 0, 1 and 2, "Universal" for every other.
std::string_view DamageTypeName(std::int32_t Code);

// The weapon as ten to fifteen lines of text, CR LF between them and none behind the last.
std::string BuildWeaponSheet(const GeneratedWeapon& Weapon);

}  // namespace orvane
