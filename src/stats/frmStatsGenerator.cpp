#include "stats/frmStatsGenerator.h"

#include "platform/random.h"
#include "stats/modifier_tables.h"
#include "stats/stat_common.h"
#include "stats/stat_model.h"
#include "stats/stat_seam.h"
#include "stats/stat_sheet.h"

namespace orvane {
namespace {

constexpr ControlRow kControls[] = {
    {"lblTitle", Kind::Title, "Orvane Stats Range Generator", {48, 8, 249, 17}},
    {"Icon", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {{"Cmnd", 4}, Kind::Button, "_", {304, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {320, 8, 17, 17}},
    {"Label1", Kind::Caption, "&Sex :", {8, 32, 113, 17}},
    {"cmbSex", Kind::List, "", {8, 48, 113, 21}},
    {"Label2", Kind::Caption, "&Race :", {8, 72, 113, 17}},
    {"cmbRace", Kind::List, "", {8, 88, 113, 21}},
    {"Label3", Kind::Caption, "&Class :", {8, 112, 113, 17}},
    {"cmbClass", Kind::List, "", {8, 128, 113, 21}},
    {{"Cmnd", 0}, Kind::Button, "Copy Result", {8, 160, 113, 17}},
    {{"Cmnd", 1}, Kind::Button, "Randomize", {8, 184, 113, 17}},
    {{"Cmnd", 2}, Kind::Button, "Close", {8, 208, 113, 17}},
    {"Label6", Kind::Caption, "&Result :", {128, 32, 209, 17}},
    {"txtTextOut", Kind::ResultBox, "", {128, 48, 209, 177}, kFixed},
    {"Label5", Kind::Help, kStatHelp, {8, 232, 329, 73}},
    {"Status", Kind::StatusLine, "", {0, 304, 345, 17}},
};

constexpr WindowTable kTable{"frmStatsGenerator", "Orvane Stats Generator", 345, 321, kControls, kStatHints};

// While it is set, a change of a list counts nothing.
bool Randomizing = false;

template <std::size_t N>
void Fill(platform::DropDownList& list, const std::array<ModifierEntry, N>& entries) {
    for (const ModifierEntry& each : entries) list.AddItem(each.Entry);
}

// An index of the list, each alike.
std::int32_t AnyOf(std::size_t entries) { return RandomRange(0, static_cast<std::int32_t>(entries) - 1); }

}  // namespace

frmStatsGenerator::frmStatsGenerator() : ThemedForm(kTable) {
    Fill(cmbSex, SexModifiers);
    Fill(cmbRace, RaceModifiers);
    Fill(cmbClass, ClassModifiers);
    for (platform::DropDownList* list : {&cmbSex, &cmbRace, &cmbClass}) {
        list->Click = [this] { CountStats(); };
        list->KeyPress = [this] { CountStats(); };
    }
    cmbSex.DropDown = [this] { Status.SetCaption("Choose your sex here."); };
    cmbRace.DropDown = [this] { Status.SetCaption("Choose your race here."); };
    cmbClass.DropDown = [this] { Status.SetCaption("Choose your class here."); };
}

void frmStatsGenerator::Form_Load() {
    MakeTopMost(*this);
    PlayWave("theme2.wav");
    Randomizing = true;
    cmbSex.SetListIndex(0);
    cmbRace.SetListIndex(0);
    cmbClass.SetListIndex(0);
    Randomizing = false;
    SoundEnabled = kFalse;
    CountStats();
    SoundEnabled = kTrue;
    Status.SetCaption("Welcome, Adventurer.");
}

void frmStatsGenerator::CountStats() {
    if (Randomizing) return;
    CountSelection(cmbSex.ListIndex(), cmbRace.ListIndex(), cmbClass.ListIndex(), Stats);
    txtTextOut.SetText(BuildResultText(cmbSex.Text(), cmbRace.Text(), cmbClass.Text(), Stats));
    DrawStatValues();
    ShowStatGrid();
    PlayWave("chant.wav");
}

void frmStatsGenerator::Randomize() {
    platform::ReseedRandomFromClock();
    Randomizing = true;
    cmbSex.SetListIndex(AnyOf(SexModifiers.size()));
    cmbRace.SetListIndex(AnyOf(RaceModifiers.size()));
    cmbClass.SetListIndex(AnyOf(ClassModifiers.size()));
    Randomizing = false;
    CountStats();
}

void frmStatsGenerator::Cmnd_Click(int Index) {
    switch (Index) {
        case 0: CopyResult(txtTextOut); break;
        case 1: Randomize(); break;
        default: ThemedForm::Cmnd_Click(Index);
    }
}

}  // namespace orvane
