// The questions that come with the program.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
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

// Answers all questions; the chooser picks each answer from the scores so far and the question's number.
template <typename Chooser>
std::string_view Play(const Chooser& choose) {
    AlignmentScores scores;
    for (std::int32_t i = 1; i <= kQuestions; ++i) scores = After(scores, i, choose(scores, i));
    return AlignmentName(scores);
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

TEST(Questionnaire, APlayerWithAMindReachesEachOfTheNineAlignments) {
    const struct {
        std::string_view Name;
        std::int32_t Good, Law;  // the side that the player takes: 1, -1 for the other one, 0 for the middle
    } players[] = {{"Lawfull Good", 1, 1},  {"Good", 1, 0},         {"Chaotic Good", 1, -1},
                   {"Lawfull", 0, 1},       {"True Neutral", 0, 0}, {"Chaotic", 0, -1},
                   {"Lawfull Evil", -1, 1}, {"Evil", -1, 0},        {"Chaotic Evil", -1, -1}};
    for (const auto& player : players) {
        const auto dislike = [&player](const AlignmentScores& scores) {
            const std::int32_t good = scores.GoodCount - scores.EvilCount;
            const std::int32_t law = scores.LawCount - scores.ChaosCount;
            return (player.Good == 0 ? std::abs(good) : -player.Good * good) +
                   (player.Law == 0 ? std::abs(law) : -player.Law * law);
        };
        const auto choose = [&](const AlignmentScores& scores, std::int32_t question) {
            std::int32_t best = 1;
            for (std::int32_t j = 2; j <= kAnswerCount; ++j) {
                if (dislike(After(scores, question, j)) < dislike(After(scores, question, best))) best = j;
            }
            return best;
        };
        EXPECT_EQ(Play(choose), player.Name);
    }
}

// How likely each alignment is when all answers are chosen at random, worked out over all of them.
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
        EXPECT_EQ(Play([j](const AlignmentScores&, std::int32_t) { return j; }), "True Neutral") << j;
    }
}

}  // namespace
}  // namespace orvane
