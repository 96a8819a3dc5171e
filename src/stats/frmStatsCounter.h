#pragma once

#include <string_view>

#include "frame/chrome.h"
#include "stats/stat_model.h"

namespace orvane {

// The window in which points are moved between the statistics. It owns no data: it shows and edits Stats.
class frmStatsCounter : public ThemedForm {
 public:
    frmStatsCounter();

    void Form_Load() override;

    void ShowGrid(const StatGrid& grid, std::string_view sheet);

 private:
    void cmndPlus_Click(int Row);
    void cmndMinus_Click(int Row);
    void Cmnd_Click(int Index) override;

    platform::Label& cmndToDistribute = The<platform::Label>("cmndToDistribute");
    platform::TextBox& txtTextOut = The<platform::TextBox>("txtTextOut");
};

}  // namespace orvane
