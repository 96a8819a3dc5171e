#pragma once

// The two encodings of profile files, and names compared without regard to case. Pure, and independent of the
// process locale.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Whether the bytes are UTF-8 throughout, as plain ASCII is: no overlong form, no surrogate, nothing cut off.
bool IsUtf8(std::string_view bytes);

// Bytes of either encoding in UTF-8: as they are if they are UTF-8, otherwise read as Windows-1252, in which
// the five bytes without a character stand for the control characters of the same number.
std::string ToUtf8(std::string_view bytes);

// UTF-8 in Windows-1252, or nothing if a character has no byte there. Undoes what ToUtf8 made of
// Windows-1252.
std::optional<std::string> ToWindows1252(std::string_view text);

// UTF-8 in small letters, character by character: Latin, Greek and Cyrillic. Other scripts stay as they are,
// and so do letters whose small form depends on the language or has more than one character.
std::string FoldedCase(std::string_view text);

// The first characters (code points) of UTF-8, at most count of them.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

}  // namespace platform
