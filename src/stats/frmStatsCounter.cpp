#include "stats/frmStatsCounter.h"

#include "stats/stat_common.h"
#include "stats/stat_seam.h"

namespace orvane {
namespace {

constexpr ArrayOf kStatRows{.Count = kStatCount, .Pitch = 16};

constexpr ControlRow kControls[] = {
    {"lblTitle", Kind::Title, "Orvane Secondary Stats", {48, 8, 249, 17}},
    {"Icon", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {{"Cmnd", 4}, Kind::Button, "_", {304, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {320, 8, 17, 17}},
    {{"Label6", 1}, Kind::Caption, "Stat :", {8, 32, 81, 17}},
    {{"Label6", 2}, Kind::Caption, "Rnge :", {88, 32, 33, 17}},
    {{"Label6", 3}, Kind::CentredCaption, "Value :", {120, 32, 57, 17}},
    {"cmndName", Kind::Cell, "", {8, 48, 81, 17}, kPlain, kStatRows},
    {"cmndRange", Kind::Cell, "", {88, 48, 33, 17}, kPlain, kStatRows},
    {"cmndMinus", Kind::CellButton, "-", {120, 48, 17, 17}, kPlain, kStatRows},
    {"cmndValue", Kind::Cell, "9", {136, 48, 25, 17}, kPlain, kStatRows},
    {"cmndPlus", Kind::CellButton, "+", {160, 48, 17, 17}, kPlain, kStatRows},
    {"shpButBra", Kind::Outline, "", {8, 48, 169, 145}},
    {"Row", Kind::Outline, "", {8, 64, 169, 1}, kPlain, {.Count = kStatCount - 1, .Pitch = 16}},
    {{"Column", 0}, Kind::Outline, "", {88, 48, 1, 145}},
    {{"Column", 1}, Kind::Outline, "", {120, 48, 1, 145}},
    {{"Column", 2}, Kind::Outline, "", {136, 48, 1, 145}},
    {{"Column", 3}, Kind::Outline, "", {160, 48, 1, 145}},
    {"cmndToDistribute", Kind::Cell, "", {96, 200, 81, 17}},
    {"shpToDistribute", Kind::Outline, "", {96, 200, 81, 17}},
    {{"Label6", 0}, Kind::RightCaption, "&Result :", {178, 28, 36, 17}},
    {"txtTextOut", Kind::ResultBox, "", {216, 28, 121, 177}, kFixed},
    {{"Cmnd", 0}, Kind::Button, "Copy Result", {180, 211, 63, 17}},
    {{"Cmnd", 1}, Kind::Button, "Randomize", {242, 211, 60, 17}},
    {{"Cmnd", 2}, Kind::Button, "Close", {301, 211, 36, 17}},
    {"Label5", Kind::Help, kStatHelp, {8, 232, 329, 73}},
    {"Status", Kind::StatusLine, "", {0, 304, 345, 17}},
};

constexpr WindowTable kTable{"frmStatsCounter", "Orvane Stats Generator", 345, 321, kControls, kStatHints};

StatRecord& StatOf(int row) { return Stats[static_cast<std::size_t>(row)]; }

// A step that met a bound is answered by its sound alone.
void Answer(bool stepped) {
    PlayWave(stepped ? "click.wav" : "quit.wav");
    if (stepped) ShowStatGrid();
}

}  // namespace

frmStatsCounter::frmStatsCounter() : ThemedForm(kTable) {
    for (int row = 0; row < kStatRows.Count; ++row) {
        The<platform::Label>({"cmndPlus", row}).Click = [this, row] { cmndPlus_Click(row); };
        The<platform::Label>({"cmndMinus", row}).Click = [this, row] { cmndMinus_Click(row); };
    }
}

void frmStatsCounter::Form_Load() {
    MakeTopMost(*this);
    PlayWave("theme2.wav");
    SoundEnabled = kFalse;
    ShowStatsGenerator();
    SoundEnabled = kTrue;
    ShowStatGrid();
    Status.SetCaption("Welcome, Adventurer.");
}

void frmStatsCounter::ShowGrid(const StatGrid& grid, std::string_view sheet) {
    for (int row = 0; row < kStatRows.Count; ++row) {
        const StatGridRow& texts = grid.Rows[static_cast<std::size_t>(row)];
        The<platform::Label>({"cmndName", row}).SetCaption(texts.Name);
        The<platform::Label>({"cmndRange", row}).SetCaption(texts.Range);
        The<platform::Label>({"cmndValue", row}).SetCaption(texts.Value);
        for (const std::string_view array : {"cmndRange", "cmndMinus", "cmndValue", "cmndPlus"})
            The<platform::Label>({array, row}).SetDescription(texts.Name);
    }
    cmndToDistribute.SetCaption(grid.Pool);
    txtTextOut.SetText(sheet);
}

void frmStatsCounter::cmndPlus_Click(int Row) { Answer(StepStatUp(StatOf(Row), PointsToDistribute)); }
void frmStatsCounter::cmndMinus_Click(int Row) { Answer(StepStatDown(StatOf(Row), PointsToDistribute)); }

void frmStatsCounter::Cmnd_Click(int Index) {
    switch (Index) {
        case 0: CopyResult(txtTextOut); break;
        case 1: RandomizeSelection(); break;
        default: ThemedForm::Cmnd_Click(Index);
    }
}

}  // namespace orvane
