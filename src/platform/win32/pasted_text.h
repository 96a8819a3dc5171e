#pragma once

#include <cstddef>
#include <string>

namespace platform {

// What is on the clipboard, at most so many of the system's characters. Whatever the program that owns it
// does, the answer comes within about a second; it is empty if that program has not answered by then.
std::wstring ClipboardText(std::size_t most);

}  // namespace platform
