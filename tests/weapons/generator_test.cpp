#include "weapons/generator.h"

#include <gtest/gtest.h>

#include <limits>

#include "frame/mdlDeclars.h"
#include "platform/random.h"

namespace orvane {
namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

class Generator : public testing::Test {
 protected:
    // One weapon of zeros, and levels that leave values as they are, named "Q1", "B1", "M1" and so on.
    Generator() {
        tables_.Weapons.resize(1);
        const auto fill = [](auto& levels, const char* name) {
            int number = 0;
            for (ModifierRecord& level : levels) {
                level = {
                    name + std::to_string(++number), 100, 100, 100, 100, 100, 100, 0, 100, 0, 100, 100, 0};
            }
        };
        fill(tables_.Qualities, "Q");
        fill(tables_.BucLevels, "B");
        fill(tables_.Metals, "M");
    }

    GeneratedWeapon Make(std::vector<float> draws) const {
        const platform::ScriptedRandom random(std::move(draws));
        const GeneratedWeapon made = GenerateWeapon(tables_);
        EXPECT_EQ(random.Count(), 5);
        return made;
    }
    // The first of everything, as good as new.
    GeneratedWeapon MakeFirst() const { return Make({0, 0, 0, 0, 0.9999999F}); }

    WeaponRecord& Weapon() { return tables_.Weapons[0]; }

    WeaponTables tables_;
    ModifierRecord& quality_ = tables_.Qualities[0];
};

TEST(DiceFromRange, FindsTheFewestDiceOrNothing) {
    const struct {
        std::int32_t Low, High;
        const char* Dice;
    } rows[] = {{1, 6, "1D6"},     {2, 12, "2D6"},    {3, 18, "3D6"},  {3, 8, "1D6+2"},  {2, 21, "1D20+1"},
                {1, 100, "1D100"}, {1, 7, "2D4-1"},   {0, 5, "1D6-1"}, {7, 10, "3D2+4"}, {5, 5, "5"},
                {0, 0, "0"},       {6, 5, ""},        {10, 11, ""},    {9, 12, ""},      {-7, -7, "-7"},
                {kLowest, -1, ""}, {kHighest, -5, ""}};
    for (const auto& row : rows) EXPECT_EQ(DiceFromRange(row.Low, row.High), row.Dice) << row.Low;
}

TEST(ScaleValue, KeepsItsOrder) {
    EXPECT_EQ(RoundToLong(ScaleValue(150, 7, 100, 100)), 10);
    EXPECT_EQ(RoundToLong(ScaleValue(150, 9, 100, 100)), 14);
    // 31.5 in any other order of the steps, and just below it in this one.
    EXPECT_EQ(RoundToLong(ScaleValue(200, 18, 125, 70)), 31);
}

TEST_F(Generator, DrawsFiveTimesInOrder) {
    tables_.Weapons.resize(10);
    tables_.Weapons[6].Name = "W7";
    tables_.Weapons[6].MaxDurability = 80;
    tables_.Weapons[9].Name = "W10";
    const GeneratedWeapon made = Make({0.65F, 0.25F, 0.45F, 0.75F, 0.5F});
    EXPECT_EQ(made.FullName, "B3 Q2 M6 W7");
    EXPECT_EQ(made.CurDurability, 40);
    EXPECT_EQ(Make({0.999F, 0.999F, 0.999F, 0.999F, 0}).FullName, "B5 Q5 M7 W10");
}

TEST_F(Generator, ShowsBonusesByTheBaseValue) {
    EXPECT_FALSE(MakeFirst().HasAttackBonus || MakeFirst().HasDefenceBonus);
    Weapon().AttackBonus = 3;
    quality_.AttackBonus = 0;
    Weapon().Defence = -2;
    EXPECT_TRUE(MakeFirst().HasAttackBonus && MakeFirst().HasDefenceBonus);
    EXPECT_EQ(MakeFirst().AttackBonus, 0);
    EXPECT_EQ(MakeFirst().DefenceBonus, -2);
}

TEST_F(Generator, ShowsTheRequiredLevelWhateverTheBucLevelAdds) {
    Weapon().ReqLev = 1;
    tables_.BucLevels[0].ReqLev = 3;
    EXPECT_EQ(MakeFirst().ReqLevel, 4);
    EXPECT_FALSE(MakeFirst().HasReqLevel);
    tables_.Metals[0].ReqLev = 1;
    tables_.BucLevels[0].ReqLev = -1;
    EXPECT_EQ(MakeFirst().ReqLevel, 1);
    EXPECT_TRUE(MakeFirst().HasReqLevel);
}

TEST_F(Generator, WearsUpToTheRoundedDurability) {
    quality_.MaxDurability = 50;
    Weapon().MaxDurability = 147;
    EXPECT_EQ(MakeFirst().CurDurability, 74);
    EXPECT_EQ(MakeFirst().MaxDurability, 73.5);
    Weapon().MaxDurability = 145;
    EXPECT_EQ(MakeFirst().CurDurability, 72);
}

TEST_F(Generator, WorksWithoutLevelFiles) {
    tables_ = {};
    tables_.Weapons = {{2, 12, 1, 6, 3, 1, 5, 1, 10, 45, 0, 0, 0, 90, 0, "Blade", 12, 0, 2, 1, 250}};
    const GeneratedWeapon made = MakeFirst();
    EXPECT_EQ(made.FullName, "   Blade");
    EXPECT_EQ(made.DamageMax + made.FatigueMax + made.AttackBonus + made.DefenceBonus + made.CurDurability,
              0);
    EXPECT_EQ(made.MaxDurability + made.Weight + made.ShopPrice, 0);
}

TEST_F(Generator, HoldsValuesBeyond32BitsAtTheNearestBound) {
    Weapon().MinDamage = Weapon().Speed = kLowest;
    Weapon().ReqLev = 1;
    Weapon().MaxDamage = Weapon().CriticalBonus = Weapon().MaxDurability = kHighest;
    quality_ = {"", kHighest, kHighest, 0, 0, 0, 0, kHighest, kHighest, kHighest, 0, 0, kLowest};
    const GeneratedWeapon made = MakeFirst();
    EXPECT_EQ(made.DamageMin, kLowest);
    EXPECT_EQ(made.DamageMax, kHighest);
    EXPECT_EQ(made.CriticalChance, kHighest);
    EXPECT_EQ(made.Speed, kLowest);
    EXPECT_EQ(made.ReqLevel, kHighest);
    EXPECT_TRUE(made.HasReqLevel);
    EXPECT_GT(made.CurDurability, kHighest - 1000);
}

}  // namespace
}  // namespace orvane
