#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace platform {

// The one thing that the program and the player's thread share: the sound that is wanted next. A newer wish
// replaces one that the player has not come to, so a player that hangs holds up nothing and piles up nothing.
struct SoundRequests {
    std::mutex Lock;
    std::condition_variable Arrived;
    std::vector<std::string>
        Wanted;  // the places of one sound file, the first that exists counts; empty: no wish
};

// The body of the player's thread, in a module of its own: the sound library comes into the process on that
// thread and not at the program's start. Never returns.
using SoundPlayerBody = void (*)(SoundRequests& requests);
inline constexpr char kSoundPlayerSymbol[] = "OrvaneRunSoundPlayer";
inline constexpr char kSoundPlayerModule[] = "liborvane-sound.so";

}  // namespace platform
