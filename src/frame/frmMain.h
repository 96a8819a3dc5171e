#pragma once

#include <span>
#include <string_view>

#include "frame/chrome.h"

namespace orvane {

// A tool of the launcher: the index of its button, what the button reads, its hint, which may be empty, and
// what opens it.
struct Tool {
    int Index;
    std::string_view Caption;
    std::string_view Hint;
    void (*Open)();
};

// The launcher: a button for each tool, and the end of the program.
class frmMain : public ThemedForm {
 public:
    frmMain();

    // The tools, from the top. Set before the first use.
    static void SetTools(std::span<const Tool> tools);

    void Form_Load() override;

 private:
    void Cmnd_Click(int Index) override;
    void Close() override;
};

}  // namespace orvane
