// The questions that come with the program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <vector>

#include "alignment/question_file.h"
#include "alignment/scores.h"

namespace orvane {
namespace {

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

}  // namespace
}  // namespace orvane
