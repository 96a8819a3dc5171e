#include "alignment/scores.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "alignment/question_file.h"

namespace orvane {

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
    for (const std::string_view code : {"", "N", "g", "GOOD", "NG", "G ", "    Illegal value!", "GL"}) {
        EXPECT_FALSE(ApplyAnswer(code, scores)) << code;
        EXPECT_EQ(scores, AlignmentScores{}) << code;
    }
}

TEST(Scores, ThirdsOnEachAxisDecideOnTheName) {
    const struct {
        AlignmentScores Scores;
        std::string_view Name;
    } cases[] = {
        {{2, 1, 2, 1}, "Lawfull Good"},  // exactly two thirds, rounded up
        {{1, 2, 1, 2}, "Chaotic Evil"},  // exactly one third, rounded down
        {{3, 2, 2, 1}, "Lawfull"},       // 60 of 100
        {{66, 34, 67, 33}, "Lawfull"},   // the last whole per cent on either side of two thirds
        {{34, 66, 33, 67}, "Chaotic"},   // and of one third
        {{2, 1, 1, 1}, "Good"},
        {{1, 2, 1, 1}, "Evil"},
        {{0, 1, 1, 0}, "Lawfull Evil"},
        {{133, 67, 335, 165}, "Lawfull"},      // 66.5 goes to the even 66, 67 is Law
        {{67, 133, 67, 133}, "True Neutral"},  // 33.5 goes to the even 34, above one third
        {{}, "Chaotic Evil"},                  // without points there is no share
        {{1, 0, 0, 0}, "Chaotic Good"},
        {{0, -1, 0, 0}, "Chaotic Evil"},     // 0 of -1
        {{-1, -1, -1, -1}, "True Neutral"},  // -1 of -2
        {{2, -1, 1, -2}, "Chaotic Good"},    // 2 of 1, 1 of -1
        {{1, -1, -1, 1}, "Chaotic Good"},    // sums of 0: 1 of 1, -1 of 1
        {{-2, 0, 0, -2}, "Chaotic Good"},    // -2 of -2, 0 of -2
    };
    for (const auto& [scores, name] : cases)
        EXPECT_EQ(AlignmentName(scores), name) << scores.GoodCount << scores.LawCount;
}

}  // namespace
}  // namespace orvane
