#include "frame/mdlDeclars.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/seams.h"

using namespace orvane;

constexpr std::int32_t kLow = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();

TEST(RandomSource, StartsAlikeInEachRunAndStaysBelowOne) {
    platform::SetRandomSource({});
    const float first = platform::NextRandom();
    platform::ReseedRandomFromClock();
    EXPECT_NE(platform::NextRandom(), first);
    platform::SetRandomSource({});
    EXPECT_EQ(platform::NextRandom(), first);
    float sum = 0;
    for (int i = 0; i < 10000; ++i) sum += platform::NextRandom();
    EXPECT_NEAR(sum, 5000, 150);
}

TEST(RandomRange, TakesOneDrawAndReachesBothBounds) {
    constexpr float kLargest = 1.0F - 1.0F / 16777216.0F;
    const ScriptedRandom draws({0.0F, kLargest, 0.4999F, 0.5F, kLargest});
    EXPECT_EQ(RandomRange(1, 6), 1);
    EXPECT_EQ(RandomRange(1, 6), 6);
    EXPECT_EQ(RandomRange(0, 1), 0);
    EXPECT_EQ(RandomRange(0, 1), 1);
    EXPECT_GT(RandomRange(kLow, kHigh), kHigh - 300);
    EXPECT_EQ(draws.Count(), 5);
}

TEST(LeadingNumber, ReadsTheLongestNumberAtTheStart) {
    const std::pair<std::string, double> cases[] = {
        {"  \t 12", 12}, {"12abc", 12},   {"+5", 5},
        {".5", 0.5},     {"-.5e1x", -5},  {"1E+3", 1000},
        {"1e", 1},       {"1e+", 1},      {"1.2.3", 1.2},
        {"0x10", 0},     {"", 0},         {"abc", 0},
        {"-", 0},        {"--5", 0},      {"inf", 0},
        {"nan", 0},      {"1,5", 1},      {"1 000", 1},
        {"0e999", 0},    {"0.0001e4", 1}, {"1e-4294967297", 0},
        {"99e-400", 0},  {"0e999999", 0}, {"0e4294967297", 0},
    };
    for (const auto& [text, number] : cases) EXPECT_DOUBLE_EQ(LeadingNumber(text), number) << text;
    constexpr double kMost = std::numeric_limits<double>::max();
    const std::string nines(1000000, '9');
    for (const std::string& text : {std::string(".01e400x"), "1e4294967297" + nines, nines, "1e" + nines})
        EXPECT_EQ(LeadingNumber("-" + text), -kMost) << text.size();
    EXPECT_EQ(LeadingNumber("1e-" + nines), 0);
    EXPECT_DOUBLE_EQ(LeadingNumber("0." + std::string(1000000, '0') + "1e1000001"), 1);
}

TEST(IsNumberText, WantsTheWholeText) {
    for (const char* text : {" 12 ", "\t-3.5\n", "+5", ".5", "1.", "1e999"})
        EXPECT_TRUE(IsNumberText(text)) << text;
    for (const char* text : {"", " ", "-", ".", "1e", "12abc", "1 2", "1,5", "inf", "0x10"})
        EXPECT_FALSE(IsNumberText(text)) << text;
}

TEST(Rounding, TakesAHalfToTheEvenNeighbourAndStaysWithin32Bits) {
    const std::pair<double, std::int32_t> cases[] = {
        {2.5, 2}, {3.5, 4}, {-2.5, -2}, {-0.5, 0}, {2.5001, 3}, {2147483647.5, kHigh}, {-1e300, kLow}};
    for (const auto& [value, whole] : cases) EXPECT_EQ(RoundToLong(value), whole) << value;
    EXPECT_EQ(RoundToLong(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(FloorToLong(-2.1), -3);
    EXPECT_EQ(ClampToLong(std::int64_t{1} << 40), kHigh);
}

TEST(NumberText, IsPlainDecimalAtAnyMagnitude) {
    EXPECT_EQ(NumberText(kLow), "-2147483648");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(-3.25), "-3.25");
    EXPECT_EQ(NumberText(1e21), "1000000000000000000000");
    EXPECT_EQ(NumberText(1e-7), "0.0000001");
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(NumberText(999999999999999.9), "1000000000000000");
    EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()).size(), 309U);
}
