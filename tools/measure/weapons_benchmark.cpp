// How long weapons take: one with its sheet (budget 20 microseconds), and loading files of growing size
// (1,000 weapons within 50 milliseconds, 10,000 within 12 times that of 1,000).

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "platform/places.h"
#include "weapons/weapon_sheet.h"

namespace {

constexpr const char* kLevel =
    "Name=Level\r\nMinDamage=110\r\nMaxDamage=125\r\nAttackBonus=120\r\nMinDamageFatigue=105\r\n"
    "MaxDamageFatigue=110\r\nDefence=90\r\nMaxDurability=115\r\nReqLev=1\r\nPrice=135\r\nWeight=95\r\nSpeed="
    "1\r\n"
    "CriticalBonus=2\r\n\r\n";
constexpr const char* kWeapon =
    "MinDamage=4\r\nMaxDamage=11\r\nAttackBonus=2\r\nMinDamageFatigue=2\r\nMaxDamageFatigue=7\r\nDefence="
    "3\r\n"
    "CriticalBonus=9\r\nDamageType=1\r\nSpeed=11\r\nWeight=52\r\nMetal=3\r\nBUC=3\r\nQuality=3\r\n"
    "MaxDurability=420\r\nCurDurability=420\r\nName=Longsword\r\nReqStr=7\r\nReqDex=7\r\nReqLev=2\r\n"
    "BasePrice=150\r\nHands=1\r\n\r\n";

// A program's folder with a full set of files, for as long as it lives.
class WeaponFolder {
 public:
    explicit WeaponFolder(std::int64_t weapons) {
        std::filesystem::create_directories(folder_);
        for (const char* name : {"quality.ini", "buc.ini", "metal.ini"}) {
            std::ofstream file(folder_ / name, std::ios::binary);
            for (int level = 1; level <= 8; ++level) file << "[LEVEL" << level << "]\r\n" << kLevel;
        }
        std::ofstream file(folder_ / "weapon.ini", std::ios::binary);
        file << "[HEAD]\r\nitems=" << weapons << "\r\n\r\n";
        char section[32];
        for (std::int64_t number = 1; number <= weapons; ++number) {
            std::snprintf(section, sizeof section, "[WEAPON%03d]\r\n", static_cast<int>(number));
            file << section << kWeapon;
        }
        file.close();
        platform::SetPlaces({.UserData = folder_ / "user", .Program = folder_});
    }
    ~WeaponFolder() {
        platform::SetPlaces();
        std::filesystem::remove_all(folder_);
    }
    WeaponFolder(const WeaponFolder&) = delete;
    WeaponFolder& operator=(const WeaponFolder&) = delete;

 private:
    const std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() /
        ("orvane-weapons-benchmark-" + std::to_string(std::random_device()()));
};

void LoadingWeapons(benchmark::State& state) {
    const WeaponFolder folder(state.range(0));
    orvane::WeaponTables tables;
    for (auto _ : state) {
        orvane::LoadWeapons(tables);
        orvane::LoadModifiers(tables);
    }
    if (tables.Weapons.size() != static_cast<std::size_t>(state.range(0)) ||
        tables.Weapons.back().Hands != 1 || tables.Metals.back().Name != "Level") {
        state.SkipWithError("the files were not loaded");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(LoadingWeapons)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();

void WeaponWithSheet(benchmark::State& state) {
    const WeaponFolder folder(1000);
    orvane::WeaponTables tables;
    orvane::LoadWeapons(tables);
    orvane::LoadModifiers(tables);
    for (auto _ : state) {
        benchmark::DoNotOptimize(orvane::BuildWeaponSheet(orvane::GenerateWeapon(tables)));
    }
}
BENCHMARK(WeaponWithSheet)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
