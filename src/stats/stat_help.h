#pragma once

#include <string_view>

namespace orvane {

// The instructions of both statistics windows.
inline constexpr std::string_view kStatHelp =
    "Instructions: Pick your sex, race and class. Resulting maximum and minimum values are counted "
    "imediatelly along "
    "with bonuses. Then write down results or select text in textbox and copy it using clipboard to your "
    "favourite "
    "text editor and print it or save it. Then close program by clicking on [x]. There are 140 posible "
    "combinatios.";

}  // namespace orvane
