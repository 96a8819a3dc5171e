#pragma once

#include <windows.h>

namespace platform {

// The answer to assistive technology that asks a window of a form or of a control for itself.
LRESULT AnswerAssistant(HWND window, WPARAM wParam);

}  // namespace platform
