#pragma once

// The two encodings of text files, and names compared without regard to case, by the desktop's own tables.
// None of it depends on the user's locale.

#include <string>
#include <string_view>

namespace platform {

// Bytes of either encoding in UTF-8: as they are if they are UTF-8 (nothing overlong, no surrogate, nothing
// cut off), otherwise read as Windows-1252, in which the five bytes without a character stand for the control
// characters of the same number.
std::string ToUtf8(std::string_view bytes);

// UTF-8 in Windows-1252. A character that has no byte there becomes any other.
std::string ToWindows1252(std::string_view text);

// UTF-8 in small letters, the same for a name in capital letters and in small ones; what is no UTF-8 in it
// gives anything. Each letter stays one letter, whatever the language: the capital of an "ß" is none.
std::string FoldedCase(std::string_view text);

}  // namespace platform
