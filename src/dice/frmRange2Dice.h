#pragma once

#include "frame/chrome.h"

namespace orvane {

// The finder of a dice notation for a range of values.
class frmRange2Dice : public ThemedForm {
 public:
    frmRange2Dice();

    void Form_Load() override;

 private:
    void FindDice();
    void txtFrom_Change();
    void txtTo_Change();
    void chkAuto_Click();
    bool txtFrom_Validate() const;
    bool txtTo_Validate() const;
    void Cmnd_Click(int Index) override;

    platform::TextBox& txtFrom = The<platform::TextBox>("txtFrom");
    platform::TextBox& txtTo = The<platform::TextBox>("txtTo");
    platform::CheckBox& chkAuto = The<platform::CheckBox>("chkAuto");
    platform::TextBox& txtResult = The<platform::TextBox>("txtResult");
};

}  // namespace orvane
