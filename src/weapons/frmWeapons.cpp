#include "weapons/frmWeapons.h"

#include "weapons/generator.h"
#include "weapons/weapon_sheet.h"

namespace orvane {
namespace {

constexpr ControlRow kControls[] = {
    {"Image1", Kind::Picture, "logo", {8, 0, 32, 32}, kPlain, {}, "Logo"},
    {"lblTitle", Kind::Title, "Orvane Weapons", {48, 8, 185, 17}},
    {{"Cmnd", 4}, Kind::Button, "_", {240, 8, 17, 17}},
    {{"Cmnd", 3}, Kind::Button, "x", {256, 8, 17, 17}},
    {{"Cmnd", 1}, Kind::Button, "Get Weapon", {8, 32, 265, 17}},
    {"Label3", Kind::Caption, "&Result : ", {8, 56, 265, 17}},
    {"txtResult", Kind::SheetBox, "", {8, 72, 265, 219}, kFixed},
    {"Label5",
     Kind::Help,
     "Instructions: Click on Get Weapon to have weapon generated :)",
     {8, 296, 265, 33}},
    {"Status", Kind::StatusLine, "", {0, 328, 281, 17}},
};

constexpr HintRow kHints[] = {
    {{"Cmnd", 1}, "Rolls dice and will show its maximum and minimum values"},
    {{"Cmnd", 3}, "Will close this window"},
    {{"Cmnd", 4}, "Will minimize window"},
    {"Label5", "Help"},
    {"Status", "Cool Tootip"},
    {kBackground, "Ready!"},
};

constexpr WindowTable kTable{.Name = "frmWeapons",
                             .Caption = "Range To Dice",
                             .Width = 281,
                             .Height = 345,
                             .Controls = kControls,
                             .Hints = kHints,
                             .Icon = false};

}  // namespace

frmWeapons::frmWeapons() : ThemedForm(kTable) {}

void frmWeapons::Form_Load() {
    MakeTopMost(*this);
    PlayWave("theme2.wav");
    SoundEnabled = kTrue;
    LoadWeapons(tables_);
    LoadModifiers(tables_);
    txtResult.SetText(tables_.NoWeaponsReason);
}

void frmWeapons::Cmnd_Click(int Index) {
    if (Index != 1) return ThemedForm::Cmnd_Click(Index);
    PlayWave("chant.wav");
    txtResult.SetText(tables_.Weapons.empty() ? tables_.NoWeaponsReason
                                              : BuildWeaponSheet(GenerateWeapon(tables_)));
}

}  // namespace orvane
