#pragma once

#include <span>

#include "frame/chrome.h"

namespace orvane {

// A tool of the launcher: the index of its button, and what opens it.
struct Tool {
    int Index;
    void (*Open)();
};

// The launcher: a button for each tool, and the end of the program.
class frmMain : public ThemedForm {
 public:
    frmMain();

    // What the buttons open; a button without a tool does nothing but its sound. Set before the first use.
    static void SetTools(std::span<const Tool> tools);

    void Form_Load() override;

 private:
    void Cmnd_Click(int Index) override;
};

}  // namespace orvane
