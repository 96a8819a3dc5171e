#pragma once

#include <string_view>

namespace platform {

// The toolkit's start and its event loop. Must be made before any form.
class Application {
 public:
    Application(int& argumentCount, char** arguments);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Handles events until EndProgram, then ends the process: no form gets a closing event, no destructor
    // runs.
    [[noreturn]] void Run();
};

// Takes all windows off the screen and leaves the event loop. What was copied to the clipboard stays there,
// where the desktop has somebody to keep it.
void EndProgram();

// Puts text on the clipboard as it stands, line breaks included.
void SetClipboardText(std::string_view text);

// A box with the text and one OK button, under the program's title, in front of all windows. Waits until it
// is closed; no window acts meanwhile, whatever presses in it.
void ShowMessage(std::string_view text);

}  // namespace platform
