#pragma once

// Where the bars and the pointer of the alignment display lie, in pixels of its picture of 200 by 200, y
// growing downward. Up is Good, down is Evil, left is Law, right is Chaos.

#include <array>

#include "alignment/scores.h"

namespace orvane {

// Two opposite corners of a box, or the two ends of a line.
struct DisplaySpan {
    float X1;
    float Y1;
    float X2;
    float Y2;
};

// The bars of Good, Evil, Law and Chaos, in the order of drawing, each against the greatest score. A bar of
// that score fills its arm; one below 0 beside a greatest of 0 or more runs the other way, through the
// centre, at any length.
std::array<DisplaySpan, 4> AlignmentBars(const AlignmentScores& Scores);

// The pointer through the centre, of a fixed length: its short end, then its long one, which points to where
// the two differences lead. A point at the centre if there is no difference.
DisplaySpan AlignmentPointer(const AlignmentScores& Scores);

}  // namespace orvane
