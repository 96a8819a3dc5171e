#include "alignment/scores.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <vector>

#include "alignment/display_geometry.h"
#include "alignment/question_file.h"

using namespace orvane;

TEST(Scores, EachCodeMovesItsOwnScores) {
    const std::pair<std::vector<std::string_view>, AlignmentScores> cases[] = {
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

static std::array<float, 4> Of(const DisplaySpan& span) { return {span.X1, span.Y1, span.X2, span.Y2}; }

// The four bars by their moving ends: the y of Good and Evil, the x of Law and Chaos.
static void ExpectBars(const AlignmentScores& scores, float good, float evil, float law, float chaos) {
    const std::array<float, 4> wanted[] = {
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
    EXPECT_EQ(Of(AlignmentPointer({3, 3, 1, 1})), (std::array<float, 4>{100, 100, 100, 100}));
    EXPECT_EQ(Of(AlignmentPointer({4, 0, 5, 2})), (std::array<float, 4>{103, 104, 70, 60}));
    EXPECT_EQ(Of(AlignmentPointer({1, 41, 12, 42})), (std::array<float, 4>{97, 96, 130, 140}));
}

// The questions that come with the program.
constexpr std::int32_t kQuestions = 24;

class Questionnaire : public testing::Test {
 protected:
    Questionnaire() {
        EXPECT_EQ(LoadQuestions(ORVANE_SOURCE_FOLDER "/data/questions.ini", questions_), kQuestions);
    }

    AlignmentScores After(AlignmentScores scores, std::int32_t question, std::int32_t answer) const {
        ApplyAnswer(TextOf(questions_[question].Answers[answer].Value), scores);
        return scores;
    }

    QuestionList questions_;
};

TEST_F(Questionnaire, TextsFitAndNeitherTheyNorAPlaceFavourAnAlignment) {
    const auto check = [](const std::string& text, std::size_t longest) {
        EXPECT_TRUE(!text.empty() && text.size() <= longest) << text;
        const auto small = [](unsigned char c) { return std::tolower(c); };
        for (const std::string_view word : {"good", "evil", "law", "chao", "neutral"})
            EXPECT_TRUE(std::ranges::search(text, word, {}, small).empty()) << text;
    };
    std::set<std::string> codes;
    std::vector<AlignmentScores> places(kAnswerCount);
    for (std::int32_t i = 1; i <= kQuestions; ++i) {
        check(TextOf(questions_[i].Text), 150);
        for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
            check(TextOf(questions_[i].Answers[j].Text), 40);
            codes.insert(TextOf(questions_[i].Answers[j].Value));
            AlignmentScores& place = places.at(static_cast<std::size_t>(j - 1));
            place = After(place, i, j);
        }
    }
    EXPECT_EQ(codes,
              (std::set<std::string>{"G", "E", "L", "C", "LG", "LE", "CG", "CE", "GEN", "LCN", "NUL"}));
    for (const AlignmentScores& place : places) EXPECT_EQ(AlignmentName(place), "True Neutral");
}

TEST_F(Questionnaire, LeadsWhoeverAnswersInItsSpiritToEachAlignment) {
    const char* names[] = {"Chaotic Evil", "Evil",         "Lawfull Evil", "Chaotic",     "True Neutral",
                           "Lawfull",      "Chaotic Good", "Good",         "Lawfull Good"};
    // How far two scores are from what is wanted: the first (1), the second (-1) or both alike (0).
    const auto far = [](std::int32_t first, std::int32_t second, int wanted) {
        return wanted == 0 ? std::abs(first - second) : wanted * (second - first);
    };
    for (int i = 0; i < 9; ++i) {
        AlignmentScores scores;
        for (std::int32_t question = 1; question <= kQuestions; ++question) {
            std::vector<AlignmentScores> next;
            for (std::int32_t j = 1; j <= kAnswerCount; ++j) next.push_back(After(scores, question, j));
            scores = *std::ranges::min_element(next, {}, [&](const AlignmentScores& s) {
                return far(s.GoodCount, s.EvilCount, i / 3 - 1) + far(s.LawCount, s.ChaosCount, i % 3 - 1);
            });
        }
        EXPECT_EQ(AlignmentName(scores), names[i]);
    }
}
