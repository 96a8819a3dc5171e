#include "dice/frmRange2Dice.h"

#include "dice/range_text.h"

namespace orvane {
namespace {

constexpr ControlRow kControls[] = {
    {"Image1", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {"lblTitle", Kind::Title, "Orvane Dice", {48, 8, 113, 17}},
    {{"Cmnd", 4}, Kind::Button, "_", {168, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {184, 8, 17, 17}},
    {"Label1", Kind::RightCaption, "&From : ", {8, 32, 33, 17}},
    {"txtFrom", Kind::TextBox, "1", {40, 32, 65, 19}},
    {"Label2", Kind::RightCaption, "&To : ", {104, 32, 33, 17}},
    {"txtTo", Kind::TextBox, "6", {136, 32, 65, 19}},
    {"chkAuto", Kind::CheckBox, "Auto", {8, 56, 49, 17}},
    {{"Cmnd", 1}, Kind::Button, "Get Dice", {56, 56, 145, 17}},
    {"Label3", Kind::RightCaption, "&Result : ", {8, 80, 41, 17}},
    {"txtResult", Kind::TextBox, "", {48, 80, 153, 19}, kFixed},
    {"Label5",
     Kind::Help,
     "Instructions: Enter range of values to corensponding textboxes and you'll get dice which is used to "
     "get this.",
     {8, 104, 193, 41}},
    {"Status", Kind::StatusLine, "", {0, 144, 209, 17}},
};

constexpr HintRow kHints[] = {
    {{"Cmnd", 1}, "Rolls dice and will show its maximum and minimum values"},
    {{"Cmnd", 3}, "Will close this window"},
    {{"Cmnd", 4}, "Will minimize window"},
    {"Label5", "Help"},
    {"Status", "Cool Tootip"},
    {kBackground, "Ready!"},
};

constexpr WindowTable kTable{.Name = "frmRange2Dice",
                             .Caption = "Range To Dice",
                             .Width = 209,
                             .Height = 161,
                             .Controls = kControls,
                             .Hints = kHints,
                             .Centred = false,
                             .Icon = false};

}  // namespace

frmRange2Dice::frmRange2Dice() : ThemedForm(kTable) {
    txtFrom.Change = [this] { txtFrom_Change(); };
    txtTo.Change = [this] { txtTo_Change(); };
    txtFrom.Validate = [this] { return txtFrom_Validate(); };
    txtTo.Validate = [this] { return txtTo_Validate(); };
    chkAuto.Click = [this] { chkAuto_Click(); };
}

void frmRange2Dice::Form_Load() {
    MakeTopMost(*this);
    PlayWave("theme2.wav");
}

void frmRange2Dice::FindDice() {
    const std::int32_t from = RoundToLong(LeadingNumber(txtFrom.Text()));
    const std::int32_t to = RoundToLong(LeadingNumber(txtTo.Text()));
    txtResult.SetText(RangeText(from, to));
}

void frmRange2Dice::txtFrom_Change() {
    if (chkAuto.Checked()) FindDice();
}

void frmRange2Dice::txtTo_Change() {
    if (chkAuto.Checked()) FindDice();
}

void frmRange2Dice::chkAuto_Click() {
    PlayWave("click.wav");
    if (chkAuto.Checked()) FindDice();
}

bool frmRange2Dice::txtFrom_Validate() const { return IsNumberText(txtFrom.Text()); }
bool frmRange2Dice::txtTo_Validate() const { return IsNumberText(txtTo.Text()); }

void frmRange2Dice::Cmnd_Click(int Index) {
    if (Index != 1) return ThemedForm::Cmnd_Click(Index);
    PlayWave("chant.wav");
    FindDice();
}

}  // namespace orvane
