#pragma once

#include <string_view>

#include "frame/control_table.h"
#include "stats/modifier_tables.h"

namespace orvane {

static_assert(
    kStatCount == 9,
    "the result boxes of both windows have eleven lines, and the counter's grid has room for nine rows");
static_assert(SexModifiers.size() * RaceModifiers.size() * ClassModifiers.size() == 140,
              "kStatHelp tells how many selections there are");

// What both statistics windows say alike.
inline constexpr std::string_view kStatHelp =
    "Instructions: Pick your sex, race and class. Resulting maximum and minimum values are counted "
    "imediatelly along with bonuses. Then write down results or select text in textbox and copy it using "
    "clipboard to your favourite text editor and print it or save it. Then close program by clicking on [x]. "
    "There are 140 posible combinatios.";

inline constexpr HintRow kStatHints[] = {
    {{"Cmnd", 0}, "Will copy result to clipboard"},
    {{"Cmnd", 1}, "Will randomize race, sex and class selection"},
    {{"Cmnd", 2}, "Will close this window"},
    {{"Cmnd", 3}, "Will close this window"},
    {{"Cmnd", 4}, "Will minimize window"},
    {"txtTextOut", "This is result of your selection"},
    {"Label5", "Little help ..."},
    {"Status", "Tool tip :)"},
    {kBackground, "Ready!"},
};

}  // namespace orvane
