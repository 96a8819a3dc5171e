#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace orvane {

// The four scores of the alignment meter, counted side by side. They can fall below 0.
struct AlignmentScores {
    std::int32_t GoodCount = 0;
    std::int32_t EvilCount = 0;
    std::int32_t LawCount = 0;
    std::int32_t ChaosCount = 0;

    auto operator<=>(const AlignmentScores&) const = default;
};

// Moves the scores by an answer code, compared exactly. Gives whether the code is one that the meter accepts;
// any other, "N" and the empty text among them, leaves the scores as they are.
bool ApplyAnswer(std::string_view Value, AlignmentScores& Scores);

// The name of one of nine alignments, from the share of Good in Good and Evil and of Law in Law and Chaos:
// above two thirds, between, and up to one third, in whole per cent. A pair whose sum is 0 counts as no
// share.
std::string_view AlignmentName(const AlignmentScores& Scores);

}  // namespace orvane
