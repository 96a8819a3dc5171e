#include "alignment/scores.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string_view>
#include <vector>

#include "alignment/question_file.h"

namespace orvane {

std::ostream& operator<<(std::ostream& out, const AlignmentScores& scores) {
    return out << "G " << scores.GoodCount << ", E " << scores.EvilCount << ", L " << scores.LawCount
               << ", C " << scores.ChaosCount;
}

namespace {

AlignmentScores After(const std::vector<std::string_view>& codes) {
    AlignmentScores scores;
    for (const std::string_view code : codes) EXPECT_TRUE(ApplyAnswer(code, scores)) << code;
    return scores;
}

TEST(Scores, EachCodeMovesItsOwnScores) {
    EXPECT_EQ(After({"G", "E", "E", "L", "L", "L", "C", "C", "C", "C"}), (AlignmentScores{1, 2, 3, 4}));
    EXPECT_EQ(After({"LG", "LE", "LE", "CG", "CG", "CG", "CE", "CE", "CE", "CE"}),
              (AlignmentScores{4, 6, 3, 7}));
    EXPECT_EQ(After({"NUL", "R"}), AlignmentScores{});
}

TEST(Scores, NeutralCodesTakeFromTheGreaterOrFromTheSecond) {
    EXPECT_EQ(After({"G", "G", "E", "GEN"}), (AlignmentScores{1, 1, 0, 0}));
    EXPECT_EQ(After({"G", "E", "GEN"}), (AlignmentScores{1, 0, 0, 0}));
    EXPECT_EQ(After({"E", "LG", "C", "C", "LCN"}), (AlignmentScores{1, 1, 1, 1}));
    EXPECT_EQ(After({"GEN"}), (AlignmentScores{0, -1, 0, 0}));
    EXPECT_EQ(After({"GEN", "GEN", "LCN", "LCN"}), (AlignmentScores{-1, -1, -1, -1}));
}

TEST(Scores, UnknownCodesChangeNothing) {
    const AlignmentScores before = {3, 1, 4, 1};
    for (const std::string_view code : {"", "N", "g", "GOOD", "NG", "NN", "G ", "    Illegal value!", "GL"}) {
        AlignmentScores scores = before;
        EXPECT_FALSE(ApplyAnswer(code, scores)) << code;
        EXPECT_EQ(scores, before) << code;
    }
}

TEST(Scores, EntriesOfTheEditorBeginWithTheirCode) {
    for (std::size_t i = 0; i < kAnswerCodes.size(); ++i) {
        std::string_view code = kAnswerCodes[i].Entry.substr(0, 3);
        code = code.substr(0, code.find(' '));
        EXPECT_EQ(code, kAnswerCodes[i].Code);
        EXPECT_EQ(AnswerCodePosition(code), i);
        EXPECT_EQ(kAnswerCodes[i].Entry[3], ' ');
    }
    EXPECT_EQ(AnswerCodePosition("gen"), 0U);
}

TEST(AlignmentName, ThirdsDecideOnEachAxis) {
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
        {{133, 67, 335, 165}, "Lawfull"},      // 66.5 goes to the even 66, 67 is Law
        {{67, 133, 67, 133}, "True Neutral"},  // 33.5 goes to the even 34, above one third
    };
    for (const auto& [scores, name] : cases) EXPECT_EQ(AlignmentName(scores), name) << scores;
}

TEST(AlignmentName, AnAxisWithoutPointsCountsAsNoShare) {
    EXPECT_EQ(AlignmentName({}), "Chaotic Evil");
    EXPECT_EQ(AlignmentName(After({"L"})), "Lawfull Evil");
    EXPECT_EQ(AlignmentName(After({"G"})), "Chaotic Good");
    EXPECT_EQ(AlignmentName(After({"NUL", "R"})), "Chaotic Evil");
    EXPECT_EQ(AlignmentName(After({"G", "E", "L", "C"})), "True Neutral");
    EXPECT_EQ(AlignmentName(After({"LG", "CE"})), "True Neutral");
}

TEST(AlignmentName, NegativeScoresAreTakenAsTheyStand) {
    EXPECT_EQ(AlignmentName(After({"GEN"})), "Chaotic Evil");    // 0 of -1
    EXPECT_EQ(AlignmentName({-1, -1, -1, -1}), "True Neutral");  // -1 of -2
    EXPECT_EQ(AlignmentName({2, -1, 1, -2}), "Chaotic Good");    // 2 of 1, 1 of -1
    EXPECT_EQ(AlignmentName({1, -1, -1, 1}), "Chaotic Good");    // sums of 0: 1 of 1, -1 of 1
    EXPECT_EQ(AlignmentName({-2, 0, 0, -2}), "Chaotic Good");    // -2 of -2, 0 of -2
}

}  // namespace
}  // namespace orvane
