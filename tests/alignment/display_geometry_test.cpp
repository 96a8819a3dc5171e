#include "alignment/display_geometry.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

void ExpectSpan(const DisplaySpan& span, float x1, float y1, float x2, float y2) {
    EXPECT_EQ(span.X1, x1);
    EXPECT_EQ(span.Y1, y1);
    EXPECT_EQ(span.X2, x2);
    EXPECT_EQ(span.Y2, y2);
}

// The four bars by their moving ends: the y of Good and Evil, the x of Law and Chaos.
void ExpectBars(const AlignmentScores& scores, float good, float evil, float law, float chaos) {
    const auto bars = AlignmentBars(scores);
    ExpectSpan(bars[0], 90, good, 110, 88);
    ExpectSpan(bars[1], 90, 111, 110, evil);
    ExpectSpan(bars[2], law, 90, 88, 110);
    ExpectSpan(bars[3], 111, 90, chaos, 110);
}

TEST(AlignmentDisplay, BarsAreMeasuredAgainstTheGreatestScore) {
    ExpectBars({}, 88, 111, 88, 111);
    ExpectBars({1, 1, 1, 1}, 20, 179, 20, 179);
    ExpectBars({1, 4, 2, 3}, 71, 179, 54, 162);
    // Worked out in double precision, narrowed once.
    ExpectBars({1, 2, 3, 0}, static_cast<float>(88 - 68 / 3.0), static_cast<float>(111 + 136 / 3.0), 20, 111);
    // Negative ones run through the centre.
    ExpectBars({0, -1, 0, 0}, 88, 43, 88, 111);
    ExpectBars({2, -1, 0, -4}, 20, 77, 88, -25);
    // A greatest score below 0 stays as it is, and the others then reach beyond the arm.
    ExpectBars({-2, -1, -1, -1}, -48, 179, 20, 179);
}

TEST(AlignmentDisplay, PointerShowsOnlyTheDirectionOfTheDifferences) {
    ExpectSpan(AlignmentPointer({3, 3, 1, 1}), 100, 100, 100, 100);
    ExpectSpan(AlignmentPointer({0, 0, 1, 0}), 105, 100, 50, 100);
    ExpectSpan(AlignmentPointer({0, 9, 0, 0}), 100, 95, 100, 150);
    ExpectSpan(AlignmentPointer({4, 0, 5, 2}), 103, 104, 70, 60);
    ExpectSpan(AlignmentPointer({1, 41, 12, 42}), 97, 96, 130, 140);
    ExpectSpan(AlignmentPointer({0, -1, 0, 0}), 100, 105, 100, 50);
}

}  // namespace
}  // namespace orvane
