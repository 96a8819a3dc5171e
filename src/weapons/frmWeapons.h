#pragma once

#include "frame/chrome.h"
#include "weapons/weapon_tables.h"

namespace orvane {

// The generator of random weapons.
class frmWeapons : public ThemedForm {
 public:
    frmWeapons();

    void Form_Load() override;

 private:
    void Cmnd_Click(int Index) override;

    WeaponTables tables_;
    platform::TextBox& txtResult = The<platform::TextBox>("txtResult");
};

}  // namespace orvane
