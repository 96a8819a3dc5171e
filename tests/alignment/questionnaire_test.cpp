// The questions that come with the program.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "alignment/question_file.h"
#include "alignment/scores.h"

namespace orvane {
namespace {

constexpr std::int32_t kQuestions = 24;

const QuestionList& Questions() {
    static const auto list = [] {
        const std::filesystem::path root = ORVANE_SOURCE_FOLDER;
        auto questions = std::make_unique<QuestionList>();
        EXPECT_EQ(LoadQuestions((root / "data" / "questions.ini").string(), *questions), kQuestions);
        return questions;
    }();
    return *list;
}

AlignmentScores After(AlignmentScores scores, std::int32_t question, std::int32_t answer) {
    ApplyAnswer(TextOf(Questions()[question].Answers[answer].Value), scores);
    return scores;
}

TEST(Questionnaire, TextsFitAndNameNoAlignmentAndAllCodesAreUsed) {
    const auto check = [](const std::string& text, std::size_t longest) {
        EXPECT_TRUE(!text.empty() && text.size() <= longest) << text;
        std::string small = text;
        for (char& c : small) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        for (const char* word : {"good", "evil", "law", "chao", "neutral"}) {
            EXPECT_EQ(small.find(word), std::string::npos) << text;
        }
    };
    std::set<std::string> codes;
    for (std::int32_t i = 1; i <= kQuestions; ++i) {
        check(TextOf(Questions()[i].Text), 150);
        for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
            check(TextOf(Questions()[i].Answers[j].Text), 40);
            codes.insert(TextOf(Questions()[i].Answers[j].Value));
        }
    }
    EXPECT_EQ(codes,
              (std::set<std::string>{"G", "E", "L", "C", "LG", "LE", "CG", "CE", "GEN", "LCN", "NUL"}));
}

// How likely each alignment is when all answers are chosen at random, worked out over all of them: none is
// out of reach.
TEST(Questionnaire, NeitherRandomNorEqualAnswersFavourAnAlignment) {
    std::map<AlignmentScores, double> states = {{AlignmentScores{}, 1.0}};
    for (std::int32_t i = 1; i <= kQuestions; ++i) {
        std::map<AlignmentScores, double> next;
        for (const auto& [scores, chance] : states) {
            for (std::int32_t j = 1; j <= kAnswerCount; ++j) next[After(scores, i, j)] += chance / 4;
        }
        states = std::move(next);
    }
    std::map<std::string_view, double> names;
    for (const auto& [scores, chance] : states) names[AlignmentName(scores)] += chance;
    EXPECT_EQ(names.size(), 9U);
    for (const auto& [name, chance] : names) {
        EXPECT_LT(chance, 0.5) << name;
        EXPECT_GT(chance, 0.01) << name;
    }
    for (std::int32_t j = 1; j <= kAnswerCount; ++j) {
        AlignmentScores scores;
        for (std::int32_t i = 1; i <= kQuestions; ++i) scores = After(scores, i, j);
        EXPECT_EQ(AlignmentName(scores), "True Neutral") << j;
    }
}

}  // namespace
}  // namespace orvane
