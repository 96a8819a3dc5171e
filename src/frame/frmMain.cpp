#include "frame/frmMain.h"

#include <algorithm>

#include "platform/application.h"

namespace orvane {
namespace {

constexpr ControlRow kControls[] = {
    {"Image1", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {"lblTitle", Kind::Title, "Orvane Utilities", {48, 8, 113, 17}},
    {"Cmnd(4)", Kind::Button, "_", {168, 8, 17, 17}},
    {"Cmnd(3)", Kind::Button, "x", {184, 8, 17, 17}},
    {"Image5", Kind::Picture, "banner", {1, 32, 207, 23}, kPlain, {}, "Orvane"},
    {"Cmnd(0)", Kind::Button, "Stats Min/Max Generator", {32, 64, 169, 17}},
    {"Cmnd(1)", Kind::Button, "Dice Roller", {32, 88, 169, 17}},
    {"Cmnd(5)", Kind::Button, "Stats Counter", {32, 112, 169, 17}},
    {"Cmnd(6)", Kind::Button, "Alingments", {32, 136, 169, 17}},
    {"Cmnd(7)", Kind::Button, "Dice Reverse", {32, 160, 169, 17}},
    {"Cmnd(8)", Kind::Button, "Weapons", {32, 184, 169, 17}},
    {"Cmnd(2)", Kind::Button, "Exit", {32, 208, 169, 17}},
    {"Image2", Kind::Picture, "ornament", {8, 67, 21, 10}},
    {"Image3", Kind::Picture, "ornament", {8, 91, 21, 10}},
    {"Image4", Kind::Picture, "ornament", {8, 115, 21, 10}},
    {"Image7", Kind::Picture, "ornament", {8, 139, 21, 10}},
    {"Image8", Kind::Picture, "ornament", {8, 163, 21, 10}},
    {"Image9", Kind::Picture, "ornament", {8, 187, 21, 10}},
    {"Image6", Kind::Picture, "ornament", {8, 208, 21, 10}},
    {"Label5",
     Kind::Help,
     "Instructions: Choose utility you need. Exit program when done.",
     {8, 232, 193, 33}},
    {"Status", Kind::StatusLine, "", {0, 256, 209, 17}},
};

constexpr HintRow kHints[] = {
    {"Cmnd(0)", "Stats generator counts Max and Min values of stats"},
    {"Cmnd(1)", "Will roll your favourite dice like 3D5-3"},
    {"Cmnd(2)", "Will quit program"},
    {"Cmnd(3)", "Will quit program"},
    {"Cmnd(4)", "Will minimize window"},
    {"Cmnd(5)", "Will count secondary stats"},
    {"Label5", "Little help ..."},
    {"Status", "Tool tip :)"},
    {kBackground, "Ready!"},
};

constexpr WindowTable kTable{"frmMain", "Orvane Stats Generator", 209, 273, kControls, kHints};

std::span<const Tool> allTools;

}  // namespace

frmMain::frmMain() : ThemedForm(kTable) {}

void frmMain::SetTools(std::span<const Tool> tools) { allTools = tools; }

void frmMain::Form_Load() {
    SoundEnabled = kTrue;
    MakeTopMost(*this);
    PlayWave("theme.wav");
    Status.SetCaption("Welcome, Adventurer.");
}

void frmMain::Cmnd_Click(int Index) {
    switch (Index) {
        case 2:
        case 3:
            PlayWave("quit.wav");
            platform::EndProgram();
            break;
        case 4: ThemedForm::Cmnd_Click(Index); break;
        default: {
            PlayWave("click.wav");
            const auto tool = std::ranges::find(allTools, Index, &Tool::Index);
            if (tool != allTools.end()) tool->Open();
        }
    }
}

}  // namespace orvane
