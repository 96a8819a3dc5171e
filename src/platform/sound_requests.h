#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <vector>

namespace platform {

// The one thing that the program and the player's thread share: the sound that is wanted next. A newer wish
// replaces one that the player has not come to, so a player that hangs holds up nothing and piles up nothing.
struct SoundRequests {
    std::mutex Lock;
    std::condition_variable Arrived;
    std::vector<std::filesystem::path>
        Wanted;  // the places of one sound file, the first that exists counts; empty: no wish
};

// The body of the player's thread: each desktop plays in its own way what is wanted. Returns if nothing can
// be played at all.
void ServeSounds(SoundRequests& requests);

// The first of the places that is a plain file, since opening anything else could wait for ever. Empty if
// there is none, or for a file that is too large to be loaded.
inline std::filesystem::path SoundFile(const std::vector<std::filesystem::path>& places) {
    constexpr std::uintmax_t kLargest{16 << 20};  // six minutes at 22 kHz
    for (const auto& place : places) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(place, error)) continue;
        return std::filesystem::file_size(place, error) > kLargest ? std::filesystem::path() : place;
    }
    return {};
}

}  // namespace platform
