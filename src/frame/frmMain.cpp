#include "frame/frmMain.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/application.h"

namespace orvane {
namespace {

constexpr ControlRow kAboveTools[] = {
    {"Image1", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {"lblTitle", Kind::Title, "Orvane Utilities", {48, 8, 113, 17}},
    {{"Cmnd", 4}, Kind::Button, "_", {168, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {184, 8, 17, 17}},
    {"Image5", Kind::Picture, "banner", {1, 32, 207, 23}, kPlain, {}, "Orvane"},
};

// The first tool's button and the ornament beside it, and what stands below as if there were no tools. Each
// tool moves all that follows down by a pitch.
constexpr int kPitch = 24;
constexpr platform::Rect kButtonPlace{32, 64, 169, 17};
constexpr platform::Rect kOrnamentPlace{8, 67, 21, 10};
constexpr std::array kOrnaments = {"Image2", "Image3",  "Image4",  "Image7", "Image8",
                                   "Image9", "Image10", "Image11", "Image12"};
constexpr ControlRow kBelowTools[] = {
    {{"Cmnd", 2}, Kind::Button, "Exit", {32, 64, 169, 17}},
    {"Image6", Kind::Picture, "ornament", {8, 64, 21, 10}},
    {"Label5",
     Kind::Help,
     "Instructions: Choose utility you need. Exit program when done.",
     {8, 88, 193, 33}},
    {"Status", Kind::StatusLine, "", {0, 112, 209, 17}},
};

constexpr HintRow kHints[] = {
    {{"Cmnd", 2}, "Will quit program"},
    {{"Cmnd", 3}, "Will quit program"},
    {{"Cmnd", 4}, "Will minimize window"},
    {"Label5", "Little help ..."},
    {"Status", "Tool tip :)"},
    {kBackground, "Ready!"},
};

constexpr WindowTable kTable{
    .Name = "frmMain", .Caption = "Orvane Stats Generator", .Width = 209, .Height = 129};

// The table of the launcher with these tools, as long as it lives.
struct ToolTable {
    explicit ToolTable(std::span<const Tool> tools) {
        int down = 0;
        const auto add = [this, &down](ControlRow row) {
            row.Place.Top += down;
            Controls.push_back(row);
        };
        for (std::size_t i = 0; i < tools.size(); ++i, down += kPitch) {
            const ControlName button("Cmnd", tools[i].Index);
            add({button, Kind::Button, tools[i].Caption, kButtonPlace});
            add({kOrnaments.at(i), Kind::Picture, "ornament", kOrnamentPlace});
            if (!tools[i].Hint.empty()) Hints.push_back({button, tools[i].Hint});
        }
        std::ranges::for_each(kBelowTools, add);
        Table.Height += down;
        Table.Controls = Controls;
        Table.Hints = Hints;
    }

    std::vector<ControlRow> Controls{std::begin(kAboveTools), std::end(kAboveTools)};
    std::vector<HintRow> Hints{std::begin(kHints), std::end(kHints)};
    WindowTable Table = kTable;
};

std::span<const Tool> allTools;

}  // namespace

frmMain::frmMain() : ThemedForm(ToolTable(allTools).Table) {}

void frmMain::SetTools(std::span<const Tool> tools) { allTools = tools; }

void frmMain::Form_Load() {
    SoundEnabled = kTrue;
    MakeTopMost(*this);
    PlayWave("theme.wav");
    Status.SetCaption("Welcome, Adventurer.");
}

void frmMain::Cmnd_Click(int Index) {
    const auto tool = std::ranges::find(allTools, Index, &Tool::Index);
    if (tool == allTools.end()) return ThemedForm::Cmnd_Click(Index);
    PlayWave("click.wav");
    tool->Open();
}

void frmMain::Close() { platform::EndProgram(); }

}  // namespace orvane
