#pragma once

#include "frame/chrome.h"

namespace orvane {

// The dice roller.
class frmDice : public ThemedForm {
 public:
    frmDice();

    void Form_Load() override;

 private:
    void RollDice();
    void txtN_LostFocus();
    void txtS_LostFocus();
    void txtB_LostFocus();
    void txtResult_Change();
    void Cmnd_Click(int Index) override;

    platform::TextBox& txtN = The<platform::TextBox>("txtN");
    platform::TextBox& txtS = The<platform::TextBox>("txtS");
    platform::TextBox& txtB = The<platform::TextBox>("txtB");
    platform::DropDownList& cmbPM = The<platform::DropDownList>("cmbPM");
    platform::TextBox& txtResult = The<platform::TextBox>("txtResult");
};

}  // namespace orvane
