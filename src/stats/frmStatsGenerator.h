#pragma once

#include "frame/chrome.h"

namespace orvane {

// The generator of a character's bounds and bonuses from sex, race and class.
class frmStatsGenerator : public ThemedForm {
 public:
    frmStatsGenerator();

    void Form_Load() override;

    // Draws a selection at random and counts it.
    void Randomize();

 private:
    void CountStats();
    void Cmnd_Click(int Index) override;

    platform::DropDownList& cmbSex = The<platform::DropDownList>("cmbSex");
    platform::DropDownList& cmbRace = The<platform::DropDownList>("cmbRace");
    platform::DropDownList& cmbClass = The<platform::DropDownList>("cmbClass");
    platform::TextBox& txtTextOut = The<platform::TextBox>("txtTextOut");
};

}  // namespace orvane
