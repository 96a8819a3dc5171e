#include "alignment/display_geometry.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr double kArm = 68;   // length of a full bar
constexpr double kNear = 89;  // inner ends of the arms of Good and Law; a bar begins one pixel outside
constexpr double kFar = 111;  // inner ends of the arms of Evil and Chaos
constexpr double kCentre = 100;
constexpr double kStub = 5;    // from the centre to the pointer's short end
constexpr double kReach = 10;  // the long end in lengths of the short one

}  // namespace

std::array<DisplaySpan, 4> AlignmentBars(const AlignmentScores& Scores) {
    const std::int32_t greatest =
        std::max({Scores.GoodCount, Scores.EvilCount, Scores.LawCount, Scores.ChaosCount});
    const double full = greatest == 0 ? 1 : greatest;
    const auto up = [full](std::int32_t score) {
        return static_cast<float>(kNear - (score / full * kArm) - 1);
    };
    const auto down = [full](std::int32_t score) { return static_cast<float>((score / full * kArm) + kFar); };
    return {{
        {90, up(Scores.GoodCount), 110, 88},
        {90, 111, 110, down(Scores.EvilCount)},
        {up(Scores.LawCount), 90, 88, 110},
        {111, 90, down(Scores.ChaosCount), 110},
    }};
}

DisplaySpan AlignmentPointer(const AlignmentScores& Scores) {
    const double law = static_cast<double>(Scores.LawCount) - Scores.ChaosCount;
    const double good = static_cast<double>(Scores.GoodCount) - Scores.EvilCount;
    const double distance = std::sqrt((good * good) + (law * law));
    const double x = law / (distance == 0 ? 1 : distance) * kStub;
    const double y = good / (distance == 0 ? 1 : distance) * kStub;
    return {static_cast<float>(x + kCentre), static_cast<float>(y + kCentre),
            static_cast<float>(kCentre - (x * kReach)), static_cast<float>(kCentre - (y * kReach))};
}

}  // namespace orvane
