#include "alignment/scores.h"

#include <array>
#include <cstddef>

#include "alignment/question_file.h"
#include "frame/mdlDeclars.h"

namespace orvane {
namespace {

// From Chaos to Law, and in each from Evil to Good.
constexpr std::array<std::array<std::string_view, 3>, 3> kNames = {{
    {"Chaotic Evil", "Chaotic", "Chaotic Good"},
    {"Evil", "True Neutral", "Good"},
    {"Lawfull Evil", "Lawfull", "Lawfull Good"},
}};

void ApplyStep(ScoreStep step, std::int32_t& first, std::int32_t& second) {
    switch (step) {
        case ScoreStep::None: break;
        case ScoreStep::First: ++first; break;
        case ScoreStep::Second: ++second; break;
        case ScoreStep::LowerGreater: --(first > second ? first : second); break;
    }
}

// 0, 1 or 2: the third in which the share of the first score lies. Two thirds themselves round up into the
// last, one third rounds down into the first.
std::size_t ThirdOf(std::int32_t first, std::int32_t second) {
    const double sum = static_cast<double>(first) + second;
    const std::int32_t share = RoundToLong(first / (sum == 0 ? 1 : sum) * 100);
    if (share > 2.0 / 3 * 100) return 2;
    return share > 1.0 / 3 * 100 ? 1 : 0;
}

}  // namespace

bool ApplyAnswer(std::string_view Value, AlignmentScores& Scores) {
    const AnswerCode& code = kAnswerCodes[AnswerCodePosition(Value)];
    ApplyStep(code.GoodEvil, Scores.GoodCount, Scores.EvilCount);
    ApplyStep(code.LawChaos, Scores.LawCount, Scores.ChaosCount);
    return code.Accepted;
}

std::string_view AlignmentName(const AlignmentScores& Scores) {
    return kNames[ThirdOf(Scores.LawCount, Scores.ChaosCount)][ThirdOf(Scores.GoodCount, Scores.EvilCount)];
}

}  // namespace orvane
