#include "alignment/scores.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "alignment/display_geometry.h"

using namespace orvane;

namespace {

TEST(Scores, EachCodeMovesItsOwnScores) {
    const struct {
        std::vector<std::string_view> Codes;
        AlignmentScores Scores;
    } cases[] = {
        {{"G", "E", "E", "L", "L", "L", "C", "C", "C", "C"}, {1, 2, 3, 4}},
        {{"LG", "LE", "LE", "CG", "CG", "CG", "CE", "CE", "CE", "CE"}, {4, 6, 3, 7}},
        {{"NUL", "R"}, {}},
        // The middle takes from the greater of two scores, or from the second.
        {{"G", "G", "E", "GEN"}, {1, 1, 0, 0}},
        {{"G", "E", "GEN"}, {1, 0, 0, 0}},
        {{"E", "LG", "C", "C", "LCN"}, {1, 1, 1, 1}},
        {{"GEN", "GEN", "LCN", "LCN"}, {-1, -1, -1, -1}},
    };
    for (const auto& [codes, wanted] : cases) {
        AlignmentScores scores;
        for (const std::string_view code : codes) EXPECT_TRUE(ApplyAnswer(code, scores)) << code;
        EXPECT_EQ(scores, wanted) << codes.front();
    }
    AlignmentScores scores;
    for (const std::string_view code : {"", "N", "g", "GOOD", "G ", "    Illegal value!"})
        EXPECT_FALSE(ApplyAnswer(code, scores)) << code;
    EXPECT_EQ(scores, AlignmentScores{});
}

TEST(Scores, ThirdsOnEachAxisDecideOnTheName) {
    const std::pair<AlignmentScores, std::string_view> cases[] = {
        {{2, 1, 2, 1}, "Lawfull Good"},  // exactly two thirds, rounded up
        {{1, 2, 1, 2}, "Chaotic Evil"},  // exactly one third, rounded down
        {{66, 34, 67, 33}, "Lawfull"},   // the last whole per cent on either side of two thirds
        {{34, 66, 33, 67}, "Chaotic"},   // and of one third
        {{2, 1, 1, 1}, "Good"},
        {{1, 2, 1, 1}, "Evil"},
        {{0, 1, 1, 0}, "Lawfull Evil"},
        {{133, 67, 67, 133}, "True Neutral"},  // 66.5 and 33.5 go to the even 66 and 34
        {{}, "Chaotic Evil"},                  // without points there is no share
        {{2, -1, 1, -2}, "Chaotic Good"},      // 2 of 1, 1 of -1
        {{1, -1, -1, 1}, "Chaotic Good"},      // sums of 0: 1 of 1, -1 of 1
    };
    for (const auto& [scores, name] : cases)
        EXPECT_EQ(AlignmentName(scores), name) << scores.GoodCount << scores.LawCount;
}

using Span = std::array<float, 4>;

Span Of(const DisplaySpan& span) { return {span.X1, span.Y1, span.X2, span.Y2}; }

// The four bars by their moving ends: the y of Good and Evil, the x of Law and Chaos.
void ExpectBars(const AlignmentScores& scores, float good, float evil, float law, float chaos) {
    const Span wanted[] = {
        {90, good, 110, 88}, {90, 111, 110, evil}, {law, 90, 88, 110}, {111, 90, chaos, 110}};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(Of(AlignmentBars(scores)[i]), wanted[i]) << i;
}

TEST(AlignmentDisplay, BarsFollowTheGreatestScoreAndThePointerTheDifferences) {
    ExpectBars({}, 88, 111, 88, 111);
    ExpectBars({1, 4, 2, 3}, 71, 179, 54, 162);
    // Worked out in double precision, narrowed once.
    ExpectBars({1, 2, 3, 0}, static_cast<float>(88 - 68 / 3.0), static_cast<float>(111 + 136 / 3.0), 20, 111);
    // Negative ones run through the centre; a greatest score below 0 stays as it is.
    ExpectBars({2, -1, 0, -4}, 20, 77, 88, -25);
    ExpectBars({-2, -1, -1, -1}, -48, 179, 20, 179);
    EXPECT_EQ(Of(AlignmentPointer({3, 3, 1, 1})), (Span{100, 100, 100, 100}));
    EXPECT_EQ(Of(AlignmentPointer({4, 0, 5, 2})), (Span{103, 104, 70, 60}));
    EXPECT_EQ(Of(AlignmentPointer({1, 41, 12, 42})), (Span{97, 96, 130, 140}));
}

}  // namespace
