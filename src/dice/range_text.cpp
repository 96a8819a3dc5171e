#include "dice/range_text.h"

#include "dice/dice_search.h"
#include "frame/mdlDeclars.h"

namespace orvane {

std::string RangeText(std::int32_t From, std::int32_t To) {
    if (To < From) return "Err1";
    if (To == From) return NumberText(To);
    const auto dice = SearchDice(From, To);
    if (!dice) return "Err2";
    // A notation without bonus keeps the blank that a sign would have taken.
    const std::string bonus = dice->Bonus == 0 ? " " : FormatBonus(dice->Bonus);
    return NumberText(dice->Count) + "D" + NumberText(dice->Sides) + bonus + " Chk: " + NumberText(From) +
           " - " + NumberText(To);
}

}  // namespace orvane
