#pragma once

#include <functional>
#include <string_view>

namespace platform {

// Plays a wave file in the background and returns at once; a sound that still plays gives way to it. The name
// is looked up in the current directory, then in the folder "sounds" beside the program. A file, device or
// sound server that is missing or dead, and a file above 16 MiB, costs the sound and nothing else.
void PlaySoundFile(std::string_view fileName);

// Hands every later sound to the function instead of the player; an empty function brings the player back.
void SetSoundPlayer(std::function<void(std::string_view)> player);

}  // namespace platform
