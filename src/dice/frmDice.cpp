#include "dice/frmDice.h"

#include "dice/roll.h"

namespace orvane {
namespace {

constexpr ControlRow kControls[] = {
    {"Image1", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {"lblTitle", Kind::Title, "Orvane Dice", {48, 8, 113, 17}},
    {{"Cmnd", 4}, Kind::Button, "_", {168, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {184, 8, 17, 17}},
    {"Label1", Kind::Caption, "&Number", {8, 32, 41, 17}},
    {"txtN", Kind::NumberBox, "1", {8, 48, 41, 33}, kLarge},
    {"Label6", Kind::CentredCaption, "D", {48, 48, 33, 33}, kLarge},
    {"Label2", Kind::Caption, "&Sides", {80, 32, 41, 17}},
    {"txtS", Kind::NumberBox, "6", {80, 48, 41, 33}, kLarge},
    {"Label7", Kind::Caption, "&Plus", {120, 32, 41, 17}},
    {"cmbPM", Kind::List, "", {120, 48, 41, 32}, kMedium},
    {"Label3", Kind::Caption, "&Bonus", {160, 32, 41, 17}},
    {"txtB", Kind::NumberBox, "1", {160, 48, 41, 33}, kLarge},
    {"Label4", Kind::Caption, "&Result :", {8, 88, 193, 17}},
    {"txtResult", Kind::ResultBox, "", {8, 104, 193, 81}, kFixed},
    {{"Cmnd", 0}, Kind::Button, "Copy Result", {8, 192, 65, 17}},
    {{"Cmnd", 1}, Kind::Button, "Roll Dice !", {80, 192, 65, 17}},
    {{"Cmnd", 2}, Kind::Button, "Close", {152, 192, 49, 17}},
    {"Label5",
     Kind::Help,
     "Instructions: Just enter your dice values and roll. Format is the same as each RPG uses: nDs+b "
     "(n Dices with s Sides plus/minus b Bonus) ie: 1D6+1 or 2D4 or 3D8 -3 ...",
     {8, 216, 193, 65}},
    {"Status", Kind::StatusLine, "", {0, 288, 209, 17}},
};

constexpr HintRow kHints[] = {
    {{"Cmnd", 0}, "Will copy result to clipboard"},
    {{"Cmnd", 1}, "Rolls dice and will show its maximum and minimum values"},
    {{"Cmnd", 2}, "Will close this window"},
    {{"Cmnd", 3}, "Will close this window"},
    {{"Cmnd", 4}, "Will minimize window"},
    {"txtN", "Number of dices to be rolled"},
    {"txtS", "Number of sides of dice(s)"},
    {"txtB", "Bonus/penalty to roll"},
    {"Label5", "Help"},
    {"Status", "Cool Tootip"},
    {kBackground, "Ready!"},
};

constexpr WindowTable kTable{"frmDice", "Orvane Stats Generator", 209, 305, kControls, kHints};

std::int32_t NumberIn(const platform::TextBox& box) { return RoundToLong(LeadingNumber(box.Text())); }

}  // namespace

frmDice::frmDice() : ThemedForm(kTable) {
    cmbPM.AddItem("+");
    cmbPM.AddItem("-");
    txtN.LostFocus = [this] { txtN_LostFocus(); };
    txtS.LostFocus = [this] { txtS_LostFocus(); };
    txtB.LostFocus = [this] { txtB_LostFocus(); };
    txtResult.Change = [this] { txtResult_Change(); };
}

void frmDice::Form_Load() {
    MakeTopMost(*this);
    PlayWave("theme2.wav");
    SoundEnabled = kFalse;
    cmbPM.SetListIndex(0);
    SetNumberOnly(txtN);
    SetNumberOnly(txtS);
    SetNumberOnly(txtB);
    RollDice();
    SoundEnabled = kTrue;
}

void frmDice::RollDice() {
    txtN_LostFocus();
    txtS_LostFocus();
    txtB_LostFocus();
    const std::int32_t sign = cmbPM.ListIndex() == 0 ? 1 : -1;
    const DiceRoll roll{NumberIn(txtN), NumberIn(txtS), sign * NumberIn(txtB)};
    txtResult.SetText(RollSummary(roll) + "Result of roll: " + NumberText(DrawRoll(roll)));
}

void frmDice::txtN_LostFocus() { txtN.SetText(CleanCount(txtN.Text())); }
void frmDice::txtS_LostFocus() { txtS.SetText(CleanCount(txtS.Text())); }
void frmDice::txtB_LostFocus() { txtB.SetText(CleanBonus(txtB.Text())); }
void frmDice::txtResult_Change() { Status.SetCaption("Result"); }

void frmDice::Cmnd_Click(int Index) {
    switch (Index) {
        case 0: CopyResult(txtResult); break;
        case 1:
            PlayWave("chant.wav");
            RollDice();
            break;
        default: ThemedForm::Cmnd_Click(Index);
    }
}

}  // namespace orvane
